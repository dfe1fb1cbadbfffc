#pragma once

#include <QAction>
#include <QLabel>
#include <QStatusBar>
#include <QToolBar>
#include <map>

#include "desktop/binding.h"
#include "desktop/rich_text_edit.h"
#include "platform/rich_text_box.h"
#include "platform/tool_bar.h"

namespace tolva::desktop {

class RichTextBinding final : public Binding {
  public:
    RichTextBinding(Form& form, platform::RichTextBox& control);
    QWidget* widget() const override { return edit_; }

  protected:
    void show_changes() override;

  private:
    platform::RichTextBox& box_;
    RichTextEdit* edit_;
    std::optional<unsigned> revision_;
};

class ToolBarBinding final : public Binding {
  public:
    ToolBarBinding(Form& form, platform::ToolBar& control);
    QWidget* widget() const override { return view_; }

  protected:
    void show_changes() override;

  private:
    platform::ToolBar& bar_;
    QToolBar* view_;
    std::map<std::string, QAction*> actions_;
};

/// A text, then the date and the time, which it keeps itself.
class StatusBinding final : public Binding {
  public:
    StatusBinding(Form& form, platform::StatusBar& control);
    QWidget* widget() const override { return view_; }

  protected:
    void show_changes() override;

  private:
    void show_moment();

    platform::StatusBar& bar_;
    QStatusBar* view_;
    QLabel *text_, *date_, *time_;
};

} // namespace tolva::desktop
