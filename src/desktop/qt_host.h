#pragma once

#include <QEventLoop>
#include <QPointer>
#include <QTimer>
#include <chrono>
#include <functional>
#include <memory>
#include <vector>

#include "desktop/event_state.h"
#include "desktop/form.h"
#include "desktop/input_watch.h"
#include "desktop/qt_printer.h"
#include "desktop/user_settings.h"
#include "desktop/work_window.h"
#include "files/file_system.h"
#include "platform/document_frame.h"
#include "platform/host.h"
#include "platform/runtime.h"

namespace tolva::desktop {

/// The screens on a desktop of windows. A form is made when its screen is first shown; showing, hiding and
/// unloading take effect on the windows at the end of the event (or ahead of a modal wait), all at once.
class QtHost final : public platform::Host {
  public:
    explicit QtHost(files::FileSystem& disk, const QString& settings = UserSettings::usual_place());
    ~QtHost() override;
    QtHost(const QtHost&) = delete;
    QtHost& operator=(const QtHost&) = delete;

    /// Asks the runtime to look at the clock about once a second from now on, under modal boxes too. The
    /// runtime must not outlive the host's next event.
    void start_clock(platform::Runtime& runtime);
    void stop_clock();

    /// Whether the program ended with the error box.
    bool failed() const { return failed_; }

    /// The window of a screen, or null while it has none.
    Form* form_of(const platform::Screen& screen) const;

    /// Makes the window of a screen that is shown for the first time.
    std::function<std::unique_ptr<Form>(platform::Screen&, EventState&)> form_maker;

    /// How long the hands must rest before a box that the clock raised takes an answer.
    std::chrono::milliseconds quiet_time{700};
    std::chrono::milliseconds clock_period{1000};

    // --- Host ---

    void screen_loaded(platform::Screen& screen) override;
    void screen_shown(platform::Screen& screen, platform::ShowMode mode) override;
    void screen_hidden(platform::Screen& screen) override;
    void screen_unloaded(platform::Screen& screen) override;
    void wait_modal(platform::Screen& screen) override;
    int box(const std::string& text, const std::string& title, platform::BoxButtons buttons) override;
    void error_box(int number, const std::string& text) override;
    std::string open_file(const std::string& folder, const std::string& title,
                          const std::string& filter) override;
    std::string save_file(const std::string& folder, const std::string& title,
                          const std::string& filter) override;
    platform::PrintScope ask_print(const std::string& title, bool has_selection) override;
    void choose_printer() override;
    std::string clipboard_text() override;
    void put_on_clipboard(const std::string& source) override;
    std::string user_setting(const std::string& section, const std::string& key,
                             const std::string& otherwise) override;
    void save_user_setting(const std::string& section, const std::string& key,
                           const std::string& value) override;
    bool printer_takes_font(const std::string& font) override;
    platform::Printer& printer() override { return printer_; }
    void begin_work(const std::string& what) override;
    void show_work(int steps) override;
    void end_work() override;
    void refresh() override;
    void quit() override;

  private:
    struct Window {
        platform::Screen* screen;
        /// Null until the screen is shown.
        std::unique_ptr<Form> form;
    };
    struct Showing {
        platform::Screen* screen;
        platform::ShowMode mode;
    };
    struct Waiting {
        const platform::Screen* screen;
        QEventLoop* loop;
    };

    void tick(platform::Runtime& runtime);
    /// Lets windows be painted, and nothing else happen.
    void let_windows_paint(QEventLoop::ProcessEventsFlags flags);
    QString folder_to_ask(const std::string& folder) const;
    Window* window_of(const platform::Screen* screen);
    void remove_windows();
    void take_down(Form& form);
    void make_window(Window& window);
    void present(Form& form, platform::ShowMode mode);
    void size_and_place(Form& form, platform::ShowMode mode) const;
    /// Puts a window back where its screen remembers it, as far as it is still to be seen there.
    static void put_back(Form& form, const platform::WindowPlace& place);
    /// A document's window lives in its frame's.
    void present_document(Form& form, const platform::DocumentScreen& document);
    /// The window that a box or a modal screen belongs to; null when none is on show.
    QWidget* window_in_front() const;

    files::FileSystem& disk_;
    InputWatch watch_;
    EventState state_;
    std::vector<Window> windows_;
    /// What was shown since the last refresh, in order.
    std::vector<Showing> showing_;
    /// Forms whose screens are gone.
    std::vector<std::unique_ptr<Form>> leaving_;
    std::vector<Waiting> waiting_;
    /// Where to go back to from a modal screen, outermost first.
    std::vector<QPointer<QWidget>> behind_modal_;
    /// Was told to come to the front, and the window system hasn't got to it yet.
    QPointer<Form> coming_up_;
    QTimer clock_;
    UserSettings settings_;
    QtPrinter printer_;
    /// While long work goes on; it may contain other long work.
    std::unique_ptr<WorkWindow> work_;
    int works_ = 0;
    bool failed_ = false;
    bool quitting_ = false;
};

} // namespace tolva::desktop
