#ifdef _WIN32

#include "files/windows_text.h"

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

#include "files/command_line.h"

namespace tolva::files {

CommandLine::CommandLine(int, char**) {
    // What `main` is given has lost every letter that the system's own code page lacks.
    int count = 0;
    if (wchar_t** words = ::CommandLineToArgvW(::GetCommandLineW(), &count)) {
        for (int i = 1; i < count; ++i)
            words_.push_back(narrow(words[i]));
        ::LocalFree(words);
    }
    for (const int stream : {0, 1, 2})
        ::_setmode(stream, _O_BINARY);
    console_code_page_ = ::GetConsoleOutputCP();
    if (console_code_page_ != 0)
        ::SetConsoleOutputCP(CP_UTF8);
}

CommandLine::~CommandLine() {
    if (console_code_page_ != 0)
        ::SetConsoleOutputCP(console_code_page_);
}

} // namespace tolva::files

#endif
