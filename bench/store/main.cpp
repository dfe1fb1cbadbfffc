// The store beside its peers: the same rows, the same work, in one run. See bench/compare.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "dao/database.h"
#include "made_up_rows.h"
#include "peer.h"

namespace {

using namespace tolva;

using Work = std::function<void()>;

double seconds(const Work& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void require(bool holds, const std::string& what) {
    if (!holds) {
        std::fprintf(stderr, "bench_store: %s\n", what.c_str());
        std::exit(1);
    }
}

/// A line of the table: medians of several runs each, taken in turn so that both see the same machine.
void compare(const std::string& name, int runs, const Work& ours, const Work& peer, double per = 1) {
    std::vector<double> our_times, peer_times;
    for (int run = 0; run < runs; ++run) {
        our_times.push_back(seconds(ours) / per);
        peer_times.push_back(seconds(peer) / per);
    }
    const auto median = [](std::vector<double>& times) {
        std::sort(times.begin(), times.end());
        return times[times.size() / 2];
    };
    const double our_time = median(our_times), peer_time = median(peer_times);
    std::printf("%-28s ours=%.6f peer=%.6f ratio=%.2f\n", name.c_str(), our_time, peer_time,
                peer_time / our_time);
    std::fflush(stdout);
}

/// An open listings file.
struct Store {
    explicit Store(const std::string& path)
        : disk(files::make_disk()), engine(*disk, [] { return 2026; }),
          file(engine.Workspaces(0).OpenDatabase(path)) {}

    std::unique_ptr<files::FileSystem> disk;
    dao::DBEngine engine;
    std::unique_ptr<dao::Database> file;
};

long read_all(dao::Database& file) {
    const auto set = file.OpenRecordset("table");
    const std::size_t columns = set->schema().columns.size();
    long rows = 0;
    for (; !set->Eof(); set->MoveNext(), ++rows)
        for (std::size_t column = 0; column < columns; ++column)
            static_cast<void>(set->value(column));
    return rows;
}

/// The most memory that this process had, in megabytes; 0 where the system doesn't tell.
double peak_memory() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;)
        if (word == "VmHWM:") {
            double kilobytes = 0;
            status >> kilobytes;
            return kilobytes / 1024;
        }
    return 0;
}

/// Makes FOLDER/listings.mdb's rows, and the same in FOLDER/listings.db.
void fill(const std::string& folder, int rows) {
    Store store(folder + "/listings.mdb");
    bench::Peer peer(folder + "/listings.db");
    const double filled = seconds([&] {
        const auto set = store.file->OpenRecordset("table");
        for (int id = 1; id <= rows; ++id) {
            set->AddNew();
            bench::write_made_up_row(*set, id);
            set->Update();
        }
        store.engine.commit();
    });
    const double copied = seconds([&] {
        const auto set = store.file->OpenRecordset("table");
        peer.run("pragma synchronous=off");
        peer.run("begin");
        peer.make(set->schema());
        for (; !set->Eof(); set->MoveNext()) {
            jet::Row row;
            for (const jet::ColumnSchema& column : set->schema().columns)
                row.push_back(set->field(column.name).raw());
            peer.add(row);
        }
        peer.run("commit");
    });
    std::printf("%-28s %d rows in %.2f s; copied to SQLite in %.2f s\n", "made", rows, filled, copied);
}

void shell(const std::string& command) {
    require(std::system(command.c_str()) == 0, "this failed: " + command);
}

struct Programs {
    std::string self, tolva_data, mdb_reader;
};

void compare_reading(const std::string& folder, const Programs& programs) {
    const std::string mdb = "'" + folder + "/listings.mdb'", db = "'" + folder + "/listings.db'";
    const std::string null = " >/dev/null";
    const Work read = [&] { shell("'" + programs.self + "' read " + mdb + null); };
    const Work dump = [&] { shell("'" + programs.tolva_data + "' dump " + mdb + " table" + null); };
    compare("read_all/mdb-export", 5, read, [&] { shell("mdb-export " + mdb + " table" + null); });
    if (!programs.mdb_reader.empty())
        compare("read_all/mdb-reader", 3, read,
                [&] { shell("node '" + programs.mdb_reader + "' " + mdb + " table" + null); });
    compare("dump/mdb-export", 5, dump, [&] { shell("mdb-export " + mdb + " table" + null); });
    compare("dump/sqlite", 5, dump,
            [&] { shell("sqlite3 -separator '\t' " + db + " 'select * from t'" + null); });
}

void compare_queries(const std::string& folder, int rows) {
    Store store(folder + "/listings.mdb");
    bench::Peer peer(folder + "/listings.db");

    long ours = 0, theirs = 0;
    compare(
        "like_two_columns", 7,
        [&] {
            const auto set = store.file->OpenRecordset("select first, last from [table] where last like "
                                                       "'*smi*' or first like '*smi*' order by last, first");
            for (ours = 0; !set->Eof(); set->MoveNext(), ++ours) {
                static_cast<void>(set->field("first"));
                static_cast<void>(set->field("last"));
            }
        },
        [&] {
            theirs = static_cast<long>(
                peer.count("select first, last from t where last like '%smi%' or first like '%smi%' "
                           "order by last collate nocase, first collate nocase"));
        });
    require(ours == theirs && ours > 0, "the two queries give different rows");

    compare(
        "search_screen", 7,
        [&] {
            const auto set =
                store.file->OpenRecordset("select * from [table] where (last like '*smi*' or co_last like "
                                          "'*smi*') and city like '**' order by last, first");
            for (ours = 0; !set->Eof(); set->MoveNext(), ++ours)
                for (const char* column : {"id", "last", "first", "city"})
                    static_cast<void>(set->field(column));
        },
        [&] {
            theirs = static_cast<long>(
                peer.count("select id, last, first, city from t where (last like '%smi%' or co_last like "
                           "'%smi%') and city like '%%' order by last collate nocase, first collate nocase"));
        });
    require(ours == theirs && ours > 0, "the two searches give different rows");

    constexpr int lookups = 1000;
    compare(
        "one_row_by_id", 5,
        [&] {
            for (int i = 0; i < lookups; ++i) {
                const int id = 1 + static_cast<int>(i * 7919L % rows);
                const auto set =
                    store.file->OpenRecordset("select * from [table] where id = " + std::to_string(id));
                require(!set->Eof() && !set->field("last").is_null(), "a row is missing");
            }
        },
        [&] {
            for (int i = 0; i < lookups; ++i) {
                const int id = 1 + static_cast<int>(i * 7919L % rows);
                require(peer.count("select last from t where id = " + std::to_string(id)) == 1,
                        "a row is missing");
            }
        },
        lookups);
}

