#include <gtest/gtest.h>

#include <QTextLayout>

#include "desktop/rich_text_layout.h"
#include "desktop/twip_device.h"
#include "printed_pages.h"

namespace tolva::desktop {
namespace {

/// How the characters of a line stand, on a page with margins of an inch.
class RichTextLines : public PaperTest {
  protected:
    static constexpr double inch = 1440;

    PrintedPage print(const std::string& body) {
        rtf::RichText text;
        text.load("{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0\\froman Times New Roman;}}\\fs24 " + body + "}");
        printer.Print(" ");
        printer.set_rich_text(text, {inch, inch, 12240 - inch, 15840 - inch}, 0);
        printer.EndDoc();
        return pages(files().size() - 1).at(0);
    }

    static double width(const PrintedWord& word) { return word.right - word.left; }

    /// The words made of nothing but that sign.
    static std::vector<PrintedWord> made_of(const PrintedPage& page, char sign) {
        std::vector<PrintedWord> found;
        for (const PrintedWord& word : page.words)
            if (word.text.find_first_not_of(sign) == std::string::npos)
                found.push_back(word);
        return found;
    }
};

TEST_F(RichTextLines, LeadToTabStopsAsTheSourceWants) {
    const PrintedPage page = print("\\tqr\\tldot\\tx6000 entry\\tab {\\b 12}\\par longer\\tab {\\b 345}\\par"
                                   "\\pard\\tqr\\tlul\\tx6000 lined\\tab {\\b 6}\\par"
                                   "\\pard\\tqr\\tx6000 bare\\tab {\\b 7}");
    const auto dots = made_of(page, '.');
    ASSERT_EQ(dots.size(), 2U);
    const double dot = 0.25 * 240;
    EXPECT_GE(dots[0].left, page.word("entry").right);
    EXPECT_LE(dots[0].left, page.word("entry").right + dot + 2);
    EXPECT_LE(dots[0].right, page.word("12").left + 2);
    EXPECT_GE(dots[0].right, page.word("12").left - dot - 2);
    EXPECT_NEAR(page.word("12").right, inch + 6000, half_a_millimetre);
    const double apart = (dots[1].left - dots[0].left) / dot;
    EXPECT_NEAR(apart, std::round(apart), 0.05) << "dots stand under each other";
    EXPECT_EQ(made_of(page, '_').size(), 1U);
    EXPECT_EQ(page.words.size(), 4U + 4 + 3) << "nothing leads to the last";
}

TEST_F(RichTextLines, LeadFromTheRightPlaceBehindAHangingIndent) {
    const PrintedPage page = print("\\li720\\fi-720\\tldot\\tx4000 a\\tab b\\tab c");
    const auto dots = made_of(page, '.');
    ASSERT_EQ(dots.size(), 1U) << "the indent's own stop has no leader";
    EXPECT_NEAR(dots[0].right, inch + 4000, 60);
    EXPECT_GT(dots[0].left, inch + 720);
}

TEST_F(RichTextLines, ReachATabStopInTheMargin) {
    const PrintedPage page = print("\\tqr\\tx9900 entry\\tab 12\\par next");
    EXPECT_NEAR(page.word("12").right, inch + 9900, half_a_millimetre);
    EXPECT_NEAR(page.word("12").top, page.word("entry").top, 2);
    EXPECT_NEAR(page.word("next").top - page.word("entry").top, 276, 3);
}

TEST_F(RichTextLines, StayInAWindowThatIsNarrowerThanTheirTabs) {
    rtf::RichText text;
    text.load("{\\rtf1\\tqr\\tx6000 entry\\tab 12}");
    TwipDevice paper;
    QTextDocument document;
    auto* const layout = new RichTextLayout(&document, 1);
    layout->setPaintDevice(&paper);
    document.setDocumentLayout(layout);
    layout->set_source(text.document());
    show_document(document, text.document(), 1);
    layout->set_page(3000, 0);
    EXPECT_EQ(document.begin().layout()->lineCount(), 2);
    EXPECT_LE(document.begin().layout()->lineAt(0).width(), 3000);
}

TEST_F(RichTextLines, KernUnlessTheSourceSaysNo) {
    const PrintedPage page = print("AVAVAVAVA\\par\\kerning0 AVAVAVAVAV\\par\\kerning30 VAVAVAVAV\\par"
                                   "\\kerning24 VAVAVAVA");
    const double letter = 0.722 * 240;
    EXPECT_LT(width(page.word("AVAVAVAVA")), 8.5 * letter);
    EXPECT_NEAR(width(page.word("AVAVAVAVAV")), 10 * letter, 10);
    EXPECT_NEAR(width(page.word("VAVAVAVAV")), 9 * letter, 10) << "too small to be kerned";
    EXPECT_LT(width(page.word("VAVAVAVA")), 7.5 * letter);
}

TEST_F(RichTextLines, SetSmallCapitalsFourFifthsAsHigh) {
    const PrintedPage page = print("\\kerning0{\\caps nnnnn}\\par{\\scaps nnnnnn}\\par{\\scaps NNN1}");
    EXPECT_NEAR(width(page.word("NNNNNN")) / 6, 0.8 * width(page.word("NNNNN")) / 5, 2);
    EXPECT_NEAR(width(page.word("NNN1")), (3 * 0.722 + 0.5) * 240, 3) << "what isn't small stays";
}

TEST_F(RichTextLines, AreApartByTheLargerSpaceWhereTheSourceSaysSo) {
    const std::string body = "\\sa200 one\\par\\pard\\sb480\\sa200 two\\par\\pard\\sb100 three";
    PrintedPage page = print(body);
    EXPECT_NEAR(page.word("two").top - page.word("one").top, 276 + 680, 3);
    page = print("\\htmautsp " + body);
    EXPECT_NEAR(page.word("two").top - page.word("one").top, 276 + 480, 3);
    EXPECT_NEAR(page.word("three").top - page.word("two").top, 276 + 200, 3);
}

TEST_F(RichTextLines, HaveTheirGapAboveThem) {
    // The line gap of Times is 87 of 2048 parts of its size.
    const double top = inch + 240.0 * 87 / 2048;
    EXPECT_NEAR(print("word").word("word").top, top, 2);
    EXPECT_NEAR(print("\\sl360\\slmult1 word").word("word").top, top, 2) << "half a line more is below";
    EXPECT_NEAR(print("\\sl400 word").word("word").top, top + 400 - 276, 2) << "a least height is above";
}

} // namespace
} // namespace tolva::desktop
