#include "records/prospect.h"

#include <gtest/gtest.h>

#include "support/desk.h"

namespace tolva {
namespace {

using basic::make_date;
using support::Desk;
using Texts = std::vector<std::string>;

class Prospect : public testing::Test {
  protected:
    Prospect() {
        desk.start();
        desk.module().prospect().show();
    }

    records::prospect& screen() { return static_cast<records::prospect&>(desk.module().prospect()); }
    void add(int id, std::map<std::string, jet::Value> more) {
        std::map<std::string, jet::Value> values{
            {"id", std::int64_t{id}},
            {"first", std::string("F")},
            {"last", "L" + std::to_string(id)},
            {"city", std::string("Utica")},
            {"interestlevel", std::string("Hot (In Market Now)")},
            {"dateacquired", make_date(2026, 1, id)},
            {"datelastcontact", make_date(2026, 1, 1)},
            {"Flag", std::int64_t{0}},
        };
        for (auto& [column, value] : more)
            values[column] = value;
        Desk::add(*desk.module().prospectdb, values);
    }
    void reopen_screen() {
        desk.click(screen().Command11);
        desk.module().prospect().show();
    }
    Texts ids() { return Desk::ids(screen()); }
    Desk::Record stored(std::size_t row = 0) {
        return Desk::rows(*desk.module().prospectdb, "select * from [table] order by id").at(row);
    }

