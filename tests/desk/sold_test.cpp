#include "records/sold.h"

#include <gtest/gtest.h>

#include "support/desk.h"

namespace tolva {
namespace {

using basic::make_date;
using support::Desk;
using Texts = std::vector<std::string>;

class Sold : public testing::Test {
  protected:
    Sold() {
        desk.start();
        desk.module().sold().show();
    }

    records::sold& screen() { return static_cast<records::sold&>(desk.module().sold()); }
    void add(int id, std::map<std::string, jet::Value> more) {
        std::map<std::string, jet::Value> values{
            {"id", std::int64_t{id}},
            {"first", std::string("F")},
            {"last", "L" + std::to_string(id)},
            {"soldcity", std::string("Utica")},
            {"datesold", make_date(2026, 11, id)},
            {"datelastcontact", make_date(2026, 1, 1)},
            {"sellingprice", 0.0},
            {"commission", 0.0},
            {"expenses", 0.0},
            {"netcommission", 0.0},
            {"Flag", std::int64_t{0}},
        };
        for (auto& [column, value] : more)
            values[column] = value;
        Desk::add(*desk.module().solddb, values);
    }
    Texts ids() {
        Texts cells;
        for (int row = 1; row < screen().grid1.Rows(); ++row)
            cells.push_back(screen().grid1.cell(row, 0));
        return cells;
    }
    Desk::Records stored() { return Desk::rows(*desk.module().solddb, "select * from [table]"); }
    void open(int row) { desk.runtime().click_row(screen().grid1, row); }

