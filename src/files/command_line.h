#pragma once

#include <string>
#include <vector>

namespace tolva::files {

/// What a program of the command line gets from its caller, alike on every system: the words it was called
/// with, in UTF-8, and standard streams that pass on each byte as it is (Windows' own would change line ends
/// and stop at some bytes). Made first thing in `main`; there, a console shows UTF-8 while this lives.
class CommandLine {
  public:
    CommandLine(int argc, char** argv);
    ~CommandLine();
    CommandLine(const CommandLine&) = delete;
    CommandLine& operator=(const CommandLine&) = delete;

    /// Without the program's own name.
    const std::vector<std::string>& words() const { return words_; }

  private:
    std::vector<std::string> words_;
    /// The code page that the console had; 0 where there is nothing to put back.
    [[maybe_unused]] unsigned console_code_page_ = 0;
};

} // namespace tolva::files
