#pragma once

#include <string>
#include <string_view>

namespace tolva::basic {

/// Windows-1252, the code page of every file of the single-byte era. The five bytes without a character of
/// their own map to U+0081, U+008D, U+008F, U+0090 and U+009D, so that every byte survives a round trip.
std::string from_windows_1252(std::string_view bytes);

/// What the code page lacks becomes "?".
std::string to_windows_1252(std::string_view utf8);

} // namespace tolva::basic
