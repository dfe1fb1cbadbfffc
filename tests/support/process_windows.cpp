#ifdef _WIN32

#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

#include "support/process.h"

namespace tolva::support {
namespace {

constexpr UINT killed_here = 0xDEAD;

std::wstring wide(const std::string& text) {
    const int length = static_cast<int>(text.size());
    std::wstring out(text.size(), L'\0'); // never more than the bytes
    out.resize(
        static_cast<std::size_t>(::MultiByteToWideChar(CP_UTF8, 0, text.data(), length, out.data(), length)));
    return out;
}

/// A word as the program's own start takes it apart again: backslashes count only ahead of a quotation mark.
std::wstring quoted(const std::wstring& word) {
    std::wstring out = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t c : word) {
        if (c == L'"')
            out.append(backslashes + 1, L'\\');
        backslashes = c == L'\\' ? backslashes + 1 : 0;
        out += c;
    }
    out.append(backslashes, L'\\');
    return out + L'"';
}

/// A stream that the program inherits.
HANDLE stream(const std::string& file, bool for_reading) {
    SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    const std::wstring name = file.empty() ? L"NUL" : wide(file);
    return ::CreateFileW(name.c_str(), for_reading ? GENERIC_READ : GENERIC_WRITE,
                         FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, &inherited,
                         for_reading ? OPEN_EXISTING : CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
}

} // namespace

struct Process::System {
    HANDLE handle = nullptr;
};

Process::Process(const std::vector<std::string>& words, const Streams& streams)
    : system_(std::make_unique<System>()) {
    std::wstring line;
    for (const std::string& word : words)
        line += (line.empty() ? L"" : L" ") + quoted(wide(word));
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = stream(streams.in, true);
    start.hStdOutput = stream(streams.out, false);
    start.hStdError = stream(streams.err, false);
    PROCESS_INFORMATION made{};
    if (::CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &made)) {
        system_->handle = made.hProcess;
        ::CloseHandle(made.hThread);
    }
    for (const HANDLE handle : {start.hStdInput, start.hStdOutput, start.hStdError})
        ::CloseHandle(handle);
}

Process::~Process() {
    kill();
    wait();
    if (system_->handle)
        ::CloseHandle(system_->handle);
}

bool Process::running() {
    return system_->handle && ::WaitForSingleObject(system_->handle, 0) == WAIT_TIMEOUT;
}

void Process::kill() {
    if (running())
        ::TerminateProcess(system_->handle, killed_here);
}

int Process::wait() {
    if (!system_->handle)
        return not_found;
    ::WaitForSingleObject(system_->handle, INFINITE);
    DWORD code = 0;
    ::GetExitCodeProcess(system_->handle, &code);
    return code == killed_here ? killed : static_cast<int>(code);
}

} // namespace tolva::support

#endif
