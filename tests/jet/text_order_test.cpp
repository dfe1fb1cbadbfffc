#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "basic/text.h"
#include "jet/text_codec.h"
#include "jet/text_order.h"

namespace tolva::jet {
namespace {

constexpr TextOrder general = TextOrder::general_jet4;

std::string hex(const std::vector<std::uint8_t>& bytes) {
    static const char digits[] = "0123456789abcdef";
    std::string text;
    for (const std::uint8_t byte : bytes) {
        text += digits[byte >> 4];
        text += digits[byte & 15];
    }
    return text;
}

std::string key(std::u16string_view text) {
    std::vector<std::uint8_t> bytes;
    append_text_key(bytes, text, general);
    return hex(bytes);
}

std::string repeated(const std::string& text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i)
        all += text;
    return all;
}

TEST(TextOrder, WeighsLettersByOneByteWhateverTheirCase) {
    EXPECT_EQ(key(u"only ascii chars"), "64625e76074a6b4d5959074d574a696b0100");
    EXPECT_EQ(key(u"Only ASCII Chars"), key(u"only ascii chars"));
    EXPECT_EQ(key(u"MSysAccessStorage_ROOT"), "606b766b4a4d4d516b6b6b6d64694a55512b036964646d0100");
}

TEST(TextOrder, LeavesOutTrailingBlanksOnly) {
    EXPECT_EQ(key(u"Lot 7   "), key(u"Lot 7"));
    EXPECT_NE(key(u"  Lot 7"), key(u"Lot 7"));
    EXPECT_EQ(key(u"   "), key(u""));
    EXPECT_EQ(key(u""), "0100");
    EXPECT_NE(key(u"Lot\u00a0"), key(u"Lot"));
    EXPECT_EQ(key(u"\u3000"), "070100") << "the wide blank is a blank that stays";
}

TEST(TextOrder, PutsAccentsBehindTheEndOfTheText) {
    EXPECT_EQ(key(u"\u00e4\u00e4kk\u00f6si\u00e4"), "4a4a5c5c646b594a01131302021302021300");
    EXPECT_EQ(key(u"\u00fcmlaut"), "6f605e4a6f6d011300");
    EXPECT_EQ(key(u"M\u00e9xico D.F."), "605175594d64074f1c531c01020e00");
    EXPECT_EQ(key(u"\u00c9"), key(u"\u00e9"));
}

TEST(TextOrder, AddsCombiningMarksToTheLetterBeforeThem) {
    EXPECT_EQ(key(u"e\u0301"), key(u"\u00e9"));
    EXPECT_EQ(key(u"A\u030ang"), key(u"\u00c5ng"));
    EXPECT_EQ(key(u"a\u0302\u0301"), key(u"\u1ea5"));
    EXPECT_EQ(key(u"\u0301a"), "4a010c00") << "nothing before it: it stands alone";
}

TEST(TextOrder, SplitsLigatures) {
    EXPECT_EQ(key(u"Stra\u00dfe"), key(u"strasse"));
    EXPECT_EQ(key(u"\u00c6on"), key(u"aeon"));
    EXPECT_EQ(key(u"\u0153uvre"), key(u"oeuvre"));
    EXPECT_EQ(key(u"\u00deor"), key(u"thor"));
    EXPECT_EQ(key(u"\ufb03"), key(u"ffi"));
    EXPECT_EQ(key(u"\u01c6\u00e9"), "4f78510102140e00") << "the caron is on the second letter";
}

TEST(TextOrder, RecordsHyphensAndApostrophesByTheirPlace) {
    EXPECT_EQ(key(u"Anne-Marie"), "4a626251604a69595101010101"
                                  "80170682"
                                  "00");
    EXPECT_EQ(key(u"O'Brien"), "644c69595162"
                               "01010101"
                               "800b0680"
                               "00");
    EXPECT_EQ(key(u"\u0003DirData"), "4f59694f4a6d4a"
                                     "01010101"
                                     "80070605"
                                     "00");
    EXPECT_EQ(key(u"a\u00df-b"), "4a6b6b4c"
                                 "01010101"
                                 "80130682"
                                 "00")
        << "places count weights";
    EXPECT_EQ(key(u"\u00a3-"), "34a7"
                               "01010101"
                               "800b0682"
                               "00")
        << "of one byte or two";
}

TEST(TextOrder, KeepsThePlaceOfAHyphenFarBehind) {
    const std::u16string text = std::u16string(200, u'x') + u"-y";
    EXPECT_EQ(key(text), repeated("75", 200) + "76"
                                               "01010101"
                                               "83270682"
                                               "00");
}

TEST(TextOrder, HasAccentsBeforeRecords) {
    EXPECT_EQ(key(u"L'H\u00f4tel"), "5e57646d515e"
                                    "01"
                                    "020212"
                                    "010101"
                                    "800b0680"
                                    "00");
}

TEST(TextOrder, WeighsOtherScriptsByTwoBytes) {
    EXPECT_EQ(key(u"\u041c\u0438\u0440"), "7943793b79480100");
    EXPECT_EQ(key(u"\u03f0\u03b1\u1f76 \u03c4\u1f79\u03c4' \u1f10\u03b3\u1f7c "
                  u"\u039a\u1f7b\u03f0\u03bb\u03c9\u03c0\u03b1"),
              "7915790c07791e791e07790e077915791579167923791b790c"
              "0103020202020202020203010101801b068000");
}

TEST(TextOrder, WeighsHanAndNotesHowKanaAreWritten) {
    EXPECT_EQ(key(u"\u6f22\u5b57\u4eee\u540d\u4ea4\u3058\u308a\u6587"),
              "c0b6acaca00da5479fbe7f137f43b6f6010202020202030101ff0280ff8000");
    EXPECT_EQ(key(u"\u3041"), "7f02010101a0ff0280ff8000") << "written small";
    EXPECT_EQ(key(u"\u3042\u30fc"), "7f027f02010101ff9c0280ff8000") << "drawn out";
    EXPECT_EQ(key(u"\uff76\uff9e"), key(u"\u30ac")) << "half width with a mark of its own";
}

TEST(TextOrder, TakesHangulInItsOwnOrder) {
    EXPECT_EQ(key(u"\uac00"), "81030100");
    EXPECT_EQ(key(u"\uc8fc"), "9eec0100");
}

TEST(TextOrder, FoldsWidth) {
    EXPECT_EQ(key(u"\uff21\uff0d\uff11"), key(u"a-1"));
    EXPECT_EQ(key(u"m\u00b2"), key(u"m2"));
}

TEST(TextOrder, LeavesNoTraceOfWhatTheOrderDoesNotKnow) {
    EXPECT_EQ(key(u"a\u0218b"), key(u"ab"));
    EXPECT_EQ(key(std::u16string_view(u"a\0b", 3)), key(u"ab"));
    EXPECT_EQ(key(u"a\U0001f3e0b"), key(u"ab"));
}

TEST(TextOrder, DoublesWhatARepetitionMarkFollows) {
    EXPECT_EQ(key(u"\u0645\u0651"), "79c679c6010800");
    EXPECT_EQ(key(u"\u0651"), "ffff0100");
}

TEST(TextOrder, IndexesTheFirst255Characters) {
    const std::u16string long_text(300, u'b');
    EXPECT_EQ(key(long_text), repeated("4c", 255) + "0100");
    EXPECT_EQ(compare_text(std::string(300, 'b'), std::string(301, 'b'), general), std::weak_ordering::less);
}

TEST(TextOrder, GivesUtf8AndUtf16TheSameKey) {
    std::vector<std::uint8_t> bytes;
    append_text_key(bytes, std::string_view("Se\u00f1or \u0416-7"), general);
    EXPECT_EQ(hex(bytes), key(u"Se\u00f1or \u0416-7"));
    std::vector<std::uint8_t> broken;
    append_text_key(broken,
                    std::string_view("a\xff\xc3"
                                     "b"),
                    general);
    EXPECT_EQ(hex(broken), key(u"ab"));
}

TEST(TextOrder, NeverPutsAnEndInsideTheWeights) {
    for (unsigned unit = 1; unit < 0x10000; ++unit) {
        const char16_t text[] = {static_cast<char16_t>(unit), 0};
        std::vector<std::uint8_t> bytes;
        append_text_key(bytes, std::u16string_view(text, 1), general);
        ASSERT_GE(bytes.size(), 2U);
        ASSERT_EQ(bytes.back(), 0x00) << unit;
        std::size_t weight_bytes = 0;
        while (bytes[weight_bytes] != 0x01)
            ASSERT_NE(bytes[weight_bytes++], 0x00) << unit;
        ASSERT_LE(weight_bytes, 4U) << unit;
    }
}

bool holds(const std::vector<std::uint8_t>& key, const std::vector<std::uint8_t>& share) {
    return std::search(key.begin(), key.end(), share.begin(), share.end()) != key.end();
}

/// Whatever character a query takes for the letter or digit: either case, and any that folds to it.
TEST(TextOrder, KeepsTheShareOfLettersWhereverTheyStandTogether) {
    int characters = 0;
    for (const TextOrder order : {TextOrder::general_jet4, TextOrder::general_jet3})
        for (char32_t point = 1; point < 0x10000; ++point) {
            const char32_t small = basic::lower(point);
            if (!((small >= U'a' && small <= U'z') || (small >= U'0' && small <= U'9')))
                continue;
            // What the code page lacks no file of the older version holds.
            if (order == TextOrder::general_jet3 && code_page_byte(1252, static_cast<char16_t>(point)) == '?')
                continue;
            ++characters;
            const std::string letters{'x', static_cast<char>(small), 'y'};
            const std::string text = basic::from_code_points(
                std::u32string{U'-', U'\u00e4', U'X', point, U'Y', U'\u00df', U'\'', U' '});
            std::vector<std::uint8_t> bytes;
            append_text_key(bytes, text, order);
            EXPECT_TRUE(holds(bytes, key_share(letters, order))) << text << ": " << hex(bytes);
            EXPECT_FALSE(holds(bytes, key_share("yx", order))) << text;
        }
    EXPECT_GE(characters, 2 * (26 + 26 + 10));
}

TEST(TextOrder, TellsTheOrdersItKnows) {
    EXPECT_EQ(known_text_order(jet4_format, 1033, 0), TextOrder::general_jet4);
    EXPECT_FALSE(known_text_order(jet4_format, 1033, 1));
    EXPECT_FALSE(known_text_order(jet4_format, 1053, 0));
    EXPECT_FALSE(known_text_order(jet4_format, 0, 0));
    EXPECT_EQ(known_text_order(jet3_format, 1033, 0), TextOrder::general_jet3);
    EXPECT_FALSE(known_text_order(jet3_format, 1053, 0));
    Format cyrillic = jet3_format;
    cyrillic.code_page = 1251;
    EXPECT_FALSE(known_text_order(cyrillic, 1033, 0)) << "its weights are those of other letters";
}

TEST(TextOrder, ComparesAsTheAgentExpects) {
    const auto less = [](const char* a, const char* b) {
        return compare_text(a, b, general) < 0 && compare_text(b, a, general) > 0;
    };
    const auto equal = [](const char* a, const char* b) {
        return compare_text(a, b, general) == 0 && compare_text(b, a, general) == 0;
    };
    EXPECT_TRUE(equal("smith", "SMITH  "));
    EXPECT_TRUE(equal("", "  "));
    EXPECT_TRUE(less("", "a"));
    EXPECT_TRUE(less("smith", "smithe"));
    EXPECT_TRUE(less("a b", "ab"));
    EXPECT_TRUE(less("9", "a"));
    EXPECT_TRUE(less("10", "9"));
    EXPECT_TRUE(less("resume", "r\u00e9sum\u00e9"));
    EXPECT_TRUE(less("r\u00e9sum\u00e9", "resumes"));
    EXPECT_TRUE(less("OBrien", "O'Brien"));
    EXPECT_TRUE(less("O'Brien", "OBriens"));
    EXPECT_TRUE(less("coop", "co-op"));
    EXPECT_TRUE(less("co'op", "co-op"));
    EXPECT_TRUE(less("\u00fcber", "v"));
    EXPECT_TRUE(equal("\u00c5ngstr\u00f6m", "\u00e5NGSTR\u00d6M"));
    EXPECT_TRUE(less("#5", "5"));
}

TEST(TextOrder, ComparesInTheOrderOfTheKeys) {
    std::mt19937 random(20260107);
    const std::u32string letters = U"aAbB-'  \t1_~zZ\u00e4\u00c4\u00df\u00e6\u00f1\u0301\u0416\u3041\u30fc";
    const auto text = [&](std::size_t kinds) {
        std::u32string made;
        for (auto length = random() % 7; length > 0; --length)
            made += letters[random() % kinds];
        return basic::from_code_points(made);
    };
    for (int round = 0; round < 40000; ++round) {
        const std::size_t kinds = round % 2 ? letters.size() : 12;
        const std::string a = text(kinds), b = text(kinds);
        std::vector<std::uint8_t> left, right;
        append_text_key(left, a, general);
        append_text_key(right, b, general);
        const auto by_keys = left < right   ? std::weak_ordering::less
                             : right < left ? std::weak_ordering::greater
                                            : std::weak_ordering::equivalent;
        ASSERT_EQ(compare_text(a, b, general), by_keys) << "'" << a << "' and '" << b << "'";
    }
}

std::string jet3_key(std::u16string_view text) {
    std::vector<std::uint8_t> bytes;
    append_text_key(bytes, text, TextOrder::general_jet3);
    return hex(bytes);
}

TEST(Jet3TextOrder, GivesEachCharacterAWeightOfOneByte) {
    EXPECT_EQ(jet3_key(u"AbZ 09"), "60617e11565f00");
    EXPECT_EQ(jet3_key(u""), "00");
    EXPECT_EQ(jet3_key(u"a-'a"), "601e186000") << "hyphen and apostrophe weigh like others";
    EXPECT_EQ(jet3_key(u"a\u0001\u001f\u0081"), "6010101000");
    EXPECT_EQ(jet3_key(u"a\u03b1"), jet3_key(u"a?")) << "as it would be stored";
}

TEST(Jet3TextOrder, SplitsLigaturesAndTheSharpS) {
    EXPECT_EQ(jet3_key(u"\u00c6\u0153\u00df"), "60667266767600");
}

TEST(Jet3TextOrder, PutsAccentsBehindTheWeightsFourBitsEach) {
    EXPECT_EQ(jet3_key(u"a\u00e0a"), "6060600230");
    EXPECT_EQ(jet3_key(u"aa\u00e9aa"), "60606660600224"
                                       "00");
    EXPECT_EQ(jet3_key(u"-\u00e1a-\u00e1"), "1e60601e60042400") << "what weighs less than a digit has none";
    EXPECT_EQ(jet3_key(u"\u0160\u00d1\u00c7\u00c5\u0178"), "767062607d0a798600");
}

TEST(Jet3TextOrder, LeavesOutTrailingBlanksOnly) {
    EXPECT_EQ(jet3_key(u"a b  "), jet3_key(u"A B"));
    EXPECT_NE(jet3_key(u" a"), jet3_key(u"a"));
}

TEST(Jet3TextOrder, ComparesInTheOrderOfItsKeys) {
    const auto less = [](const char* a, const char* b) {
        return compare_text(a, b, TextOrder::general_jet3) < 0 &&
               compare_text(b, a, TextOrder::general_jet3) > 0;
    };
    EXPECT_TRUE(compare_text("smith", "SMITH  ", TextOrder::general_jet3) == 0);
    EXPECT_TRUE(less("resume", "r\u00e9sum\u00e9"));
    EXPECT_TRUE(less("r\u00e9sum\u00e9", "resumes"));
    EXPECT_TRUE(less("O'Brien", "OBrien")) << "where the newer order has it behind";
    EXPECT_TRUE(less("a", "a b"));
}

} // namespace
} // namespace tolva::jet
