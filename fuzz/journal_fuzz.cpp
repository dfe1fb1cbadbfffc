#include <cstdlib>
#include <cstring>

#include "basic/run_time_error.h"
#include "jet/database.h"
#include "jet/file_pager.h"

namespace {

using namespace tolva;

const std::string path = "fuzz.mdb", journal_path = "fuzz.mdb-journal";

// Where a journal keeps what seals it.
constexpr std::size_t salt_at = 40, header_sum_at = 52, header_size = 60;
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
    std::memcpy(journal.data(), "TOLVA journal 2\n", 16);
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

} // namespace

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
