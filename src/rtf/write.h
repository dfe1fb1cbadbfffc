#pragma once

#include <string>

#include "rtf/document.h"

namespace tolva::rtf {

/// The document as rich text source: ASCII but for what it keeps of its source word for word, \uc1
/// throughout, \'xx by each font's character set and \uN for the rest, lines ended by CR LF. A document that
/// `read` gave reads back equal.
std::string write(const Document& document);

} // namespace tolva::rtf
