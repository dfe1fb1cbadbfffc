#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tolva::files {

using Bytes = std::vector<std::uint8_t>;

/// One open file. Offsets and sizes are bytes. Every failure is a RunTimeError (75 unless told) whose text
/// names the path and the system's reason; nothing is ever half reported.
class File {
  public:
    virtual ~File() = default;

    virtual const std::string& path() const = 0;
    virtual std::uint64_t size() const = 0;

    /// Reads up to `out.size()` bytes; returns how many there were before the file's end.
    virtual std::size_t read(std::uint64_t offset, std::span<std::uint8_t> out) const = 0;

    /// Writes all bytes or fails. Beyond the end the file grows; a gap reads as zeros.
    virtual void write(std::uint64_t offset, std::span<const std::uint8_t> bytes) = 0;
    virtual void truncate(std::uint64_t size) = 0;

    /// Returns when what was written has reached the device.
    virtual void sync() = 0;

    /// Takes the whole file for this process alone, without waiting. The system lets go of the lock when the
    /// file closes, however its process ends. False when another holder has it.
    virtual bool lock() = 0;
    virtual void unlock() = 0;
};

enum class OpenMode {
    read,       ///< must exist
    read_write, ///< must exist; error 75 when the system allows reading only
    create,     ///< read_write, made when absent, kept when present
    create_new, ///< read_write, error 58 when present
};

/// Every touch of a disk goes through here, so that crash tests can stand in for it. Paths are UTF-8 with
/// either slash. On a case-sensitive file system a name that is not there as spelled finds the one entry that
/// differs only in letter case, folder by folder (`resolve`); every operation but `exists_exactly` does so.
class FileSystem {
  public:
    virtual ~FileSystem() = default;

    /// Error 53 when the file is absent, 76 when its folder is.
    virtual std::unique_ptr<File> open(const std::string& path, OpenMode mode) = 0;

    virtual bool exists(const std::string& path) const = 0;
    virtual bool exists_exactly(const std::string& path) const = 0;
    virtual void remove(const std::string& path) = 0;
    /// Takes the place of a file that has the new name. That name is made as spelled: where letter case
    /// counts, beside one that differs in it.
    virtual void rename(const std::string& from, const std::string& to) = 0;
    virtual void make_folder(const std::string& path) = 0;

    /// Names (not paths) in a folder, sorted by byte value.
    virtual std::vector<std::string> list(const std::string& folder) const = 0;

    /// Returns when creations, removals and renames in the folder have reached the device.
    virtual void sync_folder(const std::string& folder) = 0;

    /// The path in this system's own slashes and letter case; as given where nothing is found.
    virtual std::string resolve(const std::string& path) const = 0;
};

/// The disk of this machine.
std::unique_ptr<FileSystem> make_disk();

/// A disk in memory, for tests: same rules, case-insensitive names, nothing survives it.
std::unique_ptr<FileSystem> make_memory_disk();

/// The whole content of a file.
Bytes read_whole(FileSystem& disk, const std::string& path);

/// Replaces a file whole: a new file beside it is written, synced and renamed over it, so that a reader and a
/// cut see either the old content or the new one.
void replace_whole(FileSystem& disk, const std::string& path, std::span<const std::uint8_t> content);

} // namespace tolva::files
