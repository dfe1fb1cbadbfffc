#include "module/shared_routines.h"

#include <gtest/gtest.h>

#include "basic/run_time_error.h"
#include "support/desk.h"

namespace tolva::module {
namespace {

using basic::make_date;

TEST(SharedRoutines, DaysinmonthFollowsTheGregorianRule) {
    EXPECT_EQ(daysinmonth(make_date(2000, 2, 5)), 29);
    EXPECT_EQ(daysinmonth(make_date(1900, 2, 5)), 28);
    EXPECT_EQ(daysinmonth(make_date(2004, 2, 5)), 29);
    EXPECT_EQ(daysinmonth(make_date(2005, 2, 5)), 28);
    EXPECT_EQ(daysinmonth(make_date(2100, 2, 5)), 28);
    const int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    for (int month = 1; month <= 12; ++month)
        EXPECT_EQ(daysinmonth(make_date(2005, month, 1)), days[month - 1]);
}

TEST(SharedRoutines, LastdayofmonthHasNoLeadingZeros) {
    EXPECT_EQ(lastdayofmonth(make_date(2005, 6, 1)), "6/30/2005");
    EXPECT_EQ(lastdayofmonth(make_date(2005, 6, 30)), "6/30/2005");
    EXPECT_EQ(lastdayofmonth(make_date(2024, 2, 10)), "2/29/2024");
}

TEST(SharedRoutines, FilepartofpathGivesTheBareName) {
    EXPECT_EQ(filepartofpath(" C:\\TOLVA\\letters\\expiring.rtf "), "expiring.rtf");
    EXPECT_EQ(filepartofpath("\\"), "");
}

TEST(SharedRoutines, FilepartofpathOverflowsOnAPathWithoutABackslash) {
    try {
        filepartofpath("thankyou.rtf");
        FAIL();
    } catch (const basic::RunTimeError& error) {
        EXPECT_EQ(error.number(), 6);
    }
}

TEST(SharedRoutines, TheLabelTablesNumberASheetRowByRow) {
    support::Desk desk;
    desk.start();
    const Module& module = desk.module();
    EXPECT_EQ(module.labelcolumn[0], 1);
    EXPECT_EQ(module.labelrow[0], 1);
    EXPECT_EQ(module.labelcolumn[2], 3);
    EXPECT_EQ(module.labelrow[2], 1);
    EXPECT_EQ(module.labelcolumn[3], 1);
    EXPECT_EQ(module.labelrow[3], 2);
    EXPECT_EQ(module.labelcolumn[29], 3);
    EXPECT_EQ(module.labelrow[29], 10);
}

TEST(SharedRoutines, ConfirmAsksUnderItsTitleAndGivesOneForOk) {
    support::Desk desk;
    desk.host.answers = {1, 2};
    EXPECT_EQ(desk.module().confirm("Really?"), 1);
    EXPECT_EQ(desk.module().confirm("Really?"), 2);
    EXPECT_EQ(desk.host.boxes[0].title, "Are You Sure?");
    EXPECT_EQ(desk.host.boxes[0].buttons, platform::BoxButtons::ok_cancel);
}

} // namespace
} // namespace tolva::module
