#include "dao/conversion.h"

#include <gtest/gtest.h>

#include <cmath>

#include "dao/field_value.h"
#include "support/errors.h"

namespace tolva::dao {
namespace {

using jet::ColumnSchema;
using jet::ColumnType;
using jet::Value;
using support::error_number;

constexpr int this_year = 2026;

Value text(const char* content) {
    return std::string(content);
}

ColumnSchema column(ColumnType type, int size = 0) {
    ColumnSchema schema;
    schema.name = "column";
    schema.type = type;
    schema.size = size;
    return schema;
}

Value stored(ColumnType type, const Value& value) {
    return convert(value, column(type, 10), this_year);
}
int failure(ColumnType type, const Value& value) {
    return error_number([&] { stored(type, value); });
}

TEST(Conversion, DatesComeFromTexts) {
    EXPECT_EQ(stored(ColumnType::date, text("3/7/2026")), Value(basic::make_date(2026, 3, 7)));
    EXPECT_EQ(stored(ColumnType::date, text("8:30 AM")), Value(basic::make_moment({1899, 12, 30, 8, 30, 0})));
    EXPECT_EQ(stored(ColumnType::date, text("3/7")), Value(basic::make_date(this_year, 3, 7)));
    EXPECT_EQ(stored(ColumnType::date, 46347.5), Value(basic::Date{46347.5}));
    for (const char* content : {"", " ", "abc", "2/29/2005", "46347"})
        EXPECT_EQ(failure(ColumnType::date, text(content)), 3421) << content;
    EXPECT_EQ(failure(ColumnType::date, 1e9), 3421);
    EXPECT_EQ(failure(ColumnType::date, std::nan("")), 3421);
}

TEST(Conversion, WholeNumbersRoundHalvesToEven) {
    EXPECT_EQ(stored(ColumnType::long_integer, 2.5), Value(std::int64_t{2}));
    EXPECT_EQ(stored(ColumnType::long_integer, 3.5), Value(std::int64_t{4}));
    EXPECT_EQ(stored(ColumnType::integer, -2.5), Value(std::int64_t{-2}));
    EXPECT_EQ(stored(ColumnType::byte, text("7.4")), Value(std::int64_t{7}));
    EXPECT_EQ(stored(ColumnType::integer, true), Value(std::int64_t{-1}));
    EXPECT_EQ(stored(ColumnType::byte, true), Value(std::int64_t{255}));
    EXPECT_EQ(stored(ColumnType::long_integer, text("$1,250")), Value(std::int64_t{1250}));
    EXPECT_EQ(stored(ColumnType::long_integer, basic::Date{46347.0}), Value(std::int64_t{46347}));
}

TEST(Conversion, WhatAColumnCannotHoldFails) {
    EXPECT_EQ(stored(ColumnType::byte, 255.4), Value(std::int64_t{255}));
    EXPECT_EQ(failure(ColumnType::byte, 255.5), 3421);
    EXPECT_EQ(failure(ColumnType::byte, std::int64_t{-1}), 3421);
    EXPECT_EQ(stored(ColumnType::integer, std::int64_t{-32768}), Value(std::int64_t{-32768}));
    EXPECT_EQ(failure(ColumnType::integer, std::int64_t{32768}), 3421);
    EXPECT_EQ(stored(ColumnType::long_integer, 2147483647.4), Value(std::int64_t{2147483647}));
    EXPECT_EQ(failure(ColumnType::long_integer, 2147483647.5), 3421);
    EXPECT_EQ(failure(ColumnType::long_integer, std::nan("")), 3421);
    EXPECT_EQ(failure(ColumnType::single_real, 1e39), 3421);
    EXPECT_EQ(failure(ColumnType::currency, 1e15), 3421);
}

TEST(Conversion, AnEmptyTextIsNoNumber) {
    for (const auto type :
         {ColumnType::byte, ColumnType::integer, ColumnType::long_integer, ColumnType::double_real,
          ColumnType::single_real, ColumnType::currency, ColumnType::numeric, ColumnType::boolean})
        EXPECT_EQ(failure(type, text("")), 3421) << static_cast<int>(type);
    EXPECT_EQ(failure(ColumnType::double_real, text("12 feet")), 3421);
}

TEST(Conversion, RealNumbersKeepWhatTheColumnHolds) {
    EXPECT_EQ(stored(ColumnType::double_real, text("1234.5")), Value(1234.5));
    EXPECT_EQ(stored(ColumnType::double_real, std::int64_t{7}), Value(7.0));
    EXPECT_EQ(stored(ColumnType::single_real, 0.1), Value(static_cast<double>(0.1f)));
    EXPECT_EQ(stored(ColumnType::currency, 12.34565), Value(jet::Currency{123456}));
    EXPECT_EQ(stored(ColumnType::currency, text("-$5")), Value(jet::Currency{-50000}));
}

TEST(Conversion, DecimalsTakeTheColumnsPlaces) {
    ColumnSchema schema = column(ColumnType::numeric);
    schema.precision = 5;
    schema.scale = 2;
    EXPECT_EQ(convert(-12.5, schema, this_year), Value(jet::Decimal{true, {1250, 0, 0}, 2}));
    EXPECT_EQ(convert(999.99, schema, this_year), Value(jet::Decimal{false, {99999, 0, 0}, 2}));
    EXPECT_EQ(error_number([&] { convert(1000.0, schema, this_year); }), 3421);
    schema.precision = 28;
    schema.scale = 0;
    EXPECT_EQ(convert(1e20, schema, this_year), Value(jet::Decimal{false, {0x63100000, 0x6BC75E2D, 0x5}, 0}));
}

TEST(Conversion, TextsComeFromEverythingButBytes) {
    EXPECT_EQ(stored(ColumnType::text, std::int64_t{12}), text("12"));
    EXPECT_EQ(stored(ColumnType::text, 0.5), text("0.5"));
    EXPECT_EQ(stored(ColumnType::text, true), text("True"));
    EXPECT_EQ(stored(ColumnType::memo, basic::make_date(2026, 3, 7)), text("3/7/2026"));
    EXPECT_EQ(stored(ColumnType::text, jet::Currency{-125000}), text("-12.5"));
    EXPECT_EQ(stored(ColumnType::text, jet::Decimal{true, {1250, 0, 0}, 3}), text("-1.25"));
    EXPECT_EQ(stored(ColumnType::text, text("")), text(""));
    EXPECT_EQ(failure(ColumnType::text, jet::Bytes{1, 2}), 3421);
}

TEST(Conversion, ATextWiderThanItsColumnFailsAndIsNotCut) {
    EXPECT_EQ(stored(ColumnType::text, text("0123456789")), text("0123456789"));
    EXPECT_EQ(failure(ColumnType::text, text("01234567890")), 3163);
    EXPECT_EQ(stored(ColumnType::text, text("\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9")),
              text("\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9"))
        << "characters count, not bytes";
    EXPECT_EQ(failure(ColumnType::text, text("012345678\U0001F600")), 3163) << "two units";
    EXPECT_EQ(stored(ColumnType::memo, std::string(100000, 'x')), Value(std::string(100000, 'x')));
    EXPECT_EQ(failure(ColumnType::binary, jet::Bytes(11)), 3163);
}

TEST(Conversion, YesAndNoComeFromNumbersAndTheirNames) {
    EXPECT_EQ(stored(ColumnType::boolean, 5.0), Value(true));
    EXPECT_EQ(stored(ColumnType::boolean, std::int64_t{0}), Value(false));
    EXPECT_EQ(stored(ColumnType::boolean, text("true")), Value(true));
    EXPECT_EQ(stored(ColumnType::boolean, text("-1")), Value(true));
    EXPECT_EQ(failure(ColumnType::boolean, text("maybe")), 3421);
}

TEST(Conversion, NullStaysNullButIsNoInAYesNo) {
    for (const auto type : {ColumnType::byte, ColumnType::long_integer, ColumnType::double_real,
                            ColumnType::date, ColumnType::text, ColumnType::memo, ColumnType::ole})
        EXPECT_EQ(stored(type, std::monostate()), Value()) << static_cast<int>(type);
    EXPECT_EQ(stored(ColumnType::boolean, std::monostate()), Value(false));
}

TEST(FieldValue, HasAStringForm) {
    EXPECT_EQ(FieldValue(text("x")).text(), "x");
    EXPECT_EQ(FieldValue(0.1 + 0.2).text(), "0.3");
    EXPECT_EQ(FieldValue(std::int64_t{-5}).text(), "-5");
    EXPECT_EQ(FieldValue(true).text(), "True");
    EXPECT_EQ(FieldValue(false).text(), "False");
    EXPECT_EQ(FieldValue(basic::make_date(2026, 3, 7)).text(), "3/7/2026");
    EXPECT_EQ(FieldValue(jet::Currency{5}).text(), "0.0005");
    EXPECT_EQ(FieldValue(jet::Currency{INT64_MIN}).text(), "-922337203685477.5808");
    EXPECT_EQ(FieldValue(jet::Decimal{false, {0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF}, 0}).text(),
              "79228162514264337593543950335");
}

TEST(FieldValue, ReckonsAsTheLanguageDoes) {
    EXPECT_EQ(FieldValue(true).number(), -1);
    EXPECT_EQ(FieldValue(text("1,250.5")).number(), 1250.5);
    EXPECT_EQ(FieldValue(basic::Date{2.5}).number(), 2.5);
    EXPECT_EQ(FieldValue(jet::Currency{12345}).number(), 1.2345);
    EXPECT_TRUE(FieldValue(text("True")).yes_no());
    EXPECT_TRUE(FieldValue(2.0).yes_no());
    EXPECT_EQ(FieldValue(text("3/7"), this_year).date(), basic::make_date(2026, 3, 7));
    EXPECT_EQ(FieldValue(46347.0).date(), basic::make_date(2026, 11, 21));
}

TEST(FieldValue, WhatHasNoSuchFormIsATypeMismatch) {
    EXPECT_EQ(error_number([] { FieldValue(text("abc")).number(); }), 13);
    EXPECT_EQ(error_number([] { FieldValue(text("")).number(); }), 13);
    EXPECT_EQ(error_number([] { FieldValue(text("abc")).date(); }), 13);
    EXPECT_EQ(error_number([] { FieldValue(text("abc")).yes_no(); }), 13);
    EXPECT_EQ(error_number([] { FieldValue(jet::Bytes{1}).text(); }), 13);
}

TEST(FieldValue, NullHasNoForm) {
    EXPECT_EQ(error_number([] { FieldValue().text(); }), 94);
    EXPECT_EQ(error_number([] { FieldValue().number(); }), 94);
    EXPECT_EQ(error_number([] { FieldValue().yes_no(); }), 94);
    EXPECT_EQ(error_number([] { FieldValue().date(); }), 94);
}

TEST(FieldValue, NullAndAnEmptyTextAreBothEmpty) {
    EXPECT_TRUE(FieldValue().is_null_or_empty());
    EXPECT_TRUE(FieldValue(text("")).is_null_or_empty());
    EXPECT_FALSE(FieldValue(text(" ")).is_null_or_empty());
    EXPECT_FALSE(FieldValue(false).is_null_or_empty());
    EXPECT_FALSE(FieldValue(text("")).is_null());
}

} // namespace
} // namespace tolva::dao
