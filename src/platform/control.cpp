#include "platform/control.h"

#include "platform/runtime.h"

namespace tolva::platform {

Control::Control(Screen& screen, std::string name, int index)
    : screen_(screen), name_(std::move(name)), index_(index) {
    screen_.controls_.push_back(this);
}

std::string Control::object_name() const {
    return index_ == no_index ? name_ : name_ + "_" + std::to_string(index_);
}

void Control::set_focus() {
    screen_.runtime().move_focus(*this);
}

} // namespace tolva::platform
