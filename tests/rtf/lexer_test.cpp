#include <gtest/gtest.h>

#include "rtf/lexer.h"

namespace tolva::rtf {
namespace {

TEST(Lexer, TakesWordsWithAndWithoutNumbers) {
    Lexer lexer("\\b\\fs24 x\\li-360\\par");
    Token token = lexer.next();
    EXPECT_EQ(token.text, "b");
    EXPECT_FALSE(token.parameter.given);
    token = lexer.next();
    EXPECT_EQ(token.text, "fs");
    EXPECT_EQ(token.parameter.value, 24);
    token = lexer.next();
    EXPECT_EQ(token.kind, Token::Kind::text);
    EXPECT_EQ(token.text, "x");
    EXPECT_EQ(lexer.next().parameter.value, -360);
    EXPECT_EQ(lexer.next().text, "par");
    EXPECT_EQ(lexer.next().kind, Token::Kind::end);
}

TEST(Lexer, TakesOneBlankAfterAWordAndNoMore) {
    Lexer lexer("\\b  x");
    lexer.next();
    EXPECT_EQ(lexer.next().text, " x");
}

TEST(Lexer, PassesOverBareLineEnds) {
    Lexer lexer("a\r\nb\n\nc");
    EXPECT_EQ(lexer.next().text, "a");
    EXPECT_EQ(lexer.next().text, "b");
    EXPECT_EQ(lexer.next().text, "c");
}

TEST(Lexer, TakesAnEscapedLineEndAsOneSymbol) {
    Lexer lexer("\\\r\nx");
    const Token token = lexer.next();
    EXPECT_EQ(token.kind, Token::Kind::symbol);
    EXPECT_EQ(token.byte, '\r');
    EXPECT_EQ(lexer.next().text, "x");
}

TEST(Lexer, ClampsNumbersThatNoIntegerHolds) {
    Lexer lexer("\\li99999999999999999999\\li-99999999999999999999");
    EXPECT_EQ(lexer.next().parameter.value, 2147483647);
    EXPECT_EQ(lexer.next().parameter.value, -2147483647);
}

TEST(Lexer, LeavesAMinusWithoutDigitsToTheText) {
    Lexer lexer("\\emdash- x");
    EXPECT_FALSE(lexer.next().parameter.given);
    EXPECT_EQ(lexer.next().text, "- x");
}

TEST(Lexer, BearsOddHexDigits) {
    Lexer lexer("\\'e9\\'4zx\\'");
    EXPECT_EQ(lexer.next().byte, 0xE9);
    EXPECT_EQ(lexer.next().byte, 0x04);
    EXPECT_EQ(lexer.next().text, "zx");
    EXPECT_EQ(lexer.next().byte, 0);
    EXPECT_EQ(lexer.next().kind, Token::Kind::end);
}

TEST(Lexer, BearsABackslashAtTheEnd) {
    Lexer lexer("x\\");
    lexer.next();
    EXPECT_EQ(lexer.next().kind, Token::Kind::end);
}

TEST(Lexer, GivesNoBinaryBytesThatAreNotThere) {
    Lexer lexer("\\bin5 abc");
    const Token token = lexer.next();
    EXPECT_EQ(lexer.take(token.parameter.value), "");
    EXPECT_EQ(lexer.next().text, "abc");
}

TEST(Lexer, SkipsAGroupOverEscapedBracesAndBinaryBytes) {
    Lexer lexer("{\\a \\} {b\\{} \\bin3 }}} c}rest");
    lexer.next();
    EXPECT_EQ(lexer.skip_group(), Lexer::Skip::whole);
    EXPECT_EQ(lexer.next().text, "rest");
}

TEST(Lexer, TellsWhenASkippedGroupIsCut) {
    EXPECT_EQ(Lexer("a{b}").skip_group(), Lexer::Skip::cut);
    EXPECT_EQ(Lexer("\\bin9 a}").skip_group(), Lexer::Skip::cut);
    EXPECT_EQ(Lexer("a\\").skip_group(), Lexer::Skip::cut);
}

} // namespace
} // namespace tolva::rtf
