#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "rtf/code_page.h"
#include "rtf/symbol_font.h"
#include "support/program.h"

namespace tolva::rtf {
namespace {

char32_t decode(const CodePage& page, std::string_view bytes) {
    return page.decode(bytes);
}

TEST(CodePage, DecodesOneByteOfEachOfTheUsualPages) {
    EXPECT_EQ(decode(CodePage(1252), "\x80"), U'€');
    EXPECT_EQ(decode(CodePage(1250), "\xE8"), U'č');
    EXPECT_EQ(decode(CodePage(1251), "\xC6"), U'Ж');
    EXPECT_EQ(decode(CodePage(1253), "\xD9"), U'Ω');
    EXPECT_EQ(decode(CodePage(1254), "\xFE"), U'ş');
    EXPECT_EQ(decode(CodePage(1257), "\xE0"), U'ą');
    EXPECT_EQ(decode(CodePage(437), "\x82"), U'é');
    EXPECT_EQ(decode(CodePage(850), "\xD5"), U'ı');
    EXPECT_EQ(decode(CodePage(852), "\xA5"), U'ą');
    EXPECT_EQ(decode(CodePage(866), "\x86"), U'Ж');
    EXPECT_EQ(decode(CodePage(874), "\xA1"), U'ก');
    EXPECT_EQ(decode(CodePage(10000), "\x8E"), U'é');
    EXPECT_EQ(decode(CodePage(10007), "\x86"), U'Ж');
}

TEST(CodePage, DecodesTwoBytesOfTheEastAsianPages) {
    EXPECT_EQ(decode(CodePage(932), "\x82\xA0"), U'あ');
    EXPECT_EQ(decode(CodePage(932), "\xB1"), U'ｱ');
    EXPECT_EQ(decode(CodePage(936), "\xD6\xD0"), U'中');
    EXPECT_EQ(decode(CodePage(936), "\x81\x40"), U'丂');
    EXPECT_EQ(decode(CodePage(949), "\xB0\xA1"), U'가');
    EXPECT_EQ(decode(CodePage(949), "\x81\x41"), U'갂');
    EXPECT_EQ(decode(CodePage(950), "\xA4\xA4"), U'中');
}

TEST(CodePage, TakesAnUnknownNumberForWindows1252) {
    EXPECT_EQ(CodePage(4711), CodePage(1252));
    EXPECT_FALSE(has_code_page(4711));
    EXPECT_TRUE(has_code_page(65001));
}

TEST(CodePage, EncodesEverySingleByteThatItDecodes) {
    for (const int number :
         {437, 850, 852, 866, 874, 1250, 1251, 1252, 1253, 1254, 1255, 1256, 1257, 1258, 10000, 10007}) {
        const CodePage page(number);
        for (int byte = 0x20; byte < 0x100; ++byte) {
            const char as_char = static_cast<char>(byte);
            const char32_t character = page.decode(std::string_view(&as_char, 1));
            if (character != 0xFFFD) {
                EXPECT_EQ(page.encode(character), static_cast<unsigned char>(byte)) << number << " " << byte;
            }
        }
    }
}

TEST(CodePage, EncodesNothingThatTheSinglePageLacks) {
    EXPECT_FALSE(CodePage(1252).encode(U'ř'));
    EXPECT_FALSE(CodePage(1252).encode(0x1F600));
    EXPECT_FALSE(CodePage(932).encode(U'あ')) << "two bytes are written as Unicode";
}

TEST(CodePage, ShowsSymbolsByTheirGlyphs) {
    const CodePage symbol = CodePage::of_symbol_font("Symbol");
    EXPECT_EQ(decode(symbol, "a"), U'α');
    EXPECT_EQ(decode(symbol, "\xB7"), U'•');
    EXPECT_EQ(decode(symbol, "\xE5"), U'∑');
    EXPECT_EQ(symbol.encode(U'•'), 0xB7);
    EXPECT_FALSE(symbol.encode(U'a'));
    EXPECT_EQ(decode(CodePage::of_symbol_font("Wingdings"), "\xFC"), U'✔');
    EXPECT_EQ(decode(CodePage::of_symbol_font("ITC Zapf Dingbats"), "A"), U'✡');
}

TEST(CodePage, KeepsUnknownSymbolsInThePrivateArea) {
    const CodePage page = CodePage::of_symbol_font("Some Ornaments");
    EXPECT_EQ(decode(page, "A"), 0xF041u);
    EXPECT_EQ(page.encode(0xF041), 'A');
}

TEST(CodePage, RefusesOverlongUtf8) {
    const CodePage utf8(CodePage::utf_8);
    EXPECT_EQ(decode(utf8, "\xE4\xB8\xAD"), U'中');
    EXPECT_EQ(decode(utf8, "\xE0\x80\x80"), 0xFFFDu);
    EXPECT_EQ(decode(utf8, "\xED\xA0\x80"), 0xFFFDu);
    EXPECT_EQ(decode(utf8, "\xFF"), 0xFFFDu);
}

/// Every code of the page, decoded by us and by iconv; what iconv refuses is not compared.
void compare_with_iconv(int number, const std::string& name, bool two_bytes) {
    if (!support::has_command("iconv"))
        GTEST_SKIP() << "iconv is not at hand";
    const CodePage page(number);
    std::string bytes;
    std::string ours;
    for (int lead = 0x80; lead < 0x100; ++lead) {
        const char first = static_cast<char>(lead);
        if (!two_bytes || page.length(static_cast<unsigned char>(lead)) == 1) {
            const char32_t character = page.decode(std::string_view(&first, 1));
            if (character != 0xFFFD && character >= 0xA0) {
                bytes += std::string(1, first) + "\n";
                append_utf8(ours, character);
                ours += '\n';
            }
            continue;
        }
        for (int trail = 0x40; trail < 0x100; ++trail) {
            const std::string pair = {first, static_cast<char>(trail)};
            const char32_t character = page.decode(pair);
            if (character == 0xFFFD || (character >= 0xE000 && character <= 0xF8FF))
                continue;
            bytes += pair + "\n";
            append_utf8(ours, character);
            ours += '\n';
        }
    }
    const support::ProgramRun run = support::run_program({"iconv", "-c", "-f", name, "-t", "UTF-8"}, bytes);
    std::vector<std::string> our_lines, their_lines;
    const auto lines = [](const std::string& text) {
        std::vector<std::string> result(1);
        for (const char c : text)
            if (c == '\n')
                result.emplace_back();
            else
                result.back() += c;
        return result;
    };
    our_lines = lines(ours);
    their_lines = lines(run.out);
    ASSERT_EQ(our_lines.size(), their_lines.size());
    ASSERT_GT(our_lines.size(), two_bytes ? 7000u : 60u);
    int differing = 0;
    // A row of signs that is no part of the page proper goes to the private area there.
    const auto is_private = [](const std::string& character) {
        return character >= "\uE000" && character <= "\uF8FF";
    };
    for (std::size_t at = 0; at < our_lines.size(); ++at)
        if (!their_lines[at].empty() && !is_private(their_lines[at]) && our_lines[at] != their_lines[at])
            ++differing;
    // Windows and the standards show a few dozen East Asian signs alike that Unicode has twice.
    EXPECT_LE(differing, two_bytes ? 20 : 0) << name;
}

TEST(CodePage, AgreesWithIconvOnJapanese) {
    compare_with_iconv(932, "CP932", true);
}
TEST(CodePage, AgreesWithIconvOnSimplifiedChinese) {
    compare_with_iconv(936, "CP936", true);
}
TEST(CodePage, AgreesWithIconvOnKorean) {
    compare_with_iconv(949, "CP949", true);
}
TEST(CodePage, AgreesWithIconvOnTraditionalChinese) {
    compare_with_iconv(950, "CP950", true);
}

TEST(CodePage, AgreesWithIconvOnSingleBytes) {
    for (const int number : {437, 737, 775, 850,  852,  855,  857,  860,  861,  862,  863,  864, 865,
                             866, 869, 874, 1250, 1251, 1252, 1253, 1254, 1255, 1256, 1257, 1258})
        compare_with_iconv(number, "CP" + std::to_string(number), false);
}

} // namespace
} // namespace tolva::rtf
