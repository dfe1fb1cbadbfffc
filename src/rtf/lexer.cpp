#include "rtf/lexer.h"

#include <array>
#include <limits>

namespace tolva::rtf {

namespace {

bool is_letter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

bool is_digit(char character) {
    return character >= '0' && character <= '9';
}

/// Which bytes end a stretch of plain text.
constexpr std::array<bool, 256> make_stops() {
    std::array<bool, 256> stops{};
    for (unsigned byte = 0; byte < 0x20; ++byte)
        stops[byte] = true;
    stops['\\'] = stops['{'] = stops['}'] = true;
    return stops;
}

constexpr std::array<bool, 256> stops = make_stops();

bool stops_text(char character) {
    return stops[static_cast<unsigned char>(character)];
}

} // namespace

int hex_digit(unsigned char character) {
    if (character >= '0' && character <= '9')
        return character - '0';
    if (character >= 'a' && character <= 'f')
        return character - 'a' + 10;
    if (character >= 'A' && character <= 'F')
        return character - 'A' + 10;
    return -1;
}

Token Lexer::next() {
    Token token;
    while (position_ < source_.size()) {
        token_start_ = position_;
        const char character = source_[position_];
        if (!stops_text(character)) {
            const char* const begin = source_.data() + position_;
            const char* const end = source_.data() + source_.size();
            const char* at = begin;
            while (at != end && !stops_text(*at))
                ++at;
            token.kind = Token::Kind::text;
            token.text = std::string_view(begin, static_cast<std::size_t>(at - begin));
            position_ += token.text.size();
            return token;
        }
        ++position_;
        switch (character) {
        case '{':
            token.kind = Token::Kind::open;
            return token;
        case '}':
            token.kind = Token::Kind::close;
            return token;
        case '\\':
            return control();
        case '\t':
            token.kind = Token::Kind::symbol;
            token.byte = '\t';
            return token;
        default:
            break; // a line end or another control character
        }
    }
    token_start_ = position_;
    return token;
}

Token Lexer::control() {
    Token token;
    if (position_ == source_.size())
        return token;
    const char character = source_[position_];
    if (is_letter(character))
        return word();
    ++position_;
    if (character == '\'') {
        token.kind = Token::Kind::hex;
        unsigned value = 0;
        for (int digits = 0; digits < 2 && position_ < source_.size(); ++digits) {
            const int digit = hex_digit(static_cast<unsigned char>(source_[position_]));
            if (digit < 0)
                break;
            value = value * 16 + static_cast<unsigned>(digit);
            ++position_;
        }
        token.byte = static_cast<unsigned char>(value);
        return token;
    }
    token.kind = Token::Kind::symbol;
    token.byte = static_cast<unsigned char>(character);
    if (character == '\r' && position_ < source_.size() && source_[position_] == '\n')
        ++position_;
    return token;
}

Token Lexer::word() {
    Token token;
    token.kind = Token::Kind::word;
    const std::size_t begin = position_;
    while (position_ < source_.size() && is_letter(source_[position_]))
        ++position_;
    token.text = source_.substr(begin, position_ - begin);
    token.parameter = parameter();
    if (position_ < source_.size() && source_[position_] == ' ')
        ++position_;
    return token;
}

Parameter Lexer::parameter() {
    Parameter result;
    std::size_t at = position_;
    const bool negative = at < source_.size() && source_[at] == '-';
    if (negative)
        ++at;
    if (at == source_.size() || !is_digit(source_[at]))
        return result;
    constexpr std::int64_t largest = std::numeric_limits<std::int32_t>::max();
    std::int64_t value = 0;
    for (; at < source_.size() && is_digit(source_[at]); ++at)
        if (value <= largest)
            value = value * 10 + (source_[at] - '0');
    if (value > largest)
        value = largest;
    result.value = static_cast<std::int32_t>(negative ? -value : value);
    result.given = true;
    position_ = at;
    return result;
}

std::string_view Lexer::take(std::int32_t count) {
    if (count <= 0 || static_cast<std::size_t>(count) > source_.size() - position_)
        return {};
    const std::string_view bytes = source_.substr(position_, static_cast<std::size_t>(count));
    position_ += bytes.size();
    return bytes;
}

Lexer::Skip Lexer::skip_group() {
    bool overrun = false;
    std::size_t depth = 1;
    while (position_ < source_.size()) {
        const char character = source_[position_++];
        if (character == '{') {
            ++depth;
        } else if (character == '}') {
            if (--depth == 0)
                return overrun ? Skip::cut : Skip::whole;
        } else if (character == '\\' && position_ < source_.size()) {
            if (!is_letter(source_[position_])) {
                ++position_;
                continue;
            }
            const Token token = word();
            if (token.text == "bin" && token.parameter.value > 0 && take(token.parameter.value).empty())
                overrun = true;
        }
    }
    return Skip::cut;
}

} // namespace tolva::rtf
