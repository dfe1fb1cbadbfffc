#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QPointF>

namespace tolva::desktop {

/// Watches what the user's hands do, ahead of every widget, for what Qt's own events don't tell: whether a
/// move of the focus was a Tab of the user's, and whether a press is the second half of a double click whose
/// first half has already changed the window.
class InputWatch : public QObject {
  public:
    explicit InputWatch(QObject* parent = nullptr);

    /// The last key pressed was Tab or a key that moves the focus as Tab does, and nothing was clicked since.
    bool tabbed() const { return tabbed_; }

    /// The widget that was clicked last, unless a key was pressed since. It may be gone: for comparing only.
    const QObject* pressed_on() const { return pressed_on_; }

    /// A click has turned a page: another click that makes it a double click was not meant for what lies
    /// there now, and does nothing.
    void expect_second_click();

    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    bool swallows(QObject* object, QEvent* event);

    bool tabbed_ = false;
    const QObject* pressed_on_ = nullptr;
    QPointF clicked_at_;
    QElapsedTimer since_click_;
    bool expecting_ = false;
    bool swallowing_ = false;
};

} // namespace tolva::desktop
