#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QTimer>
#include <cstdio>
#include <functional>

#include "analysis/graph.h"
#include "desktop/application_icon.h"
#include "desktop/qt_host.h"
#include "desktop/text.h"
#include "messages/generalmessagecreate.h"
#include "messages/message_kind.h"
#include "messages/planner.h"
#include "records/listings.h"
#include "shell/assembly.h"
#include "shell/form1.h"
#include "shell/instructions.h"

// Walks the program over a desk and writes a picture of every screen in each of its modes.

namespace tolva::pictures {

namespace {

/// Stands at one moment, so that the same desk gives the same pictures.
class StandingClock final : public platform::Clock {
  public:
    explicit StandingClock(basic::Date moment) : moment_(moment) {}
    basic::Date moment() const override { return moment_; }

  private:
    basic::Date moment_;
};

class Walk {
  public:
    /// Every window in one size, where one is given.
    Walk(const std::string& desk, QDir folder, basic::Date moment, QSize size)
        : folder_(std::move(folder)), size_(size), clock_(moment), disk_(files::make_disk()), host_(*disk_),
          runtime_(host_, clock_), module_(runtime_, *disk_, desk) {
        shell::assemble(module_);
    }

    bool all_written() const { return written_; }

    void run() {
        shell::start(module_);
        if (runtime_.ended())
            return;
        reminders();
        take("main-menu", module_.Form1());
        gate();
        record_screen("listings", module_.listings);
        record_screen("prospects", module_.prospect);
        record_screen("homes-sold", module_.sold);
        record_screen("address-book", module_.addressbook);
        new_listing();
        date_picker();
        compose();
        show_and_take("preferences", module_.preferences);
        show_and_take("search-listings", module_.listingsearch);
        show_and_take("search-prospects", module_.prospectsearch);
        show_and_take("search-addresses", module_.addresssearch);
        show_and_take("zip-code", module_.zipcode);
        planner();
        show_and_take("appointment", module_.appointment);
        graphs();
        show_and_take("payment-calculator", module_.paymentcalculator);
        show_and_take("start-of-labels", module_.label);
        show_and_take("address-sheets", module_.printaddress);
        letters();
        guide();
        box();
    }

  private:
    void event(const std::function<void()>& handler) {
        runtime_.run(handler);
        QApplication::processEvents();
    }

    void save(const std::string& name, QWidget& window) {
        const QString file = folder_.filePath(desktop::to_qt(name + ".png"));
        QApplication::processEvents();
        if (!window.grab().save(file)) {
            std::fprintf(stderr, "%s could not be written\n", qPrintable(file));
            written_ = false;
        }
    }

    void take(const std::string& name, platform::Screen& screen) {
        desktop::Form* const form = host_.form_of(screen);
        if (!form)
            return;
        // As it comes up on a common small screen, whatever screen there is.
        constexpr QSize room(1366, 728);
        if (size_.isValid())
            form->resize(size_.expandedTo(form->minimumSizeHint()));
        else if (!screen.place)
            form->resize(form->wanted_size().boundedTo(room / form->devicePixelRatio()));
        save(name, *form);
    }

    template <class T>
    void show_and_take(const std::string& name, platform::Slot<T>& slot) {
        if (!slot.exists())
            return;
        event([&] { slot().show(); });
        take(name, slot());
        event([&] { slot().unload(); });
    }

    /// The dialogs that the start raised.
    void reminders() {
        int number = 0;
        for (platform::Screen* screen : runtime_.screens()) {
            if (screen->name() != "generalmessage")
                continue;
            if (number < 2)
                take("reminder-" + std::to_string(++number), *screen);
            event([&] { screen->hide(); });
        }
    }

    void gate() {
        event([&] { module_.security().show(); });
        take("password-gate", module_.security());
        event([&] { module_.security().hide(); });
    }

    template <class T>
    void record_screen(const std::string& name, platform::Slot<T>& slot) {
        if (!slot.exists())
            return;
        event([&] { slot().show(); });
        take(name + "-list", slot());
        auto* const grid = dynamic_cast<platform::Grid*>(slot().find("grid1"));
        runtime_.click_row(*grid, 1);
        take(name + "-form", slot());
        event([&] { slot().unload(); });
    }

    void new_listing() {
        auto& screen = dynamic_cast<records::listings&>(module_.listings());
        event([&] { screen.show(); });
        runtime_.click(screen.m_newlisting);
        take("listings-new", screen);
    }

    void date_picker() {
        auto& screen = dynamic_cast<records::listings&>(module_.listings());
        QTimer::singleShot(0, &host_timer_, [&] {
            take("date-picker", module_.choosedate());
            runtime_.close(module_.choosedate());
        });
        runtime_.click(screen.Command3);
        event([&] { screen.unload(); });
    }

