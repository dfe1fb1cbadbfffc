#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "support/program.h"
#include "support/samples.h"

namespace tolva::tools {

/// Runs build/tolva-data as its users do, in a folder of the test's own.
class TolvaData : public testing::Test {
  protected:
    support::ProgramRun run(std::vector<std::string> arguments, const std::string& in = "") const {
        arguments.insert(arguments.begin(), TOLVA_BUILD_DIR "/tolva-data");
        return support::run_program(arguments, in);
    }

    /// What a command prints that must succeed.
    std::string output(const std::vector<std::string>& arguments, const std::string& in = "") const {
        const support::ProgramRun result = run(arguments, in);
        EXPECT_EQ(result.code, 0) << result.err;
        EXPECT_EQ(result.err, "");
        return result.out;
    }

    std::string write(const std::string& name, const std::string& content) const {
        std::ofstream(folder.file(name), std::ios::binary) << content;
        return folder.file(name);
    }

    /// A new file with the tables of a schema text.
    std::string make(const std::string& name, const std::string& schema) const {
        const std::string path = folder.file(name);
        output({"make", path, write(name + ".schema", schema)});
        return path;
    }

    /// The content of a file whose page of a long note has no kind that there is. The note is of one letter,
    /// and too long to be compressed.
    static std::string spoil_long_note(const std::string& file, char letter) {
        std::string bytes = support::file_content(file), piece;
        for (int i = 0; i < 500; ++i)
            piece += {letter, '\0'};
        const std::size_t at = bytes.find(piece);
        EXPECT_NE(at, std::string::npos);
        bytes[at == std::string::npos ? 0 : at / 4096 * 4096] = 9;
        return bytes;
    }

    support::TemporaryFolder folder;
};

/// The independent reader's text of a table; its installation is `./test`'s affair.
inline const std::string interop_folder = TOLVA_SOURCE_DIR "/tests/interop";

inline support::ProgramRun interop_dump(const std::string& file, const std::string& table) {
    return support::run_program({"node", interop_folder + "/dump.js", file, table});
}

} // namespace tolva::tools

/// Leaves a test that needs the independent reader where there is none.
#define TOLVA_NEEDS_INTEROP()                                                                                \
    do {                                                                                                     \
        if (!std::filesystem::exists(tolva::tools::interop_folder + "/node_modules/mdb-reader") ||           \
            !tolva::support::has_command("node"))                                                            \
            GTEST_SKIP() << "the independent reader of tests/interop is not installed";                      \
    } while (false)

#define TOLVA_NEEDS_COMMAND(name)                                                                            \
    do {                                                                                                     \
        if (!tolva::support::has_command(name))                                                              \
            GTEST_SKIP() << "the command " << (name) << " is not on this machine";                           \
    } while (false)
