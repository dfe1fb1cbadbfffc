#include <gtest/gtest.h>

#include <ctime>

#include "support/customers.h"
#include "support/desk.h"
#include "support/paper.h"

namespace tolva {
namespace {

using basic::make_date;
using module::LabelMode;
using support::Customer;
using support::Desk;
using support::millimetres;
using support::Printed;
using support::printed;
using Texts = std::vector<std::string>;

constexpr float label_line = 12 * 20 * 1.15F;

class Labels : public testing::Test {
  protected:
    Labels() { desk.start(); }

    printing::label& screen() { return static_cast<printing::label&>(desk.module().label()); }
    records::prospect& prospects() { return static_cast<records::prospect&>(desk.module().prospect()); }
    records::sold& sales() { return static_cast<records::sold&>(desk.module().sold()); }

    /// In the order of the numbers when sorted as text.
    static std::string name(int number) { return "No." + std::to_string(1000 + number); }
    void add(dao::Database& database, int number, const Customer& values = {}) {
        Customer row = {{"first", "Ann"},  {"last", name(number)}, {"address", "1 Elm St"},
                        {"city", "Salem"}, {"state", "OR"},        {"zip", "97301"}};
        for (const auto& [column, value] : values)
            row[column] = value;
        const basic::Date date = make_date(2026, 11, 1);
        if (&database == desk.module().listingdb.get())
            Desk::add(database, support::customer(row, {{"id", std::int64_t{number}}, {"datelisted", date}}));
        else if (&database == desk.module().prospectdb.get())
            Desk::add(database, support::customer(
                                    row, {{"dateacquired", date}, {"interestlevel", std::string("Hot!")}}));
        else
            Desk::add(database, support::customer(row, {{"datesold", date},
                                                        {"sellingprice", 1.0},
                                                        {"commission", 1.0},
                                                        {"expenses", 1.0},
                                                        {"netcommission", 1.0}}));
    }
    void add_listings(int count) {
        for (int number = 1; number <= count; ++number)
            add(*desk.module().listingdb, number);
    }
    /// The labels of the listings, from the label with that number on.
    const support::RecordedPrinter::Job& print_listings(int label) {
        desk.click(desk.menu().Command9);
        desk.choose(desk.listings().m_printlabels);
        return print(label);
    }
    const support::RecordedPrinter::Job& print(int label) {
        desk.host.answers = {1};
        desk.click(screen().Command1[label - 1]);
        EXPECT_EQ(desk.host.recorded_printer.jobs.size(), 1u);
        return desk.host.recorded_printer.jobs.at(0);
    }
    static std::vector<Printed> label_at(double x, double y, const std::string& last) {
        const auto left = static_cast<float>(x * 1440);
        const auto top = static_cast<float>(y * 1440);
        return {{left, top, "Ann " + last, ""},
                {left, top + label_line, "1 Elm St", ""},
                {left, top + label_line + label_line, "Salem, OR 97301", ""}};
    }
    static std::vector<Printed> nth(const support::RecordedPrinter::Page& page, std::ptrdiff_t label) {
        const auto lines = printed(page);
        return {lines.begin() + 3 * label, lines.begin() + 3 * label + 3};
    }

