#include "support/sold_desk.h"

namespace tolva {
namespace {

using basic::make_date;
using support::Desk;
using Texts = std::vector<std::string>;

class SoldViews : public support::SoldDesk {};

TEST_F(SoldViews, TheFirstBuildOfAnEmptyViewReadsZerosOfBothKinds) {
    EXPECT_EQ(screen().caption, "Homes Sold this Year: Quick Search for Others");
    EXPECT_EQ(screen().ttsold.caption, "0");
    EXPECT_EQ(screen().ttsales.caption, "0.00");
    EXPECT_EQ(screen().aasales.caption, "0") << "averages stay as they stood";
    desk.choose(screen().m_allcustomers);
    EXPECT_EQ(screen().aasales.caption, "0.00");
    EXPECT_EQ(screen().ttsold.caption, "0");
}

TEST_F(SoldViews, TotalsAndAveragesCoverTheRowsOnShow) {
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

TEST_F(SoldViews, ANullInASummedColumnEndsTheProgramAsItsSumIsShown) {
    struct Case {
        const char* column;
        Texts shown; ///< count, sales, commission, expenses, net
    };
    const Case cases[] = {{"sellingprice", {"2", "0.00", "0.00", "0.00", "0.00"}},
                          {"commission", {"2", "5.00", "0.00", "0.00", "0.00"}},
                          {"expenses", {"2", "5.00", "6.00", "0.00", "0.00"}},
                          {"netcommission", {"2", "5.00", "6.00", "7.00", "0.00"}}};
    for (const auto& [column, shown] : cases) {
        Desk other;
        other.start();
        other.module().sold().show();
        auto& own = static_cast<records::sold&>(other.module().sold());
        std::map<std::string, jet::Value> values{
            {"id", std::int64_t{1}}, {"datesold", make_date(2026, 11, 1)},
            {"sellingprice", 5.0},   {"commission", 6.0},
            {"expenses", 7.0},       {"netcommission", 8.0}};
        values[column] = std::monostate{};
        Desk::add(*other.module().solddb, values);
        Desk::add(*other.module().solddb, {{"id", std::int64_t{2}},
                                           {"datesold", make_date(2026, 11, 2)},
                                           {"sellingprice", 0.0},
                                           {"commission", 0.0},
                                           {"expenses", 0.0},
                                           {"netcommission", 0.0}});
        other.choose(own.m_allcustomers);
        ASSERT_TRUE(other.host.error) << column;
        EXPECT_EQ(other.host.error->number, 94) << column;
        EXPECT_EQ(own.grid1.Rows(), 3) << "all rows are in the grid by then";
        EXPECT_EQ((Texts{own.ttsold.caption, own.ttsales.caption, own.ttcom.caption, own.ttexp.caption,
                         own.ttnet.caption}),
                  shown)
            << column;
    }
}

TEST_F(SoldViews, TheGridShowsThePropertyAndTheFirstAgencyTicked) {
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

TEST_F(SoldViews, TheViewsHaveTheirBounds) {
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

TEST_F(SoldViews, LastMonthsLastDayFollowsTheLeapRuleAndJanuaryLooksBackAYear) {
    for (const auto& [now, end] :
         std::vector<std::pair<basic::DateParts, std::string>>{{{2024, 3, 5, 10, 0, 0}, "#2/29/2024#"},
                                                               {{2100, 3, 5, 10, 0, 0}, "#2/28/2100#"},
                                                               {{2027, 1, 5, 10, 0, 0}, "#12/31/2026#"}}) {
        desk.clock.set(now);
        desk.choose(screen().m_soldlastmonth);
        EXPECT_NE(desk.module().soldquery.find("<= " + end), std::string::npos) << desk.module().soldquery;
    }
}

TEST_F(SoldViews, TheQuickSearchLooksAtThePropertysCityAndListensToItsOwnKey) {
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

TEST_F(SoldViews, TheFirstViewHasNoUpperBoundAndSoldThisYearHas) {
    add(1, {{"datesold", make_date(2027, 6, 1)}});
    add(2, {{"datesold", make_date(2026, 11, 20)}});
    desk.click(screen().Command10);
    desk.module().sold().show();
    EXPECT_EQ(ids(), (Texts{"2", "1"}));
    desk.choose(screen().m_soldthisyear);
    EXPECT_EQ(ids(), Texts{"2"});
}

TEST_F(SoldViews, TheLastViewComesBackUnderThePlainTitleAndASearchLeavesTheTitle) {
    add(1, {});
    desk.choose(screen().m_allcustomers);
    desk.click(screen().Command4);
    EXPECT_EQ(screen().caption, "All Sales");
    const std::string view = desk.module().soldquery;
    desk.click(screen().Command10);
    desk.module().sold().show();
    EXPECT_EQ(screen().caption, "Sold Properties");
    EXPECT_EQ(desk.module().soldquery, view);
    EXPECT_EQ(ids(), Texts{"1"});
}

TEST_F(SoldViews, TheFollowUpViewsMarkWithOne) {
    add(1, {{"birthday", make_date(1960, 11, 27)}});
    add(2, {{"co_birthday", make_date(1960, 11, 28)}, {"datenextcontact", make_date(2026, 11, 6)}});
    desk.choose(screen().m_birthdays);
    EXPECT_EQ(ids(), Texts{"1"});
    EXPECT_EQ(stored()[0].at("Flag"), "1");
    EXPECT_EQ(screen().caption, "Customers with Birthdays");
    desk.choose(screen().m_customerstocontact);
    EXPECT_EQ(ids(), Texts{"2"});
    EXPECT_EQ(screen().caption, "Customers to Contact");
}

TEST_F(SoldViews, WithNoDateSoldTheBirthdaysStopSilently) {
    add(1, {{"datesold", std::monostate{}}});
    desk.choose(screen().m_birthdays);
    EXPECT_TRUE(desk.host.boxes.empty());
    EXPECT_EQ(screen().caption, "Customers with Birthdays");
}

TEST_F(SoldViews, AQuoteBreaksTheQuickSearch) {
    desk.type(screen().sname, "D'Angelo");
    desk.click(screen().Command4);
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 3075);
}

} // namespace
} // namespace tolva
