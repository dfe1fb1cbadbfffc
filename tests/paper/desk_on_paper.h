#pragma once

#include <gtest/gtest.h>

#include <QImage>
#include <QStackedWidget>
#include <algorithm>
#include <filesystem>
#include <map>
#include <ostream>
#include <string>
#include <vector>

#include "desktop/desk_by_hand.h"
#include "desktop/grid_view.h"
#include "desktop/printed_pages.h"
#include "support/customers.h"
#include "support/desk.h"

namespace tolva::desktop {

/// A record screen as its user knows it: the button that leads to it, and its entries of the menu "Print".
struct RecordWindow {
    const char* name;
    const char* button;
    platform::Slot<module::RecordEntry> module::Module::*slot;
    std::unique_ptr<dao::Database> module::Module::*store;
    const char* sheet;
    const char* list;
    const char* labels;
    const char* letters;
};

inline void PrintTo(const RecordWindow& window, std::ostream* out) {
    *out << window.name;
}

inline const RecordWindow listings_window{
    "listings",       "Command9",        &module::Module::listings, &module::Module::listingdb,
    "m_printlisting", "m_printlistings", "m_printlabels",           "m_printletter"};
inline const RecordWindow prospect_window{
    "prospect",        "Command3",    &module::Module::prospect, &module::Module::prospectdb,
    "m_printprospect", "m_printlist", "m_printlabels",           "m_printletters"};
inline const RecordWindow sold_window{
    "sold",        "Command7",      &module::Module::sold, &module::Module::solddb, "m_printcustomer",
    "m_printlist", "m_printlabels", "m_printletters"};
inline const RecordWindow address_window{"addressbook",
                                         "Command1",
                                         &module::Module::addressbook,
                                         &module::Module::addressdb,
                                         "m_printaddress",
                                         "m_printlist",
                                         nullptr,
                                         nullptr};

/// Where the program counts millimetres, in twips.
constexpr double millimetre = 56.7;
constexpr double inch = 1440;

/// How far apart lines of Arial are, in twips.
constexpr double line_of(double points) {
    return points * 20 * 1.149;
}

/// The program over an empty desk, driven by hand; what it prints is read back from files.
class DeskOnPaper : public testing::Test, protected DeskByHand {
  protected:
    using Row = std::map<std::string, jet::Value>;

    void SetUp() override {
        if (!support::has_command("pdftotext"))
            GTEST_SKIP() << "pdftotext, which reads the pages back, is not installed";
        lay_out(support::Desk::delivered());
        shell::start(*module);
        settle();
    }

    void add(const RecordWindow& window, const Row& row) {
        support::Desk::add(*((*module).*window.store), row);
    }
    module::RecordEntry& open(const RecordWindow& window) {
        return DeskByHand::open(window.button, window.slot);
    }
    /// Clicks on a row of the list, counted from 1, which brings up the record.
    void open_row(platform::Screen& screen, int row) {
        auto* const grid = form(screen).findChild<GridView*>();
        click(grid->viewport(), grid->visualRect(grid->model()->index(row - 1, 1)).center());
        settle();
        if (form(screen).findChild<QStackedWidget*>()->currentIndex() != 1)
            throw std::runtime_error("no record came up");
    }

    // --- What was printed ---

    /// The names of the jobs, in order.
    using Jobs = std::vector<std::string>;
    Jobs jobs() const {
        Jobs names;
        for (const auto& entry : std::filesystem::directory_iterator(folder.file("printed")))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }
    std::string job_file(std::size_t job) const { return folder.file("printed/" + jobs().at(job)); }
    std::vector<PrintedPage> pages(std::size_t job = 0) const { return read_pages(job_file(job)); }

    /// A page, counted from 1, as ink: ten twips to the pixel.
    QImage painted(std::size_t job, int page) const {
        const std::string picture = folder.file("page"), number = std::to_string(page);
        support::run_program({"pdftoppm", "-r", "144", "-f", number, "-l", number, "-png", "-singlefile",
                              job_file(job), picture});
        return QImage(to_qt(picture + ".png"));
    }
    /// Whether somewhere in that rectangle, in twips, there is ink in one line from its left to its right.
    static bool has_rule(const QImage& picture, double left, double top, double right, double bottom) {
        constexpr double pixel = 10;
        for (int y = static_cast<int>(top / pixel); y <= static_cast<int>(bottom / pixel); ++y) {
            int x = static_cast<int>(left / pixel) + 1;
            while (x < static_cast<int>(right / pixel) - 1 && qGray(picture.pixel(x, y)) < 200)
                ++x;
            if (x >= static_cast<int>(right / pixel) - 1)
                return true;
        }
        return false;
    }
    static bool has_rule(const QImage& picture, const PrintedWord& word) {
        return has_rule(picture, word.left, word.top, word.right, word.bottom);
    }

    /// Lines one below the other, the first at (x, y) in millimetres; what begins at `until` is none of
    /// theirs.
    static void expect_lines(const PrintedPage& page, double x, double y, double points,
                             const std::vector<std::string>& lines, double until = 1000) {
        double top = y * millimetre;
        for (const std::string& line : lines) {
            EXPECT_EQ(page.line_at(x * millimetre, top, until * millimetre), line)
                << "at " << x << " and " << top / millimetre << " mm";
            top += line_of(points);
        }
    }
};

} // namespace tolva::desktop
