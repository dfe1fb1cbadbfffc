#include <gtest/gtest.h>

#include <QCheckBox>
#include <QHeaderView>
#include <QMenuBar>
#include <QRadioButton>

#include "desktop/combo_box.h"
#include "desktop/grid_view.h"
#include "desktop/month_calendar.h"
#include "desktop/push_button.h"
#include "hands.h"
#include "small_screen.h"

namespace tolva::desktop {
namespace {

using Diary = std::vector<std::string>;

class Focus : public testing::Test {
  protected:
    Bench bench;
    SmallScreen& screen = bench.show();
};

TEST_F(Focus, BeginsOnTheFirstControl) {
    EXPECT_EQ(screen.active_control, &screen.plain);
    EXPECT_EQ(QApplication::focusWidget(), bench.widget("plain"));
}

TEST_F(Focus, MovedByTabRunsBothHandlers) {
    press(Qt::Key_Tab);
    EXPECT_EQ(screen.take_diary(), (Diary{"from plain", "to selecting"}));
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(screen.take_diary(), (Diary{"from selecting", "to plain"}));
}

TEST_F(Focus, LeavesTheOldControlAheadOfAClick) {
    click(bench.widget("close"));
    EXPECT_EQ(screen.take_diary(), (Diary{"from plain", "to close", "close"}));
}

TEST_F(Focus, LeavesTheOldControlAheadOfAnAccessKey) {
    press(Qt::Key_C, Qt::AltModifier);
    EXPECT_EQ(screen.take_diary(), (Diary{"from plain", "to close", "close"}));
    EXPECT_EQ(QApplication::focusWidget(), bench.widget("close"));
}

TEST_F(Focus, FollowsWhereAHandlerSendsIt) {
    screen.plain.on_key_press = [&](int) { screen.lines.set_focus(); };
    press(Qt::Key_Return);
    EXPECT_EQ(QApplication::focusWidget(), bench.widget("lines"));
    EXPECT_EQ(screen.take_diary(), (Diary{"from plain", "to lines"}));
}

TEST_F(Focus, SentOnByALostFocusHandlerStaysThere) {
    screen.plain.on_lost_focus = [&] { screen.secret.set_focus(); };
    press(Qt::Key_Tab);
    EXPECT_EQ(screen.active_control, &screen.secret);
    EXPECT_EQ(QApplication::focusWidget(), bench.widget("secret"));
}

TEST_F(Focus, IsNotLostToAnotherWindow) {
    QWidget other;
    other.show();
    other.activateWindow();
    QCoreApplication::processEvents();
    ASSERT_FALSE(bench.form().isActiveWindow());
    bench.form().activateWindow();
    QCoreApplication::processEvents();
    ASSERT_TRUE(bench.form().isActiveWindow());
    EXPECT_EQ(screen.take_diary(), Diary{});
    EXPECT_EQ(QApplication::focusWidget(), bench.widget("plain"));
}

TEST_F(Focus, IsNotLostToAMenu) {
    press(Qt::Key_F, Qt::AltModifier);
    ASSERT_NE(QApplication::activePopupWidget(), nullptr);
    press(Qt::Key_L);
    EXPECT_EQ(screen.take_diary(), Diary{"leave"});
    EXPECT_EQ(screen.active_control, &screen.plain);
}

TEST_F(Focus, IsNotLostToTheListOfACombo) {
    auto* const combo = bench.widget<ComboBox>("combo");
    click(&combo->edit());
    screen.take_diary();
    combo->showPopup();
    QCoreApplication::processEvents();
    combo->hidePopup();
    QCoreApplication::processEvents();
    EXPECT_EQ(screen.take_diary(), Diary{});
}

TEST_F(Focus, GoesToTheFirstControlWhenItsOwnIsHidden) {
    press(Qt::Key_Tab);
    screen.take_diary();
    bench.runtime.run([&] { screen.selecting.visible = false; });
    EXPECT_EQ(screen.active_control, &screen.plain);
    EXPECT_EQ(QApplication::focusWidget(), bench.widget("plain"));
    EXPECT_EQ(screen.take_diary(), (Diary{"from selecting", "to plain"}));
}

// --- Buttons, boxes, menus ---

TEST_F(Focus, EnterAndSpacePressTheButtonThatHasIt) {
    bench.widget("other")->setFocus(Qt::TabFocusReason);
    screen.other.set_focus();
    screen.take_diary();
    press(Qt::Key_Return);
    press(Qt::Key_Enter);
    press(Qt::Key_Space);
    EXPECT_EQ(screen.take_diary(), (Diary{"other", "other", "other"}));
}

TEST_F(Focus, AHeldEnterPressesNoButton) {
    bench.runtime.run([&] { screen.other.set_focus(); });
    screen.take_diary();
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, {}, QStringLiteral("\r"), true);
    QApplication::sendEvent(bench.widget("other"), &held);
    EXPECT_EQ(screen.take_diary(), Diary{});
}

TEST_F(Focus, NoButtonIsTheWindowsDefault) {
    press(Qt::Key_Return);
    EXPECT_EQ(screen.take_diary(), Diary{});
    for (auto* button : bench.form().findChildren<PushButton*>()) {
        EXPECT_FALSE(button->isDefault());
        EXPECT_FALSE(button->autoDefault());
    }
}

TEST_F(Focus, ATickIsToldWithItsValue) {
    click(bench.widget("check"), {8, bench.widget("check")->height() / 2});
    EXPECT_EQ(screen.take_diary(), (Diary{"from plain", "to check", "ticked 1"}));
    press(Qt::Key_Space);
    EXPECT_EQ(screen.check.value, 0);
}

TEST_F(Focus, OneOptionIsOn) {
    click(bench.widget("options_1"), {8, bench.widget("options_1")->height() / 2});
    EXPECT_TRUE(screen.options[1].value);
    press(Qt::Key_Down);
    EXPECT_FALSE(screen.options[1].value);
    EXPECT_TRUE(screen.options[2].value);
    bench.runtime.run([&] { screen.options.choose(7); });
    for (const char* name : {"options_0", "options_1", "options_2"})
        EXPECT_FALSE(bench.widget<QRadioButton>(name)->isChecked()) << name;
}

TEST_F(Focus, WhatHasNoHandlerIsNotOnOffer) {
    bench.runtime.run([&] { screen.other.on_click = nullptr; });
    EXPECT_FALSE(bench.widget("other")->isEnabled());
    auto* const idle = bench.form().findChild<QAction*>(QStringLiteral("idle"));
    EXPECT_FALSE(idle->isEnabled());
    EXPECT_TRUE(bench.form().findChild<QAction*>(QStringLiteral("leave"))->isEnabled());
}

TEST_F(Focus, WhatIsHiddenTakesNoAccessKey) {
    bench.runtime.run([&] { screen.close.visible = false; });
    press(Qt::Key_C, Qt::AltModifier);
    EXPECT_EQ(screen.take_diary(), Diary{});
}

// --- Grid ---

class GridOnShow : public Focus {
  protected:
    GridView* view = bench.widget<GridView>("grid");

