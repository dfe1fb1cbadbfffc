#include "desktop/record_form.h"

#include "desktop/fitting_scroll_area.h"
#include "desktop/text.h"

namespace tolva::desktop {

namespace {

/// The quick search above the list, and the way out below it.
QWidget* list_page(FormBuilder& builder, const RecordForm& record) {
    auto* const page = new QWidget(&builder.form());
    auto* const column = new QVBoxLayout(page);

    QGroupBox* const search = builder.frame("Frame10");
    auto* const search_row = new QHBoxLayout(search);
    search_row->addWidget(builder.label(QStringLiteral("Name"), "sname"));
    search_row->addWidget(builder.box("sname", 24, false));
    search_row->addSpacing(search->fontMetrics().horizontalAdvance(QLatin1Char('x')));
    search_row->addWidget(builder.label(QStringLiteral("City"), "scity"));
    search_row->addWidget(builder.box("scity", 24, false));
    search_row->addWidget(builder(record.search_button));
    search_row->addStretch(1);
    column->addWidget(search);

    QGroupBox* const list = builder.frame("f_customerlist");
    auto* const list_column = new QVBoxLayout(list);
    list_column->addWidget(builder("grid1"));
    builder.say("grid1", to_qt(dynamic_cast<platform::Frame&>(builder.control("f_customerlist")).caption));
    column->addWidget(list, 1);
    if (record.fill_below_list)
        record.fill_below_list(builder, *column);

    auto* const bottom = new QHBoxLayout;
    bottom->addStretch(1);
    bottom->addWidget(builder(record.exit_button));
    column->addLayout(bottom);
    return page;
}

QWidget* form_page(FormBuilder& builder, const RecordForm& record) {
    auto* const page = new QWidget(&builder.form());
    auto* const column = new QVBoxLayout(page);

    auto* const fields = new QWidget(&builder.form());
    record.fill_form(builder, *fields);
    auto* const scroll = new FittingScrollArea(page);
    scroll->setWidget(fields);
    column->addWidget(scroll, 1);

    auto* const bottom = new QHBoxLayout;
    for (const char* button : record.navigation)
        bottom->addWidget(builder(button));
    builder.say(record.navigation.at(0), QStringLiteral("First Record"));
    builder.say(record.navigation.at(1), QStringLiteral("Previous Record"));
    builder.say(record.navigation.at(2), QStringLiteral("Next Record"));
    builder.say(record.navigation.at(3), QStringLiteral("Last Record"));
    bottom->addStretch(1);
    bottom->addWidget(builder(record.close_button));
    column->addLayout(bottom);
    return page;
}

} // namespace

void build_record_form(FormBuilder& builder, const RecordForm& record) {
    auto* const whole = new QVBoxLayout(&builder.form());
    whole->setContentsMargins(0, 0, 0, 0);
    if (QMenuBar* const menu = builder.menu_bar())
        whole->setMenuBar(menu);
    auto* const stack = new QStackedWidget(&builder.form());
    stack->addWidget(list_page(builder, record));
    stack->addWidget(form_page(builder, record));
    whole->addWidget(stack);
    builder.leave_out({"id"});
    builder.form().set_pages({stack, &builder.control("f_customerlist"), &builder.control("grid1"),
                              &builder.control(record.first)});
}

} // namespace tolva::desktop
