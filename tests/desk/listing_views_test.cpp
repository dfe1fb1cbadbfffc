#include <gtest/gtest.h>

#include "support/desk.h"

namespace tolva {
namespace {

using basic::make_date;
using support::Desk;
using Cells = std::vector<std::string>;

class ListingViews : public testing::Test {
  protected:
    void begin(basic::DateParts now = {2026, 11, 20, 10, 0, 0}) {
        desk.clock.set(now);
        desk.start();
    }
    void add(int id, std::map<std::string, jet::Value> more) {
        std::map<std::string, jet::Value> values{
            {"id", std::int64_t{id}},    {"last", std::string("L") + std::to_string(id)},
            {"first", std::string("F")}, {"datelisted", make_date(2026, 1, 1)},
            {"Flag", std::int64_t{0}},
        };
        for (auto& [column, value] : more)
            values[column] = value;
        Desk::add(*desk.module().listingdb, values);
    }
    records::listings& open() {
        desk.click(desk.menu().Command9);
        return desk.listings();
    }
    Cells ids() {
        Cells cells;
        for (int row = 1; row < desk.listings().grid1.Rows(); ++row)
            cells.push_back(desk.listings().grid1.cell(row, 0));
        return cells;
    }
    std::string mark(const std::string& id) {
        return Desk::rows(*desk.module().listingdb, "select * from [table] where id=" + id).at(0).at("Flag");
    }