    Desk desk;
};

TEST_F(Sold, TheFirstBuildOfAnEmptyViewReadsZerosOfBothKinds) {
    EXPECT_EQ(screen().caption, "Homes Sold this Year: Quick Search for Others");
    EXPECT_EQ(screen().ttsold.caption, "0");
    EXPECT_EQ(screen().ttsales.caption, "0.00");
    EXPECT_EQ(screen().aasales.caption, "0") << "averages stay as they stood";
    desk.choose(screen().m_allcustomers);
    EXPECT_EQ(screen().aasales.caption, "0.00");
    EXPECT_EQ(screen().ttsold.caption, "0");
}

TEST_F(Sold, TotalsAndAveragesCoverTheRowsOnShow) {
    add(1, {{"sellingprice", 100000.0},
            {"commission", 6000.5},
            {"expenses", 500.25},
            {"netcommission", 5500.25}});
    add(2,
        {{"sellingprice", 50000.0}, {"commission", 3000.0}, {"expenses", 0.0}, {"netcommission", 2999.99}});
    add(3, {});
    desk.choose(screen().m_soldthismonth);
    EXPECT_EQ(screen().ttsold.caption, "3");
    EXPECT_EQ(screen().ttsales.caption, "150000.00");
    EXPECT_EQ(screen().ttcom.caption, "9000.50");
    EXPECT_EQ(screen().ttexp.caption, "500.25");
    EXPECT_EQ(screen().ttnet.caption, "8500.24") << "the stored column is summed, not worked out";
    EXPECT_EQ(screen().aasales.caption, "50000.00");
    EXPECT_EQ(screen().aacom.caption, "3000.17");
    EXPECT_EQ(screen().aaexp.caption, "166.75");
    EXPECT_EQ(screen().aanet.caption, "2833.41");
}

TEST_F(Sold, ANullInASummedColumnEndsTheProgram) {
    add(1, {{"expenses", std::monostate{}}});
    desk.choose(screen().m_allcustomers);
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 94);
}

TEST_F(Sold, TheGridShowsThePropertyAndTheFirstAgencyTicked) {
    add(1, {{"soldaddress", std::string("9 Elm")},
            {"sellingprice", 99999.5},
            {"agency1", true},
            {"agency2", true}});
    add(2, {{"agency2", true}});
    add(3, {});
    desk.choose(screen().m_allcustomers);
    const auto& grid = screen().grid1;
    const char* headings[] = {"", "Name", "Address", "City", "Selling Price", "Date Sold", "Agency"};
    const int widths[] = {1, 3000, 3000, 2000, 1200, 1200, 2000};
    const char* cells[] = {"1", "F L1", "9 Elm", "Utica", "$99999.5", "11/1/2026", "Selling Agent"};
    for (int column = 0; column < 7; ++column) {
        EXPECT_EQ(grid.cell(0, column), headings[column]);
        EXPECT_EQ(grid.width(column), widths[column]);
        EXPECT_EQ(grid.cell(1, column), cells[column]);
    }
    EXPECT_EQ(grid.cell(2, 6), "Listing & Selling Agent");
    EXPECT_EQ(grid.cell(3, 6), "");
    EXPECT_EQ(grid.cell(3, 4), "");
}

TEST_F(Sold, TheViewsHaveTheirBounds) {
    const std::tuple<platform::MenuEntry*, const char*, const char*> views[] = {
        {&screen().m_soldthismonth, "This Month's Sales",
         "select * from [table] where datesold >= #11/1/2026# and datesold <= #11/30/2026# order by "
         "datesold, "
         "last, first"},
        {&screen().m_soldlastmonth, "Last Month's Sales",
         "select * from [table] where datesold >= #10/1/2026# and datesold <= #10/31/2026# order by "
         "datesold, "
         "last, first"},
        {&screen().m_soldthisyear, "Sold this Year",
         "select * from [table] where datesold >= #1/1/2026# and datesold <= #11/20/2026# order by datesold, "
         "last, first"},
        {&screen().m_allcustomers, "All Sales",
         "select * from [table] where datesold>#1/1/1800# order by datesold, last, first"},
    };
    EXPECT_EQ(desk.module().soldquery,
              "select * from [table] where datesold >= #1/1/2026# order by datesold, last, first");
    for (const auto& [entry, caption, query] : views) {
        desk.choose(*entry);
        EXPECT_EQ(screen().caption, caption);
        EXPECT_EQ(desk.module().soldquery, query);
    }
}

TEST_F(Sold, LastMonthsLastDayFollowsTheLeapRuleAndJanuaryLooksBackAYear) {
    for (const auto& [now, end] :
         std::vector<std::pair<basic::DateParts, std::string>>{{{2024, 3, 5, 10, 0, 0}, "#2/29/2024#"},
                                                               {{2100, 3, 5, 10, 0, 0}, "#2/28/2100#"},
                                                               {{2027, 1, 5, 10, 0, 0}, "#12/31/2026#"}}) {
        desk.clock.set(now);
        desk.choose(screen().m_soldlastmonth);
        EXPECT_NE(desk.module().soldquery.find("<= " + end), std::string::npos) << desk.module().soldquery;
    }
}

TEST_F(Sold, TheQuickSearchLooksAtThePropertysCityAndListensToItsOwnKey) {
    add(1, {{"city", std::string("Rome")}, {"soldcity", std::string("Utica")}});
    add(2, {{"city", std::string("Utica")}, {"soldcity", std::string("Rome")}});
    desk.type(screen().scity, "utica");
    desk.press_enter(screen().scity);
    EXPECT_EQ(ids(), Texts{""}) << "Enter does nothing here";
    desk.runtime().press_key(screen().scity, 12);
    EXPECT_EQ(ids(), Texts{"1"});
    EXPECT_EQ(desk.module().soldquery,
              "select * from [table] where (last like '**' or co_last like '**') and soldcity like '*utica*' "
              "order by last, first");
    EXPECT_EQ(screen().caption, "Homes Sold this Year: Quick Search for Others");
}

TEST_F(Sold, LeavingEitherMoneyBoxWorksOutTheNet) {
    desk.choose(screen().m_newcustomer);
    EXPECT_EQ(screen().netcommission.caption, "0.00");
    desk.type(screen().commission, "12,000");
    desk.runtime().focus(screen().first);
    EXPECT_EQ(screen().netcommission.caption, "12.00");
    desk.type(screen().expenses, "20.456");
    desk.runtime().focus(screen().first);
    EXPECT_EQ(screen().netcommission.caption, "-8.46");
}

TEST_F(Sold, TheStoredNetIsTheLabelsTwoDecimals) {
    desk.choose(screen().m_newcustomer);
    desk.type(screen().commission, "100.456");
    desk.type(screen().expenses, "0.001");
    desk.runtime().focus(screen().first);
    desk.module().settings.p_bdayschedule = 0;
    desk.click(screen().Command5);
    EXPECT_EQ(stored()[0].at("netcommission"), "100.46");
    EXPECT_EQ(stored()[0].at("commission"), "100.456");
    EXPECT_EQ(stored()[0].at("expenses"), "0.001");
}

TEST_F(Sold, ALoadFormatsTheMoneyAndWorksOutTheNetAfresh) {
    add(1, {{"commission", 100.456}, {"expenses", 0.5}, {"netcommission", 7.0}});
    add(2, {{"commission", 0.0}, {"expenses", 0.0}, {"netcommission", 7.0}});
    desk.choose(screen().m_allcustomers);
    open(1);
    EXPECT_EQ(screen().commission.text, "100.46");
    EXPECT_EQ(screen().expenses.text, "0.50");
    EXPECT_EQ(screen().netcommission.caption, "99.96");
    desk.click(screen().Command8);
    EXPECT_EQ(screen().commission.text, "");
    EXPECT_EQ(screen().netcommission.caption, "0.00");
}

TEST_F(Sold, ANewSalesIdIsTheListingsCounterSoIdsRepeat) {
    desk.module().settings.listing_counter = 41;
    desk.module().savepreferences();
    desk.choose(screen().m_newcustomer);
    EXPECT_EQ(screen().id.text, "41");
    EXPECT_EQ(stored()[0].at("id"), "41");
    EXPECT_EQ(desk.stored_settings()["sold_counter"], "1");
    desk.type(screen().last, "First");
    desk.host.answers = {2, 2};
    desk.click(screen().Command5);
    desk.choose(screen().m_newcustomer);
    EXPECT_EQ(desk.stored_settings()["sold_counter"], "2");
    // Two rows bear the id, and the set stands on the first of them: the next save goes there.
    desk.type(screen().last, "Second");
    desk.click(screen().Command5);
    const auto rows = stored();
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].at("last"), "Second");
    EXPECT_EQ(rows[1].at("last"), "");
    EXPECT_EQ(rows[1].at("id"), "41");
}

