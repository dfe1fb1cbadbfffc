#include <gtest/gtest.h>

#include "records/prospect.h"
#include "search/prospectsearch.h"
#include "support/desk.h"
#include "support/errors.h"

namespace tolva {
namespace {

using basic::make_date;
using support::Desk;
using Texts = std::vector<std::string>;

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
    EXPECT_EQ(Desk::ids(desk.module().prospect()), Texts{"1"});
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

TEST_F(ProspectSearch, AnEmptyResultBringsThePreviousViewBackWithExit) {
    add(1, {{"interestlevel", std::string("Hot")}});
    desk.type(screen().last, "nobody");
    search();
    EXPECT_EQ(desk.host.box_texts(), Texts{"No Prospects Found"});
    EXPECT_EQ(desk.host.boxes[0].title, "Search Results");
    EXPECT_FALSE(desk.module().prospect.loaded());
    desk.click(screen().Command3);
    EXPECT_EQ(Desk::ids(desk.module().prospect()), Texts{"1"});
}

TEST_F(ProspectSearch, AfterAnEmptySearchAnEarlierOnesRowsStandOverTheEmptySet) {
    add(1, {});
    desk.type(screen().last, "L1");
    search();
    const std::string found = desk.module().prospectquery;
    desk.type(screen().last, "nobody");
    search();
    desk.click(screen().Command3);
    EXPECT_EQ(desk.module().prospectquery, found);
    EXPECT_EQ(Desk::ids(desk.module().prospect()), Texts{"1"});
    EXPECT_EQ(desk.module().prospectset->RecordCount(), 0);
    desk.runtime().click_row(static_cast<records::prospect&>(desk.module().prospect()).grid1, 1);
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 3021);
}

TEST_F(ProspectSearch, TheListingsRejectTheQueryThatItLeavesThem) {
    desk.click(desk.menu().Command9);
    desk.click(desk.listings().Command10);
    search();
    EXPECT_EQ(desk.module().listingquery, base);
    desk.click(desk.menu().Command9);
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 3061);
}

TEST_F(ProspectSearch, TheListingsFirstLoadOverwritesThatQueryAgain) {
    search();
    desk.click(desk.menu().Command9);
    EXPECT_FALSE(desk.host.error);
    EXPECT_EQ(desk.module().listingquery,
              "select * from [table] where datelisted >= #1/1/1900# order by datelisted, last, first");
}

TEST_F(ProspectSearch, PartOfANameFindsProspectAndCoProspectInAnyLetterCase) {
    add(1, {{"last", std::string("Smith")}});
    add(2, {{"co_last", std::string("BLACKSMITH")}});
    add(3, {});
    add(4, {{"last", std::string("Smith")}, {"dateacquired", std::monostate{}}});
    desk.type(screen().last, "smi");
    search();
    EXPECT_EQ(Desk::ids(desk.module().prospect()), (Texts{"1", "2"}))
        << "a row without the day it was acquired can't be found";
}

TEST_F(ProspectSearch, HalfAPairOrAFaultyDateAddsNothing) {
    desk.type(screen().price1, "100");
    desk.type(screen().acres2, "5");
    desk.type(screen().dateacquired1, "1/1/2026");
    desk.type(screen().dateinmarket1, "1/1/2026");
    desk.type(screen().dateinmarket2, "someday");
    desk.type(screen().rooms1, " ");
    desk.type(screen().rooms2, "5");
    search();
    EXPECT_EQ(desk.module().listingquery, base);
}

TEST_F(ProspectSearch, ASavedProspectWithoutAPriceLiesBetweenZeroAndAnything) {
    desk.module().prospect().show();
    auto& prospects = static_cast<records::prospect&>(desk.module().prospect());
    desk.choose(prospects.m_newprospect);
    desk.type(screen().price1, "0");
    desk.type(screen().price2, "200000");
    search();
    EXPECT_EQ(desk.host.box_texts(), Texts{"1 Records Found"});
    desk.type(screen().price1, "200000");
    desk.type(screen().price2, "0");
    search();
    EXPECT_EQ(desk.host.boxes.back().text, "No Prospects Found") << "bounds in reverse order";
}

TEST_F(ProspectSearch, ATextThatIsNoNumberCountsAsZero) {
    add(1, {{"price", 0.0}});
    add(2, {{"price", 1.0}});
    desk.type(screen().price1, "cheap");
    desk.type(screen().price2, "dear");
    search();
    EXPECT_EQ(desk.module().prospectquery,
              base + " and ((price >= 0 and price <= 0) or (c_price >= 0 and c_price <= 0))");
    EXPECT_EQ(Desk::ids(desk.module().prospect()), Texts{"1"});
}

TEST_F(ProspectSearch, BothProspectTypesTogetherAskForBoth) {
    add(1, {{"prospecttype0", true}});
    add(2, {{"prospecttype0", true}, {"prospecttype1", true}});
    desk.runtime().tick(screen().prospecttype[0], 1);
    desk.runtime().tick(screen().prospecttype[1], 1);
    search();
    EXPECT_EQ(Desk::ids(desk.module().prospect()), Texts{"2"});
}

TEST_F(ProspectSearch, TheLevelIsSearchedAsAWholeAndItsParenthesesAreNoWildcards) {
    add(1, {{"interestlevel", std::string("Hot (In Market Now)")}});
    add(2, {{"interestlevel", std::string("Hot")}});
    screen().interestlevel.set_list_index(0);
    search();
    EXPECT_EQ(Desk::ids(desk.module().prospect()), Texts{"1"});
}

