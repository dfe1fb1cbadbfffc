#include <gtest/gtest.h>

#include <QClipboard>
#include <QScrollBar>
#include <QTextDocument>
#include <QWheelEvent>

#include "desktop/combo_box.h"
#include "desktop/line_edit.h"
#include "desktop/text_edit.h"
#include "hands.h"
#include "small_screen.h"

namespace tolva::desktop {
namespace {

using testing::Test;
using Diary = std::vector<std::string>;

class Typing : public Test {
  protected:
    Bench bench;
    SmallScreen& screen = bench.show();
    LineEdit* plain = bench.widget<LineEdit>("plain");
    LineEdit* selecting = bench.widget<LineEdit>("selecting");
    TextEdit* lines = bench.widget<TextEdit>("lines");

    /// A handler that changes the screen, as one event.
    void handler(const std::function<void()>& change) { bench.runtime.run(change); }
};

TEST_F(Typing, ReachesTheControlWithEachKey) {
    std::string seen;
    screen.plain.on_change = [&] { seen += screen.plain.text + "|"; };
    type(QStringLiteral("abc"));
    EXPECT_EQ(seen, "a|ab|abc|");
}

TEST_F(Typing, OfAnAccentArrivesAsUtf8) {
    plain->insert(QStringLiteral("Müller"));
    EXPECT_EQ(screen.plain.text, "Müller");
}

TEST_F(Typing, TellsEachKeyAheadOfItsEffect) {
    std::vector<std::pair<int, std::string>> keys;
    screen.plain.on_key_press = [&](int character) { keys.emplace_back(character, screen.plain.text); };
    type(QStringLiteral("ab"));
    press(Qt::Key_Return);
    press(Qt::Key_Enter);
    press(Qt::Key_Left);
    const std::vector<std::pair<int, std::string>> expected = {{'a', ""}, {'b', "a"}, {13, "ab"}, {13, "ab"}};
    EXPECT_EQ(keys, expected);
}

TEST_F(Typing, APastedTextComesInOnOneLine) {
    const auto paste = [](const QString& text) {
        QGuiApplication::clipboard()->setText(text);
        press(Qt::Key_V, Qt::ControlModifier);
    };
    paste(QStringLiteral("1 Elm St\r\nSalem\n"));
    EXPECT_EQ(screen.plain.text, "1 Elm St Salem");
    press(Qt::Key_Home);
    paste(QStringLiteral("Ann\n"));
    EXPECT_EQ(screen.plain.text, "Ann 1 Elm St Salem");
    type(QStringLiteral("B"));
    EXPECT_EQ(screen.plain.text, "Ann B1 Elm St Salem");
    click(lines);
    paste(QStringLiteral("1 Elm St\r\nSalem"));
    EXPECT_EQ(screen.lines.text, "1 Elm St\r\nSalem");
}

TEST_F(Typing, EnterInManyLinesBeginsALine) {
    std::vector<int> keys;
    screen.lines.on_key_press = [&](int character) { keys.push_back(character); };
    click(lines);
    type(QStringLiteral("a"));
    press(Qt::Key_Return);
    type(QStringLiteral("b"));
    EXPECT_EQ(screen.lines.text, "a\r\nb");
    EXPECT_EQ(keys, (std::vector<int>{'a', 13, 'b'}));
}

TEST_F(Typing, TabLeavesManyLines) {
    click(lines);
    press(Qt::Key_Tab);
    EXPECT_EQ(screen.lines.text, "");
    EXPECT_EQ(screen.active_control, &screen.secret);
}

TEST_F(Typing, AnUntouchedTextKeepsItsBytes) {
    const std::string odd = "one\ntwo\r\nthree\rfour \xff";
    handler([&] { screen.lines.text = screen.plain.text = odd; });
    click(lines);
    press(Qt::Key_Right);
    click(plain);
    press(Qt::Key_Home);
    EXPECT_EQ(screen.lines.text, odd);
    EXPECT_EQ(screen.plain.text, odd);
    EXPECT_EQ(lines->toPlainText().section(QLatin1Char('\n'), 0, 2), QStringLiteral("one\ntwo\nthree"));
}

TEST_F(Typing, AHardBlankSurvivesAnEdit) {
    handler([&] {
        screen.lines.text = "a\xc2\xa0"
                            "b";
    });
    click(lines);
    press(Qt::Key_End, Qt::ControlModifier);
    type(QStringLiteral("c"));
    EXPECT_EQ(screen.lines.text, "a\xc2\xa0"
                                 "bc");
}

TEST_F(Typing, WhatHandlersSetIsShownAndRaisesNothing) {
    int changes = 0;
    screen.plain.on_change = screen.lines.on_change = [&] { ++changes; };
    handler([&] {
        screen.plain.text = "new";
        screen.lines.text = "first\r\nsecond";
    });
    EXPECT_EQ(plain->text(), QStringLiteral("new"));
    EXPECT_EQ(lines->toPlainText(), QStringLiteral("first\nsecond"));
    EXPECT_EQ(changes, 0);
}

TEST_F(Typing, AnotherControlsChangeKeepsCaretUndoAndScroll) {
    QString many;
    for (int line = 0; line < 200; ++line)
        many += QStringLiteral("line %1\r\n").arg(line);
    handler([&] { screen.lines.text = many.toStdString(); });
    click(lines);
    press(Qt::Key_End, Qt::ControlModifier);
    type(QStringLiteral("end"));
    const int caret = lines->textCursor().position();
    const int scroll = lines->verticalScrollBar()->value();
    ASSERT_GT(scroll, 0);
    handler([&] { screen.plain.text = "elsewhere"; });
    EXPECT_EQ(lines->textCursor().position(), caret);
    EXPECT_EQ(lines->verticalScrollBar()->value(), scroll);
    EXPECT_TRUE(lines->document()->isUndoAvailable());
}

TEST_F(Typing, StarsStandForAPassword) {
    auto* const secret = bench.widget<LineEdit>("secret");
    click(secret);
    type(QStringLiteral("abc"));
    EXPECT_EQ(screen.secret.text, "abc");
    EXPECT_EQ(secret->displayText(), QStringLiteral("***"));
}

TEST_F(Typing, ALongTextShowsItsBeginning) {
    handler([&] { screen.plain.text = std::string(500, 'x'); });
    EXPECT_EQ(plain->cursorPosition(), 0);
}

TEST_F(Typing, ATextIsStruckOutAndBack) {
    handler([&] { screen.plain.strike_out = true; });
    EXPECT_TRUE(plain->font().strikeOut());
    handler([&] { screen.plain.strike_out = false; });
    EXPECT_FALSE(plain->font().strikeOut());
}

TEST_F(Typing, AToolTipGoesWithItsText) {
    handler([&] { screen.plain.tool_tip = "Breakfast"; });
    EXPECT_EQ(plain->toolTip(), QStringLiteral("Breakfast"));
    handler([&] { screen.plain.tool_tip.clear(); });
    EXPECT_EQ(plain->toolTip(), QString());
}

TEST_F(Typing, AToolTipShowsWhatWasTypedAsItIs) {
    handler([&] { screen.plain.tool_tip = "call <b>Ann</b>"; });
    QTextDocument shown;
    shown.setHtml(plain->toolTip());
    EXPECT_EQ(shown.toPlainText(), QStringLiteral("call <b>Ann</b>"));
}

TEST_F(Typing, ADoubleClickIsTold) {
    int told = 0;
    screen.plain.on_double_click = [&] { ++told; };
    click(plain);
    EXPECT_EQ(told, 0);
    QTest::mouseDClick(plain->window()->windowHandle(), Qt::LeftButton, {},
                       in_window(plain, plain->rect().center()));
    EXPECT_EQ(told, 1);
}

// --- Selections ---

TEST_F(Typing, TabSelectsWhereItIsTold) {
    handler([&] { screen.selecting.text = "whole"; });
    press(Qt::Key_Tab);
    EXPECT_EQ(selecting->selectedText(), QStringLiteral("whole"));
    type(QStringLiteral("n"));
    EXPECT_EQ(screen.selecting.text, "n");
}

TEST_F(Typing, TabSelectsNowhereElse) {
    handler([&] { screen.plain.text = "kept"; });
    press(Qt::Key_Tab);
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), plain);
    EXPECT_FALSE(plain->hasSelectedText());
}