TEST_F(Sold, BirthdaysAreNeverWrittenAndServeTheReminders) {
    desk.module().settings.listing_counter = 7;
    desk.module().savepreferences();
    desk.choose(screen().m_newcustomer);
    desk.type(screen().birthday, "12/24/1960");
    desk.host.answers = {1};
    desk.click(screen().Command5);
    EXPECT_EQ(stored()[0].at("birthday"), "<null>");
    ASSERT_EQ(desk.messages().size(), 6u);
    EXPECT_EQ(desk.messages()[0].at("messagetype"), "3");
    desk.choose(screen().m_allcustomers);
    open(1);
    EXPECT_EQ(screen().birthday.text, "");
}

TEST_F(Sold, ClosingWithoutADateSoldSaysListedAndStillSchedules) {
    desk.choose(screen().m_newcustomer);
    desk.type(screen().birthday, "12/24/1960");
    desk.type(screen().datesold, "");
    desk.host.answers = {1};
    desk.click(screen().Command5);
    EXPECT_EQ(desk.host.boxes[0].text, "Invalid Date Listed");
    EXPECT_EQ(desk.messages().size(), 6u);
    EXPECT_FALSE(desk.module().soldnewrecord);
}

TEST_F(Sold, TheTestsRunInTheirOrder) {
    desk.choose(screen().m_newcustomer);
    const std::pair<platform::TextBox*, const char*> faults[] = {
        {&screen().datesold, "Invalid Date Listed"},
        {&screen().birthday, "Invalid Buyer Birthday"},
        {&screen().co_birthday, "Invalid Co-Buyer Birthday"},
        {&screen().datelastcontact, "Invalid Date Last Contact"},
        {&screen().datenextcontact, "Invalid Date Next Contact"},
    };
    for (const auto& [field, message] : faults)
        field->text = "x";
    for (const auto& [field, message] : faults) {
        EXPECT_FALSE(screen().validate());
        EXPECT_EQ(desk.host.boxes.back().text, message);
        field->text = "1/1/2026";
    }
    EXPECT_TRUE(screen().validate());
}

TEST_F(Sold, AllThreeAgenciesMayBeTicked) {
    desk.choose(screen().m_newcustomer);
    for (const auto& box : screen().agency)
        box->value = 1;
    desk.module().settings.p_bdayschedule = 0;
    desk.click(screen().Command5);
    for (const char* column : {"agency0", "agency1", "agency2"})
        EXPECT_EQ(stored()[0].at(column), "True");
}

TEST_F(Sold, ImportDoesNothingAndTheSearchUnloadsAndFails) {
    EXPECT_TRUE(screen().m_import.available());
    desk.choose(screen().m_import);
    EXPECT_FALSE(desk.host.error);
    desk.choose(screen().m_searchcustomer);
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 424);
    EXPECT_FALSE(desk.module().sold.loaded());
}

TEST_F(Sold, ADeletionAsks) {
    desk.choose(screen().m_newcustomer);
    desk.host.answers = {1};
    desk.choose(screen().m_deletecustomer);
    EXPECT_EQ(desk.host.boxes.back().text, "Delete Customer?");
    EXPECT_TRUE(stored().empty());
}

TEST_F(Sold, TheFollowUpViewsMarkWithOne) {
    add(1, {{"birthday", make_date(1960, 11, 27)}});
    add(2, {{"co_birthday", make_date(1960, 11, 28)}, {"datenextcontact", make_date(2026, 11, 6)}});
    desk.choose(screen().m_birthdays);
    EXPECT_EQ(ids(), Texts{"1"});
    EXPECT_EQ(stored()[0].at("Flag"), "1");
    EXPECT_EQ(screen().caption, "Customers with Birthdays");
    desk.choose(screen().m_customerstocontact);
    EXPECT_EQ(ids(), Texts{"2"});
    EXPECT_EQ(screen().caption, "Customers to Contact");
    desk.module().settings.p_customer = "0";
    desk.choose(screen().m_customerstocontact);
    EXPECT_EQ(desk.host.box_texts(), Texts{"No Customers to Contact"});
}

TEST_F(Sold, WithNoDateSoldTheBirthdaysStopSilently) {
    add(1, {{"datesold", std::monostate{}}});
    desk.choose(screen().m_birthdays);
    EXPECT_TRUE(desk.host.boxes.empty());
    EXPECT_EQ(screen().caption, "Customers with Birthdays");
}

TEST_F(Sold, AQuoteBreaksTheQuickSearch) {
    desk.type(screen().sname, "D'Angelo");
    desk.click(screen().Command4);
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 3075);
}

} // namespace
} // namespace tolva
