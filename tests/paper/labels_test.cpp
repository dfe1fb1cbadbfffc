// Labels on a sheet of three by ten, from the menu of a customer screen to the page.

#include "desk_on_paper.h"

namespace tolva::desktop {
namespace {

using basic::make_date;

/// A label on its sheet, numbered from 1, row by row; in twips, as far as the paper goes.
struct LabelOutline {
    double left, top, right, bottom;
};

LabelOutline outline(int label) {
    constexpr double pitch = 2.92 * inch, row = inch, paper = 8.5 * inch;
    const double left = (label - 1) % 3 * pitch, top = (label - 1) / 3 * row;
    return {left, top, std::min(left + pitch, paper), top + row};
}

class PaperLabels : public DeskOnPaper, public testing::WithParamInterface<RecordWindow> {
  protected:
    static constexpr int customers = 40, first_label = 17;
    static constexpr double label_size = 12;

    static std::string number(int customer) { return std::to_string(1000 + customer); }
    void add_customers() {
        for (int customer = 0; customer < customers; ++customer) {
            Row row = support::customer({{"id", std::int64_t{customer + 1}},
                                         {"first", "Maria Wilhelmina"},
                                         {"last", std::string("A") + number(customer)},
                                         {"address", number(customer) + " Old Mill Stream Road"},
                                         {"city", "Grand Island"},
                                         {"state", "NE"},
                                         {"zip", "68801-2345"}});
            for (const char* date : {"datelisted", "dateacquired", "datesold"})
                if (has_column(date))
                    row[date] = make_date(2026, 11, 2);
            for (const char* money : {"sellingprice", "commission", "expenses", "netcommission"})
                if (has_column(money))
                    row[money] = 1.0;
            if (has_column("interestlevel"))
                row["interestlevel"] = std::string("Hot!");
            add(GetParam(), row);
        }
    }
    bool has_column(const std::string& name) {
        const auto set = ((*module).*GetParam().store)->OpenRecordset("select * from [table]");
        for (const auto& column : set->schema().columns)
            if (column.name == name)
                return true;
        return false;
    }
    /// Prints from a label on, by its button on the label screen.
    void print_from(int label) {
        platform::Screen& screen = open(GetParam());
        choose(screen, GetParam().labels);
        QString asked;
        answer_with(Qt::Key_Return, &asked);
        const std::string button = "Command1_" + std::to_string(label - 1);
        click(widget(module->label(), button.c_str()));
        settle();
        EXPECT_EQ(asked, QStringLiteral("Print Labels?"));
        EXPECT_FALSE(module->label.loaded());
    }
};

TEST_P(PaperLabels, LieEachInsideItsOwnLabelOfTheSheet) {
    add_customers();
    // On such a sheet the rows begin half an inch down.
    module->settings.labeladjust = "0.5";
    print_from(first_label);
    ASSERT_EQ(jobs().size(), 1U);
    EXPECT_EQ(jobs().at(0), "0001 Labels.pdf");
    const auto printed = pages();
    ASSERT_EQ(printed.size(), 2U);

    std::vector<std::size_t> words(printed.size());
    for (int customer = 0; customer < customers; ++customer) {
        const int place = first_label + customer;
        const std::size_t sheet = place > 30 ? 1 : 0;
        LabelOutline label = outline(sheet == 0 ? place : place - 30);
        label.top += inch / 2;
        label.bottom += inch / 2;
        const PrintedPage& page = printed[sheet];
        double top = label.top;
        for (const std::string& line :
             {"Maria Wilhelmina A" + number(customer), number(customer) + " Old Mill Stream Road",
              std::string("Grand Island, NE 68801-2345")}) {
            EXPECT_EQ(page.line_at(label.left, top, label.right), line) << "label " << place;
            top += line_of(label_size);
        }
        for (const PrintedWord& word : page.words) {
            const double x = (word.left + word.right) / 2, y = (word.top + word.bottom) / 2;
            if (x < label.left || x > label.right || y < label.top || y > label.bottom)
                continue;
            ++words[sheet];
            EXPECT_GE(word.left, label.left - 1) << word.text;
            EXPECT_LE(word.right, label.right) << word.text;
            EXPECT_GE(word.top, label.top - half_a_millimetre) << word.text;
            EXPECT_LE(word.bottom, label.bottom) << word.text;
        }
    }
    // And nothing lies elsewhere.
    EXPECT_EQ(words[0], printed[0].words.size());
    EXPECT_EQ(words[1], printed[1].words.size());
}

INSTANTIATE_TEST_SUITE_P(Of, PaperLabels, testing::Values(listings_window, prospect_window, sold_window),
                         [](const auto& each) { return std::string(each.param.name); });

} // namespace
} // namespace tolva::desktop
