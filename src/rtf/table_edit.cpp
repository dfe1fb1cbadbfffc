#include "rtf/table_edit.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace tolva::rtf {

namespace {

/// The row that a paragraph of a table belongs to.
RowSpan row_around(const std::vector<Paragraph>& paragraphs, std::size_t at) {
    RowSpan span{at, at};
    while (span.first > 0 && paragraphs[span.first - 1].in_table &&
           paragraphs[span.first - 1].end != Paragraph::End::row)
        --span.first;
    while (span.behind + 1 < paragraphs.size() && paragraphs[span.behind].end != Paragraph::End::row)
        ++span.behind;
    ++span.behind;
    return span;
}

void flatten(std::vector<Paragraph>& paragraphs, std::size_t first, std::size_t behind) {
    std::vector<Paragraph> flat;
    bool goes_on = false;
    for (std::size_t at = first; at < behind; ++at) {
        Paragraph& paragraph = paragraphs[at];
        const bool cell = paragraph.end == Paragraph::End::cell && at + 1 < behind;
        paragraph.in_table = false;
        paragraph.row = {};
        paragraph.end = Paragraph::End::paragraph;
        if (cell)
            paragraph.runs.push_back({"\t", paragraph.mark, nullptr});
        if (goes_on) {
            std::vector<Run>& runs = flat.back().runs;
            runs.insert(runs.end(), std::make_move_iterator(paragraph.runs.begin()),
                        std::make_move_iterator(paragraph.runs.end()));
            flat.back().mark = paragraph.mark;
        } else {
            flat.push_back(std::move(paragraph));
        }
        goes_on = cell;
    }
    for (Paragraph& paragraph : flat)
        tidy_runs(paragraph.runs);
    const auto begin = paragraphs.begin() + static_cast<std::ptrdiff_t>(first);
    const auto place = paragraphs.erase(begin, paragraphs.begin() + static_cast<std::ptrdiff_t>(behind));
    paragraphs.insert(place, std::make_move_iterator(flat.begin()), std::make_move_iterator(flat.end()));
}

} // namespace

std::vector<RowSpan> rows_within(const std::vector<Paragraph>& paragraphs, const Place& from,
                                 const Place& to) {
    std::vector<RowSpan> rows;
    for (std::size_t at = from.paragraph; at <= to.paragraph && at < paragraphs.size();) {
        if (!paragraphs[at].in_table) {
            ++at;
            continue;
        }
        const RowSpan row = row_around(paragraphs, at);
        const bool from_start =
            row.first > from.paragraph || (row.first == from.paragraph && from.offset == 0);
        const bool last_of_all = row.behind == paragraphs.size() && to.paragraph + 1 == row.behind &&
                                 to.offset == length_of(paragraphs.back());
        if (from_start && (row.behind <= to.paragraph || last_of_all))
            rows.insert(rows.begin(), row);
        at = row.behind;
    }
    return rows;
}

void flatten_rows(std::vector<Paragraph>& paragraphs) {
    for (std::size_t at = paragraphs.size(); at-- > 0;) {
        if (!paragraphs[at].in_table)
            continue;
        const RowSpan row = row_around(paragraphs, at);
        flatten(paragraphs, row.first, row.behind);
        at = row.first;
    }
}

void flatten_partial_rows(std::vector<Paragraph>& cut, const std::vector<Paragraph>& whole, std::size_t first,
                          bool whole_start, bool whole_end) {
    if (cut.back().in_table) {
        const std::size_t last = cut.size() - 1;
        const RowSpan row = row_around(whole, first + last);
        const bool starts = row.first > first || (row.first == first && whole_start);
        if (!starts || row.behind != first + cut.size() || !whole_end) {
            cut.back().end = Paragraph::End::paragraph;
            flatten(cut, row.first > first ? row.first - first : 0, cut.size());
        }
    }
    if (cut.front().in_table) {
        const RowSpan row = row_around(whole, first);
        if (row.first != first || !whole_start)
            flatten(cut, 0, std::min(row.behind - first, cut.size()));
    }
}

void bring_row_colours(RowFormat& row, const std::function<void(std::int16_t&)>& bring) {
    for (Border* const border :
         {&row.top, &row.bottom, &row.left_border, &row.right_border, &row.horizontal, &row.vertical})
        bring(border->colour);
    for (CellFormat& cell : row.cells) {
        for (Border* const border : {&cell.top, &cell.bottom, &cell.left, &cell.right_border})
            bring(border->colour);
        bring(cell.background);
    }
}

} // namespace tolva::rtf
