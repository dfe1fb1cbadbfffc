#include <gtest/gtest.h>

#include <ctime>

#include "support/customers.h"
#include "support/desk.h"
#include "support/paper.h"

namespace tolva {
namespace {

using basic::make_date;
using support::Desk;
using support::millimetres;
using support::Printed;
using support::printed;
using Texts = std::vector<std::string>;

constexpr float line_height = 10 * 20 * 1.15F;

class PrintedLists : public testing::Test {
  protected:
    PrintedLists() { desk.start(); }

    void add_listings(int count) {
        for (int number = 0; number < count; ++number)
            Desk::add(*desk.module().listingdb,
                      support::customer({{"first", "Ann"}, {"last", "Smith"}, {"listingcity", "Salem"}},
                                        {{"listingaddress", std::to_string(number) + " Elm St"},
                                         {"listingprice", 245000.0},
                                         {"datelisted", make_date(2026, 11, 1)}}));
    }
    records::listings& listings() {
        desk.click(desk.menu().Command9);
        return desk.listings();
    }
    const support::RecordedPrinter::Job& print(platform::MenuEntry& entry, int answer = 1) {
        desk.host.answers = {answer};
        desk.choose(entry);
        EXPECT_EQ(desk.host.recorded_printer.jobs.size(), 1u);
        return desk.host.recorded_printer.jobs.at(0);
    }
    /// One row of six cells; a heading is bold.
    static void append(std::vector<Printed>& lines, const std::vector<double>& x, float y, const Texts& cells,
                       const std::string& style = "") {
        for (std::size_t column = 0; column < cells.size(); ++column)
            lines.push_back({millimetres(x[column]), y, cells[column], style});
    }
    static Texts texts(const support::RecordedPrinter::Page& page) {
        Texts result;
        for (const auto& word : page.words)
            result.push_back(word.text);
        return result;
    }

