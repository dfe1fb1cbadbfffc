#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tolva::platform {

class Screen;

/// What every part of a screen has. Controls are plain data: handlers read and set the members; nothing
/// happens but that the desktop shows, after the handler, what changed. Setting a member raises no event.
/// A control belongs to one screen and registers there under its name; controls of an array share a name and
/// have an index.
class Control {
  public:
    static constexpr int no_index = -1;

    Control(Screen& screen, std::string name, int index = no_index);
    virtual ~Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    Screen& screen() const { return screen_; }
    const std::string& name() const { return name_; }
    int index() const { return index_; }
    /// What the desktop's widget is called: the name, and for arrays "_" and the index.
    std::string object_name() const;

    bool visible = true;
    bool enabled = true;
    std::string tool_tip;

    /// The user has brought the focus here, or a handler has (`set_focus`).
    std::function<void()> on_got_focus;
    /// The focus goes to another control of the same screen. Menus and other windows don't count.
    std::function<void()> on_lost_focus;

    /// Whether the user can use it now; an action without a handler is shown but not on offer.
    virtual bool available() const { return enabled; }

    /// Moves the focus here from within a handler; the lost and got focus handlers run at once.
    void set_focus();

  private:
    Screen& screen_;
    std::string name_;
    int index_;
};

/// A fixed row of like controls under one name.
template <class T>
class ControlArray {
  public:
    ControlArray(Screen& screen, const std::string& name, int count) {
        for (int index = 0; index < count; ++index)
            items_.push_back(std::make_unique<T>(screen, name, index));
    }

    T& operator[](int index) { return *items_.at(static_cast<std::size_t>(index)); }
    const T& operator[](int index) const { return *items_.at(static_cast<std::size_t>(index)); }
    int size() const { return static_cast<int>(items_.size()); }

    auto begin() const { return items_.begin(); }
    auto end() const { return items_.end(); }

  private:
    std::vector<std::unique_ptr<T>> items_;
};

} // namespace tolva::platform
