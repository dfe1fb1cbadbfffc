#ifdef _WIN32

#include "files/windows_text.h"

#include <algorithm>

#include "files/file_system.h"
#include "files/locks.h"
#include "files/path.h"

namespace tolva::files {
namespace {

/// The system's own spelling of a path. One that is longer than its calls take by themselves, counted from
/// the drive or the other machine on, is made whole and marked as long.
std::wstring native(const std::string& path) {
    std::wstring out = wide(path.empty() ? "." : path);
    std::replace(out.begin(), out.end(), L'/', L'\\');
    std::wstring whole(::GetFullPathNameW(out.c_str(), 0, nullptr, nullptr), L'\0');
    whole.resize(::GetFullPathNameW(out.c_str(), static_cast<DWORD>(whole.size()), whole.data(), nullptr));
    constexpr std::size_t longest_plain = MAX_PATH - 14; // room for a short name, as a folder's path needs
    if (whole.size() < longest_plain || whole.compare(0, 4, L"\\\\?\\") == 0)
        return out;
    const bool other_machine = whole.compare(0, 2, L"\\\\") == 0;
    return other_machine ? L"\\\\?\\UNC\\" + whole.substr(2) : L"\\\\?\\" + whole;
}

std::string reason(DWORD error) {
    wchar_t* buffer = nullptr;
    const DWORD length = ::FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM |
                                              FORMAT_MESSAGE_IGNORE_INSERTS,
                                          nullptr, error, 0, reinterpret_cast<wchar_t*>(&buffer), 0, nullptr);
    std::string text =
        length ? narrow(std::wstring(buffer, length)) : "system error " + std::to_string(error);
    if (buffer)
        ::LocalFree(buffer);
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r' || text.back() == '.'))
        text.pop_back();
    return text;
}

/// A handle that closes itself.
class Handle {
  public:
    explicit Handle(HANDLE handle) : handle_(handle) {}
    ~Handle() {
        if (handle_ != INVALID_HANDLE_VALUE)
            ::CloseHandle(handle_);
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    HANDLE get() const { return handle_; }

  private:
    HANDLE handle_;
};

OVERLAPPED at(std::uint64_t offset) {
    OVERLAPPED place{};
    place.Offset = static_cast<DWORD>(offset);
    place.OffsetHigh = static_cast<DWORD>(offset >> 32);
    return place;
}

/// Moves of one call are kept below what its counter holds.
constexpr std::size_t longest_move = std::size_t{1} << 30;

class WindowsFile final : public File {
  public:
    WindowsFile(std::string path, HANDLE handle) : path_(std::move(path)), handle_(handle) {}

    const std::string& path() const override { return path_; }

    std::uint64_t size() const override {
        LARGE_INTEGER bytes;
        if (!::GetFileSizeEx(handle_.get(), &bytes))
            fail(75, path_, reason(::GetLastError()));
        return static_cast<std::uint64_t>(bytes.QuadPart);
    }

    std::size_t read(std::uint64_t offset, std::span<std::uint8_t> out) const override {
        std::size_t done = 0;
        while (done < out.size()) {
            OVERLAPPED place = at(offset + done);
            DWORD got = 0;
            const auto want = static_cast<DWORD>(std::min(out.size() - done, longest_move));
            if (!::ReadFile(handle_.get(), out.data() + done, want, &got, &place)) {
                const DWORD error = ::GetLastError();
                if (error == ERROR_HANDLE_EOF)
                    break;
                fail(75, path_, reason(error));
            }
            if (got == 0)
                break;
            done += got;
        }
        return done;
    }

    void write(std::uint64_t offset, std::span<const std::uint8_t> bytes) override {
        std::size_t done = 0;
        while (done < bytes.size()) {
            OVERLAPPED place = at(offset + done);
            DWORD put = 0;
            const auto want = static_cast<DWORD>(std::min(bytes.size() - done, longest_move));
            if (!::WriteFile(handle_.get(), bytes.data() + done, want, &put, &place) || put == 0)
                fail(75, path_, reason(::GetLastError()));
            done += put;
        }
    }

