#pragma once

#include <QPlainTextEdit>
#include <functional>

namespace tolva::desktop {

/// A box of many lines. Tab leaves it; Enter begins a line.
class TextEdit : public QPlainTextEdit {
  public:
    explicit TextEdit(QWidget* parent = nullptr);

    /// How much is to be seen at once, at least; it grows with its window.
    void set_room(int characters, int lines);

    std::function<void(int character)> on_key;
    std::function<void()> on_click_over;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

  private:
    int characters_ = 30;
    int lines_ = 3;
};

} // namespace tolva::desktop
