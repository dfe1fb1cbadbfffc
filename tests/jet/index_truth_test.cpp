#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <map>
#include <random>
#include <set>
#include <sstream>

#include "jet/text_order.h"
#include "support/jet_files.h"
#include "support/mdb_json.h"
#include "support/program.h"

// A long run of random changes to a table of every type and every kind of index, held against a model in
// memory. TOLVA_RANDOM_OPERATIONS in the environment makes it longer than the ordinary run.

namespace tolva::jet {
namespace {

using support::column;
using support::error_of;
using support::findings;
using support::index;

constexpr std::size_t id = 0, tag = 1, name = 2, street = 3, remarks = 4, notes = 5, history = 6;

TableSchema every_type(Format::Version version) {
    using T = ColumnType;
    TableSchema table;
    table.name = "Every";
    table.columns = {
        column("id", T::long_integer),  column("tag", T::long_integer),  column("name", T::text, 60),
        column("street", T::text, 255), column("remarks", T::text, 255), column("notes", T::memo),
        column("history", T::memo),     column("tiny", T::byte),         column("small", T::integer),
        column("money", T::currency),   column("half", T::single_real),  column("whole", T::double_real),
        column("day", T::date),         column("yes", T::boolean),       column("bytes", T::binary, 200),
        column("guid", T::guid),        column("object", T::ole)};
    // There are no decimals in the older version.
    if (version == Format::Version::jet4) {
        table.columns.push_back(column("exact", T::numeric));
        table.columns.back().precision = 18;
        table.columns.back().scale = 2;
    }
    table.indexes = {index("PrimaryKey", {"id"}), index("tag", {"tag"}), index("name", {"name", "day"}),
                     index("long", {"street", "remarks", "name"})};
    table.indexes[0].primary = true;
    table.indexes[1].unique = table.indexes[1].ignore_nulls = true;
    table.indexes[2].parts[1].descending = true;
    for (std::size_t i = history + 1; i < table.columns.size(); ++i) {
        if (table.columns[i].type == T::ole)
            continue;
        table.indexes.push_back(index(table.columns[i].name, {table.columns[i].name}));
        table.indexes.push_back(index(table.columns[i].name + " down", {table.columns[i].name, "name"}));
        table.indexes.back().parts[0].descending = table.indexes.back().parts[1].descending = true;
    }
    return table;
}

/// Values by chance, the same ones for a seed. Texts are of letters that both versions have, so that the
/// older one loses nothing.
class Maker {
  public:
    explicit Maker(std::uint32_t seed) : random_(seed) {}

    std::size_t below(std::size_t limit) { return random_() % limit; }

    std::string text(std::size_t longest) {
        static const char* const letters[] = {
            "a", "B", "e", "\xc3\xa9", "\xc3\x9f", "\xc3\x86", "\xe2\x82\xac",
            " ", "-", "'", "7",        "z",        "\xc3\xb1", "O"};
        std::string out;
        for (std::size_t left = below(longest + 1); left > 0; --left)
            out += letters[below(std::size(letters))];
        return out;
    }

    Value value(const ColumnSchema& column) {
        using T = ColumnType;
        if (column.type == T::boolean)
            return below(2) == 0;
        if (below(6) == 0)
            return {};
        const auto number = [&](std::int64_t limit) {
            return static_cast<std::int64_t>(below(static_cast<std::size_t>(2 * limit))) - limit;
        };
        switch (column.type) {
        case T::byte:
            return static_cast<std::int64_t>(below(256));
        case T::integer:
            return number(32768);
        case T::long_integer:
            return static_cast<std::int64_t>(below(900));
        case T::currency:
            return Currency{number(1000000000)};
        case T::single_real:
            return static_cast<double>(static_cast<float>(number(1000)) / 8);
        case T::double_real:
            return static_cast<double>(number(100000)) * 1e-3;
        case T::date:
            return basic::Date{static_cast<double>(number(300)) + 0.25 * static_cast<double>(below(4))};
        case T::binary:
            return bytes(below(30) == 0 ? 200 : 12);
        case T::guid:
            return Bytes(bytes(16, 16));
        case T::ole:
            return bytes(below(8) == 0 ? 9000 : 90);
        case T::numeric:
            return Decimal{below(2) == 0, {static_cast<std::uint32_t>(1 + below(100000)), 0, 0}, 2};
        case T::memo:
            return memo();
        default:
            return long_text(static_cast<std::size_t>(column.size));
        }
    }

    Row row(const TableSchema& table, std::int64_t new_id) {
        Row row;
        for (const ColumnSchema& column : table.columns)
            row.push_back(value(column));
        row[id] = new_id;
        // Records have a limit; what is long here goes on the pages of long values.
        if (below(4) != 0)
            row[remarks] = Value();
        return row;
    }

