// A file that lives through many commits, in a random order of everything that may befall it: failures of
// each kind, cuts in their midst, retries, closings, openings that fail or are cut. After each opening it is
// exactly one of the images that it may be: the one of the last commit that was reported as stored, or of one
// begun since.
//
// TOLVA_CUT_SEEDS says how many lives of each kind are lived, in tens.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <random>
#include <sstream>

#include "basic/run_time_error.h"
#include "jet/file_pager.h"
#include "jet/header_page.h"
#include "jet/stored_content.h"
#include "support/faulty_disk.h"
#include "support/jet_files.h"

namespace tolva::jet {
namespace {

using support::FaultyDisk;
using support::PowerCut;
using Fault = FaultyDisk::Fault;
using Failure = FaultyDisk::Failure;

const std::string path = "a.mdb", journal = "a.mdb-journal";

std::uint32_t lives() {
    const char* wanted = std::getenv("TOLVA_CUT_SEEDS");
    return wanted ? static_cast<std::uint32_t>(std::atoi(wanted)) * 10 : 600;
}

/// The file as a commit would now make it.
files::Bytes image_of(const FilePager& pager) {
    files::Bytes image;
    for (PageNumber page = 0; page < pager.page_count(); ++page) {
        const PageRef content = pager.read(page);
        image.insert(image.end(), content->begin(), content->end());
    }
    settle_commits(pager.format(), std::span(image).first(pager.format().page_size));
    return image;
}

struct Kind {
    const char* name;
    const Format* format;
    std::size_t sector;
    PageNumber fewest, most; ///< pages at first
    int share;               ///< one of so many lives is lived
};

class Life {
  public:
    Life(const Kind& kind, std::uint32_t seed) : kind_(kind), random_(seed) {
        const PageNumber pages = kind.fewest + below(kind.most - kind.fewest + 1);
        possible_ = {support::file_of_pages(*kind.format, pages)};
        content_ = {{path, possible_.front()}};
    }

    /// Ends early at the first thing that is wrong.
    void live() {
        for (int start = 0; start < 4 && !testing::Test::HasFailure(); ++start) {
            FaultyDisk disk(content_);
            bool cut = false;
            try {
                run_program(disk);
            } catch (const PowerCut&) {
                cut = true;
            }
            if (testing::Test::HasFailure())
                return;
            note(cut ? "cut" : "ended");
            content_ = cut ? disk.survivors(below(1u << 30), kind_.sector) : disk.content();
            recover();
        }
    }

    std::string story() const { return story_.str(); }
    int cuts = 0, failures = 0, commits = 0;

  private:
    std::uint32_t below(std::uint32_t end) { return static_cast<std::uint32_t>(random_() % end); }
    bool one_of(std::uint32_t many) { return below(many) == 0; }

    template <class... What>
    void note(const What&... what) {
        ((story_ << what << ' '), ...);
        story_ << '\n';
    }

    /// What befalls the next operations.
    FaultyDisk::Plan fate(std::uint32_t longest) {
        FaultyDisk::Plan plan;
        plan.seed = below(1u << 30);
        plan.sector = kind_.sector;
        plan.operation = 1 + static_cast<int>(below(longest));
        switch (below(8)) {
        case 0:
            plan.fault = Fault::power_cut;
            break;
        case 1:
            plan.fault = Fault::kill;
            break;
        case 2:
        case 3:
        case 4:
            plan.fault = one_of(3) ? Fault::fail_for_good : Fault::fail_once;
            plan.failure = static_cast<Failure>(below(5));
            plan.forgets = one_of(2);
            if (plan.failure == Failure::sync || plan.failure == Failure::disk_full)
                plan.operation = 1 + plan.operation % 5;
            if (plan.failure == Failure::read)
                plan.operation += static_cast<int>(below(2 * longest));
            if (one_of(4))
                plan.cut_at = plan.operation + static_cast<int>(below(longest));
            break;
        default:
            break;
        }
        note("fate: fault", static_cast<int>(plan.fault), "operation", plan.operation, "failure",
             static_cast<int>(plan.failure), "cut at", plan.cut_at, plan.forgets ? "forgets" : "");
        return plan;
    }

