#include "desktop/paged_text.h"

namespace tolva::desktop {

PagedText::PagedText(const rtf::Document& source, double width, double height)
    : layout_(new RichTextLayout(&document_, 1)) {
    document_.setUndoRedoEnabled(false);
    layout_->setPaintDevice(&paper_);
    document_.setDocumentLayout(layout_);
    layout_->set_source(source);
    show_document(document_, source, 1);
    layout_->set_page(width, height);
}

int PagedText::page_from(std::size_t position) const {
    for (int page = 0; page < page_count(); ++page)
        if (start_of(page) == position)
            return page;
    return -1;
}

std::size_t PagedText::start_of(int page) const {
    return text_position(document_, layout_->page_start(page));
}

} // namespace tolva::desktop
