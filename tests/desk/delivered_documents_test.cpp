// The letters and help documents that come with the program.

#include <gtest/gtest.h>

#include <regex>
#include <set>

#include "support/customers.h"
#include "support/desk.h"

namespace tolva {
namespace {

using support::Desk;
using support::file_content;
namespace fs = std::filesystem;

std::vector<fs::path> delivered_letters() {
    std::vector<fs::path> letters;
    for (const auto& entry : fs::directory_iterator(fs::path(TOLVA_SOURCE_DIR) / "delivery/letters"))
        letters.push_back(entry.path());
    return letters;
}

TEST(DeliveredLetters, HaveNoTagThatTheMergeDoesNotKnow) {
    const std::set<std::string> known = {
        "<firstname>", "<lastname>", "<cofirstname>",  "<colastname>",  "<phone>", "<address>",   "<city>",
        "<state>",     "<zip>",      "<businessname>", "<salesperson>", "<ps>",    "<bothnames>", "<date>"};
    EXPECT_GE(delivered_letters().size(), 6u);
    for (const fs::path& path : delivered_letters()) {
        rtf::RichText letter;
        letter.load(file_content(path));
        EXPECT_TRUE(rtf::losses(letter.document()).empty()) << path;
        const std::string text = letter.text();
        const std::regex tag("<[^>]*>");
        std::size_t tags = 0;
        for (auto at = std::sregex_iterator(text.begin(), text.end(), tag); at != std::sregex_iterator();
             ++at) {
            EXPECT_TRUE(known.count(at->str())) << path << ": " << at->str();
            ++tags;
        }
        EXPECT_GT(tags, 5u) << path;
    }
}

TEST(DeliveredLetters, ComeOutForACoupleAndForOnePersonWithNoTagLeft) {
    Desk desk;
    desk.start();
    desk.module().settings.salespersonname = "Pat Agent";
    const std::map<std::string, jet::Value> listed = {{"datelisted", basic::make_date(2026, 11, 1)}};
    const support::Customer one = {{"first", "Ann"},    {"last", "Smith"}, {"address", "1 Elm St"},
                                   {"city", "Salem"},   {"state", "OR"},   {"zip", "97301"},
                                   {"homephone", "555"}};
    support::Customer couple = one;
    couple["co_first"] = "Bob";
    couple["co_last"] = "Smith";
    Desk::add(*desk.module().listingdb, support::customer(one, listed));
    Desk::add(*desk.module().listingdb, support::customer(couple, listed));
    desk.click(desk.menu().Command9);
    desk.choose(desk.listings().m_printletter);
    auto& screen = static_cast<letters::letter&>(desk.module().letter());
    for (const fs::path& path : delivered_letters()) {
        desk.host.file_to_open = path.string();
        desk.click(screen.Command1);
        desk.host.answers = {1};
        desk.host.recorded_printer.jobs.clear();
        desk.click(screen.Command2);
        ASSERT_EQ(desk.host.recorded_printer.jobs.size(), 2u);
        for (const auto& job : desk.host.recorded_printer.jobs) {
            ASSERT_EQ(job.pages.size(), 1u) << path;
            const std::string& text = job.pages[0].rich_text;
            EXPECT_EQ(text.find('<'), std::string::npos) << path << ": " << text;
            EXPECT_NE(text.find("Dear Ann"), std::string::npos) << path << ": " << text;
            EXPECT_NE(text.find("Salem, OR 97301"), std::string::npos) << path;
            EXPECT_NE(text.find("Pat Agent"), std::string::npos) << path;
            EXPECT_EQ(text.find("P.S."), std::string::npos) << path << ": no postscript was typed";
        }
    }
}

TEST(DeliveredHelp, IsThereAndSpeaksOfEveryPartOfTheMainMenu) {
    Desk desk;
    desk.start();
    desk.choose(desk.menu().mviewinstr);
    ASSERT_FALSE(desk.host.error) << desk.host.error->text;
    const rtf::RichText& shown = desk.module().instructions().rtf1.content();
    EXPECT_TRUE(rtf::losses(shown.document()).empty());
    const std::string guide = shown.text();
    for (const char* part :
         {"Current Listings", "Prospects", "Homes Sold", "Address Book", "Daily Planner & To Do List",
          "Schedule Message", "Show Today's Messages", "Print Today's Messages", "Print Scheduled Letters",
          "Word Processor", "Payment Calculator", "Graphs", "Preferences", "EXIT", "Change Default Printer",
          "PDF files"})
        EXPECT_NE(guide.find(part), std::string::npos) << part;
    desk.choose(desk.menu().mviewtutorial);
    const std::string tutorial = desk.module().instructions().rtf1.content().text();
    // The letters that it has the reader load.
    for (const char* letter : {"Just Listed.rtf", "Thank You.rtf"}) {
        EXPECT_NE(tutorial.find(letter), std::string::npos) << letter;
        EXPECT_TRUE(fs::exists(fs::path(TOLVA_SOURCE_DIR) / "delivery/letters" / letter));
    }
}

} // namespace
} // namespace tolva
