#pragma once

#include "module/module.h"
#include "platform/tab_strip.h"

namespace tolva::messages {

/// One day: quarter-hour slots, to-do lines, a note. A slot or line may carry a hidden link to a customer and
/// is then a door to that record. What is shown is saved on every way out, under the day in the caption or in
/// the calendar as each way tells.
class planner : public platform::Screen {
  public:
    explicit planner(module::Module& module);

    platform::MonthView MonthView1{*this, "MonthView1"};
    platform::TabStrip TabStrip1{*this, "TabStrip1", {"To-Do List", "Planner"}};

    platform::Frame plannerframe{*this, "plannerframe", "Today's To Do Items"};
    platform::ControlArray<platform::CheckBox> cb{*this, "cb", module::PlannerDay::todos};
    platform::ControlArray<platform::TextBox> td{*this, "td", module::PlannerDay::todos};
    /// The links, not for the eye.
    platform::ControlArray<platform::TextBox> tp{*this, "tp", module::PlannerDay::todos};

    platform::Frame appointmentframe{*this, "appointmentframe", "Appointments"};
    platform::ControlArray<platform::Label> Label1{*this, "Label1", module::PlannerDay::slots};
    platform::ControlArray<platform::TextBox> timeperiod{*this, "timeperiod", module::PlannerDay::slots};
    platform::ControlArray<platform::TextBox> d{*this, "d", module::PlannerDay::slots};

    platform::Frame Frame1{*this, "Frame1", "Notes"};
    platform::TextBox notes{*this, "notes", platform::TextBox::Kind::multi_line};
    platform::Button Command1{*this, "Command1", "EXIT"};

    platform::MenuEntry m_file{*this, "m_file", "&File"};
    platform::MenuEntry m_Clear{m_file, "m_Clear", "&Clear"};
    platform::MenuEntry m_save{m_file, "m_save", "&Save"};
    platform::MenuEntry m_print{m_file, "m_print", "&Print"};
    platform::MenuEntry m_exit{m_file, "m_exit", "E&xit"};
    platform::MenuEntry m_reschedule{*this, "m_reschedule", "Re-Schedule To Do List"};

    void on_load() override;
    void on_unload() override;

    void formtorec();
    void rectoform();

    /// Loads the day and shows it, once the screen has been brought up: the main menu's way in.
    void open_day(basic::Date date);

  private:
    void clearplanner();
    void save_shown_day();
    void MonthView1_DateClick(basic::Date date);
    void m_print_Click();
    void door(platform::TextBox& box, platform::TextBox& link, bool is_slot);

    module::Module& module_;
};

} // namespace tolva::messages