    Desk desk;
};

TEST_F(Labels, TheScreenHasAButtonForEachLabelOfASheet) {
    EXPECT_EQ(screen().caption, "Click on Starting Label");
    EXPECT_EQ(screen().Command2.caption, "E&XIT without Printing Labels");
    ASSERT_EQ(screen().Command1.size(), 30);
    EXPECT_EQ(screen().Command1[0].caption, "1");
    EXPECT_EQ(screen().Command1[29].caption, "30");
}

TEST_F(Labels, EachScreenSaysWhoseLabelsTheyAre) {
    add(*desk.module().listingdb, 1);
    add(*desk.module().prospectdb, 1);
    add(*desk.module().solddb, 1);
    desk.click(desk.menu().Command9);
    desk.choose(desk.listings().m_printlabels);
    EXPECT_EQ(desk.module().labelmode, LabelMode::listings);
    EXPECT_TRUE(screen().visible());
    EXPECT_FALSE(screen().modal());
    desk.click(desk.menu().Command3);
    desk.choose(prospects().m_printlabels);
    EXPECT_EQ(desk.module().labelmode, LabelMode::prospects);
    desk.click(desk.menu().Command7);
    desk.choose(sales().m_printlabels);
    EXPECT_EQ(desk.module().labelmode, LabelMode::sold);
}

TEST_F(Labels, AnEmptyListHasNone) {
    desk.click(desk.menu().Command9);
    desk.choose(desk.listings().m_printlabels);
    desk.click(desk.menu().Command3);
    desk.choose(prospects().m_printlabels);
    desk.click(desk.menu().Command7);
    desk.choose(sales().m_printlabels);
    EXPECT_EQ(desk.host.box_texts(),
              (Texts{"No Active Listings", "No Active Prospects", "No Active Customers"}));
    EXPECT_FALSE(desk.module().label.loaded());
}

TEST_F(Labels, StandThreeAcrossAndAnInchApart) {
    add_listings(30);
    const auto& job = print_listings(1);
    // Exactly thirty fill one sheet.
    ASSERT_EQ(job.pages.size(), 1u);
    EXPECT_EQ(job.pages[0].words.size(), 90u);
    EXPECT_EQ(nth(job.pages[0], 0), label_at(0, 0, name(1)));
    EXPECT_EQ(nth(job.pages[0], 1), label_at(2.92, 0, name(2)));
    EXPECT_EQ(nth(job.pages[0], 2), label_at(5.84, 0, name(3)));
    EXPECT_EQ(nth(job.pages[0], 3), label_at(0, 1, name(4)));
    EXPECT_EQ(nth(job.pages[0], 29), label_at(5.84, 9, name(30)));
    for (const auto& word : job.pages[0].words)
        EXPECT_EQ(word.size, 12);
    EXPECT_EQ(job.name, "Labels");
    EXPECT_FALSE(desk.module().label.loaded());
}

TEST_F(Labels, TheThirtyFirstBeginsANewSheet) {
    add_listings(31);
    const auto& job = print_listings(1);
    ASSERT_EQ(job.pages.size(), 2u);
    EXPECT_EQ(job.pages[1].words.size(), 3u);
    EXPECT_EQ(nth(job.pages[1], 0), label_at(0, 0, name(31)));
}

TEST_F(Labels, BeginAtTheLabelThatIsClickedOn) {
    for (int label = 1; label <= 30; ++label) {
        Desk fresh;
        fresh.start();
        for (const char* last : {"One", "Two"})
            Desk::add(*fresh.module().listingdb, support::customer({{"first", "Ann"},
                                                                    {"last", last},
                                                                    {"address", "1 Elm St"},
                                                                    {"city", "Salem"},
                                                                    {"state", "OR"},
                                                                    {"zip", "97301"}},
                                                                   {{"datelisted", make_date(2026, 11, 1)}}));
        fresh.click(fresh.menu().Command9);
        fresh.choose(fresh.listings().m_printlabels);
        fresh.host.answers = {1};
        fresh.click(static_cast<printing::label&>(fresh.module().label()).Command1[label - 1]);
        const auto& job = fresh.host.recorded_printer.jobs.at(0);
        const double x[] = {0, 2.92, 5.84};
        EXPECT_EQ(nth(job.pages.at(0), 0), label_at(x[(label - 1) % 3], (label - 1) / 3, "One")) << label;
        if (label < 30) {
            EXPECT_EQ(nth(job.pages.at(0), 1), label_at(x[label % 3], label / 3, "Two")) << label;
        } else {
            EXPECT_EQ(nth(job.pages.at(1), 0), label_at(0, 0, "Two"));
        }
    }
}

TEST_F(Labels, LeaveNoGapForProspectsAndSalesLeftOut) {
    for (auto* database : {desk.module().prospectdb.get(), desk.module().solddb.get()}) {
        add(*database, 1);
        add(*database, 2, {{"includeinprinting", false}});
        add(*database, 3);
    }
    desk.click(desk.menu().Command3);
    desk.choose(prospects().m_printlabels);
    desk.host.answers = {1};
    desk.click(screen().Command1[0]);
    desk.click(desk.menu().Command7);
    desk.choose(sales().m_printlabels);
    desk.host.answers = {1};
    desk.click(screen().Command1[0]);
    const auto& jobs = desk.host.recorded_printer.jobs;
    ASSERT_EQ(jobs.size(), 2u);
    for (const auto& job : jobs) {
        EXPECT_EQ(job.pages[0].words.size(), 6u);
        EXPECT_EQ(nth(job.pages[0], 1), label_at(2.92, 0, name(3)));
    }
}

TEST_F(Labels, AreForEveryListingWhetherIncludedOrNot) {
    add(*desk.module().listingdb, 1, {{"includeinprinting", false}});
    EXPECT_EQ(print_listings(1).pages.at(0).words.size(), 3u);
}

TEST_F(Labels, MoveDownByTheAdjustment) {
    add_listings(1);
    desk.module().settings.labeladjust = "0.25 in";
    EXPECT_EQ(nth(print_listings(4).pages.at(0), 0), label_at(0, 1.25, name(1)));
}

TEST_F(Labels, AnAdjustmentThatIsNoNumberIsNone) {
    add_listings(1);
    desk.module().settings.labeladjust = "lower";
    EXPECT_EQ(nth(print_listings(1).pages.at(0), 0), label_at(0, 0, name(1)));
}

TEST_F(Labels, AskAheadAndStayOnCancel) {
    add_listings(1);
    desk.click(desk.menu().Command9);
    desk.choose(desk.listings().m_printlabels);
    desk.host.answers = {2};
    desk.click(screen().Command1[0]);
    EXPECT_EQ(desk.host.box_texts(), Texts{"Print Labels?"});
    EXPECT_TRUE(desk.host.recorded_printer.jobs.empty());
    EXPECT_TRUE(screen().visible());
    desk.click(screen().Command2);
    EXPECT_FALSE(desk.module().label.loaded());
    EXPECT_TRUE(desk.host.recorded_printer.jobs.empty());
}

TEST_F(Labels, ShowTheMailingAddressThatIsStored) {
    add(*desk.module().listingdb, 1, {{"listingaddress", "9 Oak Ave"}});
    desk.click(desk.menu().Command9);
    desk.runtime().click_row(desk.listings().grid1, 1);
    desk.type(desk.listings().address, "not saved");
    desk.listings().m_printlabels.on_click();
    EXPECT_EQ(printed(print(1).pages.at(0)).at(1).text, "1 Elm St");
}

TEST_F(Labels, AThousandTakeLessThanASecondAndShowTheirProgress) {
    add_listings(1000);
    const std::clock_t begin = std::clock();
    EXPECT_EQ(print_listings(1).pages.size(), 34u);
    EXPECT_LT(std::clock() - begin, CLOCKS_PER_SEC);
    EXPECT_EQ(desk.host.works.at(0).steps, 1000);
    EXPECT_TRUE(desk.host.works.at(0).over);
}

// --- Address sheets ---

class AddressSheets : public Labels {
  protected:
    AddressSheets() { desk.module().settings.salespersonname = "Pat Agent"; }

