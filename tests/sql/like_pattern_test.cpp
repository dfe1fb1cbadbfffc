#include "sql/like_pattern.h"

#include <gtest/gtest.h>

#include <random>

#include "support/errors.h"

namespace tolva::sql {
namespace {

bool like(const std::string& text, const std::string& pattern) {
    return LikePattern(pattern).matches(text);
}

TEST(LikePattern, AnAsteriskIsAnyRun) {
    EXPECT_TRUE(like("Goldsmith", "*smi*"));
    EXPECT_TRUE(like("smith", "smi*"));
    EXPECT_TRUE(like("Goldsmi", "*smi"));
    EXPECT_TRUE(like("", "*"));
    EXPECT_TRUE(like("anything", "**"));
    EXPECT_TRUE(like("abcbd", "a*b*d"));
    EXPECT_TRUE(like("aab", "*ab"));
    EXPECT_FALSE(like("smith", "*smy*"));
    EXPECT_FALSE(like("xsmith", "smi*"));
    EXPECT_FALSE(like("smithx", "*smith"));
    EXPECT_FALSE(like("ab", "*abc*"));
}

TEST(LikePattern, WithoutAnAsteriskTheWholeTextCounts) {
    EXPECT_TRUE(like("Smith", "smith"));
    EXPECT_FALSE(like("Smith ", "smith"));
    EXPECT_FALSE(like("Smiths", "smith"));
    EXPECT_TRUE(like("", ""));
    EXPECT_FALSE(like("a", ""));
}

TEST(LikePattern, AQuestionMarkIsOneCharacterAndAHashOneDigit) {
    EXPECT_TRUE(like("cat", "c?t"));
    EXPECT_FALSE(like("ct", "c?t"));
    EXPECT_TRUE(like("caf\u00e9", "caf?"));
    EXPECT_TRUE(like("555-1234", "555-####"));
    EXPECT_FALSE(like("555-12x4", "555-####"));
}

TEST(LikePattern, BracketsHoldAListOfCharacters) {
    EXPECT_TRUE(like("cat", "[a-c]at"));
    EXPECT_TRUE(like("CAT", "[a-c]at"));
    EXPECT_FALSE(like("rat", "[a-c]at"));
    EXPECT_TRUE(like("rat", "[!a-c]at"));
    EXPECT_FALSE(like("cat", "[!a-c]at"));
    EXPECT_TRUE(like("x7", "x[0-46-9]"));
    EXPECT_FALSE(like("x5", "x[0-46-9]"));
    EXPECT_TRUE(like("a-b", "a[-x]b"));
}

TEST(LikePattern, BracketsMakeWildcardsPlain) {
    EXPECT_TRUE(like("5*5", "5[*]5"));
    EXPECT_FALSE(like("555", "5[*]5"));
    EXPECT_TRUE(like("what?", "what[?]"));
    EXPECT_TRUE(like("a[b", "a[[]b"));
    EXPECT_TRUE(like("wow!", "wow[!]"));
    EXPECT_TRUE(like("ab", "a[]b")) << "an empty list stands for nothing";
    EXPECT_TRUE(like("a]b", "a]b"));
}

TEST(LikePattern, PercentAndUnderscoreArePlain) {
    EXPECT_TRUE(like("100%", "*%"));
    EXPECT_FALSE(like("100", "*%"));
    EXPECT_TRUE(like("a_b", "a_b"));
    EXPECT_FALSE(like("axb", "a_b"));
}

TEST(LikePattern, IgnoresLetterCaseOfEveryAlphabet) {
    EXPECT_TRUE(like("M\u00dcLLER", "m\u00fcl*"));
    EXPECT_TRUE(like("\u0416\u0443\u043a", "*\u0416\u0423*"));
    EXPECT_TRUE(like("caf\u00e9 SMITH", "*smi*")) << "an ASCII pattern on a text with accents";
    EXPECT_FALSE(like("cafe", "caf\u00e9")) << "accents distinguish";
}

TEST(LikePattern, AFaultyListIsAnInvalidPattern) {
    EXPECT_EQ(support::error_number([] { LikePattern("*[*"); }), 93);
    EXPECT_EQ(support::error_number([] { LikePattern("[z-a]"); }), 93);
}

TEST(LikePattern, ManyRunsTakeNoExponentialTime) {
    std::string pattern;
    for (int i = 0; i < 200; ++i)
        pattern += "*a?";
    EXPECT_FALSE(like(std::string(5000, 'a'), pattern + "*b"));
}

/// The meaning of a pattern without lists, by trying everything.
bool tried_out(std::string_view text, std::string_view pattern) {
    if (pattern.empty())
        return text.empty();
    if (pattern.front() == '*')
        return tried_out(text, pattern.substr(1)) || (!text.empty() && tried_out(text.substr(1), pattern));
    if (text.empty())
        return false;
    const bool digit = text.front() >= '0' && text.front() <= '9';
    const bool fits =
        pattern.front() == '?' || (pattern.front() == '#' ? digit : pattern.front() == text.front());
    return fits && tried_out(text.substr(1), pattern.substr(1));
}

TEST(LikePattern, AgreesWithTryingEverything) {
    std::mt19937 random(7);
    const auto any_of = [&random](std::string_view letters, std::size_t longest) {
        std::string text;
        for (std::size_t left = random() % (longest + 1); left > 0; --left)
            text.push_back(letters[random() % letters.size()]);
        return text;
    };
    int matched = 0;
    for (int round = 0; round < 20000; ++round) {
        const std::string text = any_of("ab1", 8);
        const std::string pattern = any_of("ab1**?#", 6);
        const bool expected = tried_out(text, pattern);
        ASSERT_EQ(like(text, pattern), expected) << text << " like " << pattern;
        ASSERT_EQ(like(text + "\u00e9", pattern + "\u00c9"), expected) << text << " like " << pattern;
        matched += expected;
    }
    EXPECT_GT(matched, 1000);
}

} // namespace
} // namespace tolva::sql
