#include "desktop/field_block.h"

#include <algorithm>
#include <string>
#include <utility>

#include "desktop/text.h"

namespace tolva::desktop {

namespace {

/// How many text lines a many-line box shows at least.
constexpr int least_lines = 3;

int gap(const QWidget& widget) {
    return widget.fontMetrics().horizontalAdvance(QLatin1Char('x'));
}

QWidget* make_field(FormBuilder& builder, const Field& field) {
    switch (field.kind) {
    case Field::Kind::fixed:
        return builder.box(field.control, field.characters, false);
    case Field::Kind::grows:
        return builder.box(field.control, field.characters, true);
    case Field::Kind::button:
        return builder.narrow_button(field.control);
    case Field::Kind::lines:
        return builder.lines(field.control, field.characters, least_lines);
    case Field::Kind::word:
        return builder.label(QString::fromUtf8(field.control));
    case Field::Kind::plain:
        break;
    }
    return builder(field.control);
}

bool grows_down(const Row& row) {
    return std::any_of(row.begin(), row.end(), [](const Entry& entry) {
        return std::any_of(entry.fields.begin(), entry.fields.end(),
                           [](const Field& field) { return field.kind == Field::Kind::lines; });
    });
}

/// The control that an entry's label names.
const char* named_by_label(const Entry& entry) {
    const auto first = std::find_if(entry.fields.begin(), entry.fields.end(),
                                    [](const Field& field) { return field.kind != Field::Kind::word; });
    return first->control;
}

/// The controls of one entry, side by side.
QHBoxLayout* make_fields(FormBuilder& builder, const Entry& entry) {
    auto* const row = new QHBoxLayout;
    row->setSpacing(gap(builder.form()));
    bool grows = false;
    for (const Field& field : entry.fields) {
        QWidget* const widget = make_field(builder, field);
        if (!field.spoken.empty())
            builder.say(field.control, to_qt(field.spoken));
        row->addWidget(widget, field.kind == Field::Kind::grows ? field.characters : 0);
        grows = grows || field.kind == Field::Kind::grows || field.kind == Field::Kind::lines;
    }
    if (!grows)
        row->addStretch(1);
    return row;
}

} // namespace

Field fixed(const char* control, int characters, std::string spoken) {
    return {control, Field::Kind::fixed, characters, std::move(spoken)};
}

Field grows(const char* control, int characters, std::string spoken) {
    return {control, Field::Kind::grows, characters, std::move(spoken)};
}

Field lines(const char* control, int characters, std::string spoken) {
    return {control, Field::Kind::lines, characters, std::move(spoken)};
}

Field button(const char* control, std::string spoken) {
    return {control, Field::Kind::button, 0, std::move(spoken)};
}

Field plain(const char* control) {
    return {control, Field::Kind::plain, 0, {}};
}

Field word(const char* text) {
    return {text, Field::Kind::word, 0, {}};
}

Entry date_entry(const char* label, const char* field, const char* button, std::string spoken) {
    return {label, {fixed(field, date_characters), desktop::button(button, std::move(spoken))}};
}

void fill_block(FormBuilder& builder, QWidget& frame, const std::vector<Row>& rows) {
    auto* const grid = new QGridLayout(&frame);
    const int space = gap(frame);
    grid->setHorizontalSpacing(space);
    grid->setVerticalSpacing(space);
    std::size_t columns = 1;
    for (const Row& row : rows)
        columns = std::max(columns, row.size());

    // Each entry takes two columns, its label's and its fields'.
    int line = 0;
    for (const Row& row : rows) {
        const int label_line = line;
        const bool above =
            std::any_of(row.begin(), row.end(), [](const Entry& entry) { return entry.label_above; });
        const int field_line = above ? ++line : line;
        for (std::size_t at = 0; at < row.size(); ++at) {
            const Entry& entry = row[at];
            const int column = static_cast<int>(at) * 2;
            const int last = static_cast<int>(at + 1 == row.size() ? columns : at + 1) * 2;
            const bool labelled = *entry.label != '\0';
            const bool beside = labelled && !entry.label_above;
            QLabel* const label =
                labelled ? builder.label(QString::fromUtf8(entry.label), named_by_label(entry)) : nullptr;
            if (beside)
                grid->addWidget(label, field_line, column, Qt::AlignRight | Qt::AlignVCenter);
            else if (label)
                grid->addWidget(label, label_line, column, 1, last - column);
            const int from = beside ? column + 1 : column;
            grid->addLayout(make_fields(builder, entry), field_line, from, 1, last - from);
        }
        if (grows_down(row))
            grid->setRowStretch(field_line, 1);
        ++line;
    }
    for (std::size_t column = 0; column < columns; ++column)
        grid->setColumnStretch(static_cast<int>(column) * 2 + 1, 1);
    if (std::none_of(rows.begin(), rows.end(), grows_down))
        grid->setRowStretch(line, 1);
}

QGroupBox* titled_block(FormBuilder& builder, const char* title, const std::vector<Row>& rows) {
    QGroupBox* const frame = builder.frame_titled(QString::fromUtf8(title));
    fill_block(builder, *frame, rows);
    return frame;
}

QLayout* tick_columns(FormBuilder& builder, const char* array, int count, int columns) {
    auto* const grid = new QGridLayout;
    const int lines = (count + columns - 1) / columns;
    for (int index = 0; index < count; ++index)
        grid->addWidget(builder(array + std::string("_") + std::to_string(index)), index % lines,
                        index / lines);
    return grid;
}

} // namespace tolva::desktop
