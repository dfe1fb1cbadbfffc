#include <gtest/gtest.h>

#include "printed_pages.h"

namespace tolva::desktop {
namespace {

/// Rich text on paper, between margins of an inch.
class RichTextOnPaper : public PaperTest {
  protected:
    static constexpr double inch = 1440;

    std::vector<PrintedPage> print(const std::string& body) {
        rtf::RichText text;
        text.load("{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0 Times New Roman;}{\\f1 Arial;}}\\fs24 " + body + "}");
        print(text);
        return pages(files().size() - 1);
    }

    void print(const rtf::RichText& text) {
        const platform::PaperRectangle where{inch, inch, 12240 - inch, 15840 - inch};
        printer.Print(" ");
        for (std::size_t start = 0;;) {
            const std::size_t next = printer.set_rich_text(text, where, start);
            starts.push_back(next);
            if (next >= text.length())
                break;
            ASSERT_GT(next, start);
            start = next;
            printer.NewPage();
        }
        printer.EndDoc();
    }

    static std::string lines(int count) {
        std::string body;
        for (int line = 1; line <= count; ++line)
            body += "line" + std::to_string(line) + (line == count ? "" : "\\par ");
        return body;
    }

    std::vector<std::size_t> starts;
};

// Times at 12 points: 276 twips a line, 46 lines on the page's 12960 twips.
constexpr int lines_a_page = 46;

TEST_F(RichTextOnPaper, StandsBetweenTheMargins) {
    const auto printed = print("first\\par \\qr last");
    EXPECT_NEAR(printed.at(0).word("first").left, inch, half_a_millimetre);
    EXPECT_NEAR(printed.at(0).word("first").top, inch, half_a_millimetre);
    EXPECT_NEAR(printed.at(0).word("last").right, 12240 - inch, half_a_millimetre);
}

TEST_F(RichTextOnPaper, BreaksPagesBetweenLines) {
    const auto printed = print(lines(lines_a_page + 4));
    ASSERT_EQ(printed.size(), 2U);
    EXPECT_EQ(printed[0].words.back().text, "line46");
    EXPECT_EQ(printed[1].words.front().text, "line47");
    EXPECT_NEAR(printed[1].words.front().top, inch, half_a_millimetre);
    EXPECT_EQ(printed[1].words.size(), 4U);
}

TEST_F(RichTextOnPaper, ThatEndsWithThePageLeavesNoBlankOne) {
    EXPECT_EQ(print(lines(lines_a_page)).size(), 1U);
    EXPECT_EQ(print(lines(lines_a_page) + "\\par").size(), 1U);
    EXPECT_EQ(print("words\\page").size(), 1U);
}

TEST_F(RichTextOnPaper, GoesOnWhereThePageBeforeHasEnded) {
    const auto printed = print("one\\page two\\par\\pard\\pagebb three");
    ASSERT_EQ(printed.size(), 3U);
    EXPECT_EQ(starts.at(0), std::string("one\f").size());
    EXPECT_EQ(starts.at(1), std::string("one\ftwo\r\n").size());
    EXPECT_EQ(printed[1].words.at(0).text, "two");
    EXPECT_EQ(printed[2].words.at(0).text, "three");
}

TEST_F(RichTextOnPaper, LosesNothingBehindSpacingHigherThanAPage) {
    const auto printed =
        print("one\\par\\pard\\pagebb\\sb14000 two\\par\\pard\\sb31000 three\\par\\pard four");
    ASSERT_EQ(printed.size(), 3U);
    EXPECT_EQ(printed[1].words.at(0).text, "two");
    EXPECT_EQ(printed[2].words.at(0).text, "three");
    EXPECT_EQ(printed[2].words.at(1).text, "four");
}

TEST_F(RichTextOnPaper, TakesNoEndOfAParagraphOverThePage) {
    const auto printed = print("one\\page\\par two\\par\\pard\\sa400 three\\par\\page\\par\\pard four");
    ASSERT_EQ(printed.size(), 3U);
    EXPECT_NEAR(printed[1].word("two").top, printed[0].word("one").top, 2);
    EXPECT_NEAR(printed[2].word("four").top, printed[0].word("one").top, 2);
    EXPECT_NEAR(print("one\\page\\par\\par two").at(1).word("two").top, printed[0].word("one").top + 276, 2)
        << "an empty paragraph of its own stays";
    EXPECT_NEAR(print("\\htmautsp\\sa200\\page\\par\\pard\\sb480 two").at(1).word("two").top,
                printed[0].word("one").top + 480, 2)
        << "and no space of the page before counts";
}

TEST_F(RichTextOnPaper, CountsCharactersAsTheTextDoes) {
    // Hidden text counts though it isn't seen, and a character beyond the first plane counts one.
    print("{\\v secret}\\u-10179?\\u-8704?\\page after");
    EXPECT_EQ(starts.at(0), 6U + 1 + 1);
}

TEST_F(RichTextOnPaper, CanBeginAnywhere) {
    rtf::RichText text;
    text.load("{\\rtf1 left out\\par stays}");
    printer.set_rich_text(text, {inch, inch, 6 * inch, 6 * inch}, 10);
    printer.EndDoc();
    const auto printed = pages();
    ASSERT_EQ(printed.at(0).words.size(), 1U);
    EXPECT_EQ(printed[0].words[0].text, "stays");
}

TEST_F(RichTextOnPaper, FindsNoPlaceWhereMarginsLeaveNone) {
    rtf::RichText text;
    text.set_text("words");
    EXPECT_EQ(printer.set_rich_text(text, {6 * inch, inch, 5 * inch, 6 * inch}, 0), 0U);
}

TEST_F(RichTextOnPaper, KeepsIndentsAndSpacing) {
    const auto printed =
        print("\\pard\\li720\\fi-360 hanging\\par\\pard\\sb240\\sa120 apart\\par\\pard under");
    const PrintedPage& page = printed.at(0);
    EXPECT_NEAR(page.word("hanging").left, inch + 360, half_a_millimetre);
    EXPECT_NEAR(page.word("apart").top - page.word("hanging").top, 276 + 240, 3);
    EXPECT_NEAR(page.word("under").top - page.word("apart").top, 276 + 120, 3);
}

TEST_F(RichTextOnPaper, KeepsLineSpacing) {
    const auto page =
        print("a\\par\\pard\\sl480\\slmult1 b\\par c\\par\\pard\\sl-400 d\\par e\\par\\pard f").at(0);
    EXPECT_NEAR(page.word("c").top - page.word("b").top, 2 * 276, 3);
    EXPECT_NEAR(page.word("e").top - page.word("d").top, 400, 3);
}

TEST_F(RichTextOnPaper, SetsTabsFromTheMargin) {
    const auto page = print("\\pard\\li360\\fi-360\\tx2000\\tqr\\tx5000\\tqdec\\tx7000 "
                            "a\\tab b\\tab c\\tab right\\tab 12.50\\par\\pard\\li700 x\\tab y")
                          .at(0);
    EXPECT_NEAR(page.word("b").left, inch + 360, half_a_millimetre) << "a hanging indent is a stop";
    EXPECT_NEAR(page.word("c").left, inch + 2000, half_a_millimetre);
    EXPECT_NEAR(page.word("right").right, inch + 5000, half_a_millimetre);
    // Two figures and the point, of Times at 12 points.
    EXPECT_NEAR(page.word("12.50").left, inch + 7000 - 240, half_a_millimetre);
    EXPECT_NEAR(page.word("y").left, inch + 1440, half_a_millimetre) << "each half inch is a stop";
}

TEST_F(RichTextOnPaper, SetsCellsInTheirColumns) {
    const auto page = print("\\trowd\\trgaph100\\trleft0\\cellx3000\\cellx6000\\pard\\intbl north\\cell "
                            "south of here\\par and more\\cell\\row\\pard below")
                          .at(0);
    EXPECT_NEAR(page.word("north").left, inch + 100, half_a_millimetre);
    EXPECT_NEAR(page.word("south").left, inch + 3100, half_a_millimetre);
    EXPECT_NEAR(page.word("north").top, page.word("south").top, 2);
    EXPECT_NEAR(page.word("below").top - page.word("and").top, 276, 3);
}

TEST_F(RichTextOnPaper, CarriesARowOverThePageWithNothingLost) {
    const auto printed = print(lines(lines_a_page - 2) +
                               "\\par\\trowd\\cellx4000\\cellx8000\\pard\\intbl a1\\par a2\\par a3\\cell "
                               "b1\\par b2\\par b3\\cell\\row\\pard end");
    ASSERT_EQ(printed.size(), 2U);
    std::size_t cells = 0;
    for (const PrintedPage& page : printed)
        for (const char* word : {"a1", "a2", "a3", "b1", "b2", "b3"})
            cells += page.word(word).left > 0 ? 1 : 0;
    EXPECT_EQ(cells, 6U);
    EXPECT_GT(printed[1].word("end").top, printed[1].word("b3").top + 200);
}

TEST_F(RichTextOnPaper, LosesNothingOfARowWhoseFirstCellBeginsOnALaterPage) {
    const auto printed = print("\\trowd\\cellx4000\\cellx8000\\pard\\intbl\\sb14000 deep\\cell\\pard\\intbl "
                               "high\\cell\\row\\pard end");
    ASSERT_EQ(printed.size(), 2U);
    EXPECT_GT(printed[0].word("high").left, 0);
    EXPECT_GT(printed[1].word("deep").left, 0);
    EXPECT_GT(printed[1].word("end").left, 0);
}

TEST_F(RichTextOnPaper, ShowsNumbersAndSymbolsOfLists) {
    const auto page = print("{\\pard\\fi-360\\li720{\\listtext\\f0 1.\\tab}entry\\par}").at(0);
    EXPECT_NEAR(page.word("1.").left, inch + 360, half_a_millimetre);
    EXPECT_NEAR(page.word("entry").left, inch + 720, half_a_millimetre);
}

TEST_F(RichTextOnPaper, KeepsWithTheNextWhatBelongsToIt) {
    const auto printed = print(lines(lines_a_page - 1) + "\\par\\pard\\keepn heading\\par\\pard\\sb600 text");
    ASSERT_EQ(printed.size(), 2U);
    EXPECT_EQ(printed[1].words.front().text, "heading");
}

} // namespace
} // namespace tolva::desktop
