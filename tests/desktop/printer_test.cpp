#include <gtest/gtest.h>

#include <QImage>
#include <algorithm>

#include "basic/run_time_error.h"
#include "printed_pages.h"
#include "printing/page.h"
#include "support/errors.h"

#ifdef Q_OS_UNIX
#include <sys/resource.h>

#include <csignal>
#endif

namespace tolva::desktop {
namespace {

using Paper = PaperTest;

#ifdef Q_OS_UNIX
/// As long as it lives no file can grow beyond that many bytes, as if the disk were full.
class LittleRoom {
  public:
    explicit LittleRoom(qint64 bytes) : signal_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &before_);
        rlimit now = before_;
        now.rlim_cur = static_cast<rlim_t>(bytes);
        setrlimit(RLIMIT_FSIZE, &now);
    }
    LittleRoom(const LittleRoom&) = delete;
    LittleRoom& operator=(const LittleRoom&) = delete;
    ~LittleRoom() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, signal_);
    }

  private:
    void (*signal_)(int);
    rlimit before_{};
};
#endif

TEST_F(Paper, IsLetterAndWhole) {
    EXPECT_NEAR(printer.Width(), 12240, 1);
    EXPECT_NEAR(printer.Height(), 15840, 1);
    EXPECT_NEAR(printer.ScaleWidth() + 2 * printer.OffsetX(), 12240, 1);
    printer.set_Orientation(platform::Printer::landscape);
    EXPECT_NEAR(printer.Width(), 15840, 1);
    EXPECT_NEAR(printer.Height(), 12240, 1);
}

TEST_F(Paper, OfAnotherSizeIsUsedUpToItsOwnMargins) {
    auto device = make_printer({PrintTarget::Kind::pdf_folder, folder.path()});
    ASSERT_NE(device, nullptr);
    device->setOutputFileName(folder.filePath(QStringLiteral("a4.pdf")));
    device->setPageSize(QPageSize(QPageSize::A4));
    printer.use_once(std::move(device));
    constexpr double width = 11906, height = 16838, margin = 1440, line = 280;
    EXPECT_NEAR(printer.Width(), width, 10);
    EXPECT_NEAR(printer.Height(), height, 10);
    rtf::RichText text;
    std::string words;
    for (int word = 0; word < 1500; ++word)
        words += "word ";
    text.set_text(words);
    printing::printrichtext(printer, text, {margin, margin, margin, margin});

    const auto printed = pages();
    ASSERT_EQ(printed.size(), 2U);
    EXPECT_EQ(printed[0].words.size() + printed[1].words.size(), 1500U);
    for (const PrintedPage& page : printed) {
        EXPECT_NEAR(page.width, width, 20);
        EXPECT_NEAR(page.height, height, 20);
        EXPECT_NEAR(page.words.front().left, margin, half_a_millimetre);
        EXPECT_NEAR(page.words.front().top, margin, line);
        double right = 0;
        for (const PrintedWord& word : page.words)
            right = std::max(right, word.right);
        EXPECT_LE(right, width - margin + half_a_millimetre);
        EXPECT_GT(right, width - margin - 1000) << "lines end where the next word has no room";
    }
    const double bottom = printed[0].words.back().bottom;
    EXPECT_LE(bottom, height - margin + half_a_millimetre);
    EXPECT_GT(bottom, height - margin - 2 * line);
}

TEST_F(Paper, TakesWordsWhereTheyAreMeant) {
    printer.set_CurrentX(850.5);
    printer.set_CurrentY(1700.25);
    printer.Print("First");
    printer.set_CurrentX(5670);
    printer.Print_on("Second");
    printer.Print_on("Third");
    printer.EndDoc();
    const auto printed = pages();
    ASSERT_EQ(printed.size(), 1U);
    const PrintedWord first = printed[0].word("First");
    EXPECT_NEAR(first.left, 850.5, half_a_millimetre);
    EXPECT_NEAR(first.top, 1700.25, half_a_millimetre);
    // One line further down: ten points of Arial and its leading.
    const PrintedWord second = printed[0].word("SecondThird");
    EXPECT_NEAR(second.left, 5670, half_a_millimetre);
    EXPECT_NEAR(second.top - first.top, 230, 2);
}

TEST_F(Paper, TakesFontsAndSizes) {
    printer.FontSize = 12;
    printer.Print_on("width");
    const float plain = printer.CurrentX();
    printer.set_CurrentX(0);
    printer.FontBold = true;
    printer.Print_on("width");
    EXPECT_GT(printer.CurrentX(), plain);
    printer.EndDoc();
    const auto fonts = support::run_program({"pdffonts", from_qt(folder.filePath(files().at(0)))}).out;
    EXPECT_NE(fonts.find("-Bold"), std::string::npos) << fonts;
}

