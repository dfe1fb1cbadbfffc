#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/clock.h"
#include "platform/controls.h"
#include "platform/grid.h"
#include "platform/host.h"
#include "platform/rich_text_box.h"
#include "platform/screen.h"
#include "platform/tab_strip.h"
#include "platform/tool_bar.h"

namespace tolva::platform {

class DocumentScreen;

/// The one place through which events reach the screens. Desktop and headless tests call the same user
/// actions below; each is one event: the handler runs, what it stored is made durable, the host shows what it
/// changed. A run-time error that no handler caught is shown in the platform's box and ends the program.
class Runtime {
  public:
    Runtime(Host& host, Clock& clock) : host_(host), clock_(clock) {}
    ~Runtime();
    Runtime(const Runtime&) = delete;
    Runtime& operator=(const Runtime&) = delete;

    Host& host() const { return host_; }
    Clock& clock() const { return clock_; }

    /// Called at the end of each event, before each modal wait and before the end: the stores' commit.
    std::function<void()> make_durable;

    // --- Events ---

    /// Runs one event. May nest: an event can arrive while a handler waits on a box or a modal screen. After
    /// the end, and while the error box stands, nothing runs.
    void run(const std::function<void()>& handler);

    /// The user moved the focus: the old control's lost-focus handler, then the new one's got-focus handler.
    void focus(Control& control);
    /// The user changed the text of a box (the whole new text), ticked a box, or chose an option.
    void edit(TextControl& control, const std::string& text);
    void tick(CheckBox& control, int value);
    void choose(OptionGroup& group, int index);
    /// The same for the button alone: it goes on, and those of its name go off.
    void choose(OptionButton& button);
    /// A key that types `character` (13 for Enter) went to a text control.
    void press_key(TextControl& control, int character);
    void double_click(TextControl& control);
    /// The user moved the caret or the selection of a rich text, or changed it at the selection: by typing (a
    /// line feed for Enter), erasing, pasting, a key for a format.
    void select(RichTextBox& box, std::size_t start, std::size_t length);
    void edit(RichTextBox& box, const std::function<void(rtf::RichText&)>& change);
    void select_tab(TabStrip& tabs, int tab);
    /// A click or an access key: the focus moves there first, so the old control loses it before the click.
    void click(Button& button);
    /// A menu entry takes no focus.
    void click(MenuEntry& entry);
    /// A click on a body row, or Enter on it; the heading (row 0) does nothing.
    void click_row(Grid& grid, int row);
    void click(ToolBar& bar, const std::string& key);
    /// The user turned to another document of a frame.
    void turn_to(DocumentScreen& document);
    void pick_date(MonthView& view, basic::Date date);
    /// The user went to another day by the arrow keys: the calendar's value follows, and nothing is clicked.
    /// For calendars whose clicks nobody listens to.
    void move_to_date(MonthView& view, basic::Date date);
    /// The user went to another body row by the arrow keys: it is the selected one, and nothing is clicked.
    void move_to_row(Grid& grid, int row);
    /// The window's own close box.
    void close(Screen& screen);

    /// Lets every ticking timer whose period has passed on the wall clock tick, once however much has passed.
    /// The desktop calls this every second or so. A clock that was set back begins a new period.
    void poll_clock();

    // --- For handlers ---

    /// Modal boxes: what is stored is durable and what changed is on show while they stand.
    int box(const std::string& text, const std::string& title, BoxButtons buttons);
    void message(const std::string& text, const std::string& title) { box(text, title, BoxButtons::ok); }
    std::string open_file(const std::string& folder, const std::string& title, const std::string& filter);
    std::string save_file(const std::string& folder, const std::string& title, const std::string& filter);
    PrintScope ask_print(const std::string& title, bool has_selection);
    void choose_printer();

    /// Ends the program at once: what is stored is made durable, no further handler runs, nothing closes.
    [[noreturn]] void end();
    bool ended() const { return ended_; }

    /// The screens that are loaded, oldest first.
    std::vector<Screen*> screens() const;

    /// Takes a screen over and loads it; `forget` is called when it unloads.
    void load(std::unique_ptr<Screen> screen, std::function<void()> forget);

  private:
    friend class Control;
    friend class Screen;

    /// Unwinds the handlers of a program that has ended; nobody but `run` catches it.
    struct Ended {};

    void move_focus(Control& control);
    /// Makes durable and shows, as told for modal waits and the end of an event.
    void settle();
    void leave_if_ended() const;
    void fail(int number, const std::string& text);
    void stop();
    void bury();

    Host& host_;
    Clock& clock_;
    std::vector<std::unique_ptr<Screen>> screens_;
    int depth_ = 0;
    bool ended_ = false;
    bool failing_ = false;
};

/// Shows long work for as long as it lives.
class LongWork {
  public:
    LongWork(Runtime& runtime, const std::string& what) : host_(runtime.host()) { host_.begin_work(what); }
    ~LongWork() { host_.end_work(); }
    LongWork(const LongWork&) = delete;
    LongWork& operator=(const LongWork&) = delete;

    /// One more piece is done.
    void step() { host_.show_work(++steps_); }

  private:
    Host& host_;
    int steps_ = 0;
};

/// The place of a screen that has one instance: touching it loads it, and after it was unloaded the next
/// touch loads it anew. The program's assembly says how it is made; until then the screen doesn't exist.
template <class T>
class Slot {
  public:
    explicit Slot(Runtime& runtime) : runtime_(runtime) {}

    std::function<std::unique_ptr<T>()> make;

    bool exists() const { return static_cast<bool>(make); }
    bool loaded() const { return screen_ != nullptr; }

    T& operator()() {
        if (!screen_) {
            auto screen = make();
            screen_ = screen.get();
            runtime_.load(std::move(screen), [this] { screen_ = nullptr; });
        }
        return *screen_;
    }
    T* operator->() { return &(*this)(); }

  private:
    Runtime& runtime_;
    T* screen_ = nullptr;
};

} // namespace tolva::platform
