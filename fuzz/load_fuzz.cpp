#include <cstdlib>
#include <sstream>

#include "basic/run_time_error.h"
#include "data/commands.h"
#include "data/schema_text.h"
#include "jet/check.h"
#include "jet/database.h"

namespace {

using namespace tolva;

const std::string path = "fuzz.mdb";

/// A table with a column of every type, and an index that refuses doubles.
constexpr std::string_view schema = "table all\n"
                                    "yes boolean\n"
                                    "small byte\n"
                                    "short integer\n"
                                    "id long\n"
                                    "price currency\n"
                                    "ratio single\n"
                                    "share double\n"
                                    "day date\n"
                                    "code binary 8\n"
                                    "last text 10\n"
                                    "notes memo\n"
                                    "picture ole\n"
                                    "key guid\n"
                                    "sum numeric 9 2\n"
                                    "index ids (id) unique\n"
                                    "index names (last, day desc)\n";

files::Bytes empty_file() {
    const auto disk = files::make_memory_disk();
    jet::Database::create(*disk, path, data::parse_schema(schema, "fuzz"));
    return files::read_whole(*disk, path);
}

const data::Command& load() {
    for (const data::Command& command : data::commands())
        if (command.name == "load")
            return command;
    std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const files::Bytes empty = empty_file();
    const auto disk = files::make_memory_disk();
    disk->open(path, files::OpenMode::create)->write(0, empty);
    std::istringstream in(std::string(reinterpret_cast<const char*>(data), size));
    std::ostringstream out;
    tolva::data::Surroundings with{*disk, in, out, out, 2026};
    try {
        load().run(with, {path, "all"});
    } catch (const basic::RunTimeError&) {
        // All rows or none.
        if (files::read_whole(*disk, path) != empty)
            std::abort();
    }
    if (!jet::check(*jet::Database::open(*disk, path)).empty())
        std::abort();
    return 0;
}
