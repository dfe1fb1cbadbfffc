#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "basic/date.h"
#include "platform/control.h"
#include "platform/host.h"

namespace tolva::platform {

/// What text boxes and combo boxes share. The text is UTF-8; a multi-line text has carriage return and line
/// feed between its lines.
class TextControl : public Control {
  public:
    using Control::Control;

    std::string text;

    /// The user pressed a key that types this character (13 for Enter). Runs ahead of the key's own effect,
    /// which for Enter in a single line is none.
    std::function<void(int character)> on_key_press;
    /// The user changed the text.
    std::function<void()> on_change;
    std::function<void()> on_double_click;
    bool strike_out = false;

    /// Characters, counted from the start of the text. Setting them goes through `select`, so that the
    /// desktop can tell a wish from a mere caret position.
    std::size_t selection_start() const { return selection_start_; }
    std::size_t selection_length() const { return selection_length_; }
    void select(std::size_t start, std::size_t length);
    void select_all();
    /// Puts the caret behind the last character.
    void caret_to_end();
    /// Counts the calls of `select`.
    unsigned selection_wishes() const { return selection_wishes_; }

  private:
    std::size_t selection_start_ = 0;
    std::size_t selection_length_ = 0;
    unsigned selection_wishes_ = 0;
};

class TextBox : public TextControl {
  public:
    enum class Kind { single_line, multi_line, password };

    TextBox(Screen& screen, std::string name, Kind kind = Kind::single_line)
        : TextControl(screen, std::move(name)), kind_(kind) {}
    TextBox(Screen& screen, std::string name, int index)
        : TextControl(screen, std::move(name), index), kind_(Kind::single_line) {}

    Kind kind() const { return kind_; }

  private:
    Kind kind_;
};

/// A text box with a list to choose from; free text is welcome where nothing else is told.
class ComboBox : public TextControl {
  public:
    enum class Text { free, from_list };

    ComboBox(Screen& screen, std::string name, Text allowed_ = Text::free)
        : TextControl(screen, std::move(name)), allowed(allowed_) {}

    const Text allowed;

    const std::vector<std::string>& items() const { return items_; }
    void add_item(std::string item) { items_.push_back(std::move(item)); }
    /// The entry that the text names, or -1.
    int list_index() const;
    /// Takes the entry's text.
    void set_list_index(std::size_t index) { text = items_.at(index); }

  private:
    std::vector<std::string> items_;
};

class Label : public Control {
  public:
    Label(Screen& screen, std::string name, int index) : Control(screen, std::move(name), index) {}
    Label(Screen& screen, std::string name, std::string caption_, int index = no_index)
        : Control(screen, std::move(name), index), caption(std::move(caption_)) {}

    std::string caption;
};

class Frame : public Control {
  public:
    Frame(Screen& screen, std::string name, std::string caption_)
        : Control(screen, std::move(name)), caption(std::move(caption_)) {}
    Frame(Screen& screen, std::string name, int index) : Control(screen, std::move(name), index) {}

    std::string caption;
};

class CheckBox : public Control {
  public:
    CheckBox(Screen& screen, std::string name, std::string caption_)
        : Control(screen, std::move(name)), caption(std::move(caption_)) {}
    CheckBox(Screen& screen, std::string name, int index) : Control(screen, std::move(name), index) {}

    std::string caption;
    /// 0 clear, 1 ticked.
    int value = 0;
    std::function<void()> on_click;
};

class OptionButton : public Control {
  public:
    OptionButton(Screen& screen, std::string name, int index) : Control(screen, std::move(name), index) {}

    std::string caption;
    bool value = false;
};

/// Option buttons of which at most one is on.
class OptionGroup : public ControlArray<OptionButton> {
  public:
    using ControlArray::ControlArray;
    /// An index that the group lacks leaves no button on.
    void choose(int index);
};

class Button : public Control {
  public:
    Button(Screen& screen, std::string name, std::string caption_)
        : Control(screen, std::move(name)), caption(std::move(caption_)) {}
    Button(Screen& screen, std::string name, int index) : Control(screen, std::move(name), index) {}

    bool available() const override { return enabled && on_click; }

    /// "&" ahead of the access key, "&&" for an ampersand.
    std::string caption;
    std::function<void()> on_click;
};

/// An entry of the menu bar or of another entry's menu.
class MenuEntry : public Control {
  public:
    MenuEntry(Screen& screen, std::string name, std::string caption_);
    MenuEntry(MenuEntry& parent, std::string name, std::string caption_);

    /// An entry with a menu of its own is on offer; one without needs a handler.
    bool available() const override { return enabled && (on_click || !entries_.empty()); }

    std::string caption;
    std::function<void()> on_click;

    const MenuEntry* parent() const { return parent_; }
    const std::vector<MenuEntry*>& entries() const { return entries_; }

  private:
    MenuEntry* parent_ = nullptr;
    std::vector<MenuEntry*> entries_;
};

/// A month calendar that gives the day that is clicked on.
class MonthView : public Control {
  public:
    using Control::Control;

    basic::Date value;
    /// The user clicked on a day; `value` already holds it.
    std::function<void(basic::Date)> on_date_click;
};

/// Ticks once a period while enabled, under modal boxes too; see Runtime::poll_clock.
class Timer : public Control {
  public:
    Timer(Screen& screen, std::string name) : Control(screen, std::move(name)) { enabled = false; }

    /// In minutes.
    int interval = 1;
    /// Kept as the screens have it; the wall clock decides when a period has passed.
    bool timerloop = false;
    std::function<void()> on_timer;

  private:
    friend class Runtime;
    bool running_ = false;
    basic::Date period_start_;
};

/// The boxes that ask for a file and for a printer.
class CommonDialog : public Control {
  public:
    using Control::Control;

    std::string initial_folder;
    std::string title;
    std::string filter;
    /// The file chosen last; empty after a cancelled box.
    std::string file_name;

    void show_open();
    void show_save();
    PrintScope show_print(bool has_selection);
};

} // namespace tolva::platform
