#include <gtest/gtest.h>
#include <map>
#include <optional>
#include <random>

#include "support/faulty_disk.h"
#include "support/jet_files.h"
#include "support/mdb_json.h"
#include "support/program.h"
#include "support/samples.h"

namespace tolva::jet {
namespace {

using support::all_rows;
using support::column;
using support::error_of;
using support::FaultyDisk;
using support::findings;
using support::index;

TableSchema mixed_table() {
    TableSchema table;
    table.name = "Mixed";
    table.columns = {column("id", ColumnType::long_integer), column("name", ColumnType::text, 60),
                     column("text", ColumnType::text, 255),  column("notes", ColumnType::memo),
                     column("more", ColumnType::memo),       column("when", ColumnType::date),
                     column("amount", ColumnType::currency), column("yes", ColumnType::boolean),
                     column("object", ColumnType::ole)};
    table.indexes = {index("PrimaryKey", {"id"}), index("name", {"name"}), index("when", {"when", "name"})};
    table.indexes[0].primary = true;
    table.indexes[2].parts[0].descending = true;
    return table;
}

/// Rows made by chance, always the same for a seed.
class RowMaker {
  public:
    explicit RowMaker(std::uint32_t seed) : random_(seed) {}

    std::size_t below(std::size_t limit) { return random_() % limit; }

    std::string text(std::size_t longest) {
        static const char* const pieces[] = {"a",  "B",        "\xc3\xa9", " ",  "-", "'", "\xe2\x82\xac",
                                             "ss", "\xc3\x9f", "7",        "xyz"};
        std::string out;
        for (std::size_t left = below(longest + 1); left > 0; --left) {
            const char* piece = pieces[below(std::size(pieces))];
            if (std::string(piece) == "xyz" || std::string(piece) == "ss")
                piece = "x";
            out += piece;
        }
        return out;
    }

    Row row(std::int64_t id) {
        Row row(9);
        row[0] = id;
        if (below(5) != 0)
            row[1] = text(60);
        if (below(3) != 0)
            row[2] = text(below(4) == 0 ? 255 : 20);
        row[3] = memo();
        row[4] = memo();
        if (below(4) != 0)
            row[5] =
                basic::Date{static_cast<double>(below(400)) - 200 + 0.25 * static_cast<double>(below(4))};
        if (below(4) != 0)
            row[6] = Currency{static_cast<std::int64_t>(below(1000000)) - 500000};
        row[7] = below(2) == 0;
        if (below(6) == 0)
            row[8] = Bytes(below(6000), static_cast<std::uint8_t>(below(256)));
        return row;
    }

  private:
    Value memo() {
        switch (below(6)) {
        case 0:
            return {};
        case 1:
            return std::string();
        case 2:
            return text(30);
        case 3:
            return text(600);
        case 4:
            return text(3000);
        default:
            return text(below(4) == 0 ? 20000 : 100);
        }
    }

