#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <functional>

#include "basic/text.h"
#include "dao/database.h"
#include "dao/recordset.h"
#include "support/errors.h"
#include "support/mdb_json.h"

// The store as the logic sees it, over copies of a desk's files, held against what another reader of the
// format prints of the same files.

namespace tolva::dao {
namespace {

using support::JsonRow;
using support::TemporaryFolder;

constexpr int this_year = 2026;

/// A date as mdb-json was told to print it.
std::string printed(basic::Date date) {
    const basic::DateParts parts = basic::parts_of(date);
    char text[64];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", parts.year, parts.month, parts.day,
                  parts.hour, parts.minute, parts.second);
    return text;
}

/// Whether mdb-json's cell shows this value; its numbers may have more digits than ours.
::testing::AssertionResult shows(const std::string& cell, const FieldValue& field) {
    const jet::Value& value = field.raw();
    bool same = false;
    if (const bool* yes = std::get_if<bool>(&value))
        same = cell == (*yes ? "1" : "0");
    else if (const double* number = std::get_if<double>(&value))
        same = std::stod(cell) == *number;
    else if (const auto* date = std::get_if<basic::Date>(&value))
        same = cell == printed(*date);
    else
        same = !field.is_null() && cell == field.text();
    if (same)
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << (field.is_null() ? "null" : field.text()) << " is not " << cell;
}

class Desk : public ::testing::Test {
  protected:
    std::unique_ptr<Database> open(const std::string& name) {
        path = support::copy_sample("desk/data/" + name, folder);
        return engine.Workspaces(0).OpenDatabase(path);
    }

