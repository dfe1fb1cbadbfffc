#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "files/file_system.h"

namespace tolva::jet {

/// The rollback journal of one file: the blocks that a commit is about to overwrite, as they stood before it.
/// It lies beside the file as "<name>-journal" and tells of something only while a commit runs. Between the
/// commits of an open file it stays, blank: to make and remove a file for each takes a device longer than the
/// rest of the commit. docs/durability.md tells the order of all writes.
///
/// Layout: one block of header, then records of block number, checksum, sums of what the block becomes, and
/// the block. The header is written last. Where the commit overwrites few blocks, the header names them and
/// has a sum of what they held, and goes to the device together with the records: a record that is missing
/// then is of no account as long as the file holds what that sum says. Else every record has reached the
/// device ahead of the header, so a journal with a good header is whole.
class Journal {
  public:
    /// Blocks, not pages: a device may tear what it writes at this grain, and a smaller page's neighbour with
    /// it.
    static constexpr std::size_t block_size = 4096;
    /// The least that a device writes whole.
    static constexpr std::size_t sector_size = 512;

    Journal(files::FileSystem& disk, const std::string& database_path);

    bool exists() const;

    /// What a commit is about to do to a file.
    struct Change {
        std::vector<std::uint32_t> blocks; ///< those that it overwrites, ascending
        std::uint64_t new_length = 0;
        /// Makes a block's old content its new one.
        std::function<void(std::uint32_t block, std::span<std::uint8_t> content)> apply;
    };
    /// Writes a whole journal of a change of `database` and makes it durable. When it fails nothing of the
    /// database has been touched. Between two calls nobody but the caller writes to the file, and nothing but
    /// the changes told here.
    void write(const files::File& database, const Change& change);

    enum class State {
        never_began, ///< its commit had not begun to write to the file
        whole,       ///< the file is to be put back
    };
    /// Error 3049 when the journal is neither, or does not belong to the file as it stands: then nothing must
    /// be touched.
    State inspect(const files::File& database) const;

    /// Puts back what the journal holds, the file's length included, and makes that durable. May be cut short
    /// and done again any number of times.
    void roll_back(files::File& database) const;

    /// Puts back what the journal holds in a copy of the file's content.
    void roll_back(files::Bytes& content) const;

    /// Ends the commit: the journal tells of nothing any more, for good once `sync_end` returns. It is
    /// blanked and kept, or removed where it is long or can't be blanked.
    void end();
    void sync_end();
    /// Whether a blank journal is kept for the next commit.
    bool is_kept() const { return kept_; }

    /// The journal goes; a power cut may bring it back.
    void remove();
    /// The journal goes, and the device knows that.
    void remove_for_good();

    /// Of a header, a record or a stretch of the file. The salt makes what an older journal left in reused
    /// device blocks fail.
    static std::uint64_t checksum(std::uint64_t salt, std::span<const std::uint8_t> bytes);

  private:
    /// Sums of blocks as they were when last read.
    using BlockSums = std::unordered_map<std::uint32_t, std::uint64_t>;
    struct Header {
        std::uint64_t old_length = 0, new_length = 0;
        std::uint64_t rest_sum = 0; ///< of blocks that the commit leaves alone
        std::uint64_t old_sum = 0;  ///< of those that it overwrites, as they were
        std::uint64_t salt = 0;
        std::uint32_t blocks = 0;
        std::vector<std::uint32_t> named; ///< those blocks, where they are few; else none
    };
    struct Record {
        std::uint32_t block = 0;
        std::vector<std::uint32_t> new_sums; ///< of each sector, as the commit makes it
        files::Bytes content;
    };

    /// Whether the file is what it was ahead of the commit, as far as the header alone can tell: false where
    /// it names no blocks.
    static bool is_untouched(const files::File& database, const Header& header);
    static std::uint64_t sum_of_rest(const files::File& database, const Header& header,
                                     const std::vector<std::uint32_t>& changed, BlockSums& known);
    std::unique_ptr<files::File> open() const;
    void start();
    void write_header(files::File& file, const Header& header) const;
    /// Nothing where the place of the header is blank; error 3049 for a header that is none.
    bool read_header(const files::File& file, Header& header) const;
    Header whole_header(const files::File& file) const;
    /// One record, whose `place` counts records. Says what is wrong with it; nothing where it is whole.
    std::string read_record(const files::File& file, const Header& header, std::uint32_t place,
                            Record& record) const;
    /// The same; error 3049 where it is not whole.
    Record whole_record(const files::File& file, const Header& header, std::uint32_t place) const;
    bool is_whole(const files::File& file, const Header& header) const;
    void check_sectors(const files::File& database, const Header& header, const Record& record) const;

    files::FileSystem& disk_;
    std::string path_;
    std::string folder_;
    /// A writer's: open from the start of a commit to its end, and while the journal is kept.
    std::unique_ptr<files::File> file_;
    /// Whether the journal is blank, and the device knows that and its name.
    bool kept_ = false;
    /// Of the blocks that commits so far left alone: each is read for its first commit only.
    BlockSums rest_;
};

} // namespace tolva::jet
