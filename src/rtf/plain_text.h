#pragma once

#include <string>

#include "rtf/document.h"

namespace tolva::rtf {

/// The document's text as a rich text box gives it: UTF-8, the texts of lists as they are shown, CR LF
/// between paragraphs and rows, a tab between cells, U+000B for a line break within a paragraph, U+000C for a
/// page break, U+FFFC for a picture. Hidden text counts; footnotes, headers and footers don't.
std::string plain_text(const Document& document);

} // namespace tolva::rtf
