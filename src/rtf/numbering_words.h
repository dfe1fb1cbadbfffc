#pragma once

#include <span>
#include <string>
#include <string_view>

#include "rtf/character_words.h"
#include "rtf/format.h"
#include "rtf/lexer.h"
#include "rtf/source_fonts.h"

namespace tolva::rtf {

struct NumberingWord {
    std::string_view name;
    Refers refers;
    void (*apply)(Numbering&, Parameter);
};

/// The words of a \pn group.
std::span<const NumberingWord> numbering_words();

/// The \pn group; nothing for a paragraph without numbering.
void write_numbering(std::string& out, const Numbering& numbering, const SourceFonts& fonts);

/// The number as a list of that kind shows it: "iv", "D", "4", "4th". Letters go on as "aa", "bb". Bullets
/// and no kind give an empty text.
std::string number_text(NumberKind kind, int number);

/// What a paragraph of the list shows ahead of its text, when the source doesn't tell: without the tab.
std::string numbering_text(const Numbering& numbering, int number);

} // namespace tolva::rtf