    QPoint row(int number) const {
        const QRect cell = view->visualRect(view->model()->index(number - 1, 1));
        return view->viewport()->mapTo(view, cell.center());
    }
};

TEST_F(GridOnShow, AClickOpensTheRow) {
    click(view->viewport(), view->viewport()->mapFrom(view, row(2)));
    EXPECT_EQ(screen.take_diary(), (Diary{"from plain", "to grid", "row 2"}));
}

TEST_F(GridOnShow, APressThatSlidesOffOpensNothing) {
    mouse_down(view->viewport(), view->viewport()->mapFrom(view, row(1)));
    mouse_up(view->viewport(), view->viewport()->mapFrom(view, row(3)));
    const Diary told = screen.take_diary();
    EXPECT_EQ(told, (Diary{"from plain", "to grid"}));
}

TEST_F(GridOnShow, AClickOnTheHeadingOpensNothing) {
    auto* const header = view->horizontalHeader()->viewport();
    click(header, header->rect().center());
    EXPECT_EQ(screen.take_diary(), (Diary{"from plain", "to grid"}));
}

TEST_F(GridOnShow, ArrowsMoveAndEnterOpens) {
    bench.runtime.run([&] { screen.grid.set_focus(); });
    screen.take_diary();
    press(Qt::Key_Down);
    EXPECT_EQ(screen.grid.RowSel(), 2);
    EXPECT_EQ(screen.take_diary(), Diary{});
    press(Qt::Key_Return);
    EXPECT_EQ(screen.take_diary(), Diary{"row 2"});
}

TEST_F(GridOnShow, TypingTheBeginningOfANameGoesThere) {
    bench.runtime.run([&] { screen.grid.set_focus(); });
    screen.take_diary();
    press(Qt::Key_Right);
    type(QStringLiteral("cl"));
    EXPECT_EQ(screen.grid.RowSel(), 3);
    EXPECT_EQ(screen.take_diary(), Diary{});
}

TEST_F(GridOnShow, HidesTheColumnTooNarrowToSee) {
    EXPECT_TRUE(view->isColumnHidden(0));
    EXPECT_FALSE(view->isColumnHidden(1));
}

TEST_F(GridOnShow, HasACurrentRowAfterEachRebuild) {
    EXPECT_EQ(view->currentIndex().row(), 0);
    bench.runtime.run([&] {
        screen.grid.AddItem("9\tZimmer\tTroy");
        screen.grid.select_row(4);
    });
    EXPECT_EQ(view->currentIndex().row(), 3);
    EXPECT_EQ(view->model()->rowCount(), 4);
}

TEST_F(GridOnShow, ShowsAHundredThousandRowsAtOnce) {
    bench.runtime.run([&] {
        for (int number = 0; number < 100'000; ++number)
            screen.grid.AddItem("1\tName\tCity");
    });
    QElapsedTimer timer;
    timer.start();
    bench.runtime.run([&] { screen.grid.set_Text("Heading"); });
    QCoreApplication::processEvents();
    EXPECT_LT(timer.elapsed(), 500);
}

// --- Calendar ---

class Month : public Focus {
  protected:
    MonthCalendar* calendar = bench.widget<MonthCalendar>("month");
};

TEST_F(Month, ShowsItsValue) {
    EXPECT_EQ(calendar->selectedDate(), QDate(2026, 11, 20));
}

TEST_F(Month, AClickPicksTheDay) {
    click_day(calendar, 12);
    EXPECT_EQ(screen.take_diary(), (Diary{"from plain", "to month", "day 11/12/2026"}));
    EXPECT_EQ(basic::date_to_text(screen.month.value), "11/12/2026");
}

TEST_F(Month, AClickOnANeighbouringMonthsDayPicksItToo) {
    constexpr int last_line = 6;
    click_day(calendar, 5, last_line - 1);
    EXPECT_EQ(screen.take_diary().back(), "day 12/5/2026");
    EXPECT_EQ(calendar->monthShown(), 12);
}

TEST_F(Month, ArrowsOnlyLookForADayWhereAClickIsListenedTo) {
    bench.runtime.run([&] { screen.month.set_focus(); });
    screen.take_diary();
    press(Qt::Key_Right);
    EXPECT_EQ(calendar->selectedDate(), QDate(2026, 11, 21));
    EXPECT_EQ(basic::date_to_text(screen.month.value), "11/20/2026");
    EXPECT_EQ(screen.take_diary(), Diary{});
    press(Qt::Key_Return);
    EXPECT_EQ(screen.take_diary(), Diary{"day 11/21/2026"});
    EXPECT_EQ(basic::date_to_text(screen.month.value), "11/21/2026");
}

TEST_F(Month, ADayLookedForIsNotLeftOnShow) {
    bench.runtime.run([&] { screen.month.set_focus(); });
    press(Qt::Key_Right);
    click(bench.widget("plain"));
    EXPECT_EQ(calendar->selectedDate(), QDate(2026, 11, 20));
}

TEST_F(Month, ADayLookedForIsNotLeftOnShowByWhatAnotherWindowDoes) {
    bench.runtime.run([&] { screen.month.set_focus(); });
    press(Qt::Key_Right);
    bench.runtime.run([] {});
    EXPECT_EQ(calendar->selectedDate(), QDate(2026, 11, 21)) << "the keys are still in it";
    QWidget other;
    other.show();
    other.activateWindow();
    QCoreApplication::processEvents();
    bench.runtime.run([] {});
    EXPECT_EQ(calendar->selectedDate(), QDate(2026, 11, 20));
}

TEST_F(Month, TheValueFollowsTheArrowsWhereNobodyListens) {
    bench.runtime.run([&] {
        screen.month.on_date_click = nullptr;
        screen.month.set_focus();
    });
    press(Qt::Key_Right);
    EXPECT_EQ(basic::date_to_text(screen.month.value), "11/21/2026");
    click(bench.widget("plain"));
    EXPECT_EQ(calendar->selectedDate(), QDate(2026, 11, 21));
}

TEST_F(Month, TurningThePageChangesNothing) {
    click(calendar->findChild<QWidget*>(QStringLiteral("qt_calendar_nextmonth")));
    EXPECT_EQ(calendar->monthShown(), 12);
    EXPECT_EQ(basic::date_to_text(screen.month.value), "11/20/2026");
    for (const std::string& told : screen.take_diary())
        EXPECT_EQ(told.find("day"), std::string::npos) << told;
}

TEST_F(Month, ChoosingAYearLeavesTheFocusInTheCalendar) {
    click(calendar->findChild<QWidget*>(QStringLiteral("qt_calendar_yearbutton")));
    press(Qt::Key_Up);
    press(Qt::Key_Return);
    QCoreApplication::processEvents();
    EXPECT_EQ(calendar->yearShown(), 2027);
    EXPECT_EQ(screen.active_control, &screen.month);
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    EXPECT_TRUE(calendar == QApplication::focusWidget() ||
                calendar->isAncestorOf(QApplication::focusWidget()));
}

} // namespace
} // namespace tolva::desktop
