#include "desktop/input_watch.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyleHints>
#include <QWindow>
#include <utility>

namespace tolva::desktop {

InputWatch::InputWatch(QObject* parent) : QObject(parent) {
    QCoreApplication::instance()->installEventFilter(this);
}

void InputWatch::expect_second_click() {
    expecting_ = true;
    since_click_.start();
}

bool InputWatch::eventFilter(QObject* object, QEvent* event) {
    switch (event->type()) {
    case QEvent::KeyPress:
        switch (static_cast<QKeyEvent*>(event)->key()) {
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
        case Qt::Key_Left:
        case Qt::Key_Right:
        case Qt::Key_Up:
        case Qt::Key_Down:
            tabbed_ = true;
            break;
        default:
            tabbed_ = false;
        }
        pressed_on_ = nullptr;
        break;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
        if (swallows(object, event))
            return true;
        if (event->type() != QEvent::MouseButtonRelease) {
            tabbed_ = false;
            if (object->isWidgetType())
                pressed_on_ = object;
        }
        break;
    default:
        break;
    }
    return false;
}

bool InputWatch::swallows(QObject* object, QEvent* event) {
    // The system's events reach the window first and its widgets after that.
    if (!object->isWindowType())
        return false;
    const QPointF place = static_cast<QMouseEvent*>(event)->globalPosition();
    if (event->type() == QEvent::MouseButtonRelease) {
        if (std::exchange(swallowing_, false))
            return true;
        clicked_at_ = place;
        expecting_ = false;
        return false;
    }
    if (!expecting_)
        return swallowing_;
    const bool second =
        since_click_.elapsed() < QGuiApplication::styleHints()->mouseDoubleClickInterval() &&
        (place - clicked_at_).manhattanLength() <= QGuiApplication::styleHints()->mouseDoubleClickDistance();
    if (event->type() == QEvent::MouseButtonDblClick || !second)
        expecting_ = false;
    swallowing_ = second;
    return second;
}

} // namespace tolva::desktop
