#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "platform/control.h"

namespace tolva::platform {

/// A table with one fixed heading row (row 0) and at least one body row. The operations bear the names of the
/// grid that the screens were written for; `Row` and `Col` name the cell that `Text` reads and writes, and
/// have nothing to do with what the user has selected.
class Grid : public Control {
  public:
    Grid(Screen& screen, std::string name, int columns);

    /// With the heading.
    int Rows() const { return static_cast<int>(rows_.size()); }
    int Cols() const { return columns_; }

    int Row = 0;
    int Col = 0;
    /// The cell at Row and Col. Error 381 outside the table.
    const std::string& Text() const;
    void set_Text(std::string text);

    /// The body row that the user (or `AddItem` and `RemoveItem` below it) left selected; never the heading.
    /// A newly filled grid reports row 1.
    int RowSel() const { return row_sel_; }
    void select_row(int row);

    /// In twips. A column as narrow as 1 cannot be seen.
    void ColWidth(int column, int twips);
    int width(int column) const { return widths_.at(static_cast<std::size_t>(column)); }
    void ColAlignment(int column, int alignment);
    int alignment(int column) const { return alignments_.at(static_cast<std::size_t>(column)); }

    /// Adds a row at the end, its cells parted by tabs.
    void AddItem(const std::string& text);
    /// Error 30015 for the last body row, 381 for a row that isn't there or the heading.
    void RemoveItem(int row);

    const std::string& cell(int row, int column) const;

    /// A single click on a body row, or Enter on it; RowSel already names it.
    std::function<void()> on_click;

    /// Rises with every change of cells or widths, so that the desktop need not compare.
    unsigned revision() const { return revision_; }

  private:
    using Cells = std::vector<std::string>;

    Cells blank() const { return Cells(static_cast<std::size_t>(columns_)); }

    int columns_;
    /// A deque, as a grid is emptied from the front.
    std::deque<Cells> rows_;
    std::vector<int> widths_;
    std::vector<int> alignments_;
    int row_sel_ = 1;
    unsigned revision_ = 0;
};

} // namespace tolva::platform
