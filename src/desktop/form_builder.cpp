#include "desktop/form_builder.h"

#include <cassert>

#include "desktop/combo_box.h"
#include "desktop/control_bindings.h"
#include "desktop/text.h"

namespace tolva::desktop {

platform::Control& FormBuilder::control(const std::string& object_name) const {
    for (platform::Control* control : screen_.controls())
        if (control->object_name() == object_name)
            return *control;
    assert(!"a form names a control that its screen lacks");
    std::abort();
}

QWidget* FormBuilder::operator()(const std::string& object_name) {
    return form_.bind_control(control(object_name))->widget();
}

QWidget* FormBuilder::box(const std::string& object_name, int characters, bool grows) {
    QWidget* const widget = (*this)(object_name);
    if (auto* combo = dynamic_cast<ComboBox*>(widget)) {
        combo->edit().set_room(characters, grows);
        combo->setSizePolicy(grows ? QSizePolicy::Expanding : QSizePolicy::Fixed, QSizePolicy::Fixed);
    } else if (auto* line = dynamic_cast<LineEdit*>(widget)) {
        line->set_room(characters, grows);
    }
    return widget;
}

QWidget* FormBuilder::lines(const std::string& object_name, int characters, int lines) {
    QWidget* const widget = (*this)(object_name);
    dynamic_cast<TextEdit&>(*widget).set_room(characters, lines);
    return widget;
}

QWidget* FormBuilder::narrow_button(const std::string& object_name) {
    QWidget* const widget = (*this)(object_name);
    dynamic_cast<PushButton&>(*widget).set_narrow(true);
    return widget;
}

QGroupBox* FormBuilder::frame(const std::string& object_name) {
    return &dynamic_cast<QGroupBox&>(*(*this)(object_name));
}

QLabel* FormBuilder::label(const QString& text, const std::string& named) {
    Binding* const binding = form_.bind_control(control(named));
    QLabel* const label = this->label(text);
    label->setBuddy(binding->widget());
    binding->add_label(label);
    return label;
}

QLabel* FormBuilder::label(const QString& text) {
    auto* const label = new QLabel(text, &form_);
    label->setTextFormat(Qt::PlainText);
    return label;
}

QGroupBox* FormBuilder::frame_titled(const QString& title) {
    return new QGroupBox(title, &form_);
}

void FormBuilder::say(const std::string& object_name, const QString& text) {
    QWidget* const widget = (*this)(object_name);
    widget->setAccessibleName(text);
    if (dynamic_cast<PushButton*>(widget))
        widget->setToolTip(text);
}

QMenuBar* FormBuilder::menu_bar() {
    if (screen_.menus().empty())
        return nullptr;
    auto* const bar = new QMenuBar(&form_);
    add_entries(*bar, screen_.menus());
    return bar;
}

void FormBuilder::add_entries(QWidget& above, const std::vector<platform::MenuEntry*>& entries) {
    for (platform::MenuEntry* entry : entries) {
        auto binding = std::make_unique<MenuBinding>(form_, *entry, above);
        if (binding->menu())
            add_entries(*binding->menu(), entry->entries());
        form_.add_binding(std::move(binding));
    }
}

void FormBuilder::leave_out(std::initializer_list<const char*> object_names) {
    for (const char* name : object_names)
        form_.leave_out(control(name));
}

} // namespace tolva::desktop