  private:
    Bytes bytes(std::size_t longest, std::size_t shortest = 0) {
        Bytes out(shortest + below(longest - shortest + 1));
        for (std::uint8_t& byte : out)
            byte = static_cast<std::uint8_t>(below(3) == 0 ? 0 : below(256));
        return out;
    }
    /// Now and then as long as its column, and then often with a start that others have.
    std::string long_text(std::size_t size) {
        if (size < 255 || below(8) != 0)
            return text(std::min<std::size_t>(size, 25));
        return std::string(below(2) == 0 ? 240 : 100, 'k') + text(15);
    }
    std::string memo() {
        static constexpr std::size_t sizes[] = {0, 20, 64, 66, 300, 2000, 2040, 3900, 20000};
        const std::size_t size = sizes[below(below(4) == 0 ? std::size(sizes) : 5)];
        std::string out(size, 'm');
        return out + text(12);
    }

    std::mt19937 random_;
};

/// A file of one version and the rows that it should have.
class RandomTable {
  public:
    RandomTable(Format::Version version, std::uint32_t seed)
        : version_(version), schema_(every_type(version)), file_({schema_}, version), maker_(seed) {}

    void change() {
        const std::size_t kind = maker_.below(100);
        if (rows_.empty() || (kind < 38 && rows_.size() < 450))
            insert();
        else if (kind < 70)
            update();
        else if (kind < 96)
            erase();
        else
            refuse();
        switch (maker_.below(200)) {
        case 0:
        case 1:
        case 2:
            file_.database().commit();
            stored_ = rows_;
            break;
        case 3:
            file_.database().rollback();
            rows_ = stored_;
            break;
        case 4:
            file_.reopen();
            stored_ = rows_;
            break;
        default:
            break;
        }
    }

    void expect_agreement() {
        std::map<std::int64_t, Row> found;
        for (Row& row : support::all_rows(table()))
            found.emplace(std::get<std::int64_t>(row[id]), std::move(row));
        ASSERT_EQ(found, rows_);
        ASSERT_EQ(table().row_count(), rows_.size());
        ASSERT_EQ(findings(file_.database()), "");
        for (std::size_t i = 0; i < schema_.indexes.size(); ++i)
            expect_index(i);
    }

    /// The same file as others read it: their rows by id.
    void expect_others_agree() {
        file_.database().commit();
        stored_ = rows_;
        const support::TemporaryFolder folder;
        const std::string path = folder.file("every.mdb");
        const files::Bytes content = file_.content();
        std::ofstream(path, std::ios::binary)
            .write(reinterpret_cast<const char*>(content.data()),
                   static_cast<std::streamsize>(content.size()));
        if (support::has_mdb_json())
            expect_mdb_json(path, folder);
        static const std::string reader = TOLVA_SOURCE_DIR "/tests/interop/";
        if (std::filesystem::exists(reader + "node_modules/mdb-reader") && support::has_command("node"))
            expect_reader(support::run_program({"node", reader + "dump.js", path, schema_.name}));
    }

  private:
    Table& table() { return file_.table(schema_.name); }
    TextOrder order() const {
        return version_ == Format::Version::jet3 ? TextOrder::general_jet3 : TextOrder::general_jet4;
    }

    std::int64_t any() {
        auto at = rows_.begin();
        std::advance(at, static_cast<std::ptrdiff_t>(maker_.below(rows_.size())));
        return at->first;
    }
    RowId place_of(std::int64_t wanted) {
        const auto found = table().find(0, std::vector<Value>{wanted});
        EXPECT_EQ(found.size(), 1u) << wanted;
        return found.at(0);
    }
    bool tag_taken(const Row& row) const {
        return !is_null(row[tag]) && std::any_of(rows_.begin(), rows_.end(), [&](const auto& other) {
            return other.first != std::get<std::int64_t>(row[id]) && other.second[tag] == row[tag];
        });
    }

    void insert() {
        const Row row = maker_.row(schema_, next_id_++);
        const int expected = tag_taken(row) ? 3022 : 0;
        ASSERT_EQ(error_of([&] { table().insert(row); }), expected);
        if (expected == 0)
            rows_[std::get<std::int64_t>(row[id])] = row;
    }
    void update() {
        const std::int64_t chosen = any();
        Row row = rows_[chosen];
        const Row fresh = maker_.row(schema_, chosen);
        for (std::size_t i = 1; i < row.size(); ++i)
            if (maker_.below(3) == 0)
                row[i] = fresh[i];
        const int expected = tag_taken(row) ? 3022 : 0;
        const RowId place = place_of(chosen);
        ASSERT_EQ(error_of([&] { table().update(place, row); }), expected);
        if (expected == 0)
            rows_[chosen] = row;
    }
    void erase() {
        const std::int64_t chosen = any();
        table().erase(place_of(chosen));
        rows_.erase(chosen);
    }
    void refuse() {
        Row row = maker_.row(schema_, any());
        row[tag] = Value();
        ASSERT_EQ(error_of([&] { table().insert(row); }), 3022);
        row[id] = Value();
        ASSERT_EQ(error_of([&] { table().insert(row); }), 3058);
        row[id] = next_id_;
        row[name] = std::string(61, 'x');
        ASSERT_EQ(error_of([&] { table().insert(row); }), 3163);
    }