TEST_F(Paper, TakesRulesWhereTheyAreMeant) {
    if (!support::has_command("pdftoppm"))
        GTEST_SKIP() << "pdftoppm, which paints the pages, is not installed";
    printer.Line(1440, 2880, 7200, 2880);
    printer.EndDoc();
    const std::string picture = from_qt(folder.filePath(QStringLiteral("page")));
    support::run_program(
        {"pdftoppm", "-r", "144", "-png", "-singlefile", from_qt(folder.filePath(files().at(0))), picture});
    const QImage page(to_qt(picture + ".png"));
    ASSERT_FALSE(page.isNull());
    // A tenth of a pixel is a twip.
    const auto dark = [&](int x, int y) { return qGray(page.pixel(x, y)) < 200; };
    const auto dark_near = [&](int x, int y) { return dark(x, y - 1) || dark(x, y) || dark(x, y + 1); };
    EXPECT_TRUE(dark_near(150, 288));
    EXPECT_TRUE(dark_near(715, 288));
    EXPECT_FALSE(dark_near(140, 288));
    EXPECT_FALSE(dark_near(725, 288));
    EXPECT_FALSE(dark_near(400, 294));
}

TEST_F(Paper, GoesOnWhereLinesRunOverItsEnd) {
    for (int line = 0; line < 80; ++line)
        printer.Print("line" + std::to_string(line));
    printer.EndDoc();
    const auto printed = pages();
    ASSERT_EQ(printed.size(), 2U);
    EXPECT_LE(printed[0].words.back().bottom, printed[0].height);
    EXPECT_NEAR(printed[1].words.front().top, 0, half_a_millimetre);
    EXPECT_EQ(printed[0].words.size() + printed[1].words.size(), 80U);
}

TEST_F(Paper, BeginsALineAtALineEndOfTheText) {
    printer.Print("one\r\ntwo");
    printer.EndDoc();
    const auto printed = pages();
    EXPECT_GT(printed.at(0).word("two").top, printed.at(0).word("one").top + 200);
    EXPECT_NEAR(printed.at(0).word("two").left, 0, half_a_millimetre);
}

TEST_F(Paper, TurnsForTheNextPageAlone) {
    printer.Print("upright");
    printer.set_Orientation(platform::Printer::landscape);
    printer.NewPage();
    printer.Print("lying");
    printer.EndDoc();
    const auto printed = pages();
    ASSERT_EQ(printed.size(), 2U);
    EXPECT_LT(printed[0].width, printed[0].height);
    EXPECT_GT(printed[1].width, printed[1].height);
    EXPECT_NEAR(printed[1].word("lying").top, 0, half_a_millimetre);
}

TEST_F(Paper, NumbersItsFilesAndOverwritesNone) {
    QFile taken(folder.filePath(QStringLiteral("0007 kept.pdf")));
    ASSERT_TRUE(taken.open(QIODevice::WriteOnly));
    taken.write("mine");
    taken.close();
    for (const char* words : {"one", "two"}) {
        printer.job_name = "Letter: Adams";
        printer.Print(words);
        printer.EndDoc();
    }
    EXPECT_EQ(files(), (QStringList{QStringLiteral("0007 kept.pdf"), QStringLiteral("0008 Letter_ Adams.pdf"),
                                    QStringLiteral("0009 Letter_ Adams.pdf")}));
    ASSERT_TRUE(taken.open(QIODevice::ReadOnly));
    EXPECT_EQ(taken.readAll(), QByteArray("mine"));
    EXPECT_EQ(pages(2).at(0).words.at(0).text, "two");
}

TEST_F(Paper, AFileThatFindsNoRoomIsAPrinterErrorAndTheNextJobIsWhole) {
#ifdef Q_OS_UNIX
    rtf::RichText text;
    std::string words;
    for (int word = 0; word < 3000; ++word)
        words += "word ";
    text.set_text(words);
    const auto print = [&] { printing::printrichtext(printer, text, {1440, 1440, 1440, 1440}); };
    print();
    int error = 0;
    {
        const LittleRoom room(QFileInfo(folder.filePath(files().at(0))).size() / 2);
        error = support::error_number(print);
    }
    EXPECT_EQ(error, 482);
    EXPECT_EQ(files().size(), 1) << "half a file looks like a letter that was printed";
    print();
    ASSERT_EQ(files().size(), 2);
    EXPECT_EQ(pages(1).size(), pages(0).size());
#else
    GTEST_SKIP() << "a full disk can't be had here";
#endif
}

