#include <QTextLayout>

#include "desktop/rich_text_layout.h"

namespace tolva::desktop {

namespace {

const rtf::Border& told(const rtf::Border& own, const rtf::Border& of_row) {
    return own.style == rtf::BorderStyle::none ? of_row : own;
}

/// Whether the next row's cell with the same right edge is the lower part of this one.
bool goes_on_below(const TableRow& row, std::size_t cell) {
    const QTextBlock next = row.last.next();
    if (!next.isValid() || !BlockData::of(next).in_table)
        return false;
    const rtf::RowFormat& below = *BlockData::of(next).row;
    const int right = row.cell_format(cell).right;
    for (const rtf::CellFormat& other : below.cells)
        if (other.right == right)
            return other.down == rtf::CellMerge::continued;
    return false;
}

/// How thick the rule above the row is.
int rule_above(const TableRow& row) {
    int thickest = 0;
    for (std::size_t cell = 0; cell < row.cells.size(); ++cell) {
        const rtf::Border border = told(row.cell_format(cell).top, row.format->top);
        if (border.style != rtf::BorderStyle::none)
            thickest = std::max<int>(thickest, border.width);
    }
    return thickest;
}

bool is_in_table(const QTextBlock& block) {
    return block.isValid() && BlockData::of(block).in_table;
}

} // namespace

/// From edge to edge, a merged cell's with those that it has taken in.
RichTextLayout::Column RichTextLayout::cell_edges(const TableRow& row, std::size_t cell) const {
    const rtf::RowFormat& format = *row.format;
    double left = cell == 0 ? format.left : row.cell_format(cell - 1).right;
    std::size_t last = cell;
    while (row.cell_format(cell).across == rtf::CellMerge::first && row.continues_left(last + 1))
        ++last;
    double right = row.cell_format(last).right;
    if (!format.cells.empty() && format.alignment != rtf::Alignment::left) {
        const double spare = width_ / unit_ - (format.cells.back().right - format.left);
        const double shift = (format.alignment == rtf::Alignment::right ? spare : spare / 2) - format.left;
        left += shift;
        right += shift;
    }
    return {inset_ + px(left), px(std::max(right - left, 0.0))};
}

RichTextLayout::Flow RichTextLayout::place_cell(const TableRow& row, std::size_t cell, Flow flow) const {
    const Column edges = cell_edges(row, cell);
    const double gap = px(row.format->gap);
    const Column column{edges.left + gap, std::max(edges.width - 2 * gap, px(1))};
    for (const QTextBlock& block : row.cells[cell])
        flow = place_paragraph(block, column, flow);
    return flow;
}

RichTextLayout::Flow RichTextLayout::place_cells(const TableRow& row, Flow flow) const {
    Flow deepest = flow;
    Flow text_top = flow;
    text_top.y += px(rule_above(row));
    for (std::size_t cell = 0; cell < row.cells.size(); ++cell) {
        const Flow end = place_cell(row, cell, text_top);
        const bool counts = !row.continues_above(cell) && !row.continues_left(cell);
        if (counts && end.y > deepest.y)
            deepest = end;
    }
    const double height = px(row.format->height);
    if (height > 0 && deepest.page == flow.page)
        deepest.y = std::max(deepest.y, flow.y + height);
    if (height < 0)
        deepest = {flow.y - height, flow.page};
    return deepest;
}

/// A cell's text stands at its top, in its middle or at its foot.
void RichTextLayout::align_cells(const TableRow& row, const Flow& top, const Flow& bottom) const {
    if (top.page != bottom.page)
        return;
    for (std::size_t cell = 0; cell < row.cells.size(); ++cell) {
        const rtf::CellAlignment alignment = row.cell_format(cell).alignment;
        if (alignment == rtf::CellAlignment::top)
            continue;
        const double spare = bottom.y - BlockData::of(row.cells[cell].back()).place.bottom();
        const double down = alignment == rtf::CellAlignment::bottom ? spare : spare / 2;
        if (down <= 0)
            continue;
        for (const QTextBlock& block : row.cells[cell]) {
            block.layout()->setPosition(block.layout()->position() + QPointF(0, down));
            BlockData::of(block).place.translate(0, down);
        }
    }
}

RichTextLayout::Flow RichTextLayout::place_row(const TableRow& row, Flow flow) {
    Flow bottom = place_cells(row, flow);
    const bool on_next = std::any_of(row.cells.begin(), row.cells.end(), [&](const auto& cell) {
        return BlockData::of(cell.front()).lines.front().page != flow.page;
    });
    const bool parted = bottom.page != flow.page && (row.format->keep || row.format->header);
    if ((on_next || parted || !fits(flow, bottom.y - flow.y)) && bottom.page <= flow.page + 1 &&
        (on_next || parted || bottom.page == flow.page) && !at_page_top(flow)) {
        next_page(flow);
        bottom = place_cells(row, flow);
    }
    align_cells(row, flow, bottom);
    rule_row(row, flow, bottom);
    return bottom;
}

void RichTextLayout::rule_row(const TableRow& row, const Flow& top, const Flow& bottom) {
    const rtf::RowFormat& format = *row.format;
    const bool is_first = !is_in_table(row.first.previous());
    const bool is_last = !is_in_table(row.last.next());
    for (std::size_t cell = 0; cell < row.cells.size(); ++cell) {
        if (row.continues_left(cell))
            continue;
        const rtf::CellFormat own = row.cell_format(cell);
        const bool at_left = cell == 0;
        const bool at_right = cell + 1 == row.cells.size();
        Sides sides{told(own.top, is_first ? format.top : format.horizontal),
                    told(own.bottom, is_last ? format.bottom : format.horizontal),
                    told(own.left, at_left ? format.left_border : format.vertical),
                    told(own.right_border, at_right ? format.right_border : format.vertical)};
        if (row.continues_above(cell))
            sides.top = {};
        if (goes_on_below(row, cell))
            sides.bottom = {};
        const Column edges = cell_edges(row, cell);
        add_box(QRectF(edges.left, top.y, edges.width, bottom.y - top.y), sides,
                ground_of(own.background, own.shading));
    }
}

} // namespace tolva::desktop
