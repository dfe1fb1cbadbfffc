#include <gtest/gtest.h>

#include "support/customers.h"
#include "support/desk.h"

namespace tolva {
namespace {

using basic::make_date;
using support::customer;
using support::Customer;
using support::Desk;
using support::letter_of;
using Texts = std::vector<std::string>;

constexpr int listing_letter = 5, prospect_letter = 6, sold_letter = 7;

/// A desk at 10:00 on 2026-11-20 with a letter on which the customer's name stands.
class FollowUpLetters : public testing::Test {
  protected:
    FollowUpLetters() {
        desk.set_setting("lastdate", make_date(2026, 11, 20));
        desk.write_letter("hello.rtf", letter_of("Hello <firstname>"));
        desk.start();
    }

    void add_to(dao::Database& database, int id, const Customer& values) {
        Desk::add(database, customer(values, {{"id", std::int64_t{id}}}));
    }
    void add_listing(int id, const Customer& values) { add_to(*desk.module().listingdb, id, values); }

    void schedule(int type, int id, basic::Date date = make_date(2026, 11, 20),
                  const std::string& path = "hello.rtf", const std::string& text = "Sent Letter",
                  const std::string& time = "8:30 AM") {
        Desk::add(*desk.module().messagedb, {{"messageid", std::int64_t{1}},
                                             {"messagetype", std::int64_t{type}},
                                             {"customerid", std::int64_t{id}},
                                             {"messagetext", text},
                                             {"messagedate", date},
                                             {"messagetime", time},
                                             {"messageflag", false},
                                             {"letterpath", path}});
    }
    void run() { desk.click(desk.menu().Command14); }

    Texts printed() {
        Texts texts;
        for (const auto& job : desk.host.recorded_printer.jobs)
            texts.push_back(job.pages.at(0).rich_text);
        return texts;
    }
    std::string last_box() { return desk.host.boxes.empty() ? "" : desk.host.boxes.back().text; }
    std::string listing(const std::string& column, std::size_t row = 0) {
        return desk.stored_listings().at(row).at(column);
    }

