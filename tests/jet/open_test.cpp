#include <gtest/gtest.h>

#include "jet/bytes.h"
#include "jet/header_page.h"
#include "support/jet_files.h"
#include "support/samples.h"

namespace tolva::jet {
namespace {

using support::column;
using support::error_of;
using support::findings;
using support::JetFile;

TableSchema one_table() {
    TableSchema table;
    table.name = "Table";
    table.columns = {column("id", ColumnType::long_integer), column("name", ColumnType::text, 50),
                     column("notes", ColumnType::memo)};
    table.indexes = {support::index("id", {"id"}), support::index("name", {"name"})};
    return table;
}

files::Bytes small_file(Format::Version version = Format::Version::jet4) {
    JetFile file({one_table()}, version);
    for (int i = 0; i < 30; ++i)
        file.table("Table").insert({std::int64_t{i}, "name " + std::to_string(i),
                                    std::string(static_cast<std::size_t>(i) * 300, 'm')});
    file.database().commit();
    return file.content();
}

/// What opening this content, reading all of it and checking it comes to: 0, or the error's number.
int look_at(const files::Bytes& content) {
    return error_of([&] {
        JetFile file(content);
        for (const std::string& name : file.database().table_names())
            support::all_rows(file.table(name));
        support::findings(file.database());
    });
}

int opening_error(const files::Bytes& content) {
    return error_of([&] { JetFile file(content); });
}

/// Changes the masked part of a header.
files::Bytes with_header(files::Bytes content, const std::function<void(std::uint8_t*)>& change) {
    mask_header(jet4_format, content);
    change(content.data());
    mask_header(jet4_format, content);
    return content;
}

TEST(Open, AMissingFileIs3024) {
    const auto disk = files::make_memory_disk();
    EXPECT_EQ(error_of([&] { Database::open(*disk, "gone.mdb"); }), 3024);
    EXPECT_EQ(error_of([&] { Database::open(*disk, "nowhere/gone.mdb"); }), 3024);
    EXPECT_FALSE(disk->exists("gone.mdb"));
}

TEST(Open, WhatIsNoSuchFileIs3343) {
    EXPECT_EQ(opening_error({}), 3343);
    EXPECT_EQ(opening_error(files::Bytes(100, 'x')), 3343);
    EXPECT_EQ(opening_error(files::Bytes(20000, 'x')), 3343);
    files::Bytes newer = small_file();
    newer[0x14] = 2;
    EXPECT_EQ(opening_error(newer), 3343);
}

TEST(Open, APasswordOrEncodedPagesAre3031) {
    const files::Bytes file = small_file();
    EXPECT_EQ(opening_error(file), 0);
    EXPECT_EQ(opening_error(with_header(file, [](std::uint8_t* page) { page[0x42] ^= 'a'; })), 3031);
    EXPECT_EQ(opening_error(with_header(file, [](std::uint8_t* page) { page[0x42 + 39] ^= 1; })), 3031);
    EXPECT_EQ(opening_error(with_header(file, [](std::uint8_t* page) { put32(page + 0x3e, 0x1234); })), 3031);
}

/// A file of the older version whose header, unmasked, was changed.
files::Bytes older_file(const std::function<void(std::uint8_t*)>& change) {
    files::Bytes content = small_file(Format::Version::jet3);
    mask_header(jet3_format, content);
    change(content.data());
    mask_header(jet3_format, content);
    return content;
}

TEST(OpenOlder, APasswordOrEncodedPagesAre3031AndNothingIsTouched) {
    EXPECT_EQ(opening_error(older_file([](std::uint8_t*) {})), 0);
    for (const auto& locked : {older_file([](std::uint8_t* page) { page[0x42] = 'a'; }),
                               older_file([](std::uint8_t* page) { page[0x42 + 19] = 1; }),
                               older_file([](std::uint8_t* page) { put32(page + 0x3e, 0x1234); })}) {
        const auto disk = files::make_memory_disk();
        disk->open("a.mdb", files::OpenMode::create)->write(0, locked);
        EXPECT_EQ(error_of([&] { Database::open(*disk, "a.mdb"); }), 3031);
        EXPECT_EQ(files::read_whole(*disk, "a.mdb"), locked);
        EXPECT_FALSE(disk->exists("a.mdb-journal"));
    }
}

TEST(OpenOlder, TheCommitBytesStandAt600AndThoseOfOthersStay) {
    files::Bytes file = small_file(Format::Version::jet3);
    EXPECT_EQ(get16(file.data() + 0x600), 0x0100);
    put16(file.data() + 0x600, 0);
    put16(file.data() + 0x602, 0x010a);
    JetFile opened(file);
    opened.table("Table").insert({std::int64_t{99}, std::string("x"), {}});
    opened.database().commit();
    EXPECT_EQ(get16(opened.content().data() + 0x600), 0x0100);
    EXPECT_EQ(get16(opened.content().data() + 0x602), 0x010a);
}

TEST(OpenOlder, TextsOfAnUnknownCodePageAreReadAsFarAsTheyGoAndNotWritten) {
    JetFile file(older_file([](std::uint8_t* page) { put16(page + 0x3c, 932); }));
    Table& table = file.table("Table");
    const auto rows = support::all_rows(table);
    ASSERT_EQ(rows.size(), 30u);
    EXPECT_EQ(rows[7][1], Value(std::string("name 7")));
    EXPECT_EQ(error_of([&] { table.insert({std::int64_t{99}, std::string("x"), {}}); }), 3027);
}

TEST(OpenOlder, TextsOfAnotherCodePageAreReadAndTheirIndexesLeftAlone) {
    JetFile file(older_file([](std::uint8_t* page) { put16(page + 0x3c, 1251); }));
    Table& table = file.table("Table");
    EXPECT_EQ(support::all_rows(table).size(), 30u);
    EXPECT_EQ(error_of([&] { table.insert({std::int64_t{99}, std::string("x"), {}}); }), 3027);
    EXPECT_EQ(findings(file.database()), "");
}

TEST(Open, APasswordIsMaskedByTheFilesBirth) {
    // Another birth with the password's place masked to match is no password.
    const auto reborn = [](std::uint8_t* page) {
        put_double(page + 0x72, 45000.75);
        for (std::size_t i = 0; i < 40; i += 4)
            put32(page + 0x42 + i, 45000);
    };
    EXPECT_EQ(opening_error(with_header(small_file(), reborn)), 0);
    EXPECT_EQ(opening_error(
                  with_header(small_file(), [](std::uint8_t* page) { put_double(page + 0x72, 45000.75); })),
              3031);
}

TEST(Open, AHeldFileIs3045) {
    JetFile file({one_table()});
    EXPECT_EQ(error_of([&] { Database::open(file.disk(), JetFile::path); }), 3045);
    file.close();
    EXPECT_EQ(error_of([&] { Database::open(file.disk(), JetFile::path); }), 0);
}

TEST(Open, ACutFileIsDamageThatNamesFilePageAndReason) {
    const files::Bytes whole = small_file();
    for (const std::size_t size :
         {whole.size() - 1, whole.size() - 4000, std::size_t{4096 * 2}, std::size_t{5000}}) {
        try {
            JetFile file(files::Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)));
            FAIL() << "opened at " << size;
        } catch (const basic::RunTimeError& error) {
            EXPECT_EQ(error.number(), 3049);
            EXPECT_NE(error.text().find(JetFile::path), std::string::npos) << error.text();
            EXPECT_NE(error.text().find("Page " + std::to_string(size / 4096)), std::string::npos)
                << error.text();
            EXPECT_NE(error.text().find("ends"), std::string::npos) << error.text();
        }
    }
}

