#include <gtest/gtest.h>

#include "sources.h"

namespace tolva::rtf {
namespace {

TEST(Paragraphs, EndWithParAndTheLastMayLackIt) {
    EXPECT_EQ(text_of("a\\par b\\par"), "a\r\nb");
    EXPECT_EQ(text_of("a\\par b"), "a\r\nb");
    EXPECT_FALSE(document_of("a\\par").unended);
    EXPECT_TRUE(document_of("a").unended);
    EXPECT_EQ(document_of("").paragraphs.size(), 1u);
}

TEST(Paragraphs, CountEmptyOnes) {
    EXPECT_EQ(text_of("\\par\\par a\\par\\par"), "\r\n\r\na\r\n");
}

TEST(Paragraphs, FollowTheirWords) {
    const ParagraphFormat format =
        paragraph_of("\\pard\\qj\\li720\\ri360\\fi-180\\sb120\\sa60\\sl360\\slmult1\\keep\\keepn\\pagebb");
    EXPECT_EQ(format.alignment, Alignment::justified);
    EXPECT_EQ(format.left, 720);
    EXPECT_EQ(format.right, 360);
    EXPECT_EQ(format.first, -180);
    EXPECT_EQ(format.before, 120);
    EXPECT_EQ(format.after, 60);
    EXPECT_EQ(format.line, 360);
    EXPECT_TRUE(format.line_multiple);
    EXPECT_TRUE(format.keep);
    EXPECT_TRUE(format.keep_next);
    EXPECT_TRUE(format.page_break_before);
    EXPECT_EQ(paragraph_of("\\qc").alignment, Alignment::centre);
    EXPECT_EQ(paragraph_of("\\qc\\qr").alignment, Alignment::right);
    EXPECT_EQ(paragraph_of("\\sl-240\\slmult0").line, -240);
}

TEST(Paragraphs, GoOnAsTheyAreUntilPard) {
    const Document document = document_of("\\qc a\\par b\\par\\pard c\\par");
    EXPECT_EQ(document.paragraphs[1].format->alignment, Alignment::centre);
    EXPECT_EQ(*document.paragraphs[2].format, ParagraphFormat{});
}

TEST(Paragraphs, HaveTheFormatThatHoldsAtTheirEnd) {
    const Document document = document_of("{\\qc a\\par}b\\par");
    EXPECT_EQ(document.paragraphs[0].format->alignment, Alignment::centre);
    EXPECT_EQ(document.paragraphs[1].format->alignment, Alignment::left) << "a group's end takes it back";
}

TEST(Paragraphs, HaveTabStopsOfEachKindInOrder) {
    const ParagraphFormat format =
        paragraph_of("\\tqr\\tldot\\tx4000\\tx1000\\tqc\\tx2000\\tqdec\\tx3000\\tb5000");
    ASSERT_EQ(format.tabs.size(), 5u);
    EXPECT_EQ(format.tabs[0], (TabStop{1000, TabKind::left, TabLeader::none}));
    EXPECT_EQ(format.tabs[1], (TabStop{2000, TabKind::centre, TabLeader::none}));
    EXPECT_EQ(format.tabs[2], (TabStop{3000, TabKind::decimal, TabLeader::none}));
    EXPECT_EQ(format.tabs[3], (TabStop{4000, TabKind::right, TabLeader::dots}));
    EXPECT_EQ(format.tabs[4], (TabStop{5000, TabKind::bar, TabLeader::none}));
    EXPECT_EQ(document_of("\\deftab360 x").default_tab, 360);
}

TEST(Paragraphs, HaveBorders) {
    const ParagraphFormat format = paragraph_of("\\brdrt\\brdrdb\\brdrw15\\brsp20\\brdrcf1\\brdrb\\brdrs");
    EXPECT_EQ(format.borders->top, (Border{15, 20, 1, BorderStyle::double_line, false}));
    EXPECT_EQ(format.borders->bottom.style, BorderStyle::single);
    const ParagraphFormat box = paragraph_of("\\box\\brdrs\\brdrw10");
    EXPECT_EQ(box.borders->left, (Border{10, 0, 0, BorderStyle::single, false}));
    EXPECT_EQ(box.borders->right, box.borders->left);
}

TEST(Paragraphs, KeepTheFormatOfTheirOwnMark) {
    const Document document = document_of("\\fs40\\par a\\par");
    EXPECT_EQ(document.paragraphs[0].mark.half_points, 40) << "the height of an empty line";
}

TEST(Page, IsTakenFromTheDocument) {
    const Document document =
        document_of("\\paperw15840\\paperh12240\\margl720\\margr730\\margt740\\margb750\\landscape x");
    EXPECT_EQ(document.page, (PageSetup{15840, 12240, 720, 730, 740, 750, 0, true}));
    EXPECT_EQ(document_of("x").page, PageSetup{});
}

TEST(Sections, EndWithSectAndKeepTheirOwnWords) {
    const Document document =
        document_of("\\sectd\\cols2 a\\par\\sect\\sectd\\sbknone{\\header h\\par}b\\par");
    ASSERT_EQ(document.sections.size(), 2u);
    EXPECT_TRUE(document.paragraphs[0].ends_section);
    EXPECT_EQ(document.sections[0].words[0].name, "cols");
    EXPECT_TRUE(document.sections[0].starts_page());
    EXPECT_FALSE(document.sections[1].starts_page());
    EXPECT_EQ(document.sections[1].groups, std::vector<std::string>{"{\\header h\\par}"});
    EXPECT_EQ(plain_text(document), "a\r\nb");
}

TEST(Sections, EndAParagraphThatHasntEnded) {
    EXPECT_EQ(text_of("a\\sect b\\par"), "a\r\nb");
    EXPECT_EQ(text_of("a\\par\\sect b\\par"), "a\r\nb");
    EXPECT_EQ(document_of("\\sect a").sections.size(), 1u) << "there is nothing to end";
}

} // namespace
} // namespace tolva::rtf
