#pragma once

#include <QTextEdit>
#include <functional>
#include <vector>

#include "desktop/rich_text_layout.h"
#include "rtf/rich_text.h"

namespace tolva::desktop {

/// Shows a rich text that somebody else holds. What the user does is only told; when the text has changed,
/// `show_text` brings what differs to the screen and leaves the rest alone, scroll and caret included.
class RichTextEdit : public QTextEdit {
  public:
    using Change = std::function<void(rtf::RichText&)>;

    RichTextEdit(bool editable, QWidget* parent = nullptr);

    void show_text(const rtf::RichText& text);
    /// The text that was shown is gone.
    void forget() { text_ = nullptr; }

    /// How much is to be seen at once, at least.
    void set_room(int characters, int lines);

    std::function<void(std::size_t start, std::size_t length)> on_select;
    std::function<void(const Change& change)> on_edit;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool event(QEvent* event) override;
    QMimeData* createMimeDataFromSelection() const override;
    bool canInsertFromMimeData(const QMimeData* source) const override;
    void insertFromMimeData(const QMimeData* source) override;

  private:
    struct Moment {
        rtf::Document document;
        std::size_t start, length;
    };

    void tell_selection();
    void show_selection();
    void show_changed(const rtf::Document& now);
    void edit(const Change& change, bool typing = false);
    void type(const QString& text);
    /// What goes from the caret to where the cursor would move to, or the selection where there is one.
    void erase_to(QTextCursor::MoveOperation there);
    void cut_selection();
    void go_back(std::vector<Moment>& from, std::vector<Moment>& to);
    Moment moment() const;
    void remember(Moment then);
    /// A key for a command or a format; false for any other.
    bool take_command(const QKeyEvent& event);

    bool editable_;
    int characters_ = 40;
    int lines_ = 8;
    RichTextLayout* layout_;
    const rtf::RichText* text_ = nullptr;
    /// What is on the screen.
    rtf::Document shown_;
    bool showing_ = false;
    bool editing_ = false;
    bool typing_ = false;
    std::vector<Moment> undo_, redo_;
};

} // namespace tolva::desktop
