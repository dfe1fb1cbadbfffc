#pragma once

#include <QLineEdit>
#include <functional>

namespace tolva::desktop {

/// The character that a key press types (13 for both Enter keys), or 0 when it types none.
int typed_character(const QKeyEvent& event);

/// A one-line box. Getting the focus selects nothing here; who wants that says so. Its width is told in
/// characters, so that it follows the user's text size.
class LineEdit : public QLineEdit {
  public:
    explicit LineEdit(QWidget* parent = nullptr);

    /// How much text is to be seen at once. A box that grows takes what room there is beyond that.
    void set_room(int characters, bool grows);
    int room() const { return characters_; }

    /// Runs ahead of the key's own effect.
    std::function<void(int character)> on_key;
    /// A mouse click has had its effect on the caret.
    std::function<void()> on_click_over;
    std::function<void()> on_double_click;
    /// Where lines stand below each other: Enter and the arrow keys lead to the next one (1) or the one above
    /// (-1).
    std::function<void(int step)> on_step;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

  private:
    int width_for(int characters) const;

    int characters_ = 20;
};

} // namespace tolva::desktop
