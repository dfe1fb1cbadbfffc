// Power cuts, kills and failing disks while a program changes two stores in turn. After each: both files are
// sound, each event's change of a file is whole or absent, nothing that was reported as stored is missing,
// and the counter is never behind the rows.
//
// TOLVA_CUT_SEEDS says how many outcomes of each cut are tried; tools/durability asks for more than an
// ordinary run does.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <set>
#include <tuple>

#include "dao/database.h"
#include "dao/recordset.h"
#include "support/faulty_disk.h"
#include "support/jet_files.h"

namespace tolva::dao {
namespace {

using support::FaultyDisk;
using support::PowerCut;
using Fault = FaultyDisk::Fault;
using Failure = FaultyDisk::Failure;
using Contents = std::map<std::string, files::Bytes>;

const std::string counter_path = "counter.mdb", rows_path = "rows.mdb";

std::uint32_t seeds() {
    const char* wanted = std::getenv("TOLVA_CUT_SEEDS");
    return wanted ? static_cast<std::uint32_t>(std::atoi(wanted)) : 100;
}

/// The program: an engine and its two stores, as a desk's settings and listings.
class Program {
  public:
    explicit Program(FaultyDisk& disk)
        : engine_(disk, [] { return 2026; }), counter_(engine_.Workspaces(0).OpenDatabase(counter_path)),
          rows_(engine_.Workspaces(0).OpenDatabase(rows_path)) {}

    /// A new record: the counter is stored ahead of the row that bears its number.
    void add(int size) {
        const auto settings = counter_->OpenRecordset("settings");
        const std::int64_t id = last_id() + 1;
        settings->Edit();
        settings->write("last", id);
        settings->Update();
        const auto set = rows_->OpenRecordset("select * from [table]");
        set->AddNew();
        set->write("id", id);
        write_mark(*set, "new", size);
        set->Update();
        engine_.commit();
    }

    /// A walk that touches every row, and one commit for all of it.
    void mark_all(const std::string& mark, int size) {
        const auto set = rows_->OpenRecordset("select * from [table]");
        for (; !set->Eof(); set->MoveNext()) {
            set->Edit();
            write_mark(*set, mark, size);
            set->Update();
        }
        engine_.commit();
    }

    void erase_first() {
        const auto set = rows_->OpenRecordset("select * from [table] order by id");
        set->Delete();
        engine_.commit();
    }

    std::int64_t last_id() {
        const auto settings = counter_->file().table("settings").scan();
        return settings->next() ? std::get<std::int64_t>(settings->value(0)) : -1;
    }

    std::vector<jet::Row> rows() { return support::all_rows(rows_->file().table("table")); }
    std::string findings() { return support::findings(counter_->file()) + support::findings(rows_->file()); }

  private:
    static void write_mark(Recordset& set, const std::string& mark, int size) {
        set.write("mark", mark);
        set.write("note", mark + std::string(static_cast<std::size_t>(size), '.'));
    }

