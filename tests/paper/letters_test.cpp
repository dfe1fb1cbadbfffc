// Letters, from the menu of a customer screen or the button of the follow-up run to the page.

#include "desk_on_paper.h"

namespace tolva::desktop {
namespace {

using basic::make_date;

class PaperLetters : public DeskOnPaper {
  protected:
    static constexpr double letter_size = 11;

    static Row customer(const char* first, const support::Customer& own = {}) {
        support::Customer row = {{"id", std::int64_t{1}}, {"first", first},      {"last", "Archer"},
                                 {"co_first", "Carl"},    {"co_last", "Archer"}, {"address", "12 Elm Way"},
                                 {"city", "Salem"},       {"state", "OR"},       {"zip", "97301"}};
        for (const auto& [column, value] : own)
            row[column] = value;
        return support::customer(row);
    }
    static Row listing(const char* first, int id = 1, bool included = true) {
        return customer(first, {{"id", std::int64_t{id}},
                                {"datelisted", make_date(2026, 11, id)},
                                {"includeinprinting", included}});
    }
    void write_letter(const std::string& name, const std::string& text) {
        std::ofstream(folder.file("letters/" + name), std::ios::binary) << support::letter_of(text);
    }
    /// From the record or the list to a loaded letter.
    platform::Screen& load_letter(platform::Screen& screen, const char* entry, const std::string& name) {
        choose(screen, entry);
        platform::Screen& letter = module->letter();
        form(letter).resize(form(letter).wanted_size());
        settle();
        EXPECT_FALSE(widget(letter, "Command2")->isEnabled());
        pick_file(folder.file("letters/" + name));
        click(widget(letter, "Command1"));
        settle();
        EXPECT_TRUE(widget(letter, "Command2")->isEnabled());
        return letter;
    }
    /// Lines one below the other from margins in inches.
    static void expect_letter(const PrintedPage& page, double left, double top,
                              const std::vector<std::string>& lines) {
        expect_lines(page, left * inch / millimetre, top * inch / millimetre, letter_size, lines);
    }
    std::vector<std::string> history(const RecordWindow& window) {
        std::vector<std::string> entries;
        for (const auto& row : support::Desk::rows(*((*module).*window.store), "select * from [table]"))
            entries.push_back(row.at("contacthistory"));
        return entries;
    }
};

TEST_F(PaperLetters, ForTheRecordOnTheFormIsMergedBetweenTheMarginsOnTheScreen) {
    write_letter("offer.rtf", "<date>\\par <firstname> <lastname>\\par <address>\\par <city>, <state> <zip>"
                              "\\par Dear <bothnames>,\\par <ps>\\page overleaf");
    add(listings_window, listing("Ann"));
    platform::Screen& screen = open(listings_window);
    open_row(screen, 1);
    type(QStringLiteral("Anna"));
    platform::Screen& letter = load_letter(screen, listings_window.letters, "offer.rtf");
    fill(letter, "ps", QStringLiteral("Call me!"));
    for (const auto& [box, value] : {std::pair{"left_margin", "1.5"}, {"top_margin", "2"}}) {
        EXPECT_EQ(text(letter, box), QStringLiteral("1"));
        click(widget(letter, box));
        press(Qt::Key_A, Qt::ControlModifier);
        type(QString::fromUtf8(value));
    }
    click(widget(letter, "Command2"));
    settle();

    // The record was saved first, so what was typed is in the letter.
    ASSERT_EQ(jobs(), (Jobs{"0001 Letter_ Anna Archer.pdf"}));
    const auto printed = pages();
    ASSERT_EQ(printed.size(), 2U);
    expect_letter(printed[0], 1.5, 2,
                  {"November 20, 2026", "Anna Archer", "12 Elm Way", "Salem, OR 97301", "Dear Anna & Carl,",
                   "Call me!", ""});
    expect_letter(printed[1], 1.5, 2, {"overleaf"});
    EXPECT_EQ(printed[1].words.size(), 1U);
    // The screen shows the letter with its tags again.
    const auto& shown = dynamic_cast<letters::letter&>(letter).rtf1.content();
    EXPECT_NE(shown.text().find("<firstname>"), std::string::npos);
}

TEST_F(PaperLetters, ForTheListAreAJobForEveryoneIncluded) {
    write_letter("offer.rtf", "Dear <firstname>");
    add(listings_window, listing("Ann", 1));
    add(listings_window, listing("Bob", 2, false));
    add(listings_window, listing("Cec", 3));
    platform::Screen& letter = load_letter(open(listings_window), listings_window.letters, "offer.rtf");
    QString asked;
    answer_with(Qt::Key_Return, &asked);
    click(widget(letter, "Command2"));
    settle();
    EXPECT_EQ(asked, QStringLiteral("Print Letters?"));
    ASSERT_EQ(jobs(), (Jobs{"0001 Letter_ Ann Archer.pdf", "0002 Letter_ Cec Archer.pdf"}));
    expect_letter(pages(0).at(0), 1, 1, {"Dear Ann", ""});
    expect_letter(pages(1).at(0), 1, 1, {"Dear Cec", ""});
}

/// A letter for each kind of customer is scheduled from its record, and the button of the main menu prints
/// what is due.
TEST_F(PaperLetters, ThatAreDueArePrintedEnteredAndGoneFromTheStore) {
    write_letter("hello.rtf", "Hello <firstname>\\par <ps>Yours");
    module->settings.lmargin = "2";
    add(listings_window, listing("Lil"));
    add(prospect_window,
        customer("Pia", {{"dateacquired", make_date(2026, 11, 2)}, {"interestlevel", "Hot!"}}));
    add(sold_window, customer("Sam", {{"datesold", make_date(2026, 11, 2)},
                                      {"sellingprice", 1.0},
                                      {"commissionrate", 1.0},
                                      {"commission", 1.0},
                                      {"expenses", 1.0},
                                      {"netcommission", 1.0}}));
    for (const RecordWindow& window : {listings_window, prospect_window, sold_window}) {
        platform::Screen& screen = open(window);
        open_row(screen, 1);
        choose(screen, "m_schlet");
        platform::Screen& compose = module->generalmessagecreate();
        pick_file(folder.file("letters/hello.rtf"));
        click(widget(compose, "Command3"));
        settle();
        click(widget(compose, "Command2"));
        settle();
        EXPECT_FALSE(module->generalmessagecreate.loaded());
    }
    ASSERT_EQ(support::Desk::rows(*module->messagedb, "select * from [table]").size(), 3U);

    QString said;
    answer_with(Qt::Key_Return, &said);
    form(module->Form1()).activateWindow();
    settle();
    click(widget(module->Form1(), "Command14"));
    settle();
    EXPECT_EQ(said, QStringLiteral("3 Letters Printed"));
    ASSERT_EQ(jobs(), (Jobs{"0001 Letter_ Lil Archer.pdf", "0002 Letter_ Pia Archer.pdf",
                            "0003 Letter_ Sam Archer.pdf"}));
    expect_letter(pages(0).at(0), 2, 1, {"Hello Lil", "Yours", ""});
    expect_letter(pages(1).at(0), 2, 1, {"Hello Pia", "Yours", ""});
    expect_letter(pages(2).at(0), 2, 1, {"Hello Sam", "Yours", ""});
    for (const RecordWindow& window : {listings_window, prospect_window, sold_window})
        EXPECT_EQ(history(window), std::vector<std::string>{"11/20/2026: Sent Letter\r\n"}) << window.name;
    EXPECT_TRUE(support::Desk::rows(*module->messagedb, "select * from [table]").empty());
}

// --- Sheets for mail pieces, which no menu leads to ---

TEST_F(PaperLetters, HaveSheetsWithBothAddressesInPlace) {
    module->settings.salespersonname = "Pat Agent";
    add(listings_window, listing("Ann"));
    open(listings_window);
    auto& sheets = dynamic_cast<printing::printaddress&>(module->printaddress());
    runtime.run([&] { sheets.show(); });
    settle();
    for (int line = 1; line < sheets.returnaddress.size(); ++line)
        fill(sheets, ("returnaddress_" + std::to_string(line)).c_str(), QStringLiteral("Line%1").arg(line));
    runtime.run([&] { sheets.print_sheets(printing::printaddress::Layout::listings); });
    ASSERT_EQ(jobs(), (Jobs{"0001 Address sheets.pdf"}));
    const auto printed = pages();
    ASSERT_EQ(printed.size(), 2U);
    expect_lines(printed[0], 15, 155, 11,
                 {"Pat Agent", "Line1", "Line2", "Line3", "", "Line4", "Line5", "Line6", "Line7", ""});
    expect_lines(printed[0], 140, 230, 11, {"Ann Archer", "12 Elm Way", "Salem, OR 97301", ""});
    EXPECT_TRUE(printed[1].words.empty());
}

} // namespace
} // namespace tolva::desktop
