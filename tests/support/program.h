#pragma once

#include <fstream>
#include <string>
#include <vector>

#include "support/process.h"
#include "support/samples.h"

namespace tolva::support {

/// How a program ended and what it printed.
struct ProgramRun {
    int code = -1;
    std::string out, err;
};

/// Runs a program to its end with `in` as its standard input.
inline ProgramRun run_program(const std::vector<std::string>& words, const std::string& in = "") {
    const TemporaryFolder folder;
    const Streams streams{folder.file("in"), folder.file("out"), folder.file("err")};
    std::ofstream(std::filesystem::path(streams.in), std::ios::binary) << in;
    ProgramRun run;
    run.code = Process(words, streams).wait();
    run.out = file_content(streams.out);
    run.err = file_content(streams.err);
    return run;
}

/// Whether a command can be found on this machine.
inline bool has_command(const std::string& name) {
    return run_program({"sh", "-c", "command -v \"$1\"", "sh", name}).code == 0;
}

} // namespace tolva::support