TEST(Open, AFileCutBetweenPagesNeverCrashes) {
    const files::Bytes whole = small_file();
    int damaged = 0;
    for (std::size_t pages = 0; pages < whole.size() / 4096; ++pages) {
        const int error =
            look_at(files::Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(pages * 4096)));
        EXPECT_TRUE(error == 0 || error == 3049 || (error == 3343 && pages == 0)) << pages << ": " << error;
        damaged += error == 3049;
    }
    EXPECT_GT(damaged, 3);
}

TEST(Open, AnotherProgramsCutIsToleratedOnlyInAWholeFile) {
    files::Bytes file = small_file();
    put16(file.data() + 0xe00, 0);
    {
        JetFile opened(file);
        EXPECT_EQ(support::all_rows(opened.table("Table")).size(), 30u);
        opened.table("Table").insert({std::int64_t{99}, std::string("x"), {}});
        opened.database().commit();
        EXPECT_EQ(get16(opened.content().data() + 0xe00), 0x0100) << "the commit puts the bytes to rest";
    }
    // The same with one row count wrong.
    files::Bytes broken = file;
    for (std::size_t page = 0; page + 4096 <= broken.size(); page += 4096)
        if (broken[page] == 2 && get32(broken.data() + page + 0x10) == 30)
            put32(broken.data() + page + 0x10, 31);
    ASSERT_NE(broken, file);
    try {
        JetFile opened(broken);
        FAIL() << "opened";
    } catch (const basic::RunTimeError& error) {
        EXPECT_EQ(error.number(), 3049);
        EXPECT_NE(error.text().find("cut short"), std::string::npos) << error.text();
    }
    put16(broken.data() + 0xe00, 0x0100);
    EXPECT_EQ(opening_error(broken), 0) << "without the mark nobody looks";
}

