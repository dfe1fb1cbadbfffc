#pragma once

#include <QFont>
#include <QPainter>
#include <QPrinter>
#include <memory>
#include <optional>

#include "desktop/paged_text.h"
#include "desktop/print_target.h"
#include "platform/printer.h"

namespace tolva::desktop {

/// The printer object on the system's queues and on PDF files. Everything is painted in twips from the corner
/// of what the device can print on; the device's own resolution only shows in how fine the ink is.
class QtPrinter final : public platform::Printer {
  public:
    ~QtPrinter() override;

    /// What all jobs go to, from the next one on.
    void use(const PrintTarget& target);
    const PrintTarget& target() const { return target_; }
    /// What the next job alone goes to, set up by the user.
    void use_once(std::unique_ptr<QPrinter> device);

    // --- Printer ---

    void set_Orientation(int orientation) override;
    double Width() const override;
    double Height() const override;
    double ScaleWidth() const override;
    double ScaleHeight() const override;
    double OffsetX() const override;
    double OffsetY() const override;
    void Line(double x1, double y1, double x2, double y2) override;
    std::size_t set_rich_text(const rtf::RichText& text, const platform::PaperRectangle& where,
                              std::size_t start) override;

  protected:
    float write(const std::string& text) override;
    float line_height() const override;
    void begin_page() override;
    void end_job() override;
    void drop_job() override;

  private:
    /// The paper as the next page lies.
    QPageLayout paper() const;
    QMarginsF edges() const;
    QPrinter* device() const;
    QFont font() const;
    /// The painter at work on the page, in twips.
    QPainter& page();
    void open_job();
    void turn_page_origin();
    PagedText& pages_of(const rtf::Document& document, double width, double height);

    PrintTarget target_;
    /// Made when it is first asked for.
    mutable std::unique_ptr<QPrinter> device_, device_for_once_;
    QPainter painter_;
    /// The text on the pages under way, which is laid out once for all of them.
    struct Setting {
        rtf::Document document;
        double width, height;
        std::unique_ptr<PagedText> pages;
    };
    std::optional<Setting> setting_;
    int orientation_ = portrait;
};

} // namespace tolva::desktop