    DBEngine engine_;
    std::unique_ptr<Database> counter_, rows_;
};

/// What happens at the desk, an event after the other.
const std::vector<std::function<void(Program&)>> events = {
    [](Program& program) { program.add(3000); },
    [](Program& program) { program.add(20); },
    [](Program& program) { program.mark_all("moved", 900); },
    [](Program& program) { program.erase_first(); },
    [](Program& program) { program.add(9000); },
};

files::Bytes empty_store(const jet::TableSchema& table) {
    const auto disk = files::make_memory_disk();
    jet::Database::create(*disk, "new.mdb", {table});
    return files::read_whole(*disk, "new.mdb");
}

/// Both stores ahead of the first event and after each.
std::vector<Contents> run_undisturbed() {
    using T = jet::ColumnType;
    FaultyDisk disk(
        {{counter_path, empty_store({"settings", {support::column("last", T::long_integer)}, {}})},
         {rows_path,
          empty_store({"table",
                       {support::column("id", T::long_integer), support::column("mark", T::text, 20),
                        support::column("note", T::memo)},
                       {support::index("ids", {"id"}), support::index("marks", {"mark", "id"})}})}});
    {
        const auto database = jet::Database::open(disk, counter_path);
        database->table("settings").insert({std::int64_t{0}});
        database->commit();
    }
    std::vector<Contents> states = {disk.content()};
    Program program(disk);
    for (const auto& event : events) {
        event(program);
        states.push_back(disk.content());
    }
    return states;
}

class Cut : public testing::Test {
  protected:
    /// Opens what a cut left, which puts it right, and holds it to the event's promises. `done` tells that
    /// the event was reported as stored.
    void expect_whole(const Contents& left, std::size_t event, bool done) {
        FaultyDisk disk(left);
        { Program program(disk); }
        const Contents found = disk.content();
        const Contents &before = states[event], &after = states[event + 1];
        ASSERT_EQ(found.size(), 2u) << "a journal was left";
        const bool counter_old = found.at(counter_path) == before.at(counter_path);
        const bool counter_new = found.at(counter_path) == after.at(counter_path);
        const bool rows_old = found.at(rows_path) == before.at(rows_path);
        const bool rows_new = found.at(rows_path) == after.at(rows_path);
        ASSERT_TRUE(counter_old || counter_new) << "half a commit of the counter";
        ASSERT_TRUE(rows_old || rows_new) << "half a commit of the rows";
        ASSERT_FALSE(rows_new && !rows_old && !counter_new) << "the row is there, its counter is not";
        if (done) {
            ASSERT_TRUE(counter_new && rows_new) << "what was reported as stored is gone";
        }
        outcomes.insert({counter_new, rows_new});
        expect_sound(found);
        FaultyDisk again(found);
        { Program program(again); }
        ASSERT_EQ(again.content(), found) << "a second opening changed something";
    }

    /// By the store's own account; states that were looked at need no second look.
    void expect_sound(const Contents& contents) {
        if (std::find(sound.begin(), sound.end(), contents) != sound.end())
            return;
        FaultyDisk disk(contents);
        Program program(disk);
        ASSERT_EQ(program.findings(), "");
        for (const jet::Row& row : program.rows()) {
            ASSERT_LE(std::get<std::int64_t>(row[0]), program.last_id());
            ASSERT_TRUE(std::get<std::string>(row[2]).starts_with(std::get<std::string>(row[1])));
        }
        sound.push_back(contents);
    }

    /// Runs an event into a fault; true when it was reported as stored, nothing when the fault cut it.
    static std::optional<bool> run(FaultyDisk& disk, std::size_t event, const FaultyDisk::Plan& plan) {
        Program program(disk);
        disk.plan(plan);
        try {
            events[event](program);
            return true;
        } catch (const PowerCut&) {
            return std::nullopt;
        } catch (const basic::RunTimeError& error) {
            EXPECT_TRUE(error.number() == 75 || error.number() == 3049) << error.text();
            return false;
        }
    }

