#include "platform/tool_bar.h"

#include <algorithm>

namespace tolva::platform {

void ToolBar::press(const std::string& key, bool pressed) {
    const auto button =
        std::find_if(buttons_.begin(), buttons_.end(), [&](const Button& one) { return one.key == key; });
    if (button != buttons_.end())
        button->pressed = pressed;
}

} // namespace tolva::platform
