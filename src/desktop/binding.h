#pragma once

#include <QLabel>
#include <QWidget>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/control.h"

namespace tolva::desktop {

class Form;

/// Ties one control to its widget, both ways: what the user does goes to the runtime as a user action, and
/// `refresh` brings to the widget what handlers changed. It remembers what was last shown and touches nothing
/// else, so that caret, undo and scroll of everything else stay.
class Binding {
  public:
    Binding(Form& form, platform::Control& control);
    virtual ~Binding() = default;
    Binding(const Binding&) = delete;
    Binding& operator=(const Binding&) = delete;

    platform::Control& control() const { return control_; }
    /// Null for what isn't a widget: an entry of a menu.
    virtual QWidget* widget() const = 0;

    void refresh();

    /// A decorative label that comes and goes with the control.
    void add_label(QLabel* label) { labels_.push_back(label); }

    /// The widget got the focus; `by_mouse` while the button that brought it is still down.
    virtual void focus_came(bool by_mouse) { static_cast<void>(by_mouse); }
    virtual void focus_went() {}

  protected:
    Form& form() const { return form_; }
    virtual void show_visible(bool visible);
    virtual void show_available(bool available);
    virtual void show_tool_tip(const QString& tip);
    /// What the kind of control has beyond that.
    virtual void show_changes() = 0;

  private:
    Form& form_;
    platform::Control& control_;
    std::vector<QLabel*> labels_;
    std::optional<bool> visible_;
    std::optional<bool> available_;
    std::optional<std::string> tool_tip_;
};

/// Makes the widget that a control of this kind has, as a child of the form, and its binding. Null for kinds
/// that nothing on the screen stands for: a timer, a dialog box. Entries of menus come with their menu bar.
std::unique_ptr<Binding> bind(Form& form, platform::Control& control);

} // namespace tolva::desktop
