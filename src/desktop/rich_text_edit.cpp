#include "desktop/rich_text_edit.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QMenu>
#include <QMimeData>
#include <QScreen>
#include <QScrollBar>
#include <algorithm>

#include "basic/run_time_error.h"
#include "desktop/text.h"
#include "desktop/twip_device.h"
#include "rtf/read.h"

namespace tolva::desktop {

namespace {

const QString rich_text_type = QStringLiteral("text/rtf");
constexpr std::size_t most_moments = 100;
/// Around the text, in pixels.
constexpr double inset = 6;

double screen_twip() {
    const QScreen* const screen = QGuiApplication::primaryScreen();
    return (screen ? screen->logicalDotsPerInchY() : 96) / TwipDevice::twips_an_inch;
}

template <class T>
bool begins_with(const std::vector<T>& longer, const std::vector<T>& shorter) {
    return longer.size() >= shorter.size() && std::equal(shorter.begin(), shorter.end(), longer.begin());
}

} // namespace

RichTextEdit::RichTextEdit(bool editable, QWidget* parent) : QTextEdit(parent), editable_(editable) {
    auto* const document = new QTextDocument(this);
    document->setUndoRedoEnabled(false);
    layout_ = new RichTextLayout(document, screen_twip());
    layout_->set_inset(inset);
    document->setDocumentLayout(layout_);
    show_document(*document, shown_, screen_twip());
    setDocument(document);
    // The toolkit moves the caret and selects; what changes the text is told, not done.
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setAttribute(Qt::WA_InputMethodEnabled, editable);
    setAcceptDrops(false);
    // Coming and going it would break the lines anew.
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setTabChangesFocus(!editable);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    connect(this, &QTextEdit::cursorPositionChanged, this, [this] { tell_selection(); });
    connect(this, &QTextEdit::selectionChanged, this, [this] { tell_selection(); });
}

void RichTextEdit::set_room(int characters, int lines) {
    characters_ = characters;
    lines_ = lines;
    updateGeometry();
}

QSize RichTextEdit::sizeHint() const {
    const QFontMetrics metrics = fontMetrics();
    return {characters_ * metrics.horizontalAdvance(QLatin1Char('0')) +
                verticalScrollBar()->sizeHint().width(),
            lines_ * metrics.lineSpacing()};
}

QSize RichTextEdit::minimumSizeHint() const {
    return sizeHint() / 2;
}

// --- From the text to the screen ---

void RichTextEdit::show_text(const rtf::RichText& text) {
    // What a command has done can be taken back like what was typed.
    if (text_ && !editing_ && editable_ && text.document() != shown_) {
        remember({shown_, 0, 0});
        typing_ = false;
    }
    text_ = &text;
    showing_ = true;
    show_changed(text.document());
    show_selection();
    showing_ = false;
}

void RichTextEdit::show_changed(const rtf::Document& now) {
    const auto& before = shown_.paragraphs;
    const auto& after = now.paragraphs;
    // Formats refer to fonts and colours by number, and those of a document only grow while it is edited.
    const bool same_tables = begins_with(now.fonts, shown_.fonts) &&
                             begins_with(now.colours, shown_.colours) &&
                             now.default_tab == shown_.default_tab && now.sections == shown_.sections;
    layout_->set_source(now);
    if (!same_tables) {
        show_document(*document(), now, screen_twip());
        shown_ = now;
        return;
    }
    const std::size_t shorter = std::min(before.size(), after.size());
    std::size_t ahead = 0;
    while (ahead < shorter && before[ahead] == after[ahead])
        ++ahead;
    if (ahead == before.size() && ahead == after.size())
        return;
    std::size_t behind = 0;
    while (behind < shorter - ahead && before[before.size() - 1 - behind] == after[after.size() - 1 - behind])
        ++behind;
    // At least one paragraph of each takes part.
    if (ahead + behind == shorter) {
        std::size_t& given_up = ahead > 0 ? ahead : behind;
        --given_up;
    }
    show_paragraphs(*document(), static_cast<int>(ahead), static_cast<int>(before.size() - behind - ahead),
                    now, ahead, after.size() - behind, screen_twip());
    shown_ = now;
}

void RichTextEdit::show_selection() {
    const int from = widget_position(*document(), text_->sel_start());
    const int to = widget_position(*document(), text_->sel_start() + text_->sel_length());
    QTextCursor cursor = textCursor();
    // As it is already: which end the caret is at is the user's choice.
    if (cursor.selectionStart() == from && cursor.selectionEnd() == to)
        return;
    cursor.setPosition(from);
    cursor.setPosition(to, QTextCursor::KeepAnchor);
    setTextCursor(cursor);
    ensureCursorVisible();
}

void RichTextEdit::tell_selection() {
    if (showing_ || !text_ || !on_select)
        return;
    typing_ = false;
    const QTextCursor cursor = textCursor();
    const std::size_t start = text_position(*document(), cursor.selectionStart());
    const std::size_t end = text_position(*document(), cursor.selectionEnd());
    if (start != text_->sel_start() || end - start != text_->sel_length())
        on_select(start, end - start);
}

// --- From the user to the text ---

RichTextEdit::Moment RichTextEdit::moment() const {
    return {text_->document(), text_->sel_start(), text_->sel_length()};
}

void RichTextEdit::remember(Moment then) {
    undo_.push_back(std::move(then));
    if (undo_.size() > most_moments)
        undo_.erase(undo_.begin());
    redo_.clear();
}

void RichTextEdit::edit(const Change& change, bool typing) {
    if (!editable_ || !text_ || !on_edit)
        return;
    // What is typed in one go is undone in one.
    if (!typing || !typing_)
        remember(moment());
    editing_ = true;
    on_edit(change);
    editing_ = false;
    typing_ = typing;
}

void RichTextEdit::go_back(std::vector<Moment>& from, std::vector<Moment>& to) {
    if (from.empty() || !text_ || !on_edit)
        return;
    const Moment then = std::move(from.back());
    from.pop_back();
    to.push_back(moment());
    editing_ = true;
    on_edit([&then](rtf::RichText& text) {
        text.set_document(then.document);
        text.select(then.start, then.length);
    });
    editing_ = false;
    typing_ = false;
}

void RichTextEdit::type(const QString& text) {
    edit([words = from_qt(text)](rtf::RichText& rich) { rich.set_sel_text(words); }, true);
}

void RichTextEdit::erase_to(QTextCursor::MoveOperation there) {
    QTextCursor cursor = textCursor();
    if (!cursor.hasSelection() && !cursor.movePosition(there, QTextCursor::KeepAnchor))
        return;
    const std::size_t start = text_position(*document(), cursor.selectionStart());
    const std::size_t end = text_position(*document(), cursor.selectionEnd());
    edit([start, end](rtf::RichText& text) {
        text.select(start, end - start);
        text.set_sel_text({});
    });
}

void RichTextEdit::cut_selection() {
    if (!text_ || text_->sel_length() == 0)
        return;
    copy();
    edit([](rtf::RichText& text) { text.set_sel_text({}); });
}

bool RichTextEdit::event(QEvent* event) {
    // Keys that this box has a use for are no shortcuts of the window's meanwhile.
    if (event->type() == QEvent::ShortcutOverride && editable_) {
        const auto& key = static_cast<QKeyEvent&>(*event);
        if (key.matches(QKeySequence::Cut) || key.matches(QKeySequence::Paste) ||
            key.matches(QKeySequence::Undo) || key.matches(QKeySequence::Redo)) {
            event->accept();
            return true;
        }
    }
    return QTextEdit::event(event);
}

bool RichTextEdit::take_command(const QKeyEvent& event) {
    if (event.matches(QKeySequence::Cut))
        cut_selection();
    else if (event.matches(QKeySequence::Paste))
        insertFromMimeData(QGuiApplication::clipboard()->mimeData());
    else if (event.matches(QKeySequence::Undo))
        go_back(undo_, redo_);
    else if (event.matches(QKeySequence::Redo))
        go_back(redo_, undo_);
    else if (event.matches(QKeySequence::DeleteStartOfWord))
        erase_to(QTextCursor::PreviousWord);
    else if (event.matches(QKeySequence::DeleteEndOfWord))
        erase_to(QTextCursor::NextWord);
    else if (event.matches(QKeySequence::Bold))
        edit([](rtf::RichText& text) { text.set_sel_bold(text.sel_bold() != rtf::RichText::Setting::yes); });
    else if (event.matches(QKeySequence::Italic))
        edit([](rtf::RichText& text) {
            text.set_sel_italic(text.sel_italic() != rtf::RichText::Setting::yes);
        });
    else if (event.matches(QKeySequence::Underline))
        edit([](rtf::RichText& text) {
            text.set_sel_underline(text.sel_underline() != rtf::RichText::Setting::yes);
        });
    else
        return false;
    return true;
}

void RichTextEdit::keyPressEvent(QKeyEvent* event) {
    if (!editable_) {
        QTextEdit::keyPressEvent(event);
        return;
    }
    if (take_command(*event))
        return;
    const bool with_shift = event->modifiers().testFlag(Qt::ShiftModifier);
    switch (event->key()) {
    case Qt::Key_Backspace:
        erase_to(QTextCursor::PreviousCharacter);
        return;
    case Qt::Key_Delete:
        erase_to(QTextCursor::NextCharacter);
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        type(with_shift ? QStringLiteral("\v") : QStringLiteral("\r\n"));
        return;
    case Qt::Key_Tab:
        if (event->modifiers() == Qt::NoModifier) {
            type(QStringLiteral("\t"));
            return;
        }
        break;
    default:
        break;
    }
    const QString text = event->text();
    // AltGr comes as Control and Alt together.
    const auto held = event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    const bool types = held == Qt::NoModifier || held == (Qt::ControlModifier | Qt::AltModifier);
    if (types && !text.isEmpty() && text.front().isPrint())
        type(text);
    else
        QTextEdit::keyPressEvent(event);
}

void RichTextEdit::inputMethodEvent(QInputMethodEvent* event) {
    if (editable_ && !event->commitString().isEmpty())
        type(event->commitString());
    event->accept();
}

void RichTextEdit::contextMenuEvent(QContextMenuEvent* event) {
    if (!editable_) {
        QTextEdit::contextMenuEvent(event);
        return;
    }
    const bool selected = textCursor().hasSelection();
    QMenu menu(this);
    menu.addAction(QStringLiteral("Cu&t"), this, [this] { cut_selection(); })->setEnabled(selected);
    menu.addAction(QStringLiteral("&Copy"), this, [this] { copy(); })->setEnabled(selected);
    menu.addAction(QStringLiteral("&Paste"), this,
                   [this] { insertFromMimeData(QGuiApplication::clipboard()->mimeData()); })
        ->setEnabled(canInsertFromMimeData(QGuiApplication::clipboard()->mimeData()));
    menu.addSeparator();
    menu.addAction(QStringLiteral("Select &All"), this, [this] { selectAll(); });
    menu.exec(event->globalPos());
}

// --- The clipboard ---

QMimeData* RichTextEdit::createMimeDataFromSelection() const {
    auto* const selection = new QMimeData;
    if (text_) {
        selection->setText(to_qt(text_->sel_text()));
        selection->setData(rich_text_type, QByteArray::fromStdString(text_->sel_rtf()));
    }
    return selection;
}

bool RichTextEdit::canInsertFromMimeData(const QMimeData* source) const {
    return source->hasText() || source->hasFormat(rich_text_type);
}

void RichTextEdit::insertFromMimeData(const QMimeData* source) {
    std::string rich = source->data(rich_text_type).toStdString();
    const std::string plain = from_qt(source->text());
    if (rich.empty() && rtf::is_rich_text(plain))
        rich = plain;
    edit([&](rtf::RichText& text) {
        try {
            if (!rich.empty()) {
                text.set_sel_rtf(rich);
                return;
            }
        } catch (const basic::RunTimeError&) {
            // Another program's rich text that is none: its plain text will do.
        }
        text.set_sel_text(plain);
    });
}

} // namespace tolva::desktop
