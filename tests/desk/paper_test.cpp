// What stands under all printing, and the papers of the main menu, the planner and the help.

#include <gtest/gtest.h>

#include <cmath>

#include "printing/page.h"
#include "support/desk.h"
#include "support/errors.h"
#include "support/paper.h"

namespace tolva {
namespace {

using basic::make_date;
using support::Desk;
using support::printed;
using support::Printed;
using support::RecordedPrinter;
using Texts = std::vector<std::string>;

// --- Positions ---

TEST(Page, MillimetresAre567TenthsOfATwipInSinglePrecision) {
    RecordedPrinter printer;
    printing::printxy(printer, 15, 15);
    EXPECT_EQ(printer.CurrentX(), 850.5F);
    EXPECT_EQ(printer.CurrentY(), 850.5F);
    printing::printx(printer, 1);
    EXPECT_EQ(printer.CurrentX(), 56.7F);
    printing::printy(printer, 185);
    EXPECT_EQ(printer.CurrentY(), 10489.5F);
    printing::printline(printer, 1, 2, 3, 4);
    printer.EndDoc();
    const auto& rule = printer.jobs.at(0).pages.at(0).rules.at(0);
    EXPECT_EQ(rule.x1, static_cast<double>(56.7F));
    EXPECT_EQ(rule.y2, static_cast<double>(226.8F));
}

TEST(Page, ThePrinterOutlivesTheProgramAndCallsItNoMore) {
    support::FixedClock clock({2026, 11, 20, 10, 0, 0});
    support::ScriptedHost host;
    const auto disk = files::make_disk();
    const support::TemporaryFolder folder;
    platform::Runtime runtime(host, clock);
    {
        const module::Module module(runtime, *disk, folder.path().string());
        EXPECT_TRUE(host.printer().job_ended) << "what is stored by a job's end is made durable";
    }
    EXPECT_FALSE(host.printer().job_ended);
    host.printer().Print("words");
    host.printer().EndDoc();
    EXPECT_EQ(host.recorded_printer.jobs.size(), 1u);
}

// --- Rich text ---

class PrintedRichText : public testing::Test {
  protected:
    void print(const std::string& plain, const printing::Margins& margins = {1440, 1440, 1440, 1440}) {
        rtf::RichText text;
        text.set_text(plain);
        printing::printrichtext(printer, text, margins);
    }
    RecordedPrinter printer;
};

TEST_F(PrintedRichText, OpensItsJobAndEachPageWithABlankInTheCurrentFont) {
    printer.characters_a_page = 10;
    printer.FontSize = 12;
    print("0123456789abcdefghijXYZ");
    ASSERT_EQ(printer.jobs.size(), 1u);
    const auto& pages = printer.jobs[0].pages;
    ASSERT_EQ(pages.size(), 3u);
    EXPECT_EQ(pages[0].rich_text, "0123456789");
    EXPECT_EQ(pages[1].rich_text, "abcdefghij");
    EXPECT_EQ(pages[2].rich_text, "XYZ");
    for (const auto& page : pages) {
        EXPECT_EQ(printed(page), (std::vector<Printed>{{0, 0, " ", ""}}));
        EXPECT_EQ(page.words[0].size, 12);
    }
}

TEST_F(PrintedRichText, ThatEndsWithItsPageHasNoBlankPage) {
    printer.characters_a_page = 10;
    print("0123456789");
    EXPECT_EQ(printer.jobs.at(0).pages.size(), 1u);
    print("");
    EXPECT_EQ(printer.jobs.at(1).pages.size(), 1u);
}

TEST_F(PrintedRichText, StandsBetweenItsMarginsWhateverTheEdgeOfTheDevice) {
    printer.edge = 250;
    print("text", {100, 200, 300, 400});
    const auto& place = printer.jobs.at(0).pages.at(0).rich_place;
    EXPECT_EQ(place.left, 100 - 250);
    EXPECT_EQ(place.top, 200 - 250);
    EXPECT_EQ(place.right, 12240 - 300 - 250);
    EXPECT_EQ(place.bottom, 15840 - 400 - 250);
}

TEST_F(PrintedRichText, WithoutRoomOnThePaperFailsInsteadOfFeedingSheetsForEver) {
    printer.characters_a_page = 0;
    EXPECT_EQ(support::error_number([&] { print("text"); }), 482);
    EXPECT_TRUE(printer.jobs.empty());
    printer.characters_a_page = 2000;
    print("another");
    ASSERT_EQ(printer.jobs.size(), 1u);
    EXPECT_EQ(printer.jobs[0].pages.size(), 1u);
    EXPECT_EQ(printer.jobs[0].pages[0].words.size(), 1u) << "nothing of the job that was given up";
}

TEST_F(PrintedRichText, WhoseMarginsMeetBeginsNoJob) {
    for (const printing::Margins& margins :
         {printing::Margins{6120, 0, 6120, 0}, printing::Margins{0, 10000, 0, 5840}}) {
        EXPECT_EQ(support::error_number([&] { print("text", margins); }), 482);
        EXPECT_EQ(printer.jobs_begun(), 0);
    }
    // Nothing has room anywhere.
    print("", {6120, 0, 6120, 0});
    EXPECT_EQ(printer.jobs.size(), 1u);
}

TEST_F(PrintedRichText, ReachesOffThePaperByASheetAtMost) {
    print("text", {-720, -1e300, -1e9, -INFINITY});
    const auto& place = printer.jobs.at(0).pages.at(0).rich_place;
    EXPECT_EQ(place.left, -720 - 360);
    EXPECT_EQ(place.top, -15840 - 360);
    EXPECT_EQ(place.right, 2 * 12240 - 360);
    EXPECT_EQ(place.bottom, 2 * 15840 - 360);
    EXPECT_EQ(support::error_number([&] { print("text", {INFINITY, 0, -INFINITY, 0}); }), 482);
}

// --- Today's messages ---

class TodaysPaper : public testing::Test {
  protected:
    void add(const std::string& text, const std::string& time, int type = 4, int day = 20,
             bool flag = false) {
        Desk::add(*desk.module().messagedb, {{"messageid", std::int64_t{1}},
                                             {"messagetype", std::int64_t{type}},
                                             {"customerid", std::int64_t{0}},
                                             {"messagetext", text},
                                             {"messagedate", make_date(2026, 11, day)},
                                             {"messagetime", time},
                                             {"messageflag", flag},
                                             {"letterpath", std::string()}});
    }
    Desk desk;
};

TEST_F(TodaysPaper, ListsTheMessagesOfTheDayByTime) {
    desk.start();
    add("call Ann\r\nabout the roof", "4:00 PM");
    add(" call Bob ", "11:00 AM");
    add("yesterday", "9:00 AM", 4, 19);
    add("raised", "9:00 AM", 4, 20, true);
    add("a letter", "9:00 AM", 5);
    desk.host.recorded_printer.FontSize = 20;
    desk.click(desk.menu().Command13);
    ASSERT_EQ(desk.host.recorded_printer.jobs.size(), 1u);
    const auto& page = desk.host.recorded_printer.jobs[0].pages.at(0);
    const float line = 10 * 20 * 1.15F;
    std::vector<Printed> expected;
    float y = 0;
    for (const auto& [text, style] :
         std::vector<std::pair<std::string, std::string>>{{"Messages for 11/20/2026", "bu"},
                                                          {"", ""},
                                                          {"11:00:00 AM", "b"},
                                                          {"call Bob", ""},
                                                          {"", ""},
                                                          {"4:00:00 PM", "b"},
                                                          {"call Ann", ""},
                                                          {"about the roof", ""},
                                                          {"", ""}}) {
        expected.push_back({0, y, text, style});
        y += line;
    }
    EXPECT_EQ(printed(page), expected);
    for (const auto& message : desk.messages())
        EXPECT_EQ(message.at("messageflag"), message.at("messagetext") == "raised" ? "True" : "False");
}

TEST_F(TodaysPaper, WithNothingForTodaySaysSo) {
    desk.start();
    add("tomorrow", "9:00 AM", 4, 21);
    desk.click(desk.menu().Command13);
    EXPECT_EQ(desk.host.box_texts(), Texts{"No Messages Scheduled Today"});
    EXPECT_EQ(desk.host.boxes[0].title, "Message");
    EXPECT_TRUE(desk.host.recorded_printer.jobs.empty());
}

TEST_F(TodaysPaper, ALongDayGoesOnOnTheNextPage) {
    desk.start();
    for (int message = 0; message < 30; ++message)
        add("message", "4:00 PM");
    desk.click(desk.menu().Command13);
    EXPECT_EQ(desk.host.recorded_printer.jobs.at(0).pages.size(), 2u);
}

// --- The help ---

class Help : public testing::Test {
  protected:
    Help() {
        desk.start();
        for (const char* name : {"TOLVA_Documentation", "TOLVA_Tutorial"})
            std::ofstream(desk.data_file(std::string(name) + ".rtf"), std::ios::binary)
                << "{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0 Arial;}}\\margl1000\\margr1100\\margt1200\\margb1300 "
                << "{\\b The} " << name << "\\par}";
    }
    shell::instructions& screen() { return desk.module().instructions(); }

