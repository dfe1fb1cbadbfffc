#pragma once

#include <functional>
#include <string>

#include "platform/control.h"
#include "rtf/rich_text.h"

namespace tolva::platform {

/// A box of rich text: shown, scrolled and selected in, and edited where the screen lets it.
class RichTextBox : public Control {
  public:
    enum class Kind { read_only, editable };

    RichTextBox(Screen& screen, std::string name, Kind kind)
        : Control(screen, std::move(name)), kind_(kind) {}

    Kind kind() const { return kind_; }

    const rtf::RichText& content() const { return content_; }
    /// For changing text, formats or selection; what changed is on show after the event.
    rtf::RichText& change() {
        ++revision_;
        return content_;
    }

    /// Rises with each `change`.
    unsigned revision() const { return revision_; }

    /// The user has moved the caret or the selection, or has changed something.
    std::function<void()> on_selection_change;

  private:
    Kind kind_;
    rtf::RichText content_;
    unsigned revision_ = 0;
};

} // namespace tolva::platform
