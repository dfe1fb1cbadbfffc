#include <gtest/gtest.h>
#include <map>

#include "jet/bytes.h"
#include "jet/long_value.h"
#include "jet/open_database.h"
#include "support/jet_files.h"

namespace tolva::jet {
namespace {

using support::column;
using support::error_of;
using support::findings;
using support::JetFile;

TableSchema memo_table() {
    TableSchema table;
    table.name = "Memos";
    table.columns = {column("id", ColumnType::long_integer), column("notes", ColumnType::memo),
                     column("object", ColumnType::ole)};
    return table;
}

class LongValue : public support::EachVersion {
  protected:
    Table& table() { return file.table("Memos"); }
    OpenDatabase& open() { return dynamic_cast<OpenDatabase&>(file.database()); }
    const Column& object() { return open().stored_table("Memos").definition().columns[2]; }

    RowId insert(const Value& notes, const Value& object_value) {
        return table().insert({std::int64_t{1}, notes, object_value});
    }
    static Bytes bytes(std::size_t size) {
        Bytes out(size);
        for (std::size_t i = 0; i < size; ++i)
            out[i] = static_cast<std::uint8_t>(i * 7 + i / 256);
        return out;
    }
    LongValueHead head(RowId id) {
        const Record record = read_record(open().pager(), {id.page, id.slot}, 2);
        const RowView view(open().pager(), id.page, record.bytes);
        return read_long_value_head(open().pager(), id.page, view.field(object()));
    }
    std::size_t pages_of_object() {
        return UsageMap(open().pager(), object().owned_map, 2, UsageMap::Kind::owned).pages().size();
    }

