#pragma once

#include <string>
#include <string_view>

#include "sql/expression.h"
#include "sql/lexer.h"

namespace tolva::sql {

/// The words that the language keeps for itself: as names they need brackets.
bool is_reserved(const Token& token);

/// A parser's view of the query text: the token at hand and those behind it.
class TokenStream {
  public:
    TokenStream(std::string_view text, int current_year);

    const Token& here() const { return token_; }
    void advance();
    /// Advances over a word or a sign if it stands here.
    bool skip_word(std::string_view word);
    bool skip_symbol(std::string_view sign);
    /// Whether a column or table can be named here: a name in brackets, or a bare one that is not reserved.
    bool at_name() const;

    std::string_view text() const { return text_; }

  private:
    std::string_view text_;
    Lexer lexer_;
    Token token_;
};

/// Reads the condition that starts at the stream's token, up to the end, a semicolon or "order". Error 3075
/// with the whole condition in its text, 3085 for a call of a function, 3126 for an open bracket, 3360 when
/// it is nested too deeply or too long.
Expression parse_condition(TokenStream& tokens);

} // namespace tolva::sql
