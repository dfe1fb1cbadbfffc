#include "jet/journal.h"

#include <algorithm>
#include <cstring>
#include <random>
#include <span>

#include "files/path.h"
#include "jet/bytes.h"
#include "jet/damage.h"

namespace tolva::jet {
namespace {

constexpr char magic[] = "TOLVA journal 1\n"; // 16 characters
constexpr std::size_t magic_size = sizeof magic - 1;
constexpr std::size_t header_size = magic_size + 8 + 8 + 4 + 8;
constexpr std::size_t record_head = 4 + 8;
constexpr std::size_t record_size = record_head + Journal::block_size;

/// Mixes eight bytes at a time; the salt makes records of an older journal in reused device blocks fail.
std::uint64_t checksum(std::uint64_t salt, std::span<const std::uint8_t> bytes) {
    constexpr std::uint64_t factor = 0x9e37'79b9'7f4a'7c15;
    std::uint64_t sum = salt ^ (bytes.size() * factor);
    std::size_t at = 0;
    const auto mix = [&](std::uint64_t word) {
        sum = (sum ^ word) * factor;
        sum ^= sum >> 29;
    };
    for (; at + 8 <= bytes.size(); at += 8)
        mix(get64(bytes.data() + at));
    std::uint64_t rest = 0;
    for (; at < bytes.size(); ++at)
        rest = rest << 8 | bytes[at];
    mix(rest);
    return sum ^ sum >> 32;
}

std::uint64_t new_salt() {
    std::random_device source;
    return static_cast<std::uint64_t>(source()) << 32 | source();
}

} // namespace

Journal::Journal(files::FileSystem& disk, const std::string& database_path)
    : disk_(disk), path_(database_path + "-journal"),
      folder_(files::folder_of(files::with_slashes(database_path))) {}

bool Journal::exists() const {
    return disk_.exists_exactly(path_);
}

std::unique_ptr<files::File> Journal::open() const {
    return disk_.open(path_, files::OpenMode::read);
}

void Journal::write(const files::File& database, const std::vector<std::uint32_t>& blocks) {
    const auto file = disk_.open(path_, files::OpenMode::create);
    file->truncate(0); // what a commit left that failed and could not remove it
    Header header{database.size(), new_salt(), static_cast<std::uint32_t>(blocks.size())};

    files::Bytes batch;
    constexpr std::size_t batch_limit = 64 * record_size;
    std::uint64_t written = block_size;
    const auto flush = [&] {
        file->write(written, batch);
        written += batch.size();
        batch.clear();
    };
    for (const std::uint32_t number : blocks) {
        batch.resize(batch.size() + record_size);
        std::uint8_t* record = batch.data() + batch.size() - record_size;
        const std::span<std::uint8_t> content(record + record_head, block_size);
        const std::size_t got = database.read(std::uint64_t{number} * block_size, content);
        std::fill(content.begin() + static_cast<std::ptrdiff_t>(got), content.end(), std::uint8_t{0});
        put32(record, number);
        put64(record + 4, checksum(header.salt + number, content));
        if (batch.size() >= batch_limit)
            flush();
    }
    flush();
    file->sync();

    files::Bytes head(block_size);
    std::memcpy(head.data(), magic, magic_size);
    put64(head.data() + magic_size, header.database_length);
    put64(head.data() + magic_size + 8, header.salt);
    put32(head.data() + magic_size + 16, header.blocks);
    put64(head.data() + magic_size + 20, checksum(header.salt, std::span(head.data(), header_size - 8)));
    file->write(0, head);
    file->sync();
    disk_.sync_folder(folder_);
}

bool Journal::read_header(const files::File& file, Header& header) const {
    files::Bytes head(header_size);
    if (file.read(0, head) != head.size())
        return false;
    if (std::memcmp(head.data(), magic, magic_size) != 0)
        return false;
    header.database_length = get64(head.data() + magic_size);
    header.salt = get64(head.data() + magic_size + 8);
    header.blocks = get32(head.data() + magic_size + 16);
    return get64(head.data() + magic_size + 20) ==
           checksum(header.salt, std::span(head.data(), header_size - 8));
}

std::uint32_t Journal::read_record(const files::File& file, const Header& header, std::uint32_t place,
                                   files::Bytes& block) const {
    std::uint8_t head[record_head];
    const std::uint64_t at = block_size + std::uint64_t{place} * record_size;
    block.resize(block_size);
    if (file.read(at, head) != record_head || file.read(at + record_head, block) != block_size)
        damaged(path_, place, "the journal ends before this record does");
    const std::uint32_t number = get32(head);
    if (get64(head + 4) != checksum(header.salt + number, block) ||
        std::uint64_t{number} * block_size >= header.database_length)
        damaged(path_, place, "this record of the journal does not agree with its checksum");
    return number;
}

bool Journal::whole() {
    const auto file = open();
    Header header;
    if (!read_header(*file, header))
        return false;
    files::Bytes block;
    for (std::uint32_t place = 0; place < header.blocks; ++place)
        read_record(*file, header, place, block);
    return true;
}

void Journal::roll_back(files::File& database) {
    const auto file = open();
    Header header;
    if (!read_header(*file, header))
        damaged(path_, 0, "the journal's header is gone");
    files::Bytes block;
    for (std::uint32_t place = 0; place < header.blocks; ++place) {
        const std::uint64_t at = std::uint64_t{read_record(*file, header, place, block)} * block_size;
        const std::uint64_t size = std::min<std::uint64_t>(block_size, header.database_length - at);
        database.write(at, std::span(block.data(), size));
    }
    if (database.size() != header.database_length)
        database.truncate(header.database_length);
    database.sync();
}

Journal::Image Journal::image() {
    const auto file = open();
    Header header;
    if (!read_header(*file, header))
        damaged(path_, 0, "the journal's header is gone");
    Image image{header.database_length, {}};
    files::Bytes block;
    for (std::uint32_t place = 0; place < header.blocks; ++place) {
        const std::uint32_t number = read_record(*file, header, place, block);
        image.blocks.emplace_back(number, block);
    }
    return image;
}

void Journal::remove() {
    if (exists())
        disk_.remove(path_);
}

void Journal::sync_removal() {
    disk_.sync_folder(folder_);
}

} // namespace tolva::jet
