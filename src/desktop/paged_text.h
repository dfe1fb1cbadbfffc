#pragma once

#include <QTextDocument>
#include <cstddef>
#include <memory>

#include "desktop/rich_text_layout.h"
#include "desktop/twip_device.h"
#include "rtf/document.h"

namespace tolva::desktop {

/// A rich text laid out for paper, in twips, on pages of one size.
class PagedText {
  public:
    PagedText(const rtf::Document& source, double width, double height);

    int page_count() const { return layout_->pageCount(); }
    /// The page that begins with the character of that position, or -1.
    int page_from(std::size_t position) const;
    /// The first character of the page, counted as a rich text counts.
    std::size_t start_of(int page) const;
    /// Paints a page, its corner at the painter's origin.
    void draw(QPainter& painter, int page) { layout_->draw_page(painter, page); }

  private:
    TwipDevice paper_;
    QTextDocument document_;
    RichTextLayout* layout_;
};

} // namespace tolva::desktop
