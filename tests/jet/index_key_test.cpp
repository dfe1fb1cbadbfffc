#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "jet/index_key.h"

namespace tolva::jet {
namespace {

constexpr std::size_t longest_key = 510;

std::string hex(const Key& bytes) {
    static const char digits[] = "0123456789abcdef";
    std::string text;
    for (const std::uint8_t byte : bytes) {
        text += digits[byte >> 4];
        text += digits[byte & 15];
    }
    return text;
}

Key key_of(ColumnType type, const Value& value, bool descending = false) {
    Key key;
    append_key(key, {type, descending}, value);
    return key;
}

std::string up(ColumnType type, const Value& value) {
    return hex(key_of(type, value));
}
std::string down(ColumnType type, const Value& value) {
    return hex(key_of(type, value, true));
}

Value whole(std::int64_t value) {
    return value;
}

TEST(IndexKey, FlagsNulls) {
    EXPECT_EQ(up(ColumnType::long_integer, {}), "00");
    EXPECT_EQ(down(ColumnType::long_integer, {}), "ff");
    EXPECT_EQ(up(ColumnType::text, {}), "00");
    EXPECT_EQ(down(ColumnType::text, {}), "ff");
}

TEST(IndexKey, HasYesBeforeNoAndNullIsNo) {
    EXPECT_EQ(up(ColumnType::boolean, true), "7f00");
    EXPECT_EQ(up(ColumnType::boolean, false), "7fff");
    EXPECT_EQ(up(ColumnType::boolean, {}), "7fff");
    EXPECT_EQ(down(ColumnType::boolean, true), "80ff");
    EXPECT_EQ(down(ColumnType::boolean, false), "8000");
}

TEST(IndexKey, FlipsTheSignOfWholeNumbersButNotOfBytes) {
    EXPECT_EQ(up(ColumnType::byte, whole(0)), "7f00");
    EXPECT_EQ(up(ColumnType::byte, whole(200)), "7fc8");
    EXPECT_EQ(up(ColumnType::integer, whole(1)), "7f8001");
    EXPECT_EQ(up(ColumnType::integer, whole(-1)), "7f7fff");
    EXPECT_EQ(up(ColumnType::long_integer, whole(309840983)), "7f9277cc57");
    EXPECT_EQ(up(ColumnType::long_integer, whole(-2147483647 - 1)), "7f00000000");
    EXPECT_EQ(down(ColumnType::long_integer, whole(1)), "807ffffffe");
    EXPECT_EQ(up(ColumnType::currency, Currency{-10000}), "7f7fffffffffffd8f0");
}

TEST(IndexKey, TurnsTheBitsOfNegativeRealNumbers) {
    EXPECT_EQ(up(ColumnType::double_real, 1.0), "7fbff0000000000000");
    EXPECT_EQ(up(ColumnType::double_real, -1.0), "7f400fffffffffffff");
    EXPECT_EQ(up(ColumnType::single_real, -2.5), "7f3fdfffff");
    EXPECT_EQ(up(ColumnType::date, basic::Date{0}), "7f8000000000000000");
    EXPECT_EQ(down(ColumnType::date, basic::Date{1.5}), "804007ffffffffffff");
}

template <typename Values>
void expect_order(ColumnType type, const Values& values) {
    for (std::size_t i = 1; i < values.size(); ++i) {
        EXPECT_LT(key_of(type, Value(values[i - 1])), key_of(type, Value(values[i]))) << i;
        EXPECT_GT(key_of(type, Value(values[i - 1]), true), key_of(type, Value(values[i]), true)) << i;
        EXPECT_LT(key_of(type, {}), key_of(type, Value(values[i])));
        EXPECT_GT(key_of(type, {}, true), key_of(type, Value(values[i]), true));
    }
}

TEST(IndexKey, OrdersValuesBothWays) {
    expect_order(ColumnType::integer, std::vector<std::int64_t>{-32768, -7, 0, 1, 255, 256, 32767});
    expect_order(ColumnType::byte, std::vector<std::int64_t>{0, 1, 127, 128, 255});
    expect_order(ColumnType::double_real, std::vector<double>{-1e300, -2.5, -1e-9, 0.0, 1e-9, 3.0, 1e300});
    expect_order(ColumnType::single_real, std::vector<double>{-1e30, -2.5, 0.0, 1.5, 3e30});
    expect_order(ColumnType::date, std::vector<basic::Date>{{-1.25}, {0}, {0.5}, {46000}});
    expect_order(ColumnType::currency, std::vector<Currency>{{-5}, {0}, {1}, {10000}});
    expect_order(ColumnType::text, std::vector<std::string>{"", "a", "a b", "ab", "a-b", "\u00e1b", "b"});
    expect_order(
        ColumnType::binary,
        std::vector<Bytes>{{0}, {0, 0}, {1}, {1, 2, 3, 4, 5, 6, 7, 8}, {1, 2, 3, 4, 5, 6, 7, 8, 0}, {2}});
}

TEST(IndexKey, OrdersDecimals) {
    const auto decimal = [](bool negative, std::uint32_t low) {
        Decimal value;
        value.negative = negative;
        value.magnitude = {low, 0, 0};
        return Value(value);
    };
    EXPECT_EQ(up(ColumnType::numeric, decimal(false, 10000)), "7fff"
                                                              "000000000000000000000000"
                                                              "00002710");
    EXPECT_EQ(up(ColumnType::numeric, decimal(true, 10000)), "7f00"
                                                             "ffffffffffffffffffffffff"
                                                             "ffffd8ef");
    EXPECT_EQ(up(ColumnType::numeric, decimal(true, 0)), up(ColumnType::numeric, decimal(false, 0)));
    EXPECT_LT(key_of(ColumnType::numeric, decimal(true, 2)), key_of(ColumnType::numeric, decimal(true, 1)));
    EXPECT_LT(key_of(ColumnType::numeric, decimal(true, 1)), key_of(ColumnType::numeric, decimal(false, 0)));
    EXPECT_EQ(down(ColumnType::numeric, decimal(false, 1)), "80ff"
                                                            "ffffffffffffffffffffffff"
                                                            "fffffffe");
}

TEST(IndexKey, EndsDescendingTextsTwice) {
    EXPECT_EQ(up(ColumnType::text, std::string("A")), "7f4a0100");
    EXPECT_EQ(down(ColumnType::text, std::string("A")), "80b5feff00");
    EXPECT_EQ(up(ColumnType::memo, std::string("A")), "7f4a0100");
}

TEST(IndexKey, TurnsADescendingTextOfTheOlderOrderWholly) {
    Key key;
    append_key(key, {ColumnType::text, true, TextOrder::general_jet3}, std::string("ab"));
    EXPECT_EQ(hex(key), "809f9eff");
}

TEST(IndexKey, WritesBytesInEights) {
    EXPECT_EQ(up(ColumnType::binary, Bytes{}), "7f");
    EXPECT_EQ(up(ColumnType::binary, Bytes{1, 2, 3}), "7f010203000000000003");
    EXPECT_EQ(up(ColumnType::binary, Bytes{1, 2, 3, 4, 5, 6, 7, 8}), "7f010203040506070808");
    EXPECT_EQ(up(ColumnType::binary, Bytes{1, 2, 3, 4, 5, 6, 7, 8, 9}), "7f010203040506070809"
                                                                        "090000000000000001");
    EXPECT_EQ(down(ColumnType::binary, Bytes{1, 2, 3, 4, 5, 6, 7, 8, 9}), "80fefdfcfbfaf9f8f709"
                                                                          "f6fffffffffffffffe");
}

TEST(IndexKey, WritesAGuidAsItReads) {
    const Bytes stored = {4, 3, 2, 1, 6, 5, 8, 7, 9, 10, 11, 12, 13, 14, 15, 16};
    EXPECT_EQ(up(ColumnType::guid, stored), "7f010203040506070809090a0b0c0d0e0f1008");
    EXPECT_EQ(down(ColumnType::guid, Bytes(16, 0)), "80ffffffffffffffff09fffffffffffffffff7");
}

TEST(IndexKey, JoinsItsParts) {
    const KeyPart parts[] = {{ColumnType::text}, {ColumnType::long_integer, true}};
    const Value values[] = {std::string("more"), {}};
    EXPECT_EQ(hex(make_key(parts, values, longest_key)), "7f606469510100ff");
    EXPECT_EQ(hex(search_prefix(parts, std::span(values).first(1), longest_key)), "7f606469510100");
}

TEST(IndexKey, SumsUpWhatALongKeyLoses) {
    Key fits(510, 0x55);
    limit_key(fits, longest_key);
    EXPECT_EQ(fits, Key(510, 0x55));

    Key key(511, 0x55);
    key[508] = 0xa3;
    key[509] = key[510] = 0;
    limit_key(key, longest_key);
    ASSERT_EQ(key.size(), 510U);
    EXPECT_EQ(hex(Key(key.end() - 3, key.end())), "55ca03");

    Key other(511, 0x55);
    other[508] = 0x13;
    other[509] = 0;
    other[510] = 0xe8;
    limit_key(other, longest_key);
    EXPECT_EQ(hex(Key(other.end() - 2, other.end())), "8180") << "the last byte goes to the high half";
}

TEST(IndexKey, KeepsLongTextsApartAndFindsThem) {
    const std::string long_start(250, 'a');
    const KeyPart parts[] = {{ColumnType::text}, {ColumnType::text}, {ColumnType::text}};
    const Value first[] = {long_start, long_start, std::string("north side")};
    const Value second[] = {long_start, long_start, std::string("south side")};
    const Key a = make_key(parts, first, longest_key), b = make_key(parts, second, longest_key);
    EXPECT_EQ(a.size(), longest_key);
    EXPECT_NE(a, b);
    for (std::size_t columns = 1; columns <= 3; ++columns) {
        const Key prefix = search_prefix(parts, std::span(first).first(columns), longest_key);
        ASSERT_LE(prefix.size(), a.size());
        EXPECT_TRUE(std::equal(prefix.begin(), prefix.end(), a.begin())) << columns;
    }
}

} // namespace
} // namespace tolva::jet
