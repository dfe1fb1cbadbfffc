#pragma once

#include <QElapsedTimer>
#include <QLabel>
#include <QWidget>
#include <chrono>
#include <string>

namespace tolva::desktop {

/// The sign of long work: what is being done and how far it is. It comes up when the work takes its time,
/// keeps clicks and keys from the other windows, and can't be closed.
class WorkWindow : public QWidget {
  public:
    WorkWindow(QWidget* behind, const std::string& what);

    void show_steps(int steps);
    /// Nothing for work that was over quickly.
    static constexpr std::chrono::milliseconds patience{400};

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    QString what_;
    QLabel* text_;
    QElapsedTimer since_;
};

} // namespace tolva::desktop
