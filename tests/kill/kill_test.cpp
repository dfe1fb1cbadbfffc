// A program at work is killed at random moments, again and again on the same desk: nothing that it has seen
// stored may be missing, no record may be half there, and every file must be sound.
//
// TOLVA_KILLS says how often; tools/durability asks for more than an ordinary run does.

#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>
#include <map>
#include <random>
#include <set>
#include <sstream>

#include "jet/check.h"
#include "jet/database.h"
#include "support/program.h"

namespace tolva {
namespace {

int kills() {
    const char* wanted = std::getenv("TOLVA_KILLS");
    return wanted ? std::atoi(wanted) : 30;
}

using Marks = std::map<std::int64_t, std::string>;

class Kill : public testing::Test {
  protected:
    void SetUp() override {
        if (!support::has_command("kill"))
            GTEST_SKIP() << "this system has no command that kills a process";
    }
    void TearDown() override { drop_desk(); }

    /// Lets the victim work on a copy of the desk for a while, and kills it.
    void work_and_kill(double seconds) {
        const std::string source = desk_.empty() ? std::string(TOLVA_BUILD_DIR "/delivered") : desk_;
        const std::string said = folder_.file("said");
        std::filesystem::remove(said); // or the shell might wait for what the last one said
        const auto run = support::run_program(
            {"sh", "-c",
             "\"$1\" \"$2\" >\"$3\" & child=$!\n"
             "until grep -qs ^did \"$3\"; do kill -0 $child || exit 1; sleep 0.01; done\n"
             "sleep \"$4\"; kill -9 $child; wait $child; test $? = 137",
             "sh", TOLVA_BUILD_DIR "/tests/tests_victim", source, said, std::to_string(seconds)});
        ASSERT_EQ(run.code, 0) << "the victim ended by itself: " << run.err;
        drop_desk();
        listen(support::file_content(said));
    }

    /// Lets the victim work on a fresh desk while `commands` run, a shell text that names the desk "$desk"
    /// and a folder of its own "$out"; then kills it.
    support::ProgramRun beside_work(const std::string& commands) {
        return support::run_program(
            {"sh", "-c",
             "said=\"$3/said\"; out=$3; data=$4\n"
             "\"$1\" \"$2\" >\"$said\" & child=$!\n"
             "until grep -qs ^did \"$said\"; do kill -0 $child || exit 1; sleep 0.01; done\n"
             "desk=$(sed -n 's/^desk //p' \"$said\")\n" +
                 commands +
                 "\nkill -9 $child; wait $child; test $? = 137 || code=1\n"
                 "rm -rf \"$desk\"; exit ${code:-0}",
             "sh", TOLVA_BUILD_DIR "/tests/tests_victim", TOLVA_BUILD_DIR "/delivered",
             folder_.path().string(), TOLVA_BUILD_DIR "/tolva-data"});
    }

    /// Takes up what the victim said it did, and what it was about to do.
    void listen(const std::string& said) {
        const std::string whole = said.substr(0, said.rfind('\n') + 1); // the last line may be cut
        std::istringstream lines(whole);
        intended_ = {};
        for (std::string what, store; lines >> what;) {
            if (what == "desk") {
                lines >> desk_;
                continue;
            }
            std::int64_t id = 0;
            std::string mark;
            lines >> store >> id >> mark;
            if (what == "will") {
                intended_ = {store, id, mark};
                continue;
            }
            intended_ = {};
            ++stored_;
            if (mark == "-")
                known_[store].erase(id);
            else
                known_[store][id] = mark;
        }
    }

    /// The files as they were left: by a reader, who mends nothing, or by the next program to write.
    void look(bool as_writer) {
        const auto disk = files::make_disk();
        const auto open = [&](const std::string& name) {
            const std::string path = desk_ + "/data/" + name;
            return as_writer ? jet::Database::open(*disk, path) : jet::Database::open_to_read(*disk, path);
        };
        for (const char* name : {"database.mdb", "listings.mdb", "address.mdb", "prospect.mdb", "sold.mdb",
                                 "zipcodes.mdb", "messagedata.mdb"}) {
            // The zip codes are many and nobody writes to them.
            if (std::string(name) != "zipcodes.mdb") {
                EXPECT_EQ(jet::check(*open(name)), std::vector<std::string>{}) << name;
            }
        }
        const auto settings = open("database.mdb");
        compare("listings", marks_of(*open("listings.mdb")), counter_of(*settings, "listing_counter"));
        compare("prospect", marks_of(*open("prospect.mdb")), counter_of(*settings, "prospect_counter"));
    }

    /// A copy of a desk, made while the program worked: sound files, whole records, no counter behind its
    /// rows.
    static void expect_one_moment(const std::string& copy) {
        const auto disk = files::make_disk();
        const auto settings = jet::Database::open_to_read(*disk, copy + "/data/database.mdb");
        EXPECT_EQ(jet::check(*settings), std::vector<std::string>{});
        for (const std::string store : {"listings", "prospect"}) {
            const auto database = jet::Database::open_to_read(*disk, copy + "/data/" + store + ".mdb");
            EXPECT_EQ(jet::check(*database), std::vector<std::string>{});
            const Marks marks = marks_of(*database);
            const std::string counter = store == "listings" ? "listing_counter" : "prospect_counter";
            if (!marks.empty()) {
                EXPECT_GE(counter_of(*settings, counter.c_str()), marks.rbegin()->first) << copy;
            }
        }
    }

