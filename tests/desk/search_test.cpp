#include <gtest/gtest.h>

#include "records/addressbook.h"
#include "records/prospect.h"
#include "search/addresssearch.h"
#include "search/listingsearch.h"
#include "search/prospectsearch.h"
#include "support/desk.h"

namespace tolva {
namespace {

using basic::make_date;
using support::Desk;
using Texts = std::vector<std::string>;

Texts ids(const module::RecordEntry& screen) {
    Texts cells;
    const auto& grid = static_cast<const records::RecordScreen&>(screen).grid1;
    for (int row = 1; row < grid.Rows(); ++row)
        cells.push_back(grid.cell(row, 0));
    return cells;
}

// --- Listings ---

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
    EXPECT_EQ(ids(desk.listings()), (Texts{"1", "2"}));
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
    EXPECT_EQ(ids(desk.listings()), Texts{"2"});
}

TEST_F(ListingSearch, BoundsInReverseOrderFindNothing) {
    add(1, {{"listingprice", 150.0}});
    desk.type(screen().listingprice1, "200");
    desk.type(screen().listingprice2, "100");
    search();
    EXPECT_EQ(desk.host.box_texts(), Texts{"No Listings Found"});
    desk.click(screen().Command11);
    EXPECT_EQ(ids(desk.listings()), Texts{""}) << "the search, though empty, is the view";
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

// --- Prospects ---

class ProspectSearch : public testing::Test {
  protected:
    ProspectSearch() {
        desk.start();
        desk.click(desk.menu().Command3);
        desk.choose(static_cast<records::prospect&>(desk.module().prospect()).m_searchprospect);
    }
    search::prospectsearch& screen() {
        return static_cast<search::prospectsearch&>(desk.module().prospectsearch());
    }
    void add(int id, std::map<std::string, jet::Value> more) {
        std::map<std::string, jet::Value> values{{"id", std::int64_t{id}},
                                                 {"last", "L" + std::to_string(id)},
                                                 {"dateacquired", make_date(2026, 1, id)}};
        for (auto& [column, value] : more)
            values[column] = value;
        Desk::add(*desk.module().prospectdb, values);
    }
    void search() { desk.click(screen().Command1); }

    Desk desk;
    const std::string base = "select * from [table] where dateacquired > #1/1/1800#";
};

TEST_F(ProspectSearch, FragmentsComeInTheirOrderToTheLetter) {
    add(1, {});
    desk.type(screen().last, "l");
    desk.type(screen().first, "f");
    desk.type(screen().businessname, "b");
    desk.type(screen().city, "c");
    desk.type(screen().state, "s");
    desk.type(screen().employer, "e");
    const std::tuple<platform::TextBox*, platform::TextBox*> dates[] = {
        {&screen().dateacquired1, &screen().dateacquired2},
        {&screen().datelastcontact1, &screen().datelastcontact2},
        {&screen().datenextcontact1, &screen().datenextcontact2},
        {&screen().dateinmarket1, &screen().dateinmarket2}};
    for (const auto& [from, to] : dates) {
        desk.type(*from, "1/1/2026");
        desk.type(*to, "2/1/2026");
    }
    const std::tuple<platform::TextBox*, platform::TextBox*> numbers[] = {
        {&screen().price1, &screen().price2},           {&screen().acres1, &screen().acres2},
        {&screen().squarefeet1, &screen().squarefeet2}, {&screen().rooms1, &screen().rooms2},
        {&screen().bedrooms1, &screen().bedrooms2},     {&screen().bathrooms1, &screen().bathrooms2}};
    for (const auto& [from, to] : numbers) {
        desk.type(*from, "1.5x");
        desk.type(*to, "9");
    }
    desk.type(screen().basement, "ba");
    desk.type(screen().garage, "ga");
    desk.type(screen().prospectsource, "so");
    desk.type(screen().cities, "ci");
    desk.type(screen().construction, "co");
    desk.type(screen().subdivision, "su");
    desk.type(screen().streets, "st");
    desk.type(screen().interestlevel, "Hot");
    desk.runtime().tick(screen().prospecttype[0], 1);
    desk.runtime().tick(screen().prospecttype[1], 1);
    desk.runtime().tick(screen().feature[0], 1);
    desk.runtime().tick(screen().feature[21], 1);
    search();
    const auto pair = [](const std::string& column) {
        return "((" + column + " >= 1.5 and " + column + " <= 9) or (c_" + column + " >= 1.5 and c_" +
               column + " <= 9))";
    };
    const auto span = [](const std::string& column) {
        return "(" + column + " >= #1/1/2026# and " + column + " <= #2/1/2026#)";
    };
    const auto twins = [](const std::string& column, const std::string& text) {
        return "((" + column + " like '*" + text + "*') or (c_" + column + " like '*" + text + "*'))";
    };
    EXPECT_EQ(desk.module().listingquery,
              base +
                  " and ((last like '*l*') or (co_last like '*l*'))"
                  " and ((first like '*f*') or (co_first like '*f*'))"
                  " and (businessname like '*b*') and " +
                  twins("city", "c") + " and (state like '*s*') and (employer like '*e*') and " +
                  span("dateacquired") + " and " + span("datelastcontact") + " and " +
                  span("datenextcontact") + " and " + span("dateinmarket") + " and " + pair("price") +
                  " and " + pair("acres") + " and " + pair("squarefeet") + " and " + pair("rooms") + " and " +
                  pair("bedrooms") + " and " + pair("bathrooms") + " and " + twins("basement", "ba") +
                  " and " + twins("garage", "ga") +
                  " and (prospectsource like '*so*') and (cities like '*ci*') and " +
                  twins("construction", "co") + " and " + twins("subdivision", "su") +
                  " and (streets like '*st*') and (interestlevel like '*Hot*')"
                  " and (prospecttype0 = true) and (prospecttype1 = true)"
                  " and ((feature0 = true) or (c_feature0 = true))"
                  " and ((feature21 = true) or (c_feature21 = true))");
    EXPECT_EQ(desk.host.box_texts(), Texts{"No Prospects Found"});
}

TEST_F(ProspectSearch, ASuccessfulSearchIsTheProspectsViewAndOverwritesTheListingsToo) {
    add(1, {{"cities", std::string("Rome, Utica")}});
    add(2, {{"cities", std::string("Troy")}});
    desk.type(screen().cities, "utica");
    search();
    EXPECT_EQ(desk.host.box_texts(), Texts{"1 Records Found"});
    EXPECT_EQ(desk.module().prospectquery, base + " and (cities like '*utica*')");
    EXPECT_EQ(desk.module().listingquery, desk.module().prospectquery);
    EXPECT_EQ(ids(desk.module().prospect()), Texts{"1"});
    EXPECT_FALSE(desk.module().prospect().visible());
    desk.click(screen().Command3);
    EXPECT_TRUE(desk.module().prospect().visible());
}

TEST_F(ProspectSearch, AnEmptyResultKeepsTheProspectsView) {
    desk.module().prospect();
    const std::string view = desk.module().prospectquery;
    desk.type(screen().last, "nobody");
    search();
    EXPECT_EQ(desk.module().prospectquery, view);
    EXPECT_EQ(desk.module().listingquery,
              base + " and ((last like '*nobody*') or (co_last like '*nobody*'))");
    EXPECT_EQ(desk.module().prospectset->RecordCount(), 0);
}

TEST_F(ProspectSearch, TheTwinColumnFindsARowToo) {
    add(1, {{"c_price", 150.0}});
    add(2, {{"price", 150.0}});
    add(3, {{"price", 500.0}});
    desk.type(screen().price1, "100");
    desk.type(screen().price2, "200");
    search();
    EXPECT_EQ(desk.host.box_texts(), Texts{"2 Records Found"});
}

TEST_F(ProspectSearch, AllTickedFeaturesMustBeThere) {
    add(1, {{"feature0", true}, {"c_feature1", true}});
    add(2, {{"feature0", true}});
    desk.runtime().tick(screen().feature[0], 1);
    desk.runtime().tick(screen().feature[1], 1);
    search();
    EXPECT_EQ(ids(desk.module().prospect()), Texts{"1"});
}

TEST_F(ProspectSearch, ClearForgetsTownsAndContactDates) {
    for (platform::Control* control : screen().controls()) {
        if (auto* box = dynamic_cast<platform::TextControl*>(control))
            box->text = "x";
        if (auto* box = dynamic_cast<platform::CheckBox*>(control))
            box->value = 1;
    }
    desk.click(screen().Command2);
    const Texts kept = {"cities", "datelastcontact1", "datelastcontact2", "datenextcontact1",
                        "datenextcontact2"};
    for (platform::Control* control : screen().controls()) {
        if (auto* box = dynamic_cast<platform::TextControl*>(control)) {
            const bool is_kept = std::find(kept.begin(), kept.end(), box->name()) != kept.end();
            EXPECT_EQ(box->text, is_kept ? "x" : "") << box->name();
        }
        if (auto* box = dynamic_cast<platform::CheckBox*>(control)) {
            EXPECT_EQ(box->value, 0) << box->object_name();
        }
    }
}

TEST_F(ProspectSearch, OnlyTheFirstTwoDateButtonsWork) {
    desk.will_pick(2026, 12, 1);
    desk.click(screen().Command4);
    EXPECT_EQ(screen().dateacquired1.text, "12/1/2026");
    for (auto* button : {&screen().Command8, &screen().Command9, &screen().Command10, &screen().Command11})
        desk.click(*button);
    EXPECT_FALSE(desk.host.error);
    desk.will_pick(2026, 12, 2);
    desk.click(screen().Command6);
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 424);
}

TEST_F(ProspectSearch, TheLevelsAreListedAndTheFeaturesNamed) {
    EXPECT_EQ(screen().caption, "Search for Prospects");
    EXPECT_EQ(screen().interestlevel.items().size(), 3u);
    EXPECT_EQ(screen().feature[1].caption, "Forced Air");
    EXPECT_TRUE(screen().construction.items().empty());
}

// --- Addresses ---

class AddressSearch : public testing::Test {
  protected:
    AddressSearch() {
        desk.start();
        desk.click(desk.menu().Command1);
        desk.choose(static_cast<records::addressbook&>(desk.module().addressbook()).m_search);
    }
    search::addresssearch& screen() {
        return static_cast<search::addresssearch&>(desk.module().addresssearch());
    }
    void add(int id, const std::string& last, const std::string& notes) {
        Desk::add(*desk.module().addressdb, {{"id", std::int64_t{id}}, {"last", last}, {"notes", notes}});
    }