    Desk desk;
};

TEST_F(Prospect, TheFirstViewIsTheHotProspects) {
    add(1, {});
    add(2, {{"interestlevel", std::string("Warm (In Market Soon)")}});
    add(3, {{"interestlevel", std::string("somewhat hot")}});
    add(4, {{"interestlevel", std::string()}});
    reopen_screen();
    EXPECT_EQ(ids(), (Texts{"1", "3"}));
    EXPECT_EQ(desk.module().prospectquery,
              "select * from [table] where interestlevel like '*Hot*' order by dateacquired, last, first");
}

TEST_F(Prospect, TheGridBearsItsHeadingsAndWidths) {
    add(1, {{"address", std::string("1 Main")}, {"homephone", std::string("555")}});
    reopen_screen();
    const auto& grid = screen().grid1;
    const char* headings[] = {"", "Name", "Address", "City", "Phone #", "Date Acquired", "Interest Level"};
    const int widths[] = {1, 3000, 3000, 2000, 1500, 1500, 2000};
    const char* cells[] = {"1", "F L1", "1 Main", "Utica", "555", "1/1/2026", "Hot (In Market Now)"};
    for (int column = 0; column < 7; ++column) {
        EXPECT_EQ(grid.cell(0, column), headings[column]);
        EXPECT_EQ(grid.width(column), widths[column]);
        EXPECT_EQ(grid.cell(1, column), cells[column]);
    }
}

TEST_F(Prospect, TheTitleNamesThePersonAndTheGridTakesItBack) {
    EXPECT_EQ(screen().caption, "Prospects");
    add(1, {{"co_first", std::string("Bo")}, {"co_last", std::string("Cole")}});
    add(2, {});
    reopen_screen();
    desk.runtime().click_row(screen().grid1, 1);
    EXPECT_EQ(screen().caption, "F L1 & Bo Cole");
    desk.click(screen().Command8);
    EXPECT_EQ(screen().caption, "F L2");
    desk.click(screen().Command5);
    EXPECT_EQ(screen().caption, "Prospects");
}

TEST_F(Prospect, TheFeaturesBearTheNamesOfTheSettings) {
    EXPECT_EQ(screen().feature[0].caption, "Central Air");
    desk.module().settings.features[0] = " Sauna ";
    reopen_screen();
    EXPECT_EQ(screen().feature[0].caption, "Sauna");
    EXPECT_EQ(screen().interestlevel.items(),
              (Texts{"Hot (In Market Now)", "Warm (In Market Soon)", "Cold (In Market in Future)"}));
}

TEST_F(Prospect, ANewProspectShowsHotButStoresAnEmptyLevelUntilTheNextSave) {
    desk.choose(screen().m_newprospect);
    EXPECT_EQ(screen().interestlevel.text, "Hot (In Market Now)");
    EXPECT_EQ(screen().dateacquired.text, "11/20/2026");
    EXPECT_EQ(screen().datelastcontact.text, "11/20/2026");
    EXPECT_EQ(screen().includeinprinting.value, 1);
    EXPECT_EQ(stored().at("interestlevel"), "");
    EXPECT_EQ(stored().at("Flag"), "100");
    EXPECT_EQ(stored().at("id"), "1");
    EXPECT_EQ(desk.stored_settings()["prospect_counter"], "1");
    desk.choose(screen().m_saveprospect);
    EXPECT_EQ(stored().at("interestlevel"), "Hot (In Market Now)");
    EXPECT_EQ(desk.host.box_texts(), Texts{"Prospect Saved"});
}

TEST_F(Prospect, EveryFieldSurvivesSavingAndLoading) {
    desk.choose(screen().m_newprospect);
    const std::map<std::string, std::string> typed = {
        {"first", "Ann"},
        {"middle", "B"},
        {"last", "Cole"},
        {"co_first", "D"},
        {"co_middle", "E"},
        {"co_last", "F"},
        {"address", "1 Main"},
        {"city", "Utica"},
        {"state", "NY"},
        {"zip", "13501"},
        {"homephone", "h"},
        {"workphone", "w"},
        {"cellphone", "c"},
        {"fax", "f"},
        {"employer", "e"},
        {"email", "m"},
        {"businessname", "b"},
        {"cities", "Rome, Utica"},
        {"construction", "Log"},
        {"subdivision", "s"},
        {"streets", "Elm"},
        {"squarefeet", "2000"},
        {"rooms", "8"},
        {"bedrooms", "3"},
        {"bathrooms", "2.5"},
        {"basement", "Full"},
        {"garage", "None"},
        {"acres", "0.5"},
        {"price", "125000"},
        {"notes", "n\r\nn"},
        {"prospectsource", "Sign"},
        {"datenextcontact", "12/1/2026"},
        {"dateinmarket", "1/5/2027"},
        {"birthday", "3/7/1960"},
        {"co_birthday", "4/8/1961"},
        {"interestlevel", "Warm (In Market Soon)"},
        {"contacthistory", "x"},
    };
    for (platform::Control* control : screen().controls())
        if (const auto field = typed.find(control->name()); field != typed.end())
            dynamic_cast<platform::TextControl&>(*control).text = field->second;
    for (const auto& box : screen().prospecttype)
        box->value = 1;
    screen().feature[7].value = 1;
    desk.choose(screen().m_saveprospect);
    const auto row = stored();
    for (const auto& [column, text] : typed)
        EXPECT_EQ(row.at(column), text) << column;
    EXPECT_EQ(row.at("prospecttype0"), "True");
    EXPECT_EQ(row.at("prospecttype1"), "True");
    EXPECT_EQ(row.at("feature7"), "True");
    EXPECT_EQ(row.at("feature8"), "False");
    EXPECT_EQ(row.at("c_feature7"), "False");
    screen().rectoform();
    for (platform::Control* control : screen().controls())
        if (const auto field = typed.find(control->name()); field != typed.end()) {
            EXPECT_EQ(dynamic_cast<platform::TextControl&>(*control).text, field->second) << field->first;
        }
    EXPECT_EQ(screen().feature[7].value, 1);
    EXPECT_EQ(screen().feature[8].value, 0);
    EXPECT_EQ(screen().prospecttype[1].value, 1);
}

TEST_F(Prospect, APriceOfZeroReloadsAsAnEmptyBox) {
    desk.choose(screen().m_newprospect);
    desk.type(screen().price, "0");
    desk.choose(screen().m_saveprospect);
    screen().rectoform();
    EXPECT_EQ(screen().price.text, "");
}

TEST_F(Prospect, TheTestsRunInTheirOrder) {
    desk.choose(screen().m_newprospect);
    const std::pair<platform::TextBox*, const char*> faults[] = {
        {&screen().dateacquired, "Invalid Date Acquired"},
        {&screen().birthday, "Invalid Buyer Birthday"},
        {&screen().co_birthday, "Invalid Co-Buyer Birthday"},
        {&screen().dateinmarket, "Invalid Date in Market"},
        {&screen().datelastcontact, "Invalid Date Last Contact"},
        {&screen().datenextcontact, "Invalid Date Next Contact"},
    };
    for (const auto& [field, message] : faults)
        field->text = "x";
    for (const auto& [field, message] : faults) {
        EXPECT_FALSE(screen().validate());
        EXPECT_EQ(desk.host.boxes.back().text, message);
        EXPECT_EQ(desk.host.boxes.back().title, "Error");
        field->text = "1/1/2026";
    }
    EXPECT_TRUE(screen().validate());
    for (auto* field : {&screen().dateacquired, &screen().datelastcontact}) {
        field->text = "";
        EXPECT_FALSE(screen().validate()) << field->name();
        field->text = "1/1/2026";
    }
}

TEST_F(Prospect, ClosingSavesTwiceAndShowsAFailedTestTwice) {
    desk.choose(screen().m_newprospect);
    desk.type(screen().dateinmarket, "someday");
    desk.module().settings.p_bdayschedule = 0;
    desk.click(screen().Command5);
    EXPECT_EQ(desk.host.box_texts(), (Texts{"Invalid Date in Market", "Invalid Date in Market"}));
    EXPECT_TRUE(desk.messages().empty()) << "the text is no date, so nothing is scheduled either";
    EXPECT_TRUE(screen().f_customerlist.visible);
}

TEST_F(Prospect, TheInMarketMessageIsOfTheListingsKindAndBirthdaysOfTheProspects) {
    desk.choose(screen().m_newprospect);
    desk.type(screen().first, "Ann");
    desk.type(screen().last, "Baker");
    desk.type(screen().co_first, "Bill");
    desk.type(screen().co_last, "Cole");
    desk.type(screen().address, "1 Main St");
    desk.type(screen().city, "Utica");
    desk.type(screen().state, "NY");
    desk.type(screen().zip, "13501");
    desk.type(screen().dateinmarket, "12/1/2026");
    desk.type(screen().birthday, "12/24/1960");
    desk.host.answers = {1};
    desk.click(screen().Command5);
    const auto messages = desk.messages();
    ASSERT_EQ(messages.size(), 7u);
    EXPECT_EQ(messages[0].at("messagetype"), "1");
    EXPECT_EQ(messages[0].at("messagedate"), "12/1/2026");
    EXPECT_EQ(messages[0].at("messagetime"), "8:00:00 AM");
    EXPECT_EQ(messages[0].at("messagetext"), "PREVIOUS PROSPECT NOW IN MARKET!\r\n"
                                             "Date in Market: 12/1/2026\r\n"
                                             "Ann Baker\r\n"
                                             "Bill Cole\r\n"
                                             "1 Main St\r\n"
                                             "Utica, NY 13501\r\n"
                                             "Home: \r\n"
                                             "Cell: \r\n"
                                             "Work: \r\n");
    EXPECT_EQ(messages[1].at("messagetype"), "2");
    EXPECT_EQ(messages[1].at("messagedate"), "12/24/2026");
    EXPECT_EQ(messages[1].at("customerid"), "1");
}

TEST_F(Prospect, TheInMarketMessageStandsBeforeTheBirthdayQuestion) {
    desk.choose(screen().m_newprospect);
    desk.type(screen().dateinmarket, "1/1/2020");
    desk.host.during_box.push_back([this] { EXPECT_EQ(desk.messages().size(), 1u); });
    desk.host.answers = {2};
    desk.click(screen().Command5);
    EXPECT_EQ(desk.messages().size(), 1u);
    desk.wait_minutes(1);
    EXPECT_EQ(desk.dialogs().size(), 1u) << "a date in the past rises at the next poll";
}

TEST_F(Prospect, WithoutADateInMarketTheQuestionStillComesAndASecondCloseSchedulesNothing) {
    desk.choose(screen().m_newprospect);
    desk.host.answers = {1};
    desk.click(screen().Command5);
    EXPECT_EQ(desk.host.boxes.size(), 1u);
    EXPECT_TRUE(desk.messages().empty());
    desk.choose(screen().m_allprospects);
    desk.runtime().click_row(screen().grid1, 1);
    desk.type(screen().dateinmarket, "12/1/2026");
    desk.click(screen().Command5);
    EXPECT_EQ(desk.host.boxes.size(), 1u);
    EXPECT_TRUE(desk.messages().empty());
}

TEST_F(Prospect, AFebruary29FailsWithTheFlagAlreadyCleared) {
    desk.choose(screen().m_newprospect);
    desk.type(screen().birthday, "2/29/1960");
    desk.host.answers = {1};
    desk.click(screen().Command5);
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 13);
    EXPECT_FALSE(desk.module().prospectnewrecord);
}

TEST_F(Prospect, SavedIsSaidEvenWhenNothingWasSaved) {
    desk.choose(screen().m_newprospect);
    desk.type(screen().first, "Ann");
    desk.type(screen().datelastcontact, "");
    desk.choose(screen().m_saveprospect);
    EXPECT_EQ(desk.host.box_texts(), (Texts{"Invalid Date Last Contact", "Prospect Saved"}));
    EXPECT_EQ(desk.host.boxes[1].title, "Message");
    EXPECT_EQ(stored().at("first"), "");
}

TEST_F(Prospect, ADeletedNewRecordLeavesItsMessagesToTheNextOneClosed) {
    add(25, {{"dateinmarket", make_date(2026, 12, 1)}, {"birthday", make_date(1960, 12, 24)}});
    desk.module().settings.p_bdayschedule = module::Settings::birthdays_always;
    desk.module().settings.p_bday = "1";
    desk.module().savepreferences();
    desk.choose(screen().m_newprospect);
    desk.host.answers = {1};
    desk.choose(screen().m_deleteprospect);
    desk.runtime().click_row(screen().grid1, 1);
    desk.click(screen().Command5);
    const auto messages = desk.messages();
    ASSERT_EQ(messages.size(), 3u);
    for (const auto& message : messages)
        EXPECT_EQ(message.at("customerid"), "25");
    EXPECT_FALSE(desk.module().prospectnewrecord);
}

TEST_F(Prospect, TheInMarketSettingMovesNoMessage) {
    desk.module().settings.p_inmarket = "10";
    desk.module().settings.p_bdayschedule = module::Settings::birthdays_never;
    desk.module().savepreferences();
    desk.choose(screen().m_newprospect);
    desk.type(screen().dateinmarket, "12/24/2026");
    desk.click(screen().Command5);
    ASSERT_EQ(desk.messages().size(), 1u);
    EXPECT_EQ(desk.messages()[0].at("messagedate"), "12/24/2026");
    EXPECT_EQ(desk.messages()[0].at("customerid"), "1");
}

TEST_F(Prospect, BothBirthdaysAreToldWithTheProspectsAddress) {
    desk.module().settings.p_bdayschedule = module::Settings::birthdays_always;
    desk.module().settings.p_bday = "1";
    desk.module().savepreferences();
    desk.choose(screen().m_newprospect);
    for (const auto& [box, text] :
         std::vector<std::pair<platform::TextBox*, const char*>>{{&screen().first, " Ann "},
                                                                 {&screen().last, "Baker"},
                                                                 {&screen().co_first, "Bill"},
                                                                 {&screen().co_last, "Cole"},
                                                                 {&screen().address, "1 Main St"},
                                                                 {&screen().city, "Utica"},
                                                                 {&screen().state, "NY"},
                                                                 {&screen().zip, "13501"},
                                                                 {&screen().homephone, "h"},
                                                                 {&screen().cellphone, "c"},
                                                                 {&screen().workphone, "w"},
                                                                 {&screen().birthday, "11/20/1960"},
                                                                 {&screen().co_birthday, "3/7/1961"}})
        desk.type(*box, text);
    desk.click(screen().Command5);
    const auto messages = desk.messages();
    const std::string contact = "1 Main St\r\nUtica, NY 13501\r\nHome: h\r\nCell: c\r\nWork: w\r\n";
    ASSERT_EQ(messages.size(), 3u);
    EXPECT_EQ(messages[0].at("messagedate"), "11/20/2026") << "today's birthday gets one";
    EXPECT_EQ(messages[1].at("messagedate"), "11/20/2027");
    EXPECT_EQ(messages[2].at("messagedate"), "3/7/2027") << "this year's is gone by";
    for (const auto& message : messages) {
        EXPECT_EQ(message.at("messagetype"), "2");
        EXPECT_EQ(message.at("messagetime"), "8:30:00 AM");
    }
    EXPECT_EQ(messages[0].at("messagetext"),
              "HAPPY BIRTHDAY!\r\nAnn Baker\r\nBirthday: 11/20/1960\r\n" + contact);
    EXPECT_EQ(messages[2].at("messagetext"),
              "HAPPY BIRTHDAY!\r\nBill Cole\r\nBirthday: 3/7/1961\r\n" + contact);
}

TEST_F(Prospect, TextsAreCutToWhatTheirColumnsHold) {
    desk.choose(screen().m_newprospect);
    const std::string blanks_then_text = std::string(48, ' ') + "abcdef";
    const std::string much(200, 'x');
    screen().first.text = blanks_then_text;
    screen().businessname.text = blanks_then_text;
    for (platform::TextControl* box : std::initializer_list<platform::TextControl*>{
             &screen().state, &screen().zip, &screen().fax, &screen().email, &screen().cities,
             &screen().streets, &screen().subdivision, &screen().basement, &screen().interestlevel,
             &screen().notes})
        box->text = much;
    screen().price.text = "125,000";
    screen().birthday.text = " 3/7/1960 ";
    desk.choose(screen().m_saveprospect);
    const auto row = stored();
    EXPECT_EQ(row.at("first"), "ab") << "cut, then trimmed";
    EXPECT_EQ(row.at("businessname"), "abcdef") << "trimmed, then cut";
    const std::pair<const char*, std::size_t> widths[] = {
        {"state", 2},     {"zip", 10},          {"fax", 20},      {"email", 100},        {"cities", 100},
        {"streets", 100}, {"subdivision", 100}, {"basement", 50}, {"interestlevel", 50}, {"notes", 200}};
    for (const auto& [column, width] : widths)
        EXPECT_EQ(row.at(column).size(), width) << column;
    EXPECT_EQ(row.at("price"), "125");
    EXPECT_EQ(row.at("birthday"), "3/7/1960");
}

TEST_F(Prospect, ClearingEmptiesTheIdTooAndEveryBox) {
    desk.choose(screen().m_newprospect);
    for (const auto& box : screen().feature)
        box->value = 1;
    screen().clearform();
    EXPECT_EQ(screen().id.text, "");
    for (platform::Control* control : screen().controls()) {
        if (const auto* box = dynamic_cast<platform::CheckBox*>(control)) {
            EXPECT_EQ(box->value, 0) << box->object_name();
        }
        const auto* text = dynamic_cast<platform::TextControl*>(control);
        if (text && text->name() != "sname" && text->name() != "scity") {
            EXPECT_EQ(text->text, "") << text->name();
        }
    }
}

TEST_F(Prospect, EachDateButtonFillsItsField) {
    desk.choose(screen().m_newprospect);
    const std::pair<platform::Button*, platform::TextBox*> pairs[] = {
        {&screen().Command2, &screen().datenextcontact}, {&screen().Command3, &screen().dateacquired},
        {&screen().Command4, &screen().dateinmarket},    {&screen().Command36, &screen().birthday},
        {&screen().Command37, &screen().co_birthday},    {&screen().Command1, &screen().datelastcontact},
    };
    int day = 1;
    for (const auto& [button, field] : pairs) {
        desk.will_pick(2026, 12, day);
        desk.click(*button);
        EXPECT_EQ(field->text, "12/" + std::to_string(day++) + "/2026") << field->name();
    }
    EXPECT_EQ(screen().contacthistory.text, "\r\n12/6/2026: ");
    desk.will_leave_picker();
    desk.click(screen().Command4);
    EXPECT_EQ(screen().dateinmarket.text, "");
}

TEST_F(Prospect, AFailureInTheGridIsSilentAndLeavesTheRowsSoFar) {
    add(1, {});
    desk.module().prospect().cleargrid();
    // A set of another store stands in for a file that lacks a column of the grid.
    desk.module().prospectset = desk.module().solddb->OpenRecordset("select * from [table]");
    Desk::add(*desk.module().solddb, {{"id", std::int64_t{9}}});
    desk.module().prospectset = desk.module().solddb->OpenRecordset("select * from [table]");
    desk.runtime().run([&] { screen().creategrid("normal"); });
    EXPECT_FALSE(desk.host.error);
    EXPECT_EQ(ids(), Texts{""});
}

TEST_F(Prospect, ADeletionAsks) {
    desk.choose(screen().m_newprospect);
    desk.host.answers = {1};
    desk.choose(screen().m_deleteprospect);
    EXPECT_EQ(desk.host.boxes.back().text, "Delete Prospect?");
    EXPECT_TRUE(Desk::rows(*desk.module().prospectdb, "select * from [table]").empty());
}

TEST_F(Prospect, ImportFailsAsItIsMeantTo) {
    EXPECT_EQ(screen().m_import.caption, "Import Prospects");
    desk.choose(screen().m_import);
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 424);
}