    void truncate(std::uint64_t size) override {
        LARGE_INTEGER end;
        end.QuadPart = static_cast<LONGLONG>(size);
        if (!::SetFilePointerEx(handle_.get(), end, nullptr, FILE_BEGIN) || !::SetEndOfFile(handle_.get()))
            fail(75, path_, reason(::GetLastError()));
    }

    void sync() override {
        if (!::FlushFileBuffers(handle_.get()))
            fail(75, path_, reason(::GetLastError()));
    }

    bool lock() override {
        // A second lock of a handle's own would be refused like a stranger's.
        if (!claimed_)
            claimed_ = set_lock(claim_byte, 1, LOCKFILE_EXCLUSIVE_LOCK);
        return claimed_;
    }
    void unlock() override {
        if (claimed_ && !clear_lock(claim_byte, 1))
            fail(75, path_, reason(::GetLastError()));
        claimed_ = false;
    }

    bool lock_content(Sharing sharing) override {
        return keep_trying([&] {
            return set_lock(content_byte, 1, sharing == Sharing::shared ? 0 : LOCKFILE_EXCLUSIVE_LOCK);
        });
    }
    void unlock_content() noexcept override { clear_lock(content_byte, 1); }

    bool locked_by_strangers() const override {
        // The system tells of a lock by refusing another.
        if (!set_lock(0, claim_byte, LOCKFILE_EXCLUSIVE_LOCK))
            return true;
        clear_lock(0, claim_byte);
        return false;
    }

  private:
    bool set_lock(std::uint64_t start, std::uint64_t length, DWORD kind) const {
        OVERLAPPED place = at(start);
        if (::LockFileEx(handle_.get(), kind | LOCKFILE_FAIL_IMMEDIATELY, 0, static_cast<DWORD>(length),
                         static_cast<DWORD>(length >> 32), &place))
            return true;
        const DWORD error = ::GetLastError();
        if (error == ERROR_LOCK_VIOLATION || error == ERROR_IO_PENDING)
            return false;
        fail(75, path_, reason(error));
    }
    bool clear_lock(std::uint64_t start, std::uint64_t length) const noexcept {
        OVERLAPPED place = at(start);
        return ::UnlockFileEx(handle_.get(), 0, static_cast<DWORD>(length), static_cast<DWORD>(length >> 32),
                              &place) != 0;
    }

    std::string path_;
    Handle handle_;
    bool claimed_ = false;
};

class WindowsDisk final : public FileSystem {
  public:
    std::unique_ptr<File> open(const std::string& path, OpenMode mode) override {
        const std::string found = resolve(path);
        const DWORD access = mode == OpenMode::read ? GENERIC_READ : GENERIC_READ | GENERIC_WRITE;
        DWORD disposition = OPEN_EXISTING;
        if (mode == OpenMode::create)
            disposition = OPEN_ALWAYS;
        if (mode == OpenMode::create_new)
            disposition = CREATE_NEW;
        const bool alone = mode == OpenMode::sole_write || mode == OpenMode::create_new;
        const DWORD sharing =
            alone ? FILE_SHARE_READ : FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
        const HANDLE handle = ::CreateFileW(native(found).c_str(), access, sharing, nullptr, disposition,
                                            FILE_ATTRIBUTE_NORMAL, nullptr);
        if (handle == INVALID_HANDLE_VALUE)
            fail_on(found, ::GetLastError());
        return std::make_unique<WindowsFile>(found, handle);
    }

    bool exists(const std::string& path) const override {
        return ::GetFileAttributesW(native(with_slashes(path)).c_str()) != INVALID_FILE_ATTRIBUTES;
    }

    bool exists_exactly(const std::string& path) const override {
        // The system itself does not tell letter cases apart; the folder's listing does.
        const std::string slashed = with_slashes(path);
        if (!exists(slashed))
            return false;
        const std::string name = name_of(slashed);
        if (name.empty() || name == "." || name == "..")
            return true;
        const auto names = entries(folder_of(slashed));
        return std::find(names.begin(), names.end(), name) != names.end();
    }

    void remove(const std::string& path) override {
        const std::string found = resolve(path);
        if (!::DeleteFileW(native(found).c_str()))
            fail_on(found, ::GetLastError());
    }

