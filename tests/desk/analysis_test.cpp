#include <gtest/gtest.h>

#include "analysis/graph.h"
#include "analysis/mortgage.h"
#include "analysis/paymentcalculator.h"
#include "basic/run_time_error.h"
#include "support/desk.h"
#include "support/mdb_json.h"
#include "support/paper.h"

namespace tolva {
namespace {

using basic::make_date;
using support::Desk;
using Texts = std::vector<std::string>;

// --- The payment calculator ---

class PaymentCalculator : public testing::Test {
  protected:
    PaymentCalculator() {
        desk.start();
        desk.click(desk.menu().Command4);
    }
    analysis::paymentcalculator& screen() {
        return static_cast<analysis::paymentcalculator&>(desk.module().paymentcalculator());
    }
    std::string calculate(const std::string& amount, const std::string& rate, const std::string& years) {
        desk.type(screen().amountfinanced, amount);
        desk.type(screen().interestrate, rate);
        desk.type(screen().terminmonths, years);
        desk.click(screen().Command2);
        title = desk.host.boxes.back().title;
        return desk.host.boxes.back().text;
    }

    Desk desk;
    std::string title;
};

TEST_F(PaymentCalculator, ALevelPayment) {
    EXPECT_EQ(calculate("100000", "6", "30"), "$599.55");
    EXPECT_EQ(title, "Payment");
}

TEST_F(PaymentCalculator, AfterClearTheDaysAreGoneAndThePaymentIsLower) {
    calculate("100000", "6", "30");
    desk.click(screen().Command1);
    EXPECT_EQ(screen().amountfinanced.text + screen().interestrate.text + screen().terminmonths.text, "");
    EXPECT_EQ(screen().daysuntilfirstpayment.text, "");
    EXPECT_EQ(calculate("100000", "6", "30"), "$596.57");
    desk.click(screen().Command3);
    desk.click(desk.menu().Command4);
    EXPECT_EQ(calculate("100000", "6", "30"), "$599.55") << "opened anew the days are back";
}

TEST_F(PaymentCalculator, WithoutARateTheAmountIsDividedByTheMonths) {
    EXPECT_EQ(calculate("1200", "0", "1"), "$100.00");
    EXPECT_EQ(calculate("1200", "six", "1"), "$100.00") << "a rate in words reads as 0";
    EXPECT_EQ(calculate("100000", "6%", "30"), "$599.55");
}

TEST_F(PaymentCalculator, ATermOfNothingIsInvalidWithAndWithoutARate) {
    for (const char* rate : {"6", "0", "5.25", "7.125"}) {
        EXPECT_EQ(calculate("100000", rate, "0"), "Invalid Numbers") << rate;
        EXPECT_EQ(title, "Error");
    }
    EXPECT_EQ(screen().amountfinanced.text, "100000");
}

TEST_F(PaymentCalculator, AnEmptyAmountPaysNothing) {
    EXPECT_EQ(calculate("", "6", "30"), "$0.00");
}

TEST_F(PaymentCalculator, WhatNoCurrencyHoldsIsInvalid) {
    EXPECT_EQ(calculate("1e15", "6", "30"), "Invalid Numbers");
    EXPECT_EQ(calculate("100000", "6", "1e300"), "Invalid Numbers");
}

TEST_F(PaymentCalculator, WhatNoNumberHoldsIsInvalid) {
    EXPECT_EQ(calculate("100000", "-1199", "30"), "Invalid Numbers") << "beyond a double";
    EXPECT_EQ(calculate("100000", "-2400", "1.05"), "Invalid Numbers")
        << "a negative number to a broken power";
    EXPECT_EQ(calculate("100000", "-1200", "30"), "Invalid Numbers") << "a division by zero";
    EXPECT_EQ(title, "Error");
}

TEST_F(PaymentCalculator, TheTextsAndTheWayBack) {
    EXPECT_EQ(screen().caption, "Payment Calculator");
    EXPECT_EQ(screen().Command2.caption, "Calculate Payment");
    EXPECT_EQ(screen().Command1.caption, "&Clear Form");
    EXPECT_EQ(screen().Command3.caption, "EXIT");
    EXPECT_FALSE(screen().daysuntilfirstpayment.visible);
    for (platform::TextBox* box :
         {&screen().amountfinanced, &screen().interestrate, &screen().terminmonths}) {
        desk.runtime().focus(*box);
        EXPECT_EQ(box->selection_wishes(), 1u);
    }
    desk.click(screen().Command3);
    EXPECT_EQ(desk.host.shown.back().screen, "Form1");
}

TEST(Mortgage, WithoutARateTheTextKeepsTheBlankAheadOfANumber) {
    const auto payment = [](double rate) {
        basic::Currency none;
        return analysis::mortgagepayment(basic::to_currency(1200), basic::to_currency(12),
                                         basic::to_currency(rate), {}, basic::to_currency(30), none);
    };
    EXPECT_EQ(payment(0), " 100");
    EXPECT_EQ(payment(6).substr(0, 5), "103.2");
}

TEST(Mortgage, ALongerFirstPeriodCostsSimpleInterest) {
    basic::Currency none;
    const auto payment = [&](double days) {
        return std::stod(analysis::mortgagepayment(basic::to_currency(100000), basic::to_currency(360),
                                                   basic::to_currency(6), {}, basic::to_currency(days),
                                                   none));
    };
    EXPECT_NEAR(payment(45) / payment(0), 1 + 45 * 0.005 / 30, 1e-12);
}

TEST(Mortgage, ThePaymentsChargeIsLeftAsTheFormulaMadeIt) {
    basic::Currency charge = basic::to_currency(0.5);
    analysis::mortgagepayment(basic::to_currency(100000), basic::to_currency(18), basic::to_currency(6), {},
                              basic::to_currency(30), charge);
    EXPECT_EQ(charge, basic::to_currency(0.75));
}

// --- The graphs ---

class Graph : public testing::Test {
  protected:
    Graph() {
        desk.start();
        desk.click(desk.menu().Command6);
    }
    analysis::graph& screen() { return static_cast<analysis::graph&>(desk.module().graph()); }
    void add(basic::Date date, jet::Value commission, jet::Value price) {
        Desk::add(*desk.module().solddb,
                  {{"datesold", date}, {"commission", commission}, {"sellingprice", price}});
    }
    void create(std::size_t m1, const std::string& y1, std::size_t m2, const std::string& y2) {
        screen().mon1.set_list_index(m1 - 1);
        screen().mon2.set_list_index(m2 - 1);
        desk.type(screen().year1, y1);
        desk.type(screen().year2, y2);
        desk.click(screen().Command1);
    }
    Texts labels() {
        Texts texts;
        for (const auto& bar : screen().chart1.bars)
            texts.push_back(bar.label);
        return texts;
    }

