#include <gtest/gtest.h>

#include "messages/message_kind.h"
#include "support/desk.h"

namespace tolva {
namespace {

using basic::make_date;
using support::Desk;
using Texts = std::vector<std::string>;

class Listings : public testing::Test {
  protected:
    Listings() {
        desk.start();
        desk.click(desk.menu().Command9);
    }

    records::listings& screen() { return desk.listings(); }

    /// A new listing with its first fields filled.
    void begin() {
        desk.choose(screen().m_newlisting);
        desk.type(screen().first, " Ann ");
        desk.type(screen().last, "Baker");
        desk.type(screen().co_first, "Bill");
        desk.type(screen().co_last, "Cole");
        desk.type(screen().address, "1 Main St");
        desk.type(screen().city, "Utica");
        desk.type(screen().state, "NY");
        desk.type(screen().zip, "13501");
        desk.type(screen().homephone, "555-1111");
        desk.type(screen().cellphone, "555-2222");
        desk.type(screen().workphone, "555-3333");
    }
    void reopen(int row = 1) { desk.runtime().click_row(screen().grid1, row); }
    Desk::Record stored(std::size_t row = 0) { return desk.stored_listings().at(row); }

    Desk desk;
};

// --- New ---

TEST_F(Listings, ANewListingIsStoredAtOnceAsAShellWithTodaysDates) {
    desk.choose(screen().m_newlisting);
    EXPECT_EQ(screen().id.text, "1");
    EXPECT_EQ(screen().datelisted.text, "11/20/2026");
    EXPECT_EQ(screen().datelastcontact.text, "11/20/2026");
    EXPECT_EQ(screen().dateexpires.text, "");
    EXPECT_EQ(screen().includeinprinting.value, 1);
    EXPECT_TRUE(desk.module().listingnewrecord);
    const auto row = stored();
    EXPECT_EQ(row.at("id"), "1");
    EXPECT_EQ(row.at("Flag"), "100");
    EXPECT_EQ(row.at("datelisted"), "11/20/2026");
    EXPECT_EQ(row.at("dateexpires"), "<null>");
    EXPECT_EQ(row.at("first"), "");
    EXPECT_EQ(row.at("includeinprinting"), "True");
    EXPECT_EQ(desk.stored_settings()["listing_counter"], "1");
    EXPECT_EQ(desk.stored_settings()["lastdate"], "11/20/2026");
}

TEST_F(Listings, ANewRecordHidesTheNavigation) {
    desk.choose(screen().m_newlisting);
    EXPECT_TRUE(screen().Command5.visible);
    for (auto* button : {&screen().Command6, &screen().Command7, &screen().Command8, &screen().Command9})
        EXPECT_FALSE(button->visible);
}

TEST_F(Listings, TheNewRecordLeavesTheViewInForce) {
    const std::string view = desk.module().listingquery;
    desk.choose(screen().m_newlisting);
    EXPECT_EQ(desk.module().listingquery, view);
    EXPECT_EQ(desk.module().listingset->RecordCount(), 1);
}

TEST_F(Listings, ADeletedListingLeavesAGapInTheIds) {
    desk.choose(screen().m_newlisting);
    desk.host.answers = {2};
    desk.click(screen().Command5);
    desk.choose(screen().m_newlisting);
    desk.host.answers = {1};
    desk.choose(screen().m_deletelisting);
    desk.choose(screen().m_newlisting);
    const auto all = desk.stored_listings();
    ASSERT_EQ(all.size(), 2u);
    EXPECT_EQ(all[0].at("id"), "1");
    EXPECT_EQ(all[1].at("id"), "3");
}

TEST_F(Listings, AFullCounterIsAnOverflow) {
    desk.module().settings.listing_counter = 2147483647;
    desk.module().savepreferences();
    desk.choose(screen().m_newlisting);
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 6);
    EXPECT_TRUE(desk.stored_listings().empty());
}

TEST_F(Listings, LeavingDatelistedProposesAnExpiryOverAnEarlierOne) {
    begin();
    desk.type(screen().dateexpires, "1/1/2030");
    desk.type(screen().datelisted, "11/20/2026");
    desk.runtime().focus(screen().first);
    EXPECT_EQ(screen().dateexpires.text, "5/19/2027");
}

TEST_F(Listings, LeavingDatelistedWithoutADateLeavesTheExpiryAlone) {
    begin();
    desk.type(screen().dateexpires, "1/1/2030");
    for (const char* text : {"", "soon"}) {
        desk.type(screen().datelisted, text);
        desk.runtime().focus(screen().first);
        EXPECT_EQ(screen().dateexpires.text, "1/1/2030");
    }
}

TEST_F(Listings, TheAccessKeyOfCloseStillLetsDatelistedLoseTheFocusFirst) {
    begin();
    desk.type(screen().datelisted, "11/20/2026");
    // An access key comes in as a click on the button, wherever the focus was.
    desk.host.answers = {2};
    desk.click(screen().Command5);
    EXPECT_EQ(stored().at("dateexpires"), "5/19/2027");
}

// --- Saving ---

TEST_F(Listings, EveryFieldSurvivesSavingAndLoading) {
    desk.choose(screen().m_newlisting);
    const std::map<std::string, std::string> typed = {
        {"first", "Renée"},
        {"middle", "Q."},
        {"last", "O'Neill-Smith"},
        {"address", "1 Main"},
        {"city", "Utica"},
        {"state", "NY"},
        {"zip", "13501-0001"},
        {"homephone", "(315) 555-0100"},
        {"workphone", "w"},
        {"cellphone", "c"},
        {"fax", "f"},
        {"employer", "Mill & Co."},
        {"email", "a@b.example"},
        {"businessname", "B"},
        {"co_first", "Zoë"},
        {"co_middle", "m"},
        {"co_last", "Žižek"},
        {"listingaddress", "9 Elm"},
        {"listingcity", "Rome"},
        {"listingstate", "New York State"},
        {"listingzip", "13440"},
        {"construction", "Brick"},
        {"legaldescription", std::string(400, 'x')},
        {"subdivision", "S"},
        {"yearbuilt", "1984"},
        {"squarefeet", "2100"},
        {"rooms", "8"},
        {"bedrooms", "3"},
        {"bathrooms", "2.5"},
        {"basement", "Full"},
        {"garage", "2 Car"},
        {"citytaxes", "1200.50"},
        {"countytaxes", "900"},
        {"lotx", "100"},
        {"loty", "200.5"},
        {"acres", "0.46"},
        {"listingsource", "Sign"},
        {"contacthistory", "one\r\ntwo"},
        {"notes", std::string(5000, 'n')},
        {"birthday", "3/7/1960"},
        {"co_birthday", "4/8/1961"},
        {"datelisted", "11/1/2026"},
        {"dateexpires", "5/1/2027"},
        {"datelastcontact", "11/2/2026"},
        {"datenextcontact", "12/2/2026"},
        {"listingprice", "125000"},
        {"commission", "6.5"},
        {"mls", "S123"},
    };
    for (platform::Control* control : screen().controls())
        if (const auto field = typed.find(control->name()); field != typed.end())
            dynamic_cast<platform::TextControl&>(*control).text = field->second;
    desk.runtime().tick(screen().includeinprinting, 0);
    desk.module().settings.p_bdayschedule = 0;
    desk.click(screen().Command5);
    const auto row = stored();
    for (const auto& [column, text] : typed)
        EXPECT_EQ(row.at(column), text) << column;
    EXPECT_EQ(row.at("includeinprinting"), "False");

    reopen();
    for (platform::Control* control : screen().controls())
        if (const auto field = typed.find(control->name()); field != typed.end()) {
            EXPECT_EQ(dynamic_cast<platform::TextControl&>(*control).text, field->second) << field->first;
        }
}

TEST_F(Listings, SomeFieldsAreCutAndThenTrimmedOthersTrimmedAndThenCut) {
    begin();
    const std::string middle_blanks = std::string(45, 'a') + "          " + "b";
    desk.type(screen().first, middle_blanks);                         // cut to 50 in its blanks, then trimmed
    desk.type(screen().businessname, "     " + std::string(60, 'b')); // trimmed, then cut
    desk.type(screen().employer, "     " + std::string(60, 'e'));     // cut with its blanks, then trimmed
    desk.type(screen().state, " NY");
    desk.type(screen().listingstate, "New Hampshire and on and on");
    desk.type(screen().rooms, "  12345");
    desk.choose(screen().m_savelisting);
    const auto row = stored();
    EXPECT_EQ(row.at("first"), std::string(45, 'a'));
    EXPECT_EQ(row.at("businessname"), std::string(50, 'b'));
    EXPECT_EQ(row.at("employer"), std::string(45, 'e'));
    EXPECT_EQ(row.at("state"), "N");
    EXPECT_EQ(row.at("listingstate"), "New Hampshire and on");
    EXPECT_EQ(row.at("rooms"), "123");
}

TEST_F(Listings, EveryLimitIsKeptInItsFieldsOwnWay) {
    enum class Way { cut_then_trim, trim_then_cut };
    const struct {
        const char* column;
        std::size_t limit;
        Way way;
    } limits[] = {
        {"first", 50, Way::cut_then_trim},       {"middle", 50, Way::cut_then_trim},
        {"last", 50, Way::cut_then_trim},        {"address", 50, Way::cut_then_trim},
        {"city", 50, Way::cut_then_trim},        {"state", 2, Way::cut_then_trim},
        {"zip", 10, Way::cut_then_trim},         {"homephone", 20, Way::cut_then_trim},
        {"workphone", 20, Way::cut_then_trim},   {"cellphone", 20, Way::cut_then_trim},
        {"fax", 20, Way::cut_then_trim},         {"employer", 50, Way::cut_then_trim},
        {"email", 100, Way::cut_then_trim},      {"businessname", 50, Way::trim_then_cut},
        {"co_first", 50, Way::cut_then_trim},    {"co_middle", 50, Way::cut_then_trim},
        {"co_last", 50, Way::cut_then_trim},     {"listingaddress", 50, Way::cut_then_trim},
        {"listingcity", 50, Way::cut_then_trim}, {"listingstate", 20, Way::cut_then_trim},
        {"listingzip", 10, Way::cut_then_trim},  {"construction", 50, Way::cut_then_trim},
        {"subdivision", 50, Way::cut_then_trim}, {"yearbuilt", 4, Way::cut_then_trim},
        {"squarefeet", 10, Way::trim_then_cut},  {"rooms", 3, Way::trim_then_cut},
        {"bedrooms", 3, Way::trim_then_cut},     {"bathrooms", 5, Way::trim_then_cut},
        {"basement", 50, Way::trim_then_cut},    {"garage", 50, Way::trim_then_cut},
        {"citytaxes", 10, Way::trim_then_cut},   {"countytaxes", 10, Way::trim_then_cut},
        {"lotx", 10, Way::trim_then_cut},        {"loty", 10, Way::trim_then_cut},
        {"acres", 10, Way::trim_then_cut},       {"listingsource", 50, Way::trim_then_cut},
    };
    begin();
    for (const auto& [column, limit, way] : limits)
        dynamic_cast<platform::TextControl&>(*screen().find(column)).text = " " + std::string(limit + 5, '7');
    desk.choose(screen().m_savelisting);
    const auto row = stored();
    // The blank ahead takes a place of the cut, or it is gone before.
    for (const auto& [column, limit, way] : limits)
        EXPECT_EQ(row.at(column), std::string(way == Way::cut_then_trim ? limit - 1 : limit, '7')) << column;
}

TEST_F(Listings, CutsCountCharactersNotBytes) {
    begin();
    std::string accents;
    for (int letter = 0; letter < 60; ++letter)
        accents += "é";
    desk.type(screen().last, accents);
    desk.choose(screen().m_savelisting);
    EXPECT_EQ(stored().at("last"), accents.substr(0, 100));
}

TEST_F(Listings, TheListingServicesNumberIsNotCut) {
    begin();
    const std::string number(200, '7');
    desk.type(screen().mls, " " + number + " ");
    desk.choose(screen().m_savelisting);
    ASSERT_FALSE(desk.host.error) << desk.host.error->text;
    EXPECT_EQ(stored().at("mls"), number);
}

TEST_F(Listings, CutsLeaveNothingThatItsColumnCannotHold) {
    begin();
    desk.type(screen().state, "\U0001F600\U0001F600");
    desk.type(screen().rooms, "12\U0001F600");
    desk.choose(screen().m_savelisting);
    ASSERT_FALSE(desk.host.error) << desk.host.error->text;
    EXPECT_EQ(stored().at("state"), "\U0001F600");
    EXPECT_EQ(stored().at("rooms"), "12");
}

TEST_F(Listings, ThePriceStopsAtAThousandsComma) {
    begin();
    desk.type(screen().listingprice, "125,000");
    desk.choose(screen().m_savelisting);
    EXPECT_EQ(stored().at("listingprice"), "125");
    desk.host.answers = {2};
    desk.click(screen().Command5);
    reopen();
    EXPECT_EQ(screen().listingprice.text, "125");
}

TEST_F(Listings, ThePriceIsTakenDownToAWholeNumberAndTheCommissionIsNot) {
    begin();
    desk.type(screen().listingprice, "99999.99");
    desk.type(screen().commission, "6.25");
    desk.choose(screen().m_savelisting);
    EXPECT_EQ(stored().at("listingprice"), "99999");
    EXPECT_EQ(stored().at("commission"), "6.25");
    desk.type(screen().listingprice, "-1.5");
    desk.choose(screen().m_savelisting);
    EXPECT_EQ(stored().at("listingprice"), "-2");
}

TEST_F(Listings, ZeroIsShownAsAnEmptyField) {
    begin();
    desk.type(screen().acres, "0");
    desk.type(screen().listingprice, "0");
    desk.host.answers = {2};
    desk.click(screen().Command5);
    EXPECT_EQ(stored().at("acres"), "0");
    reopen();
    EXPECT_EQ(screen().acres.text, "");
    EXPECT_EQ(screen().listingprice.text, "");
}

TEST_F(Listings, AnEmptyDateIsStoredAsNull) {
    begin();
    desk.type(screen().birthday, "3/7/1960");
    desk.choose(screen().m_savelisting);
    EXPECT_EQ(stored().at("birthday"), "3/7/1960");
    desk.type(screen().birthday, "  ");
    desk.choose(screen().m_savelisting);
    EXPECT_EQ(stored().at("birthday"), "<null>");
}

TEST_F(Listings, TheTestsRunInOrderAndOnlyTheFirstFaultIsShown) {
    begin();
    const std::tuple<platform::TextBox*, const char*, const char*> faults[] = {
        {&screen().datelisted, "x", "Invalid Date Listed"},
        {&screen().birthday, "x", "Invalid Buyer Birthday"},
        {&screen().co_birthday, "x", "Invalid Co-Buyer Birthday"},
        {&screen().dateexpires, "x", "Invalid Date Listing Expires"},
        {&screen().datelastcontact, "x", "Invalid Date Last Contact"},
        {&screen().datenextcontact, "x", "Invalid Date Next Contact"},
    };
    for (const auto& [field, text, message] : faults)
        field->text = text;
    for (const auto& [field, text, message] : faults) {
        desk.host.boxes.clear();
        EXPECT_FALSE(screen().validate());
        ASSERT_EQ(desk.host.boxes.size(), 1u);
        EXPECT_EQ(desk.host.boxes[0].text, message);
        EXPECT_EQ(desk.host.boxes[0].title, "Error");
        field->text = "1/1/2026";
    }
    EXPECT_TRUE(screen().validate());
}

TEST_F(Listings, OnlyTheListingAndTheLastContactNeedADate) {
    begin();
    for (auto* field :
         {&screen().birthday, &screen().co_birthday, &screen().dateexpires, &screen().datenextcontact}) {
        field->text = "  ";
        EXPECT_TRUE(screen().validate()) << field->name();
    }
    for (auto* field : {&screen().datelisted, &screen().datelastcontact}) {
        const std::string before = field->text;
        field->text = "";
        EXPECT_FALSE(screen().validate()) << field->name();
        field->text = before;
    }
}

TEST_F(Listings, SavingAFaultyFormSaysBothTheFaultAndThatItSaved) {
    begin();
    desk.type(screen().datelisted, "never");
    desk.choose(screen().m_savelisting);
    EXPECT_EQ(desk.host.box_texts(), (Texts{"Invalid Date Listed", "Listing Saved"}));
    EXPECT_EQ(desk.host.boxes[1].title, "Message");
    EXPECT_EQ(stored().at("last"), "");
}

TEST_F(Listings, ADeletionAsksAndKeepsTheListingsMessages) {
    begin();
    desk.type(screen().dateexpires, "5/1/2027");
    desk.host.answers = {2};
    desk.click(screen().Command5);
    ASSERT_EQ(desk.messages().size(), 2u);
    reopen();
    desk.host.answers = {2};
    desk.choose(screen().m_deletelisting);
    EXPECT_EQ(desk.host.boxes.back().text, "Delete Listing?");
    EXPECT_EQ(desk.stored_listings().size(), 1u);
    EXPECT_FALSE(screen().f_customerlist.visible);
    desk.host.answers = {1};
    desk.choose(screen().m_deletelisting);
    EXPECT_TRUE(desk.stored_listings().empty());
    EXPECT_TRUE(screen().f_customerlist.visible);
    EXPECT_EQ(screen().grid1.Rows(), 2);
    EXPECT_EQ(desk.messages().size(), 2u);
}

// --- The close flow ---

TEST_F(Listings, ClosingANewListingSchedulesItsExpiry) {
    begin();
    desk.type(screen().dateexpires, "5/1/2027");
    desk.host.answers = {2};
    desk.click(screen().Command5);
    const auto messages = desk.messages();
    ASSERT_EQ(messages.size(), 2u);
    EXPECT_EQ(messages[0].at("messagedate"), "4/1/2027");
    EXPECT_EQ(messages[0].at("messagetime"), "8:00:00 AM");
    EXPECT_EQ(messages[0].at("messagetype"), "1");
    EXPECT_EQ(messages[0].at("messageid"), "1");
    EXPECT_EQ(messages[0].at("customerid"), "1");
    EXPECT_EQ(messages[0].at("messageflag"), "False");
    EXPECT_EQ(messages[0].at("letterpath"), "");
    EXPECT_EQ(messages[0].at("messagetext"), "LISTING EXPIRING IN 30 DAYS!\r\n"
                                             "Date Lease Expires: 5/1/2027Ann Baker\r\n"
                                             "Bill Cole\r\n"
                                             "1 Main St\r\n"
                                             "Utica, NY 13501\r\n"
                                             "Home: 555-1111\r\n"
                                             "Cell: 555-2222\r\n"
                                             "Work: 555-3333\r\n");
    EXPECT_EQ(messages[1].at("messagedate"), "5/1/2027");
    EXPECT_EQ(messages[1].at("messagetext").substr(0, 23), "LISTING EXPIRING NOW!\r\n");
    EXPECT_FALSE(desk.module().listingnewrecord);
    EXPECT_TRUE(screen().f_customerlist.visible);
    EXPECT_FALSE(desk.module().generalmessagecreate.loaded());
}

TEST_F(Listings, WithoutAnExpiryThereIsNoExpiryMessageAndTheBirthdaysAreStillAsked) {
    begin();
    desk.host.answers = {1};
    desk.click(screen().Command5);
    EXPECT_EQ(desk.host.boxes.back().text, "Automatically Schedule Birthday Reminders?");
    EXPECT_TRUE(desk.messages().empty());
}

TEST_F(Listings, AnExpiryInThePastStillGivesBothMessagesWhichRiseAtOnce) {
    begin();
    desk.type(screen().dateexpires, "11/1/2026");
    desk.host.answers = {2};
    desk.click(screen().Command5);
    EXPECT_EQ(desk.messages().size(), 2u);
    desk.wait_minutes(1);
    EXPECT_EQ(desk.dialogs().size(), 2u);
}

TEST_F(Listings, BirthdaysAreScheduledForThisYearAndAsManyMoreAsTheSettingSays) {
    begin();
    desk.type(screen().birthday, "12/24/1960");
    desk.host.answers = {1};
    desk.click(screen().Command5);
    const auto messages = desk.messages();
    ASSERT_EQ(messages.size(), 6u);
    for (int year = 0; year < 6; ++year) {
        const auto& message = messages[static_cast<std::size_t>(year)];
        EXPECT_EQ(message.at("messagedate"), "12/24/" + std::to_string(2026 + year));
        EXPECT_EQ(message.at("messagetime"), "8:30:00 AM");
        EXPECT_EQ(message.at("messagetype"), "1");
    }
    EXPECT_EQ(messages[0].at("messagetext"), "HAPPY BIRTHDAY!\r\n"
                                             "Ann Baker\r\n"
                                             "Birthday: 12/24/1960\r\n"
                                             "1 Main St\r\n"
                                             "Utica, NY 13501\r\n"
                                             "Home: 555-1111\r\n"
                                             "Cell: 555-2222\r\n"
                                             "Work: 555-3333\r\n");
}

TEST_F(Listings, ABirthdayGoneByThisYearBeginsNextYear) {
    begin();
    desk.type(screen().birthday, "3/7/1960");
    desk.host.answers = {1};
    desk.click(screen().Command5);
    const auto messages = desk.messages();
    ASSERT_EQ(messages.size(), 5u);
    EXPECT_EQ(messages[0].at("messagedate"), "3/7/2027");
}

TEST_F(Listings, ABirthdayTodayIsScheduledForToday) {
    begin();
    desk.type(screen().birthday, "11/20/1960");
    desk.host.answers = {1};
    desk.click(screen().Command5);
    ASSERT_EQ(desk.messages().size(), 6u);
    EXPECT_EQ(desk.messages()[0].at("messagedate"), "11/20/2026");
    EXPECT_EQ(desk.messages()[0].at("messagetime"), "8:30:00 AM");
}

TEST_F(Listings, TheTwoBirthdaysAreIndependentAndAskedForOnce) {
    begin();
    desk.type(screen().co_birthday, "12/1/1970");
    desk.host.answers = {1};
    desk.click(screen().Command5);
    ASSERT_EQ(desk.messages().size(), 6u);
    EXPECT_EQ(desk.messages()[0].at("messagetext").substr(0, 52),
              "HAPPY BIRTHDAY!\r\nBill Cole\r\nBirthday: 12/1/1970\r\n1 M");
    EXPECT_EQ(desk.host.boxes.size(), 1u);
}

TEST_F(Listings, AlwaysAsksNothingAndNeverSchedulesNothing) {
    for (const int setting : {2, 0, 7}) {
        Desk other;
        other.set_setting("p_bdayschedule", std::int64_t{setting});
        other.start();
        other.click(other.menu().Command9);
        other.choose(other.listings().m_newlisting);
        other.type(other.listings().birthday, "12/24/1960");
        other.click(other.listings().Command5);
        EXPECT_TRUE(other.host.boxes.empty());
        EXPECT_EQ(other.messages().size(), setting == 2 ? 6u : 0u);
    }
}

TEST_F(Listings, AZeroOfYearsStillAsksAndThenSchedulesNothing) {
    for (const char* years : {"0", ""}) {
        Desk other;
        other.set_setting("p_bday", std::string(years));
        other.start();
        other.click(other.menu().Command9);
        other.choose(other.listings().m_newlisting);
        other.type(other.listings().birthday, "12/24/1960");
        other.host.answers = {1};
        other.click(other.listings().Command5);
        EXPECT_EQ(other.host.boxes.size(), 1u);
        EXPECT_TRUE(other.messages().empty());
    }
}

TEST_F(Listings, WithoutYearsNoBirthdayArisesWhateverTheSettingSays) {
    for (const char* years : {"0", "", "none"}) {
        Desk other;
        other.set_setting("p_bday", std::string(years));
        other.set_setting("p_bdayschedule", std::int64_t{module::Settings::birthdays_always});
        other.start();
        other.click(other.menu().Command9);
        other.choose(other.listings().m_newlisting);
        other.type(other.listings().birthday, "12/24/1960");
        other.type(other.listings().co_birthday, "12/25/1961");
        other.click(other.listings().Command5);
        EXPECT_TRUE(other.host.boxes.empty());
        EXPECT_TRUE(other.messages().empty()) << years;
    }
}

TEST_F(Listings, TwoYearsAheadAreThreeRowsOrTwoWhenTheBirthdayIsGoneBy) {
    for (const auto& [birthday, rows] : {std::pair("12/24/1960", 3u), std::pair("11/19/1960", 2u)}) {
        Desk other;
        other.set_setting("p_bday", std::string("2"));
        other.set_setting("p_bdayschedule", std::int64_t{module::Settings::birthdays_always});
        other.start();
        other.click(other.menu().Command9);
        other.choose(other.listings().m_newlisting);
        other.type(other.listings().birthday, birthday);
        other.click(other.listings().Command5);
        EXPECT_EQ(other.messages().size(), rows) << birthday;
    }
}

TEST_F(Listings, CancelAtTheQuestionKeepsTheExpiryMessages) {
    begin();
    desk.type(screen().dateexpires, "5/1/2027");
    desk.type(screen().birthday, "12/24/1960");
    desk.host.during_box.push_back([this] { EXPECT_EQ(desk.messages().size(), 2u); });
    desk.host.answers = {2};
    desk.click(screen().Command5);
    EXPECT_EQ(desk.messages().size(), 2u);
}

TEST_F(Listings, ClosingAnOldListingSchedulesAndAsksNothing) {
    begin();
    desk.type(screen().dateexpires, "5/1/2027");
    desk.host.answers = {2};
    desk.click(screen().Command5);
    desk.host.boxes.clear();
    reopen();
    desk.type(screen().dateexpires, "6/1/2027");
    desk.type(screen().birthday, "12/24/1960");
    desk.click(screen().Command5);
    EXPECT_TRUE(desk.host.boxes.empty());
    EXPECT_EQ(desk.messages().size(), 2u);
    EXPECT_EQ(stored().at("dateexpires"), "6/1/2027");
}

TEST_F(Listings, AnEmptyExpirySettingWarnsOnTheDayItself) {
    Desk other;
    other.set_setting("p_expire", std::string());
    other.start();
    other.click(other.menu().Command9);
    other.choose(other.listings().m_newlisting);
    other.type(other.listings().dateexpires, "5/1/2027");
    other.host.answers = {2};
    other.click(other.listings().Command5);
    ASSERT_EQ(other.messages().size(), 2u);
    EXPECT_EQ(other.messages()[0].at("messagedate"), "5/1/2027");
    EXPECT_EQ(other.messages()[0].at("messagetext").substr(0, 28), "LISTING EXPIRING IN  DAYS!\r\n");
}

TEST_F(Listings, AFaultyFormIsScheduledFromWhatItShowsAndStaysUnsaved) {
    begin();
    desk.type(screen().dateexpires, "5/1/2027");
    desk.type(screen().datelastcontact, "");
    desk.host.answers = {2};
    desk.click(screen().Command5);
    EXPECT_EQ(desk.host.boxes[0].text, "Invalid Date Last Contact");
    EXPECT_EQ(desk.messages().size(), 2u);
    EXPECT_EQ(stored().at("last"), "");
}

TEST_F(Listings, AFebruary29EndsTheFlowAtTheFirstYearWithoutOne) {
    Desk leap(Desk::delivered(), {2028, 1, 10, 10, 0, 0});
    leap.start();
    leap.click(leap.menu().Command9);
    leap.choose(leap.listings().m_newlisting);
    leap.type(leap.listings().birthday, "2/29/1960");
    leap.host.answers = {1};
    leap.click(leap.listings().Command5);
    ASSERT_TRUE(leap.host.error);
    EXPECT_EQ(leap.host.error->number, 13);
    EXPECT_EQ(leap.messages().size(), 1u) << "2028's is stored, 2029 has no such day";
    EXPECT_FALSE(leap.module().listingnewrecord);
    EXPECT_TRUE(leap.host.ended);
}

TEST_F(Listings, TheNewRecordFlagOutlivesADeletion) {
    begin();
    desk.host.answers = {1};
    desk.choose(screen().m_deletelisting);
    EXPECT_TRUE(desk.module().listingnewrecord);
    // The next listing that is closed, of whatever age, gets the scheduling.
    Desk::add(*desk.module().listingdb, {{"id", std::int64_t{50}},
                                         {"last", std::string("Old")},
                                         {"datelisted", make_date(2020, 1, 1)},
                                         {"datelastcontact", make_date(2020, 1, 1)},
                                         {"dateexpires", make_date(2027, 1, 1)}});
    screen().gobacktogrid();
    reopen();
    desk.host.answers = {2};
    desk.click(screen().Command5);
    EXPECT_EQ(desk.messages().size(), 2u);
    EXPECT_EQ(desk.messages()[0].at("customerid"), "50");
}

TEST_F(Listings, TheNewRecordFlagOutlivesTheTitleBar) {
    begin();
    desk.close(screen());
    EXPECT_TRUE(desk.module().listingnewrecord);
}

TEST_F(Listings, AnOpenHalfWrittenMessageIsOverwrittenAndUnloadedByTheFlow) {
    begin();
    desk.type(screen().dateexpires, "5/1/2027");
    desk.click(desk.menu().Command11);
    desk.type(desk.compose().message1, "half written");
    desk.type(desk.compose().time1, "3:00 PM");
    desk.host.answers = {2};
    desk.click(screen().Command5);
    ASSERT_EQ(desk.messages().size(), 2u);
    EXPECT_EQ(desk.messages()[0].at("messagetime"), "8:00:00 AM");
    EXPECT_FALSE(desk.module().generalmessagecreate.loaded());
}

TEST_F(Listings, TheFlowsMessagesHaveTheirTextWhateverKindWasSetBefore) {
    begin();
    desk.type(screen().dateexpires, "5/1/2027");
    desk.module().messagekind = messages::listing_letter;
    desk.host.answers = {2};
    desk.click(screen().Command5);
    ASSERT_EQ(desk.messages().size(), 2u);
    EXPECT_EQ(desk.messages()[0].at("messagetext").substr(0, 16), "LISTING EXPIRING");
    EXPECT_EQ(desk.messages()[0].at("messagetype"), "1");
}

TEST_F(Listings, ImportFailsAsItIsMeantTo) {
    EXPECT_EQ(screen().miport.caption, "Import Listings");
    desk.choose(screen().miport);
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 424);
    EXPECT_EQ(desk.host.error->text, "Object required");
}