    const std::vector<Contents> states = run_undisturbed();
    std::vector<Contents> sound;
    std::set<std::pair<bool, bool>> outcomes;
};

TEST_F(Cut, APowerCutLeavesEachEventWholeAndInOrder) {
    for (std::size_t event = 0; event < events.size(); ++event) {
        for (int operation = 1;; ++operation) {
            FaultyDisk disk(states[event]);
            if (run(disk, event, {Fault::power_cut, operation}))
                break;
            for (const std::size_t sector : {std::size_t{512}, std::size_t{4096}}) {
                for (std::uint32_t seed = 0; seed < seeds(); ++seed) {
                    ASSERT_NO_FATAL_FAILURE(expect_whole(disk.survivors(seed, sector), event, false))
                        << "event " << event << " operation " << operation << " seed " << seed << " sector "
                        << sector;
                }
            }
        }
    }
    EXPECT_TRUE(outcomes.count({true, false})) << "no cut fell between the two stores";
}

TEST_F(Cut, AKillLeavesEachEventWholeAndInOrder) {
    for (std::size_t event = 0; event < events.size(); ++event) {
        for (int operation = 1;; ++operation) {
            FaultyDisk disk(states[event]);
            if (run(disk, event, {Fault::kill, operation}))
                break;
            ASSERT_NO_FATAL_FAILURE(expect_whole(disk.survivors(), event, false))
                << "event " << event << " operation " << operation;
        }
    }
}

TEST_F(Cut, ACutDuringRecoveryLeavesNothingThatTheNextOneCannotPutRight) {
    // Each outcome of each cut is recovered under a second cut, at each operation of the recovery.
    int cut_recoveries = 0;
    const std::size_t event = 0;
    for (int operation = 1;; ++operation) {
        FaultyDisk disk(states[event]);
        if (run(disk, event, {Fault::power_cut, operation}))
            break;
        for (std::uint32_t seed = 0; seed < seeds(); seed += 10) {
            const std::size_t sector = seed % 20 ? 4096 : 512;
            const Contents left = disk.survivors(seed, sector);
            for (int second = 1;; ++second) {
                FaultyDisk recovering(left);
                recovering.plan({Fault::power_cut, second});
                try {
                    Program program(recovering);
                    break;
                } catch (const PowerCut&) {
                }
                ++cut_recoveries;
                ASSERT_NO_FATAL_FAILURE(expect_whole(recovering.survivors(seed + 1, sector), event, false))
                    << "operation " << operation << ", then " << second << ", seed " << seed;
            }
        }
    }
    EXPECT_GT(cut_recoveries, 100);
}

struct Trouble {
    const char* name;
    Failure failure;
};

class FailingDisk : public Cut, public testing::WithParamInterface<std::tuple<Fault, Trouble>> {};

INSTANTIATE_TEST_SUITE_P(Troubles, FailingDisk,
                         testing::Combine(testing::Values(Fault::fail_once, Fault::fail_for_good),
                                          testing::Values(Trouble{"ShortWrite", Failure::short_write},
                                                          Trouble{"InputOutput", Failure::input_output},
                                                          Trouble{"DiskFull", Failure::disk_full},
                                                          Trouble{"Sync", Failure::sync},
                                                          Trouble{"Read", Failure::read})),
                         [](const auto& chosen) {
                             return std::string(std::get<1>(chosen.param).name) +
                                    (std::get<0>(chosen.param) == Fault::fail_once ? "Once" : "ForGood");
                         });

TEST_P(FailingDisk, IsToldOfAndLeavesTheOldStateOrTheNewOne) {
    const auto& [fault, trouble] = GetParam();
    bool failed = false;
    for (std::size_t event = 0; event < events.size(); ++event) {
        for (int operation = 1;; ++operation) {
            FaultyDisk disk(states[event]);
            const auto done = run(disk, event, {fault, operation, 0, 512, trouble.failure});
            ASSERT_TRUE(done);
            failed = failed || !*done;
            ASSERT_NO_FATAL_FAILURE(expect_whole(disk.content(), event, *done))
                << "event " << event << " operation " << operation;
            // The power may go on top of it.
            for (std::uint32_t seed = 0; seed < 5; ++seed)
                ASSERT_NO_FATAL_FAILURE(expect_whole(disk.survivors(seed, 512), event, *done))
                    << "event " << event << " operation " << operation << " seed " << seed;
            if (disk.operations() < operation)
                break;
        }
    }
    EXPECT_TRUE(failed);
}

TEST_P(FailingDisk, ARecoveryThatFailsCanBeDoneAgain) {
    const auto& [fault, trouble] = GetParam();
    const std::size_t event = 2;
    bool failed = false;
    for (int cut = 1;; ++cut) {
        FaultyDisk killed(states[event]);
        if (run(killed, event, {Fault::kill, cut}))
            break;
        for (int operation = 1;; ++operation) {
            FaultyDisk disk(killed.survivors());
            disk.plan({fault, operation, 0, 512, trouble.failure});
            try {
                Program program(disk);
            } catch (const basic::RunTimeError&) {
                failed = true;
            }
            ASSERT_NO_FATAL_FAILURE(expect_whole(disk.content(), event, false))
                << "cut " << cut << " operation " << operation;
            if (disk.operations() < operation)
                break;
        }
    }
    // A recovery makes no file longer.
    EXPECT_EQ(failed, trouble.failure != Failure::disk_full);
}

TEST_F(Cut, AWalkOverManyRowsIsOneCommit) {
    FaultyDisk disk(states.back());
    Program program(disk);
    for (int i = 0; i < 300; ++i)
        program.add(10);
    disk.plan({});
    program.mark_all("few", 5);
    const int few = disk.operations();
    for (int i = 0; i < 1200; ++i)
        program.add(10);
    disk.plan({});
    program.mark_all("many", 5);
    // As many syncs for 1500 rows as for 300; only pages are more.
    EXPECT_LT(disk.operations(), few + 100);
}

} // namespace
} // namespace tolva::dao
