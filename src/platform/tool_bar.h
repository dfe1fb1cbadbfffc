#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/control.h"

namespace tolva::platform {

/// A row of small buttons, each with a picture of what its key says. The key is the tool tip too.
class ToolBar : public Control {
  public:
    struct Button {
        std::string key;
        /// Whether it shows a state, and stays down while that is on.
        bool holds = false;
        bool separator_behind = false;
        bool pressed = false;
    };

    ToolBar(Screen& screen, std::string name, std::vector<Button> buttons)
        : Control(screen, std::move(name)), buttons_(std::move(buttons)) {}

    const std::vector<Button>& buttons() const { return buttons_; }
    void press(const std::string& key, bool pressed);

    bool available() const override { return enabled && on_click; }
    std::function<void(const std::string& key)> on_click;

  private:
    std::vector<Button> buttons_;
};

/// A line at the foot of a window: a text, then the date and the time, which the desktop keeps.
class StatusBar : public Control {
  public:
    StatusBar(Screen& screen, std::string name, std::string text_)
        : Control(screen, std::move(name)), text(std::move(text_)) {}

    std::string text;
};

} // namespace tolva::platform