// --- Scheduling by hand ---

TEST_F(Listings, TheMessageEntryPreparesAReminderAboutTheListing) {
    begin();
    desk.type(screen().listingaddress, "9 Elm");
    desk.type(screen().listingcity, "Rome");
    desk.type(screen().listingstate, "NY");
    desk.type(screen().listingzip, "13440");
    EXPECT_EQ(screen().m_schmess.caption, "Schedule Message Reminder");
    desk.choose(screen().m_schmess);
    EXPECT_TRUE(desk.compose().visible());
    EXPECT_EQ(desk.compose().customerid.text, "1");
    EXPECT_EQ(desk.compose().message1.text, "Ann Baker\r\n"
                                            "Bill Cole\r\n"
                                            "Listing Address:\r\n"
                                            "9 Elm\r\n"
                                            "Rome, NY 13440\r\n"
                                            "\r\n"
                                            "Home Phone: 555-1111\r\n"
                                            "Cell Phone: 555-2222\r\n"
                                            "Work Phone: 555-3333\r\n");
    desk.click(desk.compose().Command2);
    ASSERT_EQ(desk.messages().size(), 1u);
    EXPECT_EQ(desk.messages()[0].at("messagetype"), "1");
    EXPECT_EQ(desk.messages()[0].at("customerid"), "1");
}

