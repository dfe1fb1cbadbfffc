#pragma once

#include <cstdlib>
#include <fstream>
#include <initializer_list>
#include <string>
#include <vector>

#include "support/samples.h"

namespace tolva::support {

/// How a program ended and what it printed.
struct ProgramRun {
    int code = -1;
    std::string out, err;
};

/// A word as the shell takes it for one word, whatever it holds.
inline std::string shell_word(const std::string& text) {
    std::string word = "'";
    for (const char c : text) {
        if (c == '\'')
            word += "'\\''";
        else
            word += c;
    }
    return word + "'";
}

/// Runs a program to its end with `in` as its standard input.
inline ProgramRun run_program(const std::vector<std::string>& words, const std::string& in = "") {
    const TemporaryFolder folder;
    std::ofstream(folder.file("in"), std::ios::binary) << in;
    std::string command;
    for (const std::string& word : words)
        command += shell_word(word) + " ";
    // What `system` returns is the system's own affair, so the shell writes the exit code down.
    command += "<" + shell_word(folder.file("in")) + " >" + shell_word(folder.file("out")) + " 2>" +
               shell_word(folder.file("err")) + "; echo $? >" + shell_word(folder.file("code"));
    ProgramRun run;
    if (std::system(command.c_str()) != 0)
        return run;
    std::ifstream(folder.file("code")) >> run.code;
    run.out = file_content(folder.file("out"));
    run.err = file_content(folder.file("err"));
    return run;
}

/// Whether a command can be found on this machine.
inline bool has_command(const std::string& name) {
    return run_program({"sh", "-c", "command -v " + name}).code == 0;
}

} // namespace tolva::support
