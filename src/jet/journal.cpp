#include "jet/journal.h"

#include <algorithm>
#include <cstring>
#include <random>
#include <utility>

#include "basic/run_time_error.h"
#include "files/path.h"
#include "jet/bytes.h"
#include "jet/damage.h"

namespace tolva::jet {
namespace {

constexpr char magic[] = "TOLVA journal 4\n"; // 16 characters
constexpr std::size_t magic_size = sizeof magic - 1;
/// How many blocks a header names: it has to fit into one sector, so that a device writes all of it or
/// nothing.
constexpr std::uint32_t most_named = 100;
/// Both lengths, the sums of the rest and of the old blocks, the salt, the number of records, the names;
/// behind them the header's own sum.
constexpr std::size_t names_at = magic_size + 8 + 8 + 8 + 8 + 8 + 4;
constexpr std::size_t fields_size = names_at + 4 * most_named;
constexpr std::size_t header_size = fields_size + 8;
static_assert(header_size <= Journal::sector_size);

constexpr std::size_t sectors_of_block = Journal::block_size / Journal::sector_size;
/// Block number, checksum of all that follows, sums of the sectors.
constexpr std::size_t record_head = 4 + 8 + 4 * sectors_of_block;
constexpr std::size_t record_size = record_head + Journal::block_size;

/// How many of the blocks that a commit leaves alone are looked at. All of them, in a file of this many.
constexpr std::uint32_t most_rest_blocks = 256;

std::uint64_t new_salt() {
    std::random_device source;
    return static_cast<std::uint64_t>(source()) << 32 | source();
}

/// A longer one is not kept between commits, because of the room that it takes.
constexpr std::uint64_t longest_kept = std::uint64_t{1} << 20;

/// A block of a file; what lies beyond its end is zeros.
files::Bytes read_block(const files::File& file, std::uint32_t block) {
    files::Bytes content(Journal::block_size);
    const std::size_t got = file.read(std::uint64_t{block} * Journal::block_size, content);
    std::fill(content.begin() + static_cast<std::ptrdiff_t>(got), content.end(), std::uint8_t{0});
    return content;
}

std::span<const std::uint8_t> sector(std::span<const std::uint8_t> block, std::size_t number) {
    return block.subspan(number * Journal::sector_size, Journal::sector_size);
}

std::uint32_t sector_sum(std::uint64_t salt, std::span<const std::uint8_t> bytes) {
    return static_cast<std::uint32_t>(Journal::checksum(salt, bytes));
}

/// The commit bytes of page 0, in either version: they change several times during one commit.
bool holds_commit_bytes(std::uint32_t block, std::size_t sector) {
    return block == 0 && (sector == 0x600 / Journal::sector_size || sector == 0xe00 / Journal::sector_size);
}

constexpr std::uint64_t mixing_factor = 0x9e37'79b9'7f4a'7c15;

std::uint64_t mixed(std::uint64_t sum, std::uint64_t word) {
    sum = (sum ^ word) * mixing_factor;
    return sum ^ sum >> 29;
}

} // namespace

/// Mixes eight bytes at a time.
std::uint64_t Journal::checksum(std::uint64_t salt, std::span<const std::uint8_t> bytes) {
    std::uint64_t sum = salt ^ (bytes.size() * mixing_factor);
    std::size_t at = 0;
    for (; at + 8 <= bytes.size(); at += 8)
        sum = mixed(sum, get64(bytes.data() + at));
    std::uint64_t rest = 0;
    for (; at < bytes.size(); ++at)
        rest = rest << 8 | bytes[at];
    sum = mixed(sum, rest);
    return sum ^ sum >> 32;
}

Journal::Journal(files::FileSystem& disk, const std::string& database_path)
    : disk_(disk), path_(database_path + "-journal"),
      folder_(files::folder_of(files::with_slashes(database_path))) {}

bool Journal::exists() const {
    return disk_.exists_exactly(path_);
}

/// A sum over blocks that are not among `changed`, spread over the file's old length.
std::uint64_t Journal::sum_of_rest(const files::File& database, const Header& header,
                                   const std::vector<std::uint32_t>& changed, BlockSums& known) {
    const auto count = static_cast<std::uint32_t>(header.old_length / block_size);
    const std::uint32_t step = std::max<std::uint32_t>(1, (count + most_rest_blocks - 1) / most_rest_blocks);
    if (known.size() > 2 * most_rest_blocks)
        known.clear(); // as a file grows, others are looked at
    std::uint64_t sum = header.salt;
    for (std::uint32_t block = 0; block < count; block += step) {
        if (std::binary_search(changed.begin(), changed.end(), block))
            continue;
        auto found = known.find(block);
        if (found == known.end())
            found = known.emplace(block, checksum(block, read_block(database, block))).first;
        sum = mixed(sum, found->second);
    }
    return sum;
}

std::unique_ptr<files::File> Journal::open() const {
    return disk_.open(path_, files::OpenMode::read);
}

/// Opens the journal for a commit: the one that was kept, if nobody took it away, or a new one.
void Journal::start() {
    if (kept_ && file_->is_in_place())
        return;
    if (exists()) {
        // It must be gone for good before another takes its name: a cut could bring it back.
        remove_for_good();
    }
    kept_ = false;
    file_ = disk_.open(path_, files::OpenMode::create_new);
}

void Journal::write(const files::File& database, const Change& change) {
    start();
    const bool is_new = !std::exchange(kept_, false);
    Header header;
    header.old_length = database.size();
    header.new_length = change.new_length;
    header.salt = new_salt();
    header.blocks = static_cast<std::uint32_t>(change.blocks.size());
    header.rest_sum = sum_of_rest(database, header, change.blocks, rest_);
    header.old_sum = header.salt;
    if (header.blocks <= most_named)
        header.named = change.blocks;
    for (const std::uint32_t block : change.blocks)
        rest_.erase(block);

    // The header's place is taken ahead of the records, blank: filling it later changes nothing but the
    // device's blocks.
    files::Bytes batch(is_new ? block_size : 0);
    constexpr std::size_t batch_limit = 64 * record_size;
    std::uint64_t written = is_new ? 0 : block_size;
    const auto flush = [&] {
        file_->write(written, batch);
        written += batch.size();
        batch.clear();
    };
    for (const std::uint32_t block : change.blocks) {
        files::Bytes content = read_block(database, block);
        header.old_sum = mixed(header.old_sum, checksum(block, content));
        batch.resize(batch.size() + record_size);
        std::uint8_t* record = batch.data() + batch.size() - record_size;
        put32(record, block);
        std::copy(content.begin(), content.end(), record + record_head);
        change.apply(block, content);
        for (std::size_t i = 0; i < sectors_of_block; ++i)
            put32(record + 12 + 4 * i, sector_sum(header.salt, sector(content, i)));
        put64(record + 4, checksum(header.salt + block, std::span(record + 12, record_size - 12)));
        if (batch.size() >= batch_limit)
            flush();
    }
    flush();
    if (header.named.empty())
        file_->sync();

    write_header(*file_, header);
    file_->sync();
    if (is_new)
        disk_.sync_folder(folder_);
}

void Journal::write_header(files::File& file, const Header& header) const {
    files::Bytes bytes(block_size);
    std::uint8_t* at = bytes.data();
    std::memcpy(at, magic, magic_size);
    put64(at + magic_size, header.old_length);
    put64(at + magic_size + 8, header.new_length);
    put64(at + magic_size + 16, header.rest_sum);
    put64(at + magic_size + 24, header.old_sum);
    put64(at + magic_size + 32, header.salt);
    put32(at + magic_size + 40, header.blocks);
    for (std::size_t i = 0; i < header.named.size(); ++i)
        put32(at + names_at + 4 * i, header.named[i]);
    put64(at + fields_size, checksum(header.salt, std::span(at, fields_size)));
    file.write(0, bytes);
}

bool Journal::read_header(const files::File& file, Header& header) const {
    files::Bytes bytes(header_size);
    const std::size_t got = file.read(0, bytes);
    if (std::all_of(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(got),
                    [](std::uint8_t byte) { return byte == 0; }))
        return false;
    const std::uint8_t* at = bytes.data();
    header.old_length = get64(at + magic_size);
    header.new_length = get64(at + magic_size + 8);
    header.rest_sum = get64(at + magic_size + 16);
    header.old_sum = get64(at + magic_size + 24);
    header.salt = get64(at + magic_size + 32);
    header.blocks = get32(at + magic_size + 40);
    if (got != header_size || std::memcmp(at, magic, magic_size) != 0 ||
        get64(at + fields_size) != checksum(header.salt, std::span(at, fields_size)))
        damaged(path_, 0, "this is no journal of ours, or its header is damaged");
    if (header.blocks <= most_named)
        for (std::uint32_t i = 0; i < header.blocks; ++i)
            header.named.push_back(get32(at + names_at + 4 * i));
    return true;
}

Journal::Header Journal::whole_header(const files::File& file) const {
    Header header;
    if (!read_header(file, header))
        damaged(path_, 0, "the journal's header is gone");
    return header;
}

std::string Journal::read_record(const files::File& file, const Header& header, std::uint32_t place,
                                 Record& record) const {
    files::Bytes bytes(record_size);
    if (file.read(block_size + std::uint64_t{place} * record_size, bytes) != record_size)
        return "the journal ends before this record does";
    record.block = get32(bytes.data());
    if (get64(bytes.data() + 4) != checksum(header.salt + record.block, std::span(bytes).subspan(12)) ||
        std::uint64_t{record.block} * block_size >= header.old_length)
        return "this record of the journal does not agree with its checksum";
    record.new_sums.clear();
    for (std::size_t i = 0; i < sectors_of_block; ++i)
        record.new_sums.push_back(get32(bytes.data() + 12 + 4 * i));
    record.content.assign(bytes.begin() + record_head, bytes.end());
    return {};
}

Journal::Record Journal::whole_record(const files::File& file, const Header& header,
                                      std::uint32_t place) const {
    Record record;
    if (const std::string fault = read_record(file, header, place, record); !fault.empty())
        damaged(path_, place + 1, fault); // counted like the header's place
    return record;
}

void Journal::check_sectors(const files::File& database, const Header& header, const Record& record) const {
    const files::Bytes now = read_block(database, record.block);
    for (std::size_t i = 0; i < sectors_of_block; ++i) {
        const auto found = sector(now, i);
        const auto before = sector(record.content, i);
        if (std::equal(found.begin(), found.end(), before.begin()) || holds_commit_bytes(record.block, i) ||
            sector_sum(header.salt, found) == record.new_sums[i])
            continue;
        damaged(database.path(), record.block,
                "holds neither what '" + path_ +
                    "' kept of it nor what was being written: " + "the journal is of another time");
    }
}

bool Journal::is_whole(const files::File& file, const Header& header) const {
    Record record;
    for (std::uint32_t place = 0; place < header.blocks; ++place)
        if (!read_record(file, header, place, record).empty())
            return false;
    return true;
}

bool Journal::is_untouched(const files::File& database, const Header& header) {
    if (header.named.empty() || database.size() != header.old_length)
        return false;
    std::uint64_t sum = header.salt;
    for (const std::uint32_t block : header.named)
        sum = mixed(sum, checksum(block, read_block(database, block)));
    BlockSums as_it_stands;
    return sum == header.old_sum &&
           sum_of_rest(database, header, header.named, as_it_stands) == header.rest_sum;
}

Journal::State Journal::inspect(const files::File& database) const {
    const auto file = open();
    Header header;
    if (!read_header(*file, header) || (!is_whole(*file, header) && is_untouched(database, header)))
        return State::never_began;
    const std::uint64_t length = database.size();
    if (length < header.old_length || length > header.new_length)
        damaged(database.path(), static_cast<std::uint32_t>(length / block_size),
                "the file ends here, which the journal '" + path_ + "' denies: it belongs to another file");
    std::vector<std::uint32_t> blocks;
    for (std::uint32_t place = 0; place < header.blocks; ++place) {
        const Record record = whole_record(*file, header, place);
        blocks.push_back(record.block);
        check_sectors(database, header, record);
    }
    if (blocks.empty() || blocks.front() != 0)
        damaged(path_, 0, "the journal lacks the file's first block");
    if (!std::is_sorted(blocks.begin(), blocks.end()))
        damaged(path_, 0, "the journal's records are out of order");
    BlockSums as_it_stands;
    if (sum_of_rest(database, header, blocks, as_it_stands) != header.rest_sum)
        damaged(database.path(), 0,
                "the rest of the file is not what it was for the journal '" + path_ +
                    "': it belongs to another file or time");
    return State::whole;
}

void Journal::roll_back(files::File& database) const {
    const auto file = open();
    const Header header = whole_header(*file);
    for (std::uint32_t place = 0; place < header.blocks; ++place) {
        const Record record = whole_record(*file, header, place);
        const std::uint64_t at = std::uint64_t{record.block} * block_size;
        const std::uint64_t size = std::min<std::uint64_t>(block_size, header.old_length - at);
        database.write(at, std::span(record.content.data(), size));
    }
    if (database.size() != header.old_length)
        database.truncate(header.old_length);
    database.sync();
}

void Journal::roll_back(files::Bytes& content) const {
    const auto file = open();
    const Header header = whole_header(*file);
    content.resize(header.old_length);
    for (std::uint32_t place = 0; place < header.blocks; ++place) {
        const Record record = whole_record(*file, header, place);
        const std::size_t at = std::size_t{record.block} * block_size;
        std::copy_n(record.content.begin(), std::min(block_size, content.size() - at),
                    content.begin() + static_cast<std::ptrdiff_t>(at));
    }
}

void Journal::end() {
    try {
        if (file_->size() <= longest_kept) {
            file_->write(0, files::Bytes(block_size));
            return;
        }
    } catch (const basic::RunTimeError&) {
        // It goes instead.
    }
    try {
        remove();
    } catch (const basic::RunTimeError&) {
        if (exists())
            throw; // else it is gone whatever the system said
    }
}

void Journal::sync_end() {
    if (!file_) {
        disk_.sync_folder(folder_);
        return;
    }
    file_->sync();
    kept_ = true;
}

void Journal::remove() {
    kept_ = false;
    file_.reset();
    if (exists())
        disk_.remove(path_);
}

void Journal::remove_for_good() {
    remove();
    disk_.sync_folder(folder_);
}

} // namespace tolva::jet
