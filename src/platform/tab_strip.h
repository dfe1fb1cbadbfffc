#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/control.h"

namespace tolva::platform {

/// A row of tabs; the pages behind them are frames that the screen shows and hides. Indices count from 1.
class TabStrip : public Control {
  public:
    TabStrip(Screen& screen, std::string name, std::vector<std::string> tabs)
        : Control(screen, std::move(name)), tabs_(std::move(tabs)) {}

    const std::vector<std::string>& tabs() const { return tabs_; }

    int selected = 1;
    /// The user chose a tab; `selected` already names it.
    std::function<void()> on_click;

  private:
    std::vector<std::string> tabs_;
};

} // namespace tolva::platform
