#pragma once

#include <cstdint>
#include <string_view>

#include "rtf/document.h"

namespace tolva::rtf {

/// What bytes above 7F are that stand in a source as they are.
enum class RawBytes : std::uint8_t {
    code_page, ///< those of the font's code page, as in a file
    utf8,      ///< UTF-8, as in a source that the program has put together as text
};

/// Whether the source begins as rich text does: blank space, "{\rtf".
bool is_rich_text(std::string_view source);

/// Reads a rich text source. Error 321 when `is_rich_text` says no; any other oddness degrades: what can't be
/// understood is passed over, what can't be kept is noted in `Document::dropped`, and the text stays. Takes
/// one pass, no recursion, and memory in proportion to the source (limits.h).
Document read(std::string_view source, RawBytes raw_bytes = RawBytes::code_page);

} // namespace tolva::rtf
