#include <gtest/gtest.h>

#include <QCalendarWidget>
#include <QCloseEvent>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include "basic/run_time_error.h"
#include "desktop/boxes.h"
#include "desktop/grid_view.h"
#include "hands.h"
#include "shell/choosedate.h"
#include "small_screen.h"

namespace tolva::desktop {
namespace {

using Diary = std::vector<std::string>;

/// What the user does as soon as a modal window stands in front.
void meanwhile(const std::function<void()>& hands) {
    auto* const look = new QTimer(QCoreApplication::instance());
    QObject::connect(look, &QTimer::timeout, look, [look, hands] {
        QWidget* const modal = QApplication::activeModalWidget();
        if (!modal || QApplication::activeWindow() != modal)
            return;
        look->stop();
        look->deleteLater();
        hands();
    });
    look->start(1);
}

QMessageBox* box_on_show() {
    return dynamic_cast<QMessageBox*>(QApplication::activeModalWidget());
}

QAbstractButton* button_of(QMessageBox* box, const char* text) {
    for (QAbstractButton* button : box->buttons())
        if (button->text() == QString::fromUtf8(text))
            return button;
    return nullptr;
}

// --- Windows ---

TEST(Windows, ComeUpWithWhatTheEventLeftInThem) {
    Bench bench;
    bench.runtime.run([&] {
        bench.slot().show();
        EXPECT_EQ(bench.host.form_of(bench.slot()), nullptr) << "a window half filled";
        bench.slot().plain.text = "filled";
    });
    ASSERT_NE(bench.host.form_of(bench.slot()), nullptr);
    EXPECT_TRUE(bench.form().isVisible());
    EXPECT_EQ(bench.widget<LineEdit>("plain")->text(), QStringLiteral("filled"));
    EXPECT_EQ(bench.form().windowTitle(), QStringLiteral("Small Screen"));
}

TEST(Windows, OfScreensThatWereOnlyTouchedAreNeverMade) {
    Bench bench;
    bench.runtime.run([&] { bench.slot(); });
    EXPECT_EQ(bench.host.form_of(bench.slot()), nullptr);
}

TEST(Windows, HideAndComeBackAsTheyWere) {
    Bench bench;
    SmallScreen& screen = bench.show();
    type(QStringLiteral("kept"));
    bench.runtime.run([&] { screen.hide(); });
    EXPECT_FALSE(bench.form().isVisible());
    bench.runtime.run([&] { screen.show(); });
    EXPECT_TRUE(bench.form().isVisible());
    EXPECT_EQ(bench.widget<LineEdit>("plain")->text(), QStringLiteral("kept"));
}

TEST(Windows, GoWithTheirScreen) {
    Bench bench;
    const QPointer<QWidget> form = (bench.show(), &bench.form());
    bench.runtime.run([&] { bench.slot().unload(); });
    EXPECT_FALSE(form->isVisible());
    settle();
    EXPECT_TRUE(form.isNull());
}

TEST(Windows, AScreenMayUnloadItselfUnderItsOwnButton) {
    Bench bench;
    SmallScreen& screen = bench.show();
    screen.close.on_click = [&] { screen.unload(); };
    const QPointer<QWidget> form = &bench.form();
    click(bench.widget("close"));
    settle();
    EXPECT_FALSE(bench.slot.loaded());
    EXPECT_TRUE(form.isNull());
}

TEST(Windows, AScreenMayUnloadItselfUnderItsOwnRow) {
    Bench bench;
    SmallScreen& screen = bench.show();
    screen.grid.on_click = [&] { screen.unload(); };
    auto* const view = bench.widget<GridView>("grid");
    click(view->viewport(), view->visualRect(view->model()->index(0, 1)).center());
    settle();
    EXPECT_FALSE(bench.slot.loaded());
}

class Closing : public SmallScreen {
  public:
    using SmallScreen::SmallScreen;
    void on_unload() override { ++unloads; }
    static inline int unloads = 0;
};

TEST(Windows, TheCloseBoxAsksTheScreen) {
    Bench bench;
    bench.slot.make = [&] { return std::make_unique<Closing>(bench.runtime); };
    bench.show();
    Closing::unloads = 0;
    QCloseEvent event;
    QApplication::sendEvent(&bench.form(), &event);
    EXPECT_EQ(Closing::unloads, 1);
    EXPECT_FALSE(bench.slot.loaded());
    EXPECT_FALSE(event.isAccepted()) << "the window goes when the screen says so";
}

TEST(Windows, ShownAgainComeToTheFront) {
    Bench bench;
    SmallScreen& screen = bench.show();
    QWidget other;
    other.show();
    other.activateWindow();
    QCoreApplication::processEvents();
    ASSERT_FALSE(bench.form().isActiveWindow());
    bench.runtime.run([&] { screen.show(); });
    QCoreApplication::processEvents();
    EXPECT_TRUE(bench.form().isActiveWindow());
}

TEST(Windows, UnderABoxWhileTheyComeUpAreInFrontBehindIt) {
    Bench bench;
    bench.show();
    platform::Slot<SmallScreen> other(bench.runtime);
    other.make = [&] { return std::make_unique<SmallScreen>(bench.runtime, "other"); };
    meanwhile([] { press(Qt::Key_Return); });
    bench.runtime.run([&] {
        other().show();
        bench.runtime.message("wait", "");
    });
    settle();
    EXPECT_TRUE(bench.host.form_of(other())->isActiveWindow());
    EXPECT_FALSE(bench.form().isActiveWindow());
}

TEST(Windows, RemindersAreLaidOutSoThatEachIsSeen) {
    Bench bench;
    std::vector<platform::Screen*> screens;
    bench.runtime.run([&] {
        for (int number = 0; number < 4; ++number) {
            auto screen = std::make_unique<SmallScreen>(bench.runtime, "reminder");
            screens.push_back(screen.get());
            bench.runtime.load(std::move(screen), [] {});
            screens.back()->show(platform::ShowMode::without_focus);
        }
    });
    for (std::size_t one = 0; one < screens.size(); ++one)
        for (std::size_t two = one + 1; two < screens.size(); ++two)
            EXPECT_NE(bench.host.form_of(*screens[one])->pos(), bench.host.form_of(*screens[two])->pos());
}

// --- Modal screens ---

TEST(ModalScreens, HoldTheirCallerUntilTheyGo) {
    Bench bench;
    SmallScreen& screen = bench.show();
    platform::Slot<SmallScreen> picker(bench.runtime);
    picker.make = [&] { return std::make_unique<SmallScreen>(bench.runtime, "picker"); };
    screen.close.on_click = [&] {
        picker().show_modal();
        screen.plain.text = "after";
    };
    bool stood = false;
    meanwhile([&] {
        stood = true;
        EXPECT_EQ(screen.plain.text, "");
        EXPECT_EQ(QApplication::activeModalWidget(), bench.host.form_of(picker()));
        bench.runtime.close(picker());
    });
    click(bench.widget("close"));
    EXPECT_TRUE(stood);
    EXPECT_EQ(bench.widget<LineEdit>("plain")->text(), QStringLiteral("after"));
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST(ModalScreens, EndWithTheProgram) {
    Bench bench;
    SmallScreen& screen = bench.show();
    platform::Slot<SmallScreen> picker(bench.runtime);
    picker.make = [&] { return std::make_unique<SmallScreen>(bench.runtime, "picker"); };
    bool went_on = false;
    screen.close.on_click = [&] {
        picker().show_modal();
        went_on = true;
    };
    meanwhile([&] { bench.runtime.run([&] { bench.runtime.end(); }); });
    click(bench.widget("close"));
    EXPECT_TRUE(bench.runtime.ended());
    EXPECT_FALSE(went_on);
}

/// The date picker, as a date button brings it up.
class DatePicker : public testing::Test {
  protected:
    DatePicker() {
        bench.host.form_maker = [](platform::Screen& screen, EventState& state) {
            return screen.name() == "choosedate" ? make_form(screen, state) : make_small_form(screen, state);
        };
        module.choosedate.make = [this] { return std::make_unique<shell::choosedate>(module); };
        bench.show();
    }

    /// What is chosen when the user does this.
    std::string choose(const std::function<void()>& hands) {
        bench.slot().close.on_click = [this] { module.choosedate().show_modal(); };
        module.chosendate = "stale";
        meanwhile([this, hands] {
            EXPECT_EQ(QApplication::activeWindow(), window());
            hands();
        });
        bool late = false;
        QTimer guard;
        guard.setSingleShot(true);
        QObject::connect(&guard, &QTimer::timeout, &guard, [&] {
            late = true;
            bench.runtime.close(module.choosedate());
        });
        guard.start(3000);
        click(bench.widget("close"));
        EXPECT_FALSE(late) << "the picker stood on";
        return module.chosendate;
    }

    Form* window() { return bench.host.form_of(module.choosedate()); }

    Bench bench;
    module::Module module{bench.runtime, *bench.disk, "/desk"};
};

TEST_F(DatePicker, BeginsInTheCalendarOnToday) {
    EXPECT_EQ(choose([] { press(Qt::Key_Return); }), "11/20/2026");
}

TEST_F(DatePicker, FollowsTheArrows) {
    EXPECT_EQ(choose([] {
                  press(Qt::Key_Down);
                  press(Qt::Key_Left);
                  press(Qt::Key_Return);
              }),
              "11/26/2026");
}

TEST_F(DatePicker, TabToItsExitLeavesWithNothing) {
    EXPECT_EQ(choose([] { press(Qt::Key_Tab); }), "");
}

TEST_F(DatePicker, ExitLeavesWithNothing) {
    EXPECT_EQ(choose([] { press(Qt::Key_X, Qt::AltModifier); }), "");
    EXPECT_EQ(choose([this] { click(window()->findChild<QWidget*>(QStringLiteral("Command1"))); }), "");
}

TEST_F(DatePicker, ItsCloseBoxLeavesWithNothing) {
    EXPECT_EQ(choose([this] { window()->close(); }), "");
}

TEST_F(DatePicker, StaysWhenWindowsAreSwitched) {
    EXPECT_EQ(choose([this] {
                  bench.form().activateWindow();
                  QCoreApplication::processEvents();
                  window()->activateWindow();
                  QCoreApplication::processEvents();
                  ASSERT_TRUE(module.choosedate.loaded());
                  press(Qt::Key_Return);
              }),
              "11/20/2026");
}

TEST_F(DatePicker, StaysWhenAYearIsChosen) {
    EXPECT_EQ(choose([this] {
                  click(window()->findChild<QWidget*>(QStringLiteral("qt_calendar_yearbutton")));
                  press(Qt::Key_Up);
                  press(Qt::Key_Return);
                  QCoreApplication::processEvents();
                  ASSERT_TRUE(module.choosedate.loaded()) << "choosing a year went on to EXIT";
                  EXPECT_EQ(window()->findChild<QCalendarWidget*>()->yearShown(), 2027);
                  press(Qt::Key_Return);
              }),
              "11/20/2026");
}

TEST_F(DatePicker, StaysWhenAMonthIsChosen) {
    EXPECT_EQ(choose([this] {
                  QTimer look;
                  QObject::connect(&look, &QTimer::timeout, &look, [] {
                      if (QWidget* const months = QApplication::activePopupWidget()) {
                          QTest::keyClick(months, Qt::Key_Down);
                          QTest::keyClick(months, Qt::Key_Return);
                      }
                  });
                  look.start(10);
                  click(window()->findChild<QWidget*>(QStringLiteral("qt_calendar_monthbutton")));
                  look.stop();
                  QCoreApplication::processEvents();
                  ASSERT_TRUE(module.choosedate.loaded()) << "the list of months went on to EXIT";
                  EXPECT_EQ(window()->findChild<QCalendarWidget*>()->monthShown(), 1);
                  press(Qt::Key_Return);
              }),
              "11/20/2026");
}

TEST_F(DatePicker, StaysWhenThePageIsTurned) {
    EXPECT_EQ(choose([this] {
                  click(window()->findChild<QWidget*>(QStringLiteral("qt_calendar_prevmonth")));
                  ASSERT_TRUE(module.choosedate.loaded());
                  press(Qt::Key_Return);
              }),
              "11/20/2026");
}

TEST_F(DatePicker, EscapeDoesNothing) {
    EXPECT_EQ(choose([] {
                  press(Qt::Key_Escape);
                  press(Qt::Key_Return);
              }),
              "11/20/2026");
}

// --- Boxes ---

class Boxes : public testing::Test {
  protected:
    int ask(platform::BoxButtons buttons, const std::function<void()>& hands) {
        meanwhile([hands] {
            ASSERT_NE(box_on_show(), nullptr);
            hands();
        });
        QTimer late;
        late.setSingleShot(true);
        QObject::connect(&late, &QTimer::timeout, &late, [] {
            ADD_FAILURE() << "the box stood on";
            if (QMessageBox* const box = box_on_show())
                box->reject();
        });
        late.start(3000);
        return bench.host.box("Delete Listing?", "Are You Sure?", buttons);
    }

    Bench bench;
};

TEST_F(Boxes, SayTheirTextUnderTheirTitle) {
    bench.show();
    ask(platform::BoxButtons::ok_cancel, [] {
        EXPECT_EQ(box_on_show()->text(), QStringLiteral("Delete Listing?"));
        EXPECT_EQ(box_on_show()->windowTitle(), QStringLiteral("Are You Sure?"));
        EXPECT_EQ(box_on_show()->buttons().size(), 2);
        click(button_of(box_on_show(), "Cancel"));
    });
}

TEST_F(Boxes, WithoutATitleBearTheProgramsName) {
    meanwhile([] {
        EXPECT_EQ(box_on_show()->windowTitle(), QStringLiteral("TOLVA"));
        press(Qt::Key_Return);
    });
    bench.host.box("TOLVA 1.0", "", platform::BoxButtons::ok);
}

TEST_F(Boxes, AreAnsweredByClicksAndKeys) {
    using platform::BoxButtons;
    bench.show();
    EXPECT_EQ(ask(BoxButtons::ok_cancel, [] { click(button_of(box_on_show(), "OK")); }), 1);
    EXPECT_EQ(ask(BoxButtons::ok_cancel, [] { click(button_of(box_on_show(), "Cancel")); }), 2);
    EXPECT_EQ(ask(BoxButtons::ok_cancel, [] { press(Qt::Key_Return); }), 1);
    EXPECT_EQ(ask(BoxButtons::ok_cancel, [] { press(Qt::Key_Escape); }), 2);
    EXPECT_EQ(ask(BoxButtons::ok_cancel,
                  [] {
                      press(Qt::Key_Tab);
                      press(Qt::Key_Return);
                  }),
              2);
    EXPECT_EQ(ask(BoxButtons::ok_cancel, [] { box_on_show()->close(); }), 2);
    EXPECT_EQ(ask(BoxButtons::ok, [] { press(Qt::Key_Escape); }), 1);
}

TEST_F(Boxes, StandInFrontOfEverything) {
    SmallScreen& screen = bench.show();
    ask(platform::BoxButtons::ok, [&] {
        click(bench.widget("close"));
        EXPECT_EQ(screen.take_diary(), Diary{});
        press(Qt::Key_Return);
    });
}

TEST_F(Boxes, ShowWhatTheHandlerDidSoFar) {
    SmallScreen& screen = bench.show();
    screen.close.on_click = [&] {
        screen.plain.text = "so far";
        bench.runtime.message("Look", "Message");
    };
    meanwhile([&] {
        EXPECT_EQ(bench.widget<LineEdit>("plain")->text(), QStringLiteral("so far"));
        press(Qt::Key_Return);
    });
    click(bench.widget("close"));
}

TEST_F(Boxes, OfAFailureNameNumberAndTextAndEndTheProgram) {
    SmallScreen& screen = bench.show();
    screen.close.on_click = [] { throw basic::RunTimeError(424); };
    QString text, title;
    meanwhile([&] {
        text = box_on_show()->text();
        title = box_on_show()->windowTitle();
        bench.runtime.run([] { ADD_FAILURE() << "something ran while the box stood"; });
        press(Qt::Key_Return);
    });
    click(bench.widget("close"));
    EXPECT_EQ(title, QStringLiteral("TOLVA"));
    EXPECT_EQ(text,
              QStringLiteral("Run-time error '424':\n\n") + QString::fromStdString(basic::error_text(424)));
    EXPECT_TRUE(bench.runtime.ended());
    EXPECT_TRUE(bench.host.failed());
}

// --- Boxes that the clock raises ---

/// A screen whose timer asks a question at the first full minute.
class Clockwork : public testing::Test {
  protected:
    Clockwork() {
        bench.host.quiet_time = std::chrono::milliseconds(300);
        bench.host.clock_period = std::chrono::milliseconds(20);
        SmallScreen& screen = bench.show();
        timer = std::make_unique<platform::Timer>(screen, "timer");
        timer->enabled = true;
        timer->on_timer = [this] {
            ++ticks;
            if (ticks == 1)
                answer = bench.runtime.box("Print Follow Up Letters?", "Are You Sure?",
                                           platform::BoxButtons::ok_cancel);
        };
        bench.runtime.poll_clock();
        bench.clock.advance_minutes(1);
    }
    ~Clockwork() override { bench.host.stop_clock(); }

    /// Runs until the box was answered, by hands that act once it stands.
    void run(const std::function<void()>& hands) {
        QTimer look;
        bool acted = false;
        QObject::connect(&look, &QTimer::timeout, &look, [&] {
            if (acted || !box_on_show())
                return;
            acted = true;
            hands();
        });
        look.start(5);
        bench.host.start_clock(bench.runtime);
        EXPECT_TRUE(wait_until([&] { return answer != 0; }));
        if (QMessageBox* const box = box_on_show())
            box->reject();
    }

    Bench bench;
    std::unique_ptr<platform::Timer> timer;
    int ticks = 0;
    int answer = 0;
};

TEST_F(Clockwork, ABoxIgnoresTheKeysThatWereMeantForSomethingElse) {
    run([&] {
        press(Qt::Key_Return);
        press(Qt::Key_Space);
        press(Qt::Key_Escape);
        click(button_of(box_on_show(), "OK"));
        QCoreApplication::processEvents();
        EXPECT_NE(box_on_show(), nullptr);
        QTimer::singleShot(400, [] { click(button_of(box_on_show(), "Cancel")); });
    });
    EXPECT_EQ(answer, 2);
}

TEST_F(Clockwork, ABoxWaitsUntilTheTypingPauses) {
    run([&] {
        for (const int later : {150, 300, 450})
            QTimer::singleShot(later, [] {
                press(Qt::Key_Escape);
                EXPECT_NE(box_on_show(), nullptr);
            });
        QTimer::singleShot(900, [] { press(Qt::Key_Escape); });
    });
    EXPECT_EQ(answer, 2);
}

TEST_F(Clockwork, ABoxHasNoButtonThatEnterPressesUnasked) {
    run([&] {
        QTimer::singleShot(400, [] {
            press(Qt::Key_Return);
            EXPECT_NE(box_on_show(), nullptr) << "Enter answered a question that nobody has turned to";
            press(Qt::Key_Tab);
            press(Qt::Key_Return);
        });
    });
    EXPECT_EQ(answer, 1);
}

TEST_F(Clockwork, TheTicksGoOnUnderABox) {
    run([&] {
        bench.clock.advance_minutes(1);
        QTimer::singleShot(400, [this] {
            EXPECT_EQ(ticks, 2);
            click(button_of(box_on_show(), "OK"));
        });
    });
    EXPECT_EQ(answer, 1);
}

TEST_F(Clockwork, ABoxThatTheUserCallsUpTakesItsAnswerAtOnce) {
    ticks = 1;
    bench.slot().close.on_click = [this] {
        answer = bench.runtime.box("Delete?", "Are You Sure?", platform::BoxButtons::ok_cancel);
    };
    meanwhile([] { press(Qt::Key_Return); });
    click(bench.widget("close"));
    EXPECT_EQ(answer, 1);
}

} // namespace
} // namespace tolva::desktop
