#include "desktop/qt_host.h"

#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMimeData>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "desktop/boxes.h"
#include "desktop/forms.h"
#include "desktop/printer_boxes.h"
#include "desktop/text.h"

namespace tolva::desktop {

namespace {

/// The screen that others return to, and that reminders lie above.
constexpr const char* main_menu = "Form1";

} // namespace

QtHost::QtHost(files::FileSystem& disk, const QString& settings)
    : form_maker(make_form), disk_(disk), state_{watch_}, settings_(settings) {
    clock_.setSingleShot(true);
    // What was to come to the front is there, or something else is.
    QObject::connect(qApp, &QGuiApplication::focusWindowChanged, &clock_, [this](const QWindow* now) {
        if (now)
            coming_up_ = nullptr;
    });
    printer_.use(load_print_target(settings_));
}

QtHost::~QtHost() {
    // Documents ahead of the frames that they live in.
    while (!windows_.empty())
        windows_.pop_back();
}

// --- The clock ---

void QtHost::start_clock(platform::Runtime& runtime) {
    QObject::connect(&clock_, &QTimer::timeout, &clock_, [this, &runtime] { tick(runtime); });
    clock_.start(clock_period);
}

void QtHost::stop_clock() {
    clock_.stop();
    clock_.disconnect();
}

void QtHost::tick(platform::Runtime& runtime) {
    // Started anew ahead of the work: a box that the work raises must not stop the clock.
    clock_.start(clock_period);
    if (works_ > 0)
        return;
    const Meanwhile by_clock(state_.by_clock, true);
    runtime.poll_clock();
}

// --- Screens and their windows ---

QtHost::Window* QtHost::window_of(const platform::Screen* screen) {
    const auto found = std::find_if(windows_.begin(), windows_.end(),
                                    [&](const Window& window) { return window.screen == screen; });
    return found == windows_.end() ? nullptr : &*found;
}

Form* QtHost::form_of(const platform::Screen& screen) const {
    for (const Window& window : windows_)
        if (window.screen == &screen)
            return window.form.get();
    return nullptr;
}

void QtHost::screen_loaded(platform::Screen& screen) {
    windows_.push_back({&screen, nullptr});
}

void QtHost::screen_shown(platform::Screen& screen, platform::ShowMode mode) {
    std::erase_if(showing_, [&](const Showing& showing) { return showing.screen == &screen; });
    showing_.push_back({&screen, mode});
}

void QtHost::screen_hidden(platform::Screen& screen) {
    std::erase_if(showing_, [&](const Showing& showing) { return showing.screen == &screen; });
    for (const Waiting& waiting : waiting_)
        if (waiting.screen == &screen)
            waiting.loop->quit();
}

void QtHost::screen_unloaded(platform::Screen& screen) {
    Window* const window = window_of(&screen);
    if (!window)
        return;
    if (window->form) {
        window->form->detach();
        leaving_.push_back(std::move(window->form));
    }
    windows_.erase(windows_.begin() + (window - windows_.data()));
}

void QtHost::wait_modal(platform::Screen& screen) {
    QEventLoop loop;
    waiting_.push_back({&screen, &loop});
    if (screen.visible() && !quitting_)
        loop.exec(QEventLoop::DialogExec);
    waiting_.pop_back();
}

void QtHost::refresh() {
    if (state_.updating || quitting_)
        return;
    {
        const Meanwhile updating(state_.updating, true);
        remove_windows();
        for (Window& window : windows_) {
            if (!window.screen->visible())
                continue;
            if (!window.form)
                make_window(window);
            window.form->refresh();
        }
        auto showing = std::exchange(showing_, {});
        // What only draws attention goes above what comes up to be worked with.
        std::stable_partition(showing.begin(), showing.end(), [](const Showing& shown) {
            return shown.mode == platform::ShowMode::activate;
        });
        // A frame comes up ahead of its documents.
        std::stable_partition(showing.begin(), showing.end(), [](const Showing& shown) {
            return !dynamic_cast<platform::DocumentScreen*>(shown.screen);
        });
        for (const Showing& shown : showing)
            present(*form_of(*shown.screen), shown.mode);
        if (QWidget* const modal = QApplication::activeModalWidget(); modal && !showing.empty())
            modal->raise();
    }

    // From here on handlers may run, and screens come and go.
    std::vector<const platform::Screen*> screens;
    for (const Window& window : windows_)
        screens.push_back(window.screen);
    for (const platform::Screen* screen : screens)
        if (Window* const window = window_of(screen); window && window->form)
            window->form->settle_focus();
}

void QtHost::make_window(Window& window) {
    window.form = form_maker(*window.screen, state_);
    if (window.screen->name() != main_menu)
        return;
    // Coming to the front, the main menu must not bury reminders that nobody has seen.
    window.form->on_activated = [this] {
        for (const Window& other : windows_)
            if (other.form && other.form->isVisible() && other.form->draws_attention)
                other.form->raise();
    };
}

/// Takes hidden screens off the desktop, and lets go of the forms whose screens are gone.
void QtHost::remove_windows() {
    for (const Window& window : windows_)
        if (window.form && !window.screen->visible() && window.form->isVisible())
            take_down(*window.form);
    for (auto& form : leaving_) {
        if (form->isVisible())
            take_down(*form);
        // An event of the form's own may be what brought us here.
        form.release()->deleteLater();
    }
    leaving_.clear();
}

void QtHost::take_down(Form& form) {
    if (auto* const inside = qobject_cast<QMdiSubWindow*>(form.parentWidget())) {
        inside->hide();
        form.setParent(nullptr);
        inside->deleteLater();
        return;
    }
    const bool was_modal = form.isModal();
    form.hide();
    if (!was_modal || behind_modal_.empty())
        return;
    if (QWidget* const behind = behind_modal_.back())
        behind->activateWindow();
    behind_modal_.pop_back();
}

void QtHost::present_document(Form& form, const platform::DocumentScreen& document) {
    QMdiArea* const area = form_of(document.frame())->documents();
    auto* inside = qobject_cast<QMdiSubWindow*>(form.parentWidget());
    if (!inside) {
        inside = area->addSubWindow(&form);
        const QSize wanted = form.wanted_size() + QSize(2, form.fontMetrics().height() * 2);
        inside->resize(wanted.boundedTo(area->size() * 0.9).expandedTo(inside->minimumSizeHint()));
        form.show();
        inside->show();
    }
    area->setActiveSubWindow(inside);
}

void QtHost::present(Form& form, platform::ShowMode mode) {
    if (const auto* document = dynamic_cast<platform::DocumentScreen*>(form.platform_screen())) {
        present_document(form, *document);
        return;
    }
    const bool activate = mode == platform::ShowMode::activate;
    const bool modal = form.platform_screen()->modal();
    form.setAttribute(Qt::WA_ShowWithoutActivating, !activate);
    if (!form.isVisible()) {
        QWidget* const in_front = window_in_front();
        form.setWindowModality(modal ? Qt::ApplicationModal : Qt::NonModal);
        form.setWindowFlag(Qt::Dialog, modal);
        size_and_place(form, mode);
        if (modal) {
            behind_modal_.emplace_back(in_front);
            form.winId(); // has the system's window made, for what follows
            form.windowHandle()->setTransientParent(in_front ? in_front->windowHandle() : nullptr);
        }
        form.show();
    } else if (form.isMinimized()) {
        form.setWindowState(form.windowState() & ~Qt::WindowMinimized);
    }
    form.raise();
    form.draws_attention = !activate;
    if (activate) {
        form.activateWindow();
        coming_up_ = &form;
    } else {
        QApplication::alert(&form);
    }
}

/// A window takes the size that its form wants, as far as the screen has it. Where the window manager would
/// lay reminders over each other, they are laid out like a hand of cards beside the main menu.
void QtHost::size_and_place(Form& form, platform::ShowMode mode) const {
    const int title_bar = form.fontMetrics().height() * 2;
    const QRect room = form.QWidget::screen()->availableGeometry().adjusted(0, 0, 0, -title_bar);
    if (const auto place = form.platform_screen()->place) {
        put_back(form, *place);
        return;
    }
    if (!form.testAttribute(Qt::WA_Resized))
        form.resize(form.wanted_size().boundedTo(room.size()));

    const Form* menu = nullptr;
    std::vector<QPoint> taken;
    for (const Window& window : windows_) {
        if (!window.form || window.form.get() == &form || !window.form->isVisible())
            continue;
        if (window.screen->name() == main_menu)
            menu = window.form.get();
        if (window.screen->name() == form.platform_screen()->name())
            taken.push_back(window.form->pos());
    }
    if (mode == platform::ShowMode::activate && taken.empty())
        return;
    // Each a title bar further down and right; then, where the screen ends, from the top again, a little
    // further right.
    const QPoint first = (menu ? menu->pos() : room.topLeft()) + 2 * QPoint(title_bar, title_bar);
    constexpr int least_in_a_row = 5;
    const int in_a_row = std::max((room.bottom() - first.y() - form.height()) / title_bar, least_in_a_row);
    QPoint place = first;
    for (int card = 1; std::find(taken.begin(), taken.end(), place) != taken.end(); ++card)
        place = first + QPoint(title_bar * (card % in_a_row) + title_bar / 2 * (card / in_a_row),
                               title_bar * (card % in_a_row));
    form.move(place);
}

void QtHost::put_back(Form& form, const platform::WindowPlace& place) {
    const double twip = form.pixels_a_twip();
    const auto pixels = [twip](int twips) { return qRound(twips * twip); };
    const QRect room = form.QWidget::screen()->availableVirtualGeometry();
    QRect wanted(pixels(place.left), pixels(place.top), pixels(place.width), pixels(place.height));
    wanted.setSize(wanted.size().boundedTo(room.size()).expandedTo(form.minimumSizeHint()));
    if (!room.intersects(wanted.adjusted(0, 0, -form.fontMetrics().height(), -form.fontMetrics().height())))
        wanted.moveTopLeft(room.topLeft());
    form.move(wanted.topLeft());
    form.resize(wanted.size());
}

QWidget* QtHost::window_in_front() const {
    const QWidget* const modal_now = QApplication::activeModalWidget();
    if (coming_up_ && coming_up_->isVisible() && (!modal_now || modal_now == coming_up_.data()))
        return coming_up_;
    if (QWidget* const active = QApplication::activeWindow())
        return active;
    if (QWidget* const modal = QApplication::activeModalWidget())
        return modal;
    for (auto window = windows_.rbegin(); window != windows_.rend(); ++window)
        if (window->form && window->form->isVisible())
            return window->form.get();
    return nullptr;
}

// --- Boxes ---

namespace {

/// The window that a box or dialog stands before. Not every window manager goes back to it by itself.
class Behind {
  public:
    explicit Behind(QWidget* window) : window_(window) {}
    Behind(const Behind&) = delete;
    Behind& operator=(const Behind&) = delete;
    ~Behind() {
        if (window_ && window_->isVisible() && !QApplication::activeWindow())
            window_->activateWindow();
    }