TEST_F(Prospect, AllProspectsDropsTheHotFilterUntilTheProgramStartsAnew) {
    add(1, {{"interestlevel", std::string("Cold")}});
    add(2, {{"dateacquired", std::monostate{}}});
    desk.choose(screen().m_allprospects);
    EXPECT_EQ(ids(), (Texts{"2", "1"}));
    EXPECT_EQ(desk.module().prospectquery, "Select * from [table] order by dateacquired, last, first");
    reopen_screen();
    EXPECT_EQ(ids(), (Texts{"2", "1"}));
}

TEST_F(Prospect, OnAnEmptyTableAllProspectsSaysSoAndBirthdaysStopSilently) {
    const std::string view = desk.module().prospectquery;
    desk.choose(screen().m_allprospects);
    EXPECT_EQ(desk.host.box_texts(), Texts{"No Active Prospects"});
    EXPECT_EQ(desk.module().prospectquery, view);
    desk.choose(screen().m_birthdays);
    EXPECT_EQ(desk.host.boxes.size(), 1u);
    EXPECT_EQ(screen().caption, "Prospects with Birthdays");
}

TEST_F(Prospect, BirthdaysAreTodaysToTheSeventhDaysAhead) {
    add(1, {{"birthday", make_date(1960, 11, 20)}});
    add(2, {{"co_birthday", make_date(1960, 11, 27)}});
    add(3, {{"birthday", make_date(1960, 11, 28)}});
    desk.choose(screen().m_birthdays);
    EXPECT_EQ(ids(), (Texts{"1", "2"}));
    EXPECT_EQ(stored(1).at("Flag"), "1");
    EXPECT_EQ(screen().caption, "Prospects");
}

