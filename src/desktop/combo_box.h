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

    void showPopup() override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void wheelEvent(QWheelEvent* event) override;

  private:
    LineEdit* edit_;
};

} // namespace tolva::desktop
