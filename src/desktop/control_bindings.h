#pragma once

#include <QAction>
#include <QCheckBox>
#include <QGroupBox>
#include <QMenu>
#include <QRadioButton>
#include <QTabBar>

#include "desktop/binding.h"
#include "desktop/chart_view.h"
#include "desktop/grid_view.h"
#include "desktop/month_calendar.h"
#include "desktop/push_button.h"
#include "platform/chart.h"
#include "platform/controls.h"
#include "platform/grid.h"
#include "platform/tab_strip.h"

namespace tolva::desktop {

class LabelBinding final : public Binding {
  public:
    LabelBinding(Form& form, platform::Label& control);
    QWidget* widget() const override { return view_; }

  protected:
    void show_changes() override;

  private:
    platform::Label& label_;
    QLabel* view_;
    std::optional<std::string> caption_;
};

class FrameBinding final : public Binding {
  public:
    FrameBinding(Form& form, platform::Frame& control);
    QWidget* widget() const override { return box_; }

  protected:
    void show_changes() override;

  private:
    platform::Frame& frame_;
    QGroupBox* box_;
    std::optional<std::string> caption_;
};

class ButtonBinding final : public Binding {
  public:
    ButtonBinding(Form& form, platform::Button& control);
    QWidget* widget() const override { return view_; }

  protected:
    void show_changes() override;

  private:
    platform::Button& button_;
    PushButton* view_;
    std::optional<std::string> caption_;
};

class CheckBinding final : public Binding {
  public:
    CheckBinding(Form& form, platform::CheckBox& control);
    QWidget* widget() const override { return view_; }

  protected:
    void show_changes() override;

  private:
    platform::CheckBox& box_;
    QCheckBox* view_;
    std::optional<std::string> caption_;
};

class OptionBinding final : public Binding {
  public:
    OptionBinding(Form& form, platform::OptionButton& control);
    QWidget* widget() const override { return view_; }

  protected:
    void show_changes() override;

  private:
    platform::OptionButton& option_;
    QRadioButton* view_;
    std::optional<std::string> caption_;
};

class GridBinding final : public Binding {
  public:
    GridBinding(Form& form, platform::Grid& control);
    QWidget* widget() const override { return view_; }

  protected:
    void show_changes() override;

  private:
    platform::Grid& grid_;
    GridView* view_;
    std::optional<unsigned> revision_;
    int row_ = 0;
};

/// A screen that listens to clicks has its value changed by a click or Enter alone: what it shows belongs to
/// that day, and the arrows only look for another. Where nobody listens, the value follows the arrows.
class MonthBinding final : public Binding {
  public:
    MonthBinding(Form& form, platform::MonthView& control);
    QWidget* widget() const override { return calendar_; }
    void focus_went() override;

  protected:
    void show_changes() override;

  private:
    bool has_focus() const;

    platform::MonthView& view_;
    MonthCalendar* calendar_;
    std::optional<basic::Date> value_;
};

class TabBinding final : public Binding {
  public:
    TabBinding(Form& form, platform::TabStrip& control);
    QWidget* widget() const override { return bar_; }

  protected:
    void show_changes() override;

  private:
    platform::TabStrip& tabs_;
    QTabBar* bar_;
};

class ChartBinding final : public Binding {
  public:
    ChartBinding(Form& form, platform::Chart& control);
    QWidget* widget() const override { return view_; }

  protected:
    void show_changes() override;

  private:
    platform::Chart& chart_;
    ChartView* view_;
    std::optional<std::vector<platform::Chart::Bar>> bars_;
};

/// An entry of the menu bar or of a menu, with the entries below it.
class MenuBinding final : public Binding {
  public:
    /// `above` is the menu bar or the menu of the entry above.
    MenuBinding(Form& form, platform::MenuEntry& control, QWidget& above);
    QWidget* widget() const override { return nullptr; }
    QAction* action() const { return action_; }
    /// Null for an entry without entries of its own.
    QMenu* menu() const { return menu_; }

  protected:
    void show_visible(bool visible) override { action_->setVisible(visible); }
    void show_available(bool available) override { action_->setEnabled(available); }
    void show_tool_tip(const QString&) override {}
    void show_changes() override;

  private:
    platform::MenuEntry& entry_;
    QMenu* menu_ = nullptr;
    QAction* action_;
    std::optional<std::string> caption_;
};

} // namespace tolva::desktop