TEST_F(Prospect, ProspectsToContactLieAroundToday) {
    add(1, {{"datenextcontact", make_date(2026, 11, 6)}});
    add(2, {{"datenextcontact", make_date(2026, 12, 4)}});
    add(3, {{"datenextcontact", make_date(2026, 12, 5)}});
    desk.choose(screen().m_prospectstocontact);
    EXPECT_EQ(ids(), (Texts{"1", "2"}));
    EXPECT_EQ(stored().at("Flag"), "1");
    EXPECT_EQ(screen().caption, "Prospects");
}

TEST_F(Prospect, AStaleMarkOnARowWithoutADateAcquiredSurvives) {
    add(1, {{"dateacquired", std::monostate{}}, {"Flag", std::int64_t{1}}});
    add(2, {{"birthday", make_date(1960, 11, 21)}});
    desk.choose(screen().m_birthdays);
    EXPECT_EQ(ids(), (Texts{"1", "2"}));
}

TEST_F(Prospect, AnAppointmentSavesTheRecordAndLinksToItAsAProspects) {
    auto& module = desk.module();
    module.appointment.make = [&module] { return std::make_unique<messages::appointment>(module); };
    reopen_screen();
    desk.choose(screen().m_newprospect);
    desk.type(screen().first, " Ann ");
    desk.type(screen().last, "Baker");
    desk.type(screen().co_first, "Bill");
    desk.type(screen().co_last, " Baker");
    desk.type(screen().homephone, " 555 ");
    desk.choose(screen().m_appointment);
    EXPECT_EQ(stored().at("first"), "Ann");
    EXPECT_EQ(module.appointmentlink, "21");
    EXPECT_EQ(module.appointmentname, "Ann & Bill");
    EXPECT_EQ(module.appointmentlast, "Baker");
    EXPECT_EQ(module.appointmentphone, "555");
    EXPECT_TRUE(module.appointment().visible());
    EXPECT_TRUE(desk.host.boxes.empty());
}

TEST_F(Prospect, ALetterAndAReminderAreOfTheProspectsKinds) {
    desk.choose(screen().m_newprospect);
    desk.type(screen().first, "Ann");
    desk.choose(screen().m_schmes);
    EXPECT_EQ(desk.compose().message1.text,
              "Ann \r\n \r\n\r\n,  \r\n\r\nHome Phone: \r\nCell Phone: \r\nWork Phone: \r\n");
    desk.click(desk.compose().Command2);
    desk.choose(screen().m_schlet);
    desk.click(desk.compose().Command2);
    const auto messages = desk.messages();
    ASSERT_EQ(messages.size(), 2u);
    EXPECT_EQ(messages[0].at("messagetype"), "2");
    EXPECT_EQ(messages[1].at("messagetype"), "6");
}

} // namespace
} // namespace tolva