    Desk desk;
};

TEST_F(Graph, OpensOnThisMonthWithTwoChartsHidden) {
    EXPECT_EQ(screen().caption, "Graph of Sales");
    EXPECT_EQ(screen().mon1.text, "November");
    EXPECT_EQ(screen().mon2.text, "November");
    EXPECT_EQ(screen().year1.text, "2026");
    EXPECT_EQ(screen().mon1.items().size(), 12u);
    EXPECT_FALSE(screen().chart1.visible);
    EXPECT_FALSE(screen().chart2.visible);
    EXPECT_TRUE(screen().chart3.visible);
    EXPECT_EQ(screen().chart1.title, "Units Sold");
    EXPECT_EQ(screen().chart2.title, "Money Made");
    EXPECT_EQ(screen().chart3.title, "Money Made");
}

TEST_F(Graph, MonthsWithoutASaleKeepABlankLabelAndNoHeight) {
    add(make_date(2026, 1, 5), 100.0, 1000.0);
    add(make_date(2026, 1, 31), 50.5, 500.0);
    add(make_date(2026, 6, 1), 1.0, 2.0);
    add(make_date(2026, 12, 31), 7.0, 8.0);
    add(make_date(2027, 1, 1), 9.0, 9.0);
    create(1, "2026", 12, "2026");
    EXPECT_EQ(labels(), (Texts{"1/2026", " ", " ", " ", " ", "6/2026", " ", " ", " ", " ", " ", "12/2026"}));
    EXPECT_EQ(screen().chart1.bars[0].value, 2.0);
    EXPECT_EQ(screen().chart2.bars[0].value, 150.5);
    EXPECT_EQ(screen().chart3.bars[0].value, 1500.0);
    EXPECT_EQ(screen().chart1.bars[1].value, 0.0);
    EXPECT_EQ(screen().chart3.bars[11].value, 8.0) << "the last day of the ending month counts";
    EXPECT_TRUE(screen().chart1.visible);
    EXPECT_TRUE(screen().chart2.visible);
}

TEST_F(Graph, OneMonthIsOneBucketFromItsFirstToItsLastDay) {
    add(make_date(2028, 2, 1), 1.0, 1.0);
    add(make_date(2028, 2, 29), 1.0, 1.0);
    add(make_date(2028, 3, 1), 1.0, 1.0);
    create(2, "2028", 2, "2028");
    EXPECT_EQ(labels(), Texts{"2/2028"});
    EXPECT_EQ(screen().chart1.bars[0].value, 2.0);
}

TEST_F(Graph, FebruaryOfALeapYearEndsOnThe29th) {
    add(make_date(2028, 2, 29), 1.0, 1.0);
    add(make_date(2027, 3, 1), 1.0, 1.0);
    create(2, "2028", 2, "2028");
    EXPECT_EQ(screen().chart1.bars[0].value, 1.0);
    create(2, "2027", 2, "2027");
    EXPECT_EQ(desk.host.box_texts(), Texts{"No Customers Sold Between those Dates"});
}

TEST_F(Graph, AnEndBeforeTheBeginningIsInvalid) {
    create(3, "2026", 2, "2026");
    EXPECT_EQ(desk.host.boxes[0].text, "Invalid Dates!");
    EXPECT_EQ(desk.host.boxes[0].title, "Error");
}

TEST_F(Graph, NoSaleLeavesTheChartsAsTheyStood) {
    add(make_date(2026, 1, 5), 100.0, 1000.0);
    create(1, "2026", 1, "2026");
    create(2, "2026", 3, "2026");
    EXPECT_EQ(desk.host.boxes[0].text, "No Customers Sold Between those Dates");
    EXPECT_EQ(desk.host.boxes[0].title, "Message");
    EXPECT_EQ(labels(), Texts{"1/2026"});
}

TEST_F(Graph, ANullMakesItsBucketNull) {
    add(make_date(2026, 1, 5), std::monostate{}, 1000.0);
    add(make_date(2026, 1, 6), 5.0, 1000.0);
    create(1, "2026", 1, "2026");
    EXPECT_EQ(screen().chart2.bars[0].value, std::nullopt);
    EXPECT_EQ(screen().chart3.bars[0].value, 2000.0);
}

TEST_F(Graph, AYearThatIsNoneEndsTheProgram) {
    create(1, "20000", 1, "20000");
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 13);
}

TEST_F(Graph, ItReplacesTheSoldScreensSet) {
    add(make_date(2026, 1, 5), 100.0, 1000.0);
    create(1, "2026", 1, "2026");
    EXPECT_TRUE(desk.module().soldset->Eof());
}

/// What a month holds by the table's rows, read and added up without any of the program's own code.
struct MonthByHand {
    double units = 0, commission = 0, sales = 0;
};

TEST(GraphOfADeskAtWork, ShowsWhatItsRowsAddUpTo) {
    TOLVA_NEEDS_SAMPLE("desk/data/sold.mdb");
    TOLVA_NEEDS_MDB_JSON();
    Desk desk(support::shared_sample("desk"));
    std::map<std::string, MonthByHand> months;
    std::string first = "9999", last;
    for (const support::JsonRow& row : support::mdb_json(desk.data_file("sold.mdb"), "table", desk.folder)) {
        const std::string month = row.at("datesold").substr(0, 7);
        MonthByHand& sum = months[month];
        ++sum.units;
        sum.commission += std::stod(row.at("commission"));
        sum.sales += std::stod(row.at("sellingprice"));
        first = std::min(first, month);
        last = std::max(last, month);
    }
    ASSERT_GT(months.size(), 24u);
    desk.start();
    desk.click(desk.menu().Command6);
    auto& screen = static_cast<analysis::graph&>(desk.module().graph());
    const auto compare = [&](int m1, int y1, int m2, int y2) {
        screen.mon1.set_list_index(static_cast<std::size_t>(m1 - 1));
        screen.mon2.set_list_index(static_cast<std::size_t>(m2 - 1));
        desk.type(screen.year1, std::to_string(y1));
        desk.type(screen.year2, std::to_string(y2));
        desk.click(screen.Command1);
        std::size_t bar = 0;
        for (int month = y1 * 12 + m1 - 1; month <= y2 * 12 + m2 - 1; ++month, ++bar) {
            const int year = month / 12, of_year = month % 12 + 1;
            const std::string key =
                std::to_string(year) + (of_year < 10 ? "-0" : "-") + std::to_string(of_year);
            SCOPED_TRACE(key);
            const auto found = months.find(key);
            const MonthByHand sum = found == months.end() ? MonthByHand{} : found->second;
            ASSERT_LT(bar, screen.chart1.bars.size());
            EXPECT_EQ(screen.chart1.bars[bar].label,
                      found == months.end() ? " " : std::to_string(of_year) + "/" + std::to_string(year));
            EXPECT_EQ(screen.chart1.bars[bar].value, sum.units);
            EXPECT_NEAR(screen.chart2.bars[bar].value.value(), sum.commission, 0.005);
            EXPECT_NEAR(screen.chart3.bars[bar].value.value(), sum.sales, 0.005);
        }
        EXPECT_EQ(screen.chart1.bars.size(), bar);
        EXPECT_EQ(screen.chart2.bars.size(), bar);
        EXPECT_EQ(screen.chart3.bars.size(), bar);
    };
    const int first_year = std::stoi(first), last_year = std::stoi(last);
    for (int year = first_year; year <= last_year; ++year)
        compare(1, year, 12, year);
    compare(1, first_year, 12, last_year);
    compare(11, first_year, 2, first_year + 1);
    EXPECT_TRUE(desk.host.box_texts().empty());
}

// --- Their paper ---

/// The bars of a page by their lengths in millimetres, each of strokes that leave nothing open between them.
std::vector<double> bar_lengths(const support::RecordedPrinter::Page& page) {
    constexpr double stroke = 10;
    std::vector<double> lengths;
    const support::RecordedPrinter::Rule* above = nullptr;
    for (const auto& rule : page.rules) {
        EXPECT_EQ(rule.y1, rule.y2);
        if (!above || rule.y1 - above->y1 >= stroke || rule.x2 != above->x2)
            lengths.push_back((rule.x2 - rule.x1) / 56.7);
        above = &rule;
    }
    return lengths;
}

TEST_F(Graph, PrintsTheChartsOnShowBarByBar) {
    add(make_date(2026, 1, 5), 100.0, 1000.0);
    add(make_date(2026, 3, 5), 25.5, 4000.0);
    create(1, "2026", 3, "2026");
    desk.host.answers = {1};
    desk.click(screen().Command2);
    EXPECT_EQ(desk.host.box_texts(), Texts{"Print Graphs?"});
    ASSERT_EQ(desk.host.recorded_printer.jobs.size(), 1u);
    const auto& page = desk.host.recorded_printer.jobs[0].pages.at(0);
    Texts words;
    for (const auto& word : page.words)
        words.push_back(word.text);
    EXPECT_EQ(words, (Texts{"Graph of Sales",
                            "January 2026 to March 2026",
                            "",
                            "UNITS SOLD",
                            "1/2026",
                            "1",
                            " ",
                            "0",
                            "3/2026",
                            "1",
                            "",
                            "COMMISSION",
                            "1/2026",
                            "$100.00",
                            " ",
                            "$0.00",
                            "3/2026",
                            "$25.50",
                            "",
                            "TOTAL IN SALES",
                            "1/2026",
                            "$1000.00",
                            " ",
                            "$0.00",
                            "3/2026",
                            "$4000.00"}));
    EXPECT_EQ(page.words[0].y, support::millimetres(15));
    // A bar for each value above 0, as long as its part of the chart's largest.
    const std::vector<double> expected = {110, 110, 110, 110 * 0.255, 110 * 0.25, 110};
    const std::vector<double> lengths = bar_lengths(page);
    ASSERT_EQ(lengths.size(), expected.size());
    for (std::size_t bar = 0; bar < expected.size(); ++bar)
        EXPECT_NEAR(lengths[bar], expected[bar], 1e-9);
}

TEST_F(Graph, PrintsNoChartThatIsHidden) {
    desk.host.answers = {1};
    desk.click(screen().Command2);
    Texts words;
    for (const auto& word : desk.host.recorded_printer.jobs.at(0).pages.at(0).words)
        words.push_back(word.text);
    EXPECT_EQ(words, (Texts{"Graph of Sales", "November 2026 to November 2026", "", "TOTAL IN SALES"}));
}

TEST_F(Graph, LongSpansGoOnOnTheNextPage) {
    add(make_date(2026, 1, 5), 100.0, 1000.0);
    create(1, "2023", 12, "2026");
    desk.host.answers = {1};
    desk.click(screen().Command2);
    const auto& pages = desk.host.recorded_printer.jobs.at(0).pages;
    EXPECT_EQ(pages.size(), 3u);
    std::size_t bars = 0;
    for (const auto& page : pages)
        bars += bar_lengths(page).size();
    EXPECT_EQ(bars, 3u);
}

TEST_F(Graph, IsNotPrintedOnCancel) {
    desk.host.answers = {2};
    desk.click(screen().Command2);
    EXPECT_TRUE(desk.host.recorded_printer.jobs.empty());
}

TEST_F(Graph, APrinterThatFailsIsSaidNotToSupportGraphs) {
    desk.host.answers = {1};
    desk.host.recorded_printer.failing_jobs = {1};
    desk.click(screen().Command2);
    ASSERT_EQ(desk.host.boxes.size(), 2u);
    EXPECT_EQ(desk.host.boxes[1].text, "Your Printer Does Not Support Printing of Graphs");
    EXPECT_EQ(desk.host.boxes[1].title, "Printer Error");
    EXPECT_FALSE(desk.host.error.has_value());
    EXPECT_FALSE(desk.host.recorded_printer.FontBold) << "what is printed next is none of it";
}

} // namespace
} // namespace tolva
