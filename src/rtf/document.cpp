#include "rtf/document.h"

#include <algorithm>

#include "rtf/limits.h"

namespace tolva::rtf {

Document::Document() : fonts(1), colours(1), sections(1), paragraphs(1) {
    fonts.front().family = Font::Family::roman;
    colours.front().automatic = true;
}

int Document::font_index(const Font& font) {
    const auto same = [&font](const Font& other) {
        return other.name == font.name && other.charset == font.charset;
    };
    const auto found = std::find_if(fonts.begin(), fonts.end(), same);
    if (found != fonts.end())
        return static_cast<int>(found - fonts.begin());
    if (fonts.size() >= limits::fonts)
        return default_font;
    int number = 0;
    for (const Font& other : fonts)
        number = std::max(number, other.number < 30000 ? other.number + 1 : number);
    fonts.push_back(font);
    fonts.back().number = number;
    return static_cast<int>(fonts.size() - 1);
}

int Document::colour_index(Colour colour) {
    if (colour.automatic)
        colour = {0, 0, 0, true};
    const auto found = std::find(colours.begin(), colours.end(), colour);
    if (found != colours.end())
        return static_cast<int>(found - colours.begin());
    if (colours.size() >= limits::colours)
        return 0;
    colours.push_back(colour);
    return static_cast<int>(colours.size() - 1);
}

bool operator==(const Document& a, const Document& b) {
    return a.code_page == b.code_page && a.fonts == b.fonts && a.default_font == b.default_font &&
           a.colours == b.colours && a.language == b.language && a.default_tab == b.default_tab &&
           a.page == b.page && a.words == b.words && a.groups == b.groups && a.sections == b.sections &&
           a.paragraphs == b.paragraphs && a.unended == b.unended;
}

bool Section::starts_page() const {
    return std::none_of(words.begin(), words.end(),
                        [](const KeptWord& word) { return word.name == "sbknone" || word.name == "sbkcol"; });
}

std::vector<std::string> losses(const Document& document) {
    return document.dropped;
}

bool shows_nothing(const Paragraph& paragraph) {
    return std::all_of(paragraph.runs.begin(), paragraph.runs.end(), [](const Run& run) {
        return run.inset ? run.inset->kind != Inset::Kind::picture : run.text.empty();
    });
}

} // namespace tolva::rtf