TEST_F(Paper, AJobThatIsGivenUpLeavesNoFile) {
    printer.Print("half a letter");
    printer.NewPage();
    printer.KillDoc();
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(Paper, EndsNoJobThatWasNotBegun) {
    printer.EndDoc();
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(Paper, TellsWhenAJobHasGone) {
    int gone = 0;
    printer.job_ended = [&] { gone += files().size() == 1 ? 1 : 100; };
    printer.Print("words");
    EXPECT_EQ(gone, 0);
    printer.EndDoc();
    EXPECT_EQ(gone, 1);
}

TEST_F(Paper, ThatIsNotThereIsAPrinterError) {
    printer.use({PrintTarget::Kind::pdf_folder, folder.filePath(QStringLiteral("nowhere"))});
    try {
        printer.Print("words");
        FAIL() << "printed on nothing";
    } catch (const basic::RunTimeError& error) {
        EXPECT_EQ(error.number(), 482);
    }
}

TEST_F(Paper, AQueueThatIsGoneIsAPrinterError) {
    printer.use({PrintTarget::Kind::queue, QStringLiteral("no such queue")});
    EXPECT_THROW(printer.Print("words"), basic::RunTimeError);
    EXPECT_NEAR(printer.Width(), 12240, 1) << "measures are asked ahead of printing";
}

TEST_F(Paper, CountsFromTheCornerOfWhatCanBePrintedOn) {
    // A device that leaves an edge: a quarter of an inch at the sides, a third at top and foot.
    auto device = make_printer({PrintTarget::Kind::pdf_folder, folder.path()});
    ASSERT_NE(device, nullptr);
    device->setOutputFileName(folder.filePath(QStringLiteral("edge.pdf")));
    QPageLayout layout = device->pageLayout();
    layout.setUnits(QPageLayout::Point);
    layout.setMinimumMargins(QMarginsF(18, 24, 18, 24));
    device->setPageLayout(layout);
    printer.use_once(std::move(device));
    EXPECT_NEAR(printer.OffsetX(), 360, 1);
    EXPECT_NEAR(printer.OffsetY(), 480, 1);
    EXPECT_NEAR(printer.Width(), 12240, 1);
    EXPECT_NEAR(printer.ScaleWidth(), 12240 - 720, 1);
    EXPECT_NEAR(printer.ScaleHeight(), 15840 - 960, 1);
    printer.Print("corner");
    rtf::RichText text;
    text.set_text("letter");
    printer.set_rich_text(text, {1440 - printer.OffsetX(), 1440 - printer.OffsetY(), 9000, 9000}, 0);
    printer.EndDoc();
    const auto printed = pages();
    EXPECT_NEAR(printed.at(0).word("corner").left, 360, half_a_millimetre);
    EXPECT_NEAR(printed.at(0).word("corner").top, 480, half_a_millimetre);
    EXPECT_NEAR(printed.at(0).word("letter").left, 1440, half_a_millimetre);
    EXPECT_NEAR(printed.at(0).word("letter").top, 1440, half_a_millimetre);
    // It held for that job alone.
    EXPECT_NEAR(printer.OffsetX(), 0, 1);
}

TEST_F(Paper, ADeviceChosenForAJobThatFailsIsNotTheNextJobs) {
    const auto choose_for_once = [this](const char* file) {
        auto device = make_printer({PrintTarget::Kind::pdf_folder, folder.path()});
        ASSERT_NE(device, nullptr);
        device->setOutputFileName(folder.filePath(QString::fromUtf8(file)));
        printer.use_once(std::move(device));
    };
    printer.job_name = "Labels";
    choose_for_once("nowhere/once.pdf");
    EXPECT_THROW(printer.Print("letter"), basic::RunTimeError);
    printer.Print("label");
    printer.EndDoc();
    // Nor is that for one that is given up before it has begun.
    choose_for_once("once.pdf");
    printer.KillDoc();
    printer.Print("label");
    printer.EndDoc();
    EXPECT_EQ(files(), (QStringList{QStringLiteral("0001 Labels.pdf"), QStringLiteral("0002 Labels.pdf")}));
}

TEST(PrintTargets, AreRememberedFromRunToRun) {
    QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("settings.ini"));
    const PrintTarget target{PrintTarget::Kind::pdf_folder, folder.path()};
    {
        UserSettings settings(file);
        EXPECT_EQ(load_print_target(settings), PrintTarget());
        save_print_target(settings, target);
    }
    UserSettings settings(file);
    EXPECT_EQ(load_print_target(settings), target);
    save_print_target(settings, {PrintTarget::Kind::queue, QStringLiteral("Office")});
    EXPECT_EQ(load_print_target(settings), (PrintTarget{PrintTarget::Kind::queue, QStringLiteral("Office")}));
}

} // namespace
} // namespace tolva::desktop
