#include <gtest/gtest.h>

#include "messages/message_kind.h"
#include "support/desk.h"

namespace tolva {
namespace {

using basic::make_date;
using support::Desk;

/// A desk at 10:00 on 2026-11-20 whose store is filled before the program starts.
class Poll : public testing::Test {
  protected:
    /// No question about letters at the first tick.
    Poll() { desk.set_setting("lastdate", today); }

    void add(const std::string& text, basic::Date date, const std::string& time, int type = 4,
             int customerid = 0, bool flag = false) {
        dao::DBEngine engine(*desk.disk, [] { return 2026; });
        const auto database = engine.Workspaces(0).OpenDatabase(desk.data_file("messagedata.mdb"));
        Desk::add(*database, {{"messageid", std::int64_t{1}},
                              {"messagetype", std::int64_t{type}},
                              {"customerid", std::int64_t{customerid}},
                              {"messagetext", text},
                              {"messagedate", date},
                              {"messagetime", time},
                              {"messageflag", flag},
                              {"letterpath", std::string()}});
        engine.commit();
    }
    std::vector<std::string> raised() {
        std::vector<std::string> texts;
        for (auto* dialog : desk.dialogs())
            texts.push_back(dialog->messagetext.text);
        return texts;
    }

    const basic::Date today = make_date(2026, 11, 20);
    Desk desk;
};

using Texts = std::vector<std::string>;

TEST_F(Poll, AReminderOfLastWeekRisesAtStartWithItsOldDate) {
    add("call Ann", make_date(2026, 11, 13), "4:00 PM");
    desk.start();
    ASSERT_EQ(raised(), Texts{"call Ann"});
    auto& dialog = *desk.dialogs()[0];
    EXPECT_EQ(dialog.caption, "Message");
    EXPECT_EQ(dialog.Label3.caption, "You Have a Message!");
    EXPECT_EQ(dialog.messagedate.caption, "11/13/2026");
    EXPECT_EQ(dialog.messagetime.caption, "4:00:00 PM");
    EXPECT_EQ(dialog.messageid.caption, "1");
    EXPECT_EQ(dialog.messagetype.text, "4");
    EXPECT_EQ(dialog.customerid.text, "0");
}

TEST_F(Poll, DueRemindersRiseOldestFirst) {
    add("third", today, "9:59 AM");
    add("first", make_date(2026, 11, 19), "11:00 PM");
    add("second", today, "8:00 AM");
    desk.start();
    EXPECT_EQ(raised(), (Texts{"first", "second", "third"}));
}

TEST_F(Poll, NowIsATimeAloneInTheQuery) {
    add("due to the minute", today, "10:00 AM");
    add("not yet", today, "10:01 AM");
    desk.start();
    EXPECT_EQ(raised(), Texts{"due to the minute"});
    desk.wait_minutes(1);
    EXPECT_EQ(raised(), (Texts{"due to the minute", "not yet"}));
}

TEST_F(Poll, EachReminderRisesOnce) {
    add("once", today, "9:00 AM");
    desk.start();
    desk.wait_minutes(1);
    desk.wait_minutes(1);
    EXPECT_EQ(raised(), Texts{"once"});
    EXPECT_EQ(desk.messages()[0].at("messageflag"), "True");
}

TEST_F(Poll, ARaisedRowNeverRisesAgainEvenAfterAnotherStart) {
    add("once", today, "9:00 AM");
    desk.start();
    desk.click(desk.menu().Command8);
    desk.restart();
    desk.start();
    EXPECT_TRUE(raised().empty());
    EXPECT_EQ(desk.messages().size(), 1u) << "nothing removes it either";
}

TEST_F(Poll, WhatFellDueWhileTheMachineSleptRisesAtOnce) {
    add("slept through", today, "2:00 PM");
    add("of tomorrow", make_date(2026, 11, 21), "7:00 AM");
    desk.start();
    EXPECT_TRUE(raised().empty());
    desk.host.answers = {2}; // to the question of the new day
    desk.wait_minutes(22 * 60);
    EXPECT_EQ(raised(), (Texts{"slept through", "of tomorrow"}));
}

TEST_F(Poll, LettersNeverRise) {
    for (int type = 5; type <= 8; ++type)
        add("letter", make_date(2026, 1, 1), "8:00 AM", type);
    desk.start();
    EXPECT_TRUE(raised().empty());
}

TEST_F(Poll, RaisedDialogsDoNotTakeTheFocus) {
    add("quiet", today, "9:00 AM");
    desk.start();
    ASSERT_EQ(desk.host.shown[0].screen, "generalmessage");
    EXPECT_EQ(desk.host.shown[0].mode, platform::ShowMode::without_focus);
}

TEST_F(Poll, OnlyListingAndProspectRemindersHaveAViewButton) {
    add("listing", today, "8:01 AM", 1, 7);
    add("prospect", today, "8:02 AM", 2, 7);
    add("sold", today, "8:03 AM", 3, 7);
    add("general", today, "8:04 AM", 4, 0);
    desk.start();
    const auto dialogs = desk.dialogs();
    ASSERT_EQ(dialogs.size(), 4u);
    EXPECT_TRUE(dialogs[0]->Command3.visible);
    EXPECT_EQ(dialogs[0]->Command3.caption, "View Customer");
    EXPECT_EQ(dialogs[0]->customerid.text, "7");
    EXPECT_TRUE(dialogs[1]->Command3.visible);
    EXPECT_EQ(dialogs[1]->Command3.caption, "View Prospect");
    EXPECT_EQ(dialogs[1]->Command3.available(), desk.module().prospect.exists());
    EXPECT_FALSE(dialogs[2]->Command3.visible);
    EXPECT_FALSE(dialogs[3]->Command3.visible);
}

TEST_F(Poll, ARowIsFlaggedThenItsDialogShownThenFilled) {
    add("due", today, "9:00 AM");
    int shown = 0;
    desk.host.on_shown = [&](platform::Screen& screen) {
        if (auto* dialog = dynamic_cast<messages::generalmessage*>(&screen)) {
            ++shown;
            EXPECT_EQ(desk.messages()[0].at("messageflag"), "True");
            EXPECT_EQ(dialog->messagetext.text, "");
        }
    };
    desk.start();
    EXPECT_EQ(shown, 1);
    EXPECT_EQ(raised(), Texts{"due"});
}

TEST_F(Poll, ATickIsSafeWhileTheDatePickerStands) {
    desk.start();
    desk.click(desk.menu().Command9);
    desk.choose(desk.listings().m_newlisting);
    Desk::add(*desk.module().messagedb, {{"messageid", std::int64_t{1}},
                                         {"messagetype", std::int64_t{4}},
                                         {"messagetext", std::string("due")},
                                         {"messagedate", today},
                                         {"messagetime", std::string("10:00 AM")},
                                         {"messageflag", false}});
    desk.host.modal_visits.push_back([this](platform::Screen& screen) {
        desk.wait_minutes(1);
        EXPECT_EQ(desk.dialogs().size(), 1u);
        EXPECT_TRUE(screen.visible());
        desk.runtime().pick_date(dynamic_cast<shell::choosedate&>(screen).MonthView1, make_date(2026, 12, 1));
    });
    desk.click(desk.listings().Command2);
    EXPECT_EQ(desk.listings().datenextcontact.text, "12/1/2026");
    EXPECT_EQ(raised(), Texts{"due"});
}

TEST_F(Poll, TodaysMessagesAreAPreviewThatConsumesNothing) {
    add("later today", today, "5:00 PM");
    desk.start();
    desk.click(desk.menu().Command12);
    ASSERT_EQ(raised(), Texts{"later today"});
    EXPECT_EQ(desk.host.shown.back().mode, platform::ShowMode::activate);
    EXPECT_EQ(desk.messages()[0].at("messageflag"), "False");
    desk.close(*desk.dialogs()[0]);
    EXPECT_EQ(desk.messages().size(), 1u);
    desk.wait_minutes(7 * 60);
    EXPECT_EQ(raised(), Texts{"later today"}) << "raised again at its time";
}

TEST_F(Poll, NothingForTodaySaysSoEvenWhileOlderDialogsAreOpen) {
    add("old", make_date(2026, 11, 1), "8:00 AM");
    desk.start();
    ASSERT_EQ(desk.dialogs().size(), 1u);
    desk.click(desk.menu().Command12);
    ASSERT_EQ(desk.host.boxes.size(), 1u);
    EXPECT_EQ(desk.host.boxes[0].text, "No Messages Scheduled Today");
    EXPECT_EQ(desk.host.boxes[0].title, "Message");
}

TEST_F(Poll, TodaysMessagesComeInTheOrderOfTheirTimes) {
    add("evening", today, "6:00 PM");
    add("noon", today, "12:00 PM");
    add("letter", today, "1:00 PM", 5);
    add("tomorrow", make_date(2026, 11, 21), "1:00 PM");
    desk.start();
    desk.click(desk.menu().Command12);
    EXPECT_EQ(raised(), (Texts{"noon", "evening"}));
}

TEST_F(Poll, ATickIsSafeWhileAQuestionStands) {
    desk.start();
    desk.click(desk.menu().Command9);
    desk.choose(desk.listings().m_newlisting);
    desk.type(desk.listings().dateexpires, "11/25/2026");
    desk.type(desk.listings().birthday, "12/24/1960");
    desk.runtime().poll_clock();
    desk.host.during_box.push_back([this] {
        // The warning, due in the past, rises while the question stands.
        desk.clock.advance_minutes(1);
        desk.runtime().poll_clock();
        EXPECT_EQ(desk.dialogs().size(), 1u);
    });
    desk.host.answers = {1};
    desk.click(desk.listings().Command5);
    EXPECT_FALSE(desk.host.error);
    EXPECT_EQ(desk.messages().size(), 8u);
}

TEST_F(Poll, ABrokenStoreEndsTheProgramOnTheTick) {
    desk.start();
    desk.module().messagedb = std::move(desk.module().zipdb);
    desk.wait_minutes(1);
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 3061);
}

} // namespace
} // namespace tolva
