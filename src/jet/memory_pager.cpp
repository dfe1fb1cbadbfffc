#include "jet/memory_pager.h"

#include "jet/damage.h"

namespace tolva::jet {

PageRef MemoryPager::read(PageNumber page) const {
    if (page >= pages_.size())
        damaged(path_, page, "the file has no such page");
    return pages_[page];
}

std::span<std::uint8_t> MemoryPager::modify(PageNumber page) {
    read(page);
    // Whoever holds the page keeps it as it is.
    if (pages_[page].use_count() > 1)
        pages_[page] = std::make_shared<Page>(*pages_[page]);
    return *pages_[page];
}

PageNumber MemoryPager::append() {
    pages_.push_back(std::make_shared<Page>(format_.page_size));
    return static_cast<PageNumber>(pages_.size() - 1);
}

std::vector<std::uint8_t> MemoryPager::content() const {
    std::vector<std::uint8_t> out;
    out.reserve(pages_.size() * format_.page_size);
    for (const auto& page : pages_)
        out.insert(out.end(), page->begin(), page->end());
    return out;
}

} // namespace tolva::jet
