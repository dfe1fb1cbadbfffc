#include "desktop/push_button.h"

#include <QKeyEvent>
#include <QShortcutEvent>
#include <algorithm>

namespace tolva::desktop {

PushButton::PushButton(QWidget* parent) : PushButton(QString(), parent) {}

PushButton::PushButton(const QString& text, QWidget* parent) : QPushButton(text, parent) {
    setAutoDefault(false);
    setFocusPolicy(Qt::StrongFocus);
}

void PushButton::set_narrow(bool narrow) {
    narrow_ = narrow;
    setSizePolicy(narrow ? QSizePolicy::Fixed : QSizePolicy::Minimum, QSizePolicy::Fixed);
    updateGeometry();
}

QSize PushButton::sizeHint() const {
    const QSize usual = QPushButton::sizeHint();
    if (!narrow_)
        return usual;
    const int text = fontMetrics().size(Qt::TextShowMnemonic, this->text()).width();
    return {std::max(text + 2 * fontMetrics().horizontalAdvance(QLatin1Char('x')), usual.height()),
            usual.height()};
}

bool PushButton::event(QEvent* event) {
    if (event->type() == QEvent::Shortcut) {
        if (!static_cast<QShortcutEvent*>(event)->isAmbiguous() && isVisible() && isEnabled()) {
            setFocus(Qt::ShortcutFocusReason);
            click();
            return true;
        }
    }
    return QPushButton::event(event);
}

void PushButton::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!enter) {
        QPushButton::keyPressEvent(event);
        return;
    }
    // A key held down since the window before this one presses nothing here.
    if (!event->isAutoRepeat())
        click();
    event->accept();
}

} // namespace tolva::desktop
