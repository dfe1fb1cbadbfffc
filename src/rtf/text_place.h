#pragma once

#include <cstddef>

#include "rtf/document.h"

namespace tolva::rtf {

// Positions count the characters of `plain_text`: a line end between paragraphs counts two, a list's text
// counts though nothing can be put into it.

/// A place between two characters of a paragraph.
struct Place {
    std::size_t paragraph = 0;
    /// Characters behind the start of the paragraph's own text.
    std::size_t offset = 0;
    /// Ahead of the list's text, which then is as good as selected by what begins here.
    bool before_list_text = false;
};

/// Of a run: its characters, 1 for a picture, 0 for other insets.
std::size_t length_of(const Run& run);
/// Of a paragraph's own text, without its list text and its end.
std::size_t length_of(const Paragraph& paragraph);
/// Of the list text ahead of it.
std::size_t list_length_of(const Paragraph& paragraph);
/// Of the whole text.
std::size_t length_of(const Document& document);

/// A position past the end is the end; one within a list text is behind it, one within a line end ahead of
/// it.
Place place_of(const Document& document, std::size_t position);
std::size_t position_of(const Document& document, const Place& place);

/// The index of the run that begins at the offset, cutting a run in two where needed. Of marks at that very
/// place those that end something stay ahead of it, and with `pass_kept` those that stand alone too.
std::size_t split_runs(std::vector<Run>& runs, std::size_t offset, bool pass_kept = true);

/// Joins neighbours of one format, and takes out what is empty.
void tidy_runs(std::vector<Run>& runs);

} // namespace tolva::rtf