TEST_F(Typing, TheSelectionSurvivesTheClickThatBroughtTheFocus) {
    handler([&] { screen.selecting.text = "whole"; });
    mouse_down(selecting, {5, 5});
    EXPECT_EQ(screen.active_control, &screen.selecting);
    mouse_up(selecting, {5, 5});
    EXPECT_EQ(selecting->selectedText(), QStringLiteral("whole"));
}

TEST_F(Typing, ASecondClickPlacesTheCaret) {
    handler([&] { screen.selecting.text = "whole"; });
    click(selecting, {5, 5});
    click(selecting, selecting->rect().center());
    EXPECT_FALSE(selecting->hasSelectedText());
    EXPECT_EQ(selecting->cursorPosition(), 5);
}

TEST_F(Typing, AWordDraggedOverStaysSelectedAlone) {
    handler([&] { screen.selecting.text = "whole text of some length"; });
    const int y = selecting->rect().center().y();
    mouse_down(selecting, {5, y});
    QTest::mouseMove(selecting->window()->windowHandle(), in_window(selecting, {60, y}));
    mouse_up(selecting, {60, y});
    EXPECT_TRUE(selecting->hasSelectedText());
    EXPECT_NE(selecting->selectedText(), selecting->text());
}

TEST_F(Typing, ASelectionIsMadeOnce) {
    handler([&] { screen.selecting.text = "whole"; });
    press(Qt::Key_Tab);
    press(Qt::Key_End);
    handler([&] { screen.plain.text = "elsewhere"; });
    EXPECT_FALSE(selecting->hasSelectedText());
}

