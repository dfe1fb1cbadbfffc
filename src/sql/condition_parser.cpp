#include <array>
#include <utility>

#include "basic/run_time_error.h"
#include "sql/parser.h"

// Conditions by descent, from what binds loosest: or, and, not, comparisons (with like, between, in, is),
// "&", sums, products, a sign.

namespace tolva::sql {

namespace {

/// Bounds the depth of every walk over the tree.
constexpr int deepest_nesting = 200;
constexpr int most_nodes = 2000;

Expression make(Operator op, std::vector<Expression> operands) {
    Expression expression;
    expression.op = op;
    expression.operands = std::move(operands);
    return expression;
}

Expression make_literal(jet::Value value) {
    Expression expression;
    expression.literal = std::move(value);
    return expression;
}

Expression make_pair_of(Operator op, Expression left, Expression right) {
    std::vector<Expression> operands;
    operands.push_back(std::move(left));
    operands.push_back(std::move(right));
    return make(op, std::move(operands));
}

Expression make_single(Operator op, Expression operand) {
    std::vector<Expression> operands;
    operands.push_back(std::move(operand));
    return make(op, std::move(operands));
}

class ConditionParser {
  public:
    explicit ConditionParser(TokenStream& tokens) : tokens_(tokens), begin_(tokens.here().begin) {}

    Expression parse() {
        Expression condition = disjunction();
        if (ends_condition())
            return condition;
        if (tokens_.here().is_symbol(")"))
            fail("Extra )");
        if (tokens_.here().is_symbol(","))
            fail("Syntax error (comma)");
        fail_here();
    }

  private:
    /// Counts one level of nesting while it lives.
    class Level {
      public:
        explicit Level(int& depth) : depth_(depth) {
            if (++depth_ > deepest_nesting)
                throw basic::RunTimeError(3360);
        }
        ~Level() { --depth_; }
        Level(const Level&) = delete;
        Level& operator=(const Level&) = delete;

      private:
        int& depth_;
    };

    bool ends_condition() const {
        const Token& token = tokens_.here();
        return token.kind == Token::Kind::end || token.is_symbol(";") || token.is_word("order");
    }

    /// The whole condition as written, which the engine's messages quote: up to an "order" outside of texts.
    std::string condition_text() const {
        const std::string_view rest = tokens_.text().substr(begin_);
        Lexer lexer(rest, 2000);
        Token token = lexer.next();
        std::size_t end = 0;
        while (token.kind != Token::Kind::end && !token.is_word("order") && !token.is_symbol(";")) {
            end = token.end;
            token = lexer.next();
        }
        return std::string(rest.substr(0, end));
    }

    [[noreturn]] void fail(const std::string& what) const {
        throw basic::RunTimeError::with_text(3075, what + " in query expression '" + condition_text() + "'.");
    }

    /// What is wrong with the token at hand where nothing can take it.
    [[noreturn]] void fail_here() const {
        switch (tokens_.here().kind) {
        case Token::Kind::open_text:
            fail("Syntax error in string");
        case Token::Kind::bad_date:
            fail("Syntax error in date");
        case Token::Kind::open_bracket:
            throw basic::RunTimeError(3126, tokens_.here().text);
        default:
            fail("Syntax error (missing operator)");
        }
    }

    Expression counted(Expression expression) {
        if (++nodes_ > most_nodes)
            throw basic::RunTimeError(3360);
        return expression;
    }

    Expression disjunction() {
        const Level level(depth_);
        return chain(Operator::logical_or, "or", &ConditionParser::conjunction);
    }

    Expression conjunction() { return chain(Operator::logical_and, "and", &ConditionParser::negation); }

    Expression chain(Operator op, std::string_view word, Expression (ConditionParser::*part)()) {
        Expression first = (this->*part)();
        if (!tokens_.here().is_word(word))
            return first;
        Expression whole = make_single(op, std::move(first));
        while (tokens_.skip_word(word))
            whole.operands.push_back((this->*part)());
        return counted(std::move(whole));
    }

    Expression negation() {
        if (!tokens_.skip_word("not"))
            return comparison();
        const Level level(depth_);
        return counted(make_single(Operator::logical_not, negation()));
    }

    Expression comparison() {
        static constexpr std::array<std::pair<std::string_view, Operator>, 6> signs = {
            {{"=", Operator::equal},
             {"<>", Operator::not_equal},
             {"<", Operator::less},
             {"<=", Operator::less_equal},
             {">", Operator::greater},
             {">=", Operator::greater_equal}}};
        Expression left = concatenation();
        for (;;) {
            bool found = false;
            for (const auto& [sign, op] : signs) {
                if (!tokens_.skip_symbol(sign))
                    continue;
                left = counted(make_pair_of(op, std::move(left), concatenation()));
                found = true;
                break;
            }
            if (!found && !word_comparison(left))
                return left;
        }
    }

