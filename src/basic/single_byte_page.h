#pragma once

#include <string_view>

namespace tolva::basic {

/// The characters of the bytes 80 to FF of a code page by its number, blank where the page has none; empty
/// for a page that is not at hand.
std::u16string_view single_byte_page(int number);

} // namespace tolva::basic
