#include <gtest/gtest.h>

#include "messages/message_kind.h"
#include "support/desk.h"

namespace tolva {
namespace {

using basic::make_date;
using support::Desk;

class MessageDialogs : public testing::Test {
  protected:
    MessageDialogs() {
        // No question about letters at the first tick.
        desk.set_setting("lastdate", make_date(2026, 11, 20));
        desk.start();
    }

    /// Stores a reminder through the compose dialog, as a user does from the main menu.
    void remind(const std::string& text, int year, int month, int day, const std::string& time) {
        desk.click(desk.menu().Command11);
        desk.type(desk.compose().message1, text);
        desk.type(desk.compose().time1, time);
        desk.runtime().pick_date(desk.compose().Month1, make_date(year, month, day));
        desk.click(desk.compose().Command2);
    }
    std::vector<std::string> stored_texts() {
        std::vector<std::string> texts;
        for (const auto& row : desk.messages())
            texts.push_back(row.at("messagetext"));
        return texts;
    }

    Desk desk;
};

using Texts = std::vector<std::string>;

// --- Composing ---

TEST_F(MessageDialogs, AGeneralReminderIsStoredAsComposed) {
    desk.click(desk.menu().Command11);
    auto& compose = desk.compose();
    EXPECT_EQ(compose.caption, "Enter Message");
    EXPECT_EQ(compose.Month1.value, make_date(2026, 11, 20));
    EXPECT_EQ(compose.time1.text, "8:30 AM");
    EXPECT_EQ(compose.customerid.text, "0");
    EXPECT_EQ(compose.message1.text, "");
    EXPECT_TRUE(compose.message1.visible);
    EXPECT_TRUE(compose.Label1_1.visible);
    EXPECT_FALSE(compose.letterpath.visible);
    EXPECT_FALSE(compose.Command3.visible);
    EXPECT_EQ(compose.Command1.caption, "EXIT");
    EXPECT_EQ(compose.Command2.caption, "Save Message");
    EXPECT_EQ(compose.Command3.caption, "Browse to Letter");
    EXPECT_EQ(compose.Frame1.caption, "Time");
    EXPECT_EQ(compose.Label1_0.caption, "Click on Date");
    EXPECT_EQ(compose.Label1_1.caption, "Message");
    desk.type(compose.message1, "  order signs\r\nand cards  ");
    desk.type(compose.time1, " 2:15 pm ");
    desk.runtime().pick_date(compose.Month1, make_date(2026, 12, 1));
    desk.click(compose.Command2);
    ASSERT_EQ(desk.messages().size(), 1u);
    const auto row = desk.messages()[0];
    EXPECT_EQ(row.at("messageid"), "1");
    EXPECT_EQ(row.at("messagetype"), "4");
    EXPECT_EQ(row.at("customerid"), "0");
    EXPECT_EQ(row.at("messagetext"), "order signs\r\nand cards");
    EXPECT_EQ(row.at("messagedate"), "12/1/2026");
    EXPECT_EQ(row.at("messagetime"), "2:15:00 PM");
    EXPECT_EQ(row.at("messageflag"), "False");
    EXPECT_EQ(row.at("letterpath"), "");
    EXPECT_FALSE(desk.module().generalmessagecreate.loaded());
}

TEST_F(MessageDialogs, EveryRowIsNumberedOne) {
    remind("a", 2027, 1, 1, "8:00 AM");
    remind("b", 2027, 1, 1, "8:00 AM");
    for (const auto& row : desk.messages())
        EXPECT_EQ(row.at("messageid"), "1");
}

TEST_F(MessageDialogs, SavingAMessageStampsTheDay) {
    desk.clock.set({2026, 11, 21, 10, 0, 0});
    EXPECT_EQ(desk.stored_settings()["lastdate"], "11/20/2026");
    remind("a", 2027, 1, 1, "8:00 AM");
    EXPECT_EQ(desk.stored_settings()["lastdate"], "11/21/2026");
}

TEST_F(MessageDialogs, ATimeThatIsNoTimeIsAnErrorWithDataAndTheDialogStays) {
    desk.click(desk.menu().Command11);
    desk.type(desk.compose().message1, "kept");
    desk.type(desk.compose().time1, "half past nine");
    desk.click(desk.compose().Command2);
    ASSERT_EQ(desk.host.boxes.size(), 1u);
    EXPECT_EQ(desk.host.boxes[0].text, "Error with Data");
    EXPECT_EQ(desk.host.boxes[0].title, "Error Message");
    EXPECT_TRUE(desk.module().generalmessagecreate.loaded());
    EXPECT_TRUE(desk.compose().visible());
    EXPECT_TRUE(desk.messages().empty());
    desk.type(desk.compose().time1, "9:30 AM");
    desk.click(desk.compose().Command2);
    EXPECT_EQ(stored_texts(), Texts{"kept"});
}

TEST_F(MessageDialogs, ARowIsAddedThroughWhateverSetStandsThere) {
    remind("kept", 2027, 1, 1, "8:00 AM");
    desk.module().messageset = desk.module().messagedb->OpenRecordset(
        "select * from [table] where messagetype > 4 and messagetext like '*nothing*'");
    remind("added", 2027, 1, 1, "8:00 AM");
    EXPECT_EQ(stored_texts(), (Texts{"kept", "added"}));
}

TEST_F(MessageDialogs, AFailedSaveUnseenSaysSoAndStaysLoadedUnseen) {
    desk.click(desk.menu().Command9);
    desk.choose(desk.listings().m_newlisting);
    desk.type(desk.listings().dateexpires, "5/1/2027");
    // An id that no customer can have: the row cannot be written, and the flow goes on.
    desk.listings().id.text = "99999999999";
    desk.listings().datelastcontact.text = "";
    desk.host.answers = {2};
    desk.click(desk.listings().Command5);
    EXPECT_EQ(desk.host.box_texts(), (Texts{"Invalid Date Last Contact", "Error with Data", "Error with Data",
                                            "Automatically Schedule Birthday Reminders?"}));
    EXPECT_TRUE(desk.messages().empty());
    EXPECT_FALSE(desk.host.error);
    ASSERT_TRUE(desk.module().generalmessagecreate.loaded());
    EXPECT_FALSE(desk.compose().visible());
}

TEST_F(MessageDialogs, ExitSavesNothing) {
    desk.click(desk.menu().Command11);
    desk.type(desk.compose().message1, "dropped");
    desk.click(desk.compose().Command1);
    EXPECT_FALSE(desk.module().generalmessagecreate.loaded());
    EXPECT_TRUE(desk.messages().empty());
}

TEST_F(MessageDialogs, EachLoadResetsDateAndTime) {
    desk.click(desk.menu().Command11);
    desk.runtime().pick_date(desk.compose().Month1, make_date(2030, 1, 1));
    desk.type(desk.compose().time1, "1:00 PM");
    desk.click(desk.compose().Command1);
    desk.click(desk.menu().Command11);
    EXPECT_EQ(desk.compose().Month1.value, make_date(2026, 11, 20));
    EXPECT_EQ(desk.compose().time1.text, "8:30 AM");
}

TEST_F(MessageDialogs, ALetterLoadsWithItsBoxesAndItsFixedText) {
    for (const std::uint8_t kind : {5, 6, 7, 8}) {
        desk.module().messagekind = kind;
        auto& compose = desk.compose();
        EXPECT_EQ(compose.message1.text, "Sent Letter");
        EXPECT_FALSE(compose.message1.visible);
        EXPECT_FALSE(compose.Label1_1.visible);
        EXPECT_TRUE(compose.letterpath.visible);
        EXPECT_TRUE(compose.Command3.visible);
        desk.close(compose);
    }
}

TEST_F(MessageDialogs, BrowsingAsksInTheLettersFolderAndACancelKeepsThePath) {
    desk.module().messagekind = 5;
    auto& compose = desk.compose();
    desk.host.file_to_open = "somewhere/letter.rtf";
    desk.click(compose.Command3);
    EXPECT_EQ(compose.letterpath.text, "somewhere/letter.rtf");
    ASSERT_EQ(desk.host.files_asked.size(), 1u);
    EXPECT_EQ(desk.host.files_asked[0].folder, desk.module().appfolder + "\\letters");
    EXPECT_EQ(desk.host.files_asked[0].title, "Open");
    EXPECT_EQ(desk.host.files_asked[0].filter, "All Files (*.*)");
    desk.host.file_to_open.clear();
    desk.click(compose.Command3);
    EXPECT_EQ(compose.letterpath.text, "somewhere/letter.rtf");
}

// --- The raised dialog ---

TEST_F(MessageDialogs, ClosingARaisedDialogConsumesTheMessage) {
    remind("due", 2026, 11, 20, "9:00 AM");
    desk.wait_minutes(1);
    ASSERT_EQ(desk.dialogs().size(), 1u);
    desk.close(*desk.dialogs()[0]);
    EXPECT_TRUE(desk.messages().empty());
    EXPECT_TRUE(desk.dialogs().empty());
    EXPECT_FALSE(desk.host.error);
}

TEST_F(MessageDialogs, DeleteRemovesTheFirstRowInTableOrderWhateverIsShown) {
    remind("first", 2027, 1, 1, "8:00 AM");
    remind("second", 2027, 1, 2, "8:00 AM");
    remind("third, due", 2026, 11, 20, "11:00 AM");
    desk.click(desk.menu().Command12);
    ASSERT_EQ(desk.dialogs().size(), 1u);
    EXPECT_EQ(desk.dialogs()[0]->messagetext.text, "third, due");
    EXPECT_EQ(desk.dialogs()[0]->Command1.caption, "Delete Message");
    desk.click(desk.dialogs()[0]->Command1);
    EXPECT_EQ(stored_texts(), (Texts{"second", "third, due"}));
}

TEST_F(MessageDialogs, TheClosingBehindADeletionMayConsumeAnotherRaisedRow) {
    remind("raised first", 2026, 11, 20, "9:00 AM");
    remind("raised second", 2026, 11, 20, "9:01 AM");
    remind("waiting", 2027, 1, 1, "8:00 AM");
    desk.wait_minutes(1);
    ASSERT_EQ(desk.dialogs().size(), 2u);
    // The deletion takes the first row; the closing then finds the second one raised and takes it too.
    desk.click(desk.dialogs()[0]->Command1);
    EXPECT_EQ(stored_texts(), Texts{"waiting"});
    EXPECT_EQ(desk.dialogs().size(), 1u);
    // The other dialog's closing finds a row that is not raised, and leaves it.
    desk.close(*desk.dialogs()[0]);
    EXPECT_EQ(stored_texts(), Texts{"waiting"});
}

TEST_F(MessageDialogs, DeletingFromAnEmptyStoreEndsTheProgram) {
    remind("due", 2026, 11, 20, "9:00 AM");
    desk.wait_minutes(1);
    auto& dialog = *desk.dialogs()[0];
    {
        const auto set = desk.module().messagedb->OpenRecordset("select * from [table]");
        set->Delete();
    }
    desk.click(dialog.Command1);
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 3021);
}

TEST_F(MessageDialogs, ClosingOverAnEmptyStoreIsSilent) {
    remind("due", 2026, 11, 20, "9:00 AM");
    desk.wait_minutes(1);
    desk.module().messagedb->OpenRecordset("select * from [table]")->Delete();
    desk.close(*desk.dialogs()[0]);
    EXPECT_FALSE(desk.host.error);
    EXPECT_TRUE(desk.dialogs().empty());
}

TEST_F(MessageDialogs, ReSchedulingCarriesTextAndTimeButNeitherKindNorCustomer) {
    desk.click(desk.menu().Command9);
    desk.choose(desk.listings().m_newlisting);
    desk.choose(desk.listings().m_schmess);
    desk.type(desk.compose().time1, "9:45 AM");
    desk.click(desk.compose().Command2);
    ASSERT_EQ(desk.messages()[0].at("customerid"), "1");
    desk.wait_minutes(1);
    ASSERT_EQ(desk.dialogs().size(), 1u);
    auto& dialog = *desk.dialogs()[0];
    EXPECT_EQ(dialog.Command2.caption, "Re-Schedule Message");
    desk.type(dialog.messagetext, "edited in the dialog");
    desk.module().messagekind = messages::general_reminder;
    desk.click(dialog.Command2);
    EXPECT_TRUE(desk.dialogs().empty());
    EXPECT_TRUE(desk.messages().empty()) << "the old row goes at once";
    auto& compose = desk.compose();
    EXPECT_TRUE(compose.visible());
    EXPECT_FALSE(compose.letterpath.visible);
    EXPECT_FALSE(compose.Command3.visible);
    EXPECT_EQ(compose.time1.text, "9:45:00 AM");
    EXPECT_EQ(compose.Month1.value, make_date(2026, 11, 20));
    EXPECT_EQ(compose.message1.text, "edited in the dialog");
    desk.click(compose.Command2);
    ASSERT_EQ(desk.messages().size(), 1u);
    EXPECT_EQ(desk.messages()[0].at("customerid"), "0");
    EXPECT_EQ(desk.messages()[0].at("messagetype"), "4");
}

TEST_F(MessageDialogs, LeavingAReScheduleWithExitLosesTheMessage) {
    remind("gone", 2026, 11, 20, "9:00 AM");
    desk.wait_minutes(1);
    desk.click(desk.dialogs()[0]->Command2);
    desk.click(desk.compose().Command1);
    EXPECT_TRUE(desk.messages().empty());
}

TEST_F(MessageDialogs, ReSchedulingUnderALetterKindShowsNeitherBox) {
    remind("due", 2026, 11, 20, "9:00 AM");
    desk.wait_minutes(1);
    desk.module().messagekind = messages::listing_letter;
    desk.click(desk.dialogs()[0]->Command2);
    EXPECT_FALSE(desk.compose().message1.visible);
    EXPECT_FALSE(desk.compose().letterpath.visible);
    EXPECT_EQ(desk.compose().message1.text, "due");
}

// --- View Customer ---

class ViewCustomer : public MessageDialogs {
  protected:
    void add_listing(int id, const std::string& last) {
        Desk::add(*desk.module().listingdb, {{"id", std::int64_t{id}},
                                             {"first", std::string("Ann")},
                                             {"last", last},
                                             {"datelisted", make_date(2026, 1, id)}});
    }
    void raise_about(int id, messages::MessageKind kind = messages::listing_reminder) {
        Desk::add(*desk.module().messagedb, {{"messageid", std::int64_t{1}},
                                             {"messagetype", std::int64_t{kind}},
                                             {"customerid", std::int64_t{id}},
                                             {"messagetext", std::string("due")},
                                             {"messagedate", make_date(2026, 11, 20)},
                                             {"messagetime", std::string("9:00 AM")},
                                             {"messageflag", false},
                                             {"letterpath", std::string()}});
        desk.wait_minutes(1);
    }
};

TEST_F(ViewCustomer, LeadsBackToTheRecordAndTheDialogStays) {
    add_listing(1, "Other");
    add_listing(2, "Wanted");
    raise_about(2);
    desk.click(desk.dialogs()[0]->Command3);
    EXPECT_TRUE(desk.listings().visible());
    EXPECT_FALSE(desk.listings().f_customerlist.visible);
    EXPECT_EQ(desk.listings().last.text, "Wanted");
    EXPECT_EQ(desk.module().listingquery,
              "select * from [table] where id=2 order by datelisted, last, first");
    EXPECT_EQ(desk.dialogs().size(), 1u);
}

TEST_F(ViewCustomer, LoadsTheScreenWhichTakesTheFirstLoadFlagAndTheLongCaption) {
    add_listing(2, "Wanted");
    raise_about(2);
    desk.click(desk.dialogs()[0]->Command3);
    EXPECT_FALSE(desk.module().listingfirstload);
    EXPECT_EQ(desk.listings().caption, "Current Listings: Quick Search for Others");
}

TEST_F(ViewCustomer, ReplacesTheViewThatWasOnShow) {
    add_listing(1, "Other");
    add_listing(2, "Wanted");
    desk.click(desk.menu().Command9);
    desk.runtime().click_row(desk.listings().grid1, 1);
    raise_about(2);
    desk.click(desk.dialogs()[0]->Command3);
    EXPECT_EQ(desk.listings().last.text, "Wanted");
    EXPECT_EQ(desk.listings().grid1.Rows(), 2);
    desk.click(desk.listings().Command5);
    EXPECT_EQ(desk.listings().grid1.cell(1, 0), "2") << "the one-record query is the view now";
}

TEST_F(ViewCustomer, AMissingListingIsReported) {
    add_listing(1, "Other");
    raise_about(99);
    desk.click(desk.dialogs()[0]->Command3);
    EXPECT_EQ(desk.host.box_texts(), Texts{"That Listing Does Not Exist"});
    EXPECT_EQ(desk.host.boxes[0].title, "Message");
    EXPECT_FALSE(desk.listings().visible());
    EXPECT_EQ(desk.module().listingset->RecordCount(), 0);
}

TEST_F(ViewCustomer, AMissingListingLeavesAnOpenFormAsItWas) {
    add_listing(1, "Other");
    desk.click(desk.menu().Command9);
    desk.runtime().click_row(desk.listings().grid1, 1);
    desk.type(desk.listings().datelastcontact, "11/20/2026");
    raise_about(99);
    desk.click(desk.dialogs()[0]->Command3);
    EXPECT_EQ(desk.listings().last.text, "Other");
    desk.type(desk.listings().city, "Utica");
    desk.choose(desk.listings().m_savelisting);
    EXPECT_FALSE(desk.host.error);
    EXPECT_EQ(desk.stored_listings()[0].at("city"), "Utica");
}

TEST_F(ViewCustomer, LeadsToAProspectAndByTheHiddenButtonToASoldCustomer) {
    Desk::add(*desk.module().prospectdb, {{"id", std::int64_t{5}}, {"last", std::string("Warm")}});
    Desk::add(*desk.module().solddb, {{"id", std::int64_t{5}},
                                      {"last", std::string("Settled")},
                                      {"sellingprice", 1.0},
                                      {"commission", 1.0},
                                      {"netcommission", 1.0},
                                      {"commissionrate", 1.0},
                                      {"expenses", 0.0},
                                      {"datesold", make_date(2026, 1, 1)}});
    raise_about(5, messages::prospect_reminder);
    desk.click(desk.dialogs()[0]->Command3);
    EXPECT_EQ(static_cast<records::prospect&>(desk.module().prospect()).last.text, "Warm");
    EXPECT_EQ(desk.module().prospectquery,
              "select * from [table] where id=5 order by dateacquired, last, first");
    raise_about(5, messages::sold_reminder);
    EXPECT_FALSE(desk.dialogs()[1]->Command3.visible);
    desk.click(desk.dialogs()[1]->Command3);
    ASSERT_FALSE(desk.host.error) << desk.host.error->text;
    EXPECT_EQ(static_cast<records::sold&>(desk.module().sold()).last.text, "Settled");
    EXPECT_EQ(desk.module().soldquery, "select * from [table] where id=5 order by datesold, last, first");
}

TEST_F(ViewCustomer, OfAGeneralReminderDoesNothing) {
    raise_about(5, messages::general_reminder);
    desk.click(desk.dialogs()[0]->Command3);
    EXPECT_FALSE(desk.module().listings.loaded());
    EXPECT_TRUE(desk.host.boxes.empty());
}

TEST_F(ViewCustomer, DoesNotClearTheNewRecordFlag) {
    add_listing(2, "Wanted");
    desk.click(desk.menu().Command9);
    desk.choose(desk.listings().m_newlisting);
    raise_about(2);
    desk.click(desk.dialogs()[0]->Command3);
    EXPECT_TRUE(desk.module().listingnewrecord);
    // Closing the old listing now gets the new one's scheduling.
    desk.type(desk.listings().datelastcontact, "11/20/2026");
    desk.type(desk.listings().dateexpires, "5/1/2027");
    desk.host.answers = {2};
    desk.click(desk.listings().Command5);
    EXPECT_EQ(desk.messages().size(), 3u);
}

} // namespace
} // namespace tolva
