#pragma once

#include <QPushButton>

namespace tolva::desktop {

/// A button that never becomes a window's default by having the focus. Enter presses it as Space does, and
/// its access key acts at once, so that no key typed after it goes astray.
class PushButton : public QPushButton {
  public:
    explicit PushButton(QWidget* parent = nullptr);
    explicit PushButton(const QString& text, QWidget* parent = nullptr);

    /// As narrow as its caption allows, for a button that stands beside a field.
    void set_narrow(bool narrow);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    bool narrow_ = false;
};

} // namespace tolva::desktop
