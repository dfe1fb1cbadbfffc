#include <gtest/gtest.h>

#include <random>

#include "sql/expression.h"
#include "sql/select.h"
#include "support/errors.h"

namespace tolva::sql {
namespace {

using support::error_number;

std::string failure(const std::string& text) {
    return support::error_text([&] { parse(text, 2026); });
}
int failure_number(const std::string& text) {
    return error_number([&] { parse(text, 2026); });
}
std::string where_failure(const std::string& condition) {
    return failure("select * from [table] where " + condition + " order by last, first");
}

TEST(Parser, ReadsAllPartsOfAQueryInAnyLetterCase) {
    const Select select =
        parse("SELECT * From [table] WHERE id=5 Order BY [last], first DESC, middle asc;", 2026);
    EXPECT_EQ(select.table, "table");
    EXPECT_TRUE(select.columns.empty());
    ASSERT_TRUE(select.where);
    EXPECT_EQ(select.where->op, Operator::equal);
    ASSERT_EQ(select.order.size(), 3u);
    EXPECT_EQ(select.order[0].column, "last");
    EXPECT_FALSE(select.order[0].descending);
    EXPECT_TRUE(select.order[1].descending);
    EXPECT_FALSE(select.order[2].descending);
}

TEST(Parser, AllButTheTableMayBeLeftOut) {
    const Select select = parse("  select *\r\n\tfrom preference_table  ", 2026);
    EXPECT_EQ(select.table, "preference_table");
    EXPECT_FALSE(select.where);
    EXPECT_TRUE(select.order.empty());
}

TEST(Parser, ColumnsMayBeListed) {
    const Select select = parse("select last, [table].[first] from [table]", 2026);
    EXPECT_EQ(select.columns, (std::vector<std::string>{"last", "first"}));
}

TEST(Parser, AndBindsCloserThanOrAndNotCloserThanBoth) {
    const Select select = parse("select * from [table] where a = 1 or not b = 2 and c = 3", 2026);
    ASSERT_EQ(select.where->op, Operator::logical_or);
    const Expression& right = select.where->operands.at(1);
    ASSERT_EQ(right.op, Operator::logical_and);
    EXPECT_EQ(right.operands.at(0).op, Operator::logical_not);
    EXPECT_EQ(right.operands.at(0).operands.at(0).op, Operator::equal);
}

TEST(Parser, AWordMayBeGluedToAClosingQuote) {
    const Select select =
        parse("select * from [table] where last like '*x*'and city like '**' order by last", 2026);
    EXPECT_EQ(select.where->op, Operator::logical_and);
}

TEST(Parser, DoubledQuotesAreOne) {
    const Select select = parse("select * from [table] where last = 'O''Brien' or last = \"a\"\"b'c\"", 2026);
    EXPECT_EQ(select.where->operands[0].operands[1].literal, jet::Value(std::string("O'Brien")));
    EXPECT_EQ(select.where->operands[1].operands[1].literal, jet::Value(std::string("a\"b'c")));
}

TEST(Parser, DatesBetweenHashMarksAreMonthDayYear) {
    const auto date = [](const std::string& text) {
        return parse("select * from [table] where d = #" + text + "#", 2026).where->operands[1].literal;
    };
    EXPECT_EQ(date("1/1/1800"), jet::Value(basic::make_date(1800, 1, 1)));
    EXPECT_EQ(date("01/01/1800"), jet::Value(basic::make_date(1800, 1, 1)));
    EXPECT_EQ(date("13/7/2026"), jet::Value(basic::make_date(2026, 7, 13)));
    EXPECT_EQ(date("3/7"), jet::Value(basic::make_date(2026, 3, 7)));
    EXPECT_EQ(date("8:30:00 AM"), jet::Value(basic::make_moment({1899, 12, 30, 8, 30, 0})));
    EXPECT_EQ(date("3/7/2026 8:30:00 PM"), jet::Value(basic::make_moment({2026, 3, 7, 20, 30, 0})));
}

TEST(Parser, AStrayQuoteIsAMissingOperator) {
    EXPECT_EQ(
        where_failure("last like '*O'Brien*'"),
        "Syntax error (missing operator) in query expression 'last like '*O'Brien*' order by last, first'.");
    EXPECT_EQ(failure("select * from [table] where last like '*O'Brien*'"),
              "Syntax error (missing operator) in query expression 'last like '*O'Brien*''.");
    EXPECT_EQ(where_failure("(last like '*O'Brien*' or co_last like '*O'Brien*') and city like '**'"),
              "Syntax error (missing operator) in query expression '(last like '*O'Brien*' or co_last like "
              "'*O'Brien*') and city like '**''.");
}

TEST(Parser, AnAsteriskOutsideItsQuotesIsAMissingOperator) {
    EXPECT_EQ(where_failure("id > 0 and ((homephone like '*555'*) or (co_homephone like '*555'*))"),
              "Syntax error (missing operator) in query expression 'id > 0 and ((homephone like '*555'*) or "
              "(co_homephone like '*555'*))'.");
}

TEST(Parser, AnOpenTextIsASyntaxErrorInString) {
    EXPECT_EQ(failure("select * from [table] where last like '*abc"),
              "Syntax error in string in query expression 'last like '*abc'.");
    EXPECT_EQ(failure("select * from [table] where last = 'O''"),
              "Syntax error in string in query expression 'last = 'O'''.");
}

TEST(Parser, NoDateBetweenHashMarksIsASyntaxErrorInDate) {
    EXPECT_EQ(where_failure("datelisted >= ##"),
              "Syntax error in date in query expression 'datelisted >= ##'.");
    EXPECT_EQ(where_failure("datelisted >= #2/29/2005#"),
              "Syntax error in date in query expression 'datelisted >= #2/29/2005#'.");
    EXPECT_EQ(failure("select * from [table] where datelisted >= #1/1/2000"),
              "Syntax error in date in query expression 'datelisted >= #1/1/2000'.");
}

TEST(Parser, FaultyConditionsAreQuotedWhole) {
    EXPECT_EQ(where_failure("id = "), "Syntax error (missing operator) in query expression 'id ='.");
    EXPECT_EQ(where_failure("id = 5 6"), "Syntax error (missing operator) in query expression 'id = 5 6'.");
    EXPECT_EQ(where_failure("(id = 5"), "Missing ), ], or Item in query expression '(id = 5'.");
    EXPECT_EQ(where_failure("id = 5)"), "Extra ) in query expression 'id = 5)'.");
    EXPECT_EQ(where_failure("price > 125,000"),
              "Syntax error (comma) in query expression 'price > 125,000'.");
    EXPECT_EQ(where_failure("id = 5 % 2"),
              "Syntax error (missing operator) in query expression 'id = 5 % 2'.");
    for (const char* condition :
         {"", "and", "id = 1 and", "id between 1", "id in 5", "id is 5", "not", "id not 5", "id = order",
          "= 5", "id like", "()", "id in ()", "[id].", "id = 1 or or id = 2"})
        EXPECT_EQ(failure_number(std::string("select * from [table] where ") + condition), 3075) << condition;
}

TEST(Parser, OtherFaultsHaveTheirOwnNumbers) {
    EXPECT_EQ(failure_number(""), 3129);
    EXPECT_EQ(failure_number("delete * from [table]"), 3129);
    EXPECT_EQ(failure_number("select * form [table]"), 3141);
    EXPECT_EQ(failure_number("select from [table]"), 3141);
    EXPECT_EQ(failure_number("select *"), 3067);
    EXPECT_EQ(failure_number("select * from table"), 3131);
    EXPECT_EQ(failure_number("select * from"), 3131);
    EXPECT_EQ(failure_number("select * from [table] whre id = 5"), 3131);
    EXPECT_EQ(failure("select * from [tab"), "Invalid bracketing of name '[tab'.");
    EXPECT_EQ(failure("select * from [table] where [id = 5"), "Invalid bracketing of name '[id = 5'.");
    EXPECT_EQ(failure_number("select * from [table] order last"), 3138);
    EXPECT_EQ(failure_number("select * from [table] order by"), 3138);
    EXPECT_EQ(failure_number("select * from [table] order by last,"), 3138);
    EXPECT_EQ(failure_number("select * from [table] order by last first"), 3138);
    EXPECT_EQ(failure_number("select * from [table]; select"), 3142);
    EXPECT_EQ(failure("select * from [table] where ucase(last) = 'X'"),
              "Undefined function 'ucase' in expression.");
}

TEST(Parser, DepthAndLengthAreBounded) {
    const std::string start = "select * from [table] where ";
    EXPECT_EQ(failure_number(start + std::string(50, '(') + "id" + std::string(50, ')')), 0);
    EXPECT_EQ(failure_number(start + std::string(100000, '(') + "id"), 3360);
    EXPECT_EQ(failure_number(start + std::string(100000, '-') + "5"), 3360);
    std::string nots;
    for (int i = 0; i < 100000; ++i)
        nots += "not ";
    EXPECT_EQ(failure_number(start + nots + "id"), 3360);
    std::string sum = "1";
    for (int i = 0; i < 100000; ++i)
        sum += "+1";
    EXPECT_EQ(failure_number(start + sum), 3360);
}

TEST(Parser, AnythingButAQueryEndsInARunTimeError) {
    const std::vector<std::string> pieces = {
        "select ", "* ",  "from ",      "[table] ", "where ",   "order ", "by ",   "last ", "like ", "'*x*'",
        "'",       "\"",  "#1/1/2000#", "#",        "[",        "]",      "(",     ")",     ",",     ";",
        "and ",    "or ", "not ",       "in ",      "between ", "is ",    "null ", "= ",    "<",     ">",
        "5 ",      "1e",  ".",          "-",        "&",        "\xE9",   "\n",    "%",     "desc "};
    std::mt19937 random(11);
    int queries = 0;
    for (int round = 0; round < 50000; ++round) {
        std::string text = random() % 4 == 0 ? "" : "select * from [table] ";
        if (random() % 2 == 0)
            text += "where last ";
        for (std::size_t left = random() % 12; left > 0; --left)
            text += pieces[random() % pieces.size()];
        try {
            parse(text, 2026);
            ++queries;
        } catch (const basic::RunTimeError& error) {
            ASSERT_GE(error.number(), 3000) << text;
        }
    }
    EXPECT_GT(queries, 100);
}

} // namespace
} // namespace tolva::sql
