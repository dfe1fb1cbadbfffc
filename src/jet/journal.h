#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "files/file_system.h"

namespace tolva::jet {

/// The rollback journal of one file: the blocks that a commit is about to overwrite, as they stood before it.
/// It lies beside the file as "<name>-journal" and exists only while a commit runs. docs/durability.md tells
/// the order of all writes.
///
/// Layout: one block of header, then records of block number, checksum and block. The header is written last,
/// when every record has reached the device, so a journal with a good header is whole.
class Journal {
  public:
    /// Blocks, not pages: a device may tear what it writes at this grain, and a smaller page's neighbour with
    /// it.
    static constexpr std::size_t block_size = 4096;

    Journal(files::FileSystem& disk, const std::string& database_path);

    bool exists() const;

    /// Writes a whole journal of `blocks` (ascending numbers) of `database` and makes it durable. When it
    /// fails nothing of the database has been touched.
    void write(const files::File& database, const std::vector<std::uint32_t>& blocks);

    /// Whether there is a whole journal. Error 3049 when its header is whole but a record is not: then the
    /// file cannot be put back.
    bool whole();

    /// Puts back what the journal holds, the file's length included, and makes that durable. May be cut short
    /// and done again any number of times.
    void roll_back(files::File& database);

    /// The blocks and the length as they would be put back, for a reader that may not write.
    struct Image {
        std::uint64_t length = 0;
        std::vector<std::pair<std::uint32_t, files::Bytes>> blocks;
    };
    Image image();

    /// Ends the commit (or its undoing): the journal goes, for good once `sync_removal` returns.
    void remove();
    void sync_removal();

  private:
    struct Header {
        std::uint64_t database_length = 0;
        std::uint64_t salt = 0;
        std::uint32_t blocks = 0;
    };

    std::unique_ptr<files::File> open() const;
    bool read_header(const files::File& file, Header& header) const;
    /// The block of one record, checked. `place` counts records.
    std::uint32_t read_record(const files::File& file, const Header& header, std::uint32_t place,
                              files::Bytes& block) const;

    files::FileSystem& disk_;
    std::string path_;
    std::string folder_;
};

} // namespace tolva::jet
