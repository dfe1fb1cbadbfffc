#include <gtest/gtest.h>

#include "basic/run_time_error.h"
#include "jet/memory_pager.h"
#include "jet/row_codec.h"

namespace tolva::jet {
namespace {

Column make(const std::string& name, ColumnType type, std::uint16_t id, std::uint16_t place,
            std::uint16_t length, bool fixed) {
    Column column;
    column.name = name;
    column.type = type;
    column.id = id;
    column.length = length;
    column.flags = Column::nullable_flag;
    if (fixed) {
        column.flags |= Column::fixed_flag;
        column.fixed_offset = place;
    } else {
        column.variable_index = place;
    }
    return column;
}

class RowCodec : public testing::Test {
  protected:
    Value read(const std::vector<std::uint8_t>& row, const Column& column) {
        const RowView view(pager, 9, row);
        if (column.type == ColumnType::boolean)
            return !view.is_null(column);
        if (view.is_null(column))
            return {};
        return decode_field(pager, 9, column, view.field(column));
    }
    std::vector<std::uint8_t> write(const TableDefinition& table, const Row& values) {
        std::vector<StoredField> fields;
        for (std::size_t i = 0; i < values.size(); ++i)
            fields.push_back(encode_field(jet4_format, table.columns[i], values[i]));
        return encode_row(jet4_format, table, fields);
    }

    MemoryPager pager{jet4_format, "a.mdb"};
};

TEST_F(RowCodec, LaysOutFixedThenVariableThenOffsetsThenTheMask) {
    TableDefinition table;
    table.columns = {make("n", ColumnType::long_integer, 0, 0, 4, true),
                     make("t", ColumnType::text, 1, 0, 100, false),
                     make("u", ColumnType::text, 2, 1, 100, false)};
    table.most_columns = 3;
    table.variable_columns = 2;
    const std::vector<std::uint8_t> expected = {3,   0,       // columns
                                                7,   0, 0, 0, // n
                                                'a', 0,       // t
                                                8,   0,       // where the variable columns end
                                                8,   0, 6, 0, // their offsets, last first
                                                2,   0,       // their count
                                                3};           // u is null
    EXPECT_EQ(write(table, {std::int64_t{7}, std::string("a"), {}}), expected);
}

TEST_F(RowCodec, ARowWithoutVariableColumnsHasNoTrailer) {
    TableDefinition table;
    table.columns = {make("n", ColumnType::long_integer, 0, 0, 4, true)};
    table.most_columns = 1;
    EXPECT_EQ(write(table, {std::int64_t{7}}), (std::vector<std::uint8_t>{1, 0, 7, 0, 0, 0, 1}));
}

TEST_F(RowCodec, AFixedPlaceStaysReservedWhenNull) {
    TableDefinition table;
    table.columns = {make("n", ColumnType::long_integer, 0, 0, 4, true),
                     make("m", ColumnType::integer, 1, 4, 2, true)};
    table.most_columns = 2;
    const auto row = write(table, {{}, std::int64_t{5}});
    EXPECT_EQ(row, (std::vector<std::uint8_t>{2, 0, 0, 0, 0, 0, 5, 0, 2}));
    EXPECT_TRUE(is_null(read(row, table.columns[0])));
    EXPECT_EQ(read(row, table.columns[1]), Value(std::int64_t{5}));
}

TEST_F(RowCodec, YesAndNoLiveInTheMaskOnly) {
    TableDefinition table;
    table.columns = {make("a", ColumnType::boolean, 0, 0, 1, true),
                     make("b", ColumnType::boolean, 1, 0, 1, true)};
    table.most_columns = 2;
    const auto row = write(table, {true, false});
    EXPECT_EQ(row.size(), 4u) << "no row is too short to tell where it has gone";
    EXPECT_EQ(row.back(), 1);
    EXPECT_EQ(read(row, table.columns[0]), Value(true));
    EXPECT_EQ(read(row, table.columns[1]), Value(false));
}

TEST_F(RowCodec, BitsThatAnOlderRowLacksMeanNull) {
    // Written when the table had two columns; columns 8 and 9 came later.
    const std::vector<std::uint8_t> row = {2, 0, 7, 0, 0, 0, 'a', 0, 8, 0, 6, 0, 1, 0, 3};
    EXPECT_EQ(read(row, make("n", ColumnType::long_integer, 0, 0, 4, true)), Value(std::int64_t{7}));
    EXPECT_EQ(read(row, make("t", ColumnType::text, 1, 0, 100, false)), Value(std::string("a")));
    EXPECT_TRUE(is_null(read(row, make("later", ColumnType::text, 8, 1, 100, false))));
    EXPECT_TRUE(is_null(read(row, make("fixed", ColumnType::double_real, 9, 4, 8, true))));
    EXPECT_EQ(read(row, make("yes", ColumnType::boolean, 9, 0, 1, true)), Value(false));
}

TEST_F(RowCodec, TheMaskIsAsWideAsTheHighestIdDroppedColumnsIncluded) {
    TableDefinition table;
    table.columns = {make("n", ColumnType::long_integer, 2, 8, 4, true),
                     make("t", ColumnType::text, 9, 3, 100, false)};
    table.most_columns = 10;
    table.variable_columns = 4;
    const auto row = write(table, {std::int64_t{7}, std::string("a")});
    EXPECT_EQ(row[0], 10);
    EXPECT_EQ(row[2 + 8], 7) << "at its own offset, behind the places of dropped columns";
    EXPECT_EQ(row[row.size() - 2], 1 << 2);
    EXPECT_EQ(row[row.size() - 1], 1 << 1);
    EXPECT_EQ(row[row.size() - 4], 4) << "dropped variable columns keep their entries";
    EXPECT_EQ(read(row, table.columns[1]), Value(std::string("a")));
}

/// Rows of the older version: counts and offsets of one byte, and jumps over each 256.
class Jet3Row : public testing::Test {
  protected:
    Jet3Row() {
        for (std::uint16_t i = 0; i < 3; ++i)
            table.columns.push_back(make("t" + std::to_string(i), ColumnType::text, i, i, 255, false));
        table.most_columns = table.variable_columns = 3;
    }
    std::vector<std::uint8_t> write(const std::vector<std::string>& texts) {
        std::vector<StoredField> fields;
        for (std::size_t i = 0; i < texts.size(); ++i)
            fields.push_back(encode_field(jet3_format, table.columns[i], texts[i]));
        return encode_row(jet3_format, table, fields);
    }
    std::vector<std::string> read(const std::vector<std::uint8_t>& row) {
        const RowView view(pager, 9, row);
        std::vector<std::string> texts;
        for (const Column& column : table.columns)
            texts.push_back(std::get<std::string>(decode_field(pager, 9, column, view.field(column))));
        return texts;
    }
    /// Texts that come to a row of this size.
    std::vector<std::string> of_size(std::size_t size) {
        for (std::size_t rest = 0; rest <= 255; ++rest) {
            const std::vector<std::string> texts = {std::string(size > 400 ? 240 : 100, 'a'),
                                                    std::string(rest, 'b'),
                                                    std::string(size > 400 ? 150 : 20, 'c')};
            if (write(texts).size() == size)
                return texts;
        }
        ADD_FAILURE() << "no row of " << size << " bytes";
        return {};
    }

