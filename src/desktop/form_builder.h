#pragma once

#include <QBoxLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QMenuBar>
#include <initializer_list>
#include <string>

#include "desktop/form.h"
#include "desktop/line_edit.h"
#include "desktop/text_edit.h"

namespace tolva::desktop {

/// Lays a form out. Controls are called by their object names (the name, for arrays "_" and the index); the
/// kind of widget, its texts and its state come from the control. The order of the calls is the order in
/// which Tab walks.
class FormBuilder {
  public:
    FormBuilder(Form& form, platform::Screen& screen) : form_(form), screen_(screen) {}

    Form& form() const { return form_; }
    platform::Screen& screen() const { return screen_; }
    platform::Control& control(const std::string& object_name) const;

    /// The widget of a control.
    QWidget* operator()(const std::string& object_name);
    /// A text or combo box that shows so many characters; it grows, or keeps its width.
    QWidget* box(const std::string& object_name, int characters, bool grows);
    QWidget* lines(const std::string& object_name, int characters, int lines);
    /// A button no wider than its caption.
    QWidget* narrow_button(const std::string& object_name);
    QGroupBox* frame(const std::string& object_name);

    /// A decorative label that names `named` and comes and goes with it.
    QLabel* label(const QString& text, const std::string& named);
    /// A decorative label alone.
    QLabel* label(const QString& text);
    /// A decorative frame.
    QGroupBox* frame_titled(const QString& title);
    /// What a screen reader says of a control that no label names. A bare button says it also to the mouse.
    void say(const std::string& object_name, const QString& text);

    /// The menu bar with all entries; null when the screen has none.
    QMenuBar* menu_bar();

    void leave_out(std::initializer_list<const char*> object_names);

  private:
    void add_entries(QWidget& above, const std::vector<platform::MenuEntry*>& entries);

    Form& form_;
    platform::Screen& screen_;
};

} // namespace tolva::desktop
