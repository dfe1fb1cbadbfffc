// What comes out of a real print queue, whose printer can't print to the paper's very edge.

#include "desk_on_paper.h"
#include "print_server.h"
#include "support/errors.h"

#include <QDialogButtonBox>
#include <QListWidget>
#include <QPrinterInfo>

namespace tolva::desktop {
namespace {

using basic::make_date;
using support::PrintServer;

class PaperQueue : public DeskOnPaper {
  protected:
    static constexpr double point = 20;
    static constexpr double left_edge = PrintServer::left_edge * point,
                            top_edge = PrintServer::top_edge * point;

    void SetUp() override {
#ifdef Q_OS_WIN
        GTEST_SKIP() << "this system's queues are no files";
#else
        if (!PrintServer::installed())
            GTEST_SKIP() << "the print server (cups-daemon) is not installed";
        server = std::make_unique<PrintServer>(qEnvironmentVariable("CUPS_SERVER").toStdString(), "Office");
        if (!server->running())
            GTEST_SKIP() << "no print server can run here: " << server->complaint();
        DeskOnPaper::SetUp();
#endif
    }

    void add_listings(int count) {
        for (int number = 1; number <= count; ++number)
            add(listings_window, support::customer({{"id", std::int64_t{number}},
                                                    {"first", "Jos\xC3\xA9"},
                                                    {"last", "N" + std::to_string(1000 + number)},
                                                    {"address", "12 Elm Way"},
                                                    {"city", "Salem"},
                                                    {"state", "OR"},
                                                    {"zip", "97301"},
                                                    {"datelisted", make_date(2026, 11, 2)}}));
    }
    /// Picks a queue in the box of the main menu.
    void choose_queue(const char* queue) {
        in_next<QDialog>([queue](QDialog& box) {
            auto* const queues = box.findChild<QListWidget*>(QStringLiteral("queues"));
            const auto found = queues->findItems(QString::fromUtf8(queue), Qt::MatchExactly);
            if (found.size() != 1) {
                ADD_FAILURE() << queue << " is not on offer";
                box.reject();
                return;
            }
            click(queues->viewport(), queues->visualItemRect(found[0]).center());
            press(Qt::Key_Return);
        });
        choose(module->Form1(), "m_changeprinter");
        EXPECT_EQ(printer().target(), (PrintTarget{PrintTarget::Kind::queue, QString::fromUtf8(queue)}));
    }

    QtPrinter& printer() {
        return dynamic_cast<QtPrinter&>(host.printer());
    }

