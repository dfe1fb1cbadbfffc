#pragma once

#include <compare>
#include <cstdint>
#include <string_view>
#include <vector>

namespace tolva::jet {

// The order "General" of Jet 3, over the bytes of code page 1252. A character weighs one byte, a ligature and
// the sharp s two; letters of either case weigh the same, and so do all control characters, all blanks, all
// dashes. No character goes without a weight.

/// Appends the key of a text without its flag: the weights, then 00; where a letter has an accent, instead of
/// the 00 the accents of all letters and digits, four bits each.
void append_jet3_text_key(std::vector<std::uint8_t>& key, std::u16string_view text);

/// The order of those keys, over the whole length; without trailing blanks on both sides.
std::weak_ordering compare_jet3_text(std::u16string_view a, std::u16string_view b);

} // namespace tolva::jet
