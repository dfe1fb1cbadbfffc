#include <gtest/gtest.h>

#include "dao/database.h"
#include "dao/default_value.h"
#include "support/jet_files.h"

namespace tolva::dao {
namespace {

using jet::ColumnType;
using jet::Value;
using support::column;
using support::error_of;

constexpr basic::Date moment{46347.75};

std::optional<Value> of(const std::string& expression) {
    return default_value(expression, moment);
}

Value text(const char* content) {
    return std::string(content);
}

TEST(DefaultValue, IsANumberATextAYesNoAMomentOrNull) {
    EXPECT_EQ(of("0"), Value(0.0));
    EXPECT_EQ(of("=-12.5"), Value(-12.5));
    EXPECT_EQ(of(" = 7 "), Value(7.0));
    EXPECT_EQ(of("\"new\""), text("new"));
    EXPECT_EQ(of("=\"a \"\"b\"\" c\""), text("a \"b\" c"));
    EXPECT_EQ(of("'it''s'"), text("it's"));
    EXPECT_EQ(of("\"\""), text(""));
    EXPECT_EQ(of("True"), Value(true));
    EXPECT_EQ(of("=yes"), Value(true));
    EXPECT_EQ(of("False"), Value(false));
    EXPECT_EQ(of("No"), Value(false));
    EXPECT_EQ(of("Null"), Value());
    EXPECT_EQ(of("Now()"), Value(moment));
    EXPECT_EQ(of("=date()"), Value(basic::Date{46347}));
}

TEST(DefaultValue, OfAnyOtherExpressionIsNone) {
    for (const char* expression :
         {"", "=", "GenGUID()", "Date()+7", "\"a\" & \"b\"", "\"open", "'", "\"", "abc"})
        EXPECT_EQ(of(expression), std::nullopt) << expression;
    EXPECT_EQ(default_value("Now()", {}), std::nullopt) << "without a clock";
}

class NewRows : public support::EachVersion {
  protected:
    NewRows() {
        jet::TableSchema table;
        table.name = "table";
        table.columns = {column("id", ColumnType::long_integer), column("count", ColumnType::integer),
                         column("state", ColumnType::text, 3),   column("made", ColumnType::date),
                         column("open", ColumnType::boolean),    column("wide", ColumnType::text, 2),
                         column("odd", ColumnType::text, 50),    column("notes", ColumnType::memo)};
        const char* const defaults[] = {"",    "=5",           "\"WI\"",     "Date()",
                                        "Yes", "\"too wide\"", "Environ(1)", ""};
        for (std::size_t i = 0; i < table.columns.size(); ++i)
            table.columns[i].default_value = defaults[i];
        table.columns[0].auto_number = true;
        jet::Database::create(*disk, "a.mdb", {table}, GetParam());
        database = engine.Workspaces(0).OpenDatabase("a.mdb");
        set = database->OpenRecordset("table");
    }

    std::unique_ptr<files::FileSystem> disk = files::make_memory_disk();
    DBEngine engine{*disk, [] { return 2026; }, [] { return moment; }};
    std::unique_ptr<Database> database;
    std::unique_ptr<Recordset> set;
};
INSTANTIATE_TEST_SUITE_P(Versions, NewRows, support::each_version, support::version_name);

TEST_P(NewRows, StartWithTheirDefaultsAndNumbers) {
    set->AddNew();
    EXPECT_EQ(set->field("id").number(), 1);
    EXPECT_EQ(set->field("count").number(), 5);
    EXPECT_EQ(set->field("state").text(), "WI");
    EXPECT_EQ(set->field("made").date(), basic::Date{46347});
    EXPECT_TRUE(set->field("open").yes_no());
    EXPECT_TRUE(set->field("wide").is_null()) << "a default that its column cannot hold";
    EXPECT_TRUE(set->field("odd").is_null());
    EXPECT_TRUE(set->field("notes").is_null());
    set->write("state", text("IL"));
    set->Update();
    set->MoveFirst();
    EXPECT_EQ(set->field("id").number(), 1);
    EXPECT_EQ(set->field("count").number(), 5);
    EXPECT_EQ(set->field("state").text(), "IL");
}

TEST_P(NewRows, AreNumberedOnceWhateverBecomesOfThem) {
    set->AddNew();
    set->AddNew(); // drops the first
    EXPECT_EQ(set->field("id").number(), 2);
    set->Update();
    engine.commit();
    set.reset();
    database.reset();
    database = engine.Workspaces(0).OpenDatabase("a.mdb");
    set = database->OpenRecordset("table");
    EXPECT_EQ(set->field("id").number(), 2);
    set->AddNew();
    EXPECT_EQ(set->field("id").number(), 3);
    EXPECT_EQ(support::findings(database->file()), "");
}

} // namespace
} // namespace tolva::dao
