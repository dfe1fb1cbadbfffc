// What a grid shows as a table on sideways paper, from the menu of its screen to the page.

#include "desk_on_paper.h"

namespace tolva::desktop {
namespace {

using basic::make_date;
using Texts = std::vector<std::string>;

struct PrintedList {
    const RecordWindow& window;
    std::vector<double> columns;
    Texts headings;
    /// The cells of the customer with that number.
    Texts (*cells)(const std::string& number);
    std::map<std::string, jet::Value> own;
};

class PaperLists : public DeskOnPaper, public testing::WithParamInterface<PrintedList> {
  protected:
    static constexpr int rows = 100;
    static constexpr double list_size = 10, heading_y = 15, first_row_y = 20, last_row_y = 185;
    static constexpr double rule_y = 20, rule_left = 20, rule_right = 240;

    static std::string number(int row) { return std::to_string(1000 + row); }
    void add_customers() {
        for (int row = 0; row < rows; ++row) {
            Row values = support::customer({{"id", std::int64_t{row + 1}},
                                            {"first", "Ann"},
                                            {"last", std::string("A") + number(row)},
                                            {"businessname", std::string("Firm") + number(row)},
                                            {"address", number(row) + " Elm"},
                                            {"city", "Salem"},
                                            {"state", "OR"},
                                            {"zip", "97301"},
                                            {"homephone", std::string("5") + number(row)},
                                            {"workphone", std::string("6") + number(row)}},
                                           GetParam().own);
            for (const char* column : {"listingaddress", "soldaddress"})
                if (values.count(column) > 0)
                    values[column] = number(row) + " Oak";
            if (&GetParam().window == &address_window)
                for (const char* column :
                     {"co_first", "co_last", "contacthistory", "includeinprinting", "datelastcontact"})
                    values.erase(column);
            add(GetParam().window, values);
        }
    }
    /// One line of the table.
    static void expect_cells(const PrintedPage& page, double top, const Texts& cells) {
        const auto& columns = GetParam().columns;
        for (std::size_t column = 0; column < columns.size(); ++column)
            EXPECT_EQ(page.line_at(columns[column] * millimetre, top,
                                   column + 1 < columns.size() ? columns[column + 1] * millimetre : 1e6),
                      cells[column])
                << top / millimetre << " mm";
    }
};

TEST_P(PaperLists, HaveEachCellInItsColumnAndTheHeadingOnEveryPage) {
    add_customers();
    platform::Screen& screen = open(GetParam().window);
    QString asked;
    answer_with(Qt::Key_Return, &asked);
    choose(screen, GetParam().window.list);
    EXPECT_EQ(asked, QStringLiteral("Print List?"));
    ASSERT_EQ(jobs().size(), 1U);
    const auto printed = pages();
    ASSERT_GE(printed.size(), 2U);

    int row = 0, number_of_page = 0;
    for (const PrintedPage& page : printed) {
        EXPECT_NEAR(page.width, 15840, 1);
        EXPECT_NEAR(page.height, 12240, 1);
        expect_cells(page, heading_y * millimetre, GetParam().headings);
        const QImage picture = painted(0, ++number_of_page);
        EXPECT_TRUE(has_rule(picture, rule_left * millimetre, rule_y * millimetre - 10,
                             rule_right * millimetre, rule_y * millimetre + 10));
        EXPECT_FALSE(has_rule(picture, (rule_left - 1) * millimetre, rule_y * millimetre - 10,
                              rule_right * millimetre, rule_y * millimetre + 10));
        EXPECT_FALSE(has_rule(picture, rule_left * millimetre, rule_y * millimetre - 10,
                              (rule_right + 1) * millimetre, rule_y * millimetre + 10));
        double top = first_row_y * millimetre;
        for (; row < rows && top < last_row_y * millimetre; ++row, top += line_of(list_size))
            expect_cells(page, top, GetParam().cells(number(row)));
        // The rows' page ends where they do.
        const double bottom = page.words.back().top;
        EXPECT_NEAR(bottom, top - line_of(list_size), half_a_millimetre);
    }
    EXPECT_EQ(row, rows);

    // The paper is upright again for what comes next.
    open_row(screen, 1);
    choose(screen, GetParam().window.sheet);
    ASSERT_EQ(jobs().size(), 2U);
    EXPECT_LT(pages(1).at(0).width, pages(1).at(0).height);
}

INSTANTIATE_TEST_SUITE_P(
    Of, PaperLists,
    testing::Values(
        PrintedList{listings_window,
                    {20, 70, 120, 165, 195, 220},
                    {"Name", "Address", "City", "Price", "Date Listed", "Date Expires"},
                    [](const std::string& number) {
                        return Texts{"Ann A" + number, number + " Oak", "Keizer",
                                     "$245000",        "11/2/2026",     "5/1/2027"};
                    },
                    {{"listingaddress", std::string()},
                     {"listingcity", std::string("Keizer")},
                     {"listingprice", 245000.0},
                     {"datelisted", make_date(2026, 11, 2)},
                     {"dateexpires", make_date(2027, 5, 1)}}},
        PrintedList{prospect_window,
                    {20, 70, 120, 165, 195, 220},
                    {"Name", "Address", "City", "Phone #", "Date Acquired", "Interest Level"},
                    [](const std::string& number) {
                        return Texts{"Ann A" + number, number + " Elm", "Salem",
                                     "5" + number,     "11/2/2026",     "Hot!"};
                    },
                    {{"dateacquired", make_date(2026, 11, 2)}, {"interestlevel", std::string("Hot!")}}},
        PrintedList{sold_window,
                    {20, 70, 120, 165, 195, 220},
                    {"Name", "Address", "City", "Selling Price", "Date Sold", "Agency"},
                    [](const std::string& number) {
                        return Texts{"Ann A" + number, number + " Oak", "Keizer",
                                     "$240000",        "11/2/2026",     "Listing Agent"};
                    },
                    {{"soldaddress", std::string()},
                     {"soldcity", std::string("Keizer")},
                     {"sellingprice", 240000.0},
                     {"commissionrate", 6.0},
                     {"commission", 14400.0},
                     {"expenses", 400.0},
                     {"netcommission", 14000.0},
                     {"agency0", true},
                     {"datesold", make_date(2026, 11, 2)}}},
        PrintedList{address_window,
                    {20, 60, 100, 140, 180, 210},
                    {"Name", "Business Name", "Address", "City State Zip", "Home Phone", "Work Phone"},
                    [](const std::string& number) {
                        return Texts{"Ann A" + number, "Firm" + number, number + " Elm",
                                     "Salem OR 97301", "5" + number,    "6" + number};
                    },
                    {}}),
    [](const auto& each) { return std::string(each.param.window.name); });

} // namespace
} // namespace tolva::desktop
