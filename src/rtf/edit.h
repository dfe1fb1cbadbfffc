#pragma once

#include <cstddef>
#include <vector>

#include "rtf/document.h"
#include "rtf/text_place.h"

namespace tolva::rtf {

// Changes of a document's text. What every document guarantees holds afterwards: at least one paragraph, rows
// that are whole, marks in pairs, as many sections as there are section breaks. Positions as in text_place.h.

/// Makes a paragraph that goes on behind one of a list fit: a bullet comes again, but a number that came
/// twice would be worse than none, so the paragraph leaves the list.
void repeat_list_text(Paragraph& paragraph);

/// What stands between two positions, as a document of its own with the same tables. A row that isn't
/// selected whole becomes text, its cells parted by tabs.
Document slice(const Document& document, std::size_t from, std::size_t to);

/// Takes out what stands between two positions. Rows that lie within go with it; of others only the text in
/// their cells. Paragraphs that meet become one, which keeps the first one's format unless nothing of it is
/// left.
void erase(Document& document, std::size_t from, std::size_t to);

/// Puts paragraphs in, whose fonts and colours are the document's own, and gives the position behind them.
/// The last one goes on with what stood there when it is `unended`. A paragraph that goes on ahead keeps its
/// format.
std::size_t insert(Document& document, std::size_t at, std::vector<Paragraph> paragraphs, bool unended);

/// Puts another document's text in: its fonts and colours are brought over; its styles, list tables, sections
/// and page setup are not.
std::size_t insert(Document& document, std::size_t at, const Document& other);

} // namespace tolva::rtf
