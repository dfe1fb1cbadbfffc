#include "desktop/boxes.h"

#include <QApplication>
#include <QKeyEvent>

#include "desktop/push_button.h"
#include "desktop/text.h"

namespace tolva::desktop {

namespace {

constexpr const char* program_name = "TOLVA";

} // namespace

Box::Box(QWidget* parent, const std::string& text, const std::string& title, platform::BoxButtons buttons)
    : QMessageBox(parent) {
    setObjectName(QStringLiteral("box"));
    setWindowModality(Qt::ApplicationModal);
    setTextFormat(Qt::PlainText);
    setText(to_qt(text));
    setWindowTitle(to_qt(title.empty() ? program_name : title));
    ok_ = add_button("OK", QMessageBox::AcceptRole);
    if (buttons == platform::BoxButtons::ok_cancel)
        setEscapeButton(add_button("Cancel", QMessageBox::RejectRole));
    else
        setEscapeButton(ok_);
    setDefaultButton(static_cast<QPushButton*>(ok_));
}

QAbstractButton* Box::add_button(const char* text, QMessageBox::ButtonRole role) {
    auto* const button = new PushButton(QString::fromUtf8(text), this);
    addButton(button, role);
    button->setAutoDefault(false);
    return button;
}

void Box::keep_from_haste(std::chrono::milliseconds quiet) {
    quiet_ = quiet;
    // The keyboard begins at the box itself, and Tab leads to the buttons.
    setFocusPolicy(Qt::StrongFocus);
}

int Box::ask() {
    if (quiet_.count() > 0) {
        since_key_.start();
        QCoreApplication::instance()->installEventFilter(this);
    }
    exec();
    return clickedButton() == ok_ ? 1 : 2;
}

void Box::showEvent(QShowEvent* event) {
    QMessageBox::showEvent(event);
    if (quiet_.count() == 0)
        return;
    // Coming up, a message box makes a button its default and hands it the focus.
    for (QAbstractButton* button : buttons())
        static_cast<QPushButton*>(button)->setDefault(false);
    setFocus(Qt::OtherFocusReason);
}

/// Whether the hands are still at what they did when the box came up.
bool Box::hasty() {
    return since_key_.elapsed() < quiet_.count();
}

bool Box::eventFilter(QObject* object, QEvent* event) {
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::ShortcutOverride:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
        break;
    case QEvent::Close:
        if (object == this && hasty()) {
            event->ignore();
            return true;
        }
        return false;
    default:
        return false;
    }
    if (!hasty())
        return false;
    // Somebody who types on hasn't seen the box yet.
    if (event->type() == QEvent::KeyPress)
        since_key_.restart();
    return true;
}

void show_error_box(QWidget* parent, int number, const std::string& text) {
    Box box(parent, "Run-time error '" + std::to_string(number) + "':\n\n" + text, program_name,
            platform::BoxButtons::ok);
    box.setIcon(QMessageBox::Critical);
    box.ask();
}

} // namespace tolva::desktop