void compare_opening(const std::string& folder) {
    compare(
        "open_and_read_one", 9,
        [&] {
            Store fresh(folder + "/listings.mdb");
            require(!fresh.file->OpenRecordset("select * from [table] where id = 1")->Eof(),
                    "a row is missing");
        },
        [&] {
            bench::Peer fresh(folder + "/listings.db");
            require(fresh.count("select last from t where id = 1") == 1, "a row is missing");
        });
}

/// A city that differs from run to run, since a row that stays the same costs neither side a write.
std::string city(int run, int i) {
    return "Town " + std::to_string(run) + std::to_string(i % 10);
}

/// Gives `count` rows another city each, as `commit_each` says: each durable on its own, or all as one.
void change_cities(Store& store, int rows, int count, int run, bool commit_each) {
    for (int i = 0; i < count; ++i) {
        const int id = 1 + static_cast<int>(i * 7919L % rows);
        const auto set = store.file->OpenRecordset("select * from [table] where id = " + std::to_string(id));
        set->Edit();
        set->write("city", city(run, i));
        set->Update();
        if (commit_each)
            store.engine.commit();
    }
    store.engine.commit();
}

void change_cities(bench::Peer& peer, int rows, int count, int run) {
    for (int i = 0; i < count; ++i)
        peer.run("update t set city = '" + city(run, i) +
                 "' where id = " + std::to_string(1 + static_cast<int>(i * 7919L % rows)));
}

void compare_changes(const std::string& folder, int rows) {
    Store store(folder + "/listings.mdb");
    bench::Peer peer(folder + "/listings.db");
    constexpr int singles = 1000, many = 10000;
    int our_run = 0, their_run = 0;
    struct Mode {
        const char *name, *journal, *synchronous;
    };
    // "extra" alone promises what our commit does: that no power cut brings a removed journal back.
    for (const Mode& mode :
         {Mode{"full", "delete", "full"}, Mode{"extra", "delete", "extra"}, Mode{"wal", "wal", "full"}}) {
        peer.run(std::string("pragma journal_mode=") + mode.journal);
        peer.run(std::string("pragma synchronous=") + mode.synchronous);
        compare(
            std::string("1000_durable_updates/") + mode.name, 3,
            [&] { change_cities(store, rows, singles, ++our_run, true); },
            [&] { change_cities(peer, rows, singles, ++their_run); });
    }
    peer.run("pragma journal_mode=delete");
    peer.run("pragma synchronous=full");
    compare(
        "10000_updates_one_commit", 3, [&] { change_cities(store, rows, many, ++our_run, false); },
        [&] {
            peer.run("begin");
            change_cities(peer, rows, many, ++their_run);
            peer.run("commit");
        });
}

} // namespace

/// - bench_store fill FOLDER ROWS: FOLDER holds an empty listings.mdb.
/// - bench_store compare FOLDER ROWS TOLVA-DATA [READER.js]: prints NAME ours=SECONDS peer=SECONDS
///   ratio=PEER/OURS.
/// - bench_store queries FOLDER ROWS: only the lines of queries and of opening.
/// - bench_store changes FOLDER ROWS: only the lines of updates.
/// - bench_store read FILE: every column of every row, and the memory it took.
int main(int argc, char** argv) {
    const std::vector<std::string> words(argv + 1, argv + argc);
    if (words.size() == 3 && words[0] == "fill") {
        fill(words[1], std::atoi(words[2].c_str()));
    } else if (words.size() >= 4 && words[0] == "compare") {
        const int rows = std::atoi(words[2].c_str());
        compare_reading(words[1], {argv[0], words[3], words.size() > 4 ? words[4] : std::string()});
        compare_queries(words[1], rows);
        compare_opening(words[1]);
        compare_changes(words[1], rows);
    } else if (words.size() == 3 && words[0] == "changes") {
        compare_changes(words[1], std::atoi(words[2].c_str()));
    } else if (words.size() == 3 && words[0] == "queries") {
        compare_queries(words[1], std::atoi(words[2].c_str()));
        compare_opening(words[1]);
    } else if (words.size() == 2 && words[0] == "read") {
        Store store(words[1]);
        const double before = peak_memory();
        long rows = 0;
        const double taken = seconds([&] { rows = read_all(*store.file); });
        std::printf("%-28s %ld rows in %.3f s; at most %.1f MB, of these %.1f MB before the first row\n",
                    "read", rows, taken, peak_memory(), before);
    } else {
        std::fputs("usage: bench_store fill FOLDER ROWS | compare FOLDER ROWS TOLVA-DATA [READER.js] | "
                   "queries FOLDER ROWS | changes FOLDER ROWS | read FILE\n",
                   stderr);
        return 2;
    }
    return 0;
}
