#pragma once

#include <QTextDocument>
#include <cstddef>
#include <vector>

#include "desktop/rich_text_layout.h"
#include "desktop/twip_device.h"
#include "rtf/document.h"

namespace tolva::desktop {

/// A rich text laid out for paper, in twips, on pages of one size.
class PagedText {
  public:
    PagedText(const rtf::Document& source, double width, double height);

    int page_count() const { return static_cast<int>(starts_.size()); }
    /// The page of that start, or -1.
    int page_from(std::size_t position) const;
    /// The page's first character, counted as a rich text counts: 0 for the first page, more for each next
    /// one.
    std::size_t start_of(int page) const { return starts_.at(static_cast<std::size_t>(page)); }
    /// Paints a page, its corner at the painter's origin.
    void draw(QPainter& painter, int page) { layout_->draw_page(painter, page); }

  private:
    TwipDevice paper_;
    QTextDocument document_;
    RichTextLayout* layout_;
    std::vector<std::size_t> starts_;
};

} // namespace tolva::desktop
