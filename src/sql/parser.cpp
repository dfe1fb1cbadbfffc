#include "sql/parser.h"

#include <algorithm>
#include <array>
#include <utility>

#include "basic/run_time_error.h"
#include "basic/text.h"
#include "sql/select.h"

namespace tolva::sql {

bool is_reserved(const Token& token) {
    static constexpr std::array<std::string_view, 24> words = {
        "and",   "as",   "asc",   "between", "by",    "delete", "desc",  "distinct",
        "false", "from", "group", "having",  "in",    "insert", "into",  "is",
        "like",  "not",  "null",  "or",      "order", "select", "table", "where"};
    if (token.kind != Token::Kind::name)
        return false;
    return token.is_word("true") || std::any_of(words.begin(), words.end(), [&token](std::string_view word) {
               return token.is_word(word);
           });
}

TokenStream::TokenStream(std::string_view text, int current_year)
    : text_(text), lexer_(text, current_year), token_(lexer_.next()) {}

void TokenStream::advance() {
    token_ = lexer_.next();
}

bool TokenStream::skip_word(std::string_view word) {
    if (!token_.is_word(word))
        return false;
    advance();
    return true;
}

bool TokenStream::skip_symbol(std::string_view sign) {
    if (!token_.is_symbol(sign))
        return false;
    advance();
    return true;
}

bool TokenStream::at_name() const {
    if (token_.kind == Token::Kind::bracketed_name)
        return true;
    return token_.kind == Token::Kind::name && !is_reserved(token_);
}

namespace {

using basic::RunTimeError;

/// Takes the name that must stand here; else fails with `error`, or for its open bracket.
std::string take_name(TokenStream& tokens, int error) {
    if (tokens.here().kind == Token::Kind::open_bracket)
        throw RunTimeError(3126, tokens.here().text);
    if (!tokens.at_name())
        throw RunTimeError(error);
    std::string name = tokens.here().text;
    tokens.advance();
    return name;
}

/// A column's name, whose table may be named ahead of it.
std::string take_column(TokenStream& tokens, int error) {
    std::string name = take_name(tokens, error);
    if (tokens.skip_symbol(".") || tokens.skip_symbol("!"))
        name = take_name(tokens, error);
    return name;
}

void parse_columns(TokenStream& tokens, Select& select) {
    if (tokens.skip_symbol("*"))
        return;
    do {
        select.columns.push_back(take_column(tokens, 3141));
    } while (tokens.skip_symbol(","));
}

void parse_order(TokenStream& tokens, Select& select) {
    if (!tokens.skip_word("by"))
        throw RunTimeError(3138);
    do {
        Select::OrderPart part;
        part.column = take_column(tokens, 3138);
        if (tokens.skip_word("desc"))
            part.descending = true;
        else
            tokens.skip_word("asc");
        select.order.push_back(std::move(part));
    } while (tokens.skip_symbol(","));
}

bool at_end(const TokenStream& tokens) {
    return tokens.here().kind == Token::Kind::end || tokens.here().is_symbol(";");
}

} // namespace

Select parse(std::string_view text, int current_year) {
    Select select;
    select.text = text;
    TokenStream tokens(select.text, current_year);

    if (!tokens.skip_word("select"))
        throw RunTimeError(3129);
    parse_columns(tokens, select);
    if (at_end(tokens))
        throw RunTimeError(3067);
    if (!tokens.skip_word("from"))
        throw RunTimeError(3141);
    select.table = take_name(tokens, 3131);

    if (tokens.skip_word("where"))
        select.where = std::make_shared<const Expression>(parse_condition(tokens));
    if (tokens.skip_word("order"))
        parse_order(tokens, select);
    else if (!at_end(tokens))
        throw RunTimeError(3131);

    if (!at_end(tokens))
        throw RunTimeError(3138);
    if (tokens.skip_symbol(";") && tokens.here().kind != Token::Kind::end)
        throw RunTimeError(3142);
    return select;
}

} // namespace tolva::sql
