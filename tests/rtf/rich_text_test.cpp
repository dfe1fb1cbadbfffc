#include <gtest/gtest.h>

#include "rtf/rich_text.h"
#include "sources.h"
#include "support/errors.h"

namespace tolva::rtf {
namespace {

using Setting = RichText::Setting;

RichText box_of(const std::string& body) {
    RichText box;
    box.load(source_of(body));
    return box;
}

TEST(RichText, BeginsEmpty) {
    const RichText box;
    EXPECT_EQ(box.text(), "");
    EXPECT_EQ(box.length(), 0u);
    EXPECT_EQ(box.sel_start(), 0u);
}

TEST(RichText, TakesTextWithAnyLineEnds) {
    RichText box;
    box.set_text("a\r\nb\nc\rd\r\n");
    EXPECT_EQ(box.text(), "a\r\nb\r\nc\r\nd\r\n");
}

TEST(RichText, DropsAllFormattingWithANewText) {
    RichText box = box_of("\\qc{\\b bold}{\\pntext\\'b7\\tab}\\par{\\*\\bkmkstart x}");
    box.select(2, 2);
    box.set_text(box.text() + "<city>");
    EXPECT_EQ(box.text(), "\u00B7\tbold<city>");
    EXPECT_EQ(box.sel_start(), 0u);
    EXPECT_EQ(box.sel_length(), 0u);
    const Document& document = box.document();
    EXPECT_EQ(document.paragraphs.front().runs.size(), 1u);
    EXPECT_EQ(*document.paragraphs.front().format, ParagraphFormat{});
    EXPECT_FALSE(document.paragraphs.front().runs.front().format.bold);
}

TEST(RichText, GivesItsFontToTextWithoutFormatting) {
    Font font;
    font.name = "Arial";
    RichText box(font, 20);
    box.set_text("x");
    EXPECT_NE(box.text_rtf().find("Arial;"), std::string::npos);
    EXPECT_NE(box.text_rtf().find("\\fs20 x"), std::string::npos);
}

TEST(RichText, TakesAndGivesItsSource) {
    RichText box;
    box.set_text_rtf("{\\rtf1 a{\\b b}\\par}");
    EXPECT_EQ(box.text(), "ab");
    RichText other;
    other.set_text_rtf(box.text_rtf());
    EXPECT_EQ(other.document(), box.document());
    box.set_text_rtf("");
    EXPECT_EQ(box.text(), "");
}

TEST(RichText, TakesMergedValuesInAnyLanguage) {
    RichText box = box_of("Dear <firstname>,\\par");
    std::string source = box.text_rtf();
    source.replace(source.find("<firstname>"), 11, "Jiří é");
    box.set_text_rtf(source);
    EXPECT_EQ(box.text(), "Dear Jiří é,");
}

TEST(RichText, BearsAMergedValueThatChangesTheMarkup) {
    RichText box = box_of("Dear <firstname>, hello\\par");
    for (const char* const value : {"C:\\par\\b", "{", "}", "a}b{", "\\"}) {
        std::string source = source_of("Dear <firstname>, hello\\par");
        source.replace(source.find("<firstname>"), 11, value);
        EXPECT_EQ(support::error_number([&] { box.set_text_rtf(source); }), 0) << value;
        EXPECT_EQ(box.text().substr(0, 5), "Dear ") << value;
    }
}

TEST(RichText, RefusesAnUnreadableSourceAndStaysAsItIs) {
    RichText box = box_of("keep\\par");
    EXPECT_EQ(support::error_number([&] { box.set_text_rtf("no rich text"); }), 321);
    EXPECT_EQ(support::error_number([&] { box.set_sel_rtf("no rich text"); }), 321);
    EXPECT_EQ(support::error_number([&] { box.set_sel_rtf(""); }), 321)
        << "an empty clipboard pastes nothing";
    EXPECT_EQ(support::error_number([&] { box.load(""); }), 321);
    EXPECT_EQ(box.text(), "keep");
}

TEST(RichText, SavesWhatItLoads) {
    const RichText box = box_of("a\\par{\\i b}\\par");
    RichText other;
    other.load(box.save());
    EXPECT_EQ(other.document(), box.document());
}

TEST(Selection, CountsCharactersAndLineEnds) {
    RichText box = box_of("caf\\'e9\\par\\u-10179?\\u-8704?x\\par{\\pict\\pngblip 01}y\\par");
    EXPECT_EQ(box.length(), 4u + 2 + 2 + 2 + 2);
    box.select(3, 1);
    EXPECT_EQ(box.sel_text(), "é");
    box.select(6, 1);
    EXPECT_EQ(box.sel_text(), "😀");
    box.select(11, 99);
    EXPECT_EQ(box.sel_length(), 1u);
    EXPECT_EQ(box.sel_text(), "y");
    box.select(99, 3);
    EXPECT_EQ(box.sel_start(), box.length());
}

TEST(Selection, IsReplacedByTextInItsOwnFormat) {
    RichText box = box_of("one {\\b two} three\\par");
    box.select(4, 3);
    box.set_sel_text("2");
    EXPECT_EQ(box.text(), "one 2 three");
    EXPECT_EQ(box.sel_start(), 5u);
    EXPECT_EQ(box.sel_length(), 0u);
    box.select(4, 1);
    EXPECT_EQ(box.sel_bold(), Setting::yes);
}

TEST(Selection, TakesTextOfMoreLines) {
    RichText box = box_of("\\qc{\\b ab}\\par z\\par");
    box.select(1, 0);
    box.set_sel_text("1\r\n2\n3");
    EXPECT_EQ(box.text(), "a1\r\n2\r\n3b\r\nz");
    EXPECT_EQ(box.sel_start(), 8u);
    for (std::size_t at = 0; at < 3; ++at)
        EXPECT_EQ(box.document().paragraphs[at].format->alignment, Alignment::centre) << at;
}

TEST(Selection, WhenEmptiedJoinsItsParagraphs) {
    RichText box = box_of("\\qr one\\par\\pard\\qc two\\par\\pard three\\par");
    box.select(2, 7);
    EXPECT_EQ(box.sel_text(), "e\r\ntwo\r");
    box.set_sel_text("");
    EXPECT_EQ(box.text(), "on\r\nthree") << "half a line end is left where it is";
    box.select(2, 2);
    box.set_sel_text("");
    EXPECT_EQ(box.text(), "onthree");
    EXPECT_EQ(box.document().paragraphs.front().format->alignment, Alignment::right);
    box.select(0, 99);
    box.set_sel_text("");
    EXPECT_EQ(box.text(), "");
}

TEST(Selection, GivesItsOwnSourceAlone) {
    RichText box = box_of("one {\\b two} three\\par four\\par");
    box.select(4, 5);
    const Document part = read(box.sel_rtf());
    EXPECT_EQ(plain_text(part), "two t");
    EXPECT_TRUE(part.paragraphs.front().runs.front().format.bold);
    EXPECT_TRUE(part.unended);
    box.select(8, 7);
    EXPECT_EQ(plain_text(read(box.sel_rtf())), "three");
    EXPECT_FALSE(read(box.sel_rtf()).unended) << "the line end belongs to it";
}

TEST(Selection, IsReplacedByParsedSource) {
    RichText box = box_of("one three\\par");
    box.select(4, 0);
    box.set_sel_rtf("{\\rtf1{\\fonttbl{\\f0 Courier;}}{\\colortbl;\\red9\\green8\\blue7;}\\cf1\\i two }");
    EXPECT_EQ(box.text(), "one two three");
    EXPECT_EQ(box.sel_start(), 8u);
    const CharacterFormat& format = box.document().paragraphs.front().runs[1].format;
    EXPECT_TRUE(format.italic);
    EXPECT_EQ(box.document().fonts[static_cast<std::size_t>(format.font)].name, "Courier");
    EXPECT_EQ(box.document().colours[static_cast<std::size_t>(format.colour)], (Colour{9, 8, 7, false}));
}

TEST(Selection, TakesParagraphsOfASourceWithTheirFormat) {
    RichText box = box_of("one\\par");
    box.select(3, 0);
    box.set_sel_rtf("{\\rtf1 a\\par\\qc b\\par\\pard c}");
    EXPECT_EQ(box.text(), "onea\r\nb\r\nc");
    EXPECT_EQ(box.document().paragraphs[1].format->alignment, Alignment::centre);
    box.select(0, 0);
    box.set_sel_rtf("{\\rtf1\\qr first\\par}");
    EXPECT_EQ(box.text(), "first\r\nonea\r\nb\r\nc");
    EXPECT_EQ(box.sel_start(), 7u);
}

TEST(Selection, CutAndPastedBackIsTheSame) {
    const RichText whole = box_of("one {\\b two}\\par\\qc three{\\i  four}\\par\\pard five\\par");
    for (std::size_t start = 0; start < whole.length(); ++start)
        for (std::size_t length = 1; start + length <= whole.length(); ++length) {
            RichText box = whole;
            box.select(start, length);
            const std::string text = box.sel_text();
            if (text.front() == '\n' || text.back() == '\r')
                continue; // half a line end
            const std::string source = box.sel_rtf();
            box.set_sel_text("");
            EXPECT_EQ(box.length(), whole.length() - length);
            box.set_sel_rtf(source);
            EXPECT_EQ(box.text(), whole.text()) << start << " " << length;
            EXPECT_EQ(box.sel_start(), start + length);
        }
}

TEST(SelBold, IsMixedWhereOnlySomeIsBold) {
    RichText box = box_of("one {\\b two}\\par");
    box.select(0, 3);
    EXPECT_EQ(box.sel_bold(), Setting::no);
    box.select(4, 3);
    EXPECT_EQ(box.sel_bold(), Setting::yes);
    box.select(2, 4);
    EXPECT_EQ(box.sel_bold(), Setting::mixed);
    box.set_sel_bold(true);
    EXPECT_EQ(box.sel_bold(), Setting::yes);
    EXPECT_EQ(box.sel_text(), "e tw");
    box.select(0, 2);
    EXPECT_EQ(box.sel_bold(), Setting::no);
}

TEST(SelBold, SetAtACaretHoldsForWhatIsTypedNext) {
    RichText box = box_of("one\\par");
    box.select(3, 0);
    EXPECT_EQ(box.sel_bold(), Setting::no);
    box.set_sel_bold(true);
    EXPECT_EQ(box.sel_bold(), Setting::yes);
    box.set_sel_text("x");
    EXPECT_EQ(box.text(), "onex");
    EXPECT_TRUE(box.document().paragraphs.front().runs.back().format.bold);
    EXPECT_EQ(box.sel_bold(), Setting::yes);
    box.select(1, 0);
    EXPECT_EQ(box.sel_bold(), Setting::no) << "moving the caret forgets it";
}

TEST(SelItalicAndUnderline, AreSetAndTakenBack) {
    RichText box = box_of("one\\par two\\par");
    box.select(1, 6);
    box.set_sel_italic(true);
    box.set_sel_underline(true);
    EXPECT_EQ(box.sel_italic(), Setting::yes);
    EXPECT_EQ(box.sel_underline(), Setting::yes);
    box.set_sel_underline(false);
    EXPECT_EQ(box.sel_underline(), Setting::no);
    EXPECT_EQ(box.text(), "one\r\ntwo");
}

TEST(SelAlignment, IsByTheNumbersOfARichTextBox) {
    RichText box = box_of("a\\par\\qr b\\par\\qc c\\par\\qj d\\par");
    for (int at = 0; at < 4; ++at) {
        box.select(static_cast<std::size_t>(at) * 3, 1);
        EXPECT_EQ(box.sel_alignment(), at);
    }
    box.select(0, 4);
    EXPECT_EQ(box.sel_alignment(), std::nullopt);
    box.set_sel_alignment(RichText::align_centre);
    EXPECT_EQ(box.sel_alignment(), RichText::align_centre);
    box.select(9, 0);
    EXPECT_EQ(box.sel_alignment(), RichText::align_justified);
}

TEST(SelAlignment, LeavesTheParagraphAloneAtWhoseStartTheSelectionEnds) {
    RichText box = box_of("a\\par b\\par");
    box.select(0, 3);
    box.set_sel_alignment(RichText::align_right);
    box.select(3, 0);
    EXPECT_EQ(box.sel_alignment(), RichText::align_left);
}

TEST(Lists, LoseTheirTextOnlyWhenItIsSelected) {
    const std::string body =
        "{\\pntext 1.\\tab}{\\*\\pn\\pnlvlbody\\pndec{\\pntxta .}}one\\par{\\pntext 2.\\tab}two\\par";
    RichText box = box_of(body);
    EXPECT_EQ(box.text(), "1.\tone\r\n2.\ttwo");
    box.select(3, 3);
    box.set_sel_text("uno");
    EXPECT_EQ(box.text(), "1.\tuno\r\n2.\ttwo");
    box.select(0, 6);
    box.set_sel_text("x");
    EXPECT_EQ(box.text(), "x\r\n2.\ttwo");
    EXPECT_EQ(*box.document().paragraphs.front().format->numbering, Numbering{});
    box.select(2, 0);
    box.set_sel_text("y");
    EXPECT_EQ(box.text(), "xy\r\n2.\ttwo");
}

TEST(Fields, KeepTheirInstructionWhileTextAroundThemChanges) {
    RichText box = box_of("a{\\field{\\*\\fldinst X}{\\fldrslt link}}b\\par");
    box.select(1, 0);
    box.set_sel_text("1");
    box.select(6, 0);
    box.set_sel_text("2");
    EXPECT_EQ(box.text(), "a1link2b");
    EXPECT_NE(box.text_rtf().find("a1{\\field{\\*\\fldinst X}{\\fldrslt link}}2b"), std::string::npos);
    box.select(2, 4);
    box.set_sel_text("");
    EXPECT_EQ(box.text_rtf().find("fldinst"), std::string::npos) << "with all of its result the field goes";
    EXPECT_EQ(box.text(), "a12b");
}

TEST(Fields, BecomeTextWhenCutInTwo) {
    RichText box = box_of("a{\\field{\\*\\fldinst X}{\\fldrslt link}}b\\par");
    box.select(0, 3);
    EXPECT_EQ(plain_text(read(box.sel_rtf())), "ali");
    EXPECT_EQ(box.sel_rtf().find("fldinst"), std::string::npos);
    box.set_sel_text("");
    EXPECT_EQ(box.text(), "nkb");
}

const char table_body[] = "before\\par\\trowd\\cellx1000\\cellx2000\\intbl a\\cell b\\cell\\row"
                          "\\trowd\\cellx1000\\cellx2000\\intbl c\\cell d\\cell\\row\\pard after\\par";

TEST(Tables, StayWholeWhenCellsAreEmptied) {
    RichText box = box_of(table_body);
    EXPECT_EQ(box.text(), "before\r\na\tb\r\nc\td\r\nafter");
    box.select(10, 4);
    EXPECT_EQ(box.sel_text(), "b\r\nc");
    box.set_sel_text("");
    EXPECT_EQ(box.text(), "before\r\na\t\r\n\td\r\nafter");
    EXPECT_EQ(read(box.save()), box.document());
}

TEST(Tables, GoWithTheirRowsWhenThoseAreSelected) {
    RichText box = box_of(table_body);
    box.select(8, 5);
    EXPECT_EQ(box.sel_text(), "a\tb\r\n");
    box.set_sel_text("");
    EXPECT_EQ(box.text(), "before\r\nc\td\r\nafter");
    box.select(0, box.length());
    box.set_sel_text("");
    EXPECT_EQ(box.text(), "");
}

TEST(Tables, AreCopiedWholeOrAsText) {
    RichText box = box_of(table_body);
    box.select(8, 5);
    const Document row = read(box.sel_rtf());
    EXPECT_TRUE(row.paragraphs.front().in_table);
    EXPECT_EQ(plain_text(row), "a\tb");
    box.select(9, 6);
    const Document text = read(box.sel_rtf());
    EXPECT_FALSE(text.paragraphs.front().in_table);
    EXPECT_EQ(plain_text(text), "\tb\r\nc\t");
}

TEST(Tables, ArePastedBetweenParagraphs) {
    RichText box = box_of(table_body);
    box.select(8, 5);
    const std::string row = box.sel_rtf();
    box.select(box.length() - 2, 0);
    box.set_sel_rtf(row);
    EXPECT_EQ(box.text(), "before\r\na\tb\r\nc\td\r\naft\r\na\tb\r\ner");
    EXPECT_EQ(read(box.save()), box.document());
    box.select(8, 0);
    box.set_sel_rtf(row);
    EXPECT_EQ(box.text().substr(0, 18), "before\r\na\tb\r\na\tb\r\n") << "within a cell a row is text";
}

TEST(Sections, GoWithTheirBreak) {
    RichText box = box_of("\\sectd\\cols2 a\\par\\sect\\sectd\\cols3 b\\par");
    box.select(0, 3);
    box.set_sel_text("x");
    EXPECT_EQ(box.text(), "xb");
    ASSERT_EQ(box.document().sections.size(), 1u);
    EXPECT_EQ(box.document().sections.front().words.front().value, 3);
}

} // namespace
} // namespace tolva::rtf
