#include <string>

#include "desktop/field_block.h"
#include "desktop/fitting_scroll_area.h"
#include "desktop/forms.h"
#include "desktop/text.h"
#include "module/settings.h"

namespace tolva::desktop {

namespace {

using module::Settings;

/// A number with words on both sides of it, and perhaps a line above. The spelling is the product's own.
struct Sentence {
    const char* above;
    const char* before;
    const char* control;
    const char* after;
};

constexpr Sentence follow_up[] = {
    {"", "Notify about expiring Listings", "pref_expire", "days in advance."},
    {"Notify Listings who haven't", "been contacted withinin ", "pref_customer", "days."},
    {"Notify Prospects who haven't ", "been contacted within", "pref_prospect", "days."},
    {"Notify Prospects will be in market", "within", "pref_inmarket", "days."},
};

constexpr int number_characters = 6;

QWidget* birthdays(FormBuilder& builder) {
    QGroupBox* const frame = builder.frame_titled(QStringLiteral("Automatic Birthday Message Scheduling"));
    auto* const column = new QVBoxLayout(frame);
    for (const int option :
         {Settings::birthdays_always, Settings::birthdays_prompt, Settings::birthdays_never})
        column->addWidget(builder("pref_bdayschedule_" + std::to_string(option)));
    auto* const row = new QHBoxLayout;
    row->addWidget(builder.label(QStringLiteral("Schedule automatically for"), "pref_bday"));
    row->addWidget(builder.box("pref_bday", number_characters, false));
    row->addWidget(builder.label(QStringLiteral("years")));
    row->addStretch(1);
    column->addLayout(row);
    column->addStretch(1);
    return frame;
}

QWidget* follow_ups(FormBuilder& builder) {
    QGroupBox* const frame = builder.frame_titled(QStringLiteral("Follow Up Information"));
    auto* const grid = new QGridLayout(frame);
    int line = 0;
    for (const Sentence& sentence : follow_up) {
        const QString above = QString::fromUtf8(sentence.above);
        const QString before = QString::fromUtf8(sentence.before);
        const QString after = QString::fromUtf8(sentence.after);
        if (!above.isEmpty())
            grid->addWidget(builder.label(above), line++, 0, 1, 3);
        grid->addWidget(builder.label(before, sentence.control), line, 0);
        grid->addWidget(builder.box(sentence.control, number_characters, false), line, 1);
        grid->addWidget(builder.label(after), line, 2);
        builder.say(sentence.control,
                    QStringList{above.trimmed(), before.trimmed(), after}.join(QLatin1Char(' ')).trimmed());
        ++line;
    }
    grid->setColumnStretch(2, 1);
    grid->setRowStretch(line, 1);
    return frame;
}

QWidget* miscellaneous(FormBuilder& builder) {
    QGroupBox* const frame = builder.frame_titled(QStringLiteral("Miscellaneous Stuff"));
    auto* const grid = new QGridLayout(frame);
    const struct {
        const char* label;
        const char* control;
        const char* spoken;
    } margins[] = {
        {"Top:", "pref_tmargin", "Top Margin"},
        {"Bottom:", "pref_bmargin", "Bottom Margin"},
        {"Left:", "pref_lmargin", "Left Margin"},
        {"Right:", "pref_rmargin", "Right Margin"},
    };
    grid->addWidget(builder.label(QStringLiteral("Margins")), 0, 0);
    int at = 0;
    for (const auto& margin : margins) {
        const int line = at / 2;
        const int column = 1 + at % 2 * 2;
        grid->addWidget(builder.label(QString::fromUtf8(margin.label), margin.control), line, column,
                        Qt::AlignRight | Qt::AlignVCenter);
        grid->addWidget(builder.box(margin.control, number_characters, false), line, column + 1);
        builder.say(margin.control, QString::fromUtf8(margin.spoken));
        ++at;
    }
    grid->addWidget(builder.label(QStringLiteral("Label Adjust:"), "pref_labeladjust"), 2, 0);
    grid->addWidget(builder.box("pref_labeladjust", number_characters, false), 2, 2);
    grid->setColumnStretch(5, 1);
    grid->setRowStretch(3, 1);
    return frame;
}

/// A frame around one box that the frame's title names.
QWidget* framed(FormBuilder& builder, const char* title, QWidget* box, const char* control) {
    QGroupBox* const frame = builder.frame_titled(QString::fromUtf8(title));
    auto* const column = new QVBoxLayout(frame);
    column->addWidget(box);
    builder.say(control, QString::fromUtf8(title));
    return frame;
}

QWidget* password(FormBuilder& builder) {
    QWidget* const frame = framed(builder, "Password", builder.box("thepassword", 16, true), "thepassword");
    static_cast<QVBoxLayout*>(frame->layout())->addWidget(builder("passwordprotect"));
    return frame;
}

QWidget* list(FormBuilder& builder, const char* title, const char* control) {
    return framed(builder, title, builder.lines(control, 22, 5), control);
}

QWidget* features(FormBuilder& builder) {
    QGroupBox* const frame = builder.frame_titled(QStringLiteral("Features"));
    auto* const grid = new QGridLayout(frame);
    // Down the first column, then down the second.
    constexpr int half = module::feature_count / 2;
    for (int index = 0; index < module::feature_count; ++index) {
        const std::string name = "feature_" + std::to_string(index);
        grid->addWidget(builder.box(name, 22, true), index % half, index / half);
        builder.say(name, QStringLiteral("Feature %1").arg(index + 1));
    }
    grid->setRowStretch(half, 1);
    return frame;
}

} // namespace

void build_preferences(FormBuilder& builder) {
    auto* const page = new QWidget(&builder.form());
    auto* const columns = new QHBoxLayout(page);
    columns->setContentsMargins(0, 0, 0, 0);

    auto* const first = new QVBoxLayout;
    first->addWidget(birthdays(builder));
    first->addWidget(follow_ups(builder));
    first->addWidget(miscellaneous(builder));
    first->addWidget(password(builder));
    first->addWidget(
        framed(builder, "Real Estate Agent Name", builder.box("salesperson1", 24, true), "salesperson1"));
    first->addStretch(1);
    columns->addLayout(first);

    auto* const second = new QVBoxLayout;
    second->addWidget(list(builder, "Home Construction", "construction"));
    second->addWidget(list(builder, "Basement Types", "basement"));
    second->addWidget(list(builder, "Garage Types", "garage"));
    second->addWidget(list(builder, "Customer Sources", "listingsource"));
    columns->addLayout(second, 1);
    columns->addWidget(features(builder), 1);

    auto* const whole = new QVBoxLayout(&builder.form());
    auto* const scroll = new FittingScrollArea(&builder.form());
    scroll->setWidget(page);
    whole->addWidget(scroll, 1);
    auto* const bottom = new QHBoxLayout;
    bottom->addStretch(1);
    bottom->addWidget(builder("Command1"));
    bottom->addWidget(builder("Command2"));
    whole->addLayout(bottom);
    builder.form().set_first(builder.control("pref_bdayschedule_2"));
}

} // namespace tolva::desktop
