#include "desktop/binding.h"

#include <QTextDocument>

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
        // Where the screen has none to begin with, the form may have put one of its own.
        if (tool_tip_ || !control_.tool_tip.empty())
            show_tool_tip(to_qt(control_.tool_tip));
        tool_tip_ = control_.tool_tip;
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
    // What somebody typed is shown as it is, whatever it looks like.
    widget()->setToolTip(Qt::mightBeRichText(tip) ? QLatin1String("<p>") + tip.toHtmlEscaped() : tip);
}

} // namespace tolva::desktop
