#include "rtf/source_fonts.h"

#include "rtf/symbol_font.h"

namespace tolva::rtf {

CodePage page_of(const Font& font, int document_code_page) {
    constexpr int symbols = 2;
    if (font.code_page)
        return CodePage(font.code_page);
    if (font.charset == symbols)
        return CodePage::of_symbol_font(font.name);
    // Older sources don't say that their symbols are such.
    if (font.charset < 0 && !symbol_glyphs(font.name).empty())
        return CodePage::of_symbol_font(font.name);
    return CodePage(code_page_of_charset(font.charset).value_or(document_code_page));
}

CodePage page_of_name(const Font& font, int document_code_page) {
    const CodePage page = page_of(font, document_code_page);
    return page.is_symbol() ? CodePage(document_code_page) : page;
}

SourceFonts::SourceFonts(const Document& document) : document_page_(document.code_page) {
    for (const Font& font : document.fonts) {
        numbers_.push_back(font.number);
        pages_.push_back(page_of(font, document.code_page));
    }
}

} // namespace tolva::rtf