    JetFile file{{memo_table()}, GetParam()};
};

INSTANTIATE_TEST_SUITE_P(Versions, LongValue, support::each_version, support::version_name);

TEST_P(LongValue, GoesInlineThenOnOnePageThenInAChain) {
    using Form = LongValueHead::Form;
    const auto& limits = format().long_value;
    const std::size_t one = limits.longest_single, piece = limits.piece;
    const std::map<std::size_t, Form> forms = {{0, Form::inside},        {1, Form::inside},
                                               {64, Form::inside},       {65, Form::single},
                                               {one, Form::single},      {one + 1, Form::chain},
                                               {2 * piece, Form::chain}, {2 * piece + 1, Form::chain},
                                               {3 * piece, Form::chain}, {100000, Form::chain}};
    for (const auto& [size, form] : forms) {
        const std::size_t pages = form == Form::inside   ? 0
                                  : form == Form::single ? 1
                                                         : (size + piece - 1) / piece;
        const Bytes value = bytes(size);
        const RowId id = insert({}, value);
        EXPECT_EQ(head(id).form, form) << size;
        EXPECT_EQ(head(id).length, size);
        EXPECT_EQ(pages_of_object(), pages) << size;
        EXPECT_EQ(std::get<Bytes>(table().read(id)[2]), value) << size;
        file.database().commit();
        EXPECT_EQ(findings(file.database()), "") << size;
        table().erase(id);
        EXPECT_EQ(pages_of_object(), 0u) << "pages that hold nothing go back";
        EXPECT_EQ(findings(file.database()), "") << size;
    }
}

TEST_P(LongValue, GrowsAndShrinksAcrossAllForms) {
    const RowId id = insert(std::string("start"), Bytes{1});
    const std::vector<std::size_t> sizes = {10, 64, 65, 4000, 20000, 3816, 3817, 63, 9000, 0, 70000, 66, 1};
    for (const std::size_t size : sizes) {
        const std::string text(size, 'n');
        table().update(id, {std::int64_t{1}, text, bytes(size)});
        const Row row = table().read(id);
        ASSERT_EQ(std::get<std::string>(row[1]), text);
        ASSERT_EQ(std::get<Bytes>(row[2]), bytes(size));
        ASSERT_EQ(findings(file.database()), "") << size;
        file.database().commit();
    }
    table().update(id, {std::int64_t{1}, {}, {}});
    EXPECT_TRUE(is_null(table().read(id)[1]));
    EXPECT_EQ(pages_of_object(), 0u);
}

TEST_P(LongValue, KeepsMemosAbove16KAndThoseWithNulCharacters) {
    std::string text;
    for (int i = 0; i < 20000; ++i)
        text += i % 97 == 0 ? std::string(1, '\0') : std::string("\xe2\x82\xac");
    const RowId id = insert(text, {});
    file.reopen();
    EXPECT_EQ(std::get<std::string>(table().read(id)[1]), text);
    EXPECT_EQ(findings(file.database()), "");
}

TEST_P(LongValue, EmptyIsNotNull) {
    const RowId id = insert(std::string(), Bytes{});
    EXPECT_EQ(table().read(id)[1], Value(std::string()));
    EXPECT_EQ(table().read(id)[2], Value(Bytes{}));
}

/// What the newer version has alone.
class Jet4LongValue : public LongValue {};
INSTANTIATE_TEST_SUITE_P(Versions, Jet4LongValue, testing::Values(Format::Version::jet4),
                         support::version_name);

TEST_P(Jet4LongValue, AMemoIsCompressedUpTo1024Characters) {
    const auto& notes = open().stored_table("Memos").definition().columns[1];
    const auto length = [&](std::size_t characters) {
        const RowId id = insert(std::string(characters, 'x'), {});
        const Record record = read_record(open().pager(), {id.page, id.slot}, 2);
        const RowView view(open().pager(), id.page, record.bytes);
        return read_long_value_head(open().pager(), id.page, view.field(notes)).length;
    };
    EXPECT_EQ(length(1024), 1026u);
    EXPECT_EQ(length(1025), 2050u);
}

TEST_P(Jet4LongValue, RepeatsTheStampOfItsFirstPage) {
    const RowId filler = insert({}, bytes(100));
    const PageNumber page = head(filler).place.page;
    put32(open().pager().modify(page).data() + format().data.long_value_stamp, 0x12345678);
    const RowId id = insert({}, bytes(200));
    ASSERT_EQ(head(id).place.page, page);
    EXPECT_EQ(head(id).stamp, 0x12345678u);
    const RowId chain = insert({}, bytes(9000));
    const PageNumber first = head(chain).place.page;
    EXPECT_EQ(head(chain).stamp, get32(open().pager().read(first)->data() + format().data.long_value_stamp));
}

TEST_P(LongValue, AValueThatStaysTheSameStaysWhereItIs) {
    const Bytes value = bytes(9000);
    const RowId id = insert({}, value);
    const LongValueHead before = head(id);
    table().update(id, {std::int64_t{2}, std::string("other"), value});
    EXPECT_TRUE(head(id).place == before.place);
    EXPECT_EQ(std::get<Bytes>(table().read(id)[2]), value);
    EXPECT_EQ(findings(file.database()), "");
}

TEST_P(LongValue, SmallValuesShareAPage) {
    std::vector<RowId> ids;
    for (int i = 0; i < 14; ++i)
        ids.push_back(insert({}, bytes(100 + static_cast<std::size_t>(i))));
    EXPECT_EQ(pages_of_object(), 1u);
    for (int i = 0; i < 14; i += 2)
        table().erase(ids[static_cast<std::size_t>(i)]);
    for (int i = 1; i < 14; i += 2)
        EXPECT_EQ(std::get<Bytes>(table().read(ids[static_cast<std::size_t>(i)])[2]),
                  bytes(100 + static_cast<std::size_t>(i)));
    EXPECT_EQ(findings(file.database()), "");
}

TEST_P(LongValue, SmallValuesShareAPageEvenWhereNoMapTellsOfItsRoom) {
    Column without_map = object();
    without_map.free_map = {};
    const PageNumber definition = open().stored_table("Memos").definition().page;
    LongValueStore store(open().pager(), open().space(), without_map, definition);
    for (std::size_t i = 0; i < 14; ++i) {
        const auto field = store.write(bytes(100 + i), format().long_value.longest_inline);
        EXPECT_EQ(read_long_value(open().pager(), definition, field), bytes(100 + i));
    }
    EXPECT_EQ(pages_of_object(), 1u);
}

TEST_P(LongValue, FreedPagesAreUsedAgain) {
    const RowId id = insert({}, bytes(50000));
    file.database().commit();
    const std::size_t pages = file.page_count();
    for (int round = 0; round < 20; ++round)
        table().update(id, {std::int64_t{1}, {}, bytes(50000 - static_cast<std::size_t>(round))});
    file.database().commit();
    EXPECT_LE(file.page_count(), pages + 1);
    EXPECT_EQ(findings(file.database()), "");
}

/// Files whose long values were spoilt by hand.
class SpoiltLongValue : public LongValue {
  protected:
    /// The record that `place` names, for spoiling.
    std::span<std::uint8_t> record(RecordPlace place) {
        const Record found = read_record(open().pager(), place, 2);
        const auto at = static_cast<std::size_t>(found.bytes.data() - found.page->data());
        return open().pager().modify(place.page).subspan(at, found.bytes.size());
    }
    int read_error(RowId id) {
        return error_of([&] { table().read(id); });
    }
};

INSTANTIATE_TEST_SUITE_P(Versions, SpoiltLongValue, support::each_version, support::version_name);

TEST_P(SpoiltLongValue, ACircleIsDamage) {
    const RowId id = insert({}, bytes(30000));
    const RecordPlace first = head(id).place;
    const RecordPlace second = RecordPlace::from(get32(record(first).data()));
    put32(record(second).data(), first.stored());
    EXPECT_EQ(read_error(id), 3049);
    EXPECT_EQ(error_of([&] { table().erase(id); }), 3049);
    EXPECT_TRUE(table().exists(id)) << "a failed delete leaves the row";
    EXPECT_NE(findings(file.database()), "");
}

TEST_P(SpoiltLongValue, ACircleOfTinyPiecesIsFoundSoon) {
    const RowId id = insert({}, bytes(30000));
    const RowId small = insert({}, bytes(70));
    const RecordPlace piece = head(small).place;
    put32(record(piece).data(), piece.stored());
    put32(record(head(id).place).data(), piece.stored());
    EXPECT_EQ(read_error(id), 3049);
}

TEST_P(SpoiltLongValue, APointerToNowhereIsDamage) {
    const RowId id = insert({}, bytes(30000));
    for (const std::uint32_t target : {0xffffff00u, 0x00000100u, 0x00000200u, 0x000003ffu}) {
        put32(record(head(id).place).data(), target);
        EXPECT_EQ(read_error(id), 3049) << target;
    }
}

TEST_P(SpoiltLongValue, AChainThatEndsTooSoonIsDamage) {
    const RowId id = insert({}, bytes(30000));
    put32(record(head(id).place).data(), 0);
    EXPECT_EQ(read_error(id), 3049);
}

TEST_P(SpoiltLongValue, ALengthBeyondTheFileIsDamage) {
    const RowId id = insert({}, bytes(30000));
    const auto row = record({id.page, id.slot});
    // The field's first four bytes are its length.
    bool found = false;
    for (std::size_t at = 0; at + 4 <= row.size(); ++at) {
        if (get32(row.data() + at) != 30000)
            continue;
        put32(row.data() + at, 0x3fffffff);
        found = true;
    }
    ASSERT_TRUE(found);
    EXPECT_EQ(read_error(id), 3049);
}

} // namespace
} // namespace tolva::jet
