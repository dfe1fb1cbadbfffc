#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "basic/run_time_error.h"
#include "jet/database.h"
#include "jet/file_pager.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t max_size);

namespace {

using namespace tolva;

const std::string path = "fuzz.mdb", journal_path = "fuzz.mdb-journal";

// Where a journal keeps what seals it.
constexpr std::size_t salt_at = 48, header_sum_at = 460, header_size = 468;
constexpr std::size_t record_sum_at = 4, record_sealed_at = 12, record_head = 44;
constexpr std::size_t record_size = record_head + jet::Journal::block_size;

files::Bytes small_file() {
    const auto disk = files::make_memory_disk();
    jet::ColumnSchema column;
    column.name = "a";
    column.type = jet::ColumnType::long_integer;
    jet::Database::create(*disk, path, {{"t", {column}, {}}});
    return files::read_whole(*disk, path);
}

std::uint64_t number(const std::uint8_t* at, std::size_t size) {
    std::uint64_t value = 0;
    for (std::size_t i = size; i-- > 0;)
        value = value << 8 | at[i];
    return value;
}

void put(std::uint8_t* at, std::uint64_t value) {
    for (std::size_t i = 0; i < 8; ++i, value >>= 8)
        at[i] = static_cast<std::uint8_t>(value);
}

/// Makes every checksum right, so that what lies behind them is looked at too.
void seal(files::Bytes& journal) {
    if (journal.size() < header_size)
        return;
    std::memcpy(journal.data(), "TOLVA journal 4\n", 16);
    const std::uint64_t salt = number(journal.data() + salt_at, 8);
    for (std::size_t at = jet::Journal::block_size; at + record_size <= journal.size(); at += record_size)
        put(journal.data() + at + record_sum_at,
            jet::Journal::checksum(salt + number(journal.data() + at, 4),
                                   {journal.data() + at + record_sealed_at, record_size - record_sealed_at}));
    put(journal.data() + header_sum_at, jet::Journal::checksum(salt, {journal.data(), header_sum_at}));
}

/// What an opening says, and what it leaves of the file.
struct Outcome {
    int error = 0;
    files::Bytes file;
};

Outcome open(files::FileSystem& disk, jet::FilePager::Access access) {
    Outcome outcome;
    try {
        const jet::FilePager pager(disk, path, access);
        for (jet::PageNumber page = 0; page < pager.page_count(); ++page) {
            const jet::PageRef content = pager.read(page);
            outcome.file.insert(outcome.file.end(), content->begin(), content->end());
        }
    } catch (const basic::RunTimeError& error) {
        outcome.error = error.number();
        if (error.number() == 3049 && error.text().find(path) == std::string::npos)
            std::abort();
    }
    return outcome;
}

/// A journal as a commit writes it, of every block of the file that `blocks` has a bit for.
files::Bytes genuine_journal(unsigned int blocks) {
    const auto disk = files::make_memory_disk();
    const files::Bytes file = small_file();
    const auto database = disk->open(path, files::OpenMode::create);
    database->write(0, file);
    jet::Journal::Change change;
    for (std::uint32_t block = 0; block < file.size() / jet::Journal::block_size; ++block)
        if (blocks >> block % 32 & 1)
            change.blocks.push_back(block);
    change.new_length = file.size();
    change.apply = [](std::uint32_t, std::span<std::uint8_t> content) { content[0] ^= 1; };
    jet::Journal(*disk, path).write(*database, change);
    return files::read_whole(*disk, journal_path);
}

} // namespace

/// Goes out from a genuine journal now and then: nobody guesses one.
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t max_size,
                                               unsigned int seed) {
    if (seed % 8 != 0)
        return LLVMFuzzerMutate(data, size, max_size);
    const files::Bytes journal = genuine_journal(seed / 16);
    if (journal.size() + 1 > max_size)
        return LLVMFuzzerMutate(data, size, max_size);
    data[0] = static_cast<std::uint8_t>(seed >> 3 & 1);
    std::copy(journal.begin(), journal.end(), data + 1);
    // One place in its header or in a record's head, or none.
    const std::size_t record = seed / 64 % (journal.size() / record_size + 1);
    const std::size_t at =
        record == 0 ? 1 + seed / 256 % header_size
                    : 1 + jet::Journal::block_size + (record - 1) * record_size + seed / 256 % record_head;
    if (seed % 32 != 0 && at < journal.size())
        data[at] = static_cast<std::uint8_t>(seed >> 20);
    return journal.size() + 1;
}

/// A journal beside a file. The first byte tells whether its checksums are made right.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const files::Bytes file = small_file();
    if (size == 0)
        return 0;
    files::Bytes journal(data + 1, data + size);
    if (data[0] & 1)
        seal(journal);
    const auto disk = files::make_memory_disk();
    disk->open(path, files::OpenMode::create)->write(0, file);
    disk->open(journal_path, files::OpenMode::create)->write(0, journal);

    // A reader changes nothing, and sees what a writer makes of it.
    const Outcome reader = open(*disk, jet::FilePager::Access::read);
    if (files::read_whole(*disk, path) != file || files::read_whole(*disk, journal_path) != journal)
        std::abort();
    const Outcome writer = open(*disk, jet::FilePager::Access::write);
    if (writer.error != reader.error || writer.file != reader.file)
        std::abort();
    // Refused over its journal, the file is untouched.
    if (disk->exists(journal_path) && files::read_whole(*disk, path) != file)
        std::abort();
    return 0;
}
