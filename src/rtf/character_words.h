#pragma once

#include <span>
#include <string>
#include <string_view>

#include "rtf/format.h"
#include "rtf/lexer.h"
#include "rtf/source_fonts.h"

namespace tolva::rtf {

/// What a word's number refers to, and so what the reader makes of it ahead of applying the word.
enum class Refers : std::uint8_t { nothing, font, colour };

struct CharacterWord {
    std::string_view name;
    Refers refers;
    void (*apply)(CharacterFormat&, Parameter);
};

std::span<const CharacterWord> character_words();

/// The words that make `to` of `from`, appended to the output, each as "\name7". The plain format is what
/// \plain gives.
void write_character_words(std::string& out, const CharacterFormat& from, const CharacterFormat& to,
                           const CharacterFormat& plain, const SourceFonts& fonts);

} // namespace tolva::rtf
