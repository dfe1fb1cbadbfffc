#include <gtest/gtest.h>

#include "jet/text_codec.h"

namespace tolva::jet {
namespace {

std::string decode(std::span<const std::uint8_t> bytes) {
    return decode_text(bytes, jet4_format);
}

std::vector<std::uint8_t> stored(std::u16string_view units, bool may_compress = true) {
    std::vector<std::uint8_t> out;
    encode_text(out, units, may_compress, jet4_format);
    return out;
}

using Bytes = std::vector<std::uint8_t>;

TEST(TextCodec, LatinTextTakesOneByteEachBehindAMark) {
    EXPECT_EQ(stored(u"abc\u00e9"), (Bytes{0xff, 0xfe, 'a', 'b', 'c', 0xe9}));
    EXPECT_EQ(decode(Bytes{0xff, 0xfe, 'a', 'b', 'c', 0xe9}), "abc\xc3\xa9");
}

TEST(TextCodec, ACharacterBeyondAsciiIsFoundWhereverItStands) {
    for (std::size_t size = 1; size <= 40; ++size)
        for (std::size_t place = 0; place < size; ++place) {
            Bytes bytes(2 + size, 'a');
            bytes[0] = 0xff, bytes[1] = 0xfe;
            bytes[2 + place] = 0xe9;
            const std::string before(place, 'a'), behind(size - place - 1, 'a');
            ASSERT_EQ(decode(bytes), before + "\xc3\xa9" + behind) << place << " of " << size;
            bytes.erase(bytes.begin(), bytes.begin() + 2);
            ASSERT_EQ(decode_text(bytes, jet3_format), before + "\xc3\xa9" + behind)
                << place << " of " << size;
            bytes[place] = 0;
            ASSERT_EQ(decode_text(bytes, jet3_format), before + '\0' + behind) << place << " of " << size;
        }
}

TEST(TextCodec, CompressesOnlyWhatGetsShorter) {
    EXPECT_EQ(stored(u""), Bytes{});
    EXPECT_EQ(stored(u"a"), (Bytes{'a', 0}));
    EXPECT_EQ(stored(u"ab"), (Bytes{'a', 0, 'b', 0}));
    EXPECT_EQ(stored(u"abc"), (Bytes{0xff, 0xfe, 'a', 'b', 'c'}));
    EXPECT_EQ(stored(u"\u20ac\u20ac\u20ac").size(), 6u);
    EXPECT_EQ(stored(u"abcdef", false).size(), 12u);
}

TEST(TextCodec, AZeroSwitchesTheModeInTheMiddleAndBack) {
    const Bytes bytes = stored(u"price \u20ac 5,- each");
    const Bytes expected = {0xff, 0xfe, 'p', 'r', 'i', 'c', 'e', ' ', 0,   0xac, 0x20,
                            0,    ' ',  '5', ',', '-', ' ', 'e', 'a', 'c', 'h'};
    EXPECT_EQ(bytes, expected);
    EXPECT_EQ(decode(bytes), "price \xe2\x82\xac 5,- each");
}

TEST(TextCodec, MayEndInEitherMode) {
    EXPECT_EQ(decode(Bytes{0xff, 0xfe, 'a', 'b', 0, 0xac, 0x20}), "ab\xe2\x82\xac");
    EXPECT_EQ(decode(Bytes{0xff, 0xfe, 'a', 'b', 0, 0xac, 0x20, 0}), "ab\xe2\x82\xac");
    EXPECT_EQ(decode(Bytes{0xff, 0xfe, 'a', 'b', 0}), "ab");
    EXPECT_EQ(decode(stored(u"abcdef\u20ac")), "abcdef\xe2\x82\xac");
}

TEST(TextCodec, TheMarkCountsOnceAtTheFront) {
    // U+00FF U+00FE further on are letters.
    EXPECT_EQ(decode(Bytes{0xff, 0xfe, 'a', 0xff, 0xfe, 'b'}), "a\xc3\xbf\xc3\xbe"
                                                               "b");
    EXPECT_EQ(decode(stored(u"\u00ff\u00feabc")), "\xc3\xbf\xc3\xbe"
                                                  "abc");
}

TEST(TextCodec, ACharacterWithALowByteOfZeroForbidsCompression) {
    EXPECT_EQ(stored(u"abcdefgh\u0100").size(), 18u);
    EXPECT_EQ(stored(u"abcdefgh\u4e00").size(), 18u);
    const std::u16string with_nul(u"abcdefgh\0ij", 11);
    EXPECT_EQ(stored(with_nul).size(), 22u);
    EXPECT_EQ(decode(stored(with_nul)), std::string("abcdefgh\0ij", 11));
}

TEST(TextCodec, CompressesUpTo1024Characters) {
    EXPECT_EQ(stored(std::u16string(1024, u'x')).size(), 1026u);
    EXPECT_EQ(stored(std::u16string(1025, u'x')).size(), 2050u);
}

TEST(TextCodec, SurrogatesMakeOneCharacterAndLoneOnesNone) {
    EXPECT_EQ(decode(Bytes{0x3d, 0xd8, 0x00, 0xde}), "\xf0\x9f\x98\x80");
    EXPECT_EQ(decode(Bytes{0x3d, 0xd8, 'a', 0}), "\xef\xbf\xbd"
                                                 "a");
    EXPECT_EQ(decode(Bytes{'a', 0, 0x3d, 0xd8}), "a\xef\xbf\xbd");
    EXPECT_EQ(to_utf16("\xf0\x9f\x98\x80"), u"\xd83d\xde00");
}

TEST(TextCodec, WhatIsNoUtf8BecomesTheReplacementCharacter) {
    EXPECT_EQ(to_utf16("a\xff"
                       "b"),
              u"a\xfffd"
              u"b");
    EXPECT_EQ(to_utf16("\xc3"), u"\xfffd");
    EXPECT_EQ(to_utf16("\xe2\x82"), u"\xfffd\xfffd");
    EXPECT_EQ(to_utf16("\xc0\x80"), u"\xfffd\xfffd");
    EXPECT_EQ(to_utf16("\xed\xa0\x80"), u"\xfffd\xfffd\xfffd");
}

TEST(TextCodec, HalfACharacterAtTheEndIsDropped) {
    EXPECT_EQ(decode(Bytes{'a', 0, 'b'}), "a");
}

TEST(TextCodec, EveryUnitSurvivesARoundTrip) {
    for (unsigned unit = 1; unit < 0x10000; ++unit) {
        if (unit >= 0xd800 && unit < 0xe000)
            continue;
        const std::u16string text = {u'a', static_cast<char16_t>(unit), u'b', u'c', u'd', u'e', u'f'};
        const Bytes bytes = stored(text);
        ASSERT_LE(bytes.size(), 14u);
        ASSERT_EQ(to_utf16(decode(bytes)), text) << unit;
    }
}

Bytes jet3_bytes(std::u16string_view text, int code_page = 1252) {
    Format format = jet3_format;
    format.code_page = code_page;
    Bytes bytes;
    encode_text(bytes, text, true, format);
    return bytes;
}

TEST(Jet3Text, HasOneByteForEachCharacterOfTheCodePage) {
    EXPECT_EQ(jet3_bytes(u"Na\u00efve \u20ac 5"), (Bytes{'N', 'a', 0xef, 'v', 'e', ' ', 0x80, ' ', '5'}));
    EXPECT_EQ(decode_text(Bytes{'N', 'a', 0xef, 'v', 'e', ' ', 0x80, ' ', '5'}, jet3_format),
              "Na\u00efve \u20ac 5");
    EXPECT_EQ(decode_text(Bytes{'a', 0, 'b'}, jet3_format), std::string("a\0b", 3));
}

TEST(Jet3Text, WhatTheCodePageLacksBecomesAQuestionMark) {
    EXPECT_EQ(jet3_bytes(u"\u03b1\u65e5"), (Bytes{'?', '?'}));
}

TEST(Jet3Text, EveryByteSurvivesARoundTrip) {
    for (const int page : {1250, 1251, 1252, 1253}) {
        Format format = jet3_format;
        format.code_page = page;
        for (int byte = 0; byte < 256; ++byte) {
            const Bytes stored = {static_cast<std::uint8_t>(byte)};
            EXPECT_EQ(jet3_bytes(to_utf16(decode_text(stored, format)), page), stored) << page << " " << byte;
        }
    }
}

TEST(Jet3Text, IsReadInTheCodePageOfItsFile) {
    Format format = jet3_format;
    format.code_page = 1251;
    EXPECT_EQ(decode_text(Bytes{0xc4, 0xe0}, format), "\u0414\u0430");
    format.code_page = 932; // not at hand
    EXPECT_EQ(decode_text(Bytes{'a', 0xc4}, format), "a\ufffd");
}

} // namespace
} // namespace tolva::jet