TEST_F(ProspectSearch, AnyPhoneMakesTheStoreRejectTheQuery) {
    desk.type(screen().phone, " 555 ");
    search();
    EXPECT_EQ(desk.module().listingquery,
              base + " and ((homephone like '*555'*) or (co_homephone like '*555'*))");
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 3075);
}

TEST_F(ProspectSearch, AQuoteBreaksTheQuery) {
    desk.type(screen().streets, "St. John's");
    search();
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 3075);
}

TEST_F(ProspectSearch, ABlankAloneIsACriterionThatLeavesOutNulls) {
    add(1, {{"garage", std::string()}});
    add(2, {});
    desk.type(screen().garage, " ");
    search();
    EXPECT_EQ(desk.module().prospectquery, base + " and ((garage like '**') or (c_garage like '**'))");
    EXPECT_EQ(Desk::ids(desk.module().prospect()), Texts{"1"});
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

/// The desk of an agent whose prospects are in a file of an earlier make, without any of the twin columns.
class OlderProspects : public testing::Test {
  protected:
    OlderProspects() {
        const std::string path = desk.data_file("prospect.mdb");
        jet::TableSchema older = jet::Database::open(*desk.disk, path)->table("table").schema();
        std::erase_if(older.columns, [](const jet::ColumnSchema& column) {
            return column.name.starts_with("c_") || column.name == "co_homephone";
        });
        std::filesystem::remove(path);
        jet::Database::create(*desk.disk, path, {older});
        desk.start();
        desk.click(desk.menu().Command3);
        desk.choose(static_cast<records::prospect&>(desk.module().prospect()).m_searchprospect);
    }
    search::prospectsearch& screen() {
        return static_cast<search::prospectsearch&>(desk.module().prospectsearch());
    }

    Desk desk;
};

TEST_F(OlderProspects, AreSearchedByTheColumnsThatTheyHave) {
    Desk::add(*desk.module().prospectdb, {{"id", std::int64_t{1}},
                                          {"city", std::string("Utica")},
                                          {"price", 150.0},
                                          {"basement", std::string("Full")},
                                          {"feature3", true},
                                          {"dateacquired", make_date(2026, 1, 1)}});
    Desk::add(*desk.module().prospectdb, {{"id", std::int64_t{2}}, {"dateacquired", make_date(2026, 1, 2)}});
    for (auto* box : {&screen().price1, &screen().acres1, &screen().squarefeet1, &screen().rooms1,
                      &screen().bedrooms1, &screen().bathrooms1})
        box->text = "100";
    for (auto* box : {&screen().price2, &screen().acres2, &screen().squarefeet2, &screen().rooms2,
                      &screen().bedrooms2, &screen().bathrooms2})
        box->text = "200";
    for (const auto& box : screen().feature)
        box->value = 1;
    for (platform::TextControl* box :
         std::initializer_list<platform::TextControl*>{&screen().city, &screen().basement, &screen().garage,
                                                       &screen().construction, &screen().subdivision})
        box->text = "u";
    desk.click(screen().Command1);
    EXPECT_EQ(desk.host.box_texts(), Texts{"No Prospects Found"}) << "every twin is named and none fails";

    desk.click(screen().Command2);
    screen().city.text = "utica";
    screen().price1.text = "100";
    screen().price2.text = "200";
    screen().basement.text = "full";
    screen().feature[3].value = 1;
    desk.click(screen().Command1);
    EXPECT_EQ(desk.host.boxes.back().text, "1 Records Found");
    EXPECT_EQ(Desk::ids(desk.module().prospect()), Texts{"1"});
    EXPECT_FALSE(desk.host.error);
}

TEST_F(OlderProspects, NoOtherNameReadsAsNullAndTheListingsHaveNoTwins) {
    for (auto& [database, condition] :
         {std::pair<dao::Database&, const char*>{*desk.module().prospectdb, "co_homephone = 'x'"},
          {*desk.module().prospectdb, "c_streets = 'x'"},
          {*desk.module().prospectdb, "c_feature22 = true"},
          {*desk.module().listingdb, "c_city = 'x'"}})
        EXPECT_EQ(support::error_number([&] {
                      database.OpenRecordset(std::string("select * from [table] where ") + condition);
                  }),
                  3061)
            << condition;
}

TEST_F(ProspectSearch, AllTickedFeaturesMustBeThere) {
    add(1, {{"feature0", true}, {"c_feature1", true}});
    add(2, {{"feature0", true}});
    desk.runtime().tick(screen().feature[0], 1);
    desk.runtime().tick(screen().feature[1], 1);
    search();
    EXPECT_EQ(Desk::ids(desk.module().prospect()), Texts{"1"});
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

TEST_F(ProspectSearch, TheOtherWorkingAndTheOtherFailingDateButton) {
    desk.will_pick(2026, 12, 1);
    desk.click(screen().Command5);
    EXPECT_EQ(screen().dateacquired2.text, "12/1/2026");
    desk.will_leave_picker();
    desk.click(screen().Command7);
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 424);
}

TEST_F(ProspectSearch, TheLevelsAreListedAndTheFeaturesNamed) {
    EXPECT_EQ(screen().Command1.caption, "Search");
    EXPECT_EQ(screen().Command2.caption, "Clear Form");
    EXPECT_EQ(screen().Command3.caption, "EXIT");
    EXPECT_EQ(screen().prospecttype[0].caption, "Listing Prospect");
    EXPECT_EQ(screen().prospecttype[1].caption, "Buying Prospect");
    EXPECT_EQ(screen().caption, "Search for Prospects");
    EXPECT_EQ(screen().interestlevel.items().size(), 3u);
    EXPECT_EQ(screen().feature[1].caption, "Forced Air");
    EXPECT_TRUE(screen().construction.items().empty());
}

} // namespace
} // namespace tolva
