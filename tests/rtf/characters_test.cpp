#include <gtest/gtest.h>

#include "sources.h"

namespace tolva::rtf {
namespace {

TEST(Characters, AreTakenByTheFontsOwnCharacterSet) {
    EXPECT_EQ(text_of("caf\\'e9 \\f4\\'d9\\f0\\'e9"), "café Ωé");
    EXPECT_EQ(text_of("\\f3\\'82\\'a0\\'82\\'a2"), "あい");
    EXPECT_EQ(text_of("\\f2 abc\\'b7"), "αβχ•");
}

TEST(Characters, MayStandRawInTheSource) {
    EXPECT_EQ(text_of("caf\xE9"), "café");
    EXPECT_EQ(text_of("\\f3\x82\xA0x"), "あx");
    EXPECT_EQ(text_of("\\f3\\'83\x83"), "ャ") << "half hex, half raw";
}

TEST(Characters, AreTakenByTheDocumentsCodePageWhereNoFontTells) {
    EXPECT_EQ(plain_text(read("{\\rtf1\\ansi\\ansicpg1251 \\'c6}")), "Ж");
    EXPECT_EQ(plain_text(read("{\\rtf1\\mac \\'8e}")), "é");
    EXPECT_EQ(plain_text(read("{\\rtf1\\pc \\'82}")), "é");
    EXPECT_EQ(plain_text(read("{\\rtf1\\pca \\'d5}")), "ı");
    EXPECT_EQ(plain_text(read("{\\rtf1\\ansi\\ansicpg932 \\'82\\'a0}")), "あ");
    EXPECT_EQ(plain_text(read("{\\rtf1\\ansi{\\fonttbl{\\f0\\fcharset0\\cpg65001 A;}}\\f0 \\'e4\\'b8\\'ad}")),
              "中");
}

TEST(Characters, KeepTheLetterBehindALonelyLeadByte) {
    EXPECT_EQ(text_of("\\f3\\'82 x"), "\uFFFD x");
    EXPECT_EQ(text_of("\\f3\\'82\\b x"), "\uFFFDx");
}

TEST(Characters, ComeAsSignedUnicodeUnitsWithAFallback) {
    EXPECT_EQ(text_of("\\u945?\\u-3913?"), "α\uF0B7");
    EXPECT_EQ(text_of("\\u8364\\'80x"), "€x");
    EXPECT_EQ(text_of("\\f2\\u-3913?"), "•") << "in a symbol font the private area is the font's bytes";
}

TEST(Characters, JoinSurrogates) {
    EXPECT_EQ(text_of("\\u-10179?\\u-8704?"), "😀");
    EXPECT_EQ(text_of("\\u-10179?x"), "\uFFFDx");
    EXPECT_EQ(text_of("\\u-8704?x"), "\uFFFDx");
}

TEST(Characters, SkipAsManyUnitsAsTheGroupSays) {
    EXPECT_EQ(text_of("{\\uc2\\u228\\'E8ab}\\u228?b"), "äbäb");
    EXPECT_EQ(text_of("{\\uc0\\u228}\\u228?x"), "ääx");
    EXPECT_EQ(text_of("{\\uc3\\u228 abcd}"), "äd");
}

TEST(Characters, CountAHexAControlAndABinaryAsOneUnit) {
    EXPECT_EQ(text_of("\\u228\\'41x"), "äx");
    EXPECT_EQ(text_of("\\u228\\b x"), "äx");
    EXPECT_FALSE(document_of("\\u228\\b x").paragraphs.front().runs.front().format.bold);
    EXPECT_EQ(text_of("{\\uc2\\u228\\bin3 {}}yx}"), "äx");
    EXPECT_EQ(text_of("{\\uc5\\u228 a}b"), "äb") << "a brace ends the fallback";
}

TEST(Characters, HaveWordsAndSymbolsOfTheirOwn) {
    EXPECT_EQ(text_of("a\\tab b\tc"), "a\tb\tc");
    EXPECT_EQ(text_of("a\\line b\\page c"), "a\vb\fc");
    EXPECT_EQ(text_of("\\emdash\\endash\\bullet\\lquote\\rquote\\ldblquote\\rdblquote"), "—–•‘’“”");
    EXPECT_EQ(text_of("a\\~b\\_c\\-d"), "a\u00A0b\u2011c\u00ADd");
    EXPECT_EQ(text_of("\\{\\}\\\\"), "{}\\");
}

TEST(Characters, EndAParagraphWithABackslashedLineEnd) {
    EXPECT_EQ(text_of("a\\\nb\\\r\nc"), "a\r\nb\r\nc");
    EXPECT_EQ(text_of("a\nb\r\nc"), "abc") << "a bare one is nothing";
}

TEST(Characters, KeepTheTextOfUnknownWordsAndDropUnknownStars) {
    const Document document = document_of("a\\frobnicate7 b{\\*\\frobs c}{\\frobs d}");
    EXPECT_EQ(plain_text(document), "abd");
    ASSERT_EQ(losses(document).size(), 3u);
    EXPECT_EQ(losses(document)[0], "the unknown word \\frobnicate");
}

TEST(Characters, MayComeAsUtf8WhenTheProgramPutTheSourceTogether) {
    EXPECT_EQ(plain_text(read("{\\rtf1\\ansi Dvořák\\'e9}", RawBytes::utf8)), "Dvořáké");
    EXPECT_EQ(plain_text(read("{\\rtf1\\ansi a\xE9z}", RawBytes::utf8)), "aéz")
        << "what isn't UTF-8 is the page's";
    EXPECT_EQ(plain_text(read("{\\rtf1\\ansi \\u228ä!}", RawBytes::utf8)), "ä!")
        << "one character is one unit";
}

TEST(Characters, TakeTheUnicodeOneOfTwoCodings) {
    EXPECT_EQ(text_of("{\\upr{ansi}{\\*\\ud{uni\\u228?}}}"), "uniä");
}

TEST(CharacterFormat, FollowsItsWords) {
    EXPECT_TRUE(format_of("\\b").bold);
    EXPECT_FALSE(format_of("\\b\\b0").bold);
    EXPECT_TRUE(format_of("\\i").italic);
    EXPECT_TRUE(format_of("\\strike").strike);
    EXPECT_TRUE(format_of("\\caps").caps);
    EXPECT_TRUE(format_of("\\scaps").small_caps);
    EXPECT_TRUE(format_of("\\v").hidden);
    EXPECT_EQ(format_of("\\fs28").half_points, 28);
    EXPECT_EQ(format_of("\\f1").font, 1);
    EXPECT_EQ(format_of("\\cf2\\highlight1").colour, 2);
    EXPECT_EQ(format_of("\\cf2\\highlight1").highlight, 1);
    EXPECT_EQ(format_of("\\cb1").background, 1);
    EXPECT_EQ(format_of("\\up6").raise, 6);
    EXPECT_EQ(format_of("\\dn4").raise, -4);
}

TEST(CharacterFormat, HasOneUnderlineAndOneScriptAtATime) {
    EXPECT_EQ(format_of("\\ul").underline, Underline::single);
    EXPECT_EQ(format_of("\\ul\\ulnone").underline, Underline::none);
    EXPECT_EQ(format_of("\\ul\\ul0").underline, Underline::none);
    EXPECT_EQ(format_of("\\ul\\uldb").underline, Underline::double_line);
    EXPECT_EQ(format_of("\\super").script, Script::superscript);
    EXPECT_EQ(format_of("\\super\\sub").script, Script::subscript);
    EXPECT_EQ(format_of("\\sub\\nosupersub").script, Script::baseline);
}

TEST(CharacterFormat, EndsWithItsGroupAndWithPlain) {
    const Document document = document_of("{\\b a}b\\i c\\plain d");
    const auto& runs = document.paragraphs.front().runs;
    ASSERT_EQ(runs.size(), 4u);
    EXPECT_TRUE(runs[0].format.bold);
    EXPECT_FALSE(runs[1].format.bold);
    EXPECT_TRUE(runs[2].format.italic);
    EXPECT_EQ(runs[3].format, format_of("\\plain"));
}

TEST(CharacterFormat, ClampsWhatNoFontOrTableHas) {
    EXPECT_EQ(format_of("\\fs99999").half_points, 3276);
    EXPECT_EQ(format_of("\\fs-7").half_points, 1);
    EXPECT_EQ(format_of("\\f99").font, 0);
    EXPECT_EQ(format_of("\\cf99").colour, 0);
    EXPECT_EQ(format_of("\\cf-1").colour, 0);
}

TEST(FontTable, IsReadGroupedAndFlat) {
    const Document grouped =
        read("{\\rtf1{\\fonttbl{\\f3\\fswiss\\fprq2\\fcharset238{\\*\\panose 0102}Arial CE"
             "{\\*\\falt Helvetica};}{\\f7 Courier;}}\\f7 x}");
    ASSERT_EQ(grouped.fonts.size(), 2u);
    EXPECT_EQ(grouped.fonts[0].name, "Arial CE");
    EXPECT_EQ(grouped.fonts[0].alternative, "Helvetica");
    EXPECT_EQ(grouped.fonts[0].number, 3);
    EXPECT_EQ(grouped.fonts[0].charset, 238);
    EXPECT_EQ(grouped.fonts[0].family, Font::Family::swiss);
    EXPECT_EQ(grouped.paragraphs.front().runs.front().format.font, 1);
    const Document flat =
        read("{\\rtf1{\\fonttbl\\f0\\fswiss Helvetica;\\f1\\fnil{\\*\\fname Cou}Courier New;}}");
    ASSERT_EQ(flat.fonts.size(), 2u);
    EXPECT_EQ(flat.fonts[1].name, "Courier New");
}

TEST(FontTable, HasNamesInTheFontsOwnCharacterSet) {
    const Document document =
        read("{\\rtf1{\\fonttbl{\\f0\\fcharset128 \\'82\\'6c\\'82\\'72;}{\\f1\\fcharset2 Symbol;}}}");
    EXPECT_EQ(document.fonts[0].name, "ＭＳ");
    EXPECT_EQ(document.fonts[1].name, "Symbol") << "a symbol font's name is no symbols";
}

TEST(FontTable, IsNeverEmpty) {
    const Document document = read("{\\rtf1 x}");
    ASSERT_EQ(document.fonts.size(), 1u);
    EXPECT_EQ(document.default_font, 0);
}

TEST(FontTable, GivesTheDefaultFontToTextWithoutOne) {
    const Document document = read("{\\rtf1\\deff7{\\fonttbl{\\f3 A;}{\\f7 B;}}x\\f3 y\\plain z}");
    const auto& runs = document.paragraphs.front().runs;
    EXPECT_EQ(document.default_font, 1);
    EXPECT_EQ(runs[0].format.font, 1);
    EXPECT_EQ(runs[1].format.font, 0);
    EXPECT_EQ(runs[2].format.font, 1);
}

TEST(FontTable, MayComeBehindText) {
    const Document document = read("{\\rtf1\\deff1  {\\fonttbl{\\f0\\fcharset2 Symbol;}{\\f1 Arial;}}x}");
    const auto& runs = document.paragraphs.front().runs;
    ASSERT_EQ(runs.size(), 2u);
    EXPECT_EQ(document.fonts[static_cast<std::size_t>(runs[0].format.font)].name, "Times New Roman");
    EXPECT_EQ(document.fonts[static_cast<std::size_t>(runs[1].format.font)].name, "Arial");
}

TEST(ColourTable, BeginsWithTheAutomaticColour) {
    const Document document = document_of("x");
    ASSERT_EQ(document.colours.size(), 3u);
    EXPECT_TRUE(document.colours[0].automatic);
    EXPECT_EQ(document.colours[1], (Colour{255, 0, 0, false}));
    const Document full = read("{\\rtf1{\\colortbl\\red1\\green2\\blue3;}x}");
    EXPECT_EQ(full.colours[0], (Colour{1, 2, 3, false})) << "a first entry that isn't empty is a colour";
}

} // namespace
} // namespace tolva::rtf
