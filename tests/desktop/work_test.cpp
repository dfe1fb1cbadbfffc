#include <gtest/gtest.h>

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>

#include "desktop/print_target.h"
#include "small_screen.h"

namespace tolva::desktop {
namespace {

/// Does something as soon as a window of that name is in front.
void when_up(const char* name, const std::function<void(QWidget&)>& hands) {
    auto* const look = new QTimer(QCoreApplication::instance());
    QObject::connect(look, &QTimer::timeout, look, [look, hands, name] {
        QWidget* const modal = QApplication::activeModalWidget();
        if (!modal || modal->objectName() != QString::fromUtf8(name))
            return;
        look->stop();
        look->deleteLater();
        hands(*modal);
    });
    look->start(1);
}

// --- Long work ---

QWidget* sign_of_work() {
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->objectName() == QStringLiteral("work") && window->isVisible())
            return window;
    return nullptr;
}

TEST(LongWork, ShowsASignThatCountsAndGoes) {
    Bench bench;
    bench.show();
    {
        platform::LongWork work(bench.runtime, "Printing letters");
        work.step();
        EXPECT_EQ(sign_of_work(), nullptr) << "nothing for what is over at once";
        QTest::qSleep(static_cast<int>(WorkWindow::patience.count()) + 50);
        work.step();
        ASSERT_NE(sign_of_work(), nullptr);
        EXPECT_TRUE(sign_of_work()->isModal());
        EXPECT_EQ(sign_of_work()->findChild<QLabel*>()->text(), QStringLiteral("Printing letters: 2"));
    }
    EXPECT_EQ(sign_of_work(), nullptr);
}

TEST(LongWork, KeepsHandsFromTheOtherWindows) {
    Bench bench;
    SmallScreen& screen = bench.show();
    bench.runtime.run([&] {
        platform::LongWork work(bench.runtime, "Printing letters");
        QTest::qSleep(static_cast<int>(WorkWindow::patience.count()) + 50);
        work.step();
        ASSERT_NE(sign_of_work(), nullptr);
        click(bench.widget("close"));
        click(bench.widget("selecting"));
        QTest::keyClick(bench.form().windowHandle(), Qt::Key_X);
        press(Qt::Key_Escape);
        QTest::keyClick(sign_of_work()->windowHandle(), Qt::Key_F4, Qt::AltModifier);
        sign_of_work()->close();
        EXPECT_NE(sign_of_work(), nullptr) << "it goes when the work is done, and not before";
    });
    settle();
    EXPECT_EQ(screen.take_diary(), std::vector<std::string>());
    EXPECT_EQ(screen.plain.text, "");
    click(bench.widget("close"));
    EXPECT_EQ(screen.take_diary().back(), "close") << "and then the windows are the user's again";
}

class Ticking : public SmallScreen {
  public:
    using SmallScreen::SmallScreen;
    platform::Timer timer{*this, "timer"};
};

TEST(LongWork, LetsNoTickThrough) {
    Bench bench;
    int ticks = 0;
    bench.slot.make = [&] {
        auto screen = std::make_unique<Ticking>(bench.runtime);
        screen->timer.enabled = true;
        screen->timer.on_timer = [&] { ++ticks; };
        return screen;
    };
    bench.show();
    bench.host.clock_period = std::chrono::milliseconds(5);
    bench.host.start_clock(bench.runtime);
    QTest::qWait(20); // the timer begins its period
    bench.runtime.run([&] {
        platform::LongWork work(bench.runtime, "Working");
        bench.clock.advance_minutes(2);
        QTest::qSleep(static_cast<int>(WorkWindow::patience.count()) + 50);
        for (int step = 0; step < 5; ++step) {
            work.step();
            QTest::qSleep(10);
        }
        EXPECT_EQ(ticks, 0);
    });
    EXPECT_TRUE(wait_until([&] { return ticks > 0; })) << "the tick comes when the work is done";
    QTest::qWait(30);
    EXPECT_EQ(ticks, 1) << "and no other before its time";
    bench.host.stop_clock();
}

// --- What is printed on ---

class Printers : public testing::Test {
  protected:
    Printers() { forget_an_earlier_end(); }

