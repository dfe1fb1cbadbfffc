#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "rtf/document.h"
#include "rtf/text_place.h"

namespace tolva::rtf {

/// The paragraphs of one row.
struct RowSpan {
    std::size_t first = 0;
    std::size_t behind = 0;
};

/// The rows that lie whole between two places, the last one first.
std::vector<RowSpan> rows_within(const std::vector<Paragraph>& paragraphs, const Place& from,
                                 const Place& to);

/// Makes text of all rows: a paragraph for each, the cells parted by tabs.
void flatten_rows(std::vector<Paragraph>& paragraphs);

/// Makes text of the rows that a cut has left in part. `cut` are the paragraphs of `whole` from `first` on;
/// the flags say whether the cut begins at the start of its first paragraph and takes in its last one's end.
void flatten_partial_rows(std::vector<Paragraph>& cut, const std::vector<Paragraph>& whole, std::size_t first,
                          bool whole_start, bool whole_end);

/// Calls for every colour that the row names.
void bring_row_colours(RowFormat& row, const std::function<void(std::int16_t&)>& bring);

} // namespace tolva::rtf
