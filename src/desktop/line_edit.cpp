#include "desktop/line_edit.h"

#include <QContextMenuEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QStyleOptionFrame>
#include <QValidator>
#include <algorithm>

namespace tolva::desktop {

int typed_character(const QKeyEvent& event) {
    constexpr int enter_key = 13;
    if (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter)
        return enter_key;
    const auto points = event.text().toUcs4();
    return points.isEmpty() ? 0 : static_cast<int>(points.first());
}

namespace {

/// Which way along a column of lines a key leads; 0 for all others.
int step_of(const QKeyEvent& event) {
    if (event.modifiers() & ~Qt::KeypadModifier)
        return 0;
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Down:
        return 1;
    case Qt::Key_Up:
        return -1;
    default:
        return 0;
    }
}

/// One line stays one: line ends that are pasted with a text become blanks, and those behind it go.
class OneLine : public QValidator {
  public:
    using QValidator::QValidator;

    State validate(QString& text, int& caret) const override {
        qsizetype end = text.size();
        while (end > 0 && is_line_end(text[end - 1]))
            --end;
        text.truncate(end);
        const QString ahead = joined(text.left(caret));
        text = joined(text);
        caret = static_cast<int>(std::min(ahead.size(), text.size()));
        return Acceptable;
    }

  private:
    static bool is_line_end(QChar c) {
        return c == QLatin1Char('\r') || c == QLatin1Char('\n') || c == QChar::LineSeparator ||
               c == QChar::ParagraphSeparator;
    }
    static QString joined(QString text) {
        text.replace(QLatin1String("\r\n"), QLatin1String(" "));
        for (QChar& c : text)
            if (is_line_end(c))
                c = QLatin1Char(' ');
        return text;
    }
};

} // namespace

LineEdit::LineEdit(QWidget* parent) : QLineEdit(parent) {
    set_room(characters_, true);
    setValidator(new OneLine(this));
}

void LineEdit::set_room(int characters, bool grows) {
    characters_ = characters;
    setSizePolicy(grows ? QSizePolicy::Expanding : QSizePolicy::Fixed, QSizePolicy::Fixed);
    updateGeometry();
}

int LineEdit::width_for(int characters) const {
    // Digits and capitals are what the narrow boxes hold: dates, telephones, states.
    const int text = characters * fontMetrics().horizontalAdvance(QLatin1Char('0'));
    constexpr int air_beside_text = 2; // what a line edit keeps free on each side of its text
    QStyleOptionFrame option;
    initStyleOption(&option);
    const QMargins margins = textMargins();
    const QSize content(text + 2 * air_beside_text + margins.left() + margins.right() + 1,
                        fontMetrics().height());
    return style()->sizeFromContents(QStyle::CT_LineEdit, &option, content, this).width();
}

QSize LineEdit::sizeHint() const {
    return {width_for(characters_), QLineEdit::sizeHint().height()};
}

QSize LineEdit::minimumSizeHint() const {
    const bool grows = sizePolicy().horizontalPolicy() == QSizePolicy::Expanding;
    return {width_for(grows ? std::min(characters_, 8) : characters_), QLineEdit::minimumSizeHint().height()};
}

void LineEdit::focusInEvent(QFocusEvent* event) {
    // The base class selects everything when a tab or an access key brings the focus.
    const bool selects = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason ||
                         event->reason() == Qt::ShortcutFocusReason;
    QFocusEvent plain(QEvent::FocusIn, selects ? Qt::OtherFocusReason : event->reason());
    QLineEdit::focusInEvent(&plain);
}

void LineEdit::keyPressEvent(QKeyEvent* event) {
    const int character = typed_character(*event);
    if (character != 0 && on_key)
        on_key(character);
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const int step = step_of(*event);
    if (on_step && step != 0) {
        on_step(step);
        return;
    }
    QLineEdit::keyPressEvent(event);
    if (enter)
        event->accept(); // it has no effect of its own, here or in a window around
}

void LineEdit::mouseReleaseEvent(QMouseEvent* event) {
    QLineEdit::mouseReleaseEvent(event);
    if (on_click_over)
        on_click_over();
}

void LineEdit::mouseDoubleClickEvent(QMouseEvent* event) {
    QLineEdit::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton && on_double_click)
        on_double_click();
}

void LineEdit::contextMenuEvent(QContextMenuEvent* event) {
    if (on_click_over)
        on_click_over();
    QLineEdit::contextMenuEvent(event);
}

} // namespace tolva::desktop
