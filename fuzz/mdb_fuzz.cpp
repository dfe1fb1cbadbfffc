#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>

#include "basic/run_time_error.h"
#include "jet/check.h"
#include "jet/database.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t max_size);

namespace {

using namespace tolva;

const std::string path = "fuzz.mdb";

void require(bool holds) {
    if (!holds)
        std::abort();
}

/// Lets an action fail as a store may fail. A report of damage names the file.
void allow_errors(const auto& action) {
    try {
        action();
    } catch (const basic::RunTimeError& error) {
        require(error.number() != 3049 || error.text().find(path) != std::string::npos);
    }
}

void put(files::FileSystem& disk, const std::uint8_t* data, std::size_t size) {
    disk.open(path, files::OpenMode::create)->write(0, {data, size});
}

/// Everything that a table can be asked.
void look_at(jet::Table& table) {
    const std::size_t columns = table.schema().columns.size();
    allow_errors([&] {
        for (const auto row = table.scan(); row->next();)
            for (std::size_t column = 0; column < columns; ++column)
                allow_errors([&] { row->value(column); });
    });
    for (std::size_t index = 0; index < table.schema().indexes.size(); ++index) {
        allow_errors([&] {
            const auto column = table.find_column(table.schema().indexes[index].parts.at(0).column);
            const auto row = table.scan();
            if (!column || !row->next())
                return;
            const jet::Value value = row->value(*column);
            for (const jet::RowId& found : table.find(index, {&value, 1}))
                table.read(found);
        });
    }
}

/// Changes of each kind, on whatever the file calls a table.
void change(jet::Table& table) {
    allow_errors([&] {
        const auto row = table.scan();
        if (!row->next())
            return;
        const jet::RowId first = row->id();
        const jet::Row values = table.read(first);
        allow_errors([&] { table.insert(values); });
        jet::Row longer = values;
        for (std::size_t column = 0; column < longer.size(); ++column) {
            auto* text = std::get_if<std::string>(&longer[column]);
            if (text && table.schema().columns[column].type == jet::ColumnType::memo)
                *text = std::string(9000, 'm');
        }
        allow_errors([&] { table.update(first, longer); });
        if (row->next())
            allow_errors([&] { table.erase(row->id()); });
    });
}

/// A place within a page, near its head more often than not: there it says what the rest means.
std::size_t place_in(std::mt19937& random, std::size_t size) {
    constexpr std::size_t page_size = 4096;
    const std::size_t page = random() % (size / page_size + 1) * page_size;
    const std::size_t within = random() % 4 ? random() % 96 : random() % page_size;
    return std::min(page + within, size - 1);
}

} // namespace

/// Keeps pages at their places: changes a few bytes, copies a page over another, or cuts the file.
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t max_size,
                                               unsigned int seed) {
    constexpr std::size_t page_size = 4096;
    std::mt19937 random(seed);
    if (size < page_size)
        return LLVMFuzzerMutate(data, size, max_size);
    if (random() % 64 == 0)
        return size - random() % size;
    if (random() % 16 == 0) {
        const std::size_t pages = size / page_size;
        std::memmove(data + random() % pages * page_size, data + random() % pages * page_size, page_size);
        return size;
    }
    for (std::size_t changes = random() % 4 + 1; changes > 0; --changes) {
        const std::size_t at = place_in(random, size);
        const std::size_t window = std::min<std::size_t>(random() % 8 + 1, size - at);
        if (random() % 3 == 0)
            std::memset(data + at, random() % 2 ? 0xff : 0, window);
        else
            LLVMFuzzerMutate(data + at, window, window);
    }
    return size;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto disk = files::make_memory_disk();
    put(*disk, data, size);
    allow_errors([&] {
        const auto database = jet::Database::open(*disk, path);
        const bool sound = jet::check(*database).empty();
        for (const std::string& name : database->table_names()) {
            allow_errors([&] {
                jet::Table& table = database->table(name);
                look_at(table);
                change(table);
            });
        }
        // What we change of a good file leaves a good file.
        require(!sound || jet::check(*database).empty());
        database->commit();
    });
    return 0;
}
