#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "jet/format.h"

namespace tolva::jet {

/// Text as the file stores it, as UTF-8. Jet 4: two bytes a character, or behind FF FE "compressed": one byte
/// a character for U+0001 to U+00FF, with a zero byte switching between that and two bytes. Jet 3: one byte a
/// character, in the file's code page; what that page does not have becomes U+FFFD.
std::string decode_text(std::span<const std::uint8_t> stored, const Format& format);
/// The same into a string whose room is used again; what it held is gone.
void decode_text(std::span<const std::uint8_t> stored, const Format& format, std::string& out);

/// The UTF-16 units of a text; what is no UTF-8 becomes U+FFFD.
std::u16string to_utf16(std::string_view text);

/// Appends the stored form. Jet 4: compressed only where `may_compress`, where it is shorter, where no unit
/// has a low byte of zero, and for texts up to the format's limit. Jet 3: a unit that the code page lacks
/// becomes "?".
void encode_text(std::vector<std::uint8_t>& out, std::u16string_view units, bool may_compress,
                 const Format& format);

/// Whether the characters of a code page are known here, so that its texts may be read and written.
bool knows_code_page(int number);
/// The byte of a unit in a code page, "?" where the page lacks it.
std::uint8_t code_page_byte(int number, char16_t unit);

} // namespace tolva::jet
