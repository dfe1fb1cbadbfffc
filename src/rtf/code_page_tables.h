#pragma once

#include <string_view>

namespace tolva::rtf {

/// The character of a two-byte code; 0 where the page has none.
char16_t two_byte_932(unsigned char lead, unsigned char trail);
char16_t two_byte_936(unsigned char lead, unsigned char trail);
char16_t two_byte_949(unsigned char lead, unsigned char trail);
char16_t two_byte_950(unsigned char lead, unsigned char trail);

/// A cell of a table whose gaps are blanks and whose rows may be cut short; 0 for a gap.
inline char16_t table_cell(std::u16string_view row, unsigned cell) {
    return cell < row.size() && row[cell] != u' ' ? row[cell] : char16_t{0};
}

} // namespace tolva::rtf
