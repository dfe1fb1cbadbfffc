#pragma once

#include <algorithm>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "basic/run_time_error.h"
#include "platform/printer.h"

namespace tolva::support {

/// A printer that keeps what was printed, word by word and place by place: Letter paper with an edge that it
/// cannot print on, lines of a fixed height, letters of a fixed width.
class RecordedPrinter final : public platform::Printer {
  public:
    struct Word {
        float x, y;
        std::string text;
        bool bold, underlined;
        float size;
    };
    struct Rule {
        double x1, y1, x2, y2;
    };
    struct Page {
        int orientation;
        std::vector<Word> words;
        std::vector<Rule> rules;
        /// Rich text that was set on the page, and where.
        std::string rich_text;
        platform::PaperRectangle rich_place{};
    };
    struct Job {
        std::string name;
        std::vector<Page> pages;
    };

    std::vector<Job> jobs;
    /// How many characters of rich text a page holds.
    std::size_t characters_a_page = 2000;
    /// The jobs, counted from 1, that fail with the printer error as they begin.
    std::set<int> failing_jobs;
    /// The new page, counted from 1 over all jobs, that fails; none for 0.
    int failing_new_page = 0;
    /// How far apart lines are, as a part of the font's size.
    float line_spacing = 1.15F;
    double edge = 360;

    /// Ended or not.
    int jobs_begun() const { return jobs_begun_; }

    void set_Orientation(int orientation) override { orientation_ = orientation; }
    double Width() const override { return orientation_ == portrait ? 12240 : 15840; }
    double Height() const override { return orientation_ == portrait ? 15840 : 12240; }
    double ScaleWidth() const override { return Width() - 2 * edge; }
    double ScaleHeight() const override { return Height() - 2 * edge; }
    double OffsetX() const override { return edge; }
    double OffsetY() const override { return edge; }

    void Line(double x1, double y1, double x2, double y2) override {
        open_page().rules.push_back({x1, y1, x2, y2});
    }

    std::size_t set_rich_text(const rtf::RichText& text, const platform::PaperRectangle& where,
                              std::size_t start) override {
        Page& page = open_page();
        rtf::RichText part = text;
        const std::size_t end = std::min(text.length(), start + characters_a_page);
        part.select(start, end - start);
        page.rich_text = part.sel_text();
        page.rich_place = where;
        return end;
    }

  protected:
    float write(const std::string& text) override {
        open_page().words.push_back({CurrentX(), CurrentY(), text, FontBold, FontUnderline, FontSize});
        return static_cast<float>(text.size()) * FontSize * 10;
    }
    float line_height() const override { return FontSize * 20 * line_spacing; }
    void begin_page() override {
        open_page();
        if (++new_pages_ == failing_new_page) {
            drop_job();
            throw basic::RunTimeError(482);
        }
        open_->pages.push_back({orientation_, {}, {}, {}, {}});
    }
    void end_job() override {
        if (!open_)
            return;
        jobs.push_back(std::move(*open_));
        open_.reset();
    }
    void drop_job() override { open_.reset(); }

  private:
    Page& open_page() {
        if (!open_) {
            if (failing_jobs.count(++jobs_begun_) > 0)
                throw basic::RunTimeError(482);
            open_ = Job{job_name, {Page{orientation_, {}, {}, {}, {}}}};
        }
        return open_->pages.back();
    }

    int orientation_ = portrait;
    int jobs_begun_ = 0;
    int new_pages_ = 0;
    std::optional<Job> open_;
};

} // namespace tolva::support
