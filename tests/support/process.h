#pragma once

#include <memory>
#include <string>
#include <vector>

namespace tolva::support {

/// Files that stand for a program's standard streams; a stream without one is empty, or its output is lost.
struct Streams {
    std::string in, out, err;
};

/// A program that runs beside the test. Words reach it as they are, whatever they hold; a name without a
/// slash is looked for where the system looks for commands. This is the one place of the tests that knows how
/// each system starts programs.
class Process {
  public:
    /// What a program's end says that could not be started, as in a shell.
    static constexpr int not_found = 127;
    /// What it says of a program that `kill` ended.
    static constexpr int killed = -1;

    Process(const std::vector<std::string>& words, const Streams& streams);
    /// Kills what still runs.
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    bool running();
    /// At once and without a word to the program.
    void kill();
    /// Its exit code, when it has ended.
    int wait();

  private:
    struct System;
    std::unique_ptr<System> system_;
};

} // namespace tolva::support
