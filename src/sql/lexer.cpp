#include "sql/lexer.h"

#include <cmath>

#include "basic/number.h"
#include "basic/text.h"

namespace tolva::sql {

namespace {

bool is_blank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}
bool is_digit(char c) {
    return c >= '0' && c <= '9';
}
bool starts_name(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
           static_cast<unsigned char>(c) >= 0x80;
}
bool continues_name(char c) {
    return starts_name(c) || is_digit(c) || c == '$';
}

} // namespace

bool Token::is_word(std::string_view word) const {
    return kind == Kind::name && basic::equal_names(text, word);
}

Token Lexer::next() {
    while (is_blank(at(position_)))
        ++position_;
    const std::size_t begin = position_;
    const char c = at(position_);
    Token token;
    if (position_ == text_.size())
        token.kind = Token::Kind::end;
    else if (c == '\'' || c == '"')
        token = quoted_text(c);
    else if (c == '[')
        token = bracketed_name();
    else if (c == '#')
        token = date();
    else if (is_digit(c) || (c == '.' && is_digit(at(position_ + 1))))
        token = number();
    else if (starts_name(c))
        token = name();
    else
        token = symbol();
    token.begin = begin;
    token.end = position_;
    return token;
}

Token Lexer::quoted_text(char quote) {
    Token token;
    token.kind = Token::Kind::open_text;
    for (++position_; position_ < text_.size(); ++position_) {
        if (text_[position_] != quote) {
            token.text.push_back(text_[position_]);
        } else if (at(position_ + 1) == quote) {
            token.text.push_back(quote);
            ++position_;
        } else {
            ++position_;
            token.kind = Token::Kind::text;
            break;
        }
    }
    return token;
}

Token Lexer::bracketed_name() {
    Token token;
    const std::size_t close = text_.find(']', position_);
    if (close == std::string_view::npos) {
        token.kind = Token::Kind::open_bracket;
        token.text = text_.substr(position_);
        position_ = text_.size();
    } else {
        token.kind = Token::Kind::bracketed_name;
        token.text = text_.substr(position_ + 1, close - position_ - 1);
        position_ = close + 1;
    }
    return token;
}

Token Lexer::date() {
    Token token;
    token.kind = Token::Kind::bad_date;
    const std::size_t close = text_.find('#', position_ + 1);
    if (close == std::string_view::npos) {
        position_ = text_.size();
        return token;
    }
    token.text = text_.substr(position_ + 1, close - position_ - 1);
    position_ = close + 1;
    if (basic::is_date(token.text, current_year_)) {
        token.kind = Token::Kind::date;
        token.date = basic::to_date(token.text, current_year_);
    }
    return token;
}

Token Lexer::number() {
    const std::size_t begin = position_;
    const auto skip_digits = [this] {
        while (is_digit(at(position_)))
            ++position_;
    };
    skip_digits();
    if (at(position_) == '.') {
        ++position_;
        skip_digits();
    }
    if (at(position_) == 'e' || at(position_) == 'E') {
        const bool sign = at(position_ + 1) == '+' || at(position_ + 1) == '-';
        if (is_digit(at(position_ + (sign ? 2 : 1)))) {
            position_ += sign ? 2 : 1;
            skip_digits();
        }
    }
    Token token;
    token.kind = Token::Kind::number;
    token.text = text_.substr(begin, position_ - begin);
    token.number = basic::leading_number(token.text);
    return token;
}

Token Lexer::name() {
    const std::size_t begin = position_;
    while (continues_name(at(position_)))
        ++position_;
    Token token;
    token.kind = Token::Kind::name;
    token.text = text_.substr(begin, position_ - begin);
    return token;
}

Token Lexer::symbol() {
    const std::string_view two = text_.substr(position_, 2);
    const std::size_t size = two == "<>" || two == "<=" || two == ">=" ? 2 : 1;
    Token token;
    token.kind = Token::Kind::symbol;
    token.text = text_.substr(position_, size);
    position_ += size;
    return token;
}

} // namespace tolva::sql