TEST_F(Listings, ALetterOfTheLetterEntryCarriesSentLetter) {
    begin();
    EXPECT_EQ(screen().m_schlet.caption, "Schedule Letter");
    desk.choose(screen().m_schlet);
    EXPECT_TRUE(desk.compose().letterpath.visible);
    EXPECT_FALSE(desk.compose().message1.visible);
    desk.host.file_to_open = "C:\\TOLVA\\letters\\thankyou.rtf";
    desk.click(desk.compose().Command3);
    desk.click(desk.compose().Command2);
    ASSERT_EQ(desk.messages().size(), 1u);
    EXPECT_EQ(desk.messages()[0].at("messagetype"), "5");
    EXPECT_EQ(desk.messages()[0].at("messagetext"), "Sent Letter");
    EXPECT_EQ(desk.messages()[0].at("customerid"), "1");
    EXPECT_EQ(desk.messages()[0].at("letterpath"), "C:\\TOLVA\\letters\\thankyou.rtf");
}

TEST_F(Listings, EveryEntryIsOnOffer) {
    for (const platform::MenuEntry* entry :
         {&screen().m_newlisting, &screen().m_searchlisting, &screen().m_savelisting,
          &screen().m_deletelisting, &screen().m_exit, &screen().m_printlisting, &screen().m_printlistings,
          &screen().m_printlabels, &screen().m_printletter, &screen().m_schmess, &screen().m_schlet,
          &screen().m_appointment, &screen().miport})
        EXPECT_TRUE(entry->available()) << entry->caption;
}

} // namespace
} // namespace tolva
