#include "rtf/font_table.h"

#include <algorithm>
#include <string>
#include <utility>

#include "rtf/limits.h"
#include "rtf/source_fonts.h"

namespace tolva::rtf {

namespace {

void trim(std::string& name) {
    name.erase(0, name.find_first_not_of(' '));
    name.erase(name.find_last_not_of(' ') + 1);
}

/// A name on one line, free of what ends it.
void append_name(std::string& name, std::string_view text) {
    if (name.size() > limits::name_bytes)
        return;
    for (const char character : text)
        if (static_cast<unsigned char>(character) >= 0x20 && character != ';')
            name += character;
}

} // namespace

void FontTable::begin_font(int number) {
    add();
    font_ = {};
    font_.number = number;
    font_.name.clear();
    begun_ = true;
}

void FontTable::word(FontWord word, Parameter parameter) {
    switch (word) {
    case FontWord::charset:
        // A number that is no character set tells nothing.
        if (parameter.value >= 0 && parameter.value <= 255)
            font_.charset = static_cast<std::int16_t>(parameter.value);
        break;
    case FontWord::pitch:
        font_.pitch = static_cast<std::int16_t>(std::clamp(parameter.value, 0, 2));
        break;
    case FontWord::code_page:
        font_.code_page = has_code_page(parameter.value) ? parameter.value : 0;
        break;
    default:
        font_.family =
            static_cast<Font::Family>(static_cast<int>(word) - static_cast<int>(FontWord::unknown));
        break;
    }
}

void FontTable::name(std::string_view utf8) {
    const std::size_t end = utf8.find(';');
    if (begun_)
        append_name(font_.name, utf8.substr(0, end));
    if (end != std::string_view::npos)
        add();
}

void FontTable::alternative(std::string_view utf8) {
    if (begun_)
        append_name(font_.alternative, utf8);
}

void FontTable::add() {
    if (!std::exchange(begun_, false) || document_.fonts.size() >= limits::fonts)
        return;
    for (std::string* const name : {&font_.name, &font_.alternative}) {
        cut_utf8(*name, limits::name_bytes);
        trim(*name);
    }
    if (font_.name.empty())
        font_.name = Font().name;
    indexes_.emplace(font_.number, static_cast<int>(document_.fonts.size()));
    pages_.push_back(page_of(font_, document_.code_page));
    document_.fonts.push_back(std::move(font_));
    font_ = {};
}

CodePage FontTable::page() const {
    return page_of_name(font_, document_.code_page);
}

void FontTable::set_document_page(int code_page) {
    document_.code_page = code_page;
    document_page_ = CodePage(code_page);
}

void FontTable::add_font_of_early_text() {
    constexpr int unlikely_number = 32767;
    if (!document_.fonts.empty())
        return;
    begin_font(unlikely_number);
    font_.family = Font::Family::roman;
    add();
}

void FontTable::finish() {
    add();
    if (document_.fonts.empty()) {
        Font font;
        font.family = Font::Family::roman;
        font.number = default_number_;
        indexes_.emplace(font.number, 0);
        document_.fonts.push_back(font);
        pages_.push_back(page_of(font, document_.code_page));
    }
    const auto found = indexes_.find(default_number_);
    document_.default_font = found == indexes_.end() ? 0 : found->second;
}

int FontTable::index_of(int number) const {
    const auto found = indexes_.find(number);
    return found == indexes_.end() ? document_.default_font : found->second;
}

const CodePage& FontTable::page_of_index(int index) const {
    const auto at = static_cast<std::size_t>(index);
    return at < pages_.size() ? pages_[at] : document_page_;
}

} // namespace tolva::rtf
