#include "records/addressbook.h"

#include <gtest/gtest.h>

#include "search/zipcode.h"
#include "support/desk.h"

namespace tolva {
namespace {

using support::Desk;
using Texts = std::vector<std::string>;

class Addressbook : public testing::Test {
  protected:
    Addressbook() {
        desk.start();
        desk.module().addressbook().show();
    }

    records::addressbook& screen() { return static_cast<records::addressbook&>(desk.module().addressbook()); }
    void add(int id, const std::string& first, const std::string& last, const std::string& firm) {
        Desk::add(*desk.module().addressdb, {{"id", std::int64_t{id}},
                                             {"first", first},
                                             {"last", last},
                                             {"businessname", firm},
                                             {"city", std::string("Utica")}});
    }
    Texts ids() { return Desk::ids(screen()); }
    Desk::Records stored() {
        return Desk::rows(*desk.module().addressdb, "select * from [table] order by id");
    }

    Desk desk;
};

TEST_F(Addressbook, AnAddressAbandonedAtOnceStaysAsAnEmptyRow) {
    desk.choose(screen().m_new);
    EXPECT_EQ(screen().id.text, "1");
    EXPECT_FALSE(screen().Command3.visible);
    EXPECT_TRUE(screen().Command18.visible);
    desk.click(screen().Command18);
    EXPECT_EQ(ids(), Texts{"1"});
    EXPECT_EQ(screen().grid1.cell(1, 1), " ");
    EXPECT_EQ(desk.stored_settings()["address_counter"], "1");
    EXPECT_TRUE(desk.host.boxes.empty());
}

TEST_F(Addressbook, TheGridBearsItsHeadingsAndWidths) {
    add(1, "Ann", "Baker", "Mill");
    desk.choose(screen().m_alladdresses);
    const auto& grid = screen().grid1;
    const char* headings[] = {"",           "Name",      "Business Name", "Address", "City State Zip",
                              "Home Phone", "Work Phone"};
    const int widths[] = {1, 1900, 1900, 1900, 1900, 1100, 1100};
    const char* cells[] = {"1", "Ann Baker", "Mill", "", "Utica  ", "", ""};
    for (int column = 0; column < 7; ++column) {
        EXPECT_EQ(grid.cell(0, column), headings[column]);
        EXPECT_EQ(grid.width(column), widths[column]);
        EXPECT_EQ(grid.cell(1, column), cells[column]);
    }
    EXPECT_EQ(screen().caption, "Address Book");
    EXPECT_EQ(screen().f_customerlist.caption, "Address List");
}

TEST_F(Addressbook, SavingGivesNoSign) {
    desk.choose(screen().m_new);
    desk.type(screen().last, "  Baker ");
    desk.choose(screen().m_save);
    EXPECT_TRUE(desk.host.boxes.empty());
    EXPECT_EQ(stored()[0].at("last"), "Baker");
}

TEST_F(Addressbook, NothingIsCutSoATextTooLongEndsTheProgram) {
    desk.choose(screen().m_new);
    desk.type(screen().last, std::string(51, 'x'));
    desk.choose(screen().m_save);
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 3163);
    EXPECT_EQ(stored()[0].at("last"), "");
}

TEST_F(Addressbook, AllAddressesChangesTheOrderForGood) {
    add(1, "Ann", "Baker", "Zoo");
    add(2, "Bob", "Cole", "Apple");
    desk.click(screen().Command1);
    desk.module().addressbook().show();
    EXPECT_EQ(ids(), (Texts{"1", "2"}));
    desk.choose(screen().m_alladdresses);
    EXPECT_EQ(ids(), (Texts{"2", "1"}));
    desk.click(screen().Command1);
    desk.module().addressbook().show();
    EXPECT_EQ(ids(), (Texts{"2", "1"}));
    EXPECT_EQ(desk.module().addressquery,
              "select * from [table] where id>0 order by businessname, last, first");
}

TEST_F(Addressbook, TheQuickSearchLooksAtTheLastNameOnly) {
    add(1, "Ann", "Baker", "Smith & Co");
    add(2, "Bob", "Smith", "");
    desk.type(screen().sname, "smith");
    desk.press_enter(screen().sname);
    EXPECT_EQ(ids(), Texts{"2"});
    EXPECT_EQ(desk.module().addressquery,
              "select * from [table] where last like '*smith*'and city like '**' order by last, first");
    desk.type(screen().sname, "");
    desk.click(screen().Command2);
    EXPECT_EQ(ids(), (Texts{"1", "2"}));
}

TEST_F(Addressbook, NavigationSavesAsItMoves) {
    add(1, "Ann", "Baker", "");
    add(2, "Bob", "Cole", "");
    desk.choose(screen().m_alladdresses);
    desk.runtime().click_row(screen().grid1, 1);
    desk.type(screen().notes, "moved on");
    desk.click(screen().Command5);
    EXPECT_EQ(screen().id.text, "2");
    EXPECT_EQ(stored()[0].at("notes"), "moved on");
    desk.click(screen().Command3);
    EXPECT_EQ(screen().id.text, "1");
}

TEST_F(Addressbook, ImportFailsAsItIsMeantTo) {
    EXPECT_EQ(screen().mimport.caption, "Import Addresses");
    desk.choose(screen().mimport);
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 424);
}

