#include "rtf/source_reader.h"

#include <algorithm>

#include "basic/run_time_error.h"
#include "rtf/limits.h"

namespace tolva::rtf {

namespace {

bool is_plain(char byte) {
    const auto value = static_cast<unsigned char>(byte);
    return value >= 0x20 && value < 0x80;
}

/// UTF-8's continuation bytes belong to the character ahead of them.
bool continues(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

} // namespace

bool is_rich_text(std::string_view source) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    constexpr std::string_view blanks = " \t\r\n";
    if (source.starts_with(mark))
        source.remove_prefix(mark.size());
    source.remove_prefix(std::min(source.find_first_not_of(blanks), source.size()));
    if (!source.starts_with('{'))
        return false;
    source.remove_prefix(1);
    source.remove_prefix(std::min(source.find_first_not_of("\r\n"), source.size()));
    return source.starts_with("\\rtf");
}

Document read(std::string_view source, RawBytes raw_bytes) {
    if (!is_rich_text(source))
        throw basic::RunTimeError(321);
    return SourceReader(source.substr(source.find('{')), raw_bytes).read();
}

SourceReader::SourceReader(std::string_view source, RawBytes raw_bytes)
    : builder_(document_), lexer_(source), raw_bytes_(raw_bytes), fonts_(document_) {
    document_.fonts.clear();
    document_.paragraphs.clear();
    document_.sections.clear();
    fonts_.set_document_page(CodePage::windows_1252);
    groups_.emplace_back();
}

Document SourceReader::read() {
    while (!finished_) {
        Token token = lexer_.next();
        if (token.kind == Token::Kind::end)
            break;
        if (to_skip_ == 0 || !skips(token))
            take(token);
    }
    // A cut source leaves groups open; what they hold still counts.
    flush();
    deeper_ = 0;
    while (groups_.size() > 1)
        close_group();
    if (!fonts_read_)
        fonts_.finish();
    if (builder_.current_counts() || document_.paragraphs.empty())
        make_list_text();
    const Group& last = groups_.front();
    builder_.finish(last.paragraph, plain(), last.in_table, row_.row);
    return std::move(document_);
}

bool SourceReader::skips(Token& token) {
    switch (token.kind) {
    case Token::Kind::open:
    case Token::Kind::close:
    case Token::Kind::end:
        to_skip_ = 0;
        return false;
    case Token::Kind::text: {
        std::size_t length = 0;
        while (to_skip_ && length < token.text.size()) {
            ++length;
            if (raw_bytes_ == RawBytes::utf8)
                while (length < token.text.size() && continues(token.text[length]))
                    ++length;
            --to_skip_;
        }
        token.text.remove_prefix(length);
        return token.text.empty();
    }
    case Token::Kind::word:
        if (token.text == "bin")
            lexer_.take(token.parameter.value);
        break;
    default:
        break;
    }
    --to_skip_;
    return true;
}

void SourceReader::take(Token& token) {
    switch (token.kind) {
    case Token::Kind::open:
        flush();
        open_group();
        break;
    case Token::Kind::close:
        flush();
        close_group();
        break;
    case Token::Kind::word: {
        const Word* const word = find_word(token.text);
        const bool is_unit = word && word->topic == Topic::header && Header(word->value) == Header::unicode;
        if (!is_unit)
            flush();
        if (!group_begins_ || !begin_group(token, word))
            apply(token, word);
        break;
    }
    case Token::Kind::symbol:
        if (token.byte == '*' && group_begins_) {
            starred_ = true;
        } else {
            group_begins_ = false;
            symbol(token.byte);
        }
        break;
    case Token::Kind::hex: {
        const char byte = static_cast<char>(token.byte);
        group_begins_ = false;
        bytes(std::string_view(&byte, 1), false);
        break;
    }
    case Token::Kind::text:
        group_begins_ = false;
        bytes(token.text, true);
        break;
    case Token::Kind::end:
        break;
    }
}

void SourceReader::symbol(unsigned char byte) {
    switch (byte) {
    case '\\':
    case '{':
    case '}': {
        const char as_text = static_cast<char>(byte);
        bytes(std::string_view(&as_text, 1), false);
        break;
    }
    case '\t':
        character(U'\t');
        break;
    case '~':
        character(0xA0);
        break;
    case '-':
        character(0xAD);
        break;
    case '_':
        character(0x2011);
        break;
    case '\r':
    case '\n':
        flush();
        apply_structure(Structure::paragraph, {});
        break;
    default:
        break; // an unknown symbol means nothing
    }
}

CodePage SourceReader::page() const {
    switch (destination()) {
    case Destination::fonts:
    case Destination::font_alternative:
        return fonts_.page();
    case Destination::number_before:
    case Destination::number_after:
        return numbering_.font >= 0 ? fonts_.page_of_index(numbering_.font) : fonts_.document_page();
    default:
        return fonts_.page_of_index(groups_.back().characters.font);
    }
}

void SourceReader::bytes(std::string_view text, bool raw) {
    switch (destination()) {
    case Destination::colours:
        for (const char character : text)
            if (character == ';')
                add_colour();
        return;
    case Destination::picture:
        if (raw)
            picture_.digits(text);
        return;
    case Destination::body:
    case Destination::list_text:
    case Destination::fonts:
    case Destination::font_alternative:
    case Destination::number_before:
    case Destination::number_after:
        break;
    default:
        return;
    }
    const CodePage by = page();
    // Most of a letter: nothing to decode, straight to the paragraph.
    if (in_body() && by.keeps_ascii() && !decoder_.pending() &&
        std::all_of(text.begin(), text.end(), is_plain)) {
        body_text() += text;
        return;
    }
    if (raw && raw_bytes_ == RawBytes::utf8)
        decoder_.utf8_or_page(text, by, decoded_);
    else
        decoder_.bytes(text, by, decoded_);
    deliver();
}

void SourceReader::unit(std::int32_t value) {
    // All of a number ahead of a paragraph appears in the font that it begins with.
    const bool goes_on = destination() == Destination::list_text && !list_text_.text.empty();
    decoder_.unit(value, goes_on ? fonts_.page_of_index(list_text_.format.font) : page(), decoded_);
    deliver();
}

void SourceReader::character(char32_t value) {
    decoder_.character(value, decoded_);
    deliver();
}

std::string& SourceReader::body_text() {
    std::string& text = builder_.text(groups_.back().characters);
    if (nested_cell_)
        text += '\t';
    nested_cell_ = false;
    return text;
}

void SourceReader::deliver() {
    if (decoded_.empty())
        return;
    switch (destination()) {
    case Destination::body:
        body_text() += decoded_;
        break;
    case Destination::list_text:
        if (list_text_.text.empty())
            list_text_.format = groups_.back().characters;
        if (list_text_.text.size() + decoded_.size() <= limits::list_text_bytes)
            list_text_.text += decoded_;
        break;
    case Destination::fonts:
        fonts_.name(decoded_);
        break;
    case Destination::font_alternative:
        fonts_.alternative(decoded_);
        break;
    case Destination::number_before:
        if (numbering_.before.size() + decoded_.size() <= limits::list_text_bytes)
            numbering_.before += decoded_;
        break;
    case Destination::number_after:
        if (numbering_.after.size() + decoded_.size() <= limits::list_text_bytes)
            numbering_.after += decoded_;
        break;
    default:
        break;
    }
    decoded_.clear();
}

void SourceReader::flush() {
    if (decoder_.pending()) {
        decoder_.flush(decoded_);
        deliver();
    }
}

} // namespace tolva::rtf
