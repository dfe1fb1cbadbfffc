#include "desktop/paged_text.h"

#include <algorithm>

namespace tolva::desktop {

PagedText::PagedText(const rtf::Document& source, double width, double height)
    : layout_(new RichTextLayout(&document_, 1)) {
    document_.setUndoRedoEnabled(false);
    layout_->setPaintDevice(&paper_);
    document_.setDocumentLayout(layout_);
    layout_->set_source(source);
    show_document(document_, source, 1);
    layout_->set_page(width, height);
    for (int page = 0; page < layout_->pageCount(); ++page)
        starts_.push_back(text_position(document_, layout_->page_start(page)));
    // Where one cell begins further down than another, a page may hold what comes later in the text than the
    // page behind it. Sorted, each page has a number of its own, and all of them get their turn.
    std::sort(starts_.begin(), starts_.end());
}

int PagedText::page_from(std::size_t position) const {
    const auto page = std::find(starts_.begin(), starts_.end(), position);
    return page == starts_.end() ? -1 : static_cast<int>(page - starts_.begin());
}

} // namespace tolva::desktop
