#include <gtest/gtest.h>

#include "support/desk.h"

namespace tolva {
namespace {

using support::Desk;

void protect(Desk& desk, const std::string& password) {
    desk.set_setting("p_passwordprotect", true);
    desk.set_setting("p_password", password);
}

bool was_shown(const Desk& desk, const std::string& screen) {
    for (const auto& shown : desk.host.shown)
        if (shown.screen == screen)
            return true;
    return false;
}

TEST(Startup, WithoutProtectionTheGateIsNeverSeen) {
    Desk desk;
    desk.start();
    EXPECT_FALSE(was_shown(desk, "security"));
    EXPECT_TRUE(was_shown(desk, "Form1"));
    EXPECT_FALSE(desk.host.error);
}

TEST(Startup, WithProtectionTheMenuWaitsForThePassword) {
    Desk desk;
    protect(desk, "secret");
    desk.start();
    EXPECT_TRUE(desk.security().visible());
    EXPECT_FALSE(desk.module().Form1.loaded());
}

TEST(Startup, TheCaptionsAreThoseOfTheProduct) {
    Desk desk;
    protect(desk, "secret");
    desk.start();
    EXPECT_EQ(desk.security().caption, "Enter Password");
    EXPECT_EQ(desk.security().Command1.caption, "&Continue");
    EXPECT_EQ(desk.security().Command2.caption, "E&XIT");
    desk.type(desk.security().password, "secret");
    desk.click(desk.security().Command1);
    EXPECT_EQ(desk.menu().caption, "TOLVA: Tolva Agent Desk");
}

TEST(Startup, APasswordIgnoresLetterCaseAndOuterBlanks) {
    Desk desk;
    protect(desk, "OPEN SESAME ");
    desk.start();
    desk.type(desk.security().password, "open sesame");
    desk.click(desk.security().Command1);
    EXPECT_TRUE(desk.menu().visible());
    EXPECT_FALSE(desk.security().visible());
    EXPECT_TRUE(desk.module().security.loaded());
}

TEST(Startup, AWrongPasswordEmptiesTheBoxAndASecondTryWorks) {
    Desk desk;
    protect(desk, "secret");
    desk.start();
    desk.type(desk.security().password, "guess");
    desk.click(desk.security().Command1);
    ASSERT_EQ(desk.host.boxes.size(), 1u);
    EXPECT_EQ(desk.host.boxes[0].text, "Incorrect Password");
    EXPECT_EQ(desk.host.boxes[0].title, "Message");
    EXPECT_EQ(desk.security().password.text, "");
    EXPECT_TRUE(desk.security().visible());
    EXPECT_FALSE(desk.module().Form1.loaded());
    desk.type(desk.security().password, "SECRET");
    desk.click(desk.security().Command1);
    EXPECT_TRUE(desk.menu().visible());
}

TEST(Startup, EnterInTheGateAnswersOnce) {
    Desk desk;
    protect(desk, "secret");
    desk.start();
    desk.type(desk.security().password, "guess");
    desk.press_enter(desk.security().password);
    EXPECT_EQ(desk.host.boxes.size(), 1u);
}

TEST(Startup, AnEmptyPasswordLetsAnEmptyBoxPass) {
    Desk desk;
    protect(desk, "");
    desk.start();
    desk.press_enter(desk.security().password);
    EXPECT_TRUE(desk.menu().visible());
}

TEST(Startup, LeavingOrClosingTheGateEndsTheProgram) {
    for (const bool by_button : {true, false}) {
        Desk desk;
        protect(desk, "secret");
        desk.start();
        if (by_button)
            desk.click(desk.security().Command2);
        else
            desk.close(desk.security());
        EXPECT_TRUE(desk.host.ended);
        EXPECT_FALSE(desk.host.error);
    }
}

TEST(Startup, ExitAndClosingTheMenuEndTheProgramAtOnce) {
    for (const bool by_button : {true, false}) {
        Desk desk;
        desk.start();
        if (by_button)
            desk.click(desk.menu().Command8);
        else
            desk.close(desk.menu());
        EXPECT_TRUE(desk.host.ended);
        EXPECT_TRUE(desk.host.boxes.empty());
    }
}

TEST(Startup, ExitLosesARecordLeftHalfEdited) {
    Desk desk;
    desk.start();
    desk.click(desk.menu().Command9);
    desk.choose(desk.listings().m_newlisting);
    desk.type(desk.listings().last, "Unsaved");
    desk.click(desk.menu().Command8);
    desk.restart();
    desk.start();
    ASSERT_EQ(desk.stored_listings().size(), 1u);
    EXPECT_EQ(desk.stored_listings()[0]["last"], "");
}

TEST(Startup, TheMenuLoadsTheTimerAndPollsOnce) {
    Desk desk;
    desk.start();
    EXPECT_TRUE(desk.menu().MTimer1.enabled);
    EXPECT_EQ(desk.menu().MTimer1.interval, 1);
    EXPECT_FALSE(desk.menu().MTimer1.timerloop);
    ASSERT_TRUE(desk.module().messageset);
}

TEST(Startup, TheMenuShowsTheVersion) {
    Desk desk;
    desk.start();
    desk.choose(desk.menu().m_version);
    ASSERT_EQ(desk.host.boxes.size(), 1u);
    EXPECT_EQ(desk.host.boxes[0].text, "TOLVA 1.0 Build Date 11/23/05");
    EXPECT_EQ(desk.host.boxes[0].title, "");
    EXPECT_EQ(desk.host.boxes[0].buttons, platform::BoxButtons::ok);
}

TEST(Startup, TheMenusButtonsBearTheirCaptions) {
    Desk desk;
    desk.start();
    const auto& menu = desk.menu();
    EXPECT_EQ(menu.Command9.caption, "Current Listings");
    EXPECT_EQ(menu.Command3.caption, "Prospects");
    EXPECT_EQ(menu.Command7.caption, "Homes Sold");
    EXPECT_EQ(menu.Command1.caption, "Address Book");
    EXPECT_EQ(menu.Command2.caption, "Daily Planner && To Do List");
    EXPECT_EQ(menu.Command11.caption, "Schedule Message");
    EXPECT_EQ(menu.Command12.caption, "Show Today's Messages");
    EXPECT_EQ(menu.Command13.caption, "Print Today's Messages");
    EXPECT_EQ(menu.Command14.caption, "Print Scheduled Letters");
    EXPECT_EQ(menu.Command5.caption, "Word Processor");
    EXPECT_EQ(menu.Command4.caption, "Payment Calculator");
    EXPECT_EQ(menu.Command6.caption, "Graphs");
    EXPECT_EQ(menu.Command10.caption, "Preferences");
    EXPECT_EQ(menu.Command8.caption, "EXIT");
    EXPECT_EQ(menu.mfile.caption, "&File");
    EXPECT_EQ(menu.mviewinstr.caption, "View &Instructions");
    EXPECT_EQ(menu.mviewtutorial.caption, "View &Tutorial");
    EXPECT_EQ(menu.m_changeprinter.caption, "Change Default &Printer");
    EXPECT_EQ(menu.m_version.caption, "&Version & Build Date");
}

TEST(Startup, EveryButtonIsOnOffer) {
    Desk desk;
    desk.start();
    const auto& menu = desk.menu();
    for (const platform::Button* button :
         {&menu.Command9, &menu.Command3, &menu.Command7, &menu.Command1, &menu.Command2, &menu.Command11,
          &menu.Command12, &menu.Command13, &menu.Command14, &menu.Command5, &menu.Command4, &menu.Command6,
          &menu.Command10, &menu.Command8})
        EXPECT_TRUE(button->available()) << button->caption;
}

TEST(Startup, ThePrinterProbeSetsPrinterready) {
    Desk with;
    with.start();
    EXPECT_EQ(with.module().printerready, 1);
    Desk without;
    without.host.has_printer = false;
    without.start();
    EXPECT_EQ(without.module().printerready, 0);
    EXPECT_TRUE(without.menu().visible());
}

TEST(Startup, TheFirstTickOfANewDayStampsLastdate) {
    Desk desk;
    desk.start();
    EXPECT_EQ(desk.stored_settings()["lastdate"], "1/1/2000");
    desk.host.answers = {2};
    desk.wait_minutes(1);
    EXPECT_EQ(desk.stored_settings()["lastdate"], "11/20/2026");
}

TEST(Startup, AMenuLeftOpenOvernightStampsTheNewDayAtItsFirstTick) {
    Desk desk(Desk::delivered(), {2026, 11, 20, 23, 59, 0});
    desk.start();
    desk.host.answers = {2};
    desk.wait_minutes(1);
    EXPECT_EQ(desk.stored_settings()["lastdate"], "11/21/2026");
}

TEST(Startup, LastdateStaysWhenSomethingElseSavedToday) {
    Desk desk;
    desk.start();
    desk.click(desk.menu().Command9);
    desk.choose(desk.listings().m_newlisting);
    EXPECT_EQ(desk.module().settings.lastdate, desk.module().today());
    // The tick would save only a row that lies before today: a value that is not the settings' own survives
    // it.
    desk.module().settings.salespersonname = "not stored";
    desk.wait_minutes(1);
    EXPECT_EQ(desk.stored_settings()["salespersonname"], "");
}

TEST(Startup, AnUnbornScreenIsLoadedOnceAndShownAgain) {
    Desk desk;
    desk.start();
    desk.click(desk.menu().Command10);
    auto* first = &desk.preferences();
    desk.type(first->pref_expire, "77");
    desk.click(desk.menu().Command10);
    EXPECT_EQ(&desk.preferences(), first);
    EXPECT_EQ(desk.preferences().pref_expire.text, "77");
}

TEST(Startup, ASecondCopyOnTheSameFolderIsRefused) {
    Desk desk;
    desk.start();
    platform::Runtime second_runtime(desk.host, desk.clock);
    auto second_disk = files::make_disk();
    module::Module second(second_runtime, *second_disk, desk.folder.path().string());
    shell::assemble(second);
    shell::start(second);
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 3045);
    EXPECT_NE(desk.host.error->text.find("database.mdb'; file already in use."), std::string::npos)
        << desk.host.error->text;
}

TEST(Startup, AProgramThatWentAwayLeavesNoLock) {
    Desk desk;
    desk.start();
    desk.restart();
    desk.start();
    EXPECT_FALSE(desk.host.error);
}

} // namespace
} // namespace tolva
