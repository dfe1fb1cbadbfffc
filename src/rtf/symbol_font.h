#pragma once

#include <string_view>

namespace tolva::rtf {

/// What the glyphs of a symbol font look like, as characters that any font may have: those of the bytes 20 to
/// FF in order, 0 where there is none. Known are Symbol, Wingdings and Zapf Dingbats, by any spelling of
/// their names; empty for other fonts.
std::u32string_view symbol_glyphs(std::string_view font_name);

} // namespace tolva::rtf
