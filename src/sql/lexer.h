#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "basic/date.h"

namespace tolva::sql {

struct Token {
    enum class Kind {
        end,
        name,           ///< a bare name or a key word; `text` as written
        bracketed_name, ///< `text` without the brackets
        text,           ///< `text` without the quotes, doubled quotes made single
        number,
        date,
        symbol,       ///< an operator or another sign; `text` as written
        open_text,    ///< a quote that nothing closes
        open_bracket, ///< a bracket that nothing closes; `text` with the bracket
        bad_date,     ///< between hash marks, or behind an open one, but no date
    };

    Kind kind = Kind::end;
    std::string text;
    double number = 0;
    basic::Date date;
    /// Where it stands in the query text.
    std::size_t begin = 0, end = 0;

    bool is_symbol(std::string_view sign) const { return kind == Kind::symbol && text == sign; }
    /// A bare word, in any letter case.
    bool is_word(std::string_view word) const;
};

/// Cuts a query text into tokens, one at a time: what is wrong further on does not matter until it is
/// reached, so the first fault in reading order is the one reported.
class Lexer {
  public:
    Lexer(std::string_view text, int current_year) : text_(text), current_year_(current_year) {}

    Token next();

  private:
    Token quoted_text(char quote);
    Token bracketed_name();
    Token date();
    Token number();
    Token name();
    Token symbol();

    char at(std::size_t position) const { return position < text_.size() ? text_[position] : '\0'; }

    std::string_view text_;
    int current_year_;
    std::size_t position_ = 0;
};

} // namespace tolva::sql
