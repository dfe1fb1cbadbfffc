#include "desktop/forms.h"

namespace tolva::desktop {

void build_generalmessage(FormBuilder& builder) {
    auto* const whole = new QVBoxLayout(&builder.form());
    QWidget* const title = builder("Label3");
    QFont bold = title->font();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() * 1.3);
    title->setFont(bold);
    whole->addWidget(title);

    auto* const when = new QHBoxLayout;
    const int space = builder.form().fontMetrics().horizontalAdvance(QLatin1Char('x'));
    when->addWidget(builder.label(QStringLiteral("Date:")));
    when->addWidget(builder("messagedate"));
    when->addSpacing(3 * space);
    when->addWidget(builder.label(QStringLiteral("Time:")));
    when->addWidget(builder("messagetime"));
    when->addStretch(1);
    whole->addLayout(when);

    builder.say("messagetext", QStringLiteral("Message"));
    whole->addWidget(builder.lines("messagetext", 50, 9), 1);

    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(builder("Command1"));
    buttons->addWidget(builder("Command2"));
    buttons->addStretch(1);
    buttons->addWidget(builder("Command3"));
    whole->addLayout(buttons);

    builder.leave_out({"messageid", "messagetype", "customerid"});
    builder.form().set_first(builder.control("messagetext"));
}

void build_generalmessagecreate(FormBuilder& builder) {
    auto* const whole = new QVBoxLayout(&builder.form());
    auto* const columns = new QHBoxLayout;
    const int space = builder.form().fontMetrics().height();
    columns->setSpacing(space);
    whole->addLayout(columns, 1);

    auto* const when = new QVBoxLayout;
    when->addWidget(builder("Label1_0"));
    builder.say("Month1", QStringLiteral("Click on Date"));
    when->addWidget(builder("Month1"));
    QGroupBox* const time = builder.frame("Frame1");
    auto* const time_row = new QHBoxLayout(time);
    builder.say("time1", QStringLiteral("Time"));
    time_row->addWidget(builder.box("time1", 12, false));
    time_row->addStretch(1);
    when->addWidget(time);
    when->addStretch(1);
    columns->addLayout(when);

    // The message or the letter: whichever is not wanted is hidden, and both have this place.
    auto* const what = new QVBoxLayout;
    what->addWidget(builder("Label1_1"));
    builder.say("message1", QStringLiteral("Message"));
    what->addWidget(builder.lines("message1", 46, 12), 1);
    what->addWidget(builder.label(QStringLiteral("Letter"), "letterpath"));
    auto* const letter = new QHBoxLayout;
    letter->addWidget(builder.box("letterpath", 46, true), 1);
    letter->addWidget(builder("Command3"));
    what->addLayout(letter);
    what->addStretch(0);
    columns->addLayout(what, 1);

    auto* const bottom = new QHBoxLayout;
    bottom->addStretch(1);
    bottom->addWidget(builder("Command2"));
    bottom->addWidget(builder("Command1"));
    whole->addLayout(bottom);

    builder.leave_out({"customerid"});
    builder.form().set_first(builder.control("Month1"));
}

} // namespace tolva::desktop
