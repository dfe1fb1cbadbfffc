#pragma once

#include <span>
#include <string>
#include <string_view>

#include "rtf/format.h"
#include "rtf/lexer.h"

namespace tolva::rtf {

/// The words that describe one border, after the word that says which it is. The colour comes as an index.
struct BorderWord {
    std::string_view name;
    bool refers_to_colour;
    void (*apply)(Border&, Parameter);
};

std::span<const BorderWord> border_words();

/// Writes the word for the side and the border's own words; nothing for a border that is all standard.
void write_border(std::string& out, std::string_view side, const Border& border);

} // namespace tolva::rtf
