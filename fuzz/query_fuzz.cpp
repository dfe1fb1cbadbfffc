#include <cstdlib>
#include <memory>
#include <string_view>

#include "basic/run_time_error.h"
#include "jet/database.h"
#include "sql/select.h"

namespace {

using namespace tolva;

const std::string path = "fuzz.mdb";

jet::ColumnSchema column(const char* name, jet::ColumnType type, int size = 0) {
    jet::ColumnSchema out;
    out.name = name;
    out.type = type;
    out.size = size;
    return out;
}

/// A table with a column of each kind that queries ask for, rows with nulls among them.
struct Store {
    Store() {
        using T = jet::ColumnType;
        jet::TableSchema schema{"table",
                                {column("id", T::long_integer), column("last", T::text, 50),
                                 column("notes", T::memo), column("price", T::currency),
                                 column("day", T::date), column("done", T::boolean),
                                 column("share", T::double_real)},
                                {}};
        schema.indexes.push_back({"ids", {{"id", false}}, false, false, false, false});
        jet::Database::create(*disk, path, {schema});
        database = jet::Database::open(*disk, path);
        jet::Table& table = database->table("table");
        for (std::int64_t id = 0; id < 6; ++id) {
            const std::string text(static_cast<std::size_t>(id), 'a');
            table.insert({id, text, text + "*[", jet::Currency{id * 10000},
                          basic::Date{36000.25 * double(id)}, id % 2 == 0, 0.5 * double(id)});
        }
        table.insert({jet::Value{}, {}, {}, {}, {}, false, {}});
    }
    std::unique_ptr<files::FileSystem> disk = files::make_memory_disk();
    std::unique_ptr<jet::Database> database;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Store store;
    try {
        const sql::Select select = sql::parse({reinterpret_cast<const char*>(data), size}, 2026);
        jet::Table& table = store.database->table(select.table);
        const auto rows = sql::run(select, table);
        if (rows.size() > table.row_count())
            std::abort();
    } catch (const basic::RunTimeError&) {
        // A faulty text is told as one of the engine's errors.
    }
    return 0;
}
