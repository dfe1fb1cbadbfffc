#pragma once

#include "desktop/binding.h"
#include "desktop/combo_box.h"
#include "desktop/line_edit.h"
#include "desktop/text_edit.h"
#include "platform/controls.h"

namespace tolva::desktop {

/// What text boxes and combo boxes share: the text, and the wishes for a selection. A wish that comes with
/// the mouse click that brought the focus waits until the click has placed the caret; a part of the text that
/// the click dragged over stays selected instead.
class TextBinding : public Binding {
  public:
    TextBinding(Form& form, platform::TextControl& control) : Binding(form, control), text_(control) {}

    void focus_came(bool by_mouse) override { clicking_ = by_mouse; }
    void focus_went() override { clicking_ = false; }

  protected:
    void show_changes() override;

    virtual void put_text(const std::string& text) = 0;
    /// Positions in the widget's own counting.
    virtual void put_selection(int start, int length, bool whole) = 0;
    virtual bool has_selection() const = 0;
    /// Whether the widget's lines end otherwise than the control's.
    virtual bool many_lines() const { return false; }

    void user_typed(int character);
    void user_edited(const std::string& text);
    void user_double_clicked();
    void click_over();

    platform::TextControl& text_control() const { return text_; }

  private:
    platform::TextControl& text_;
    std::optional<std::string> shown_text_;
    bool shown_strike_out_ = false;
    unsigned wishes_met_ = 0;
    bool clicking_ = false;
};

class LineBinding final : public TextBinding {
  public:
    LineBinding(Form& form, platform::TextBox& control);
    QWidget* widget() const override { return edit_; }

  protected:
    void put_text(const std::string& text) override;
    void put_selection(int start, int length, bool whole) override;
    bool has_selection() const override { return edit_->hasSelectedText(); }

  private:
    LineEdit* edit_;
};

class LinesBinding final : public TextBinding {
  public:
    LinesBinding(Form& form, platform::TextBox& control);
    QWidget* widget() const override { return edit_; }

  protected:
    void put_text(const std::string& text) override;
    void put_selection(int start, int length, bool whole) override;
    bool has_selection() const override { return edit_->textCursor().hasSelection(); }
    bool many_lines() const override { return true; }

  private:
    TextEdit* edit_;
};

class ComboBinding final : public TextBinding {
  public:
    ComboBinding(Form& form, platform::ComboBox& control);
    QWidget* widget() const override { return box_; }

  protected:
    void show_changes() override;
    void put_text(const std::string& text) override;
    void put_selection(int start, int length, bool whole) override;
    bool has_selection() const override { return box_->edit().hasSelectedText(); }

  private:
    platform::ComboBox& combo_;
    ComboBox* box_;
};

} // namespace tolva::desktop
