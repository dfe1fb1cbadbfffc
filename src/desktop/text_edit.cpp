#include "desktop/text_edit.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QScrollBar>
#include <cmath>

#include "desktop/line_edit.h"

namespace tolva::desktop {

TextEdit::TextEdit(QWidget* parent) : QPlainTextEdit(parent) {
    setTabChangesFocus(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void TextEdit::set_room(int characters, int lines) {
    characters_ = characters;
    lines_ = lines;
    updateGeometry();
}

QSize TextEdit::sizeHint() const {
    const QFontMetrics metrics = fontMetrics();
    const int edges = 2 * (frameWidth() + static_cast<int>(std::ceil(document()->documentMargin())));
    return {characters_ * metrics.horizontalAdvance(QLatin1Char('0')) + edges +
                verticalScrollBar()->sizeHint().width(),
            lines_ * metrics.lineSpacing() + edges};
}

QSize TextEdit::minimumSizeHint() const {
    return sizeHint();
}

void TextEdit::keyPressEvent(QKeyEvent* event) {
    const int character = typed_character(*event);
    if (character != 0 && on_key)
        on_key(character);
    QPlainTextEdit::keyPressEvent(event);
}

void TextEdit::mouseReleaseEvent(QMouseEvent* event) {
    QPlainTextEdit::mouseReleaseEvent(event);
    if (on_click_over)
        on_click_over();
}

void TextEdit::contextMenuEvent(QContextMenuEvent* event) {
    if (on_click_over)
        on_click_over();
    QPlainTextEdit::contextMenuEvent(event);
}

} // namespace tolva::desktop