    Desk desk;
};

TEST_F(ListingViews, TheMenuBearsItsCaptions) {
    begin();
    const auto& screen = open();
    EXPECT_EQ(screen.m_quicksearch.caption, "&Quick Search");
    EXPECT_EQ(screen.m_thismonth.caption, "This Month");
    EXPECT_EQ(screen.m_lastmonth.caption, "Last Month");
    EXPECT_EQ(screen.m_yeartodate.caption, "Year to Date");
    EXPECT_EQ(screen.m_alllistings.caption, "All Listings");
    EXPECT_EQ(screen.m_expiringlistings.caption, "&Expiring Listings");
    EXPECT_EQ(screen.m_birthdays.caption, "&Birthdays");
    EXPECT_EQ(screen.m_customerstocontact.caption, "&Customers to Contact");
}

TEST_F(ListingViews, ThisMonthRunsFromItsFirstToItsLastDay) {
    begin();
    add(1, {{"datelisted", make_date(2026, 10, 31)}});
    add(2, {{"datelisted", make_date(2026, 11, 1)}});
    add(3, {{"datelisted", make_date(2026, 11, 30)}});
    add(4, {{"datelisted", make_date(2026, 12, 1)}});
    desk.choose(open().m_thismonth);
    EXPECT_EQ(ids(), (Cells{"2", "3"}));
    EXPECT_EQ(desk.listings().caption, "This Month's Listings");
    EXPECT_EQ(desk.module().listingquery, "select * from [table] where datelisted >= #11/1/2026# and "
                                          "datelisted <= #11/30/2026# order by datelisted, last, first");
}

TEST_F(ListingViews, InFebruaryOfALeapYearThisMonthEndsOnThe29th) {
    begin({2028, 2, 10, 10, 0, 0});
    desk.choose(open().m_thismonth);
    EXPECT_NE(desk.module().listingquery.find("<= #2/29/2028#"), std::string::npos);
}

TEST_F(ListingViews, InJanuaryLastMonthIsDecemberOfTheYearBefore) {
    begin({2027, 1, 15, 10, 0, 0});
    desk.choose(open().m_lastmonth);
    EXPECT_EQ(desk.listings().caption, "Last Month's Listings");
    EXPECT_EQ(desk.module().listingquery, "select * from [table] where datelisted >= #12/1/2026# and "
                                          "datelisted <= #12/31/2026# order by datelisted, last, first");
}

TEST_F(ListingViews, YearToDateHasNoUpperBound) {
    begin();
    add(1, {{"datelisted", make_date(2025, 12, 31)}});
    add(2, {{"datelisted", make_date(2026, 1, 1)}});
    add(3, {{"datelisted", make_date(2027, 6, 1)}});
    desk.choose(open().m_yeartodate);
    EXPECT_EQ(ids(), (Cells{"2", "3"}));
    EXPECT_EQ(desk.listings().caption, "Year-to-Date Listings");
}

TEST_F(ListingViews, AllListingsAreThoseWithADate) {
    begin();
    add(1, {{"datelisted", make_date(1899, 12, 30)}});
    add(2, {{"datelisted", std::monostate{}}});
    desk.choose(open().m_alllistings);
    EXPECT_EQ(ids(), Cells{"1"});
    EXPECT_EQ(desk.listings().caption, "All Listings");
    EXPECT_EQ(desk.module().listingquery,
              "select * from [table] where datelisted>#1/1/1800# order by datelisted, last, first");
}

TEST_F(ListingViews, AnEmptyDateViewSaysNothing) {
    begin();
    desk.choose(open().m_thismonth);
    EXPECT_EQ(ids(), Cells{""});
    EXPECT_TRUE(desk.host.boxes.empty());
}

TEST_F(ListingViews, BirthdaysOfTheComingSevenDaysAreMarkedOneForTheOwnerTwoForTheSecond) {
    begin();
    add(1, {{"birthday", make_date(1960, 11, 20)}});
    add(2, {{"co_birthday", make_date(1960, 11, 27)}});
    add(3, {{"birthday", make_date(1960, 11, 28)}});
    add(4, {{"birthday", make_date(1960, 11, 19)}});
    add(5, {{"birthday", make_date(1960, 11, 21)}, {"co_birthday", make_date(1961, 11, 22)}});
    desk.choose(open().m_birthdays);
    EXPECT_EQ(ids(), (Cells{"1", "2", "5"}));
    EXPECT_EQ(mark("1"), "1");
    EXPECT_EQ(mark("2"), "2");
    EXPECT_EQ(mark("3"), "0");
    EXPECT_EQ(mark("5"), "2") << "the second owner's mark overwrites the first one's, and the row shows once";
    EXPECT_EQ(desk.listings().caption, "Customers with Birthdays");
    EXPECT_EQ(desk.module().listingquery, "select * from [table] where flag>0 order by last, first");
}

TEST_F(ListingViews, AFebruary29BirthdayIsShownInTheWeekBeforeFebruary28InEveryYear) {
    for (const int year : {2027, 2028}) {
        Desk other(Desk::delivered(), {year, 2, 21, 10, 0, 0});
        other.start();
        Desk::add(*other.module().listingdb, {{"id", std::int64_t{1}},
                                              {"datelisted", make_date(2026, 1, 1)},
                                              {"birthday", make_date(1960, 2, 29)}});
        other.click(other.menu().Command9);
        other.choose(other.listings().m_birthdays);
        EXPECT_EQ(other.listings().grid1.cell(1, 0), "1") << year;
        EXPECT_TRUE(other.host.boxes.empty());
    }
}

TEST_F(ListingViews, ABirthdayBeyondTheYearsEndIsNotFound) {
    begin({2026, 12, 30, 10, 0, 0});
    add(1, {{"birthday", make_date(1960, 1, 2)}});
    desk.choose(open().m_birthdays);
    EXPECT_EQ(desk.host.box_texts(), Cells{"No Birthdays"});
}

TEST_F(ListingViews, WithoutAnyBirthdayTheGridStaysOverAnEmptySet) {
    begin();
    add(1, {});
    desk.choose(open().m_birthdays);
    ASSERT_EQ(desk.host.boxes.size(), 1u);
    EXPECT_EQ(desk.host.boxes[0].text, "No Birthdays");
    EXPECT_EQ(desk.host.boxes[0].title, "Message");
    EXPECT_EQ(ids(), Cells{"1"});
    EXPECT_EQ(desk.module().listingset->RecordCount(), 0);
    desk.runtime().click_row(desk.listings().grid1, 1);
    ASSERT_TRUE(desk.host.error) << "a click on the old rows finds the empty set";
    EXPECT_EQ(desk.host.error->number, 3021);
}

TEST_F(ListingViews, WithNoBirthdayNearTheOldViewIsRebuiltUnderTheNewCaption) {
    begin();
    add(1, {{"birthday", make_date(1960, 6, 1)}});
    desk.choose(open().m_alllistings);
    const std::string view = desk.module().listingquery;
    desk.choose(desk.listings().m_birthdays);
    EXPECT_EQ(desk.host.box_texts(), Cells{"No Birthdays"});
    EXPECT_EQ(desk.listings().caption, "Customers with Birthdays");
    EXPECT_EQ(desk.module().listingquery, view);
    EXPECT_EQ(ids(), Cells{"1"});
    EXPECT_EQ(desk.module().listingset->RecordCount(), 1);
}

TEST_F(ListingViews, OnAnEmptyTableOnlyTheCaptionChanges) {
    begin();
    open();
    desk.choose(desk.listings().m_birthdays);
    EXPECT_EQ(desk.listings().caption, "Customers with Birthdays");
    desk.choose(desk.listings().m_customerstocontact);
    EXPECT_EQ(desk.listings().caption, "Customers to Contact");
    desk.choose(desk.listings().m_expiringlistings);
    EXPECT_EQ(desk.listings().caption, "Expiring Leases");
    EXPECT_TRUE(desk.host.boxes.empty());
}

TEST_F(ListingViews, ContactsAreMarkedOnBothSidesOfToday) {
    begin();
    add(1, {{"datenextcontact", make_date(2026, 11, 6)}});
    add(2, {{"datenextcontact", make_date(2026, 12, 4)}});
    add(3, {{"datenextcontact", make_date(2026, 11, 5)}});
    add(4, {{"datenextcontact", make_date(2026, 12, 5)}});
    desk.choose(open().m_customerstocontact);
    EXPECT_EQ(ids(), (Cells{"1", "2"}));
    EXPECT_EQ(mark("1"), "11");
    EXPECT_EQ(desk.module().listingquery,
              "select * from [table] where flag>0 order by datenextcontact, last, first");
}

TEST_F(ListingViews, AnEmptyWindowIsTodayAlone) {
    desk.set_setting("p_customer", std::string());
    desk.set_setting("p_expire", std::string());
    begin();
    add(1, {{"datenextcontact", make_date(2026, 11, 20)}, {"dateexpires", make_date(2026, 11, 21)}});
    add(2, {{"datenextcontact", make_date(2026, 11, 21)}, {"dateexpires", make_date(2026, 11, 20)}});
    desk.choose(open().m_customerstocontact);
    EXPECT_EQ(ids(), Cells{"1"});
    desk.choose(desk.listings().m_expiringlistings);
    EXPECT_EQ(ids(), Cells{"2"});
}

TEST_F(ListingViews, AnExpiryUpToTheWindowPastStillShows) {
    begin();
    add(1, {{"dateexpires", make_date(2026, 10, 21)}});
    add(2, {{"dateexpires", make_date(2026, 12, 20)}});
    add(3, {{"dateexpires", make_date(2026, 10, 20)}});
    desk.choose(open().m_expiringlistings);
    EXPECT_EQ(ids(), (Cells{"1", "2"}));
    EXPECT_EQ(mark("2"), "10");
}

TEST_F(ListingViews, ARowWithoutAnExpiryKeepsAStaleMarkAndComesFirst) {
    begin();
    add(1, {{"Flag", std::int64_t{100}}});
    add(2, {{"dateexpires", make_date(2026, 11, 25)}});
    desk.choose(open().m_expiringlistings);
    EXPECT_EQ(ids(), (Cells{"1", "2"}));
    desk.choose(desk.listings().m_customerstocontact);
    EXPECT_EQ(mark("1"), "0") << "the contact view clears every dated row";
}

TEST_F(ListingViews, TheMarksOutliveTheView) {
    begin();
    add(1, {{"birthday", make_date(1960, 11, 21)}});
    desk.choose(open().m_birthdays);
    desk.restart();
    begin();
    EXPECT_EQ(mark("1"), "1");
}

} // namespace
} // namespace tolva
