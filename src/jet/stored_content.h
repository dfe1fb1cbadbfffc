#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "files/file_system.h"

namespace tolva::jet {

/// Holds a file's content for a moment; error 3045 when others do not let go of it.
class ContentLock {
  public:
    ContentLock(files::File& file, files::Sharing sharing);
    ~ContentLock() { file_.unlock_content(); }
    ContentLock(const ContentLock&) = delete;
    ContentLock& operator=(const ContentLock&) = delete;

  private:
    files::File& file_;
};

/// A file as its last whole commit left it, for one who only reads: while the object lives no commit begins.
/// A commit that was cut short is undone in what is read, and left for the next writer to undo in the file.
///
/// Readers take the whole content at once and let go of the file, so the program that writes to it never
/// waits for one who prints or thinks.
class StoredContent {
  public:
    /// Errors 3024 and 3045 as Database::open.
    StoredContent(files::FileSystem& disk, const std::string& path);

    const std::string& path() const { return file_->path(); }

    /// Error 3049 when the file is longer than a file of this kind may be, or lies beside a journal that is
    /// not its own.
    files::Bytes read() const;

  private:
    files::FileSystem& disk_;
    std::unique_ptr<files::File> file_;
    ContentLock lock_;
};

/// Error 3049 when a file is longer than one of any version, which is more than memory should be asked for.
void check_length(const std::string& path, std::uint64_t length);

/// Opens a file that must exist, with the engine's errors: 3024 when it is absent, 3045 when another program
/// keeps others out of it.
std::unique_ptr<files::File> open_stored(files::FileSystem& disk, const std::string& path,
                                         files::OpenMode mode);

} // namespace tolva::jet