    bool equal(const Value& a, const Value& b) const {
        const auto *left = std::get_if<std::string>(&a), *right = std::get_if<std::string>(&b);
        return left && right ? compare_text(*left, *right, order()) == 0 : a == b;
    }
    /// Looks up some keys, whole and in part, and compares with a search through the model.
    void expect_index(std::size_t place) {
        const auto& parts = schema_.indexes[place].parts;
        for (int round = 0; round < 12 && !rows_.empty(); ++round) {
            const Row& row = rows_[any()];
            std::vector<std::size_t> columns;
            std::vector<Value> key;
            for (std::size_t i = 0; i < 1 + maker_.below(parts.size()); ++i) {
                columns.push_back(*table().find_column(parts[i].column));
                key.push_back(row[columns.back()]);
            }
            std::set<std::int64_t> expected, found;
            for (const auto& [each, other] : rows_)
                if (std::all_of(columns.begin(), columns.end(),
                                [&, &values = other](std::size_t c) { return equal(values[c], row[c]); }))
                    expected.insert(each);
            for (const RowId& where : table().find(place, key))
                found.insert(std::get<std::int64_t>(table().read(where)[id]));
            ASSERT_EQ(found, expected) << schema_.indexes[place].name;
        }
    }

    void expect_mdb_json(const std::string& path, const support::TemporaryFolder& folder) {
        std::size_t seen = 0;
        for (const support::JsonRow& row : support::mdb_json(path, schema_.name, folder)) {
            const Row& mine = rows_.at(std::stoll(row.at("id")));
            for (const std::size_t place : {name, street, remarks, notes, history}) {
                const auto shown = row.find(schema_.columns[place].name);
                // That reader leaves out null and memos of no length.
                const std::string theirs = shown == row.end() ? "" : shown->second;
                const auto* text = std::get_if<std::string>(&mine[place]);
                ASSERT_EQ(theirs, text ? *text : "") << row.at("id") << " " << schema_.columns[place].name;
            }
            ++seen;
        }
        ASSERT_EQ(seen, rows_.size());
    }

    /// Lines of fields between tabs, under one of names; \N is null.
    void expect_reader(const support::ProgramRun& run) {
        ASSERT_EQ(run.code, 0) << run.err;
        std::istringstream lines(run.out);
        std::string line;
        std::getline(lines, line);
        std::size_t seen = 0;
        while (std::getline(lines, line)) {
            std::vector<std::string> fields;
            std::istringstream rest(line);
            for (std::string field; std::getline(rest, field, '\t');)
                fields.push_back(field);
            fields.resize(schema_.columns.size());
            const Row& mine = rows_.at(std::stoll(fields[id]));
            for (std::size_t i = 0; i < fields.size(); ++i) {
                const auto* text = std::get_if<std::string>(&mine[i]);
                const auto* number = std::get_if<std::int64_t>(&mine[i]);
                const auto* yes = std::get_if<bool>(&mine[i]);
                const std::string expected = is_null(mine[i]) ? "\\N"
                                             : text           ? *text
                                             : number         ? std::to_string(*number)
                                             : yes            ? std::string(*yes ? "1" : "0")
                                                              : fields[i];
                ASSERT_EQ(fields[i], expected) << fields[id] << " " << schema_.columns[i].name;
                ASSERT_EQ(fields[i] == "\\N", is_null(mine[i])) << schema_.columns[i].name;
            }
            ++seen;
        }
        ASSERT_EQ(seen, rows_.size());
    }

    Format::Version version_;
    TableSchema schema_;
    support::JetFile file_;
    Maker maker_;
    std::map<std::int64_t, Row> rows_, stored_;
    std::int64_t next_id_ = 1;
};

class IndexTruth : public support::EachVersion {};
INSTANTIATE_TEST_SUITE_P(Versions, IndexTruth, support::each_version, support::version_name);

TEST_P(IndexTruth, ARandomRunAgreesWithAModelWithTheCheckAndWithOtherReaders) {
    constexpr int ordinary = 3000;
    const char* const asked = std::getenv("TOLVA_RANDOM_OPERATIONS");
    const int operations = asked ? std::atoi(asked) : ordinary;
    const int checkpoint = std::max(500, operations / 40);
    RandomTable table(GetParam(), 20260701);
    const auto start = std::chrono::steady_clock::now();
    for (int operation = 1; operation <= operations; ++operation) {
        table.change();
        if (operation % checkpoint == 0) {
            table.expect_agreement();
            table.expect_others_agree();
        }
        if (HasFatalFailure())
            FAIL() << "at operation " << operation;
    }
    if (asked)
        std::cout << operations << " operations in "
                  << std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count()
                  << " s\n";
}

} // namespace
} // namespace tolva::jet
