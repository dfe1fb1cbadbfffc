#include "files/file_system.h"

#include "files/path.h"

namespace tolva::files {

Bytes read_whole(FileSystem& disk, const std::string& path) {
    const auto file = disk.open(path, OpenMode::read);
    Bytes content(file->size());
    content.resize(file->read(0, content));
    return content;
}

void replace_whole(FileSystem& disk, const std::string& path, std::span<const std::uint8_t> content) {
    const std::string target = disk.behind_links(path);
    const std::string beside = target + ".new";
    if (disk.exists_exactly(beside))
        disk.remove(beside); // what an earlier cut left
    try {
        {
            const auto file = disk.open(beside, OpenMode::create_new);
            file->write(0, content);
            file->sync();
        }
        disk.rename(beside, target);
    } catch (...) {
        // The failure that counts is the first; the leftover goes with the next attempt at the latest.
        try {
            if (disk.exists_exactly(beside))
                disk.remove(beside);
        } catch (...) {
        }
        throw;
    }
    disk.sync_folder(folder_of(with_slashes(target)));
}

} // namespace tolva::files
