#include "files/file_system.h"

#include "files/path.h"

namespace tolva::files {

Bytes read_whole(FileSystem& disk, const std::string& path) {
    const auto file = disk.open(path, OpenMode::read);
    Bytes content(file->size());
    content.resize(file->read(0, content));
    return content;
}

void put_whole(FileSystem& disk, const std::string& path, std::span<const std::uint8_t> content) {
    const std::string beside = path + ".new";
    if (disk.exists(beside))
        disk.remove(beside); // what an earlier cut left
    try {
        {
            const auto file = disk.open(beside, OpenMode::create_new);
            file->write(0, content);
            file->sync();
        }
        disk.rename(beside, path);
    } catch (...) {
        // The failure that counts is the first; the leftover goes with the next attempt at the latest.
        try {
            if (disk.exists(beside))
                disk.remove(beside);
        } catch (...) {
        }
        throw;
    }
    disk.sync_folder(folder_of(with_slashes(path)));
}

void replace_whole(FileSystem& disk, const std::string& path, std::span<const std::uint8_t> content) {
    const std::string target = disk.behind_links(path);
    // Not every system's rename minds that the file which it takes the place of may not be written.
    if (disk.exists(target))
        disk.open(target, OpenMode::read_write);
    put_whole(disk, target, content);
}

} // namespace tolva::files
