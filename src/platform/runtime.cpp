#include "platform/runtime.h"

#include <algorithm>

#include "basic/run_time_error.h"
#include "platform/document_frame.h"

namespace tolva::platform {

Runtime::~Runtime() = default;

void Runtime::run(const std::function<void()>& handler) {
    if (ended_ || failing_)
        return;
    ++depth_;
    try {
        handler();
        settle();
    } catch (const basic::RunTimeError& error) {
        fail(error.number(), error.text());
    } catch (const Ended&) {
    }
    --depth_;
    if (depth_ == 0)
        bury();
}

void Runtime::settle() {
    if (make_durable)
        make_durable();
    host_.refresh();
}

void Runtime::leave_if_ended() const {
    if (ended_)
        throw Ended{};
}

void Runtime::fail(int number, const std::string& text) {
    failing_ = true;
    try {
        settle();
    } catch (const basic::RunTimeError&) {
        // What could not be made durable is the failure being shown, or follows from it.
    }
    host_.error_box(number, text);
    stop();
}

void Runtime::end() {
    if (make_durable)
        make_durable();
    stop();
    throw Ended{};
}

void Runtime::stop() {
    if (ended_)
        return;
    ended_ = true;
    host_.quit();
}

void Runtime::bury() {
    // A screen that goes may be the last to hold something of another; nothing here runs a handler.
    std::erase_if(screens_, [](const std::unique_ptr<Screen>& screen) { return !screen->loaded(); });
}

// --- User actions ---

void Runtime::move_focus(Control& control) {
    Screen& screen = control.screen();
    Control* const old = screen.active_control;
    if (old == &control)
        return;
    screen.active_control = &control;
    if (old && old->on_lost_focus)
        old->on_lost_focus();
    // The lost-focus handler may have sent the focus elsewhere or ended the screen.
    if (screen.loaded() && screen.active_control == &control && control.on_got_focus)
        control.on_got_focus();
}

void Runtime::focus(Control& control) {
    if (control.screen().active_control == &control)
        return;
    run([&] { move_focus(control); });
}

void Runtime::edit(TextControl& control, const std::string& text) {
    if (ended_ || failing_)
        return;
    control.text = text;
    if (control.on_change)
        run([&] { control.on_change(); });
}

void Runtime::tick(CheckBox& control, int value) {
    run([&] {
        move_focus(control);
        control.value = value;
        if (control.on_click)
            control.on_click();
    });
}

void Runtime::choose(OptionGroup& group, int index) {
    run([&] {
        move_focus(group[index]);
        group.choose(index);
    });
}

void Runtime::choose(OptionButton& button) {
    run([&] {
        move_focus(button);
        for (Control* control : button.screen().controls())
            if (auto* other = dynamic_cast<OptionButton*>(control); other && other->name() == button.name())
                other->value = other == &button;
    });
}

void Runtime::press_key(TextControl& control, int character) {
    if (!control.on_key_press)
        return;
    run([&] { control.on_key_press(character); });
}

void Runtime::double_click(TextControl& control) {
    run([&] {
        move_focus(control);
        if (control.on_double_click)
            control.on_double_click();
    });
}

void Runtime::select(RichTextBox& box, std::size_t start, std::size_t length) {
    if (ended_ || failing_)
        return;
    box.change().select(start, length);
    if (box.on_selection_change)
        run([&] { box.on_selection_change(); });
}

void Runtime::edit(RichTextBox& box, const std::function<void(rtf::RichText&)>& change) {
    run([&] {
        change(box.change());
        if (box.on_selection_change)
            box.on_selection_change();
    });
}

void Runtime::select_tab(TabStrip& tabs, int tab) {
    run([&] {
        move_focus(tabs);
        tabs.selected = tab;
        if (tabs.on_click)
            tabs.on_click();
    });
}

void Runtime::click(Button& button) {
    if (!button.available())
        return;
    run([&] {
        move_focus(button);
        if (button.screen().loaded())
            button.on_click();
    });
}

void Runtime::click(MenuEntry& entry) {
    if (!entry.available() || !entry.on_click)
        return;
    run([&] { entry.on_click(); });
}

void Runtime::click_row(Grid& grid, int row) {
    if (row < 1 || row >= grid.Rows())
        return;
    run([&] {
        move_focus(grid);
        grid.select_row(row);
        if (grid.on_click)
            grid.on_click();
    });
}

void Runtime::click(ToolBar& bar, const std::string& key) {
    if (!bar.available())
        return;
    run([&] { bar.on_click(key); });
}

void Runtime::turn_to(DocumentScreen& document) {
    if (ended_ || failing_)
        return;
    document.frame().bring_to_front(document);
}

void Runtime::pick_date(MonthView& view, basic::Date date) {
    run([&] {
        move_focus(view);
        view.value = date;
        if (view.on_date_click)
            view.on_date_click(date);
    });
}

void Runtime::move_to_date(MonthView& view, basic::Date date) {
    if (ended_ || failing_)
        return;
    view.value = date;
}

void Runtime::move_to_row(Grid& grid, int row) {
    if (ended_ || failing_)
        return;
    grid.select_row(row);
}

void Runtime::close(Screen& screen) {
    run([&] {
        if (screen.on_close())
            screen.unload();
    });
}

void Runtime::poll_clock() {
    const basic::Date moment = clock_.moment();
    ++depth_; // What a tick unloads stays until the walk is over.
    for (Screen* screen : screens()) {
        for (Control* control : screen->controls()) {
            auto* timer = dynamic_cast<Timer*>(control);
            if (!timer)
                continue;
            if (!timer->enabled) {
                timer->running_ = false;
                continue;
            }
            constexpr double minutes_a_day = 24 * 60;
            const double passed = (moment.days - timer->period_start_.days) * minutes_a_day;
            // Half a second of grace for what doubles lose.
            const bool due = timer->running_ && passed >= timer->interval - 0.5 / 60;
            if (!timer->running_ || passed < 0 || due) {
                timer->running_ = true;
                timer->period_start_ = moment;
            }
            if (due && timer->on_timer)
                run([&] { timer->on_timer(); });
        }
    }
    if (--depth_ == 0)
        bury();
}

// --- For handlers ---

int Runtime::box(const std::string& text, const std::string& title, BoxButtons buttons) {
    settle();
    const int answer = host_.box(text, title, buttons);
    leave_if_ended();
    return answer;
}

std::string Runtime::open_file(const std::string& folder, const std::string& title,
                               const std::string& filter) {
    settle();
    std::string path = host_.open_file(folder, title, filter);
    leave_if_ended();
    return path;
}

std::string Runtime::save_file(const std::string& folder, const std::string& title,
                               const std::string& filter) {
    settle();
    std::string path = host_.save_file(folder, title, filter);
    leave_if_ended();
    return path;
}

PrintScope Runtime::ask_print(const std::string& title, bool has_selection) {
    settle();
    const PrintScope scope = host_.ask_print(title, has_selection);
    leave_if_ended();
    return scope;
}

void Runtime::choose_printer() {
    settle();
    host_.choose_printer();
    leave_if_ended();
}

std::vector<Screen*> Runtime::screens() const {
    std::vector<Screen*> loaded;
    for (const auto& screen : screens_)
        if (screen->loaded())
            loaded.push_back(screen.get());
    return loaded;
}

void Runtime::load(std::unique_ptr<Screen> screen, std::function<void()> forget) {
    Screen& loading = *screen;
    screens_.push_back(std::move(screen));
    loading.forget_ = std::move(forget);
    loading.loaded_ = true;
    host_.screen_loaded(loading);
    loading.on_load();
}

} // namespace tolva::platform
