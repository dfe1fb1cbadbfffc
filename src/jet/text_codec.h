#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "jet/format.h"

namespace tolva::jet {

/// Text as the file stores it: two bytes a character, or behind FF FE "compressed": one byte a character for
/// U+0001 to U+00FF, with a zero byte switching between that and two bytes.
std::string decode_text(std::span<const std::uint8_t> stored);

/// The UTF-16 units of a text; what is no UTF-8 becomes U+FFFD.
std::u16string to_utf16(std::string_view text);

/// Appends the stored form. Compressed only where `may_compress`, where it is shorter, where no unit has a
/// low byte of zero, and for texts up to the format's limit.
void encode_text(std::vector<std::uint8_t>& out, std::u16string_view units, bool may_compress,
                 const Format& format);

} // namespace tolva::jet