    printing::printaddress& sheets() {
        return static_cast<printing::printaddress&>(desk.module().printaddress());
    }
    void fill_return_address() {
        for (int line = 1; line < sheets().returnaddress.size(); ++line)
            sheets().returnaddress[line].text = " line " + std::to_string(line);
    }
    const support::RecordedPrinter::Job& job() { return desk.host.recorded_printer.jobs.at(0); }
};

TEST_F(AddressSheets, TheScreenBeginsWithItsPlacesAndTheAgentsName) {
    EXPECT_EQ(sheets().caption, "Print Addresses");
    EXPECT_EQ(sheets().r_x.text, "15");
    EXPECT_EQ(sheets().r_y.text, "155");
    EXPECT_EQ(sheets().a_x.text, "140");
    EXPECT_EQ(sheets().a_y.text, "230");
    EXPECT_EQ(sheets().returnaddress[0].text, "Pat Agent");
    EXPECT_EQ(sheets().returnaddress[7].text, "");
}

TEST_F(AddressSheets, TheButtonPrintsNothingForWantOfASelector) {
    add_listings(1);
    desk.click(desk.menu().Command9);
    desk.host.answers = {2, 1};
    desk.click(sheets().Command1);
    desk.click(sheets().Command1);
    EXPECT_EQ(desk.host.box_texts(), (Texts{"Print Addresses?", "Print Addresses?"}));
    EXPECT_TRUE(desk.host.recorded_printer.jobs.empty());
    EXPECT_FALSE(desk.host.error.has_value());
    desk.click(sheets().Command2);
    EXPECT_FALSE(desk.module().printaddress.loaded());
}

TEST_F(AddressSheets, OfListingsHaveABoldLowerHalfInTheReturnAddress) {
    add(*desk.module().listingdb, 1);
    add(*desk.module().listingdb, 2, {{"includeinprinting", false}});
    desk.click(desk.menu().Command9);
    fill_return_address();
    sheets().print_sheets(printing::printaddress::Layout::listings);
    // A page is begun behind the last one too.
    ASSERT_EQ(job().pages.size(), 2u);
    EXPECT_TRUE(job().pages[1].words.empty());
    const float x = millimetres(15), step = 11 * 20 * 1.15F;
    float y = millimetres(155);
    std::vector<Printed> expected;
    for (const auto& [text, style] : std::vector<std::pair<std::string, std::string>>{{"Pat Agent", ""},
                                                                                      {"line 1", ""},
                                                                                      {"line 2", ""},
                                                                                      {"line 3", ""},
                                                                                      {"", ""},
                                                                                      {"line 4", "b"},
                                                                                      {"line 5", "b"},
                                                                                      {"line 6", "b"},
                                                                                      {"line 7", "b"}}) {
        expected.push_back({text.empty() ? 0 : x, y, text, style});
        y += step;
    }
    y = millimetres(230);
    for (const char* text : {"Ann No.1001", "1 Elm St", "Salem, OR 97301"}) {
        expected.push_back({millimetres(140), y, text, ""});
        y += step;
    }
    EXPECT_EQ(printed(job().pages[0]), expected);
    EXPECT_EQ(job().pages[0].words[0].size, 11);
}

TEST_F(AddressSheets, OfProspectsHaveFivePlainLinesAndTheirPlacesAreRead) {
    add(*desk.module().prospectdb, 1);
    desk.click(desk.menu().Command3);
    fill_return_address();
    sheets().r_x.text = "20 mm";
    sheets().a_x.text = "left";
    sheets().print_sheets(printing::printaddress::Layout::prospects);
    const float step = 12 * 20 * 1.15F;
    float y = millimetres(155);
    std::vector<Printed> expected;
    for (const char* text : {"Pat Agent", "line 1", "line 2", "line 3", "line 4"}) {
        expected.push_back({millimetres(20), y, text, ""});
        y += step;
    }
    y = millimetres(230);
    for (const char* text : {"Ann No.1001", "1 Elm St", "Salem, OR 97301"}) {
        expected.push_back({0, y, text, ""});
        y += step;
    }
    EXPECT_EQ(printed(job().pages.at(0)), expected);
}

} // namespace
} // namespace tolva