TEST_F(Typing, ASelectionCountsCharactersNotBytes) {
    handler([&] {
        screen.plain.text = "Zoë Müller";
        screen.plain.select(4, 6);
    });
    EXPECT_EQ(plain->selectedText(), QStringLiteral("Müller"));
}

TEST_F(Typing, ASelectionCountsBothPartsOfALineEnd) {
    handler([&] {
        screen.lines.text = "one\r\ntwo\r\nthree";
        screen.lines.select(5, 3);
    });
    EXPECT_EQ(lines->textCursor().selectedText(), QStringLiteral("two"));
}

TEST_F(Typing, TheCaretGoesToTheEndWhenSent) {
    handler([&] {
        screen.lines.text = "11/20/2026: ";
        screen.lines.caret_to_end();
        screen.lines.set_focus();
    });
    type(QStringLiteral("x"));
    EXPECT_EQ(screen.lines.text, "11/20/2026: x");
}

// --- The list to choose from ---

TEST_F(Typing, InAComboCompletesNothing) {
    auto* const combo = bench.widget<ComboBox>("combo");
    click(&combo->edit());
    type(QStringLiteral("Br"));
    EXPECT_EQ(screen.combo.text, "Br");
    EXPECT_EQ(combo->currentText(), QStringLiteral("Br"));
    press(Qt::Key_Tab);
    EXPECT_EQ(screen.combo.text, "Br");
}

TEST_F(Typing, ChoosingFromTheListSetsTheText) {
    auto* const combo = bench.widget<ComboBox>("combo");
    click(&combo->edit());
    press(Qt::Key_Down);
    EXPECT_EQ(screen.combo.text, "Brick");
    press(Qt::Key_Down);
    EXPECT_EQ(screen.combo.text, "Frame");
}

TEST_F(Typing, TheWheelChangesNoCombo) {
    auto* const combo = bench.widget<ComboBox>("combo");
    click(&combo->edit());
    press(Qt::Key_Down);
    QWheelEvent wheel(QPointF(5, 5), combo->mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton, {},
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(combo, &wheel);
    EXPECT_EQ(screen.combo.text, "Brick");
    EXPECT_FALSE(wheel.isAccepted());
}

TEST_F(Typing, AnEmptyComboStaysEmptyWhenItsListIsFilled) {
    EXPECT_EQ(screen.combo.text, "");
    EXPECT_EQ(bench.widget<ComboBox>("combo")->currentText(), QString());
    EXPECT_EQ(bench.widget<ComboBox>("combo")->count(), 2);
}

} // namespace
} // namespace tolva::desktop