    void rename(const std::string& from, const std::string& to) override {
        const std::string source = resolve(from), target = with_slashes(to);
        move(source, target);
        // Not every system spells a name anew when the file that bears it is replaced; where none bears it,
        // it is as told.
        if (spelled(target) != name_of(target)) {
            move(target, source);
            move(source, target);
        }
    }

    void make_folder(const std::string& path) override {
        const std::string found = resolve(path);
        if (!::CreateDirectoryW(native(found).c_str(), nullptr)) {
            const DWORD error = ::GetLastError();
            if (error == ERROR_ALREADY_EXISTS)
                fail(75, found, reason(error));
            fail_on(found, error);
        }
    }

    std::vector<std::string> list(const std::string& folder) const override {
        const std::string found = resolve(folder);
        const DWORD kind = ::GetFileAttributesW(native(found).c_str());
        if (kind == INVALID_FILE_ATTRIBUTES || !(kind & FILE_ATTRIBUTE_DIRECTORY))
            fail(76, found, "no such folder");
        std::vector<std::string> names = entries(found);
        std::sort(names.begin(), names.end());
        return names;
    }

    void sync_folder(const std::string& folder) override {
        // A folder can be flushed only where the file system lets it be opened for writing; elsewhere its
        // own journal keeps the order of creations and removals.
        const Handle handle(::CreateFileW(native(resolve(folder)).c_str(), GENERIC_WRITE,
                                          FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                          OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
        if (handle.get() != INVALID_HANDLE_VALUE)
            ::FlushFileBuffers(handle.get());
    }

    std::string resolve(const std::string& path) const override {
        // The system finds a name in any letter case; this only spells it as the folder does.
        std::string found = with_slashes(path);
        for (std::size_t end = found.size(); end > 0 && end != std::string::npos;) {
            const std::size_t start = found.rfind('/', end - 1);
            if (start == std::string::npos)
                break;
            if (const std::string name = spelled(found.substr(0, end)); name.size() == end - start - 1)
                found.replace(start + 1, name.size(), name);
            end = start;
        }
        return found;
    }

  private:
    static void move(const std::string& from, const std::string& to) {
        if (!::MoveFileExW(native(from).c_str(), native(to).c_str(),
                           MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
            fail_on(from, ::GetLastError());
    }

    /// The last part of a path as its folder spells it; empty when it is not there.
    static std::string spelled(const std::string& path) {
        if (name_of(path).find_first_of("*?") != std::string::npos)
            return {}; // such a name asks for any that fits
        WIN32_FIND_DATAW entry;
        const HANDLE search = ::FindFirstFileW(native(path).c_str(), &entry);
        if (search == INVALID_HANDLE_VALUE)
            return {};
        ::FindClose(search);
        return narrow(entry.cFileName);
    }

    static std::vector<std::string> entries(const std::string& folder) {
        std::vector<std::string> names;
        WIN32_FIND_DATAW entry;
        const HANDLE search = ::FindFirstFileW(native(join(folder, "*")).c_str(), &entry);
        if (search == INVALID_HANDLE_VALUE)
            return names;
        do {
            const std::string name = narrow(entry.cFileName);
            if (name != "." && name != "..")
                names.push_back(name);
        } while (::FindNextFileW(search, &entry));
        ::FindClose(search);
        return names;
    }

    [[noreturn]] static void fail_on(const std::string& path, DWORD error) {
        switch (error) {
        case ERROR_FILE_NOT_FOUND:
            fail(53, path, reason(error));
        case ERROR_PATH_NOT_FOUND:
        case ERROR_DIRECTORY:
            fail(76, path, reason(error));
        case ERROR_FILE_EXISTS:
        case ERROR_ALREADY_EXISTS:
            fail(58, path, reason(error));
        case ERROR_SHARING_VIOLATION:
            fail(70, path, reason(error));
        default:
            fail(75, path, reason(error));
        }
    }
};

} // namespace

std::unique_ptr<FileSystem> make_disk() {
    return std::make_unique<WindowsDisk>();
}

} // namespace tolva::files

#endif
