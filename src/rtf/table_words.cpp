#include "rtf/table_words.h"

#include <algorithm>

#include "rtf/border_words.h"
#include "rtf/limits.h"

namespace tolva::rtf {

namespace {

int clamped(Parameter parameter) {
    return std::clamp(parameter.value, -limits::measure, limits::measure);
}

template <int RowFormat::*member>
void measure(RowInSource& source, Parameter parameter) {
    source.row.own().*member = clamped(parameter);
}

template <Alignment alignment>
void align(RowInSource& source, Parameter) {
    source.row.own().alignment = alignment;
}

template <bool RowFormat::*member>
void turn(RowInSource& source, Parameter parameter) {
    source.row.own().*member = parameter.on();
}

template <CellMerge merge>
void across(RowInSource& source, Parameter) {
    source.cell.across = merge;
}

template <CellMerge merge>
void down(RowInSource& source, Parameter) {
    source.cell.down = merge;
}

template <CellAlignment alignment>
void align_cell(RowInSource& source, Parameter) {
    source.cell.alignment = alignment;
}

void begin(RowInSource& source, Parameter) {
    source = {};
}

void end_cell(RowInSource& source, Parameter parameter) {
    if (source.row->cells.size() < limits::cells) {
        source.cell.right = clamped(parameter);
        source.row.own().cells.push_back(source.cell);
    }
    source.cell = {};
}

constexpr TableWord words[] = {
    {"trowd", Refers::nothing, begin},
    {"trleft", Refers::nothing, measure<&RowFormat::left>},
    {"trgaph", Refers::nothing, measure<&RowFormat::gap>},
    {"trrh", Refers::nothing, measure<&RowFormat::height>},
    {"trql", Refers::nothing, align<Alignment::left>},
    {"trqr", Refers::nothing, align<Alignment::right>},
    {"trqc", Refers::nothing, align<Alignment::centre>},
    {"trhdr", Refers::nothing, turn<&RowFormat::header>},
    {"trkeep", Refers::nothing, turn<&RowFormat::keep>},
    {"cellx", Refers::nothing, end_cell},
    {"clmgf", Refers::nothing, across<CellMerge::first>},
    {"clmrg", Refers::nothing, across<CellMerge::continued>},
    {"clvmgf", Refers::nothing, down<CellMerge::first>},
    {"clvmrg", Refers::nothing, down<CellMerge::continued>},
    {"clvertalt", Refers::nothing, align_cell<CellAlignment::top>},
    {"clvertalc", Refers::nothing, align_cell<CellAlignment::centre>},
    {"clvertalb", Refers::nothing, align_cell<CellAlignment::bottom>},
    {"clcbpat", Refers::colour,
     [](RowInSource& source, Parameter parameter) {
         source.cell.background = static_cast<std::int16_t>(parameter.value);
     }},
    {"clshdng", Refers::nothing,
     [](RowInSource& source, Parameter parameter) {
         source.cell.shading = static_cast<std::int16_t>(std::clamp(parameter.value, 0, 10000));
     }},
};

constexpr TableBorderWord borders[] = {
    {"trbrdrt", &RowFormat::top, nullptr},        {"trbrdrl", &RowFormat::left_border, nullptr},
    {"trbrdrb", &RowFormat::bottom, nullptr},     {"trbrdrr", &RowFormat::right_border, nullptr},
    {"trbrdrh", &RowFormat::horizontal, nullptr}, {"trbrdrv", &RowFormat::vertical, nullptr},
    {"clbrdrt", nullptr, &CellFormat::top},       {"clbrdrl", nullptr, &CellFormat::left},
    {"clbrdrb", nullptr, &CellFormat::bottom},    {"clbrdrr", nullptr, &CellFormat::right_border},
};

constexpr std::string_view alignments[] = {"", "\\trqr", "\\trqc", "", ""};
constexpr std::string_view across_words[] = {"", "\\clmgf", "\\clmrg"};
constexpr std::string_view down_words[] = {"", "\\clvmgf", "\\clvmrg"};
constexpr std::string_view cell_alignments[] = {"", "\\clvertalc", "\\clvertalb"};

void write_number(std::string& out, std::string_view name, int value) {
    if (value) {
        out += name;
        out += std::to_string(value);
    }
}

} // namespace

std::span<const TableWord> table_words() {
    return words;
}

std::span<const TableBorderWord> table_border_words() {
    return borders;
}

void write_row_words(std::string& out, const RowFormat& row) {
    out += "\\trowd";
    write_number(out, "\\trgaph", row.gap);
    write_number(out, "\\trleft", row.left);
    write_number(out, "\\trrh", row.height);
    out += alignments[static_cast<std::size_t>(row.alignment)];
    if (row.header)
        out += "\\trhdr";
    if (row.keep)
        out += "\\trkeep";
    for (const TableBorderWord& each : borders)
        if (each.of_row)
            write_border(out, each.name, row.*each.of_row);
    for (const CellFormat& cell : row.cells) {
        out += across_words[static_cast<std::size_t>(cell.across)];
        out += down_words[static_cast<std::size_t>(cell.down)];
        out += cell_alignments[static_cast<std::size_t>(cell.alignment)];
        for (const TableBorderWord& each : borders)
            if (each.of_cell)
                write_border(out, each.name, cell.*each.of_cell);
        write_number(out, "\\clcbpat", cell.background);
        write_number(out, "\\clshdng", cell.shading);
        out += "\\cellx";
        out += std::to_string(cell.right);
    }
}

void add_missing_cells(RowFormat& row, std::size_t cells) {
    constexpr int inch = 1440;
    const auto edge = [&row](std::size_t behind) { return behind ? row.cells[behind - 1].right : row.left; };
    const std::size_t known = row.cells.size();
    const int last = known ? edge(known) - edge(known - 1) : 0;
    const int width = last > 0 ? last : inch;
    while (row.cells.size() < cells) {
        CellFormat cell;
        cell.right = std::min(edge(row.cells.size()) + width, limits::measure);
        row.cells.push_back(cell);
    }
}

} // namespace tolva::rtf
