#include "basic/delimited_file.h"

#include <gtest/gtest.h>

#include <vector>

#include "support/errors.h"

namespace tolva::basic {
namespace {

std::vector<std::string> items(const std::string& bytes) {
    DelimitedReader reader(bytes);
    std::vector<std::string> result;
    while (!reader.at_end())
        result.push_back(reader.read());
    return result;
}

using Items = std::vector<std::string>;

TEST(DelimitedReader, EndsItemsAtCommasAndLineEnds) {
    EXPECT_EQ(items("Brick\r\nWood,Stone\r\n"), (Items{"Brick", "Wood", "Stone"}));
    EXPECT_EQ(items("a\nb\rc"), (Items{"a", "b", "c"}));
}

TEST(DelimitedReader, KeepsCommasAndLineEndsBetweenQuotes) {
    EXPECT_EQ(items("\"Pool, heated\"\r\n\"two\r\nlines\"\r\n"), (Items{"Pool, heated", "two\r\nlines"}));
    EXPECT_EQ(items("\"a\" , \"b\"\r\n"), (Items{"a", "b"}));
}

TEST(DelimitedReader, SkipsBlanksAheadOnly) {
    EXPECT_EQ(items("  a b  ,\t c\r\n"), (Items{"a b  ", "c"}));
    EXPECT_EQ(items("  \"  a \"\r\n"), (Items{"  a "}));
}

TEST(DelimitedReader, GivesEmptyItemsForEmptyLinesAndDoubleCommas) {
    EXPECT_EQ(items("\r\na,,b\r\n\"\"\r\n"), (Items{"", "a", "", "b", ""}));
    EXPECT_EQ(items("a,\r\nb"), (Items{"a", "", "b"}));
}

TEST(DelimitedReader, AQuoteInsideAnItemIsText) {
    EXPECT_EQ(items("6\" pipe,x\r\n"), (Items{"6\" pipe", "x"}));
}

TEST(DelimitedReader, AnOpenQuoteReachesToTheEnd) {
    EXPECT_EQ(items("\"a,b\r\n"), (Items{"a,b\r\n"}));
}

TEST(DelimitedReader, WhatFollowsAClosingQuoteIsTheNextItem) {
    EXPECT_EQ(items("\"a\"b,c"), (Items{"a", "b", "c"}));
}

TEST(DelimitedReader, EndsAtTheEndMark) {
    EXPECT_EQ(items("a\r\nb\x1A"
                    "c"),
              (Items{"a", "b"}));
}

TEST(DelimitedReader, FailsPastTheEnd) {
    DelimitedReader reader("one\r\n");
    EXPECT_EQ(reader.read(), "one");
    EXPECT_TRUE(reader.at_end());
    EXPECT_EQ(support::error_number([&] { reader.read(); }), 62);
    EXPECT_TRUE(items("").empty());
}

TEST(DelimitedReader, ItemsAreUtf8) {
    EXPECT_EQ(items("caf\xE9\r\n"), (Items{"caf\u00e9"}));
}

TEST(DelimitedWriter, PutsEachTextBetweenQuotesOnItsLine) {
    DelimitedWriter writer;
    writer.write("Pool");
    writer.write("");
    writer.write("caf\u00e9, \u20ac");
    EXPECT_EQ(writer.bytes(), "\"Pool\"\r\n\"\"\r\n\"caf\xE9, \x80\"\r\n");
    EXPECT_EQ(items(writer.bytes()), (Items{"Pool", "", "caf\u00e9, \u20ac"}));
}

TEST(DelimitedWriter, AQuoteIsWrittenAsItIsAndPartsTheItem) {
    DelimitedWriter writer;
    writer.write("6\" pipe");
    EXPECT_EQ(writer.bytes(), "\"6\" pipe\"\r\n");
    EXPECT_EQ(items(writer.bytes()), (Items{"6", "pipe\""}));
}

TEST(DelimitedWriter, PrintsPlainTextAndALineEnd) {
    DelimitedWriter writer;
    writer.print("Brick\r\nWood");
    EXPECT_EQ(writer.bytes(), "Brick\r\nWood\r\n");
}

} // namespace
} // namespace tolva::basic