    void compose() {
        for (const auto& [name, kind] : {std::pair("schedule-message", messages::general_reminder),
                                         std::pair("schedule-letter", messages::listing_letter)}) {
            module_.messagekind = kind;
            show_and_take(name, module_.generalmessagecreate);
        }
    }

    void planner() {
        if (!module_.planner.exists())
            return;
        auto& screen = module_.planner();
        event([&] {
            screen.show();
            screen.open_day(module_.today());
        });
        take("planner-to-do", screen);
        runtime_.select_tab(screen.TabStrip1, 2);
        take("planner-day", screen);
        event([&] { screen.hide(); });
    }

    void graphs() {
        if (!module_.graph.exists())
            return;
        auto& screen = dynamic_cast<analysis::graph&>(module_.graph());
        event([&] {
            screen.show();
            screen.mon1.set_list_index(0);
        });
        runtime_.click(screen.Command1);
        take("graphs", screen);
        event([&] { screen.unload(); });
    }

    /// The letter screen and the word processor with a letter of the desk's, where there is one.
    void letters() {
        const QDir folder(desktop::to_qt(module_.appfolder) + QStringLiteral("/letters"));
        const QStringList names = folder.entryList({QStringLiteral("*.rtf")}, QDir::Files, QDir::Name);
        const std::string letter =
            names.isEmpty() ? "" : module_.read_document(desktop::from_qt(folder.filePath(names.last())));
        const auto fill = [&](platform::Screen& screen, const char* box) {
            auto* const text = dynamic_cast<platform::RichTextBox*>(screen.find(box));
            if (text && !letter.empty())
                event([&] { text->change().load(letter); });
        };
        event([&] { module_.letter().show(); });
        fill(module_.letter(), "rtf1");
        take("letter", module_.letter());
        event([&] { module_.letter().unload(); });
        event([&] { module_.frmMain().show(); });
        for (platform::Screen* screen : runtime_.screens())
            if (screen->name() == "frmDocument")
                fill(*screen, "rtfText");
        take("word-processor", module_.frmMain());
        event([&] { module_.frmMain().unload(); });
    }

    void guide() {
        if (!QFileInfo::exists(desktop::to_qt(module_.appfolder) +
                               QStringLiteral("/data/TOLVA_Documentation.rtf")))
            return;
        event([&] { module_.instructions().show_document("TOLVA_Documentation.rtf"); });
        take("guide", module_.instructions());
        event([&] { module_.instructions().unload(); });
    }

    void box() {
        for (const auto& [name, buttons] : {std::pair("notice", platform::BoxButtons::ok),
                                            std::pair("question", platform::BoxButtons::ok_cancel)}) {
            QTimer::singleShot(0, &host_timer_, [&, file = std::string("box-") + name] {
                if (QWidget* const standing = QApplication::activeModalWidget()) {
                    save(file, *standing);
                    standing->close();
                }
            });
            const bool asks = buttons == platform::BoxButtons::ok_cancel;
            host_.box(asks ? "Delete Listing?" : "Listing Saved", asks ? "Are You Sure?" : "Message",
                      buttons);
        }
    }

    QDir folder_;
    QSize size_;
    StandingClock clock_;
    std::unique_ptr<files::FileSystem> disk_;
    desktop::QtHost host_;
    platform::Runtime runtime_;
    module::Module module_;
    QTimer host_timer_;
    bool written_ = true;
};

} // namespace

} // namespace tolva::pictures

/// tolva-screenshots DESK FOLDER MONTH/DAY/YEAR [WIDTH HEIGHT]
int main(int argc, char** argv) {
    using namespace tolva;
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("TOLVA"));
    QApplication::setWindowIcon(desktop::application_icon());
    QApplication::setQuitOnLastWindowClosed(false);
    const QStringList words = QApplication::arguments();
    if (words.size() != 4 && words.size() != 6) {
        std::fputs("usage: tolva-screenshots DESK FOLDER MONTH/DAY/YEAR [WIDTH HEIGHT]\n", stderr);
        return 2;
    }
    const QDir folder(words[2]);
    if (!folder.mkpath(QStringLiteral("."))) {
        std::fprintf(stderr, "%s could not be made\n", qPrintable(words[2]));
        return 1;
    }
    constexpr int any_year = 2000;
    const basic::Date day = basic::to_date(words[3].toStdString(), any_year);
    const double morning = 10.0 / 24;
    const QSize size = words.size() == 6 ? QSize(words[4].toInt(), words[5].toInt()) : QSize();
    pictures::Walk walk(QFileInfo(words[1]).absoluteFilePath().toStdString(), folder,
                        basic::add_days(day, morning), size);
    walk.run();
    return walk.all_written() ? 0 : 1;
}