    Desk desk;
};

TEST_F(AddressSearch, FragmentsComeInTheirOrderToTheLetter) {
    desk.type(screen().last, "l");
    desk.type(screen().first, "f");
    desk.type(screen().businessname, "b");
    desk.type(screen().city, "c");
    desk.type(screen().state, "s");
    desk.type(screen().notes, "n");
    desk.click(screen().Command1);
    EXPECT_EQ(
        desk.module().addressquery,
        "select * from [table] where id > 0 and (last like '*l*') and (first like '*f*') and "
        "(businessname like '*b*') and (city like '*c*') and (state like '*s*') and (notes like '*n*')");
    EXPECT_EQ(desk.host.box_texts(), Texts{"No Addresses Found"});
    EXPECT_EQ(desk.host.boxes[0].title, "Search Results");
}

TEST_F(AddressSearch, NotesAreSearchedAndTheScreenHidesWithItsFields) {
    add(1, "A", std::string(3000, 'x') + "needle");
    add(2, "B", "");
    desk.type(screen().notes, "NEEDLE");
    desk.click(screen().Command1);
    EXPECT_EQ(desk.host.box_texts(), Texts{"1 Records Found"});
    EXPECT_EQ(ids(desk.module().addressbook()), Texts{"1"});
    desk.close(screen());
    EXPECT_TRUE(desk.module().addresssearch.loaded());
    EXPECT_FALSE(screen().visible());
    EXPECT_TRUE(desk.module().addressbook().visible());
    EXPECT_EQ(screen().notes.text, "NEEDLE");
    desk.module().addresssearch().show();
    desk.click(screen().Command2);
    EXPECT_EQ(screen().notes.text, "");
    desk.click(screen().Command3);
    EXPECT_FALSE(screen().visible());
}

TEST_F(AddressSearch, AnyPhoneEndsTheSearch) {
    desk.type(screen().phone, "5");
    desk.click(screen().Command1);
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 424);
}

TEST_F(AddressSearch, WithoutCriteriaEveryAddressIsCounted) {
    add(1, "A", "");
    add(2, "B", "");
    add(0, "no id", "");
    desk.click(screen().Command1);
    EXPECT_EQ(desk.host.box_texts(), Texts{"2 Records Found"});
}

TEST_F(AddressSearch, EveryFieldSelectsItsText) {
    for (platform::Control* control : screen().controls())
        if (auto* box = dynamic_cast<platform::TextBox*>(control)) {
            desk.runtime().focus(*box);
            EXPECT_EQ(box->selection_wishes(), 1u) << box->name();
        }
}

} // namespace
} // namespace tolva
