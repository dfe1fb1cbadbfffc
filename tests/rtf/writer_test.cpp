#include <gtest/gtest.h>

#include <algorithm>

#include "sources.h"

namespace tolva::rtf {
namespace {

/// What is written of the body: behind the header and its page words.
std::string body_written(const std::string& body) {
    const std::string written = write(document_of(body));
    const std::string start = "\\pard\\plain";
    const std::size_t at = written.find(start) + start.size();
    return written.substr(at, written.rfind('}') - at);
}

TEST(Writer, WritesTheHeaderInFull) {
    const std::string written = write(document_of("\\paperw11906\\paperh16838\\viewkind4 x\\par"));
    EXPECT_EQ(
        written,
        "{\\rtf1\\ansi\\ansicpg1252\\deff0\\deflang1033{\\fonttbl{\\f0\\froman\\fcharset0 Times New Roman;}"
        "{\\f1\\fswiss\\fcharset0 Arial;}{\\f2\\ftech\\fcharset2 Symbol;}{\\f3\\fnil\\fcharset128 MS Gothic;}"
        "{\\f4\\fswiss\\fcharset161 Arial Greek;}}\r\n"
        "{\\colortbl ;\\red255\\green0\\blue0;\\red0\\green0\\blue255;}\r\n"
        "\\uc1\\viewkind4\\paperw11906\\paperh16838\\margl1800\\margr1800\\margt1440\\margb1440\\deftab720\r"
        "\n"
        "\\pard\\plain x\\par\r\n}\r\n");
}

TEST(Writer, WritesOnlyChanges) {
    EXPECT_EQ(body_written("a{\\b b}c\\par"), " a\\b b\\b0 c\\par\r\n");
    EXPECT_EQ(body_written("\\qc a\\par b\\par\\pard c\\par"),
              "\\pard\\qc a\\par\r\nb\\par\r\n\\pard c\\par\r\n");
    EXPECT_EQ(body_written("{\\ul\\fs28\\f1\\cf1 a}\\par"),
              "\\f1\\fs28\\cf1\\ul a\\f0\\fs24\\cf0\\ulnone\\par\r\n");
}

TEST(Writer, EscapesByTheFontsOwnCharacterSet) {
    EXPECT_EQ(body_written("caf\\'e9\\par"), " caf\\'e9\\par\r\n");
    EXPECT_EQ(body_written("\\f4\\'d9\\u233?\\par"), "\\f4 \\'d9\\u233?\\par\r\n");
    EXPECT_EQ(body_written("\\f3\\'82\\'a0\\par"), "\\f3 \\u12354?\\par\r\n");
    EXPECT_EQ(body_written("\\f2 ab\\'b7\\'5c\\par"), "\\f2 ab\\'b7\\'5c\\par\r\n");
    EXPECT_EQ(body_written("\\u-10179?\\u-8704?\\u-3913?\\par"), " \\u-10179?\\u-8704?\\u-3913?\\par\r\n");
}

TEST(Writer, EscapesWhatTheFormatNeeds) {
    EXPECT_EQ(body_written("\\{\\}\\\\\\~\\-\\_\\tab\\line\\page\\emdash\\par"),
              " \\{\\}\\\\\\~\\-\\_\\tab \\line \\page \\emdash \\par\r\n");
    EXPECT_EQ(body_written("\\b  7\\par"), "\\b  7\\par\r\n");
}

TEST(Writer, KeepsAMergeTagInOnePiece) {
    EXPECT_NE(write(document_of("Dear <firstname> <lastname>,\\par")).find("Dear <firstname> <lastname>,"),
              std::string::npos);
    EXPECT_EQ(write(document_of("<first{\\b name>}\\par")).find("<firstname>"), std::string::npos)
        << "a tag that formatting has split stays split";
}

TEST(Writer, WritesAsciiAlone) {
    const std::string written = write(document_of("caf\xE9 \\f3\\'82\\'a0{\\footnote \xE9}\\par"));
    EXPECT_TRUE(std::all_of(written.begin(), written.end(),
                            [](char byte) { return static_cast<unsigned char>(byte) < 0x80; }));
}

TEST(Writer, BringsBackTheFormatBehindAField) {
    const std::string body = "{\\b{\\field{\\*\\fldinst X}{\\fldrslt\\b0\\i r}}}s\\par";
    EXPECT_EQ(body_written(body), "\\b{\\field{\\*\\fldinst X}{\\fldrslt\\b0\\i r}}\\b0 s\\par\r\n");
    EXPECT_TRUE(survives(body));
}

TEST(Writer, TellsWhetherTheLastParagraphEnds) {
    EXPECT_TRUE(read(write(document_of("a"))).unended);
    EXPECT_FALSE(read(write(document_of("a\\par"))).unended);
}

TEST(Writer, WritesWhatReadsBackEqual) {
    for (const char* const body : {
             "",
             "\\par\\par",
             "{\\pntext\\f2\\'b7\\tab}{\\*\\pn\\pnlvlblt\\pnf2{\\pntxtb\\'b7}}a\\par b\\par",
             "{\\*\\pn\\pnlvlbody\\pnf2\\pndec{\\pntxta abc}}a\\par",
             "\\trowd\\trhdr\\trqc\\trrh-300\\trbrdrh\\brdrdot\\clvmgf\\cellx90\\intbl\\qc a\\cell\\row"
             "\\trowd\\clvmrg\\clshdng500\\cellx90 b\\cell\\row\\pard c\\par",
             "\\s3\\outlinelevel2\\rtlpar\\nowidctlpar\\cbpat1\\shading2000\\tldot\\tqr\\tx99 a\\par",
             "\\lang1031\\cs5 a\\plain b\\lang1033 c\\lang0 d\\par",
             "\\super a\\sub b\\nosupersub\\up7 c\\dn7 d\\up0\\expndtw20 e\\par",
             "\\kerning0 a\\kerning28 b\\plain c\\b\\kerning1 d\\par",
             "\\strike\\striked1\\caps\\scaps\\v\\outl\\shad\\embo\\impr a\\par",
             "\\ulw a\\uldash b\\ulwave c\\ulthd d\\par",
             "\\sectd\\cols2{\\footer f}a\\sect\\sectd b\\par\\sect c",
             "a{\\*\\atnid x}{\\xe{\\v y}}\\chpgn b\\par{\\*\\bkmkend z}",
             "{\\object\\objocx{\\*\\objdata 00}{\\result{\\pict\\emfblip\\piccropb9 00}}}",
             "{\\field\\flddirty{\\*\\fldinst A}}b",
             "\\f2 a\\f0 a\\f2 \\{\\}\\\\\\par",
         })
        EXPECT_TRUE(survives(body)) << body;
}

TEST(Writer, KeepsTheNumbersThatKeptPartsReferTo) {
    const Document document =
        read("{\\rtf1{\\fonttbl{\\f37 Arial;}{\\f5 Courier;}}{\\stylesheet{\\s1\\f5 S;}}\\f5 x\\par}");
    const std::string written = write(document);
    EXPECT_NE(written.find("{\\f5\\fnil Courier;}"), std::string::npos);
    EXPECT_NE(written.find("{\\stylesheet{\\s1\\f5 S;}}"), std::string::npos);
}

} // namespace
} // namespace tolva::rtf
