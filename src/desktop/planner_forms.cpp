#include <QScrollArea>
#include <string>

#include "desktop/form_builder.h"
#include "desktop/forms.h"
#include "module/planner_day.h"

namespace tolva::desktop {

namespace {

using module::PlannerDay;

std::string member(const char* array, int index) {
    return array + std::string("_") + std::to_string(index);
}

/// A frame whose many lines scroll.
QGridLayout* scrolling_frame(FormBuilder& builder, const char* frame) {
    QGroupBox* const box = builder.frame(frame);
    auto* const column = new QVBoxLayout(box);
    auto* const page = new QWidget(&builder.form());
    auto* const grid = new QGridLayout(page);
    auto* const scroll = new QScrollArea(box);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::NoFocus);
    constexpr int lines_in_sight = 24;
    scroll->setMinimumHeight(lines_in_sight * scroll->fontMetrics().height());
    scroll->setWidget(page);
    column->addWidget(scroll);
    return grid;
}

void fill_todos(FormBuilder& builder) {
    QGridLayout* const grid = scrolling_frame(builder, "plannerframe");
    for (int line = 0; line < PlannerDay::todos; ++line) {
        const QString number = QString::number(line + 1);
        grid->addWidget(builder(member("cb", line)), line, 0);
        grid->addWidget(builder.box(member("td", line), 40, true), line, 1);
        builder.say(member("cb", line), QStringLiteral("To Do Item %1 Done").arg(number));
        builder.say(member("td", line), QStringLiteral("To Do Item %1").arg(number));
        builder.form().leave_out(builder.control(member("tp", line)));
    }
}

void fill_slots(FormBuilder& builder) {
    QGridLayout* const grid = scrolling_frame(builder, "appointmentframe");
    for (int slot = 0; slot < PlannerDay::slots; ++slot) {
        auto* const time = static_cast<QLabel*>(builder(member("Label1", slot)));
        grid->addWidget(time, slot, 0, Qt::AlignRight | Qt::AlignVCenter);
        grid->addWidget(builder.box(member("timeperiod", slot), 40, true), slot, 1);
        time->setBuddy(builder(member("timeperiod", slot)));
        builder.form().leave_out(builder.control(member("d", slot)));
    }
}

} // namespace

void build_planner(FormBuilder& builder) {
    auto* const whole = new QVBoxLayout(&builder.form());
    whole->setMenuBar(builder.menu_bar());
    auto* const columns = new QHBoxLayout;
    whole->addLayout(columns, 1);

    auto* const left = new QVBoxLayout;
    builder.say("MonthView1", QStringLiteral("Day"));
    left->addWidget(builder("MonthView1"));
    QGroupBox* const notes = builder.frame("Frame1");
    auto* const note = new QVBoxLayout(notes);
    note->addWidget(builder.lines("notes", 34, 8));
    builder.say("notes", QStringLiteral("Notes"));
    left->addWidget(notes, 1);
    columns->addLayout(left);

    auto* const right = new QVBoxLayout;
    builder.say("TabStrip1", QStringLiteral("To-Do List or Planner"));
    right->addWidget(builder("TabStrip1"));
    fill_todos(builder);
    right->addWidget(builder("plannerframe"), 1);
    fill_slots(builder);
    right->addWidget(builder("appointmentframe"), 1);
    columns->addLayout(right, 1);

    auto* const bottom = new QHBoxLayout;
    bottom->addStretch(1);
    bottom->addWidget(builder("Command1"));
    whole->addLayout(bottom);
    builder.form().set_first(builder.control("MonthView1"));
}

void build_appointment(FormBuilder& builder) {
    auto* const whole = new QVBoxLayout(&builder.form());
    const int space = builder.form().fontMetrics().height() / 2;
    whole->addWidget(builder.label(QStringLiteral("Step #1: Enter Appointment Message"), "apptmessage"));
    whole->addWidget(builder.box("apptmessage", 60, true));
    whole->addSpacing(space);
    whole->addWidget(builder.label(QStringLiteral("Step #2: Click Appointment Date")));
    builder.say("Month1", QStringLiteral("Step #2: Click Appointment Date"));
    whole->addWidget(builder("Month1"), 1);
    whole->addSpacing(space);
    whole->addWidget(builder.label(QStringLiteral(
        "Step #3: Click the Text Box on the Planner or the To-Do List to Set the Appointment")));
    auto* const bottom = new QHBoxLayout;
    bottom->addStretch(1);
    bottom->addWidget(builder("Command1"));
    whole->addLayout(bottom);
    builder.form().set_first(builder.control("apptmessage"));
}

} // namespace tolva::desktop