    void change(FilePager& pager) {
        const PageNumber stored = pager.page_count();
        // Now and then about as many blocks as a header names, or as a journal holds that is kept.
        const PageNumber in_block = static_cast<PageNumber>(Journal::block_size / kind_.format->page_size);
        const PageNumber around = stored / in_block > 254 && one_of(2) ? 250 : 98;
        if (stored / in_block > around + 4 && one_of(3)) {
            const PageNumber blocks = around + below(5);
            for (PageNumber block = 1; block < blocks; ++block)
                fill(pager, block * in_block);
        } else {
            for (std::uint32_t left = 1 + below(6); left > 0; --left)
                fill(pager, 1 + below(stored - 1));
        }
        if (one_of(4))
            pager.modify(0)[0x300] = static_cast<std::uint8_t>(random_());
        if (one_of(2))
            for (std::uint32_t left = 1 + below(3); left > 0; --left)
                fill(pager, pager.append());
        note("change, of", stored, "pages to", pager.page_count());
    }

    void fill(FilePager& pager, PageNumber page) {
        const auto bytes = pager.modify(page);
        const std::size_t from = one_of(2) ? 0 : below(static_cast<std::uint32_t>(bytes.size()));
        std::fill(bytes.begin() + static_cast<std::ptrdiff_t>(from), bytes.end(),
                  static_cast<std::uint8_t>(random_()));
    }

    /// A program that opens the file and works on it; maybe several, one after the other.
    void run_program(FaultyDisk& disk) {
        std::unique_ptr<FilePager> pager;
        for (std::uint32_t left = 1 + below(12); left > 0 && !testing::Test::HasFailure(); --left) {
            if (!pager) {
                pager = open(disk);
                continue;
            }
            if (one_of(6)) {
                disk.plan(one_of(3) ? fate(3) : FaultyDisk::Plan{});
                pager.reset();
                note("closed");
                if (disk.is_cut())
                    throw PowerCut{};
                disk.plan({});
                if (one_of(3)) {
                    note("forgotten");
                    disk.forget();
                }
                continue;
            }
            if (one_of(6))
                pager->rollback();
            if (possible_.size() == 1 && disk.exists(journal) && one_of(20)) {
                note("journal taken away");
                disk.remove(journal);
            }
            if (!one_of(4))
                change(*pager);
            commit(disk, pager);
            if (one_of(4)) {
                note("forgotten");
                disk.forget();
            }
            if (pager && one_of(4))
                look(disk);
        }
        disk.plan({});
    }

    std::unique_ptr<FilePager> open(FaultyDisk& disk) {
        disk.plan(one_of(2) ? fate(12) : FaultyDisk::Plan{});
        std::unique_ptr<FilePager> pager;
        try {
            pager = std::make_unique<FilePager>(disk, path);
        } catch (const basic::RunTimeError& error) {
            EXPECT_EQ(error.number(), 75) << error.text();
        }
        note(pager ? "opened" : "not opened");
        disk.plan({});
        // What an opening finds need not be on the device yet, so it rules out none.
        if (pager)
            expect_possible(disk.content().at(path));
        return pager;
    }

    /// A reader sees one of the images, too.
    void look(FaultyDisk& disk) { expect_possible(StoredContent(disk, path).read()); }

    void expect_possible(const files::Bytes& image) const {
        EXPECT_NE(std::find(possible_.begin(), possible_.end(), image), possible_.end())
            << "none of " << possible_.size() << " images";
    }