TEST_F(Addressbook, EveryFieldSurvivesSavingAndLoading) {
    const std::map<std::string, std::string> typed = {
        {"first", "Ann"},      {"middle", "B"},
        {"last", "Cole"},      {"businessname", "Mill"},
        {"address", "1 Elm"},  {"city", "Utica"},
        {"state", "New York"}, {"zip", "13501"},
        {"homephone", "h"},    {"workphone", "w"},
        {"cellphone", "c"},    {"fax", "f"},
        {"email", "m"},        {"notes", std::string(3000, 'n')},
    };
    desk.choose(screen().m_new);
    for (const auto& [name, text] : typed)
        dynamic_cast<platform::TextBox&>(*screen().find(name)).text = " " + text + " ";
    desk.choose(screen().m_save);
    for (const auto& [column, text] : typed)
        EXPECT_EQ(stored()[0].at(column), text) << column;
    screen().rectoform();
    for (const auto& [name, text] : typed)
        EXPECT_EQ(dynamic_cast<platform::TextBox&>(*screen().find(name)).text, text) << name;
    screen().clearform();
    for (const auto& [name, text] : typed)
        EXPECT_EQ(dynamic_cast<platform::TextBox&>(*screen().find(name)).text, "") << name;
    EXPECT_EQ(screen().id.text, "1") << "clearing leaves the id alone";
}

TEST_F(Addressbook, ANewAddressLeavesTheViewInForce) {
    desk.choose(screen().m_alladdresses);
    const std::string view = desk.module().addressquery;
    desk.choose(screen().m_new);
    EXPECT_EQ(desk.module().addressquery, view);
    EXPECT_EQ(desk.module().addressset->RecordCount(), 1);
}

TEST_F(Addressbook, AnEmptyQuickSearchLeavesOutNullsButNotEmptyTexts) {
    add(1, "", "", "Firm");
    Desk::add(*desk.module().addressdb, {{"id", std::int64_t{2}}, {"last", std::string("No City")}});
    Desk::add(*desk.module().addressdb, {{"id", std::int64_t{3}}, {"city", std::string("No Name")}});
    desk.click(screen().Command2);
    EXPECT_EQ(ids(), Texts{"1"});
    desk.type(screen().sname, "Firm");
    desk.click(screen().Command2);
    EXPECT_EQ(ids(), Texts{""}) << "a firm without a person's name is found by no name";
}

