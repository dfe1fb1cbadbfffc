#include "jet/stored_content.h"

#include "basic/run_time_error.h"
#include "jet/damage.h"
#include "jet/format.h"
#include "jet/journal.h"

namespace tolva::jet {
ContentLock::ContentLock(files::File& file, files::Sharing sharing) : file_(file) {
    if (!file.lock_content(sharing))
        throw basic::RunTimeError(3045, file.path());
}

std::unique_ptr<files::File> open_stored(files::FileSystem& disk, const std::string& path,
                                         files::OpenMode mode) {
    try {
        return disk.open(path, mode);
    } catch (const basic::RunTimeError& error) {
        const std::string found = disk.resolve(path);
        if (error.number() == 53 || error.number() == 76)
            throw basic::RunTimeError(3024, found);
        if (error.number() == 70)
            throw basic::RunTimeError(3045, found);
        throw;
    }
}

void check_length(const std::string& path, std::uint64_t length) {
    if (length > jet4_format.longest_file)
        damaged(path, 0, "the file is longer than 2 GB");
}

StoredContent::StoredContent(files::FileSystem& disk, const std::string& path)
    : disk_(disk), file_(open_stored(disk, disk.behind_links(path), files::OpenMode::read)),
      lock_(*file_, files::Sharing::shared) {}

files::Bytes StoredContent::read() const {
    const std::uint64_t size = file_->size();
    check_length(path(), size);
    files::Bytes content(size);
    content.resize(file_->read(0, content));
    const Journal journal(disk_, path());
    if (journal.exists() && journal.inspect(*file_) == Journal::State::whole)
        journal.roll_back(content);
    return content;
}

} // namespace tolva::jet