    const std::vector<double> customer_columns = {20, 70, 120, 165, 195, 220};
    Desk desk;
};

TEST_F(PrintedLists, OfListingsHaveEachCellAtItsPlace) {
    add_listings(2);
    const auto& job = print(listings().m_printlistings);
    ASSERT_EQ(job.pages.size(), 1u);
    std::vector<Printed> expected;
    append(expected, customer_columns, millimetres(15),
           {"Name", "Address", "City", "Price", "Date Listed", "Date Expires"}, "b");
    append(expected, customer_columns, millimetres(20),
           {"Ann &  Smith", "0 Elm St", "Salem", "$245000", "11/1/2026", ""});
    append(expected, customer_columns, millimetres(20) + line_height,
           {"Ann &  Smith", "1 Elm St", "Salem", "$245000", "11/1/2026", ""});
    // The co-owner's last name is empty, Smith is not.
    for (auto& line : expected)
        if (line.text == "Ann &  Smith")
            line.text = "Ann Smith";
    EXPECT_EQ(printed(job.pages[0]), expected);
    for (const auto& word : job.pages[0].words)
        EXPECT_EQ(word.size, 10);
    EXPECT_EQ(job.pages[0].orientation, platform::Printer::landscape);
    ASSERT_EQ(job.pages[0].rules.size(), 1u);
    const auto& rule = job.pages[0].rules[0];
    EXPECT_EQ(static_cast<float>(rule.x1), millimetres(20));
    EXPECT_EQ(static_cast<float>(rule.y1), millimetres(20));
    EXPECT_EQ(static_cast<float>(rule.x2), millimetres(240));
    EXPECT_EQ(static_cast<float>(rule.y2), millimetres(20));
    EXPECT_EQ(desk.host.box_texts(), Texts{"Print List?"});
    EXPECT_EQ(job.name, listings().caption);
}

TEST_F(PrintedLists, OfProspectsAndSalesTakeTheirHeadingsFromTheGrid) {
    desk.click(desk.menu().Command3);
    desk.click(desk.menu().Command7);
    desk.host.answers = {1, 1};
    desk.choose(static_cast<records::prospect&>(desk.module().prospect()).m_printlist);
    desk.choose(static_cast<records::sold&>(desk.module().sold()).m_printlist);
    const auto& jobs = desk.host.recorded_printer.jobs;
    ASSERT_EQ(jobs.size(), 2u);
    for (const auto& [job, headings] :
         {std::pair{&jobs[0], Texts{"Name", "Address", "City", "Phone #", "Date Acquired", "Interest Level"}},
          std::pair{&jobs[1], Texts{"Name", "Address", "City", "Selling Price", "Date Sold", "Agency"}}}) {
        std::vector<Printed> expected;
        append(expected, customer_columns, millimetres(15), headings, "b");
        append(expected, customer_columns, millimetres(20), Texts(6));
        EXPECT_EQ(printed(job->pages.at(0)), expected);
    }
}

TEST_F(PrintedLists, OfAddressesHaveHeadingsAndColumnsOfTheirOwn) {
    Desk::add(*desk.module().addressdb, {{"id", std::int64_t{1}},
                                         {"first", std::string("Ann")},
                                         {"last", std::string("Smith")},
                                         {"businessname", std::string("Elm Works")},
                                         {"city", std::string("Salem")},
                                         {"state", std::string("OR")},
                                         {"zip", std::string("97301")},
                                         {"homephone", std::string("555")}});
    desk.click(desk.menu().Command1);
    const auto& job = print(static_cast<records::addressbook&>(desk.module().addressbook()).m_printlist);
    const std::vector<double> columns = {20, 60, 100, 140, 180, 210};
    std::vector<Printed> expected;
    append(expected, columns, millimetres(15),
           {"Name", "Business Name", "Address", "City State Zip", "Home Phone", "Work Phone"}, "b");
    append(expected, columns, millimetres(20), {"Ann Smith", "Elm Works", "", "Salem OR 97301", "555", ""});
    EXPECT_EQ(printed(job.pages.at(0)), expected);
}

TEST_F(PrintedLists, CancelPrintsAllTheSame) {
    add_listings(1);
    EXPECT_EQ(print(listings().m_printlistings, 2).pages.size(), 1u);
}

TEST_F(PrintedLists, OfNobodyHaveTheHeaderTheRuleAndABlankLine) {
    const auto& job = print(listings().m_printlistings);
    ASSERT_EQ(job.pages.size(), 1u);
    EXPECT_EQ(texts(job.pages[0]), (Texts{"Name", "Address", "City", "Price", "Date Listed", "Date Expires",
                                          "", "", "", "", "", ""}));
    EXPECT_EQ(job.pages[0].rules.size(), 1u);
}

TEST_F(PrintedLists, ARowThatBeginsExactlyAtTheBorderGoesToANewPage) {
    // From 1134 twips down in steps of 346.5 the 28th row begins at 10489.5.
    desk.host.recorded_printer.line_spacing = 346.5F / 200;
    add_listings(30);
    const auto& job = print(listings().m_printlistings);
    ASSERT_EQ(job.pages.size(), 2u);
    EXPECT_EQ(job.pages[0].words.size(), 6u + 27 * 6);
    EXPECT_EQ(job.pages[1].words.size(), 6u + 3 * 6);
}

TEST_F(PrintedLists, ARowThatBeginsAHairAboveTheBorderStays) {
    desk.host.recorded_printer.line_spacing = 346.49F / 200;
    add_listings(28);
    EXPECT_EQ(print(listings().m_printlistings).pages.size(), 1u);
}

TEST_F(PrintedLists, LaterPagesBeginWithTheHeaderAndItsRule) {
    add_listings(60);
    const auto& job = print(listings().m_printlistings);
    ASSERT_EQ(job.pages.size(), 2u);
    std::vector<Printed> expected;
    append(expected, customer_columns, millimetres(15),
           {"Name", "Address", "City", "Price", "Date Listed", "Date Expires"}, "b");
    append(expected, customer_columns, millimetres(20),
           {"Ann Smith", "41 Elm St", "Salem", "$245000", "11/1/2026", ""});
    const auto lines = printed(job.pages[1]);
    ASSERT_GE(lines.size(), expected.size());
    EXPECT_EQ(std::vector<Printed>(lines.begin(), lines.begin() + 12), expected);
    EXPECT_EQ(job.pages[1].rules.size(), 1u);
    EXPECT_EQ(job.pages[1].orientation, platform::Printer::landscape);
}

TEST_F(PrintedLists, LeaveTheGridOnItsLastCellAndThePaperUpright) {
    add_listings(3);
    auto& screen = listings();
    print(screen.m_printlistings);
    EXPECT_EQ(screen.grid1.Row, 3);
    EXPECT_EQ(screen.grid1.Col, 6);
    EXPECT_EQ(desk.host.recorded_printer.Width(), 12240);
}

TEST_F(PrintedLists, AFailureLeavesThePaperSideways) {
    auto& screen = listings();
    desk.host.recorded_printer.failing_jobs = {1};
    desk.host.answers = {1};
    desk.choose(screen.m_printlistings);
    ASSERT_TRUE(desk.host.error.has_value());
    EXPECT_EQ(desk.host.error->number, 482);
    EXPECT_EQ(desk.host.recorded_printer.Width(), 15840);
}

TEST_F(PrintedLists, AThousandRowsTakeLessThanASecondAndShowTheirProgress) {
    add_listings(1000);
    auto& screen = listings();
    const std::clock_t begin = std::clock();
    print(screen.m_printlistings);
    EXPECT_LT(std::clock() - begin, CLOCKS_PER_SEC);
    ASSERT_EQ(desk.host.works.size(), 1u);
    EXPECT_EQ(desk.host.works[0].steps, 1000);
    EXPECT_TRUE(desk.host.works[0].over);
}

} // namespace
} // namespace tolva
