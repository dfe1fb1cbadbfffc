#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tolva::basic {

/// Text is UTF-8; every length and cut here counts characters, not bytes. Bytes that are not UTF-8 count one
/// character each.
std::size_t length(std::string_view text);

/// The start of a text, cut as the store counts a column's width: a character beyond U+FFFF takes two places
/// and is never halved.
std::string left(std::string_view text, std::size_t places);

/// Removes blanks (U+0020 only) at both ends, as the language's own trim does.
std::string trim(std::string_view text);

/// Letter case by the Unicode simple mappings for Latin, Greek and Cyrillic letters; the rest stays.
std::string upper(std::string_view text);
std::string lower(std::string_view text);
char32_t upper(char32_t letter);
char32_t lower(char32_t letter);

/// Code points and back; malformed UTF-8 yields U+FFFD, unpaired surrogates are encoded as U+FFFD.
std::u32string to_code_points(std::string_view text);
std::string from_code_points(std::u32string_view code_points);

/// ASCII-only, for names and key words, where the engine ignores case.
bool equal_names(std::string_view a, std::string_view b);

} // namespace tolva::basic
