#ifndef _WIN32

#include "files/command_line.h"

namespace tolva::files {

CommandLine::CommandLine(int argc, char** argv) {
    if (argc > 1)
        words_.assign(argv + 1, argv + argc);
}

CommandLine::~CommandLine() = default;

} // namespace tolva::files

#endif