TEST_F(Addressbook, ADeletionAsks) {
    desk.choose(screen().m_new);
    desk.host.answers = {1};
    desk.choose(screen().m_delete);
    EXPECT_EQ(desk.host.boxes[0].text, "Delete Address?");
    EXPECT_TRUE(stored().empty());
}

// --- The zip codes ---

class Zipcode : public Addressbook {
  protected:
    search::zipcode& zip() { return static_cast<search::zipcode&>(desk.module().zipcode()); }
    void look_up(const std::string& city) {
        desk.choose(screen().m_new);
        desk.type(screen().city, city);
        desk.host.answers = {1};
        desk.press_enter(screen().city);
    }
};

TEST_F(Zipcode, AnUnknownCityIsAddedAndFoundAtTheNextEnter) {
    look_up("Newtown-on-Tolva");
    ASSERT_TRUE(zip().visible());
    EXPECT_EQ(zip().caption, "Add City, State, Zip Code");
    EXPECT_EQ(zip().zcity.text, "");
    desk.type(zip().zcity, " Newtown-on-Tolva ");
    desk.type(zip().zstate, "NY");
    desk.type(zip().zzip, "99999");
    desk.click(zip().Command1);
    EXPECT_EQ(desk.host.boxes.back().text, "Zip Code Added");
    EXPECT_EQ(desk.host.boxes.back().title, "Message");
    EXPECT_FALSE(desk.module().zipcode.loaded());
    desk.type(screen().city, "newtown-on-t");
    desk.press_enter(screen().city);
    EXPECT_EQ(screen().city.text, "Newtown-on-Tolva");
    EXPECT_EQ(screen().state.text, "NY");
    EXPECT_EQ(screen().zip.text, "99999");
}

TEST_F(Zipcode, EnterInTheLastBoxAddsAndLeaves) {
    look_up("Nowhere At All");
    desk.press_enter(zip().zzip);
    EXPECT_EQ(desk.host.boxes.back().text, "Zip Code Added");
    EXPECT_FALSE(desk.module().zipcode.loaded());
    EXPECT_EQ(Desk::rows(*desk.module().zipdb, "select * from [table] where z_city = ''").size(), 1u);
}

TEST_F(Zipcode, ATextTooLongForItsColumnEndsTheProgram) {
    look_up("Nowhere At All");
    desk.type(zip().zcity, std::string(256, 'x'));
    desk.click(zip().Command1);
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 3163);
}

TEST_F(Zipcode, AnEmptyRowIsFoundByAnEmptyCityOnceItComesFirst) {
    look_up("Nowhere At All");
    desk.press_enter(zip().zzip);
    auto set = desk.module().zipdb->OpenRecordset("select * from [table] where z_city <> ''");
    for (set->MoveFirst(); !set->Eof(); set->MoveNext())
        set->Delete();
    desk.type(screen().city, "");
    desk.type(screen().state, "NY");
    desk.press_enter(screen().city);
    EXPECT_EQ(screen().state.text, "");
    EXPECT_EQ(screen().active_control, &screen().homephone);
}

TEST_F(Zipcode, ItAddsToWhateverSetTheLastLookupLeft) {
    look_up("Nowhere At All");
    desk.type(screen().city, "schenec");
    desk.press_enter(screen().city);
    desk.type(zip().zcity, "Added");
    desk.click(zip().Command1);
    EXPECT_EQ(Desk::rows(*desk.module().zipdb, "select * from [table] where z_city = 'Added'").size(), 1u);
}

TEST_F(Zipcode, ClearEmptiesAndExitLeaves) {
    look_up("Nowhere At All");
    desk.type(zip().zcity, "a");
    desk.type(zip().zstate, "b");
    desk.type(zip().zzip, "c");
    desk.click(zip().Command2);
    EXPECT_EQ(zip().zcity.text + zip().zstate.text + zip().zzip.text, "");
    desk.click(zip().Command3);
    EXPECT_FALSE(desk.module().zipcode.loaded());
}

} // namespace
} // namespace tolva