    TemporaryFolder folder;
    std::unique_ptr<files::FileSystem> disk = files::make_disk();
    DBEngine engine{*disk, [] { return this_year; }};
    std::string path;
};

TEST_F(Desk, EveryFieldOfEveryRowReadsAsAnotherReaderReadsIt) {
    TOLVA_NEEDS_SAMPLE("desk/data/listings.mdb");
    TOLVA_NEEDS_MDB_JSON();
    for (const auto& [name, table] : {std::pair<std::string, std::string>{"database.mdb", "preference_table"},
                                      {"listings.mdb", "table"},
                                      {"address.mdb", "table"},
                                      {"prospect.mdb", "table"},
                                      {"sold.mdb", "table"},
                                      {"zipcodes.mdb", "table"},
                                      {"messagedata.mdb", "table"}}) {
        const auto database = open(name);
        const auto expected = support::mdb_json(path, table, folder);
        const auto set = database->OpenRecordset("[" + table + "]");
        ASSERT_FALSE(expected.empty()) << name;
        ASSERT_EQ(set->RecordCount(), static_cast<long>(expected.size())) << name;
        for (const JsonRow& row : expected) {
            for (const auto& column : set->schema().columns) {
                const FieldValue field = set->field(column.name);
                const auto cell = row.find(column.name);
                if (cell == row.end()) // mdb-json prints an empty text as little as a null
                    ASSERT_TRUE(field.is_null_or_empty())
                        << name << " " << column.name << " " << field.text();
                else
                    ASSERT_TRUE(shows(cell->second, field)) << name << " " << column.name;
            }
            set->MoveNext();
        }
        EXPECT_TRUE(set->Eof());
    }
}

// Queries, reckoned a second time over the other reader's rows.

struct Claim {
    const char* file;
    const char* query;
    std::function<bool(const JsonRow&)> selects;
};

std::string cell(const JsonRow& row, const char* column) {
    const auto found = row.find(column);
    return found == row.end() ? "<null>" : found->second;
}

/// Of a date or a number; of a text it may be an empty one.
bool is_null(const JsonRow& row, const char* column) {
    return row.count(column) == 0;
}

/// Whether a column that is not null holds a piece of text, whatever the letter case.
bool holds(const JsonRow& row, const char* column, const char* piece) {
    return !is_null(row, column) && basic::lower(cell(row, column)).find(piece) != std::string::npos;
}

double number(const JsonRow& row, const char* column) {
    return std::stod(cell(row, column));
}

bool after(const JsonRow& row, const char* column, const char* date) {
    return !is_null(row, column) && cell(row, column) > date;
}

const std::vector<Claim>& claims() {
    static const std::vector<Claim> all = {
        {"listings.mdb", "Select * from [table]", [](const JsonRow&) { return true; }},
        {"listings.mdb",
         "select * from [table] where (last like '*son*' or co_last like '*son*') and city like '**'",
         [](const JsonRow& row) {
             return (holds(row, "last", "son") || holds(row, "co_last", "son")) && !is_null(row, "city");
         }},
        {"listings.mdb",
         "select * from [table] where datelisted >= #1/1/2026# and datelisted <= #06/30/2026#",
         [](const JsonRow& row) {
             return after(row, "datelisted", "2025-12-31 23:59:59") &&
                    !after(row, "datelisted", "2026-06-30 00:00:00");
         }},
        {"listings.mdb", "select * from [table] where birthday > #01/01/1800# or co_birthday > #01/01/1800#",
         [](const JsonRow& row) { return !is_null(row, "birthday") || !is_null(row, "co_birthday"); }},
        {"listings.mdb", "select * from [table] where listingprice >= 200000 and listingprice <= 3E5",
         [](const JsonRow& row) {
             return !is_null(row, "listingprice") && number(row, "listingprice") >= 200000 &&
                    number(row, "listingprice") <= 300000;
         }},
        {"listings.mdb", "select * from [table] where id=112",
         [](const JsonRow& row) { return number(row, "id") == 112; }},
        {"listings.mdb", "select * from [table] where not (last like '*s*') and co_birthday is null",
         [](const JsonRow& row) { return !holds(row, "last", "s") && is_null(row, "co_birthday"); }},
        {"listings.mdb",
         "select * from [table] where notes like '*garden*' or contacthistory like '*sent letter*'",
         [](const JsonRow& row) {
             return holds(row, "notes", "garden") || holds(row, "contacthistory", "sent letter");
         }},
        {"prospect.mdb",
         "select * from [table] where dateacquired > #1/1/1800# and feature0 = true and (bedrooms >= 3)",
         [](const JsonRow& row) {
             return !is_null(row, "dateacquired") && cell(row, "feature0") == "1" &&
                    !is_null(row, "bedrooms") && number(row, "bedrooms") >= 3;
         }},
        {"prospect.mdb", "select * from [table] where interestlevel like '*Hot*' and not feature3",
         [](const JsonRow& row) {
             return holds(row, "interestlevel", "hot") && cell(row, "feature3") == "0";
         }},
        {"sold.mdb",
         "select * from [table] where datesold >= #1/1/2025# and sellingprice between 2e5 and 250000",
         [](const JsonRow& row) {
             return after(row, "datesold", "2024-12-31 23:59:59") && number(row, "sellingprice") >= 200000 &&
                    number(row, "sellingprice") <= 250000;
         }},
        {"address.mdb", "select * from [table] where last like '*mi*'and city like '**'",
         [](const JsonRow& row) { return holds(row, "last", "mi") && !is_null(row, "city"); }},
        {"messagedata.mdb",
         "Select * from [table] where messageflag = false and messagetype<=4 and ((messagedate < "
         "#11/20/2026#) or "
         "(messagedate = #11/20/2026# and messagetime <= #8:30:00 AM#))",
         [](const JsonRow& row) {
             const std::string date = cell(row, "messagedate");
             return cell(row, "messageflag") == "0" && number(row, "messagetype") <= 4 &&
                    (date < "2026-11-20 00:00:00" ||
                     (date == "2026-11-20 00:00:00" && cell(row, "messagetime") <= "1899-12-30 08:30:00"));
         }},
        {"zipcodes.mdb", "Select * from [table] where z_city like 'spring*'",
         [](const JsonRow& row) { return basic::lower(cell(row, "z_city")).starts_with("spring"); }},
        {"zipcodes.mdb", "Select * from [table] where z_zip in ('10001', '90210') or z_state = 'dc'",
         [](const JsonRow& row) {
             return cell(row, "z_zip") == "10001" || cell(row, "z_zip") == "90210" ||
                    cell(row, "z_state") == "DC";
         }},
    };
    return all;
}

TEST_F(Desk, QueriesSelectWhatTheyClaimInPageAndSlotOrder) {
    TOLVA_NEEDS_SAMPLE("desk/data/listings.mdb");
    TOLVA_NEEDS_MDB_JSON();
    for (const Claim& claim : claims()) {
        const auto database = open(claim.file);
        std::vector<JsonRow> expected = support::mdb_json(path, "table", folder);
        expected.erase(std::remove_if(expected.begin(), expected.end(),
                                      [&](const JsonRow& row) { return !claim.selects(row); }),
                       expected.end());
        ASSERT_FALSE(expected.empty()) << claim.query << " shows nothing";
        const auto set = database->OpenRecordset(claim.query);
        for (const JsonRow& row : expected) {
            ASSERT_FALSE(set->Eof()) << claim.query;
            for (const auto& [column, content] : row)
                ASSERT_TRUE(shows(content, set->field(column))) << column << ": " << claim.query;
            set->MoveNext();
        }
        EXPECT_TRUE(set->Eof()) << claim.query;
    }
}

/// Names as the text order sees them first: small letters without accents and apostrophes.
std::string sorted_as(const JsonRow& row, const char* column) {
    if (is_null(row, column))
        return {};
    std::string key = "+";
    for (char32_t c : basic::to_code_points(basic::lower(cell(row, column)))) {
        static const std::map<char32_t, char> plain = {{U'\u00e1', 'a'}, {U'\u00e9', 'e'}, {U'\u00ed', 'i'},
                                                       {U'\u00f1', 'n'}, {U'\u00f3', 'o'}, {U'\u00f6', 'o'},
                                                       {U'\u00fc', 'u'}, {U'\u00e8', 'e'}, {U'\u00e7', 'c'}};
        if (c == U'\'' || c == U'-')
            continue;
        const auto found = plain.find(c);
        key.push_back(found != plain.end() ? found->second : static_cast<char>(c));
    }
    return key;
}

TEST_F(Desk, OrdersAreThoseOfTheKeys) {
    TOLVA_NEEDS_SAMPLE("desk/data/listings.mdb");
    TOLVA_NEEDS_MDB_JSON();
    const auto database = open("listings.mdb");
    std::vector<JsonRow> expected = support::mdb_json(path, "table", folder);
    std::stable_sort(expected.begin(), expected.end(), [](const JsonRow& a, const JsonRow& b) {
        const auto key = [](const JsonRow& row) {
            const std::string date = is_null(row, "datelisted") ? "" : cell(row, "datelisted");
            return std::tuple(date, sorted_as(row, "last"), sorted_as(row, "first"));
        };
        return key(a) < key(b);
    });
    const auto set = database->OpenRecordset("select * from [table] order by datelisted, last, first");
    for (const JsonRow& row : expected) {
        ASSERT_FALSE(set->Eof());
        ASSERT_EQ(set->field("id").text(), cell(row, "id"))
            << cell(row, "last") << ", " << cell(row, "first");
        set->MoveNext();
    }
    EXPECT_TRUE(set->Eof());
}

TEST_F(Desk, TheProductsOddQueriesFailAsTheEngineFails) {
    TOLVA_NEEDS_SAMPLE("desk/data/listings.mdb");
    const auto database = open("listings.mdb");
    const auto failure = [&](const std::string& query) {
        return support::error_number([&] { database->OpenRecordset(query); });
    };
    EXPECT_EQ(failure("select * from [table] where last like '*O'Brien*'"), 3075);
    EXPECT_EQ(failure("select * from [table] where id=5 order by datesold, last, first"), 3061);
    EXPECT_EQ(failure("select * from [table] where squarefeet >= 1500"), 3464) << "text in this file";
    EXPECT_EQ(failure("select * from [table] where datelisted > #1/1/1800# and ((homephone like '*555'*) or "
                      "(co_homephone like '*555'*))"),
              3075);
}

TEST_F(Desk, WhatWasCommittedIsThereForEveryReader) {
    TOLVA_NEEDS_SAMPLE("desk/data/listings.mdb");
    TOLVA_NEEDS_MDB_JSON();
    auto database = open("listings.mdb");
    const std::string long_notes(20000, 'n');
    const auto set = database->OpenRecordset("select * from [table] where id >= 299 order by id");
    set->AddNew();
    set->write("id", std::int64_t{900});
    set->write("last", std::string("O'Brien-Pe\u00f1a"));
    set->write("datelisted", std::string("3/7/2026"));
    set->write("listingprice", std::string("$125,000"));
    set->write("includeinprinting", std::string("True"));
    set->write("notes", long_notes);
    set->Update();
    set->Edit();
    set->write("city", std::string(""));
    set->write("birthday", std::string("8:30 AM"));
    set->write("Flag", 2.5);
    set->Update();
    EXPECT_EQ(support::error_number([&] { set->Edit(), set->write("state", std::string("IDA")); }), 3163);
    set->MoveNext();
    set->Delete();
    engine.commit();

    database = nullptr;
    database = engine.Workspaces(0).OpenDatabase(path);
    const auto added = database->OpenRecordset("select * from [table] where id = 900");
    EXPECT_EQ(added->field("last").text(), "O'Brien-Pe\u00f1a");
    EXPECT_EQ(added->field("notes").text(), long_notes);
    EXPECT_TRUE(added->field("middle").is_null());
    const auto edited = database->OpenRecordset("select * from [table] where id = 299");
    EXPECT_FALSE(edited->field("city").is_null());
    EXPECT_TRUE(database->OpenRecordset("select * from [table] where id = 300")->Eof());

    const auto rows = support::mdb_json(path, "table", folder);
    ASSERT_EQ(rows.size(), 300u);
    const auto row = [&rows](const char* id) {
        return *std::find_if(rows.begin(), rows.end(),
                             [id](const JsonRow& r) { return cell(r, "id") == id; });
    };
    EXPECT_EQ(cell(row("900"), "last"), "O'Brien-Pe\u00f1a");
    EXPECT_EQ(cell(row("900"), "datelisted"), "2026-03-07 00:00:00");
    EXPECT_EQ(number(row("900"), "listingprice"), 125000);
    EXPECT_EQ(cell(row("900"), "includeinprinting"), "1");
    EXPECT_EQ(cell(row("900"), "notes"), long_notes);
    EXPECT_EQ(cell(row("299"), "birthday"), "1899-12-30 08:30:00");
    EXPECT_EQ(cell(row("299"), "Flag"), "2");
}

TEST_F(Desk, WhatWasNotCommittedIsNotThere) {
    TOLVA_NEEDS_SAMPLE("desk/data/address.mdb");
    auto database = open("address.mdb");
    const auto before = support::file_content(path);
    {
        const auto set = database->OpenRecordset("select * from [table] where id = 5");
        set->Edit();
        set->write("last", std::string("Changed"));
        set->Update();
        set->Delete();
    }
    database = nullptr;
    EXPECT_TRUE(support::file_content(path) == before);
}

TEST_F(Desk, AChangeToTheNextStoreMakesTheLastOneDurable) {
    TOLVA_NEEDS_SAMPLE("desk/data/address.mdb");
    const auto addresses = open("address.mdb");
    const std::string address_path = path;
    const auto before = support::file_content(address_path);
    const auto settings = open("database.mdb");
    const auto set = addresses->OpenRecordset("select * from [table] where id = 5");
    set->Edit();
    set->write("last", std::string("Changed"));
    set->Update();
    EXPECT_TRUE(support::file_content(address_path) == before);
    const auto row = settings->OpenRecordset("preference_table");
    row->Edit();
    row->write("address_counter", row->field("address_counter").number() + 1);
    EXPECT_TRUE(support::file_content(address_path) == before) << "Edit changes nothing yet";
    row->Update();
    EXPECT_FALSE(support::file_content(address_path) == before);
}

} // namespace
} // namespace tolva::dao
