#pragma once

#include <span>
#include <string>
#include <string_view>

#include "rtf/character_words.h"
#include "rtf/format.h"
#include "rtf/lexer.h"

namespace tolva::rtf {

/// The row that is being described, and the cell whose right edge is still to come.
struct RowInSource {
    Shared<RowFormat> row;
    CellFormat cell;
};

struct TableWord {
    std::string_view name;
    Refers refers;
    void (*apply)(RowInSource&, Parameter);
};

std::span<const TableWord> table_words();

/// The words that choose which border of the row or of the next cell the border words that follow describe;
/// one of the two members is set.
struct TableBorderWord {
    std::string_view name;
    Border RowFormat::*of_row;
    Border CellFormat::*of_cell;
};

std::span<const TableBorderWord> table_border_words();

/// \trowd and all that follows from it.
void write_row_words(std::string& out, const RowFormat& row);

/// The right edges that a row's text needs beyond those described: as wide as the last, or an inch.
void add_missing_cells(RowFormat& row, std::size_t cells);

} // namespace tolva::rtf
