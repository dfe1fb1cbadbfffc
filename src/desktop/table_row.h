#pragma once

#include <QTextBlock>
#include <vector>

#include "desktop/rich_text_document.h"

namespace tolva::desktop {

/// The blocks of one row of a table, by cells.
struct TableRow {
    /// Takes the blocks from the row's first on.
    explicit TableRow(const QTextBlock& first);

    /// The cell's format; a plain one for a cell that the row doesn't tell of.
    rtf::CellFormat cell_format(std::size_t cell) const;
    /// Whether the cell is the lower part of another.
    bool continues_above(std::size_t cell) const;
    bool continues_left(std::size_t cell) const;

    rtf::Shared<rtf::RowFormat> format;
    std::vector<std::vector<QTextBlock>> cells;
    QTextBlock first, last;
};

} // namespace tolva::desktop
