#include "desktop/binding.h"

#include "desktop/text.h"

namespace tolva::desktop {

Binding::Binding(Form& form, platform::Control& control) : form_(form), control_(control) {}

void Binding::refresh() {
    if (visible_ != control_.visible) {
        visible_ = control_.visible;
        show_visible(control_.visible);
    }
    if (const bool available = control_.available(); available_ != available) {
        available_ = available;
        show_available(available);
    }
    if (tool_tip_ != control_.tool_tip) {
        tool_tip_ = control_.tool_tip;
        show_tool_tip(to_qt(control_.tool_tip));
    }
    show_changes();
}

void Binding::show_visible(bool visible) {
    widget()->setVisible(visible);
    for (QLabel* label : labels_)
        label->setVisible(visible);
}

void Binding::show_available(bool available) {
    widget()->setEnabled(available);
}

void Binding::show_tool_tip(const QString& tip) {
    // A form may have put a tip of its own on a bare button.
    if (!tip.isEmpty())
        widget()->setToolTip(tip);
}

} // namespace tolva::desktop