TEST(Open, CommitCountersOfOthersStayAsTheyAre) {
    files::Bytes file = small_file();
    put16(file.data() + 0xe00, 0x0127);
    put16(file.data() + 0xe02, 0x024b);
    JetFile opened(file);
    opened.table("Table").insert({std::int64_t{99}, std::string("x"), {}});
    opened.database().commit();
    EXPECT_EQ(get16(opened.content().data() + 0xe00), 0x0127);
    EXPECT_EQ(get16(opened.content().data() + 0xe02), 0x024b);
}

TEST(Create, AnExistingFileIs58AndStays) {
    JetFile file({one_table()});
    file.close();
    const files::Bytes before = file.content();
    EXPECT_EQ(error_of([&] { Database::create(file.disk(), JetFile::path, {one_table()}); }), 58);
    EXPECT_EQ(file.content(), before);
}

TEST(Create, TheSchemaComesBackAsItWasGiven) {
    TableSchema table = one_table();
    table.columns.push_back(column("fixed", ColumnType::text, 7));
    table.columns.back().fixed_length = true;
    table.columns.push_back(column("number", ColumnType::numeric));
    table.columns.back().precision = 18;
    table.columns.back().scale = 4;
    table.columns.push_back(column("auto", ColumnType::long_integer));
    table.columns.back().auto_number = true;
    table.columns.push_back(column("bytes", ColumnType::binary, 33));
    table.columns[1].required = true;
    table.columns[1].zero_length = false;
    table.indexes[0].primary = table.indexes[0].unique = table.indexes[0].required = true;
    table.indexes[1].ignore_nulls = true;
    table.indexes.push_back(support::index("both", {"name", "id"}));
    table.indexes[2].parts[1].descending = true;
    table.indexes[2].unique = true;
    JetFile file({table});
    const TableSchema& found = file.table("Table").schema();
    ASSERT_EQ(found.columns.size(), table.columns.size());
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        const ColumnSchema &a = found.columns[i], &b = table.columns[i];
        EXPECT_EQ(a.name, b.name);
        EXPECT_EQ(a.type, b.type);
        EXPECT_EQ(a.size, b.size) << b.name;
        EXPECT_EQ(a.required, b.required) << b.name;
        EXPECT_EQ(a.zero_length, b.zero_length) << b.name;
        EXPECT_EQ(a.auto_number, b.auto_number) << b.name;
        EXPECT_EQ(a.fixed_length, b.fixed_length) << b.name;
        EXPECT_EQ(a.precision, b.precision) << b.name;
        EXPECT_EQ(a.scale, b.scale) << b.name;
    }
    ASSERT_EQ(found.indexes.size(), 3u);
    for (std::size_t i = 0; i < 3; ++i) {
        const IndexSchema &a = found.indexes[i], &b = table.indexes[i];
        EXPECT_EQ(a.name, b.name);
        EXPECT_EQ(a.primary, b.primary);
        EXPECT_EQ(a.unique, b.unique);
        EXPECT_EQ(a.required, b.required);
        EXPECT_EQ(a.ignore_nulls, b.ignore_nulls);
        ASSERT_EQ(a.parts.size(), b.parts.size());
        for (std::size_t k = 0; k < a.parts.size(); ++k) {
            EXPECT_EQ(a.parts[k].column, b.parts[k].column);
            EXPECT_EQ(a.parts[k].descending, b.parts[k].descending);
        }
    }
    EXPECT_EQ(findings(file.database()), "");
}

TEST(Create, ManyTablesStandSideBySide) {
    std::vector<TableSchema> tables;
    for (int i = 0; i < 40; ++i) {
        tables.push_back(one_table());
        tables.back().name = "Table " + std::to_string(i);
    }
    JetFile file(tables);
    EXPECT_EQ(file.database().table_names().size(), 40u);
    for (int i = 0; i < 40; ++i)
        file.table("table " + std::to_string(i)).insert({std::int64_t{i}, std::string("x"), {}});
    file.reopen();
    EXPECT_EQ(findings(file.database()), "");
}

TEST(Create, TwoTablesOfOneNameAreRefused) {
    const auto disk = files::make_memory_disk();
    EXPECT_NE(error_of([&] { Database::create(*disk, "a.mdb", {one_table(), one_table()}); }), 0);
    EXPECT_FALSE(disk->exists("a.mdb"));
}

