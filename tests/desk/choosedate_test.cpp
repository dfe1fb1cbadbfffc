#include <gtest/gtest.h>

#include "support/desk.h"

namespace tolva {
namespace {

using support::Desk;

shell::choosedate& picker(Desk& desk) {
    return static_cast<shell::choosedate&>(desk.module().choosedate());
}

class Choosedate : public testing::Test {
  protected:
    Choosedate() {
        desk.start();
        desk.click(desk.menu().Command9);
        desk.choose(desk.listings().m_newlisting);
    }
    Desk desk;
};

TEST_F(Choosedate, StandsOnTodayEachTime) {
    for (int visit = 0; visit < 2; ++visit) {
        desk.host.modal_visits.push_back([this](platform::Screen& screen) {
            EXPECT_EQ(screen.caption, "Choose Date");
            EXPECT_EQ(picker(desk).MonthView1.value, basic::make_date(2026, 11, 20));
            EXPECT_TRUE(screen.modal());
            desk.runtime().pick_date(picker(desk).MonthView1, basic::make_date(2027, 1, 5));
        });
        desk.click(desk.listings().Command2);
    }
    EXPECT_EQ(desk.listings().datenextcontact.text, "1/5/2027");
}

TEST_F(Choosedate, AClickOnADayIsTheDateOfTheField) {
    desk.will_pick(2026, 12, 24);
    desk.click(desk.listings().Command4);
    EXPECT_EQ(desk.listings().dateexpires.text, "12/24/2026");
    EXPECT_EQ(desk.module().chosendate, "12/24/2026");
    EXPECT_FALSE(desk.module().choosedate.loaded());
}

TEST_F(Choosedate, ItsExitEmptiesTheField) {
    desk.type(desk.listings().datenextcontact, "1/1/2027");
    desk.will_leave_picker();
    desk.click(desk.listings().Command2);
    EXPECT_EQ(desk.listings().datenextcontact.text, "");
    EXPECT_EQ(desk.module().chosendate, "");
}

TEST_F(Choosedate, TabbingOntoTheExitLeavesJustAsAClickDoes) {
    desk.type(desk.listings().datenextcontact, "1/1/2027");
    desk.host.modal_visits.push_back(
        [this](platform::Screen&) { desk.runtime().focus(picker(desk).Command1); });
    desk.click(desk.listings().Command2);
    EXPECT_EQ(desk.listings().datenextcontact.text, "");
}

TEST_F(Choosedate, OnlyTheUserGivesItsExitTheFocus) {
    desk.host.modal_visits.push_back([this](platform::Screen& screen) {
        EXPECT_EQ(screen.active_control, &picker(desk).MonthView1);
        desk.close(screen);
    });
    desk.module().chosendate = "5/5/2025";
    desk.click(desk.listings().Command2);
    // Closing the window is leaving without picking: a date chosen earlier elsewhere is not taken.
    EXPECT_EQ(desk.listings().datenextcontact.text, "");
}

} // namespace
} // namespace tolva
