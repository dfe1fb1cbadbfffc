#include "messages/planner.h"

#include <algorithm>

#include "basic/number.h"
#include "basic/run_time_error.h"
#include "basic/text.h"
#include "messages/message_kind.h"
#include "messages/open_record.h"

namespace tolva::messages {

using basic::trim;
using module::PlannerDay;

namespace {

constexpr int object_required = 424;
constexpr int todo_tab = 1;

/// "7:00" to "12:45" and on to "9:45": a twelve-hour clock without AM or PM.
std::string slot_caption(int slot) {
    constexpr int slots_an_hour = 4, first_hour = 7, minutes_a_slot = 15;
    const int hour = (first_hour + slot / slots_an_hour - 1) % 12 + 1;
    const int minute = slot % slots_an_hour * minutes_a_slot;
    return std::to_string(hour) + (minute == 0 ? ":00" : ":" + std::to_string(minute));
}

std::size_t at(int index) {
    return static_cast<std::size_t>(index);
}

} // namespace

planner::planner(module::Module& module) : Screen(module.runtime, "planner", ""), module_(module) {
    for (int slot = 0; slot < PlannerDay::slots; ++slot) {
        Label1[slot].caption = slot_caption(slot);
        d[slot].visible = false;
        timeperiod[slot].on_double_click = [this, slot] { door(timeperiod[slot], d[slot], true); };
    }
    for (int line = 0; line < PlannerDay::todos; ++line)
        td[line].on_double_click = [this, line] { door(td[line], tp[line], false); };
    appointmentframe.visible = false;

    MonthView1.on_date_click = [this](basic::Date date) { MonthView1_DateClick(date); };
    TabStrip1.on_click = [this] {
        plannerframe.visible = TabStrip1.selected == todo_tab;
        appointmentframe.visible = !plannerframe.visible;
    };
    Command1.on_click = [this] {
        save_shown_day();
        unload();
        module_.Form1().show();
    };
    m_exit.on_click = [this] {
        save_shown_day();
        unload();
    };
    m_save.on_click = [this] { save_shown_day(); };
    m_Clear.on_click = [this] { clearplanner(); };
    m_print.on_click = [this] { m_print_Click(); };
    // The screen that this entry would show was never set.
    m_reschedule.on_click = [] { throw basic::RunTimeError(object_required); };
}

void planner::on_load() {
    for (int line = 0; line < PlannerDay::slots; ++line)
        tp[line].visible = false;
}

/// Also on the ways out that have just saved: the day is written twice, alike.
void planner::on_unload() {
    save_shown_day();
    module_.Form1().show();
}

void planner::save_shown_day() {
    formtorec();
    module_.saveplannerday(MonthView1.value);
}

void planner::open_day(basic::Date date) {
    module_.loadplannerday(date);
    MonthView1.value = date;
    rectoform();
}

/// What was on show is saved under the date in the caption: the calendar has already moved on.
void planner::MonthView1_DateClick(basic::Date date) {
    formtorec();
    module_.saveplannerday(module_.to_date(caption));
    module_.loadplannerday(date);
    rectoform();
    MonthView1.value = date;
}

void planner::formtorec() {
    PlannerDay& day = module_.plannerday;
    for (int slot = 0; slot < PlannerDay::slots; ++slot) {
        day.appointments[at(slot)] = trim(timeperiod[slot].text);
        day.appointmentlinks[at(slot)] = trim(d[slot].text);
    }
    day.daynotes = trim(notes.text);
    for (int line = 0; line < PlannerDay::todos; ++line) {
        day.todoitems[at(line)] = trim(td[line].text);
        day.tododone[at(line)] = cb[line].value == 0 ? '0' : '1';
        day.todolinks[at(line)] = trim(tp[line].text);
    }
}

void planner::rectoform() {
    const PlannerDay& day = module_.plannerday;
    for (int slot = 0; slot < PlannerDay::slots; ++slot) {
        timeperiod[slot].text = trim(day.appointments[at(slot)]);
        timeperiod[slot].tool_tip = timeperiod[slot].text;
        d[slot].text = trim(day.appointmentlinks[at(slot)]);
    }
    notes.text = trim(day.daynotes);
    for (int line = 0; line < PlannerDay::todos; ++line) {
        td[line].text = trim(day.todoitems[at(line)]);
        td[line].tool_tip = td[line].text;
        cb[line].value = day.tododone[at(line)] == '1' ? 1 : 0;
        // A tick strikes the line out only now, when the day is shown anew.
        td[line].strike_out = cb[line].value == 1;
        tp[line].text = trim(day.todolinks[at(line)]);
    }
    caption = basic::date_to_text(MonthView1.value);
}

/// Only the boxes; the file changes with the next save, which every way out performs.
void planner::clearplanner() {
    for (int slot = 0; slot < PlannerDay::slots; ++slot) {
        timeperiod[slot].text.clear();
        d[slot].text.clear();
    }
    for (int line = 0; line < PlannerDay::todos; ++line) {
        td[line].text.clear();
        tp[line].text.clear();
        cb[line].value = 0;
    }
    notes.text.clear();
}

/// A day with only to-do lines has nothing to print; done lines don't appear.
void planner::m_print_Click() {
    if (module_.confirm("Print Daily Planner?") != 1)
        return;
    if (std::all_of(timeperiod.begin(), timeperiod.end(),
                    [](const auto& box) { return box->text.empty(); })) {
        runtime().message("There is nothing to print", "Message");
        return;
    }
    constexpr float font_size = 12;
    const std::string date = basic::date_to_text(MonthView1.value);
    platform::Printer& printer = module_.printer();
    printer.job_name = "Daily Planner " + date;
    printer.FontBold = true;
    printer.FontSize = font_size;
    printer.Print("Daily Planner " + date);
    printer.Print("");
    printer.FontBold = false;
    for (int slot = 0; slot < PlannerDay::slots; ++slot)
        if (!timeperiod[slot].text.empty())
            printer.Print(trim(Label1[slot].caption) + ": " + trim(timeperiod[slot].text));
    printer.Print("");
    printer.Print("");
    printer.FontBold = true;
    printer.Print("To Do List for " + date);
    printer.Print("");
    printer.FontBold = false;
    for (int line = 0; line < PlannerDay::todos; ++line)
        if (cb[line].value == 0 && !td[line].text.empty())
            printer.Print(td[line].text);
    printer.EndDoc();
}

/// A double click places the appointment that waits, or goes through the link to its customer.
void planner::door(platform::TextBox& box, platform::TextBox& link, bool is_slot) {
    if (module_.appointmentpending) {
        box.text = trim(module_.appointmenttext);
        link.text = trim(module_.appointmentlink);
        module_.appointmentpending = false;
        save_shown_day();
        return;
    }
    const std::string target = trim(link.text);
    save_shown_day();
    if (target.empty())
        return;
    auto way = way_to(module_, basic::leading_number(target.substr(0, 1)));
    if (!way)
        return;
    const bool listing_of_todo = !is_slot && target[0] == '0' + listing_reminder;
    // A to-do line asks the listings for an order that they don't have, and the store complains. Meant.
    if (listing_of_todo)
        way->order = " order by datesold, last, first";
    open_record(module_, *way, basic::number_to_text(basic::leading_number(target.substr(1))),
                !listing_of_todo, &module::RecordEntry::gridclick);
}

} // namespace tolva::messages
