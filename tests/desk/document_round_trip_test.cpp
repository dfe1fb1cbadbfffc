// Documents that other programs wrote, opened in the word processor and saved again: what nobody touched
// stays as it was, text and formatting, and what a save can't keep is asked about first.

#include <gtest/gtest.h>

#include <algorithm>

#include "rtf/read.h"
#include "support/desk.h"

namespace tolva {
namespace {

using rtf::Document;
using support::Desk;
using support::file_content;
namespace fs = std::filesystem;

/// A document as characters and marks, each with all that formats it, so that two can be compared around an
/// edit, however their text is cut into runs.
struct Piece {
    std::string character;
    rtf::CharacterFormat format;
    std::shared_ptr<const rtf::Inset> inset;

    friend bool operator==(const Piece& a, const Piece& b) {
        return a.character == b.character && a.format == b.format &&
               (a.inset == b.inset || (a.inset && b.inset && *a.inset == *b.inset));
    }
};

std::vector<Piece> pieces_of(const rtf::Paragraph& paragraph) {
    std::vector<Piece> pieces;
    for (const rtf::Run& run : paragraph.runs) {
        if (run.inset)
            pieces.push_back({"", run.format, run.inset});
        for (std::size_t at = 0; at < run.text.size();) {
            std::size_t next = at + 1;
            while (next < run.text.size() && (run.text[next] & 0xC0) == 0x80)
                ++next;
            pieces.push_back({run.text.substr(at, next - at), run.format, nullptr});
            at = next;
        }
    }
    return pieces;
}

/// Whether `after` is `before` with one character more, in the format of a neighbour, and nothing else
/// different.
void expect_one_more_character(const Document& before, const Document& after, const std::string& character) {
    // All but the paragraphs, in one comparison.
    Document frame = after;
    frame.paragraphs = before.paragraphs;
    EXPECT_TRUE(frame == before);
    ASSERT_EQ(after.paragraphs.size(), before.paragraphs.size());
    int touched = 0;
    for (std::size_t at = 0; at < before.paragraphs.size(); ++at) {
        rtf::Paragraph one = before.paragraphs[at], other = after.paragraphs[at];
        if (one == other)
            continue;
        ++touched;
        std::vector<Piece> pieces = pieces_of(one), more = pieces_of(other);
        ASSERT_EQ(more.size(), pieces.size() + 1);
        const auto place = std::mismatch(pieces.begin(), pieces.end(), more.begin()).second;
        // Ahead of a character like itself the new one is told apart by nothing.
        EXPECT_EQ(place->character, character);
        more.erase(place);
        EXPECT_TRUE(more == pieces) << "a neighbour of the new character has changed";
        one.runs.clear();
        other.runs.clear();
        EXPECT_TRUE(one == other);
    }
    EXPECT_EQ(touched, 1);
}

std::vector<fs::path> samples() {
    std::vector<fs::path> paths;
    for (const char* const folder : {"rtf", "desk"})
        if (fs::exists(support::shared_sample(folder)))
            for (const auto& entry : fs::recursive_directory_iterator(support::shared_sample(folder)))
                if (entry.path().extension() == ".rtf" && rtf::is_rich_text(file_content(entry.path())))
                    paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end());
    return paths;
}

class DocumentsOfOthers : public testing::Test {
  protected:
    void SetUp() override {
        TOLVA_NEEDS_SAMPLE("rtf");
        desk.start();
        desk.click(desk.menu().Command5);
    }

    letters::frmMain& frame() { return static_cast<letters::frmMain&>(desk.module().frmMain()); }
    letters::frmDocument& document() {
        return static_cast<letters::frmDocument&>(*frame().active_document());
    }
    void open(const std::string& path) {
        desk.host.file_to_open = path;
        desk.choose(frame().mnuFileOpen);
    }
    /// Saves, and looks whether losses were asked about as they must be.
    void save() {
        const bool loses = !rtf::losses(document().rtfText.content().document()).empty();
        const std::size_t boxes = desk.host.boxes.size();
        desk.host.answers = loses ? std::deque<int>{1} : std::deque<int>{};
        desk.choose(frame().mnuFileSave);
        EXPECT_EQ(desk.host.boxes.size(), boxes + (loses ? 1 : 0));
    }

    Desk desk;
};

TEST_F(DocumentsOfOthers, AreSavedUnchangedAndReadBackEqual) {
    int kept_whole = 0;
    for (const fs::path& path : samples()) {
        SCOPED_TRACE(path.filename().string());
        const std::string copy = desk.write_letter("copy.rtf", file_content(path));
        open(copy);
        ASSERT_FALSE(desk.host.error) << desk.host.error->text;
        const Document shown = document().rtfText.content().document();
        Document source = rtf::read(file_content(path));
        source.unended = false; // in a box every paragraph has its mark
        EXPECT_TRUE(shown == source);
        save();
        EXPECT_TRUE(rtf::read(file_content(copy)) == shown);
        open(copy);
        EXPECT_TRUE(document().rtfText.content().document() == shown);
        kept_whole += rtf::losses(rtf::read(file_content(path))).empty();
    }
    EXPECT_GT(kept_whole, 20);
}

TEST_F(DocumentsOfOthers, KeepAllThatASmallEditDoesNotTouch) {
    const std::string character = "\u00DE"; // that none of them has at its middle
    int edited = 0;
    for (const fs::path& path : samples()) {
        const std::string copy = desk.write_letter("copy.rtf", file_content(path));
        open(copy);
        ASSERT_FALSE(desk.host.error) << desk.host.error->text;
        const Document before = document().rtfText.content().document();
        const std::size_t length = document().rtfText.content().length();
        for (const std::size_t place : {std::size_t{0}, length / 2, length}) {
            SCOPED_TRACE(path.filename().string() + " at " + std::to_string(place));
            open(desk.write_letter("copy.rtf", file_content(path)));
            desk.runtime().select(document().rtfText, place, 0);
            desk.runtime().edit(document().rtfText,
                                [&](rtf::RichText& text) { text.set_sel_text(character); });
            save();
            expect_one_more_character(before, rtf::read(file_content(copy)), character);
            ++edited;
        }
    }
    EXPECT_GT(edited, 250);
}

} // namespace
} // namespace tolva
