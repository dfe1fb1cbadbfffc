#include <gtest/gtest.h>

#include "support/desk.h"

namespace tolva {
namespace {

using basic::make_date;
using support::Desk;

/// A desk with the listings screen open over a few listings.
class RecordScreen : public testing::Test {
  protected:
    RecordScreen() { desk.start(); }

    void add(int id, const std::string& first, const std::string& last, const std::string& city,
             std::map<std::string, jet::Value> more = {}) {
        std::map<std::string, jet::Value> values{
            {"id", std::int64_t{id}},
            {"first", first},
            {"last", last},
            {"city", city},
            {"co_first", std::string()},
            {"co_last", std::string()},
            {"datelisted", make_date(2026, 10, id)},
            {"datelastcontact", make_date(2026, 11, 1)},
        };
        for (auto& [column, value] : more)
            values[column] = value;
        Desk::add(*desk.module().listingdb, values);
    }
    void add_three() {
        add(1, "Ann", "Baker", "Utica");
        add(2, "Bob", "Smith", "Rome");
        add(3, "Cid", "Smithers", "Utica");
    }
    records::listings& open() {
        desk.click(desk.menu().Command9);
        return desk.listings();
    }
    std::vector<std::string> column(int index) {
        std::vector<std::string> cells;
        const auto& grid = desk.listings().grid1;
        for (int row = 1; row < grid.Rows(); ++row)
            cells.push_back(grid.cell(row, index));
        return cells;
    }

