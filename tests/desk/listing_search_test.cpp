#include <gtest/gtest.h>

#include "search/listingsearch.h"
#include "support/desk.h"

namespace tolva {
namespace {

using basic::make_date;
using support::Desk;
using Texts = std::vector<std::string>;

class ListingSearch : public testing::Test {
  protected:
    ListingSearch() {
        desk.start();
        desk.click(desk.menu().Command9);
        desk.choose(desk.listings().m_searchlisting);
    }
    search::listingsearch& screen() {
        return static_cast<search::listingsearch&>(desk.module().listingsearch());
    }
    void add(int id, std::map<std::string, jet::Value> more) {
        std::map<std::string, jet::Value> values{{"id", std::int64_t{id}},
                                                 {"first", std::string("F")},
                                                 {"last", "L" + std::to_string(id)},
                                                 {"datelisted", make_date(2026, 1, id)}};
        for (auto& [column, value] : more)
            values[column] = value;
        Desk::add(*desk.module().listingdb, values);
    }
    void search() { desk.click(screen().Command9); }

    Desk desk;
    const std::string base = "select * from [table] where datelisted > #1/1/1800#";
};

TEST_F(ListingSearch, TheScreenComesOverTheMenuAndTheListingsAreGone) {
    EXPECT_FALSE(desk.module().listings.loaded());
    EXPECT_TRUE(screen().visible());
    EXPECT_EQ(screen().caption, "Search for Listings");
    EXPECT_EQ(screen().Command9.caption, "&Search");
    EXPECT_EQ(screen().Command10.caption, "&Clear Form");
    EXPECT_EQ(screen().Command11.caption, "E&XIT");
    EXPECT_EQ(desk.host.shown[desk.host.shown.size() - 2].screen, "Form1");
}

TEST_F(ListingSearch, FragmentsComeInTheirOrderToTheLetter) {
    add(1, {});
    desk.type(screen().last, " smi ");
    desk.type(screen().first, "a");
    desk.type(screen().businessname, "b");
    desk.type(screen().mls, "m");
    desk.type(screen().city, "c");
    desk.type(screen().state, "s");
    desk.type(screen().employer, "e");
    desk.type(screen().datelisted1, "1/1/2026");
    desk.type(screen().datelisted2, "2/1/2026");
    desk.type(screen().datelastcontact1, "1/2/2026");
    desk.type(screen().datelastcontact2, "2/2/2026");
    desk.type(screen().datenextcontact1, "1/3/2026");
    desk.type(screen().datenextcontact2, "2/3/2026");
    desk.type(screen().listingprice1, "1,000");
    desk.type(screen().listingprice2, "200000.50");
    desk.type(screen().listingaddress, "la");
    desk.type(screen().listingcity, "lc");
    search();
    EXPECT_EQ(desk.module().listingquery,
              base + " and ((last like '*smi*') or (co_last like '*smi*'))"
                     " and ((first like '*a*') or (co_first like '*a*'))"
                     " and (businessname like '*b*')"
                     " and (mls like '*m*')"
                     " and (city like '*c*')"
                     " and (state like '*s*')"
                     " and (employer like '*e*')"
                     " and (datelisted >= #1/1/2026# and datelisted <= #2/1/2026#)"
                     " and (datelastcontact >= #1/2/2026# and datelastcontact <= #2/2/2026#)"
                     " and (datenextcontact >= #1/3/2026# and datenextcontact <= #2/3/2026#)"
                     " and (listingprice >= 1 and listingprice <= 200000.5)"
                     " and (listingaddress like '*la*')"
                     " and (listingcity like '*lc*')");
    EXPECT_EQ(desk.host.box_texts(), Texts{"No Listings Found"});
    EXPECT_EQ(desk.host.boxes[0].title, "Search Results");
}

TEST_F(ListingSearch, PartOfANameFindsOwnerAndCoOwnerInAnyLetterCase) {
    add(1, {{"last", std::string("Smith")}});
    add(2, {{"co_last", std::string("BLACKSMITH")}});
    add(3, {});
    desk.type(screen().last, "smi");
    search();
    EXPECT_EQ(desk.host.box_texts(), Texts{"2 Records Found"});
    EXPECT_EQ(Desk::ids(desk.listings()), (Texts{"1", "2"}));
    EXPECT_FALSE(desk.listings().visible())
        << "it is loaded by the first emptying of its grid and stays unseen";
    EXPECT_TRUE(screen().visible());
    desk.click(screen().Command11);
    EXPECT_TRUE(desk.listings().visible());
    EXPECT_FALSE(desk.module().listingsearch.loaded());
}

TEST_F(ListingSearch, WithoutCriteriaEveryDatedListingIsFound) {
    add(1, {});
    add(2, {{"datelisted", std::monostate{}}});
    search();
    EXPECT_EQ(desk.module().listingquery, base);
    EXPECT_EQ(desk.host.box_texts(), Texts{"1 Records Found"});
}

TEST_F(ListingSearch, HalfARangeOrAFaultyDateAddsNothing) {
    desk.type(screen().listingprice1, "100");
    desk.type(screen().datelisted1, "1/1/2026");
    desk.type(screen().datenextcontact1, "1/1/2026");
    desk.type(screen().datenextcontact2, "someday");
    desk.type(screen().dateexpires1, "1/1/2026");
    search();
    EXPECT_EQ(desk.module().listingquery, base);
    EXPECT_FALSE(desk.host.error);
}

TEST_F(ListingSearch, ABlankAloneExcludesNulls) {
    add(1, {{"first", std::monostate{}}});
    add(2, {});
    desk.type(screen().first, " ");
    search();
    EXPECT_EQ(desk.module().listingquery, base + " and ((first like '**') or (co_first like '**'))");
    EXPECT_EQ(Desk::ids(desk.listings()), Texts{"2"});
}

TEST_F(ListingSearch, BoundsInReverseOrderFindNothing) {
    add(1, {{"listingprice", 150.0}});
    desk.type(screen().listingprice1, "200");
    desk.type(screen().listingprice2, "100");
    search();
    EXPECT_EQ(desk.host.box_texts(), Texts{"No Listings Found"});
    desk.click(screen().Command11);
    EXPECT_EQ(Desk::ids(desk.listings()), Texts{""}) << "the search, though empty, is the view";
}

TEST_F(ListingSearch, AnyPhoneMakesTheStoreRejectTheQuery) {
    desk.type(screen().phone, "555");
    search();
    EXPECT_EQ(desk.module().listingquery,
              base + " and ((homephone like '*555'*) or (co_homephone like '*555'*))");
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 3075);
}

TEST_F(ListingSearch, TwoExpiryDatesEndTheSearchBeforeAnyQueryRuns) {
    const std::string before = desk.module().listingquery;
    desk.type(screen().dateexpires1, "1/1/2026");
    desk.type(screen().dateexpires2, "2/1/2026");
    search();
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 424);
    EXPECT_EQ(desk.module().listingquery, before);
}

