#include "platform/screen.h"

#include "platform/runtime.h"

namespace tolva::platform {

Screen::Screen(Runtime& runtime, std::string name, std::string caption_)
    : caption(std::move(caption_)), runtime_(runtime), name_(std::move(name)) {}

Control* Screen::find(const std::string& name, int index) const {
    for (Control* control : controls_)
        if (control->name() == name && control->index() == index)
            return control;
    return nullptr;
}

void Screen::show(ShowMode mode) {
    visible_ = true;
    runtime_.host().screen_shown(*this, mode);
}

void Screen::show_modal() {
    modal_ = true;
    show();
    runtime_.settle();
    if (visible_)
        runtime_.host().wait_modal(*this);
    modal_ = false;
    runtime_.leave_if_ended();
}

void Screen::hide() {
    if (!visible_)
        return;
    visible_ = false;
    runtime_.host().screen_hidden(*this);
}

void Screen::unload() {
    if (!loaded_ || unloading_)
        return;
    unloading_ = true;
    on_unload();
    hide();
    loaded_ = false;
    if (forget_)
        forget_();
    runtime_.host().screen_unloaded(*this);
}

} // namespace tolva::platform
