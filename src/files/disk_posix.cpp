#ifndef _WIN32

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "files/file_system.h"
#include "files/locks.h"
#include "files/path.h"

namespace tolva::files {
namespace {

std::string reason(int error) {
    return std::strerror(error);
}

/// A descriptor that closes itself.
class Descriptor {
  public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() {
        if (number_ >= 0)
            ::close(number_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int number() const { return number_; }

  private:
    int number_;
};

class PosixFile final : public File {
  public:
    PosixFile(std::string path, int descriptor) : path_(std::move(path)), descriptor_(descriptor) {}

    const std::string& path() const override { return path_; }

    std::uint64_t size() const override {
        struct stat status;
        if (::fstat(descriptor_.number(), &status) != 0)
            fail(75, path_, reason(errno));
        return static_cast<std::uint64_t>(status.st_size);
    }

    std::size_t read(std::uint64_t offset, std::span<std::uint8_t> out) const override {
        std::size_t done = 0;
        while (done < out.size()) {
            const ssize_t got = ::pread(descriptor_.number(), out.data() + done, out.size() - done,
                                        static_cast<off_t>(offset + done));
            if (got < 0 && errno == EINTR)
                continue;
            if (got < 0)
                fail(75, path_, reason(errno));
            if (got == 0)
                break;
            done += static_cast<std::size_t>(got);
        }
        return done;
    }

    void write(std::uint64_t offset, std::span<const std::uint8_t> bytes) override {
        std::size_t done = 0;
        while (done < bytes.size()) {
            const ssize_t put = ::pwrite(descriptor_.number(), bytes.data() + done, bytes.size() - done,
                                         static_cast<off_t>(offset + done));
            if (put < 0 && errno == EINTR)
                continue;
            if (put < 0)
                fail(75, path_, reason(errno));
            done += static_cast<std::size_t>(put);
        }
    }

    void truncate(std::uint64_t size) override {
        while (::ftruncate(descriptor_.number(), static_cast<off_t>(size)) != 0)
            if (errno != EINTR)
                fail(75, path_, reason(errno));
    }

    void sync() override {
        // The content and the length are what counts; when the file was changed is not worth a wait.
        // Not retried: after a failed sync the system may have dropped what it could not write.
        if (::fdatasync(descriptor_.number()) != 0)
            fail(75, path_, reason(errno));
    }

    bool lock() override { return set_lock(F_WRLCK, claim_byte); }
    void unlock() override {
        if (!set_lock(F_UNLCK, claim_byte))
            fail(75, path_, reason(errno));
    }

    bool lock_content(Sharing sharing) override {
        return keep_trying(
            [&] { return set_lock(sharing == Sharing::shared ? F_RDLCK : F_WRLCK, content_byte); });
    }
    void unlock_content() noexcept override {
        struct flock range = range_of(F_UNLCK, content_byte, 1);
        ::fcntl(descriptor_.number(), F_OFD_SETLK, &range);
    }

    bool locked_by_strangers() const override {
        struct flock range = range_of(F_WRLCK, 0, static_cast<off_t>(claim_byte));
        if (::fcntl(descriptor_.number(), F_OFD_GETLK, &range) != 0)
            fail(75, path_, reason(errno));
        if (range.l_type != F_UNLCK)
            return true;
        // The other kind of lock, on the file as a whole. It is looked for and not kept: some file systems
        // make it one of the first kind, which would then stand in the way of our own.
        if (::flock(descriptor_.number(), LOCK_SH | LOCK_NB) != 0)
            return errno == EWOULDBLOCK;
        ::flock(descriptor_.number(), LOCK_UN);
        return false;
    }

    bool is_in_place() const override {
        struct stat open, named;
        return ::fstat(descriptor_.number(), &open) == 0 && ::stat(path_.c_str(), &named) == 0 &&
               open.st_dev == named.st_dev && open.st_ino == named.st_ino;
    }

  private:
    static struct flock range_of(short type, off_t start, off_t length) {
        struct flock range {};
        range.l_type = type;
        range.l_whence = SEEK_SET;
        range.l_start = start;
        range.l_len = length;
        return range;
    }

    /// These locks belong to the open file, not to the process: two openings within one process see each
    /// other, and closing one leaves the other's alone.
    bool set_lock(short type, std::uint64_t byte) {
        struct flock range = range_of(type, static_cast<off_t>(byte), 1);
        while (::fcntl(descriptor_.number(), F_OFD_SETLK, &range) != 0) {
            if (errno == EAGAIN || errno == EACCES)
                return false;
            if (errno != EINTR)
                fail(75, path_, reason(errno));
        }
        return true;
    }

    std::string path_;
    Descriptor descriptor_;
};

class PosixDisk final : public FileSystem, private CaseBlindLookup {
  public:
    std::unique_ptr<File> open(const std::string& path, OpenMode mode) override {
        const std::string found = resolve(path);
        int flags = O_CLOEXEC;
        switch (mode) {
        case OpenMode::read:
            flags |= O_RDONLY;
            break;
        case OpenMode::read_write:
        case OpenMode::sole_write:
            flags |= O_RDWR;
            break;
        case OpenMode::create:
            flags |= O_RDWR | O_CREAT;
            break;
        case OpenMode::create_new:
            flags |= O_RDWR | O_CREAT | O_EXCL;
            break;
        }
        // Nothing is opened that would wait for a second party, and a folder is no file.
        struct stat status;
        if (::stat(found.c_str(), &status) == 0 && !S_ISREG(status.st_mode))
            fail(75, found, "not a file");
        const int descriptor = ::open(found.c_str(), flags, 0666);
        if (descriptor < 0)
            fail_on(found, errno);
        return std::make_unique<PosixFile>(found, descriptor);
    }

    bool exists(const std::string& path) const override { return exact(resolve(path)); }
    bool exists_exactly(const std::string& path) const override { return exact(with_slashes(path)); }

    void remove(const std::string& path) override {
        const std::string found = resolve(path);
        if (::unlink(found.c_str()) != 0)
            fail_on(found, errno);
    }

    void rename(const std::string& from, const std::string& to) override {
        const std::string source = resolve(from);
        if (::rename(source.c_str(), find_folder(with_slashes(to)).c_str()) != 0)
            fail_on(source, errno);
    }

    void make_folder(const std::string& path) override {
        const std::string found = resolve(path);
        if (::mkdir(found.c_str(), 0777) != 0) {
            if (errno == EEXIST)
                fail(75, found, reason(EEXIST));
            fail_on(found, errno);
        }
    }

    std::vector<std::string> list(const std::string& folder) const override {
        const std::string found = resolve(folder);
        std::vector<std::string> names;
        if (!read_folder(found, names))
            fail(76, found, reason(errno));
        std::sort(names.begin(), names.end());
        return names;
    }

    void sync_folder(const std::string& folder) override {
        const std::string found = folder.empty() ? "." : resolve(folder);
        const Descriptor descriptor(::open(found.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        if (descriptor.number() < 0)
            fail_on(found, errno);
        // Some file systems know no sync of a folder and say so; there the order is theirs to keep.
        if (::fsync(descriptor.number()) != 0 && errno != EINVAL)
            fail(75, found, reason(errno));
    }

    std::string resolve(const std::string& path) const override { return find(with_slashes(path)); }

    std::string behind_links(const std::string& path) const override {
        const std::string found = resolve(path);
        struct stat status;
        if (::lstat(found.c_str(), &status) != 0 || !S_ISLNK(status.st_mode))
            return found;
        const std::unique_ptr<char, decltype(&std::free)> real(::realpath(found.c_str(), nullptr),
                                                               &std::free);
        return real ? real.get() : found;
    }

  private:
    bool exact(const std::string& path) const override { return ::access(path.c_str(), F_OK) == 0; }

    std::vector<std::string> entries(const std::string& folder) const override {
        std::vector<std::string> names;
        read_folder(folder, names);
        return names;
    }

    static bool read_folder(const std::string& folder, std::vector<std::string>& names) {
        DIR* stream = ::opendir(folder.empty() ? "." : folder.c_str());
        if (!stream)
            return false;
        while (const dirent* entry = ::readdir(stream)) {
            const std::string name = entry->d_name;
            if (name != "." && name != "..")
                names.push_back(name);
        }
        ::closedir(stream);
        return true;
    }

    [[noreturn]] void fail_on(const std::string& path, int error) const {
        const std::string folder = folder_of(path);
        switch (error) {
        case ENOENT:
            fail(folder.empty() || exact(folder) ? 53 : 76, path, reason(error));
        case ENOTDIR:
            fail(76, path, reason(error));
        case EEXIST:
            fail(58, path, reason(error));
        default:
            fail(75, path, reason(error));
        }
    }
};

} // namespace

std::unique_ptr<FileSystem> make_disk() {
    return std::make_unique<PosixDisk>();
}

} // namespace tolva::files

#endif
