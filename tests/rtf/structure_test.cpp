#include <gtest/gtest.h>

#include "sources.h"

namespace tolva::rtf {
namespace {

const char list_tables[] =
    "{\\*\\listtable{\\list{\\listlevel\\levelnfc0\\levelstartat3{\\leveltext\\'02\\'00.;}{\\levelnumbers\\'"
    "01;}}"
    "{\\listlevel\\levelnfc4{\\leveltext\\'03\\'00\\'01);}{\\levelnumbers\\'01\\'02;}}\\listid11}"
    "{\\list{\\listlevel\\levelnfc23{\\leveltext\\'01\\u-3913 ?;}{\\levelnumbers;}\\f2}\\listid12}}"
    "{\\*\\listoverridetable{\\listoverride\\listid11\\listoverridecount0\\ls1}"
    "{\\listoverride\\listid12\\listoverridecount0\\ls2}}";

TEST(Lists, ShowTheTextThatTheSourceGives) {
    EXPECT_EQ(text_of("{\\pntext\\f2\\'b7\\tab}a\\par"), "•\ta");
    EXPECT_EQ(text_of("{\\listtext\\pard\\plain 1.\\tab}\\ls1 a\\par b\\par"), "1.\ta\r\nb");
}

TEST(Lists, NumberThemselvesByThePnWords) {
    const std::string pn = "\\pard{\\*\\pn\\pnlvlbody\\pnstart2\\pnlcltr{\\pntxta )}}";
    EXPECT_EQ(text_of(pn + "a\\par b\\par\\pard c\\par"), "b)\ta\r\nc)\tb\r\nc");
    EXPECT_EQ(text_of("{\\*\\pn\\pnlvlblt\\pnf2{\\pntxtb\\'b7}}a\\par"), "•\ta");
    EXPECT_EQ(text_of("{\\*\\pn\\pnlvlbody\\pnstart4\\pnucrm}a\\par b\\par"), "IV\ta\r\nV\tb");
}

TEST(Lists, UnderstandThePnWords) {
    const ParagraphFormat format = paragraph_of(
        "{\\*\\pn\\pnlvlbody\\pnf1\\pnindent360\\pnstart5\\pndec\\pnhang{\\pntxtb (}{\\pntxta )}}\\fi-360");
    EXPECT_EQ(*format.numbering, (Numbering{NumberKind::decimal, 5, 360, 0, true, 1, "(", ")"}));
}

TEST(Lists, NumberThemselvesByTheListTables) {
    EXPECT_EQ(
        text_of(std::string(list_tables) + "\\ls1 a\\par\\ilvl1 b\\par c\\par\\ilvl0 d\\par\\ilvl1 e\\par"),
        "3.\ta\r\n3a)\tb\r\n3b)\tc\r\n4.\td\r\n4a)\te");
    EXPECT_EQ(text_of(std::string(list_tables) + "\\ls2 a\\par"), "•\ta");
    EXPECT_EQ(text_of("\\ls9 a\\par"), "a") << "a list that isn't there";
}

TEST(Lists, CountAllLetteredAndRomanNumbersWithinBounds) {
    const std::string many = "{\\*\\pn\\pnlvlbody\\pnstart31680\\pnucltr}a\\par";
    EXPECT_EQ(text_of(many), "31680\ta");
    EXPECT_EQ(text_of("{\\*\\pn\\pnlvlbody\\pnstart28\\pnlcltr}a\\par"), "bb\ta");
}

TEST(Fields, ShowTheirResultAndKeepTheirInstruction) {
    const Document document =
        document_of("a{\\field{\\*\\fldinst HYPERLINK \"http://x\"}{\\fldrslt{\\ul link}}}b\\par");
    EXPECT_EQ(plain_text(document), "alinkb");
    const auto& runs = document.paragraphs.front().runs;
    ASSERT_EQ(runs.size(), 5u);
    EXPECT_EQ(runs[1].inset->kind, Inset::Kind::field);
    EXPECT_EQ(runs[1].inset->source, "{\\*\\fldinst HYPERLINK \"http://x\"}");
    EXPECT_EQ(runs[2].format.underline, Underline::single);
    EXPECT_EQ(runs[3].inset->kind, Inset::Kind::end);
    EXPECT_EQ(runs[4].format.underline, Underline::none);
}

TEST(Fields, MaySpanParagraphsAndNest) {
    EXPECT_EQ(
        text_of("{\\field{\\*\\fldinst TOC}{\\fldrslt a\\par{\\field{\\*\\fldinst P}{\\fldrslt 2}}b\\par}}c"),
        "a\r\n2b\r\nc");
    EXPECT_TRUE(survives(
        "{\\field{\\*\\fldinst TOC}{\\fldrslt \\qc a\\par{\\field{\\*\\fldinst P}{\\fldrslt 2}}b}}c"));
}

TEST(Objects, ShowTheirResultAndKeepTheirBytes) {
    const Document document =
        document_of("{\\object\\objemb\\objw100{\\*\\objclass Paint}{\\*\\objdata 0105}{\\result pic}}");
    EXPECT_EQ(plain_text(document), "pic");
    EXPECT_EQ(document.paragraphs.front().runs.front().inset->source,
              "\\objemb\\objw100{\\*\\objclass Paint}{\\*\\objdata 0105}");
    EXPECT_TRUE(losses(document).empty());
}

TEST(Pictures, ComeAsDigitsOrAsBytes) {
    const Document document =
        document_of("{\\pict\\pngblip\\picw10\\pich20\\picwgoal1440\\pichgoal2880\\picscalex50 "
                    "89504e\r\n47 0}{\\pict\\jpegblip\\bin4 {}\\}}");
    const auto& runs = document.paragraphs.front().runs;
    ASSERT_EQ(runs.size(), 2u);
    const Picture& png = runs[0].inset->picture;
    EXPECT_EQ(png.kind, PictureKind::png);
    EXPECT_EQ(png.bytes, "\x89PNG") << "an odd digit at the end is nothing";
    EXPECT_EQ(png.shown_width(), 720);
    EXPECT_EQ(png.shown_height(), 2880);
    EXPECT_EQ(runs[1].inset->picture.bytes, "{}\\}");
    EXPECT_EQ(plain_text(document), "\uFFFC\uFFFC");
}

TEST(Pictures, OfOtherKindsKeepTheirBytesAndTheirSize) {
    const Document document = document_of("{\\pict\\wmetafile8\\picw2540\\pich1270 0102}");
    const Picture& picture = document.paragraphs.front().runs.front().inset->picture;
    EXPECT_EQ(picture.kind, PictureKind::metafile);
    EXPECT_EQ(picture.kind_number, 8);
    EXPECT_EQ(picture.shown_width(), 1440);
    EXPECT_EQ(picture.shown_height(), 720);
    EXPECT_TRUE(
        survives("{\\pict\\wmetafile8\\picw2540\\pich1270 0102}{\\pict\\dibitmap0\\wbmbitspixel4 01}"));
}

TEST(Pictures, AreNotShownTwice) {
    const Document document =
        document_of("{\\*\\shppict{\\pict\\pngblip 01}}{\\nonshppict{\\pict\\wmetafile8 02}}x");
    EXPECT_EQ(plain_text(document), "\uFFFCx");
    EXPECT_EQ(losses(document), std::vector<std::string>{"second copies of pictures for old readers"});
}

TEST(Pictures, NeverHaveASizeBelowOne) {
    const Document document = document_of("{\\pict\\pngblip\\picwgoal100\\piccropl5000\\picscaley-5 01}");
    const Picture& picture = document.paragraphs.front().runs.front().inset->picture;
    EXPECT_EQ(picture.shown_width(), 1);
    EXPECT_EQ(picture.shown_height(), 1);
}

TEST(Tables, HaveRowsAndCells) {
    const Document document =
        document_of("\\trowd\\trgaph108\\trleft-108\\clbrdrt\\brdrs\\brdrw10\\clmgf\\cellx2000"
                    "\\clmrg\\clvertalc\\clcbpat2\\cellx4000\\pard\\intbl a\\par b\\cell c\\cell\\row"
                    "\\pard d\\par");
    ASSERT_EQ(document.paragraphs.size(), 4u);
    EXPECT_EQ(document.paragraphs[0].end, Paragraph::End::paragraph);
    EXPECT_EQ(document.paragraphs[1].end, Paragraph::End::cell);
    EXPECT_EQ(document.paragraphs[2].end, Paragraph::End::row);
    EXPECT_FALSE(document.paragraphs[3].in_table);
    const RowFormat& row = *document.paragraphs[0].row;
    EXPECT_EQ(row.gap, 108);
    EXPECT_EQ(row.left, -108);
    ASSERT_EQ(row.cells.size(), 2u);
    EXPECT_EQ(row.cells[0].right, 2000);
    EXPECT_EQ(row.cells[0].top, (Border{10, 0, 0, BorderStyle::single, false}));
    EXPECT_EQ(row.cells[0].across, CellMerge::first);
    EXPECT_EQ(row.cells[1].across, CellMerge::continued);
    EXPECT_EQ(row.cells[1].alignment, CellAlignment::centre);
    EXPECT_EQ(row.cells[1].background, 2);
    EXPECT_EQ(plain_text(document), "a\r\nb\tc\r\nd");
}

TEST(Tables, GetEdgesForCellsThatNobodyDescribed) {
    const Document document = document_of("\\trowd\\cellx1000\\intbl a\\cell b\\cell c\\cell\\row");
    const RowFormat& row = *document.paragraphs[0].row;
    ASSERT_EQ(row.cells.size(), 3u);
    EXPECT_EQ(row.cells[2].right, 3000);
}

TEST(Tables, BearARowThatNeverEnds) {
    EXPECT_EQ(text_of("\\trowd\\cellx1000\\intbl a\\cell b\\par\\pard c\\par"), "a\tb\r\nc");
    EXPECT_EQ(text_of("\\trowd\\cellx1000\\intbl a\\cell b"), "a\tb");
    EXPECT_FALSE(document_of("\\pard\\intbl a\\par\\pard b\\par").paragraphs[0].in_table)
        << "without any cell there is no table";
    EXPECT_EQ(text_of("\\row\\cell\\row\\row a\\par"), "\r\na");
}

TEST(Tables, BecomeTextWithinTables) {
    const Document document = document_of(
        "\\trowd\\cellx5000\\pard\\intbl\\itap2 a\\nestcell b\\nestcell{\\*\\nesttableprops\\trowd\\cellx2000"
        "\\nestrow}{\\nonesttables\\par}\\pard\\intbl\\itap1 after\\cell\\row\\pard x\\par");
    EXPECT_EQ(plain_text(document), "a\tb\r\nafter\r\nx");
    EXPECT_EQ(losses(document), std::vector<std::string>{"nested tables (kept as text)"});
}

TEST(Kept, StandsWhereItStood) {
    const std::string body = "a{\\*\\bkmkstart m}b{\\*\\bkmkend "
                             "m}{\\super\\chftn{\\footnote\\pard\\plain{\\super\\chftn} n}}c\\par";
    const Document document = document_of(body);
    EXPECT_EQ(plain_text(document), "abc");
    EXPECT_TRUE(losses(document).empty());
    const std::string written = write(document);
    EXPECT_LT(written.find("{\\*\\bkmkstart m}"), written.find("{\\*\\bkmkend m}"));
    EXPECT_NE(written.find("{\\footnote\\pard\\plain{\\super\\chftn} n}"), std::string::npos);
}

TEST(Kept, IsWrittenForTheUnicodeCountThatItWasReadWith) {
    const Document document = document_of("{\\uc2{\\footnote\\u228ae x}}\\par");
    EXPECT_NE(write(document).find("{\\uc2{\\footnote\\u228ae x}}"), std::string::npos);
    EXPECT_TRUE(survives("{\\uc2{\\footnote\\u228ae x}}\\par"));
}

TEST(Kept, HasInfoStylesAndDocumentWords) {
    const Document document =
        document_of("{\\stylesheet{\\s1 Head;}}{\\info{\\title T}}\\facingp\\widowctrl\\viewkind4 x\\par");
    EXPECT_EQ(document.groups,
              (std::vector<std::string>{"{\\stylesheet{\\s1 Head;}}", "{\\info{\\title T}}"}));
    EXPECT_EQ(document.words.size(), 3u);
    EXPECT_TRUE(losses(document).empty());
}

TEST(Drawings, LeaveTheirText) {
    const Document document =
        document_of("a{\\shp{\\*\\shpinst\\shpleft0{\\sp{\\sn x}{\\sv 1}}{\\shptxt in it\\par}}"
                    "{\\shprslt old}}b\\par");
    EXPECT_EQ(plain_text(document), "ain it\r\nb");
    EXPECT_EQ(losses(document).size(), 1u);
}

TEST(Losses, AreToldOnceEach) {
    const Document document =
        document_of("{\\*\\themedata 00}{\\*\\themedata 00}\\charscalex80 a\\charscalex100 b");
    EXPECT_EQ(losses(document), (std::vector<std::string>{"theme data", "letter widths"}));
}

} // namespace
} // namespace tolva::rtf
