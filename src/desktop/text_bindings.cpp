#include "desktop/text_bindings.h"

#include "basic/text.h"
#include "desktop/form.h"
#include "desktop/text.h"

namespace tolva::desktop {

namespace {

/// The whole text is selected as the keys End and Shift+Home do it: the caret stands at the start, so that
/// the beginning of a long text is in sight.
void select_in(LineEdit& edit, int start, int length, bool whole) {
    if (length == 0)
        edit.setCursorPosition(start);
    else if (whole)
        edit.setSelection(length, -length);
    else
        edit.setSelection(start, length);
}

} // namespace

// --- What all text has ---

void TextBinding::show_changes() {
    if (shown_text_ != text_.text) {
        shown_text_ = text_.text;
        put_text(text_.text);
    }
    if (shown_strike_out_ != text_.strike_out) {
        shown_strike_out_ = text_.strike_out;
        QFont font = widget()->font();
        font.setStrikeOut(text_.strike_out);
        widget()->setFont(font);
    }
    if (wishes_met_ == text_.selection_wishes() || clicking_)
        return;
    wishes_met_ = text_.selection_wishes();
    const std::size_t end = text_.selection_start() + text_.selection_length();
    const int from = widget_position(text_.text, text_.selection_start(), many_lines());
    const int to = widget_position(text_.text, end, many_lines());
    put_selection(from, to - from, from == 0 && end == basic::length(text_.text));
}

void TextBinding::user_typed(int character) {
    form().act([&](platform::Runtime& runtime) { runtime.press_key(text_, character); });
}

void TextBinding::user_edited(const std::string& text) {
    if (form().updating())
        return;
    shown_text_ = text;
    form().act([&](platform::Runtime& runtime) { runtime.edit(text_, text); });
}

void TextBinding::user_double_clicked() {
    if (text_.on_double_click)
        form().act([this](platform::Runtime& runtime) { runtime.double_click(text_); });
}

void TextBinding::click_over() {
    if (!clicking_)
        return;
    clicking_ = false;
    if (!form().platform_screen())
        return;
    if (has_selection())
        wishes_met_ = text_.selection_wishes();
    else
        form().change_widgets([this] { show_changes(); });
}

// --- One line ---

LineBinding::LineBinding(Form& form, platform::TextBox& control)
    : TextBinding(form, control), edit_(new LineEdit(&form)) {
    if (control.kind() == platform::TextBox::Kind::password) {
        edit_->setEchoMode(QLineEdit::Password);
        edit_->setStyleSheet(QStringLiteral("lineedit-password-character: 42")); // an asterisk
    }
    edit_->on_key = [this](int character) { user_typed(character); };
    edit_->on_click_over = [this] { click_over(); };
    edit_->on_double_click = [this] { user_double_clicked(); };
    QObject::connect(edit_, &QLineEdit::textChanged, edit_,
                     [this](const QString& text) { user_edited(from_qt(text)); });
}

void LineBinding::put_text(const std::string& text) {
    edit_->setText(to_qt(text));
    edit_->setCursorPosition(0);
}

void LineBinding::put_selection(int start, int length, bool whole) {
    select_in(*edit_, start, length, whole);
}

// --- Many lines ---

LinesBinding::LinesBinding(Form& form, platform::TextBox& control)
    : TextBinding(form, control), edit_(new TextEdit(&form)) {
    edit_->on_key = [this](int character) { user_typed(character); };
    edit_->on_click_over = [this] { click_over(); };
    QObject::connect(edit_, &QPlainTextEdit::textChanged, edit_, [this] {
        // The raw text: the plain one turns a hard blank into a blank.
        user_edited(from_widget_lines(edit_->document()->toRawText()));
    });
}

void LinesBinding::put_text(const std::string& text) {
    edit_->setPlainText(to_widget_lines(text));
}

void LinesBinding::put_selection(int start, int length, bool) {
    QTextCursor cursor = edit_->textCursor();
    cursor.setPosition(start);
    cursor.setPosition(start + length, QTextCursor::KeepAnchor);
    edit_->setTextCursor(cursor);
    edit_->ensureCursorVisible();
}

// --- A list to choose from ---

ComboBinding::ComboBinding(Form& form, platform::ComboBox& control)
    : TextBinding(form, control), combo_(control), box_(new ComboBox(&form)) {
    if (control.allowed == platform::ComboBox::Text::from_list)
        box_->keep_to_list();
    box_->edit().on_key = [this](int character) { user_typed(character); };
    box_->edit().on_click_over = [this] { click_over(); };
    QObject::connect(&box_->edit(), &QLineEdit::textChanged, box_,
                     [this](const QString& text) { user_edited(from_qt(text)); });
}

void ComboBinding::show_changes() {
    const auto& items = combo_.items();
    if (box_->count() < static_cast<int>(items.size())) {
        const QString text = box_->currentText();
        for (std::size_t item = static_cast<std::size_t>(box_->count()); item < items.size(); ++item)
            box_->addItem(to_qt(items[item]));
        // Adding to an empty list chooses the first entry.
        box_->setCurrentIndex(-1);
        box_->setEditText(text);
    }
    TextBinding::show_changes();
}

void ComboBinding::put_text(const std::string& text) {
    box_->setCurrentIndex(box_->findText(to_qt(text), Qt::MatchExactly));
    box_->setEditText(to_qt(text));
    box_->edit().setCursorPosition(0);
}

void ComboBinding::put_selection(int start, int length, bool whole) {
    select_in(box_->edit(), start, length, whole);
}

} // namespace tolva::desktop
