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

/// How a lock is held: by any number of readers, or by one who changes.
enum class Sharing { shared, exclusive };

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

    // Two locks, each among those who ask for it (docs/durability.md tells who does). They lie on bytes far
    // beyond any file's end, so they keep nobody from reading, and the system lets go of them when the file
    // closes, however its process ends.

    /// Claims the file as its one writer, without waiting; for a file that was opened for writing. False when
    /// another opening of the file has the claim.
    virtual bool lock() = 0;
    virtual void unlock() = 0;

    /// Takes the content for the moment of a read (shared) or of a change (exclusive; for a file that was
    /// opened for writing). Waits for others to finish theirs, a while; false when they do not.
    virtual bool lock_content(Sharing sharing) = 0;
    virtual void unlock_content() noexcept = 0;

    /// Whether a program that knows nothing of these two has locked the file, or bytes of it.
    virtual bool locked_by_strangers() const = 0;

    /// Whether the path still names this file. Where the system lets go of an open file's name, somebody may
    /// have put another one into its place, or taken it away.
    virtual bool is_in_place() const { return true; }
};

enum class OpenMode {
    read,       ///< must exist
    read_write, ///< must exist; error 75 when the system allows reading only
    sole_write, ///< the same; where the system knows such a thing, others may open it for reading alone
    create,     ///< read_write, made when absent, kept when present
    create_new, ///< sole_write, error 58 when present
};

/// Every touch of a disk goes through here, so that crash tests can stand in for it. Paths are UTF-8 with
/// either slash. On a case-sensitive file system a name that is not there as spelled finds the one entry that
/// differs only in letter case, folder by folder (`resolve`); every operation but `exists_exactly` does so.
class FileSystem {
  public:
    virtual ~FileSystem() = default;

    /// Error 53 when the file is absent, 76 when its folder is, 70 when another program keeps others out.
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

    /// The path with slashes and in the letter case of what is there; as given where nothing is found.
    virtual std::string resolve(const std::string& path) const = 0;
    /// The same, and where a link stands there, the path of the file that it leads to.
    virtual std::string behind_links(const std::string& path) const { return resolve(path); }
};

/// The disk of this machine.
std::unique_ptr<FileSystem> make_disk();

/// A disk in memory, for tests: same rules, case-insensitive names, nothing survives it.
std::unique_ptr<FileSystem> make_memory_disk();

/// The whole content of a file.
Bytes read_whole(FileSystem& disk, const std::string& path);

/// Puts a file whole under exactly this name, letter case included: a new file beside it is written, synced
/// and renamed to it, so that a reader and a cut see either what was there before or the new content. A
/// failure leaves nothing beside it.
void put_whole(FileSystem& disk, const std::string& path, std::span<const std::uint8_t> content);

/// The same for the file that a path finds, in whatever letter case and behind links. Error 75 where the
/// system allows reading that file only.
void replace_whole(FileSystem& disk, const std::string& path, std::span<const std::uint8_t> content);

} // namespace tolva::files