TEST_F(ListingSearch, AQuoteBreaksTheQuery) {
    desk.type(screen().last, "O'Brien");
    search();
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 3075);
}

TEST_F(ListingSearch, AfterAnEmptySearchAnEarlierOnesRowsStandOverTheEmptySet) {
    add(1, {});
    desk.type(screen().last, "L1");
    search();
    desk.type(screen().last, "nobody");
    search();
    EXPECT_EQ(desk.host.box_texts(), (Texts{"1 Records Found", "No Listings Found"}));
    desk.click(screen().Command11);
    EXPECT_EQ(desk.listings().caption, "Current Listings");
    EXPECT_EQ(Desk::ids(desk.listings()), Texts{"1"});
    EXPECT_EQ(desk.module().listingset->RecordCount(), 0);
    desk.runtime().click_row(desk.listings().grid1, 1);
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 3021);
}

TEST_F(ListingSearch, ARowFoundOpensFromTheGridThatTheSearchLeft) {
    add(1, {});
    add(2, {{"last", std::string("Smith")}});
    desk.type(screen().last, "smith");
    search();
    desk.click(screen().Command11);
    desk.runtime().click_row(desk.listings().grid1, 1);
    EXPECT_FALSE(desk.host.error);
    EXPECT_EQ(desk.listings().id.text, "2");
}

TEST_F(ListingSearch, EmptiedByItsExitAndNoFieldSelectsOrListensToEnter) {
    for (platform::Control* control : screen().controls())
        if (auto* box = dynamic_cast<platform::TextBox*>(control)) {
            EXPECT_FALSE(box->on_got_focus) << box->name();
            EXPECT_FALSE(box->on_key_press) << box->name();
            box->text = "x";
        }
    desk.click(screen().Command11);
    desk.choose(desk.listings().m_searchlisting);
    EXPECT_EQ(screen().last.text, "");
}

TEST_F(ListingSearch, ClearEmptiesEveryField) {
    for (platform::Control* control : screen().controls())
        if (auto* box = dynamic_cast<platform::TextControl*>(control))
            box->text = "x";
    desk.click(screen().Command10);
    for (platform::Control* control : screen().controls())
        if (auto* box = dynamic_cast<platform::TextControl*>(control)) {
            EXPECT_EQ(box->text, "") << box->name();
        }
}

TEST_F(ListingSearch, EachDateButtonFillsItsField) {
    const std::pair<platform::Button*, platform::TextBox*> pairs[] = {
        {&screen().Command1, &screen().datelisted1},      {&screen().Command5, &screen().datelisted2},
        {&screen().Command2, &screen().dateexpires1},     {&screen().Command6, &screen().dateexpires2},
        {&screen().Command3, &screen().datelastcontact1}, {&screen().Command7, &screen().datelastcontact2},
        {&screen().Command4, &screen().datenextcontact1}, {&screen().Command8, &screen().datenextcontact2},
    };
    int day = 1;
    for (const auto& [button, field] : pairs) {
        desk.will_pick(2026, 12, day);
        desk.click(*button);
        EXPECT_EQ(field->text, "12/" + std::to_string(day++) + "/2026");
    }
}

} // namespace
} // namespace tolva