    TableDefinition table;
    MemoryPager pager{jet3_format, "a.mdb"};
};

TEST_F(Jet3Row, HasOneByteForEachCountOffsetAndCharacter) {
    EXPECT_EQ(write({"a", "", "b\xc3\xa9"}),
              (std::vector<std::uint8_t>{3, 'a', 'b', 0xe9, 4, 2, 2, 1, 3, 7}));
}

TEST_F(Jet3Row, TellsInAJumpTableWhichOffsetsLie256BytesFurther) {
    const auto row = write({std::string(200, 'a'), std::string(100, 'b'), "c"});
    // The mask, the count, then the index of the first offset behind the jump; the offsets in reverse.
    const std::vector<std::uint8_t> tail(row.end() - 7, row.end());
    EXPECT_EQ(tail, (std::vector<std::uint8_t>{46, 45, 201, 1, 2, 3, 7}));
    EXPECT_EQ(read(row), (std::vector<std::string>{std::string(200, 'a'), std::string(100, 'b'), "c"}));
}

TEST_F(Jet3Row, PutsADummyJumpWhereOnlyTheTrailerCrosses256Bytes) {
    const std::vector<std::string> texts = {std::string(250, 'a'), "", "b"};
    const auto row = write(texts);
    EXPECT_EQ(row.size(), 259u);
    EXPECT_EQ(row[row.size() - 3], 0xff);
    EXPECT_EQ(read(row), texts);
}

TEST_F(Jet3Row, ReadsBackAtEverySizeAround256And512Bytes) {
    for (const std::size_t size : {254, 255, 256, 258, 259, 260, 510, 511, 512, 514, 515, 516}) {
        const auto texts = of_size(size);
        ASSERT_FALSE(texts.empty());
        EXPECT_EQ(read(write(texts)), texts) << size;
    }
}

TEST_F(Jet3Row, ReadsBackWhateverItsColumnsHold) {
    table.columns.clear();
    for (std::uint16_t i = 0; i < 255; ++i)
        table.columns.push_back(make("t" + std::to_string(i), ColumnType::text, i, i, 255, false));
    table.most_columns = table.variable_columns = 255;
    unsigned random = 11;
    for (int round = 0; round < 400; ++round) {
        std::vector<std::string> texts;
        for (int i = 0; i < 255; ++i) {
            random = random * 1664525 + 1013904223;
            texts.emplace_back(random % 977 < 4 ? random / 65536 % 256 : random / 65536 % 6, 'x');
        }
        ASSERT_EQ(read(write(texts)), texts) << round;
    }
}

TEST_F(RowCodec, EveryKindOfValueSurvivesARoundTrip) {
    const auto survives = [&](ColumnType type, std::uint16_t length, const Value& value) {
        Column column = make("c", type, 0, 0, length, length != 100);
        column.scale = 4;
        const StoredField field = encode_field(jet4_format, column, value);
        EXPECT_EQ(decode_field(pager, 9, column, field.bytes), value);
    };
    survives(ColumnType::byte, 1, std::int64_t{0});
    survives(ColumnType::byte, 1, std::int64_t{200});
    survives(ColumnType::integer, 2, std::int64_t{-32768});
    survives(ColumnType::long_integer, 4, std::int64_t{-2147483648LL});
    survives(ColumnType::currency, 8, Currency{-9223372036854775807LL});
    survives(ColumnType::currency, 8, Currency{9223372036854775807LL});
    survives(ColumnType::single_real, 4, 0.5);
    survives(ColumnType::double_real, 8, 0.1);
    survives(ColumnType::double_real, 8, 4.9406564584124654e-324);
    survives(ColumnType::double_real, 8, -1.7976931348623157e308);
    survives(ColumnType::date, 8, basic::Date{-1.25});
    survives(ColumnType::date, 8, basic::Date{45000.999988425923});
    survives(ColumnType::text, 100, std::string("h\xc3\xa9llo \xe2\x82\xac"));
    survives(ColumnType::binary, 100, Bytes{0, 255, 1});
    survives(ColumnType::guid, 16, Bytes{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16});
    survives(ColumnType::numeric, 17, Decimal{true, {0xffffffff, 0xfffffffe, 0x204fce5e}, 4});
}

TEST_F(RowCodec, AWrongKindIsRefused) {
    const Column number = make("n", ColumnType::long_integer, 0, 0, 4, true);
    const auto error = [&](const Column& column, const Value& value) {
        try {
            encode_field(jet4_format, column, value);
        } catch (const basic::RunTimeError& e) {
            return e.number();
        }
        return 0;
    };
    EXPECT_EQ(error(number, std::string("7")), 3421);
    EXPECT_EQ(error(number, std::int64_t{1} << 40), 6);
    EXPECT_EQ(error(make("b", ColumnType::byte, 0, 0, 1, true), std::int64_t{256}), 6);
    EXPECT_EQ(error(make("s", ColumnType::single_real, 0, 0, 4, true), 1e300), 6);
    EXPECT_EQ(error(make("t", ColumnType::text, 0, 0, 10, false), std::string("123456")), 3163);
    EXPECT_EQ(error(make("t", ColumnType::text, 0, 0, 10, false), std::string("12345")), 0);
}

TEST_F(RowCodec, FixedTextFillsItsWidthWithBlanks) {
    const Column column = make("t", ColumnType::text, 0, 0, 10, true);
    const StoredField field = encode_field(jet4_format, column, std::string("ab"));
    EXPECT_EQ(field.bytes, (std::vector<std::uint8_t>{'a', 0, 'b', 0, ' ', 0, ' ', 0, ' ', 0}));
}

TEST_F(RowCodec, NonsenseInARowIsDamageAndNoCrash) {
    const std::vector<std::uint8_t> good = {2, 0, 7, 0, 0, 0, 'a', 0, 8, 0, 6, 0, 1, 0, 3};
    const Column fixed = make("n", ColumnType::long_integer, 0, 0, 4, true);
    const Column text = make("t", ColumnType::text, 1, 0, 100, false);
    int refused = 0;
    for (std::size_t size = 0; size <= good.size(); ++size) {
        for (std::size_t at = 0; at < size; ++at) {
            for (const int value : {0, 1, 2, 8, 0x7f, 0xff}) {
                std::vector<std::uint8_t> row(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(size));
                row[at] = static_cast<std::uint8_t>(value);
                try {
                    read(row, fixed);
                    read(row, text);
                } catch (const basic::RunTimeError& error) {
                    EXPECT_EQ(error.number(), 3049);
                    ++refused;
                }
            }
        }
    }
    EXPECT_GT(refused, 100);
}

} // namespace
} // namespace tolva::jet