    std::mt19937 random_;
};

/// The rows as they should be, by id.
using Model = std::map<std::int64_t, Row>;

Model rows_of(Table& table) {
    Model rows;
    for (Row& row : all_rows(table)) {
        const auto id = std::get<std::int64_t>(row[0]);
        EXPECT_TRUE(rows.emplace(id, std::move(row)).second) << "two rows of id " << id;
    }
    return rows;
}

/// One random change, made to the table and to the model.
void change(Table& table, Model& model, RowMaker& maker, std::int64_t& next_id) {
    const auto pick = [&] {
        auto at = model.begin();
        std::advance(at, static_cast<std::ptrdiff_t>(maker.below(model.size())));
        return at->first;
    };
    const auto find = [&](std::int64_t id) {
        const auto rows = table.find(0, std::vector<Value>{id});
        EXPECT_EQ(rows.size(), 1u) << id;
        return rows.at(0);
    };
    const std::size_t kind = maker.below(10);
    if (model.empty() || kind < 4) {
        const Row row = maker.row(next_id);
        table.insert(row);
        model[next_id++] = row;
    } else if (kind < 7) {
        const std::int64_t id = pick();
        Row row = maker.row(id);
        if (maker.below(2) == 0)
            row[3] = model[id][3];
        if (maker.below(2) == 0) {
            table.update(find(id), row);
            model[id] = row;
            return;
        }
        std::vector<bool> written(row.size());
        const std::size_t one_in = 1 + maker.below(4);
        for (std::size_t i = 0; i < row.size(); ++i)
            if ((written[i] = maker.below(one_in) == 0))
                model[id][i] = row[i];
        table.change(find(id), row, written);
    } else if (kind < 9 || model.size() > 300) {
        const std::int64_t id = pick();
        table.erase(find(id));
        model.erase(id);
    } else {
        Row row = maker.row(pick());
        EXPECT_EQ(error_of([&] { table.insert(row); }), 3022);
    }
}

class RandomRun : public testing::TestWithParam<std::uint32_t> {
  protected:
    /// The older version for every other seed.
    static Format::Version version() {
        return GetParam() % 2 == 0 ? Format::Version::jet3 : Format::Version::jet4;
    }
};

INSTANTIATE_TEST_SUITE_P(Seeds, RandomRun, testing::Range(1u, 6u));

TEST_P(RandomRun, TheTableEqualsAModelThroughCommitsRollbacksAndReopenings) {
    support::JetFile file({mixed_table()}, version());
    RowMaker maker(GetParam());
    Model model, stored;
    std::int64_t next_id = 1;
    for (int round = 0; round < 2000; ++round) {
        change(file.table("Mixed"), model, maker, next_id);
        switch (maker.below(60)) {
        case 0:
            file.database().commit();
            stored = model;
            break;
        case 1:
            file.database().rollback();
            model = stored;
            break;
        case 2:
            file.close(); // without a commit
            file.open();
            model = stored;
            break;
        case 3:
            file.reopen();
            stored = model;
            break;
        default:
            break;
        }
        if (round % 250 != 249)
            continue;
        ASSERT_EQ(rows_of(file.table("Mixed")), model) << round;
        ASSERT_EQ(file.table("Mixed").row_count(), model.size());
        ASSERT_EQ(findings(file.database()), "") << round;
    }
}

TEST_P(RandomRun, ManySmallRowsFillAndEmptyTheFile) {
    support::JetFile file({mixed_table()}, version());
    RowMaker maker(GetParam() + 1000);
    Table& table = file.table("Mixed");
    std::vector<RowId> ids;
    for (int cycle = 0; cycle < 3; ++cycle) {
        for (int i = 0; i < 1500; ++i) {
            Row row = maker.row(cycle * 10000 + i);
            row[3] = std::string("short");
            row[4] = row[8] = Value{};
            ids.push_back(table.insert(row));
        }
        while (ids.size() > 200) {
            const std::size_t place = maker.below(ids.size());
            table.erase(ids[place]);
            ids[place] = ids.back();
            ids.pop_back();
        }
        ASSERT_EQ(findings(file.database()), "") << cycle;
        file.database().commit();
    }
    EXPECT_EQ(table.row_count(), ids.size());
}

TEST_P(RandomRun, AfterAPowerCutTheFileIsThatOfACommitAndInOrder) {
    // Cuts a run of commits at one operation after the other; what survives is what some commit stored, never
    // older than the last that was reported, and the structure check finds nothing.
    const auto start = [] {
        const auto disk = files::make_memory_disk();
        Database::create(*disk, "a.mdb", {mixed_table()}, version());
        return std::map<std::string, files::Bytes>{{"a.mdb", files::read_whole(*disk, "a.mdb")}};
    }();
    int cuts = 0;
    bool done = false;
    for (int operation = 1; !done; operation += 1 + static_cast<int>(GetParam() % 3)) {
        FaultyDisk disk(start);
        RowMaker maker(GetParam() + 77);
        std::vector<Model> commits(1);
        std::size_t reported = 0;
        try {
            const auto database = Database::open(disk, "a.mdb");
            disk.plan({FaultyDisk::Fault::power_cut, operation,
                       GetParam() * 100 + static_cast<unsigned>(operation), GetParam() % 2 ? 512u : 4096u});
            Table& table = database->table("Mixed");
            Model model;
            std::int64_t next_id = 1;
            for (int commit = 0; commit < 6; ++commit) {
                for (int i = 0; i < 8; ++i)
                    change(table, model, maker, next_id);
                commits.push_back(model);
                database->commit();
                reported = commits.size() - 1;
            }
            done = true;
        } catch (const support::PowerCut&) {
            ++cuts;
        }
        if (done)
            break;
        FaultyDisk next(disk.survivors());
        const auto database = Database::open(next, "a.mdb");
        const Model found = rows_of(database->table("Mixed"));
        bool matches = false;
        for (std::size_t commit = reported; commit < commits.size(); ++commit)
            matches = matches || found == commits[commit];
        ASSERT_TRUE(matches) << "operation " << operation;
        ASSERT_EQ(findings(*database), "") << "operation " << operation;
    }
    EXPECT_GT(cuts, 20);
}

TEST(OtherPrograms, ReadWhatARandomRunWrote) {
    TOLVA_NEEDS_MDB_JSON();
    const support::TemporaryFolder folder;
    const std::string path = folder.file("a.mdb");
    const auto disk = files::make_disk();
    Database::create(*disk, path, {mixed_table()});
    Model model;
    {
        const auto database = Database::open(*disk, path);
        RowMaker maker(5);
        std::int64_t next_id = 1;
        for (int round = 0; round < 1500; ++round)
            change(database->table("Mixed"), model, maker, next_id);
        database->commit();
    }
    const auto tables = support::run_program({"mdb-tables", "-1", path});
    EXPECT_EQ(tables.out, "Mixed\n");
    std::size_t rows = 0;
    for (const support::JsonRow& row : support::mdb_json(path, "Mixed", folder)) {
        const auto found = model.find(std::stoll(row.at("id")));
        ASSERT_NE(found, model.end()) << row.at("id");
        for (const auto& [place, name] : {std::pair{1, "name"}, {2, "text"}, {3, "notes"}, {4, "more"}}) {
            const Value& value = found->second[static_cast<std::size_t>(place)];
            const std::string expected = is_null(value) ? std::string() : std::get<std::string>(value);
            const auto shown = row.find(name);
            if (shown == row.end()) {
                // That reader leaves out null, and memos of no length too.
                EXPECT_EQ(expected, "") << name << " of row " << row.at("id");
            } else {
                EXPECT_EQ(shown->second, expected) << name << " of row " << row.at("id");
            }
        }
        ++rows;
    }
    EXPECT_EQ(rows, model.size());
}

} // namespace
} // namespace tolva::jet