    std::unique_ptr<PrintServer> server;
};

TEST_F(PaperQueue, TakesALetterAListAndLabelsAsAJobEach) {
    add_listings(40);
    std::ofstream(folder.file("letters/offer.rtf"), std::ios::binary)
        << support::letter_of("Dear <firstname>\\page overleaf");
    choose_queue("Office");
    platform::Screen& screen = open(listings_window);

    answer_with(Qt::Key_Return);
    choose(screen, listings_window.list);
    choose(screen, listings_window.labels);
    answer_with(Qt::Key_Return);
    click(widget(module->label(), "Command1_1"));
    settle();
    open_row(screen, 1);
    choose(screen, listings_window.sheet);
    choose(screen, listings_window.letters);
    pick_file(folder.file("letters/offer.rtf"));
    click(widget(module->letter(), "Command1"));
    click(widget(module->letter(), "Command2"));
    settle();

    const auto out = server->jobs(4);
    ASSERT_EQ(out.size(), 4U);
    EXPECT_TRUE(jobs().empty()) << "the folder is not printed to any more";
    EXPECT_EQ(out[1].title, "Labels");
    EXPECT_EQ(out[2].title, "Listing: Jos\xC3\xA9 N1001");
    EXPECT_EQ(out[3].title, "Letter: Jos\xC3\xA9 N1001");
    const auto list = read_pages(out[0].file), labels = read_pages(out[1].file),
               sheet = read_pages(out[2].file), letter = read_pages(out[3].file);
    ASSERT_EQ(list.size(), 1U);
    ASSERT_EQ(labels.size(), 2U);
    ASSERT_EQ(sheet.size(), 1U);
    ASSERT_EQ(letter.size(), 2U);
    for (const PrintedPage& page : {labels[0], sheet[0], letter[0]}) {
        EXPECT_NEAR(page.width, 12240, 1);
        EXPECT_NEAR(page.height, 15840, 1);
    }
    EXPECT_NEAR(list[0].width, 15840, 1);

    // Sheets and labels count from the corner of what can be printed on, letters from that of the paper.
    EXPECT_NEAR(sheet[0].word("Seller").left, left_edge + 15 * millimetre, half_a_millimetre);
    EXPECT_NEAR(sheet[0].word("Seller").top, top_edge + 15 * millimetre, half_a_millimetre);
    const double second = left_edge + 2.92 * inch, third = left_edge + 5.84 * inch;
    EXPECT_EQ(labels[0].line_at(second, top_edge, third), "Jos\xC3\xA9 N1001");
    EXPECT_EQ(labels[1].line_at(second, top_edge + 3 * inch, third), "Jos\xC3\xA9 N1040");
    EXPECT_EQ(letter[0].line_at(inch, inch), "Dear Jos\xC3\xA9");
    EXPECT_EQ(letter[1].line_at(inch, inch), "overleaf");
}

TEST_F(PaperQueue, LaysAListAcrossThePaper) {
    add_listings(60);
    choose_queue("Office");
    platform::Screen& screen = open(listings_window);
    answer_with(Qt::Key_Return);
    choose(screen, listings_window.list);
    const auto out = server->jobs(1);
    ASSERT_EQ(out.size(), 1U);
    EXPECT_EQ(out[0].title, from_qt(form(screen).windowTitle()));
    const auto list = read_pages(out[0].file);
    ASSERT_EQ(list.size(), 2U);
    // Turned, the paper's left edge is to the left no more; nothing lies on an edge, and columns keep their
    // distances.
    const double widest_edge = PrintServer::bottom_edge * point;
    for (const PrintedPage& page : list) {
        EXPECT_NEAR(page.width, 15840, 1);
        EXPECT_NEAR(page.height, 12240, 1);
        const PrintedWord name = page.word("Name"), city = page.word("City");
        EXPECT_NEAR(city.left - name.left, 100 * millimetre, half_a_millimetre);
        EXPECT_GE(name.left, 20 * millimetre - half_a_millimetre);
        EXPECT_LE(name.left, 20 * millimetre + widest_edge + half_a_millimetre);
        for (const PrintedWord& word : page.words) {
            EXPECT_LE(word.right, page.width - widest_edge) << word.text;
            EXPECT_LE(word.bottom, page.height - widest_edge) << word.text;
        }
    }
}

TEST_F(PaperQueue, ThatRefusesAJobIsAPrinterError) {
    if (!support::has_command("cupsreject"))
        GTEST_SKIP() << "cupsreject, which closes a queue, is not installed";
    choose_queue("Office");
    printer().Print("words");
    ASSERT_EQ(support::run_program({"cupsreject", "Office"}).code, 0);
    EXPECT_EQ(support::error_number([&] { printer().EndDoc(); }), 482);
    ASSERT_EQ(support::run_program({"cupsaccept", "Office"}).code, 0);
    printer().Print("others");
    printer().EndDoc();
    const auto out = server->jobs(1);
    ASSERT_EQ(out.size(), 1U);
    EXPECT_EQ(read_pages(out[0].file).at(0).words.at(0).text, "others");
}

TEST_F(PaperQueue, WhoseServerHasGoneIsAPrinterError) {
    choose_queue("Office");
    printer().Print("words");
    server->stop();
    EXPECT_EQ(support::error_number([&] { printer().EndDoc(); }), 482);
}

TEST_F(PaperQueue, IsTheSystemsDefaultWhereNoneIsChosen) {
    add_listings(1);
    printer().use({});
    platform::Screen& screen = open(listings_window);
    open_row(screen, 1);
    choose(screen, listings_window.sheet);
    const auto out = server->jobs(1);
    ASSERT_EQ(out.size(), 1U);
    EXPECT_EQ(out[0].title, "Listing: Jos\xC3\xA9 N1001");
}

} // namespace
} // namespace tolva::desktop