    Desk desk;
};

TEST_F(Help, EachEntryShowsItsDocumentUnderTheOneCaption) {
    desk.choose(desk.menu().mviewinstr);
    EXPECT_TRUE(screen().visible());
    EXPECT_FALSE(screen().modal());
    EXPECT_EQ(screen().rtf1.content().text(), "The TOLVA_Documentation");
    EXPECT_EQ(screen().caption, "Tolva Guide 4.0");
    desk.choose(desk.menu().mviewtutorial);
    EXPECT_EQ(screen().rtf1.content().text(), "The TOLVA_Tutorial");
    EXPECT_EQ(screen().caption, "Tolva Guide 4.0");
    desk.click(screen().Command2);
    EXPECT_FALSE(desk.module().instructions.loaded());
}

TEST_F(Help, AMissingDocumentEndsTheProgram) {
    std::filesystem::remove(desk.data_file("TOLVA_Tutorial.rtf"));
    desk.choose(desk.menu().mviewtutorial);
    ASSERT_TRUE(desk.host.error.has_value());
    EXPECT_EQ(desk.host.error->number, 53);
}

TEST_F(Help, PrintsTheWholeBetweenTheDocumentsOwnMargins) {
    desk.choose(desk.menu().mviewinstr);
    desk.click(screen().Command1);
    ASSERT_EQ(desk.host.prints_asked.size(), 1u);
    EXPECT_FALSE(desk.host.prints_asked[0].has_selection);
    ASSERT_EQ(desk.host.recorded_printer.jobs.size(), 1u);
    const auto& page = desk.host.recorded_printer.jobs[0].pages.at(0);
    EXPECT_EQ(page.rich_text, "The TOLVA_Documentation");
    EXPECT_EQ(page.rich_place.left, 1000 - 360);
    EXPECT_EQ(page.rich_place.bottom, 15840 - 1300 - 360);
    EXPECT_EQ(page.words.at(0).text, "");
}

TEST_F(Help, PrintsTheSelectionWhenThatIsWanted) {
    desk.choose(desk.menu().mviewinstr);
    desk.runtime().select(screen().rtf1, 4, 5);
    desk.host.print_scope = platform::PrintScope::selection;
    desk.click(screen().Command1);
    EXPECT_TRUE(desk.host.prints_asked.at(0).has_selection);
    EXPECT_EQ(desk.host.recorded_printer.jobs.at(0).pages.at(0).rich_text.substr(0, 5), "TOLVA");
    EXPECT_LE(desk.host.recorded_printer.jobs.at(0).pages.at(0).rich_text.size(), 7u);
}

TEST_F(Help, CancelAndFailuresEndThePrintingSilently) {
    desk.choose(desk.menu().mviewinstr);
    desk.host.print_scope = platform::PrintScope::cancelled;
    desk.click(screen().Command1);
    EXPECT_TRUE(desk.host.recorded_printer.jobs.empty());
    desk.host.print_scope = platform::PrintScope::all;
    desk.host.recorded_printer.failing_jobs = {1};
    desk.click(screen().Command1);
    EXPECT_TRUE(desk.host.boxes.empty());
    EXPECT_FALSE(desk.host.error.has_value());
    EXPECT_TRUE(screen().visible());
}

TEST_F(Help, WithoutRoomBetweenItsMarginsLeavesNothingOnTheNextJobsPage) {
    std::ofstream(desk.data_file("TOLVA_Tutorial.rtf"), std::ios::binary)
        << "{\\rtf1\\margl6120\\margr6120 narrow}";
    desk.choose(desk.menu().mviewtutorial);
    desk.click(screen().Command1);
    EXPECT_FALSE(desk.host.error.has_value());
    auto& printer = desk.host.recorded_printer;
    EXPECT_TRUE(printer.jobs.empty());
    printer.Print("of another job");
    printer.EndDoc();
    EXPECT_EQ(printed(printer.jobs.at(0).pages.at(0)), (std::vector<Printed>{{0, 0, "of another job", ""}}));
}

TEST_F(Help, TheMenuAsksForTheDefaultPrinter) {
    desk.choose(desk.menu().m_changeprinter);
    EXPECT_EQ(desk.host.printer_choices, 1);
}

// --- The planner's day ---

class PlannerPaper : public testing::Test {
  protected:
    PlannerPaper() {
        desk.start();
        desk.click(desk.menu().Command2);
        desk.host.boxes.clear();
    }
    messages::planner& screen() { return desk.module().planner(); }
    void print(int answer = 1) {
        desk.host.answers = {answer};
        desk.choose(screen().m_print);
    }
    Desk desk;
};

TEST_F(PlannerPaper, HasTheFilledSlotsAndTheOpenLines) {
    screen().timeperiod[0].text = " Ann Smith ";
    screen().timeperiod[59].text = "late";
    screen().td[0].text = " keep blanks ";
    screen().td[1].text = "done";
    screen().cb[1].value = 1;
    screen().td[79].text = "last";
    print();
    ASSERT_EQ(desk.host.recorded_printer.jobs.size(), 1u);
    const auto& page = desk.host.recorded_printer.jobs[0].pages.at(0);
    std::vector<Printed> expected;
    float y = 0;
    for (const auto& [text, style] :
         std::vector<std::pair<std::string, std::string>>{{"Daily Planner 11/20/2026", "b"},
                                                          {"", "b"},
                                                          {"7:00: Ann Smith", ""},
                                                          {"9:45: late", ""},
                                                          {"", ""},
                                                          {"", ""},
                                                          {"To Do List for 11/20/2026", "b"},
                                                          {"", "b"},
                                                          {" keep blanks ", ""},
                                                          {"last", ""}}) {
        expected.push_back({0, y, text, style});
        y += 12 * 20 * 1.15F;
    }
    EXPECT_EQ(printed(page), expected);
    EXPECT_EQ(page.words[0].size, 12);
    EXPECT_EQ(desk.host.box_texts(), Texts{"Print Daily Planner?"});
}

TEST_F(PlannerPaper, OfToDoLinesAloneIsNothing) {
    screen().td[0].text = "call Ann";
    print();
    EXPECT_EQ(desk.host.box_texts(), (Texts{"Print Daily Planner?", "There is nothing to print"}));
    EXPECT_EQ(desk.host.boxes[1].title, "Message");
    EXPECT_TRUE(desk.host.recorded_printer.jobs.empty());
}

TEST_F(PlannerPaper, IsNotPrintedOnCancel) {
    screen().timeperiod[0].text = "Ann";
    print(2);
    EXPECT_TRUE(desk.host.recorded_printer.jobs.empty());
}

} // namespace
} // namespace tolva