    Desk desk;
};

using Cells = std::vector<std::string>;

TEST_F(RecordScreen, TheFirstLoadShowsTheLongCaptionAndLaterOnesThePlainOne) {
    add_three();
    EXPECT_EQ(open().caption, "Current Listings: Quick Search for Others");
    const Cells rows = column(0);
    desk.click(desk.listings().Command10);
    EXPECT_EQ(open().caption, "Current Listings");
    EXPECT_EQ(column(0), rows);
}

TEST_F(RecordScreen, TheFirstViewIsEveryDatedListingByDateAndName) {
    add(5, "Eve", "Adams", "Utica", {{"datelisted", make_date(2026, 10, 5)}});
    add(6, "Fay", "Aarons", "Utica", {{"datelisted", make_date(2026, 10, 5)}});
    add(7, "No", "Date", "Utica", {{"datelisted", std::monostate{}}});
    add(4, "Dan", "Zed", "Utica");
    open();
    EXPECT_EQ(desk.module().listingquery,
              "select * from [table] where datelisted >= #1/1/1900# order by datelisted, last, first");
    EXPECT_EQ(column(0), (Cells{"4", "6", "5"}));
}

TEST_F(RecordScreen, TheGridBearsTheToldHeadingsWidthsAndAlignment) {
    const auto& grid = open().grid1;
    const char* headings[] = {"", "Name", "Address", "City", "Price", "Date Listed", "Date Expires"};
    const int widths[] = {1, 3000, 3000, 2000, 1300, 1300, 1300};
    ASSERT_EQ(grid.Cols(), 7);
    for (int index = 0; index < 7; ++index) {
        EXPECT_EQ(grid.cell(0, index), headings[index]);
        EXPECT_EQ(grid.width(index), widths[index]);
        EXPECT_EQ(grid.alignment(index), 1);
    }
}

TEST_F(RecordScreen, ARowShowsTheListingsAddressPriceAndDates) {
    add(1, "Ann", "Baker", "Utica",
        {{"listingaddress", std::string(" 12 Elm St ")},
         {"listingcity", std::string("Rome")},
         {"listingprice", 125000.0},
         {"dateexpires", make_date(2027, 4, 1)}});
    add(2, "Bob", "Cole", "Utica", {{"listingprice", 0.0}});
    open();
    EXPECT_EQ(column(2)[0], "12 Elm St");
    EXPECT_EQ(column(3)[0], "Rome");
    EXPECT_EQ(column(4), (Cells{"$125000", ""}));
    EXPECT_EQ(column(5), (Cells{"10/1/2026", "10/2/2026"}));
    EXPECT_EQ(column(6), (Cells{"4/1/2027", ""}));
}

TEST_F(RecordScreen, TheNameNamesBothOwners) {
    add(1, "Ann", "Baker", "U", {{"co_first", std::string("Bill")}, {"co_last", std::string("Baker")}});
    add(2, "Ann", "Baker", "U", {{"co_first", std::string("Bill")}, {"co_last", std::string("Cole")}});
    add(3, "Ann", "Baker", "U", {{"co_first", std::string("Bill")}});
    add(4, "", "", "U");
    add(5, "Ann", "", "U", {{"co_first", std::string("Bill")}});
    open();
    EXPECT_EQ(column(1),
              (Cells{"Ann & Bill Baker", "Ann Baker & Bill Cole", "Ann Baker", " &  ", "Ann & Bill "}));
}

TEST_F(RecordScreen, AnEmptyResultLeavesTheHeadingAndABlankRowThatDoesNothing) {
    auto& screen = open();
    EXPECT_EQ(screen.grid1.Rows(), 2);
    desk.runtime().click_row(screen.grid1, 1);
    EXPECT_TRUE(screen.f_customerlist.visible);
    EXPECT_FALSE(desk.host.error);
}

TEST_F(RecordScreen, AFailureWhileTheGridFillsIsSilentAndKeepsTheRowsSoFar) {
    add_three();
    auto& screen = open();
    screen.cleargrid();
    desk.module().listingset = desk.module().listingdb->OpenRecordset("select * from [table] order by id");
    desk.module().listingdb->OpenRecordset("select * from [table] where id=2")->Delete();
    desk.runtime().run([&] { screen.creategrid("normal"); });
    EXPECT_FALSE(desk.host.error);
    EXPECT_EQ(column(0), (Cells{"", "1"})) << "the blank row goes only with the last one";
}

TEST_F(RecordScreen, AClickOnARowOpensItsRecord) {
    add_three();
    auto& screen = open();
    desk.runtime().click_row(screen.grid1, 2);
    EXPECT_FALSE(screen.f_customerlist.visible);
    EXPECT_EQ(screen.first.text, "Bob");
    EXPECT_EQ(screen.id.text, "2");
}

TEST_F(RecordScreen, AClickOnTheHeadingDoesNothing) {
    add_three();
    auto& screen = open();
    desk.runtime().click_row(screen.grid1, 0);
    EXPECT_TRUE(screen.f_customerlist.visible);
}

TEST_F(RecordScreen, TheModesShowWhatTheyAreToldToShow) {
    add_three();
    auto& screen = open();
    const std::vector<platform::Control*> in_grid = {
        &screen.Command10,       &screen.Frame10,      &screen.f_customerlist,  &screen.miport,
        &screen.m_quicksearch,   &screen.m_newlisting, &screen.m_searchlisting, &screen.m_exit,
        &screen.m_printlistings, &screen.m_printlabels};
    const std::vector<platform::Control*> in_form = {
        &screen.Command5,   &screen.Command6,        &screen.Command7,      &screen.Command8,
        &screen.Command9,   &screen.m_deletelisting, &screen.m_savelisting, &screen.m_printlisting,
        &screen.m_followup, &screen.m_appointment};
    for (auto* control : in_grid)
        EXPECT_TRUE(control->visible) << control->name();
    for (auto* control : in_form)
        EXPECT_FALSE(control->visible) << control->name();
    std::map<platform::Control*, bool> others;
    for (auto* control : screen.controls())
        if (std::find(in_grid.begin(), in_grid.end(), control) == in_grid.end() &&
            std::find(in_form.begin(), in_form.end(), control) == in_form.end())
            others[control] = control->visible;
    desk.runtime().click_row(screen.grid1, 1);
    for (auto* control : in_grid)
        EXPECT_FALSE(control->visible) << control->name();
    for (auto* control : in_form)
        EXPECT_TRUE(control->visible) << control->name();
    for (const auto& [control, visible] : others)
        EXPECT_EQ(control->visible, visible) << control->name() << " is none of the modes' affair";
}

TEST_F(RecordScreen, NavigationStaysOnTheFirstAndLastRecordAndStillSaves) {
    add_three();
    auto& screen = open();
    desk.runtime().click_row(screen.grid1, 3);
    desk.type(screen.notes, "last");
    desk.click(screen.Command8);
    EXPECT_EQ(screen.id.text, "3");
    EXPECT_EQ(desk.stored_listings()[2]["notes"], "last");
    desk.click(screen.Command6);
    EXPECT_EQ(screen.id.text, "1");
    desk.type(screen.notes, "first");
    desk.click(screen.Command7);
    EXPECT_EQ(screen.id.text, "1");
    EXPECT_EQ(desk.stored_listings()[0]["notes"], "first");
    desk.click(screen.Command9);
    EXPECT_EQ(screen.id.text, "3");
    desk.click(screen.Command7);
    EXPECT_EQ(screen.id.text, "2");
    desk.click(screen.Command8);
    EXPECT_EQ(screen.id.text, "3");
}

TEST_F(RecordScreen, NavigationButtonsBearTheirSigns) {
    const auto& screen = open();
    EXPECT_EQ(screen.Command6.caption, "|<");
    EXPECT_EQ(screen.Command7.caption, "<");
    EXPECT_EQ(screen.Command8.caption, ">");
    EXPECT_EQ(screen.Command9.caption, ">|");
}

TEST_F(RecordScreen, AMoveFromAFormThatFailsItsTestsDropsTheEdits) {
    add_three();
    auto& screen = open();
    desk.runtime().click_row(screen.grid1, 2);
    desk.type(screen.notes, "lost");
    desk.type(screen.datelisted, "nonsense");
    desk.click(screen.Command6);
    EXPECT_EQ(desk.host.box_texts(), Cells{"Invalid Date Listed"});
    EXPECT_EQ(screen.id.text, "1");
    EXPECT_EQ(desk.stored_listings()[1]["notes"], "<null>");
}

TEST_F(RecordScreen, QuickSearchFindsEitherOwnerByNameAndTheOwnersCity) {
    add_three();
    add(4, "Dan", "Jones", "Utica", {{"co_last", std::string("Blacksmith")}});
    auto& screen = open();
    desk.type(screen.sname, " SMITH ");
    desk.type(screen.scity, "utic");
    desk.click(screen.Command11);
    EXPECT_EQ(column(0), (Cells{"4", "3"}));
    EXPECT_EQ(desk.module().listingquery,
              "select * from [table] where (last like '*SMITH*' or co_last like '*SMITH*') and city like "
              "'*utic*' order by last, first");
    EXPECT_EQ(screen.caption, "Current Listings: Quick Search for Others");
}

TEST_F(RecordScreen, EnterInTheSearchBoxesSearches) {
    add_three();
    auto& screen = open();
    desk.type(screen.scity, "rome");
    desk.press_enter(screen.scity);
    EXPECT_EQ(column(0), Cells{"2"});
    desk.type(screen.scity, "");
    desk.type(screen.sname, "baker");
    desk.press_enter(screen.sname);
    EXPECT_EQ(column(0), Cells{"1"});
}

TEST_F(RecordScreen, AnEmptyQuickSearchFindsAllButNullCities) {
    add_three();
    add(4, "No", "City", "x", {{"city", std::monostate{}}});
    auto& screen = open();
    desk.click(screen.Command11);
    EXPECT_EQ(column(0), (Cells{"1", "2", "3"}));
}

TEST_F(RecordScreen, AQuoteInTheSearchTextEndsTheProgram) {
    auto& screen = open();
    desk.type(screen.sname, "O'Brien");
    desk.click(screen.Command11);
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 3075);
    EXPECT_TRUE(desk.host.ended);
}

TEST_F(RecordScreen, AnUnloadedScreenComesBackWithItsLastView) {
    add_three();
    auto& screen = open();
    desk.type(screen.sname, "smith");
    desk.click(screen.Command11);
    desk.close(screen);
    open();
    EXPECT_EQ(column(0), (Cells{"2", "3"}));
    EXPECT_EQ(desk.listings().caption, "Current Listings");
    EXPECT_EQ(desk.listings().sname.text, "");
}

TEST_F(RecordScreen, AMenusViewComesBackAfterUnloadingButItsCaptionDoesNot) {
    add_three();
    add(4, "Long", "Ago", "Utica", {{"datelisted", make_date(2020, 1, 1)}});
    auto& screen = open();
    desk.choose(screen.m_yeartodate);
    EXPECT_EQ(screen.caption, "Year-to-Date Listings");
    EXPECT_EQ(column(0), (Cells{"1", "2", "3"}));
    desk.click(screen.Command10);
    EXPECT_EQ(open().caption, "Current Listings");
    EXPECT_EQ(column(0), (Cells{"1", "2", "3"}));
}

TEST_F(RecordScreen, ExitUnloadsAndTheMenusExitOnlyHides) {
    add_three();
    auto& screen = open();
    desk.type(screen.sname, "kept");
    desk.choose(screen.m_exit);
    EXPECT_FALSE(screen.visible());
    EXPECT_TRUE(desk.module().listings.loaded());
    EXPECT_EQ(desk.host.shown.back().screen, "Form1");
    open();
    EXPECT_EQ(desk.listings().sname.text, "kept");
    desk.click(desk.listings().Command10);
    EXPECT_FALSE(desk.module().listings.loaded());
    EXPECT_EQ(desk.host.shown.back().screen, "Form1");
}

TEST_F(RecordScreen, TheTitleBarDropsUnsavedEditsWithoutAWord) {
    add_three();
    auto& screen = open();
    desk.runtime().click_row(screen.grid1, 1);
    desk.type(screen.notes, "unsaved");
    desk.close(screen);
    EXPECT_TRUE(desk.host.boxes.empty());
    EXPECT_EQ(desk.stored_listings()[0]["notes"], "<null>");
    EXPECT_EQ(desk.host.shown.back().screen, "Form1");
}

TEST_F(RecordScreen, TheContactButtonStampsTheHistoryAndWaitsThere) {
    add_three();
    auto& screen = open();
    desk.runtime().click_row(screen.grid1, 1);
    desk.type(screen.contacthistory, " called ");
    desk.will_pick(2026, 11, 3);
    desk.click(screen.Command1);
    EXPECT_EQ(screen.datelastcontact.text, "11/3/2026");
    EXPECT_EQ(screen.contacthistory.text, "called\r\n11/3/2026: ");
    EXPECT_EQ(screen.active_control, &screen.contacthistory);
    EXPECT_EQ(screen.contacthistory.selection_start(), screen.contacthistory.text.size());
    EXPECT_EQ(screen.contacthistory.selection_length(), 0u);
}

TEST_F(RecordScreen, LeavingTheContactPickerFillsInTodayAndAddsNoStamp) {
    add_three();
    auto& screen = open();
    desk.runtime().click_row(screen.grid1, 1);
    desk.type(screen.contacthistory, "called");
    desk.will_leave_picker();
    desk.click(screen.Command1);
    EXPECT_EQ(screen.datelastcontact.text, "11/20/2026");
    EXPECT_EQ(screen.contacthistory.text, "called");
}

TEST_F(RecordScreen, EachDateButtonFillsItsField) {
    add_three();
    auto& screen = open();
    desk.runtime().click_row(screen.grid1, 1);
    const std::pair<platform::Button*, platform::TextBox*> pairs[] = {
        {&screen.Command2, &screen.datenextcontact}, {&screen.Command3, &screen.datelisted},
        {&screen.Command4, &screen.dateexpires},     {&screen.Command36, &screen.birthday},
        {&screen.Command37, &screen.co_birthday},
    };
    int day = 1;
    for (const auto& [button, field] : pairs) {
        EXPECT_EQ(button->caption, "D");
        desk.will_pick(2026, 12, day);
        desk.click(*button);
        EXPECT_EQ(field->text, "12/" + std::to_string(day) + "/2026") << field->name();
        ++day;
    }
}

TEST_F(RecordScreen, EnterCompletesACityFromItsBeginning) {
    add_three();
    auto& screen = open();
    desk.runtime().click_row(screen.grid1, 1);
    desk.type(screen.city, " schenec ");
    desk.press_enter(screen.city);
    EXPECT_EQ(screen.city.text, "Schenectady");
    EXPECT_EQ(screen.state.text, "NY");
    EXPECT_EQ(screen.zip.text, "12301");
    EXPECT_EQ(screen.active_control, &screen.homephone);
}

TEST_F(RecordScreen, EnterInAnEmptyCityTakesTheTablesFirstRow) {
    add_three();
    auto& screen = open();
    desk.runtime().click_row(screen.grid1, 1);
    desk.type(screen.city, "");
    desk.press_enter(screen.city);
    const auto first = Desk::rows(*desk.module().zipdb, "select * from [table]").at(0);
    EXPECT_EQ(screen.city.text, first.at("z_city"));
    EXPECT_EQ(screen.zip.text, first.at("z_zip"));
}

TEST_F(RecordScreen, AnUnknownCityAsksAndCancelLeavesEverythingAsTyped) {
    add_three();
    auto& screen = open();
    desk.runtime().click_row(screen.grid1, 1);
    desk.type(screen.state, "NY");
    desk.type(screen.city, "Nowhereville");
    desk.host.answers = {2};
    desk.press_enter(screen.city);
    ASSERT_EQ(desk.host.boxes.size(), 1u);
    EXPECT_EQ(desk.host.boxes[0].text, "Enter New Zip Code?");
    EXPECT_EQ(desk.host.boxes[0].title, "Are You Sure?");
    EXPECT_EQ(screen.city.text, "Nowhereville");
    EXPECT_EQ(screen.state.text, "NY");
    EXPECT_EQ(screen.active_control, &screen.city);
    // The empty result stays open for whoever adds the city.
    EXPECT_EQ(desk.module().zipset->RecordCount(), 0);
}

TEST_F(RecordScreen, TheListingsCityHasNoCompletion) {
    add_three();
    auto& screen = open();
    desk.runtime().click_row(screen.grid1, 1);
    desk.type(screen.listingcity, "schenec");
    desk.press_enter(screen.listingcity);
    EXPECT_EQ(screen.listingcity.text, "schenec");
}

TEST_F(RecordScreen, FieldsSelectTheirWholeTextOnFocusButForThreeAndTheSearchBoxes) {
    add_three();
    auto& screen = open();
    desk.runtime().click_row(screen.grid1, 1);
    const std::vector<std::string> exempt = {"mls", "contacthistory", "notes", "sname", "scity", "id"};
    int selecting = 0;
    for (platform::Control* control : screen.controls()) {
        auto* text = dynamic_cast<platform::TextControl*>(control);
        if (!text)
            continue;
        text->text = "abc";
        const unsigned before = text->selection_wishes();
        desk.runtime().focus(*text);
        const bool selects = text->selection_wishes() != before;
        const bool expected = std::find(exempt.begin(), exempt.end(), text->name()) == exempt.end();
        EXPECT_EQ(selects, expected) << text->name();
        if (selects) {
            ++selecting;
            EXPECT_EQ(text->selection_start(), 0u);
            EXPECT_EQ(text->selection_length(), 3u);
        }
    }
    EXPECT_EQ(selecting, 45);
}

TEST_F(RecordScreen, TheOptionListsFillTheComboBoxesOnEachLoad) {
    for (int visit = 0; visit < 2; ++visit) {
        auto& screen = open();
        EXPECT_EQ(screen.garage.items(),
                  module::read_option_list(*desk.disk, desk.module().appfolder, "garage"));
        EXPECT_FALSE(screen.construction.items().empty());
        EXPECT_FALSE(screen.basement.items().empty());
        EXPECT_FALSE(screen.listingsource.items().empty());
        desk.click(screen.Command10);
    }
}

TEST_F(RecordScreen, ASetReplacedUnderAnOpenFormTakesNoRowForAnother) {
    add_three();
    auto& screen = open();
    desk.runtime().click_row(screen.grid1, 1);
    EXPECT_EQ(screen.id.text, "1");
    // Another screen's query for this store: its first row is now the current one.
    desk.module().listingset =
        desk.module().listingdb->OpenRecordset("select * from [table] where id=3 order by last");
    desk.type(screen.first, "Moved");
    desk.choose(screen.m_savelisting);
    std::vector<std::string> firsts;
    for (const auto& row : desk.stored_listings())
        firsts.push_back(row.at("first"));
    EXPECT_EQ(firsts, (Cells{"Moved", "Bob", "Cid"}));
    desk.module().listingset = desk.module().listingdb->OpenRecordset("select * from [table] where id=99");
    desk.type(screen.first, "Ann");
    desk.choose(screen.m_savelisting);
    EXPECT_EQ(desk.stored_listings()[0].at("first"), "Ann");
    EXPECT_FALSE(desk.host.error);

    desk.module().listingset = desk.module().listingdb->OpenRecordset("select * from [table] where id=2");
    desk.host.answers = {1};
    desk.choose(screen.m_deletelisting);
    ASSERT_EQ(desk.stored_listings().size(), 2u);
    EXPECT_EQ(desk.stored_listings()[0].at("first"), "Bob");
}

TEST_F(RecordScreen, ASetThatWasWalkedUnderAnOpenFormIsPutBackForItsSave) {
    add_three();
    auto& screen = open();
    desk.runtime().click_row(screen.grid1, 2);
    for (auto& set = *desk.module().listingset; !set.Eof();)
        set.MoveNext();
    desk.type(screen.first, "Rob");
    desk.click(screen.Command8);
    EXPECT_EQ(desk.stored_listings()[1].at("first"), "Rob");
    EXPECT_EQ(screen.first.text, "Cid") << "and the walk goes on from there";
}

TEST_F(RecordScreen, ASaveOfARowThatIsGoneEndsTheProgram) {
    add_three();
    auto& screen = open();
    desk.runtime().click_row(screen.grid1, 1);
    desk.module().listingset = desk.module().listingdb->OpenRecordset("select * from [table] where id=1");
    desk.module().listingset->Delete();
    desk.choose(screen.m_savelisting);
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 3021);
    EXPECT_EQ(desk.host.error->text, "No current record.");
    EXPECT_EQ(desk.stored_listings().size(), 2u);
}

TEST_F(RecordScreen, AClickOnAGridOverAnotherSetRunsPastItsEnd) {
    add_three();
    auto& screen = open();
    desk.module().listingset = desk.module().listingdb->OpenRecordset("select * from [table] where id=2");
    desk.runtime().click_row(screen.grid1, 1);
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 3021);
}

TEST_F(RecordScreen, ANullFieldShowsEmpty) {
    add(1, "Ann", "Baker", "Utica", {{"first", std::monostate{}}, {"zip", std::monostate{}}});
    auto& screen = open();
    EXPECT_EQ(column(1)[0], " Baker");
    desk.runtime().click_row(screen.grid1, 1);
    EXPECT_EQ(screen.first.text, "");
    EXPECT_EQ(screen.zip.text, "");
    EXPECT_FALSE(desk.host.error);
}

} // namespace
} // namespace tolva
