#include "desktop/table_row.h"

namespace tolva::desktop {

TableRow::TableRow(const QTextBlock& begin) : format(BlockData::of(begin).row), cells(1), first(begin) {
    for (QTextBlock block = begin; block.isValid() && BlockData::of(block).in_table; block = block.next()) {
        cells.back().push_back(block);
        last = block;
        if (BlockData::of(block).end == rtf::Paragraph::End::row)
            return;
        if (BlockData::of(block).end == rtf::Paragraph::End::cell)
            cells.emplace_back();
    }
}

rtf::CellFormat TableRow::cell_format(std::size_t cell) const {
    return cell < format->cells.size() ? format->cells[cell] : rtf::CellFormat();
}

bool TableRow::continues_above(std::size_t cell) const {
    return cell_format(cell).down == rtf::CellMerge::continued;
}

bool TableRow::continues_left(std::size_t cell) const {
    return cell_format(cell).across == rtf::CellMerge::continued;
}

} // namespace tolva::desktop
