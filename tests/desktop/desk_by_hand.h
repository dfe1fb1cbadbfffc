#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPointer>
#include <QTimer>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>

#include "desktop/qt_host.h"
#include "desktop/text.h"
#include "hands.h"
#include "module/module.h"
#include "shell/assembly.h"
#include "support/fixed_clock.h"
#include "support/samples.h"

namespace tolva::desktop {

/// The whole program with its windows over a desk in a folder of its own, and the user's hands at it. What it
/// prints becomes files in the folder `printed` of the desk, unless another printer is chosen.
class DeskByHand {
  public:
    DeskByHand() {
        forget_an_earlier_end();
        host.quiet_time = std::chrono::milliseconds(100);
        host.clock_period = std::chrono::milliseconds(20);
        QObject::connect(&patience_, &QTimer::timeout, &patience_, [this] { end_a_forgotten_box(); });
        patience_.start(5000);
    }
    ~DeskByHand() { host.stop_clock(); }
    DeskByHand(const DeskByHand&) = delete;
    DeskByHand& operator=(const DeskByHand&) = delete;

    /// Lays out a copy of a desk's data and letters.
    void lay_out(const std::filesystem::path& desk) {
        support::copy_desk(desk, folder);
        module = std::make_unique<module::Module>(runtime, *disk, folder.path().string());
        shell::assemble(*module);
    }

    // --- What is on show ---

    Form& form(platform::Screen& screen) {
        Form* const window = host.form_of(screen);
        if (!window)
            throw std::runtime_error(screen.name() + " has no window");
        return *window;
    }
    QWidget* widget(platform::Screen& screen, const char* name) {
        QWidget* const found = form(screen).findChild<QWidget*>(QString::fromUtf8(name));
        if (!found)
            throw std::runtime_error(screen.name() + " has no " + name);
        return found;
    }
    QString text(platform::Screen& screen, const char* name) {
        if (auto* line = form(screen).findChild<QLineEdit*>(QString::fromUtf8(name)))
            return line->text();
        return form(screen).findChild<QPlainTextEdit*>(QString::fromUtf8(name))->toPlainText();
    }

    // --- What the hands do ---

    /// Does something in the next modal window of a kind, as soon as it is in front.
    template <class Window, class Act>
    void in_next(Act act) {
        auto* const look = new QTimer(&patience_);
        QObject::connect(look, &QTimer::timeout, look, [look, act] {
            auto* const window = dynamic_cast<Window*>(QApplication::activeModalWidget());
            if (!window || !window->isActiveWindow() || window_with_focus() != window->windowHandle())
                return;
            look->stop();
            look->deleteLater();
            act(*window);
        });
        look->start(1);
    }
    /// Answers the next box with a key; says what it asked.
    void answer_with(Qt::Key key, QString* asked = nullptr) {
        in_next<QMessageBox>([key, asked](QMessageBox& box) {
            if (asked)
                *asked = box.text();
            press(key);
        });
    }
    /// Types a file's name into the next file dialog.
    void pick_file(const std::string& path) {
        in_next<QFileDialog>([path](QFileDialog& dialog) {
            auto* const name = dialog.findChild<QLineEdit*>();
            name->setFocus();
            name->selectAll();
            type(to_qt(path));
            press(Qt::Key_Return);
        });
    }
    void fill(platform::Screen& screen, const char* name, const QString& value) {
        click(widget(screen, name));
        type(value);
    }
    /// Until the keys go to a screen's window: where windows are the system's own, that takes a moment.
    void await_focus(platform::Screen& screen) {
        EXPECT_TRUE(wait_until([&] { return window_with_focus() == form(screen).windowHandle(); }))
            << screen.name() << " doesn't come to the front";
    }
    /// Opens a record screen by its button on the main menu, in a size that shows the form whole: without a
    /// display the screen is small.
    module::RecordEntry& open(const char* button, platform::Slot<module::RecordEntry> module::Module::*slot) {
        click(widget(module->Form1(), button));
        settle();
        module::RecordEntry& screen = ((*module).*slot)();
        await_focus(screen);
        form(screen).resize(form(screen).wanted_size());
        settle();
        return screen;
    }
    /// Opens a menu with the mouse and clicks on one of its entries.
    void choose(platform::Screen& screen, const char* entry) {
        Form& window = form(screen);
        window.activateWindow();
        settle();
        auto* const action = window.findChild<QAction*>(QString::fromUtf8(entry));
        if (!action || !action->isVisible() || !action->isEnabled())
            throw std::runtime_error(screen.name() + " doesn't offer " + entry);
        auto* const menu = qobject_cast<QMenu*>(action->parent());
        auto* const bar = window.findChild<QMenuBar*>();
        click(bar, bar->actionGeometry(menu->menuAction()).center());
        settle();
        if (!menu->isVisible())
            throw std::runtime_error(std::string("the menu of ") + entry + " didn't open");
        click(menu, menu->actionGeometry(action).center());
        settle();
    }

    support::TemporaryFolder folder;
    support::FixedClock clock{{2026, 11, 20, 10, 0, 0}};
    std::unique_ptr<files::FileSystem> disk = files::make_disk();

  private:
    /// Nobody thought of a box that still stands at the second look.
    void end_a_forgotten_box() {
        auto* const box = dynamic_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box && box == seen_) {
            ADD_FAILURE() << "nobody answered: " << from_qt(box->text());
            box->reject();
        }
        seen_ = box;
    }

    QTimer patience_;
    QPointer<QMessageBox> seen_;

    /// Where the user's settings are, which name the folder that is printed to.
    QString settings_file() const {
        const QString printed = to_qt(folder.file("printed"));
        QDir().mkpath(printed);
        const QString file = to_qt(folder.file("settings.ini"));
        UserSettings settings(file);
        save_print_target(settings, {PrintTarget::Kind::pdf_folder, printed});
        return file;
    }

  public:
    QtHost host{*disk, settings_file()};
    platform::Runtime runtime{host, clock};
    std::unique_ptr<module::Module> module;
};

} // namespace tolva::desktop
