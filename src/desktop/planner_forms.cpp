#include <QScrollArea>
#include <QScrollBar>
#include <string>
#include <vector>

#include "desktop/form_builder.h"
#include "desktop/forms.h"
#include "module/planner_day.h"

namespace tolva::desktop {

namespace {

using module::PlannerDay;

std::string member(const char* array, int index) {
    return array + std::string("_") + std::to_string(index);
}

/// Asks for a good part of the day, and makes do with less on a small screen.
class LinesInSight : public QScrollArea {
  public:
    explicit LinesInSight(QWidget* parent) : QScrollArea(parent) {
        setWidgetResizable(true);
        setFrameShape(QFrame::NoFrame);
        setFocusPolicy(Qt::NoFocus);
    }
    QSize sizeHint() const override { return {QScrollArea::sizeHint().width(), 32 * fontMetrics().height()}; }
    QSize minimumSizeHint() const override {
        // Across, a line is never cut.
        return {widget()->minimumSizeHint().width() + verticalScrollBar()->sizeHint().width(),
                12 * fontMetrics().height()};
    }
};

/// Many lines below each other, in a frame that scrolls.
struct Lines {
    QScrollArea* scroll;
    QGridLayout* grid;
};

Lines scrolling_lines(FormBuilder& builder, const char* frame) {
    QGroupBox* const box = builder.frame(frame);
    auto* const column = new QVBoxLayout(box);
    auto* const page = new QWidget(&builder.form());
    auto* const grid = new QGridLayout(page);
    auto* const scroll = new LinesInSight(box);
    scroll->setWidget(page);
    grid->setVerticalSpacing(2);
    column->addWidget(scroll);
    return {scroll, grid};
}

/// A day is typed down: Enter and the arrow keys lead from line to line, and the page follows.
void lead_down(const Lines& lines, const std::vector<LineEdit*>& boxes) {
    for (std::size_t at = 0; at < boxes.size(); ++at) {
        LineEdit* const above = at > 0 ? boxes[at - 1] : nullptr;
        LineEdit* const below = at + 1 < boxes.size() ? boxes[at + 1] : nullptr;
        boxes[at]->on_step = [above, below, scroll = lines.scroll](int step) {
            LineEdit* const next = step > 0 ? below : above;
            if (!next)
                return;
            next->setFocus(Qt::OtherFocusReason);
            scroll->ensureWidgetVisible(next);
        };
    }
}

void fill_todos(FormBuilder& builder) {
    const Lines lines = scrolling_lines(builder, "plannerframe");
    std::vector<LineEdit*> boxes;
    for (int line = 0; line < PlannerDay::todos; ++line) {
        const QString number = QString::number(line + 1);
        lines.grid->addWidget(builder(member("cb", line)), line, 0);
        boxes.push_back(static_cast<LineEdit*>(builder.box(member("td", line), 40, true)));
        lines.grid->addWidget(boxes.back(), line, 1);
        builder.say(member("cb", line), QStringLiteral("To Do Item %1 Done").arg(number));
        builder.say(member("td", line), QStringLiteral("To Do Item %1").arg(number));
        builder.form().leave_out(builder.control(member("tp", line)));
    }
    lines.grid->setRowStretch(PlannerDay::todos, 1);
    lead_down(lines, boxes);
}

void fill_slots(FormBuilder& builder) {
    const Lines lines = scrolling_lines(builder, "appointmentframe");
    constexpr int slots_an_hour = 4;
    int row = 0;
    std::vector<LineEdit*> boxes;
    for (int slot = 0; slot < PlannerDay::slots; ++slot) {
        auto* const time = static_cast<QLabel*>(builder(member("Label1", slot)));
        const bool full_hour = slot % slots_an_hour == 0;
        if (full_hour) {
            QFont font = time->font();
            font.setBold(true);
            time->setFont(font);
        }
        // A little air ahead of each hour, so that the eye finds it.
        if (full_hour && slot > 0)
            lines.grid->setRowMinimumHeight(row++, time->fontMetrics().height() / 2);
        lines.grid->addWidget(time, row, 0, Qt::AlignRight | Qt::AlignVCenter);
        boxes.push_back(static_cast<LineEdit*>(builder.box(member("timeperiod", slot), 40, true)));
        lines.grid->addWidget(boxes.back(), row++, 1);
        time->setBuddy(boxes.back());
        builder.form().leave_out(builder.control(member("d", slot)));
    }
    lead_down(lines, boxes);
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
