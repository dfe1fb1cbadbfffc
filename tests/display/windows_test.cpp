#include <gtest/gtest.h>

#include <QMessageBox>
#include <QTimer>

#include "desktop/small_screen.h"
#include "support/program.h"

namespace tolva::desktop {
namespace {

/// The windows from the lowest to the topmost, as the window manager has stacked them.
std::vector<WId> stack() {
    const auto run = support::run_program({"xprop", "-root", "_NET_CLIENT_LIST_STACKING"});
    std::vector<WId> windows;
    const QStringList words =
        QString::fromStdString(run.out).section(QLatin1Char('#'), 1).split(QLatin1Char(','));
    for (const QString& word : words)
        windows.push_back(static_cast<WId>(word.trimmed().toULongLong(nullptr, 16)));
    return windows;
}

bool is_above(const QWidget& upper, const QWidget& lower) {
    const std::vector<WId> windows = stack();
    const auto high = std::find(windows.begin(), windows.end(), upper.winId());
    const auto low = std::find(windows.begin(), windows.end(), lower.winId());
    return high != windows.end() && low != windows.end() && high > low;
}

class Display : public testing::Test {
  protected:
    void SetUp() override {
        if (!QCoreApplication::instance())
            GTEST_SKIP() << "there is no display";
        if (!support::has_command("xprop"))
            GTEST_SKIP() << "xprop, which asks the window manager, is not installed";
        if (support::run_program({"xprop", "-root", "_NET_SUPPORTING_WM_CHECK"}).out.find("window id") ==
            std::string::npos)
            GTEST_SKIP() << "no window manager runs";
        bench = std::make_unique<Bench>();
    }
    void TearDown() override { bench.reset(); }

    /// Shows a screen of the bench and waits until it is in front.
    SmallScreen& show_in_front() {
        SmallScreen& screen = bench->show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&bench->form()));
        return screen;
    }

    /// A reminder comes up by itself.
    QWidget& remind() {
        bench->runtime.run([this] { remind_in_the_event(); });
        QWidget& window = *bench->host.form_of(*reminder);
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
        QTest::qWait(300); // time enough for a window manager to hand it the focus
        return window;
    }
    void remind_in_the_event() {
        auto made = std::make_unique<SmallScreen>(bench->runtime, "reminder");
        reminder = made.get();
        bench->runtime.load(std::move(made), [] {});
        reminder->show(platform::ShowMode::without_focus);
    }

    std::unique_ptr<Bench> bench;
    platform::Screen* reminder = nullptr;
};

TEST_F(Display, AReminderLeavesTheKeysWhereTheyGo) {
    SmallScreen& screen = show_in_front();
    type(QStringLiteral("ab"));
    QWidget& window = remind();
    EXPECT_EQ(window_with_focus(), bench->form().windowHandle());
    type(QStringLiteral("cd"));
    EXPECT_EQ(screen.plain.text, "abcd");
    EXPECT_TRUE(is_above(window, bench->form()));
}

TEST_F(Display, AReminderOfTheStartLiesAboveTheMainMenu) {
    bench->slot.make = [this] { return std::make_unique<SmallScreen>(bench->runtime, "Form1"); };
    bench->runtime.run([this] {
        remind_in_the_event();
        bench->slot().show();
    });
    ASSERT_TRUE(QTest::qWaitForWindowActive(&bench->form()));
    QTest::qWait(300);
    EXPECT_TRUE(is_above(*bench->host.form_of(*reminder), bench->form()));
    EXPECT_TRUE(bench->form().isActiveWindow());
}

TEST_F(Display, AReminderThatWasSeenLetsTheMainMenuPass) {
    bench->slot.make = [this] { return std::make_unique<SmallScreen>(bench->runtime, "Form1"); };
    show_in_front();
    QWidget& window = remind();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    bench->form().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&bench->form()));
    QTest::qWait(300);
    EXPECT_TRUE(is_above(bench->form(), window));
}

TEST_F(Display, AReminderTakesTheFocusWhenItIsTurnedTo) {
    show_in_front();
    QWidget& window = remind();
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    type(QStringLiteral("x"));
    EXPECT_EQ(dynamic_cast<SmallScreen&>(*reminder).plain.text, "x");
}

TEST_F(Display, TheFocusComesBackFromABox) {
    SmallScreen& screen = show_in_front();
    type(QStringLiteral("ab"));
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &look, [] {
        if (QWidget* const box = QApplication::activeModalWidget(); box && box->isActiveWindow())
            press(Qt::Key_Return);
    });
    look.start(50);
    EXPECT_EQ(bench->host.box("Listing Saved", "Message", platform::BoxButtons::ok), 1);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&bench->form()));
    type(QStringLiteral("cd"));
    EXPECT_EQ(screen.plain.text, "abcd");
    EXPECT_EQ(screen.take_diary(), std::vector<std::string>{});
}

TEST_F(Display, AModalScreenStaysInFrontAndHandsBackTheFocus) {
    SmallScreen& screen = show_in_front();
    platform::Slot<SmallScreen> picker(bench->runtime);
    picker.make = [&] { return std::make_unique<SmallScreen>(bench->runtime, "picker"); };
    screen.close.on_click = [&] { picker().show_modal(); };
    bool stood_above = false;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &look, [&] {
        Form* const window = picker.loaded() ? bench->host.form_of(picker()) : nullptr;
        if (!window || !window->isActiveWindow())
            return;
        bench->form().raise();
        QTest::qWait(100);
        stood_above = is_above(*window, bench->form());
        bench->runtime.close(picker());
    });
    look.start(50);
    click(bench->widget("close"));
    EXPECT_TRUE(stood_above);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&bench->form()));
}

} // namespace
} // namespace tolva::desktop