    void commit(FaultyDisk& disk, std::unique_ptr<FilePager>& pager) {
        const files::Bytes next = image_of(*pager), before = disk.content().at(path);
        disk.plan(fate(16));
        ++commits;
        bool failed = false;
        possible_.push_back(next); // until it is known that it's not
        try {
            pager->commit();
        } catch (const basic::RunTimeError& error) {
            EXPECT_EQ(error.number(), 75) << error.text();
            failed = true;
            ++failures;
        }
        disk.plan({});
        const files::Bytes now = disk.content().at(path);
        if (!failed) {
            note("committed");
            EXPECT_EQ(now, next);
            possible_ = {next};
        } else if (!usable(*pager)) {
            note("commit failed, and its undoing");
            pager.reset();
        } else if (now == before) {
            note("commit failed");
            if (before != next)
                possible_.pop_back();
        } else {
            note("committed, perhaps not for good");
            EXPECT_EQ(now, next) << "neither the old nor the new one";
        }
    }

    static bool usable(const FilePager& pager) {
        try {
            pager.read(0);
            return true;
        } catch (const basic::RunTimeError&) {
            return false;
        }
    }

    /// The next start, which may be cut itself a few times.
    void recover() {
        for (std::uint32_t left = below(3); left > 0; --left) {
            FaultyDisk disk(content_);
            FaultyDisk::Plan plan;
            plan.fault = one_of(2) ? Fault::kill : Fault::power_cut;
            plan.operation = 1 + static_cast<int>(below(12));
            disk.plan(plan);
            try {
                FilePager(disk, path);
            } catch (const PowerCut&) {
            } catch (const basic::RunTimeError& error) {
                ADD_FAILURE() << "refused: " << error.text();
            }
            if (disk.is_cut()) {
                ++cuts;
                content_ = plan.fault == Fault::kill ? disk.content()
                                                     : disk.survivors(below(1u << 30), kind_.sector);
            }
        }
        FaultyDisk disk(content_);
        try {
            const files::Bytes seen = StoredContent(disk, path).read();
            EXPECT_EQ(disk.content(), content_) << "a reader changed something";
            { FilePager opened(disk, path); }
            EXPECT_EQ(disk.content().at(path), seen) << "a reader saw something else";
        } catch (const basic::RunTimeError& error) {
            ADD_FAILURE() << "refused: " << error.text();
            return;
        }
        content_ = disk.content();
        EXPECT_EQ(content_.size(), 1u) << "something stays beside the file";
        expect_possible(content_.at(path));
        possible_ = {content_.at(path)};
        FaultyDisk again(content_);
        { FilePager opened(again, path); }
        EXPECT_EQ(again.content(), content_) << "a second recovery changed something";
        note("recovered");
    }

    Kind kind_;
    std::mt19937 random_;
    std::vector<files::Bytes> possible_;
    std::map<std::string, files::Bytes> content_;
    std::ostringstream story_;
};

class JournalModel : public testing::TestWithParam<Kind> {};

INSTANTIATE_TEST_SUITE_P(Files, JournalModel,
                         testing::Values(Kind{"Small512", &jet4_format, 512, 3, 20, 1},
                                         Kind{"Small4096", &jet4_format, 4096, 3, 20, 1},
                                         Kind{"Jet3Small512", &jet3_format, 512, 3, 20, 1},
                                         Kind{"Jet3Small4096", &jet3_format, 4096, 3, 20, 1},
                                         Kind{"Middle512", &jet4_format, 512, 105, 120, 5},
                                         Kind{"Jet3Middle4096", &jet3_format, 4096, 210, 240, 5},
                                         Kind{"Long512", &jet4_format, 512, 255, 400, 30}),
                         [](const auto& kind) { return kind.param.name; });

TEST_P(JournalModel, EachLifeLeavesTheFileWholeAndEachReportedCommitInIt) {
    int cuts = 0, failures = 0, commits = 0;
    for (std::uint32_t seed = 0; seed < lives() / static_cast<std::uint32_t>(GetParam().share); ++seed) {
        Life life(GetParam(), seed);
        life.live();
        ASSERT_FALSE(HasFailure()) << "life " << seed << ":\n" << life.story();
        cuts += life.cuts;
        failures += life.failures;
        commits += life.commits;
    }
    EXPECT_GT(failures, 0);
    EXPECT_GT(commits, failures);
}

} // namespace
} // namespace tolva::jet
