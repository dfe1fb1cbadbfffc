#include <gtest/gtest.h>

#include "basic/code_page.h"
#include "basic/text.h"

namespace tolva::basic {
namespace {

TEST(Text, LengthAndLeftCountCharacters) {
    EXPECT_EQ(length("Ren\u00e9e"), 5u);
    EXPECT_EQ(left("Ren\u00e9e", 4), "Ren\u00e9");
    EXPECT_EQ(left("ab", 5), "ab");
    EXPECT_EQ(left("ab", 0), "");
    EXPECT_EQ(length("\u20ac\U0001F600"), 2u);
}

TEST(Text, ACutCountsTwoPlacesForWhatTakesTwoInTheStore) {
    EXPECT_EQ(left("\U0001F600\U0001F600", 2), "\U0001F600");
    EXPECT_EQ(left("\U0001F600\U0001F600", 3), "\U0001F600") << "and halves nothing";
    EXPECT_EQ(left("a\U0001F600", 1), "a");
    EXPECT_EQ(left("\uFFFF\u20ac", 2), "\uFFFF\u20ac");
}

TEST(Text, ABrokenByteCountsAsOneCharacter) {
    EXPECT_EQ(length("a\xE9z"), 3u);
    EXPECT_EQ(left("a\xE9z", 2), "a\xE9");
    EXPECT_EQ(length("\xC0\x80"), 2u) << "an overlong form is two broken bytes";
    EXPECT_EQ(length("\xED\xA0\x80"), 3u) << "a surrogate is three";
    EXPECT_EQ(length("\xE2\x82"), 2u) << "a sequence cut short";
}

TEST(Text, TrimRemovesBlanksOnlyAtTheEnds) {
    EXPECT_EQ(trim("  a b  "), "a b");
    EXPECT_EQ(trim("   "), "");
    EXPECT_EQ(trim(""), "");
    EXPECT_EQ(trim("\ta\r\n"), "\ta\r\n");
}

TEST(Text, LetterCaseCoversLatinGreekAndCyrillic) {
    EXPECT_EQ(upper("smith-o'neil 7"), "SMITH-O'NEIL 7");
    EXPECT_EQ(upper("m\u00fcller \u00ff \u0161 \u03b1\u03c2 \u0436 \u00df"),
              "M\u00dcLLER \u0178 \u0160 \u0391\u03a3 \u0416 \u00df");
    EXPECT_EQ(lower("M\u00dcLLER \u0178 \u0160 \u0391\u03a3 \u0416"),
              "m\u00fcller \u00ff \u0161 \u03b1\u03c3 \u0436");
    EXPECT_EQ(upper("\u0142\u0144\u0151"), "\u0141\u0143\u0150");
    EXPECT_EQ(upper("\u00d7\u00f7"), "\u00d7\u00f7") << "signs between the letters stay";
}

TEST(Text, EveryCapitalHasItsSmallLetterAndBack) {
    int capitals = 0;
    for (char32_t c = 0; c < 0x2000; ++c) {
        const char32_t small = lower(c);
        if (small == c || upper(small) != c)
            continue;
        EXPECT_EQ(lower(small), small) << std::hex << static_cast<unsigned>(c);
        ++capitals;
    }
    EXPECT_GT(capitals, 400);
}

TEST(Text, CodePointsSurviveTheRoundTrip) {
    const std::string text = "a\u00e9\u20ac\U0001F600\0b";
    EXPECT_EQ(from_code_points(to_code_points(text)), text);
    EXPECT_EQ(to_code_points("a\xFFz"), (std::u32string{U'a', 0xFFFD, U'z'}));
    EXPECT_EQ(from_code_points(std::u32string{0xD800}), "\uFFFD");
}

TEST(Text, NamesAreEqualWithoutAsciiCase) {
    EXPECT_TRUE(equal_names("Flag", "FLAG"));
    EXPECT_FALSE(equal_names("flag", "flags"));
    EXPECT_FALSE(equal_names("\u00e9", "\u00c9"));
}

TEST(CodePage, EveryByteSurvivesTheRoundTrip) {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes.push_back(static_cast<char>(byte));
    const std::string text = from_windows_1252(bytes);
    EXPECT_EQ(length(text), 256u);
    EXPECT_EQ(to_windows_1252(text), bytes);
}

TEST(CodePage, KnowsItsOwnCharacters) {
    EXPECT_EQ(from_windows_1252("\x80 \x93quoted\x94 caf\xE9 \x9F"),
              "\u20ac \u201cquoted\u201d caf\u00e9 \u0178");
    EXPECT_EQ(to_windows_1252("\u20ac\u2019"), "\x80\x92");
}

TEST(CodePage, WhatItLacksBecomesAQuestionMark) {
    EXPECT_EQ(to_windows_1252("\u0416a\U0001F600"), "?a?");
}

} // namespace
} // namespace tolva::basic
