#pragma once

#include <compare>
#include <cstdint>
#include <string_view>
#include <vector>

namespace tolva::jet {

/// The text orders that files name in their column definitions and that this engine can write.
enum class TextOrder {
    general_jet4, ///< "General" of Jet 4 files, the order of 2000 to 2003
};

/// Appends the index key of a text (without the leading null flag byte): the sort codes of its characters,
/// the end of text, then what tells equal letters apart. Letter case and trailing blanks leave no trace.
void append_text_key(std::vector<std::uint8_t>& key, std::u16string_view text, TextOrder order);

/// How the query language compares text: the order of the keys above.
std::weak_ordering compare_text(std::string_view a, std::string_view b, TextOrder order);

} // namespace tolva::jet
