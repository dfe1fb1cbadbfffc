#include <gtest/gtest.h>

#include "basic/run_time_error.h"
#include "platform/runtime.h"
#include "support/fixed_clock.h"
#include "support/scripted_host.h"

namespace tolva::platform {
namespace {

class SmallScreen : public Screen {
  public:
    explicit SmallScreen(Runtime& runtime) : Screen(runtime, "small", "Small") {}
    ~SmallScreen() override { ++gone; }

    TextBox name{*this, "name"};
    TextBox city{*this, "city"};
    Button close{*this, "close", "&Close"};
    Button idle{*this, "idle", "Nothing"};
    MenuEntry file{*this, "file", "&File"};
    MenuEntry leave{file, "leave", "Leave"};
    CheckBox letter{*this, "letter", "Letter"};
    OptionGroup how{*this, "how", 3};
    Timer timer{*this, "timer"};

    void on_unload() override { ++unloads; }
    int unloads = 0;
    static inline int gone = 0;
};

class RuntimeTest : public testing::Test {
  protected:
    RuntimeTest() { SmallScreen::gone = 0; }

    SmallScreen& screen() {
        slot.make = [this] { return std::make_unique<SmallScreen>(runtime); };
        return slot();
    }

    support::ScriptedHost host;
    support::FixedClock clock{{2026, 11, 20, 8, 0, 0}};
    Runtime runtime{host, clock};
    Slot<SmallScreen> slot{runtime};
    std::vector<std::string> events;
};

TEST_F(RuntimeTest, TheOldControlLosesTheFocusBeforeAClickTakesEffect) {
    auto& small = screen();
    small.name.on_lost_focus = [&] { events.push_back("name lost"); };
    small.close.on_click = [&] { events.push_back("close clicked"); };
    runtime.focus(small.name);
    runtime.click(small.close);
    EXPECT_EQ(events, (std::vector<std::string>{"name lost", "close clicked"}));
}

TEST_F(RuntimeTest, AMenuEntryTakesNoFocus) {
    auto& small = screen();
    small.name.on_lost_focus = [&] { events.push_back("name lost"); };
    small.leave.on_click = [&] { events.push_back("leave"); };
    runtime.focus(small.name);
    runtime.click(small.leave);
    EXPECT_EQ(events, std::vector<std::string>{"leave"});
    EXPECT_EQ(small.active_control, &small.name);
}

TEST_F(RuntimeTest, SettingAControlInCodeRaisesNoEvent) {
    auto& small = screen();
    small.name.on_change = [&] { events.push_back("changed"); };
    small.close.on_click = [&] { small.name.text = "by code"; };
    runtime.click(small.close);
    EXPECT_TRUE(events.empty());
    runtime.edit(small.name, "typed");
    EXPECT_EQ(events, std::vector<std::string>{"changed"});
}

TEST_F(RuntimeTest, AFocusThatAHandlerSetsRunsTheHandlersAtOnce) {
    auto& small = screen();
    small.city.on_got_focus = [&] { small.city.select_all(); };
    small.name.on_lost_focus = [&] { events.push_back("name lost"); };
    small.city.text = "Utica";
    small.close.on_click = [&] {
        small.city.set_focus();
        events.push_back("after");
    };
    runtime.focus(small.name);
    runtime.click(small.close);
    EXPECT_EQ(events, (std::vector<std::string>{"name lost", "after"}));
    EXPECT_EQ(small.city.selection_length(), 5u);
}

TEST_F(RuntimeTest, AnActionWithoutAHandlerIsNotOnOffer) {
    auto& small = screen();
    EXPECT_FALSE(small.idle.available());
    EXPECT_FALSE(small.leave.available());
    EXPECT_TRUE(small.file.available());
    small.leave.on_click = [] {};
    EXPECT_TRUE(small.leave.available());
}

TEST_F(RuntimeTest, AnUncaughtErrorShowsItsBoxAndEndsTheProgram) {
    auto& small = screen();
    bool durable = false;
    runtime.make_durable = [&] { durable = true; };
    small.close.on_click = [] { throw basic::RunTimeError(13); };
    runtime.click(small.close);
    ASSERT_TRUE(host.error);
    EXPECT_EQ(host.error->number, 13);
    EXPECT_EQ(host.error->text, "Type mismatch");
    EXPECT_TRUE(durable);
    EXPECT_TRUE(host.ended);
}

TEST_F(RuntimeTest, AfterTheEndNoHandlerRuns) {
    auto& small = screen();
    small.close.on_click = [&] {
        events.push_back("before");
        runtime.end();
    };
    small.leave.on_click = [&] { events.push_back("after"); };
    runtime.click(small.close);
    runtime.click(small.leave);
    runtime.close(small);
    EXPECT_EQ(events, std::vector<std::string>{"before"});
    EXPECT_EQ(small.unloads, 0);
    EXPECT_TRUE(host.ended);
}

TEST_F(RuntimeTest, AHandlerThatWaitsOnABoxDoesNotGoOnAfterTheEnd) {
    auto& small = screen();
    host.during_box.push_back([&] { runtime.run([&] { runtime.end(); }); });
    small.close.on_click = [&] {
        runtime.message("wait", "Message");
        events.push_back("went on");
    };
    runtime.click(small.close);
    EXPECT_TRUE(events.empty());
    EXPECT_TRUE(host.ended);
}

TEST_F(RuntimeTest, WhatIsStoredIsDurableBeforeABoxStands) {
    auto& small = screen();
    int commits = 0;
    runtime.make_durable = [&] { ++commits; };
    host.during_box.push_back([&] { EXPECT_EQ(commits, 1); });
    small.close.on_click = [&] { runtime.message("wait", "Message"); };
    runtime.click(small.close);
    EXPECT_EQ(commits, 2);
}

TEST_F(RuntimeTest, AFailingCommitIsTheErrorThatIsShown) {
    auto& small = screen();
    runtime.make_durable = [] { throw basic::RunTimeError::with_text(75, "no space left"); };
    small.close.on_click = [] {};
    runtime.click(small.close);
    ASSERT_TRUE(host.error);
    EXPECT_EQ(host.error->text, "no space left");
}

TEST_F(RuntimeTest, AScreenThatUnloadsItselfLivesUntilItsHandlerReturns) {
    auto& small = screen();
    small.close.on_click = [&] {
        small.unload();
        small.name.text = "still here";
        EXPECT_EQ(SmallScreen::gone, 0);
    };
    runtime.click(small.close);
    EXPECT_EQ(SmallScreen::gone, 1);
    EXPECT_FALSE(slot.loaded());
}

TEST_F(RuntimeTest, TheNextTouchLoadsAnUnloadedScreenAnew) {
    auto& small = screen();
    small.name.text = "old";
    runtime.close(small);
    EXPECT_EQ(slot().name.text, "");
}

TEST_F(RuntimeTest, UnloadingTwiceRunsTheUnloadHandlerOnce) {
    auto& small = screen();
    runtime.run([&] {
        small.unload();
        small.unload();
        EXPECT_EQ(small.unloads, 1);
    });
}

TEST_F(RuntimeTest, AModalScreenWaitsInsideItsCaller) {
    auto& small = screen();
    host.modal_visits.push_back([&](Screen& modal) {
        events.push_back("in");
        runtime.close(modal);
    });
    runtime.run([&] {
        small.show_modal();
        events.push_back("out");
    });
    EXPECT_EQ(events, (std::vector<std::string>{"in", "out"}));
}

TEST_F(RuntimeTest, ATimerTicksOnceAPeriodByTheWallClock) {
    auto& small = screen();
    int ticks = 0;
    small.timer.on_timer = [&] { ++ticks; };
    runtime.poll_clock();
    clock.advance_minutes(2);
    runtime.poll_clock();
    EXPECT_EQ(ticks, 0) << "disabled";
    small.timer.enabled = true;
    runtime.poll_clock();
    clock.advance_minutes(0.9);
    runtime.poll_clock();
    EXPECT_EQ(ticks, 0);
    clock.advance_minutes(0.1);
    runtime.poll_clock();
    EXPECT_EQ(ticks, 1);
}

TEST_F(RuntimeTest, ALongSleepIsOneTickAtOnce) {
    auto& small = screen();
    int ticks = 0;
    small.timer.on_timer = [&] { ++ticks; };
    small.timer.enabled = true;
    runtime.poll_clock();
    clock.advance_minutes(9 * 60);
    runtime.poll_clock();
    runtime.poll_clock();
    EXPECT_EQ(ticks, 1);
}

TEST_F(RuntimeTest, AClockThatIsSetBackBeginsANewPeriod) {
    auto& small = screen();
    int ticks = 0;
    small.timer.on_timer = [&] { ++ticks; };
    small.timer.enabled = true;
    runtime.poll_clock();
    clock.advance_minutes(-600);
    runtime.poll_clock();
    clock.advance_minutes(1);
    runtime.poll_clock();
    EXPECT_EQ(ticks, 1);
}

TEST_F(RuntimeTest, AtMostOneOptionOfAGroupIsOn) {
    auto& small = screen();
    runtime.choose(small.how, 1);
    runtime.choose(small.how, 2);
    EXPECT_FALSE(small.how[1].value);
    EXPECT_TRUE(small.how[2].value);
}

} // namespace
} // namespace tolva::platform
