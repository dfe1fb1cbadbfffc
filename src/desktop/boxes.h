#pragma once

#include <QElapsedTimer>
#include <QMessageBox>
#include <chrono>
#include <string>

#include "platform/host.h"

namespace tolva::desktop {

/// One of the program's boxes. A box that the clock raised appears under the hands of somebody who is busy
/// with something else: until no key was pressed for a while it takes neither key nor click, and no button of
/// it waits for an Enter.
class Box : public QMessageBox {
  public:
    Box(QWidget* parent, const std::string& text, const std::string& title, platform::BoxButtons buttons);

    /// Ahead of `ask`, for a box that the clock raised.
    void keep_from_haste(std::chrono::milliseconds quiet);

    /// 1 for OK, 2 for Cancel and for closing it.
    int ask();

    bool eventFilter(QObject* object, QEvent* event) override;

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    QAbstractButton* add_button(const char* text, QMessageBox::ButtonRole role);
    bool hasty();

    QAbstractButton* ok_;
    std::chrono::milliseconds quiet_{0};
    QElapsedTimer since_key_;
};

/// Shows the platform's box for a failure that no routine handles.
void show_error_box(QWidget* parent, int number, const std::string& text);

} // namespace tolva::desktop
