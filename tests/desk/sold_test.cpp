#include "support/sold_desk.h"

namespace tolva {
namespace {

using basic::make_date;
using support::Desk;
using Texts = std::vector<std::string>;

class Sold : public support::SoldDesk {};

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

TEST_F(Sold, AClickOnARepeatedIdOpensTheFirstRowThatBearsIt) {
    add(1, {{"id", std::int64_t{41}}, {"last", std::string("First")}, {"datesold", make_date(2026, 1, 1)}});
    add(2, {{"id", std::int64_t{41}}, {"last", std::string("Second")}, {"datesold", make_date(2026, 2, 1)}});
    desk.choose(screen().m_allcustomers);
    open(2);
    EXPECT_EQ(screen().last.text, "First");
}

TEST_F(Sold, AStoredBirthdayStaysWhateverIsTypedOverIt) {
    add(1, {{"birthday", make_date(1960, 3, 7)}, {"co_birthday", make_date(1961, 4, 8)}});
    desk.choose(screen().m_allcustomers);
    open(1);
    EXPECT_EQ(screen().birthday.text, "3/7/1960");
    EXPECT_EQ(screen().co_birthday.text, "4/8/1961");
    desk.type(screen().birthday, "5/5/1955");
    desk.type(screen().co_birthday, "");
    desk.type(screen().last, "Saved");
    desk.click(screen().Command5);
    EXPECT_EQ(stored()[0].at("last"), "Saved");
    EXPECT_EQ(stored()[0].at("birthday"), "3/7/1960");
    EXPECT_EQ(stored()[0].at("co_birthday"), "4/8/1961");
}

TEST_F(Sold, RemindersRunFromThisYearOverTheYearsOfTheSettings) {
    const struct {
        const char* birthday;
        const char* years;
        Texts dates;
    } cases[] = {
        {"12/24/1960", "2", {"12/24/2026", "12/24/2027", "12/24/2028"}},
        {"11/20/1960", "1", {"11/20/2026", "11/20/2027"}},
        {"3/7/1960", "2", {"3/7/2027", "3/7/2028"}},
        {"12/24/1960", "0", {}},
        {"12/24/1960", "", {}},
        {"12/24/1960", "none", {}},
    };
    for (const auto& [birthday, years, dates] : cases) {
        Desk other;
        other.start();
        other.module().settings.p_bdayschedule = module::Settings::birthdays_always;
        other.module().settings.p_bday = years;
        other.module().savepreferences();
        other.module().sold().show();
        auto& own = static_cast<records::sold&>(other.module().sold());
        other.choose(own.m_newcustomer);
        other.type(own.birthday, birthday);
        other.click(own.Command5);
        Texts scheduled;
        for (const auto& message : other.messages())
            scheduled.push_back(message.at("messagedate"));
        EXPECT_EQ(scheduled, dates) << birthday << " for " << years;
        EXPECT_TRUE(other.host.boxes.empty());
    }
}

TEST_F(Sold, TheReminderTellsOfThePersonAndTheCustomersAddressNotTheProperty) {
    desk.module().settings.p_bdayschedule = module::Settings::birthdays_always;
    desk.module().settings.p_bday = "1";
    desk.module().settings.listing_counter = 41;
    desk.module().savepreferences();
    desk.choose(screen().m_newcustomer);
    for (const auto& [box, text] :
         std::vector<std::pair<platform::TextBox*, const char*>>{{&screen().first, "Ann"},
                                                                 {&screen().last, "Baker"},
                                                                 {&screen().co_first, "Bill"},
                                                                 {&screen().co_last, "Cole"},
                                                                 {&screen().address, "1 Main St"},
                                                                 {&screen().city, "Utica"},
                                                                 {&screen().state, "NY"},
                                                                 {&screen().zip, "13501"},
                                                                 {&screen().soldaddress, "9 Elm"},
                                                                 {&screen().co_birthday, " 12/24/1961 "}})
        desk.type(*box, text);
    desk.click(screen().Command5);
    const auto messages = desk.messages();
    ASSERT_EQ(messages.size(), 2u);
    EXPECT_EQ(messages[0].at("messagetext"),
              "HAPPY BIRTHDAY!\r\nBill Cole\r\nBirthday: 12/24/1961\r\n"
              "1 Main St\r\nUtica, NY 13501\r\nHome: \r\nCell: \r\nWork: \r\n");
    EXPECT_EQ(messages[0].at("messagetype"), "3");
    EXPECT_EQ(messages[0].at("messagetime"), "8:30:00 AM");
    EXPECT_EQ(messages[0].at("customerid"), "41");
}

TEST_F(Sold, AFebruary29FailsInTheFirstYearWithoutThatDay) {
    desk.module().settings.p_bdayschedule = module::Settings::birthdays_always;
    desk.module().settings.p_bday = "5";
    desk.module().savepreferences();
    desk.choose(screen().m_newcustomer);
    desk.type(screen().birthday, "2/29/1960");
    desk.click(screen().Command5);
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 13);
    EXPECT_FALSE(desk.module().soldnewrecord);
    EXPECT_TRUE(desk.messages().empty());
}

TEST_F(Sold, NumbersAreTheirLeadingNumberAndANetLossIsStoredAsOne) {
    desk.choose(screen().m_newcustomer);
    platform::TextBox* boxes[] = {&screen().squarefeet,   &screen().bedrooms,       &screen().bathrooms,
                                  &screen().lotx,         &screen().loty,           &screen().acres,
                                  &screen().sellingprice, &screen().commissionrate, &screen().commission};
    for (auto* box : boxes)
        desk.type(*box, "12,000");
    desk.type(screen().expenses, "20.5x");
    desk.module().settings.p_bdayschedule = 0;
    desk.click(screen().Command5);
    for (auto* box : boxes)
        EXPECT_EQ(stored()[0].at(box->name()), "12") << box->name();
    EXPECT_EQ(stored()[0].at("expenses"), "20.5");
    EXPECT_EQ(stored()[0].at("netcommission"), "-8.5");
    desk.choose(screen().m_allcustomers);
    open(1);
    EXPECT_EQ(screen().netcommission.caption, "-8.50");
    EXPECT_EQ(screen().ttnet.caption, "-8.50");
}

TEST_F(Sold, TheNetIsWrittenFromItsLabelWhateverTheBoxesSay) {
    desk.choose(screen().m_newcustomer);
    screen().commission.text = "100";
    screen().netcommission.caption = "7.25";
    screen().savelisting();
    EXPECT_EQ(stored()[0].at("netcommission"), "7.25");
    EXPECT_EQ(stored()[0].at("commission"), "100");
}

TEST_F(Sold, EveryFieldSurvivesSavingAndLoading) {
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
        {"soldbusiness", "sb"},
        {"soldaddress", "9 Elm"},
        {"soldcity", "Rome"},
        {"soldstate", "New York"},
        {"soldzip", "13440"},
        {"construction", "Log"},
        {"squarefeet", "2000"},
        {"bedrooms", "3"},
        {"bathrooms", "2.5"},
        {"basement", "Full"},
        {"garage", "None"},
        {"lotx", "100"},
        {"loty", "200.5"},
        {"acres", "0.5"},
        {"customersource", "Sign"},
        {"contacthistory", "x"},
        {"datesold", "11/1/2026"},
        {"datelastcontact", "11/2/2026"},
        {"datenextcontact", "12/1/2026"},
        {"listingname", "ln"},
        {"listingcompany", "lc"},
        {"listingphone", "lp"},
        {"sellingname", "sn"},
        {"sellingcompany", "sc"},
        {"sellingphone", "sp"},
        {"sellingprice", "125000"},
        {"commissionrate", "6"},
        {"notes", "n\r\nn"},
    };
    desk.choose(screen().m_newcustomer);
    for (const auto& [name, text] : typed)
        dynamic_cast<platform::TextControl&>(*screen().find(name)).text = text;
    screen().includeinprinting.value = 0;
    screen().agency[1].value = 1;
    screen().savelisting();
    const auto row = stored()[0];
    for (const auto& [column, text] : typed)
        EXPECT_EQ(row.at(column), text) << column;
    EXPECT_EQ(row.at("includeinprinting"), "False");
    EXPECT_EQ(row.at("agency1"), "True");
    EXPECT_EQ(row.at("agency2"), "False");
    EXPECT_EQ(row.at("Flag"), "100");
    screen().rectoform();
    for (const auto& [name, text] : typed)
        EXPECT_EQ(dynamic_cast<platform::TextControl&>(*screen().find(name)).text, text) << name;
    EXPECT_EQ(screen().agency[1].value, 1);
    EXPECT_EQ(screen().includeinprinting.value, 0);
}

