#pragma once

#include <QAbstractItemView>
#include <QApplication>
#include <QCalendarWidget>
#include <QPointer>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include <QWindow>
#include <functional>
#include <stdexcept>

namespace tolva::desktop {

/// A user's hands: keys go to the window that has the focus, clicks to what lies under the mouse, both by the
/// road that the system's own events take.

inline QWindow* window_with_focus() {
    return QGuiApplication::focusWindow();
}

inline void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    if (QWindow* const window = window_with_focus())
        QTest::keyClick(window, key, modifiers);
}

inline void type(const QString& text) {
    for (const QChar character : text)
        if (QWindow* const window = window_with_focus())
            QTest::keyClick(window, character.toLatin1());
}

inline QPoint in_window(const QWidget* widget, QPoint point) {
    return widget->mapTo(widget->window(), point);
}

inline void mouse_down(QWidget* widget, QPoint at) {
    QTest::mousePress(widget->window()->windowHandle(), Qt::LeftButton, {}, in_window(widget, at));
}

inline void mouse_up(QWidget* widget, QPoint at) {
    QTest::mouseRelease(widget->window()->windowHandle(), Qt::LeftButton, {}, in_window(widget, at));
}

/// What goes away under the pressed button gets no release.
inline void click(QWidget* widget, QPoint at) {
    const QPointer<QWidget> pressed = widget;
    mouse_down(widget, at);
    if (pressed && pressed->isVisible())
        mouse_up(pressed, at);
}

inline void click(QWidget* widget) {
    click(widget, widget->rect().center());
}

inline void double_click(QWidget* widget) {
    QTest::mouseDClick(widget->window()->windowHandle(), Qt::LeftButton, {},
                       in_window(widget, widget->rect().center()));
}

/// Clicks on a day of the month that a calendar shows; from its last lines on, of the one behind it.
inline void click_day(QCalendarWidget* calendar, int day_of_month, int from_line = 1) {
    auto* const days = calendar->findChild<QAbstractItemView*>();
    for (int line = from_line; line < days->model()->rowCount(); ++line)
        for (int column = 0; column < days->model()->columnCount(); ++column) {
            const QModelIndex index = days->model()->index(line, column);
            const bool of_the_month_before = line == 1 && day_of_month > 20;
            if (index.data().toInt() != day_of_month || of_the_month_before)
                continue;
            click(days->viewport(), days->visualRect(index).center());
            return;
        }
    throw std::runtime_error("the calendar shows no such day");
}

/// Lets what is on its way arrive.
inline void settle() {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

/// Waits until something is so; false when it takes too long.
inline bool wait_until(const std::function<bool()>& so) {
    return QTest::qWaitFor(so, 5000);
}

/// A program that has ended lets no event loop run any more, until the application runs anew.
inline void forget_an_earlier_end() {
    QTimer::singleShot(0, QCoreApplication::instance(), &QCoreApplication::quit);
    QCoreApplication::exec();
}

} // namespace tolva::desktop
