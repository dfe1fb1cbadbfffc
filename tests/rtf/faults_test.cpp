#include <gtest/gtest.h>

#include <filesystem>

#include "rtf/limits.h"
#include "sources.h"
#include "support/errors.h"
#include "support/samples.h"

namespace tolva::rtf {
namespace {

std::string repeated(const std::string& piece, std::size_t times) {
    std::string result;
    for (std::size_t at = 0; at < times; ++at)
        result += piece;
    return result;
}

TEST(Faults, AreErrorsOnlyWithoutTheHeader) {
    for (const char* const source : {"", "plain text", "{\\rtb1 x}", "\\rtf1 {x}", "{rtf1 x}", "{"})
        EXPECT_EQ(support::error_number([source] { read(source); }), 321) << source;
    EXPECT_EQ(support::error_text([] { read("x"); }), "Invalid file format");
    for (const char* const source :
         {"{\\rtf", "{\\rtf1", "  \r\n{\\rtf1 x}", "\xEF\xBB\xBF{\\rtf1 x}", "{\r\n\\rtf0 x}"})
        EXPECT_EQ(support::error_number([source] { read(source); }), 0) << source;
}

TEST(Faults, OfBracesLoseNoText) {
    EXPECT_EQ(plain_text(read("{\\rtf1 a{\\b b")), "ab");
    EXPECT_EQ(plain_text(read("{\\rtf1 a}} b}")), "a") << "the document ends with its own brace";
    EXPECT_EQ(plain_text(read("{\\rtf1 a}\0garbage")), "a");
    EXPECT_EQ(plain_text(read("{\\rtf1 {a}{{b}}{}}")), "ab");
}

TEST(Faults, OfACutSourceLoseNoTextAheadOfTheCut) {
    const std::string source =
        source_of("one\\par{\\b two}{\\field{\\*\\fldinst X}{\\fldrslt three}}\\trowd\\cellx100"
                  "\\intbl four\\cell\\row{\\pict\\pngblip 0102}{\\*\\bkmkstart m}\\u228?");
    std::size_t longest = 0;
    for (std::size_t length = 6; length <= source.size(); ++length) {
        const Document document = read(source.substr(0, length));
        EXPECT_EQ(read(write(document)), document) << length;
        const std::size_t text = plain_text(document).size();
        EXPECT_GE(text + 4, longest) << length;
        longest = std::max(longest, text);
    }
}

TEST(Faults, OfBinaryLengthsAreCheckedAgainstWhatIsLeft) {
    EXPECT_EQ(text_of("{\\pict\\bin99999 x}y"), "y");
    EXPECT_EQ(text_of("{\\*\\unknown\\bin99999 x}y"), "y");
    EXPECT_EQ(text_of("\\bin-5 y"), "y");
    EXPECT_EQ(text_of("{\\footnote\\bin2147483647 x}y"), "y");
}

TEST(Faults, OfACutPartThatWouldBeKeptAreTold) {
    const Document document = read("{\\rtf1 a{\\footnote b");
    EXPECT_EQ(plain_text(document), "a");
    EXPECT_EQ(losses(document), std::vector<std::string>{"what the cut end of the source held"});
}

TEST(Limits, KeepCountOfGroupsBelowTheDeepestThatIsKept) {
    const std::size_t depth = limits::group_depth * 3;
    const Document document =
        document_of("a" + repeated("{\\b ", depth) + "b{\\field{\\*\\fldinst X}{\\fldrslt c}}" +
                    repeated("}", depth) + "d\\par");
    EXPECT_EQ(plain_text(document), "abcd");
    EXPECT_FALSE(document.paragraphs.front().runs.back().format.bold) << "all groups have been closed again";
    EXPECT_EQ(read(write(document)), document);
}

TEST(Limits, BearAMillionOpenGroups) {
    EXPECT_EQ(text_of(repeated("{", 1000000) + "x"), "x");
}

TEST(Limits, BoundTheFonts) {
    std::string fonts;
    for (int number = 0; number < 12000; ++number)
        fonts += "{\\f" + std::to_string(number) + " A;}";
    const Document document = read("{\\rtf1{\\fonttbl" + fonts + "}\\f11999 x}");
    EXPECT_EQ(document.fonts.size(), limits::fonts);
    EXPECT_EQ(document.paragraphs.front().runs.front().format.font, document.default_font);
}

TEST(Limits, BoundTheColours) {
    const Document document = read("{\\rtf1{\\colortbl" + repeated("\\red1;", 40000) + "}\\cf39999 x}");
    EXPECT_EQ(document.colours.size(), limits::colours);
    EXPECT_EQ(document.paragraphs.front().runs.front().format.colour, 0);
}

TEST(Limits, BoundNamesAndListTexts) {
    const Document document = read("{\\rtf1{\\fonttbl{\\f0 " + repeated("\\u228?", 5000) + ";}}{\\pntext " +
                                   repeated("x", 5000) + "}{\\pntext 1.}a\\par}");
    EXPECT_LE(document.fonts.front().name.size(), limits::name_bytes);
    EXPECT_LE(document.paragraphs.front().list_text->text.size(), limits::list_text_bytes);
    EXPECT_EQ(read(write(document)), document);
}

TEST(Limits, BoundTabsAndCells) {
    std::string tabs, cells;
    for (int at = 1; at <= 500; ++at)
        tabs += "\\tx" + std::to_string(at);
    EXPECT_EQ(paragraph_of(tabs).tabs.size(), limits::tabs);
    const Document document =
        document_of("\\trowd" + repeated("\\cellx9", 500) + "\\intbl" + repeated(" x\\cell", 500) + "\\row");
    EXPECT_EQ(document.paragraphs.front().row->cells.size(), limits::cells);
    EXPECT_EQ(document.paragraphs.size(), 500u);
    EXPECT_EQ(read(write(document)), document);
}

TEST(Limits, BoundTheLists) {
    const std::string lists = "{\\*\\listtable" +
                              repeated("{\\list{\\listlevel{\\leveltext\\'01\\'00;}}\\listid1}", 5000) +
                              "}{\\*\\listoverridetable" +
                              repeated("{\\listoverride\\listid1\\listoverridecount999999\\ls1}", 5000) + "}";
    EXPECT_EQ(text_of(lists + "\\ls1 a\\par"), "1\ta");
    EXPECT_EQ(text_of("{\\*\\listtable{\\list" + repeated("{\\listlevel{\\leveltext\\'01\\'00;}}", 500) +
                      "\\listid1}}{\\*\\listoverridetable{\\listid1\\ls1}}\\ilvl8\\ls1 a\\par"),
              "1\ta");
}

TEST(Limits, BoundTheParagraphsButKeepTheText) {
    const Document document = document_of(repeated("\\par", limits::paragraphs + 10) + " x\\par y");
    EXPECT_EQ(document.paragraphs.size(), limits::paragraphs + 1);
    EXPECT_EQ(document.paragraphs.back().runs.front().text, "\v\v\v\v\v\v\v\v\v\vx\vy");
}

TEST(Limits, BoundTheSections) {
    const Document document = document_of(repeated("\\sectd\\cols2 x\\sect", 20000));
    EXPECT_EQ(document.sections.size(), limits::sections);
    EXPECT_EQ(document.paragraphs.size(), 20000u);
}

TEST(Limits, ClampMeasures) {
    EXPECT_EQ(paragraph_of("\\li2147483647").left, limits::measure);
    EXPECT_EQ(paragraph_of("\\fi-2147483648").first, -limits::measure);
    EXPECT_EQ(document_of("\\paperw-5 x").page.width, 1);
    EXPECT_EQ(document_of("\\deftab0 x").default_tab, 720);
}

TEST(Limits, NoteOnlySoManyLosses) {
    std::string words;
    for (char a = 'a'; a <= 'z'; ++a)
        for (char b = 'a'; b <= 'z'; ++b)
            words += std::string("\\qqq") + a + b + " ";
    EXPECT_EQ(losses(document_of(words + "x")).size(), limits::dropped_notes);
}

TEST(Finds, ReadBackEqual) {
    const std::filesystem::path folder = std::filesystem::path(TOLVA_SOURCE_DIR) / "tests/rtf/finds";
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        const std::string source = support::file_content(entry.path());
        ASSERT_TRUE(is_rich_text(source)) << entry.path();
        const Document document = read(source);
        EXPECT_EQ(read(write(document)), document) << entry.path();
        ++count;
    }
    EXPECT_GT(count, 0);
}

} // namespace
} // namespace tolva::rtf
