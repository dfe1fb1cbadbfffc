#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "jet/format.h"

namespace tolva::jet {

/// The text orders that files name in their column definitions and that this engine can write.
enum class TextOrder {
    general_jet4, ///< "General" of Jet 4 files, the order of 2000 to 2003
    general_jet3, ///< "General" of Jet 3 files, over code page 1252; see text_order_jet3.h
};

/// The order that a file of this format means by what a column definition names: a language (1033 stands for
/// most western ones) and the order's version. Nothing for one whose keys are not known here, so that its
/// table may only be read.
std::optional<TextOrder> known_text_order(const Format& format, std::uint16_t id, std::uint8_t version);

/// How many characters (UTF-16 units) of a text an index looks at.
inline constexpr std::size_t indexed_characters = 255;

/// Appends the index key of a text (without the leading null flag byte): the sort codes of its characters,
/// the end of text, then what tells equal letters apart. Letter case, width and trailing blanks leave no
/// trace. How a key looks is each order's own affair.
void append_text_key(std::vector<std::uint8_t>& key, std::u16string_view text, TextOrder order);
/// The same for UTF-8; bytes that are none leave no trace.
void append_text_key(std::vector<std::uint8_t>& key, std::string_view utf8, TextOrder order);

/// What stands, in one piece, in the key of every text of up to `indexed_characters` in which these letters
/// and digits of ASCII stand one after the other, in either case.
std::vector<std::uint8_t> key_share(std::string_view letters_and_digits, TextOrder order);

/// How the query language compares text, UTF-8 on both sides:
/// the order of the keys above, but over the whole length.
/// Allocates nothing for ASCII in Jet 4's order.
std::weak_ordering compare_text(std::string_view a, std::string_view b, TextOrder order);

} // namespace tolva::jet
