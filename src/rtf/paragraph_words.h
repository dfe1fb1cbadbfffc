#pragma once

#include <span>
#include <string>
#include <string_view>

#include "rtf/character_words.h"
#include "rtf/format.h"
#include "rtf/lexer.h"
#include "rtf/source_fonts.h"

namespace tolva::rtf {

/// What the next \tx is going to be; it forgets both.
struct PendingTab {
    TabKind kind = TabKind::left;
    TabLeader leader = TabLeader::none;
};

struct ParagraphWord {
    std::string_view name;
    Refers refers;
    void (*apply)(ParagraphFormat&, PendingTab&, Parameter);
};

std::span<const ParagraphWord> paragraph_words();

/// The words that choose which border the border words that follow describe.
struct ParagraphBorderWord {
    std::string_view name;
    Border ParagraphBorders::*border;
};

std::span<const ParagraphBorderWord> paragraph_border_words();

/// All that differs from what \pard gives, without the \pard.
void write_paragraph_words(std::string& out, const ParagraphFormat& format, const SourceFonts& fonts);

} // namespace tolva::rtf