/// Spoils good files at random: nothing but an error of ours may come of it.
class Hostile : public testing::Test {
  protected:
    static void spoil(const files::Bytes& good, int rounds, unsigned seed) {
        const std::size_t page_size = good.at(0x14) == 0 ? 2048 : 4096; // by its version
        unsigned random = seed;
        const auto next = [&](std::size_t below) {
            random = random * 1664525 + 1013904223;
            return static_cast<std::size_t>(random >> 8) % below;
        };
        int refused = 0;
        for (int round = 0; round < rounds; ++round) {
            files::Bytes content = good;
            const std::size_t spots = 1 + next(6);
            for (std::size_t i = 0; i < spots; ++i) {
                // Near the head of a page, where pointers and counts stand, as often as anywhere.
                std::size_t at = next(content.size());
                if (next(2) == 0)
                    at = at / page_size * page_size + next(120);
                static constexpr std::uint8_t odd[] = {0, 1, 0x7f, 0x80, 0xff, 0x40, 0xc0};
                content[at] = next(2) == 0 ? odd[next(sizeof odd)] : static_cast<std::uint8_t>(next(256));
            }
            const int error = look_at(content);
            EXPECT_TRUE(error == 0 || error == 3049 || error == 3343 || error == 3031)
                << "seed " << seed << " round " << round << ": " << error;
            refused += error != 0;

            // And writing to it.
            const int write_error = error_of([&] {
                JetFile file(content);
                for (const std::string& name : file.database().table_names()) {
                    Table& table = file.table(name);
                    const auto scan = table.scan();
                    if (!scan->next())
                        continue;
                    const Row row = table.read(scan->id());
                    table.insert(row);
                    table.update(scan->id(), row);
                    table.erase(scan->id());
                }
                file.database().commit();
            });
            EXPECT_TRUE(write_error == 0 || write_error == 3049 || write_error == 3343 ||
                        write_error == 3031 || write_error == 3022 || write_error == 3027 ||
                        write_error == 3047 || write_error == 3058 || write_error == 3163 ||
                        write_error == 3314 || write_error == 3315 || write_error == 6)
                << "seed " << seed << " round " << round << ": " << write_error;
        }
        EXPECT_GT(refused, 0);
    }

    static void spoil_sample(const std::string& name, int rounds) {
        const std::string text = support::file_content(support::shared_sample(name));
        spoil(files::Bytes(text.begin(), text.end()), rounds,
              static_cast<unsigned>(name.size() + text.size()));
    }
};

TEST_F(Hostile, OurOwnFileSpoiltAtRandomNeverCrashes) {
    spoil(small_file(), 600, 1);
}

TEST_F(Hostile, OurOwnOlderFileSpoiltAtRandomNeverCrashes) {
    spoil(small_file(Format::Version::jet3), 300, 2);
}

TEST_F(Hostile, AnOlderFileSpoiltAtRandomNeverCrashes) {
    TOLVA_NEEDS_SAMPLE("mdb/overflowTestV1997.mdb");
    spoil_sample("mdb/overflowTestV1997.mdb", 200);
}

TEST_F(Hostile, AnOverflowingFileSpoiltAtRandomNeverCrashes) {
    TOLVA_NEEDS_SAMPLE("mdb/overflowTestV2003.mdb");
    spoil_sample("mdb/overflowTestV2003.mdb", 200);
}

TEST_F(Hostile, AnIndexedFileSpoiltAtRandomNeverCrashes) {
    TOLVA_NEEDS_SAMPLE("mdb/compIndexTestV2000.mdb");
    spoil_sample("mdb/compIndexTestV2000.mdb", 200);
}

TEST_F(Hostile, ADesksFileSpoiltAtRandomNeverCrashes) {
    TOLVA_NEEDS_SAMPLE("desk/data/messagedata.mdb");
    spoil_sample("desk/data/messagedata.mdb", 200);
}

TEST_F(Hostile, ATableDefinitionThatRunsInACircleIsDamage) {
    TableSchema wide;
    wide.name = "Wide";
    for (int i = 0; i < 255; ++i)
        wide.columns.push_back(column("a long name for a column " + std::to_string(i), ColumnType::integer));
    JetFile file({wide, one_table()});
    file.close();
    files::Bytes content = file.content();
    // The second page of the definition points back to the first.
    for (std::size_t page = 6; page < content.size() / 4096; ++page) {
        const std::uint32_t next = get32(content.data() + page * 4096 + 4);
        if (content[page * 4096] != 2 || next == 0)
            continue;
        put32(content.data() + next * 4096 + 4, static_cast<std::uint32_t>(page));
        break;
    }
    file.put(content);
    file.open();
    EXPECT_EQ(error_of([&] { file.table("Wide"); }), 3049);
    // The table beside it is none the worse.
    file.table("Table").insert({std::int64_t{1}, std::string("x"), {}});
    file.database().commit();
    EXPECT_EQ(error_of([&] { file.table("Wide"); }), 3049);
    EXPECT_EQ(file.table("Table").row_count(), 1u);
}

} // namespace
} // namespace tolva::jet
