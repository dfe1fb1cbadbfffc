#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/control.h"

namespace tolva::platform {

class MenuEntry;
class Runtime;

/// Where a window is on the desk, in twips.
struct WindowPlace {
    int left = 0, top = 0, width = 0, height = 0;

    friend bool operator==(const WindowPlace&, const WindowPlace&) = default;
};

enum class ShowMode {
    activate,      ///< comes up in front and takes the focus
    without_focus, ///< comes up and draws attention, but what is being typed elsewhere goes on there
};

/// One window's logic: its controls and its handlers. The runtime owns it from loading to unloading; see
/// `Slot` for how the single instances come to be. Members that are controls register themselves in the order
/// in which they are declared.
class Screen {
  public:
    Screen(Runtime& runtime, std::string name, std::string caption);
    virtual ~Screen() = default;
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    const std::string& name() const { return name_; }
    Runtime& runtime() const { return runtime_; }

    std::string caption;

    const std::vector<Control*>& controls() const { return controls_; }
    /// The menu bar's entries.
    const std::vector<MenuEntry*>& menus() const { return menus_; }
    /// The control of that name (and index), or null.
    Control* find(const std::string& name, int index = Control::no_index) const;

    bool loaded() const { return loaded_; }
    bool visible() const { return visible_; }
    /// Whether the window is on show as a modal one.
    bool modal() const { return modal_; }

    virtual void show(ShowMode mode = ShowMode::activate);
    /// Shows it and waits inside the caller's handler until it is hidden or unloaded.
    void show_modal();
    virtual void hide();
    /// Runs `on_unload`, hides the window and marks the screen as gone; the object lives until the handlers
    /// on the stack have returned. A second call does nothing.
    virtual void unload();

    /// Runs once, when the screen is first touched.
    virtual void on_load() {}
    /// Runs when the user closes the window; false keeps the screen loaded.
    virtual bool on_close() { return true; }
    /// Runs on every way of unloading: by code and by the window's own close box.
    virtual void on_unload() {}

    /// Where the window comes up; without it, where the desktop puts it. Follows what the user does with it,
    /// but keeps the last place while it is minimised.
    std::optional<WindowPlace> place;
    bool minimised = false;

    /// Which control has, or will have when the window is in front, the focus.
    Control* active_control = nullptr;

  private:
    friend class Control;
    friend class MenuEntry;
    friend class Runtime;

    Runtime& runtime_;
    std::string name_;
    std::vector<Control*> controls_;
    std::vector<MenuEntry*> menus_;
    bool loaded_ = false;
    bool unloading_ = false;
    bool visible_ = false;
    bool modal_ = false;
    /// Tells the slot that held the screen to forget it.
    std::function<void()> forget_;
};

} // namespace tolva::platform