    Desk desk;
};

TEST_F(FollowUpLetters, WithNothingDueNothingChanges) {
    add_listing(1, {{"first", "Ann"}});
    schedule(listing_letter, 1, make_date(2026, 11, 21));
    run();
    EXPECT_EQ(desk.host.box_texts(), Texts{"No Letters to Print"});
    EXPECT_EQ(desk.host.boxes[0].title, "Message");
    EXPECT_EQ(desk.messages().size(), 1u);
    EXPECT_EQ(listing("contacthistory"), "");
    EXPECT_TRUE(desk.host.recorded_printer.jobs.empty());
}

TEST_F(FollowUpLetters, ADueLetterIsPrintedEnteredAndGone) {
    add_listing(7, {{"first", "Ann"}, {"contacthistory", " 1/2/2026: called  "}});
    schedule(listing_letter, 7);
    run();
    EXPECT_EQ(printed(), Texts{"Hello Ann"});
    EXPECT_EQ(listing("datelastcontact"), "11/20/2026");
    EXPECT_EQ(listing("contacthistory"), "11/20/2026: Sent Letter\r\n1/2/2026: called");
    EXPECT_TRUE(desk.messages().empty());
    EXPECT_EQ(desk.host.box_texts(), Texts{"1 Letters Printed"});
    EXPECT_EQ(desk.host.boxes[0].title, "Message");
}

TEST_F(FollowUpLetters, EachTypeWritesToItsOwnTable) {
    add_to(*desk.module().listingdb, 3, {{"first", "Lil"}});
    add_to(*desk.module().prospectdb, 3, {{"first", "Pia"}});
    add_to(*desk.module().solddb, 3, {{"first", "Sam"}});
    schedule(sold_letter, 3, make_date(2026, 11, 18));
    schedule(prospect_letter, 3, make_date(2026, 11, 19));
    schedule(listing_letter, 3, make_date(2026, 11, 17));
    run();
    EXPECT_EQ(printed(), (Texts{"Hello Lil", "Hello Sam", "Hello Pia"}));
    EXPECT_EQ(Desk::rows(*desk.module().prospectdb, "select * from [table]")[0]["contacthistory"],
              "11/20/2026: Sent Letter\r\n");
    EXPECT_EQ(Desk::rows(*desk.module().solddb, "select * from [table]")[0]["contacthistory"],
              "11/20/2026: Sent Letter\r\n");
    EXPECT_EQ(last_box(), "3 Letters Printed");
}

TEST_F(FollowUpLetters, AFormOpenMeanwhileIsStoredInItsOwnRowAndNoOther) {
    add_listing(1, {{"first", "Ann"}, {"datelisted", make_date(2026, 11, 1)}});
    add_listing(2, {{"first", "Bob"}, {"datelisted", make_date(2026, 11, 2)}});
    schedule(listing_letter, 2);
    desk.click(desk.menu().Command9);
    desk.runtime().click_row(desk.listings().grid1, 1);
    desk.type(desk.listings().city, "Utica");
    run();
    ASSERT_EQ(printed(), Texts{"Hello Bob"});
    desk.click(desk.listings().Command5);
    EXPECT_EQ(listing("first", 0), "Ann");
    EXPECT_EQ(listing("city", 0), "Utica");
    EXPECT_EQ(listing("first", 1), "Bob");
    EXPECT_EQ(listing("contacthistory", 1), "11/20/2026: Sent Letter\r\n");
}

TEST_F(FollowUpLetters, TwoLettersForOneCustomerLeaveTwoEntriesTheLaterOnTop) {
    add_listing(1, {{"first", "Ann"}});
    schedule(listing_letter, 1, make_date(2026, 11, 20), "hello.rtf", "the second", "9:00 AM");
    schedule(listing_letter, 1, make_date(2026, 11, 20), "hello.rtf", " the first ", "8:00 AM");
    run();
    EXPECT_EQ(printed().size(), 2u);
    EXPECT_EQ(listing("contacthistory"), "11/20/2026: the second\r\n11/20/2026: the first\r\n");
}

TEST_F(FollowUpLetters, ACustomerLeftOutIsCountedButGetsNeitherLetterNorStamp) {
    add_listing(1, {{"includeinprinting", false}});
    schedule(listing_letter, 1);
    run();
    EXPECT_TRUE(printed().empty());
    EXPECT_EQ(listing("contacthistory"), "");
    EXPECT_EQ(listing("datelastcontact"), "11/1/2026");
    EXPECT_EQ(last_box(), "1 Letters Printed");
    EXPECT_TRUE(desk.messages().empty());
}

TEST_F(FollowUpLetters, LettersToVanishedCustomersGoUncounted) {
    schedule(listing_letter, 1);
    schedule(prospect_letter, 2);
    run();
    EXPECT_TRUE(printed().empty());
    EXPECT_EQ(last_box(), "0 Letters Printed");
    EXPECT_TRUE(desk.messages().empty());
}

TEST_F(FollowUpLetters, ALetterOfTheFutureStaysAndSoDoReminders) {
    add_listing(1, {});
    schedule(listing_letter, 1, make_date(2026, 11, 21));
    schedule(listing_letter, 1, make_date(2026, 11, 19));
    schedule(4, 0, make_date(2026, 11, 19), "", "a reminder");
    run();
    const auto left = desk.messages();
    ASSERT_EQ(left.size(), 2u);
    EXPECT_EQ(left[0].at("messagedate"), "11/21/2026");
    EXPECT_EQ(left[1].at("messagetext"), "a reminder");
    EXPECT_EQ(last_box(), "1 Letters Printed");
}

TEST_F(FollowUpLetters, ALetterOfTypeEightIsClearedUnprinted) {
    schedule(8, 1);
    run();
    EXPECT_EQ(last_box(), "0 Letters Printed");
    EXPECT_TRUE(desk.messages().empty());
}

TEST_F(FollowUpLetters, AFolderInTheStoredPathIsIgnored) {
    add_listing(1, {{"first", "Ann"}});
    schedule(listing_letter, 1, make_date(2026, 11, 20), "D:\\elsewhere\\hello.rtf ");
    run();
    EXPECT_EQ(printed(), Texts{"Hello Ann"});
}

TEST_F(FollowUpLetters, APostscriptVanishesAndTheOrderOfTagsIsTheListingsForAll) {
    desk.write_letter("ps.rtf", letter_of("<businessname>[<ps>]"));
    add_to(*desk.module().prospectdb, 1, {{"businessname", "<ps>"}});
    schedule(prospect_letter, 1, make_date(2026, 11, 20), "ps.rtf");
    run();
    EXPECT_EQ(printed(), Texts{"[]"});
}

TEST_F(FollowUpLetters, MarginsAreThoseOfTheSettings) {
    auto& settings = desk.module().settings;
    settings.lmargin = "2";
    settings.tmargin = "1.5";
    settings.rmargin = "none";
    settings.bmargin = "3";
    add_listing(1, {});
    schedule(listing_letter, 1);
    run();
    const auto& place = desk.host.recorded_printer.jobs.at(0).pages.at(0).rich_place;
    EXPECT_EQ(place.left, 2880 - 360);
    EXPECT_EQ(place.top, 2160 - 360);
    EXPECT_EQ(place.right, 12240 - 360);
    EXPECT_EQ(place.bottom, 15840 - 4320 - 360);
}

TEST_F(FollowUpLetters, ANullHistoryBeginsWithTheFirstEntry) {
    add_listing(1, {{"contacthistory", {}}});
    schedule(listing_letter, 1);
    run();
    EXPECT_EQ(listing("contacthistory"), "11/20/2026: Sent Letter\r\n");
}

TEST_F(FollowUpLetters, AMessageWithoutATextIsEnteredAllTheSameAndPrintedOnce) {
    add_listing(1, {{"first", "Ann"}, {"contacthistory", "1/2/2026: called"}});
    Desk::add(*desk.module().messagedb, {{"messagetype", std::int64_t{listing_letter}},
                                         {"customerid", std::int64_t{1}},
                                         {"messagedate", make_date(2026, 11, 18)},
                                         {"letterpath", std::string("hello.rtf")}});
    ASSERT_EQ(desk.messages().at(0).at("messagetext"), "<null>");
    run();
    EXPECT_EQ(printed(), Texts{"Hello Ann"});
    EXPECT_EQ(listing("contacthistory"), "11/20/2026: \r\n1/2/2026: called");
    EXPECT_EQ(last_box(), "1 Letters Printed");
    EXPECT_TRUE(desk.messages().empty());
    run();
    EXPECT_EQ(printed().size(), 1u);
}

// --- The trap ---

TEST_F(FollowUpLetters, AMissingLetterIsPassedOverUncountedAndItsMessageGoes) {
    add_listing(1, {{"first", "Ann"}});
    add_listing(2, {{"first", "Bob"}});
    schedule(listing_letter, 1, make_date(2026, 11, 18), "missing.rtf");
    schedule(listing_letter, 2, make_date(2026, 11, 19));
    run();
    EXPECT_EQ(printed(), Texts{"Hello Bob"});
    EXPECT_EQ(listing("contacthistory", 0), "");
    EXPECT_EQ(listing("contacthistory", 1), "11/20/2026: Sent Letter\r\n");
    EXPECT_EQ(last_box(), "1 Letters Printed");
    EXPECT_TRUE(desk.messages().empty());
    EXPECT_FALSE(desk.host.error.has_value());
}

TEST_F(FollowUpLetters, TheTrapIsTakenOnce) {
    add_listing(1, {{"first", "Ann"}});
    schedule(listing_letter, 1, make_date(2026, 11, 17));
    schedule(listing_letter, 1, make_date(2026, 11, 18), "missing.rtf");
    schedule(listing_letter, 1, make_date(2026, 11, 19), "missing too.rtf");
    run();
    ASSERT_TRUE(desk.host.error.has_value());
    EXPECT_EQ(desk.host.error->number, 53);
    EXPECT_TRUE(desk.host.ended);
    EXPECT_EQ(printed().size(), 1u);
    EXPECT_EQ(desk.messages().size(), 3u);
    EXPECT_TRUE(desk.host.works.at(0).over);
}

TEST_F(FollowUpLetters, TheNextRunHasItsTrapAgain) {
    add_listing(1, {});
    for (int run_number = 0; run_number < 2; ++run_number) {
        schedule(listing_letter, 1, make_date(2026, 11, 18), "missing.rtf");
        run();
    }
    EXPECT_EQ(desk.host.box_texts(), (Texts{"0 Letters Printed", "0 Letters Printed"}));
}

TEST_F(FollowUpLetters, APrinterFailureLeavesTheCustomerUnstamped) {
    add_listing(1, {});
    add_listing(2, {});
    schedule(listing_letter, 1, make_date(2026, 11, 18));
    schedule(listing_letter, 2, make_date(2026, 11, 19));
    desk.host.recorded_printer.failing_jobs = {1};
    run();
    EXPECT_EQ(listing("contacthistory", 0), "");
    EXPECT_EQ(listing("contacthistory", 1), "11/20/2026: Sent Letter\r\n");
    EXPECT_EQ(last_box(), "1 Letters Printed");
}

TEST_F(FollowUpLetters, ALetterThatFailsHalfwayLeavesNothingOnTheNextOnesPage) {
    desk.write_letter("long.rtf", letter_of("0123456789abcdefghij"));
    add_listing(1, {{"first", "Ann"}});
    add_listing(2, {{"first", "Bob"}});
    schedule(listing_letter, 1, make_date(2026, 11, 18), "long.rtf");
    schedule(listing_letter, 2, make_date(2026, 11, 19));
    desk.host.recorded_printer.characters_a_page = 15;
    desk.host.recorded_printer.failing_new_page = 1;
    run();
    EXPECT_EQ(printed(), Texts{"Hello Bob"});
    const auto& page = desk.host.recorded_printer.jobs.at(0).pages.at(0);
    ASSERT_EQ(page.words.size(), 1u);
    EXPECT_EQ(page.words[0].y, 0);
    EXPECT_EQ(last_box(), "1 Letters Printed");
}

TEST_F(FollowUpLetters, AFailureAheadOfTheFirstLetterIsNotCaught) {
    Desk::add(*desk.module().messagedb, {{"messagetype", std::int64_t{listing_letter}},
                                         {"messagedate", make_date(2026, 11, 18)},
                                         {"messagetime", std::string("8:00 AM")},
                                         {"letterpath", std::string("hello.rtf")}});
    run();
    ASSERT_TRUE(desk.host.error.has_value());
    EXPECT_EQ(desk.host.error->number, 94);
    EXPECT_EQ(desk.messages().size(), 1u);
}

TEST_F(FollowUpLetters, OnceArmedTheTrapCatchesAFailureBetweenLettersToo) {
    add_listing(1, {{"first", "Ann"}});
    add_listing(2, {{"first", "Bob"}});
    schedule(listing_letter, 1, make_date(2026, 11, 17));
    Desk::add(*desk.module().messagedb, {{"messagetype", std::int64_t{listing_letter}},
                                         {"messagedate", make_date(2026, 11, 18)},
                                         {"letterpath", std::string("hello.rtf")}});
    schedule(listing_letter, 2, make_date(2026, 11, 19));
    run();
    EXPECT_FALSE(desk.host.error.has_value());
    EXPECT_EQ(printed(), (Texts{"Hello Ann", "Hello Bob"}));
    EXPECT_EQ(last_box(), "2 Letters Printed");
    EXPECT_TRUE(desk.messages().empty());
}

TEST_F(FollowUpLetters, RemindersAloneEndInTheEmptySecondPass) {
    schedule(4, 0, make_date(2026, 11, 19), "", "a reminder");
    run();
    ASSERT_TRUE(desk.host.error.has_value());
    EXPECT_EQ(desk.host.error->number, 3021);
    EXPECT_EQ(desk.messages().size(), 1u);
}

// --- The question of the day ---

TEST_F(FollowUpLetters, TheFirstTickOfADayAsksAndRunsOnOk) {
    add_listing(1, {{"first", "Ann"}});
    schedule(listing_letter, 1, make_date(2026, 11, 21));
    desk.clock.advance_minutes(14 * 60);
    desk.host.answers = {1};
    desk.wait_minutes(1);
    EXPECT_EQ(desk.host.box_texts(), (Texts{"Print Follow Up Letters?", "1 Letters Printed"}));
    EXPECT_EQ(printed(), Texts{"Hello Ann"});
    desk.wait_minutes(1);
    EXPECT_EQ(desk.host.boxes.size(), 2u);
}

TEST_F(FollowUpLetters, CancelLeavesTheLettersForTheButton) {
    schedule(listing_letter, 1, make_date(2026, 11, 21));
    desk.clock.advance_minutes(14 * 60);
    desk.host.answers = {2};
    desk.wait_minutes(1);
    EXPECT_EQ(desk.messages().size(), 1u);
    desk.wait_minutes(1);
    EXPECT_EQ(desk.host.box_texts(), Texts{"Print Follow Up Letters?"});
    run();
    EXPECT_TRUE(desk.messages().empty());
}

TEST_F(FollowUpLetters, TheQuestionIsAskedOnceHoweverLongItStands) {
    desk.clock.advance_minutes(14 * 60);
    desk.host.answers = {2};
    desk.host.during_box.push_back([this] {
        EXPECT_EQ(desk.stored_settings()["lastdate"], "11/21/2026");
        desk.wait_minutes(1);
        desk.wait_minutes(1);
    });
    desk.wait_minutes(1);
    EXPECT_EQ(desk.host.boxes.size(), 1u);
}

TEST_F(FollowUpLetters, AnythingThatSavedFirstSkipsTheQuestion) {
    desk.clock.advance_minutes(14 * 60);
    desk.click(desk.menu().Command9);
    desk.choose(desk.listings().m_newlisting);
    desk.wait_minutes(1);
    EXPECT_TRUE(desk.host.boxes.empty());
}

// --- Long runs ---

TEST_F(FollowUpLetters, TheSignOfTheWorkStandsUntilTheLastJobHasEnded) {
    add_listing(1, {});
    for (int letter = 0; letter < 3; ++letter)
        schedule(listing_letter, 1);
    auto& ended = desk.module().printer().job_ended;
    ended = [this, commit = ended] {
        commit();
        EXPECT_FALSE(desk.host.works.back().over);
    };
    desk.host.during_box.push_back([this] { EXPECT_TRUE(desk.host.works.back().over); });
    run();
    ASSERT_EQ(desk.host.works.size(), 1u);
    EXPECT_EQ(desk.host.works[0].steps, 3);
    EXPECT_EQ(last_box(), "3 Letters Printed");
}

TEST_F(FollowUpLetters, AKillAmongManyLettersLosesAtMostTheLastStamp) {
    constexpr int letters = 40, printed_by_then = 25;
    for (int id = 1; id <= letters; ++id) {
        add_listing(id, {});
        schedule(listing_letter, id);
    }
    desk.runtime().run([] {});
    // What the disk holds as the job has gone is what a killed program leaves.
    support::TemporaryFolder left;
    auto& ended = desk.module().printer().job_ended;
    ended = [this, commit = ended, &left, jobs = 0]() mutable {
        commit();
        if (++jobs == printed_by_then)
            std::filesystem::copy(desk.folder.path(), left.path() / "desk",
                                  std::filesystem::copy_options::recursive);
    };
    run();
    ASSERT_EQ(printed().size(), std::size_t{letters});

    dao::DBEngine engine(*desk.disk, [] { return 2026; });
    const auto stored = engine.Workspaces(0).OpenDatabase(left.file("desk/data/listings.mdb"));
    int stamped = 0;
    for (const auto& row : Desk::rows(*stored, "select * from [table] where id>0"))
        stamped += row.at("contacthistory").empty() ? 0 : 1;
    EXPECT_EQ(stamped, printed_by_then - 1);
    const auto messages = engine.Workspaces(0).OpenDatabase(left.file("desk/data/messagedata.mdb"));
    EXPECT_EQ(Desk::rows(*messages, "select * from [table]").size(), std::size_t{letters});
}

} // namespace
} // namespace tolva
