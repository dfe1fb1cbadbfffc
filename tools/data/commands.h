#pragma once

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "files/file_system.h"

namespace tolva::data {

/// What a command works on. `year` completes dates without a year in queries.
struct Surroundings {
    files::FileSystem& disk;
    std::istream& in;
    std::ostream& out;
    std::ostream& err; ///< for what is worth telling of a command that goes on
    int year;
};

/// What the program's end tells the caller.
enum ExitCode { exit_success = 0, exit_failure = 1, exit_usage = 2 };

struct Command {
    std::string_view name;
    std::string_view arguments;
    std::string_view summary;
    std::string_view details;
    std::size_t least_arguments;
    std::size_t most_arguments;
    ExitCode (*run)(Surroundings&, const std::vector<std::string>& arguments);
};

/// Every command of the program, in the order of its help.
std::span<const Command> commands();

} // namespace tolva::data
