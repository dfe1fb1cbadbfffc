#pragma once

#include <QComboBox>

#include "desktop/line_edit.h"

namespace tolva::desktop {

/// A text box with a list to choose from. It completes nothing by itself and doesn't turn with the wheel, so
/// that scrolling over a form changes no field.
class ComboBox : public QComboBox {
  public:
    explicit ComboBox(QWidget* parent = nullptr);

    LineEdit& edit() const { return *edit_; }

    /// Takes no text but the list's: a click anywhere opens the list, and a letter goes to the next entry
    /// that begins with it.
    void keep_to_list();

    void showPopup() override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    LineEdit* edit_;
    bool keeps_to_list_ = false;
};

} // namespace tolva::desktop