    /// Like, between, in and is behind `left`; false when none stands here.
    bool word_comparison(Expression& left) {
        if (tokens_.skip_word("is")) {
            const bool negated = tokens_.skip_word("not");
            if (!tokens_.skip_word("null"))
                fail_here();
            left = negated_if(negated, make_single(Operator::is_null, std::move(left)));
            return true;
        }
        const bool negated = tokens_.skip_word("not");
        if (tokens_.skip_word("like")) {
            left = make_pair_of(Operator::like, std::move(left), concatenation());
        } else if (tokens_.skip_word("between")) {
            Expression between = make_pair_of(Operator::between, std::move(left), concatenation());
            if (!tokens_.skip_word("and"))
                fail_here();
            between.operands.push_back(concatenation());
            left = std::move(between);
        } else if (tokens_.skip_word("in")) {
            if (!tokens_.skip_symbol("("))
                fail_here();
            Expression in = make_single(Operator::in, std::move(left));
            do {
                in.operands.push_back(concatenation());
            } while (tokens_.skip_symbol(","));
            close_bracket();
            left = std::move(in);
        } else {
            if (negated)
                fail_here();
            return false;
        }
        left = negated_if(negated, std::move(left));
        return true;
    }

    Expression negated_if(bool negated, Expression expression) {
        expression = counted(std::move(expression));
        return negated ? counted(make_single(Operator::logical_not, std::move(expression)))
                       : std::move(expression);
    }

    Expression concatenation() {
        Expression left = sum();
        while (tokens_.skip_symbol("&"))
            left = counted(make_pair_of(Operator::concatenate, std::move(left), sum()));
        return left;
    }

    Expression sum() {
        Expression left = product();
        for (;;) {
            if (tokens_.skip_symbol("+"))
                left = counted(make_pair_of(Operator::add, std::move(left), product()));
            else if (tokens_.skip_symbol("-"))
                left = counted(make_pair_of(Operator::subtract, std::move(left), product()));
            else
                return left;
        }
    }

    Expression product() {
        Expression left = signed_value();
        for (;;) {
            if (tokens_.skip_symbol("*"))
                left = counted(make_pair_of(Operator::multiply, std::move(left), signed_value()));
            else if (tokens_.skip_symbol("/"))
                left = counted(make_pair_of(Operator::divide, std::move(left), signed_value()));
            else
                return left;
        }
    }

    Expression signed_value() {
        const Level level(depth_);
        if (tokens_.skip_symbol("-"))
            return counted(make_single(Operator::negate, signed_value()));
        if (tokens_.skip_symbol("+"))
            return signed_value();
        return counted(primary());
    }

    Expression primary() {
        const Token token = tokens_.here();
        if (token.is_symbol("(")) {
            tokens_.advance();
            Expression inner = disjunction();
            close_bracket();
            return inner;
        }
        if (token.kind == Token::Kind::text)
            return literal(token.text);
        if (token.kind == Token::Kind::number)
            return literal(token.number);
        if (token.kind == Token::Kind::date)
            return literal(token.date);
        if (token.is_word("null"))
            return literal(std::monostate());
        if (token.is_word("true"))
            return literal(true);
        if (token.is_word("false"))
            return literal(false);
        if (tokens_.at_name())
            return column();
        fail_here();
    }

    Expression literal(jet::Value value) {
        tokens_.advance();
        return make_literal(std::move(value));
    }

    Expression column() {
        Expression column;
        column.op = Operator::column;
        column.name = tokens_.here().text;
        tokens_.advance();
        if (tokens_.here().is_symbol("("))
            throw basic::RunTimeError(3085, column.name);
        if (tokens_.skip_symbol(".") || tokens_.skip_symbol("!")) {
            if (!tokens_.at_name())
                fail_here();
            column.qualifier = std::exchange(column.name, tokens_.here().text);
            tokens_.advance();
        }
        return column;
    }

    void close_bracket() {
        if (tokens_.skip_symbol(")"))
            return;
        if (ends_condition())
            fail("Missing ), ], or Item");
        fail_here();
    }

    TokenStream& tokens_;
    std::size_t begin_;
    int depth_ = 0;
    int nodes_ = 0;
};

} // namespace

Expression parse_condition(TokenStream& tokens) {
    return ConditionParser(tokens).parse();
}

} // namespace tolva::sql