    QString settings() const { return folder.filePath(QStringLiteral("settings.ini")); }
    /// Chooses files in a folder, as a user does.
    void choose_files(QtHost& host, const QString& place, const char* button) {
        when_up("printers", [&](QWidget& box) {
            auto* const line = box.findChild<QLineEdit*>(QStringLiteral("folder"));
            line->setFocus();
            line->selectAll();
            QTest::keyClicks(line, place);
            EXPECT_TRUE(box.findChild<QRadioButton*>(QStringLiteral("files"))->isChecked());
            for (auto* one : box.findChildren<QPushButton*>())
                if (one->text().remove(QLatin1Char('&')) == QString::fromUtf8(button)) {
                    could_press = one->isEnabled();
                    one->click();
                }
            if (box.isVisible())
                static_cast<QDialog&>(box).reject();
        });
        host.choose_printer();
    }

    QTemporaryDir folder;
    bool could_press = false;
    std::unique_ptr<files::FileSystem> disk = files::make_memory_disk();
};

TEST_F(Printers, TheDefaultOneIsChosenForThisRunAndThoseToCome) {
    {
        QtHost host(*disk, settings());
        choose_files(host, folder.path(), "OK");
        EXPECT_TRUE(could_press);
        EXPECT_TRUE(host.printer_takes_font("Arial"));
    }
    QtHost host(*disk, settings());
    EXPECT_TRUE(host.printer_takes_font("Arial"));
    host.printer().Print("words");
    host.printer().EndDoc();
    EXPECT_EQ(QDir(folder.path()).entryList({QStringLiteral("*.pdf")}, QDir::Files).size(), 1);
}

TEST_F(Printers, CancellingKeepsTheOneThereWas) {
    QtHost host(*disk, settings());
    const bool before = host.printer_takes_font("Arial");
    choose_files(host, folder.path(), "Cancel");
    EXPECT_EQ(host.printer_takes_font("Arial"), before);
    EXPECT_EQ(load_print_target(UserSettings(settings())), PrintTarget());
}

TEST_F(Printers, AFolderThatIsNotThereCannotBeChosen) {
    QtHost host(*disk, settings());
    choose_files(host, folder.filePath(QStringLiteral("nowhere")), "OK");
    EXPECT_FALSE(could_press);
    EXPECT_EQ(load_print_target(UserSettings(settings())), PrintTarget());
}

/// Answers the box that asks where and what to print.
void answer_print_box(const char* button) {
    auto* const look = new QTimer(QCoreApplication::instance());
    QObject::connect(look, &QTimer::timeout, look, [look, button] {
        auto* const box = dynamic_cast<QDialog*>(QApplication::activeModalWidget());
        if (!box)
            return;
        look->stop();
        look->deleteLater();
        EXPECT_EQ(box->windowTitle(), QStringLiteral("Print"));
        for (auto* one : box->findChildren<QPushButton*>())
            if (one->text().remove(QLatin1Char('&')) == QString::fromUtf8(button)) {
                one->click();
                return;
            }
        ADD_FAILURE() << "no button " << button;
        box->reject();
    });
    look->start(1);
}

TEST_F(Printers, OneJobsBoxOffersTheSelectionAndHoldsForThatJob) {
    UserSettings kept(settings());
    save_print_target(kept, {PrintTarget::Kind::pdf_folder, folder.path()});
    QtHost host(*disk, settings());
    answer_print_box("Print");
    EXPECT_EQ(host.ask_print("Print", true), platform::PrintScope::selection);
    host.printer().Print("once");
    host.printer().EndDoc();
    host.printer().Print("again");
    host.printer().EndDoc();
    EXPECT_EQ(QDir(folder.path()).entryList({QStringLiteral("*.pdf")}, QDir::Files).size(), 2);
    answer_print_box("Print");
    EXPECT_EQ(host.ask_print("Print", false), platform::PrintScope::all);
}

TEST_F(Printers, ACancelledBoxPrintsNothing) {
    UserSettings kept(settings());
    save_print_target(kept, {PrintTarget::Kind::pdf_folder, folder.path()});
    QtHost host(*disk, settings());
    answer_print_box("Cancel");
    EXPECT_EQ(host.ask_print("Print", false), platform::PrintScope::cancelled);
    EXPECT_TRUE(QDir(folder.path()).entryList({QStringLiteral("*.pdf")}, QDir::Files).isEmpty());
}

TEST_F(Printers, TheUsersSettingsOutliveTheRun) {
    {
        QtHost host(*disk, settings());
        EXPECT_EQ(host.user_setting("Settings", "MainLeft", "1000"), "1000");
        host.save_user_setting("Settings", "MainLeft", "2345");
    }
    QtHost host(*disk, settings());
    EXPECT_EQ(host.user_setting("Settings", "MainLeft", "1000"), "2345");
}

} // namespace
} // namespace tolva::desktop
