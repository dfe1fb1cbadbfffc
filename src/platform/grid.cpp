#include "platform/grid.h"

#include <algorithm>

#include "basic/run_time_error.h"

namespace tolva::platform {

namespace {

constexpr int default_width = 960;
constexpr int subscript_error = 381;
constexpr int last_row_error = 30015;

[[noreturn]] void refuse_subscript() {
    throw basic::RunTimeError::with_text(subscript_error, "Subscript out of range");
}

} // namespace

Grid::Grid(Screen& screen, std::string name, int columns)
    : Control(screen, std::move(name)), columns_(columns), rows_(2, blank()),
      widths_(static_cast<std::size_t>(columns), default_width),
      alignments_(static_cast<std::size_t>(columns), 0) {}

const std::string& Grid::cell(int row, int column) const {
    if (row < 0 || row >= Rows() || column < 0 || column >= columns_)
        refuse_subscript();
    return rows_[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
}

const std::string& Grid::Text() const {
    return cell(Row, Col);
}

void Grid::set_Text(std::string text) {
    cell(Row, Col);
    rows_[static_cast<std::size_t>(Row)][static_cast<std::size_t>(Col)] = std::move(text);
    ++revision_;
}

void Grid::select_row(int row) {
    row_sel_ = std::clamp(row, 1, Rows() - 1);
}

void Grid::ColWidth(int column, int twips) {
    widths_.at(static_cast<std::size_t>(column)) = twips;
    ++revision_;
}

void Grid::ColAlignment(int column, int alignment) {
    alignments_.at(static_cast<std::size_t>(column)) = alignment;
    ++revision_;
}

void Grid::AddItem(const std::string& text) {
    Cells& cells = rows_.emplace_back(blank());
    std::size_t start = 0;
    for (auto& cell : cells) {
        const std::size_t tab = text.find('\t', start);
        cell.assign(text, start, tab == std::string::npos ? tab : tab - start);
        if (tab == std::string::npos)
            break;
        start = tab + 1;
    }
    ++revision_;
}

void Grid::RemoveItem(int row) {
    if (row < 1 || row >= Rows())
        refuse_subscript();
    if (Rows() == 2)
        throw basic::RunTimeError::with_text(last_row_error, "Cannot remove last non-fixed row");
    rows_.erase(rows_.begin() + row);
    if (row_sel_ > row)
        --row_sel_;
    row_sel_ = std::min(row_sel_, Rows() - 1);
    ++revision_;
}

} // namespace tolva::platform
