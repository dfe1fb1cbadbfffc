#pragma once

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <algorithm>
#include <cmath>
#include <regex>
#include <string>
#include <utility>
#include <vector>

#include "desktop/qt_printer.h"
#include "desktop/text.h"
#include "support/program.h"

namespace tolva::desktop {

/// What poppler finds on a printed page. Twips from the paper's corner; `bottom` is where the letters' box
/// ends.
struct PrintedWord {
    std::string text;
    double left, top, right, bottom;
};
struct PrintedPage {
    double width, height;
    std::vector<PrintedWord> words;

    /// The first word of that text, or one far off the paper.
    PrintedWord word(const std::string& text) const {
        for (const PrintedWord& one : words)
            if (one.text == text)
                return one;
        return {text, -1e6, -1e6, -1e6, -1e6};
    }
    /// What stands on the line whose top left is there, as far as `until`; empty where no word begins there.
    std::string line_at(double left, double top, double until = 1e6) const;
};

/// Half a millimetre, in twips: what the eye forgives.
constexpr double half_a_millimetre = 28.35;

inline std::string PrintedPage::line_at(double left, double top, double until) const {
    std::vector<PrintedWord> line;
    for (const PrintedWord& one : words)
        if (std::abs(one.top - top) <= half_a_millimetre && one.left >= left - half_a_millimetre &&
            one.left < until - half_a_millimetre)
            line.push_back(one);
    std::sort(line.begin(), line.end(), [](const auto& a, const auto& b) { return a.left < b.left; });
    if (line.empty() || line[0].left > left + half_a_millimetre)
        return "";
    std::string text;
    for (const PrintedWord& one : line)
        text += (text.empty() ? "" : " ") + one.text;
    return text;
}

/// Text as poppler writes it among its tags.
inline std::string without_entities(std::string text) {
    for (const auto& [entity, character] :
         {std::pair{"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"&apos;", "'"}, {"&amp;", "&"}})
        for (std::size_t at = 0; (at = text.find(entity, at)) != std::string::npos; ++at)
            text.replace(at, std::string(entity).size(), character);
    return text;
}

inline std::vector<PrintedPage> read_pages(const std::string& file) {
    constexpr double twips_a_point = 20;
    const std::string boxes = support::run_program({"pdftotext", "-bbox", file, "-"}).out;
    static const std::regex page_or_word(
        R"re(<page width="([\d.]+)" height="([\d.]+)">|<word xMin="([-\d.]+)" yMin="([-\d.]+)" xMax="([-\d.]+)" yMax="([-\d.]+)">(.*?)</word>)re");
    std::vector<PrintedPage> pages;
    for (std::sregex_iterator at(boxes.begin(), boxes.end(), page_or_word), end; at != end; ++at) {
        const std::smatch& found = *at;
        const auto twips = [&](std::size_t group) { return std::stod(found[group].str()) * twips_a_point; };
        if (found[1].matched)
            pages.push_back({twips(1), twips(2), {}});
        else if (!pages.empty())
            pages.back().words.push_back(
                {without_entities(found[7].str()), twips(3), twips(4), twips(5), twips(6)});
    }
    return pages;
}

/// A printer whose jobs become files in a folder of their own.
class PaperTest : public testing::Test {
  protected:
    void SetUp() override {
        if (!support::has_command("pdftotext"))
            GTEST_SKIP() << "pdftotext, which reads the pages back, is not installed";
        ASSERT_TRUE(folder.isValid());
        printer.use({PrintTarget::Kind::pdf_folder, folder.path()});
    }

    QStringList files() const {
        return QDir(folder.path()).entryList({QStringLiteral("*.pdf")}, QDir::Files, QDir::Name);
    }
    std::vector<PrintedPage> pages(qsizetype file = 0) const {
        return read_pages(from_qt(folder.filePath(files().at(file))));
    }

    QTemporaryDir folder;
    QtPrinter printer;
};

} // namespace tolva::desktop