TEST_F(Sold, RemindersAndLettersAreOfTheSoldKinds) {
    desk.module().settings.listing_counter = 41;
    desk.module().savepreferences();
    desk.choose(screen().m_newcustomer);
    desk.type(screen().first, "Ann");
    desk.type(screen().address, "1 Main St");
    desk.type(screen().soldaddress, "9 Elm");
    desk.choose(screen().m_schmess);
    EXPECT_EQ(desk.compose().message1.text,
              "Ann \r\n \r\n1 Main St\r\n,  \r\n\r\nHome Phone: \r\nCell Phone: \r\nWork Phone: \r\n");
    desk.click(desk.compose().Command2);
    desk.choose(screen().m_schlet);
    desk.click(desk.compose().Command2);
    const auto messages = desk.messages();
    ASSERT_EQ(messages.size(), 2u);
    EXPECT_EQ(messages[0].at("messagetype"), "3");
    EXPECT_EQ(messages[1].at("messagetype"), "7");
    EXPECT_EQ(messages[1].at("customerid"), "41");
}

TEST_F(Sold, AnAppointmentSavesTheRecordAndLinksToItAsASales) {
    auto& module = desk.module();
    module.appointment.make = [&module] { return std::make_unique<messages::appointment>(module); };
    module.settings.listing_counter = 41;
    module.savepreferences();
    desk.click(screen().Command10);
    module.sold().show();
    desk.choose(screen().m_newcustomer);
    desk.type(screen().first, "Ann");
    desk.type(screen().last, "Baker");
    desk.type(screen().co_first, "Bill");
    desk.type(screen().co_last, "Cole");
    desk.choose(screen().m_setappointment);
    EXPECT_EQ(stored()[0].at("first"), "Ann");
    EXPECT_EQ(module.appointmentlink, "341");
    EXPECT_EQ(module.appointmentname, "Ann");
    EXPECT_TRUE(module.appointment().visible());
}

TEST_F(Sold, TheNetIsLeftAloneByPriceAndRate) {
    desk.choose(screen().m_newcustomer);
    desk.type(screen().sellingprice, "100000");
    desk.type(screen().commissionrate, "6");
    desk.runtime().focus(screen().first);
    EXPECT_EQ(screen().netcommission.caption, "0.00");
    EXPECT_EQ(screen().commission.text, "");
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

} // namespace
} // namespace tolva