    const support::TemporaryFolder& folder() const { return folder_; }
    int stored() const { return stored_; }
    int unreported() const { return unreported_; }

  private:
    struct Intent {
        std::string store;
        std::int64_t id = 0;
        std::string mark;
    };

    /// What each row says of itself; a row that disagrees with itself fails the test.
    static Marks marks_of(jet::Database& database) {
        jet::Table& table = database.table("table");
        Marks marks;
        for (const auto row = table.scan(); row->next();) {
            const auto text = [&](const char* column) {
                const jet::Value value = row->value(*table.find_column(column));
                const auto* found = std::get_if<std::string>(&value);
                return found ? *found : std::string();
            };
            const std::int64_t id = std::get<std::int64_t>(row->value(*table.find_column("id")));
            const std::string mark = text("last"), notes = text("notes");
            EXPECT_EQ(text("first"), mark) << id;
            EXPECT_EQ(text("address"), mark) << id;
            const std::size_t dots = mark.empty() ? 0 : std::stoul(mark.substr(1)) % 7 * 1100;
            EXPECT_TRUE(notes == mark + std::string(dots, '.'))
                << id << " has " << notes.size() << " characters";
            EXPECT_TRUE(marks.emplace(id, mark.empty() ? "." : mark).second) << id << " is there twice";
        }
        return marks;
    }

    static std::int64_t counter_of(jet::Database& settings, const char* column) {
        jet::Table& table = settings.table("preference_table");
        const auto row = table.scan();
        return row->next() ? std::get<std::int64_t>(row->value(*table.find_column(column))) : -1;
    }

    void compare(const std::string& store, const Marks& found, std::int64_t counter) {
        Marks& known = known_[store];
        if (found != known && intended_.store == store) {
            // The one change that was under way may be there, whole.
            ++unreported_;
            if (intended_.mark == "-")
                known.erase(intended_.id);
            else if (intended_.id != 0)
                known[intended_.id] = intended_.mark;
            else if (!found.empty())
                known[found.rbegin()->first] = intended_.mark;
        }
        EXPECT_EQ(found, known) << store;
        if (!found.empty()) {
            EXPECT_GE(counter, found.rbegin()->first) << store << ": the counter is behind its rows";
        }
        known = found;
    }

    void drop_desk() const {
        std::error_code ignored;
        if (!desk_.empty())
            std::filesystem::remove_all(desk_, ignored);
    }

    support::TemporaryFolder folder_;
    std::string desk_;
    std::map<std::string, Marks> known_;
    Intent intended_;
    int stored_ = 0, unreported_ = 0;
};

TEST_F(Kill, NothingStoredIsMissingAndNothingIsHalfThere) {
    std::mt19937 random(20261120);
    for (int kill = 0; kill < kills(); ++kill) {
        ASSERT_NO_FATAL_FAILURE(work_and_kill(random() % 400 / 1000.0)) << "kill " << kill;
        // Every other time what the kill left is for the next victim to mend.
        look(kill % 2 == 0);
        ASSERT_FALSE(HasFailure()) << "kill " << kill;
    }
    std::cout << kills() << " kills, " << stored() << " changes reported as stored, " << unreported()
              << " kills between a change's start and its report that found it stored\n";
    EXPECT_GT(stored(), kills()) << "the victims came to nothing";
}

TEST_F(Kill, BackupsBesideAProgramAtWorkHoldOneMomentEach) {
    constexpr int copies = 10;
    const auto run = beside_work("for n in 1 2 3 4 5 6 7 8 9 10; do\n"
                                 "  \"$data\" backup \"$desk\" \"$out/copy$n\" >/dev/null || code=1\n"
                                 "done");
    ASSERT_EQ(run.code, 0) << run.err;
    std::set<std::string> contents;
    for (int copy = 1; copy <= copies; ++copy) {
        const std::string path = folder().file("copy" + std::to_string(copy));
        expect_one_moment(path);
        contents.insert(support::file_content(path + "/data/listings.mdb"));
    }
    EXPECT_GT(contents.size(), 1u) << "nothing was written between the copies";
}

TEST_F(Kill, ReadersBesideAProgramAtWorkFindNothingWrongAndWritersAreRefused) {
    const auto run =
        beside_work("for n in 1 2 3 4 5 6 7 8 9 10; do\n"
                    "  \"$data\" check \"$desk\"/data/listings.mdb \"$desk\"/data/database.mdb || code=1\n"
                    "  \"$data\" dump \"$desk\"/data/prospect.mdb table >/dev/null || code=1\n"
                    "  \"$data\" delete \"$desk\"/data/listings.mdb 'select * from [table]' && code=1\n"
                    "done");
    EXPECT_EQ(run.code, 0) << run.out;
    EXPECT_EQ(run.out, "");
    EXPECT_NE(run.err.find("file already in use"), std::string::npos) << run.err;
}

} // namespace
} // namespace tolva
