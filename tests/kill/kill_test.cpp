// A program at work is killed at random moments, again and again on the same desk: nothing that it has seen
// stored may be missing, no record may be half there, and every file must be sound.
//
// TOLVA_KILLS says how often; tools/durability asks for more than an ordinary run does.

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <map>
#include <random>
#include <set>
#include <sstream>
#include <thread>

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

const std::string delivered = TOLVA_BUILD_DIR "/delivered";

/// A program that works at a copy of a desk until it is killed (tests/kill/victim).
class Victim {
  public:
    explicit Victim(const std::string& source)
        : process_({TOLVA_BUILD_DIR "/tests/tests_victim", source},
                   {"", folder_.file("said"), folder_.file("complaint")}) {}

    /// Waits until it has stored something; false when it ended ahead of that.
    bool gets_to_work() {
        while (said().find("\ndid ") == std::string::npos) {
            if (!process_.running())
                return false;
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        return true;
    }
    /// Whether it was at work until then.
    bool kill() {
        process_.kill();
        return process_.wait() == support::Process::killed;
    }

    std::string said() const { return support::file_content(folder_.file("said")); }
    std::string complaint() const { return support::file_content(folder_.file("complaint")); }
    std::string desk() const {
        const std::string words = said();
        const std::size_t start = words.find(' ') + 1;
        return words.substr(start, words.find('\n') - start);
    }

  private:
    support::TemporaryFolder folder_;
    support::Process process_;
};

support::ProgramRun data(std::vector<std::string> words) {
    words.insert(words.begin(), TOLVA_BUILD_DIR "/tolva-data");
    return support::run_program(words);
}

class Kill : public testing::Test {
  protected:
    ~Kill() override { drop_desk(); }

    /// Lets a victim work on a copy of the desk for a while, and kills it.
    void work_and_kill(double seconds) {
        Victim victim(desk_.empty() ? delivered : desk_);
        ASSERT_TRUE(victim.gets_to_work()) << victim.complaint();
        std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
        ASSERT_TRUE(victim.kill()) << "the victim ended by itself: " << victim.complaint();
        drop_desk();
        desk_ = victim.desk();
        listen(victim.said());
    }

    /// Lets a victim work on a fresh desk while `commands` run, and kills it.
    void beside_work(const std::function<void()>& commands) {
        Victim victim(delivered);
        ASSERT_TRUE(victim.gets_to_work()) << victim.complaint();
        desk_ = victim.desk();
        commands();
        EXPECT_TRUE(victim.kill()) << "the victim ended by itself: " << victim.complaint();
    }

    /// Takes up what the victim said it did, and what it was about to do.
    void listen(const std::string& said) {
        const std::string whole = said.substr(0, said.rfind('\n') + 1); // the last line may be cut
        std::istringstream lines(whole);
        intended_ = {};
        for (std::string what, store; lines >> what;) {
            if (what == "desk") {
                std::getline(lines, store);
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
    const std::string& desk() const { return desk_; }
    std::string file(const std::string& store) const { return desk_ + "/data/" + store + ".mdb"; }
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
    const auto path_of = [this](int copy) { return folder().file("copy" + std::to_string(copy)); };
    beside_work([&] {
        for (int copy = 1; copy <= copies; ++copy) {
            const auto run = data({"backup", desk(), path_of(copy)});
            ASSERT_EQ(run.code, 0) << run.err;
        }
    });
    std::set<std::string> contents;
    for (int copy = 1; copy <= copies; ++copy) {
        expect_one_moment(path_of(copy));
        contents.insert(support::file_content(path_of(copy) + "/data/listings.mdb"));
    }
    EXPECT_GT(contents.size(), 1u) << "nothing was written between the copies";
}

TEST_F(Kill, ReadersBesideAProgramAtWorkFindNothingWrongAndWritersAreRefused) {
    beside_work([this] {
        for (int time = 0; time < 10; ++time) {
            const auto check = data({"check", file("listings"), file("database")});
            EXPECT_EQ(check.code, 0) << check.err;
            EXPECT_EQ(check.out, "");
            const auto dump = data({"dump", file("prospect"), "table"});
            EXPECT_EQ(dump.code, 0) << dump.err;
            const auto write = data({"delete", file("listings"), "select * from [table]"});
            EXPECT_EQ(write.code, 1);
            EXPECT_NE(write.err.find("file already in use"), std::string::npos) << write.err;
        }
    });
}

TEST_F(Kill, NoLockOutlivesAKill) {
    beside_work([this] {
        EXPECT_EQ(data({"delete", file("sold"), "select * from [table]"}).code, 1) << "nobody has the file";
    });
    for (const char* store : {"listings", "prospect", "sold"}) {
        const auto write = data({"delete", file(store), "select * from [table]"});
        EXPECT_EQ(write.code, 0) << write.err;
    }
}

} // namespace
} // namespace tolva