    /// Null when there was none, or when it has gone meanwhile.
    QWidget* window() const { return window_; }

  private:
    QPointer<QWidget> window_;
};

} // namespace

int QtHost::box(const std::string& text, const std::string& title, platform::BoxButtons buttons) {
    const Behind behind(window_in_front());
    Box box(behind.window(), text, title, buttons);
    if (state_.by_clock) {
        box.keep_from_haste(quiet_time);
        // Whoever works in another program goes on there.
        if (QGuiApplication::applicationState() != Qt::ApplicationActive)
            box.setAttribute(Qt::WA_ShowWithoutActivating);
        QApplication::alert(behind.window() ? behind.window() : &box);
    }
    return box.ask();
}

void QtHost::error_box(int number, const std::string& text) {
    failed_ = true;
    show_error_box(window_in_front(), number, text);
}

// --- Files and the user's settings ---

namespace {

/// A filter as the toolkit takes it.
QString names_of(const std::string& filter) {
    QString names = to_qt(filter);
#ifndef Q_OS_WIN
    // Elsewhere only names with a dot would match.
    names.replace(QLatin1String("*.*"), QLatin1String("*"));
#endif
    return names;
}

std::string chosen_path(QString path) {
    path.replace(QLatin1Char('/'), QLatin1Char('\\'));
    return from_qt(path);
}

} // namespace

QString QtHost::folder_to_ask(const std::string& folder) const {
    return to_qt(disk_.resolve(folder));
}

std::string QtHost::open_file(const std::string& folder, const std::string& title,
                              const std::string& filter) {
    const Behind behind(window_in_front());
    return chosen_path(
        QFileDialog::getOpenFileName(behind.window(), to_qt(title), folder_to_ask(folder), names_of(filter)));
}

std::string QtHost::save_file(const std::string& folder, const std::string& title,
                              const std::string& filter) {
    const Behind behind(window_in_front());
    return chosen_path(
        QFileDialog::getSaveFileName(behind.window(), to_qt(title), folder_to_ask(folder), names_of(filter)));
}

std::string QtHost::user_setting(const std::string& section, const std::string& key,
                                 const std::string& otherwise) {
    return from_qt(settings_.value(to_qt(section), to_qt(key), to_qt(otherwise)));
}

void QtHost::save_user_setting(const std::string& section, const std::string& key, const std::string& value) {
    settings_.save(to_qt(section), to_qt(key), to_qt(value));
}

std::string QtHost::clipboard_text() {
    return from_qt(QGuiApplication::clipboard()->text());
}

void QtHost::put_on_clipboard(const std::string& source) {
    auto* const data = new QMimeData;
    data->setText(to_qt(source));
    data->setData(QStringLiteral("text/rtf"), QByteArray::fromStdString(source));
    QGuiApplication::clipboard()->setMimeData(data);
}

// --- Printing and other long work ---

bool QtHost::printer_takes_font(const std::string&) {
    return is_ready(printer_.target());
}

void QtHost::choose_printer() {
    const Behind behind(window_in_front());
    PrintTarget target = printer_.target();
    if (!ask_print_target(behind.window(), target))
        return;
    save_print_target(settings_, target);
    printer_.use(target);
}

platform::PrintScope QtHost::ask_print(const std::string& title, bool has_selection) {
    const Behind behind(window_in_front());
    std::unique_ptr<QPrinter> device;
    const platform::PrintScope scope =
        ask_print_job(behind.window(), title, has_selection, printer_.target(), device);
    if (device)
        printer_.use_once(std::move(device));
    return scope;
}

void QtHost::begin_work(const std::string& what) {
    if (++works_ == 1)
        work_ = std::make_unique<WorkWindow>(window_in_front(), what);
}

void QtHost::show_work(int steps) {
    work_->show_steps(steps);
    if (work_->isVisible())
        let_windows_paint(QEventLoop::ExcludeUserInputEvents);
}

void QtHost::end_work() {
    if (--works_ > 0)
        return;
    // What hands did meanwhile was meant for nobody: it goes while the sign still stands in its way.
    if (work_->isVisible())
        let_windows_paint(QEventLoop::AllEvents);
    work_.reset();
}

void QtHost::let_windows_paint(QEventLoop::ProcessEventsFlags flags) {
    const Meanwhile updating(state_.updating, true);
    QCoreApplication::processEvents(flags);
}

// --- The end ---

void QtHost::quit() {
    quitting_ = true;
    clock_.stop();
    QCoreApplication::exit();
}

} // namespace tolva::desktop
