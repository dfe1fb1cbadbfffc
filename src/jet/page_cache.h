#pragma once

#include <vector>

#include "jet/page.h"

namespace tolva::jet {

/// Clean pages of one file, up to a number of them; the ones not asked for lately go first. A page that goes
/// lives on where it is still held.
class PageCache {
  public:
    explicit PageCache(std::size_t budget) : budget_(budget) {}

    /// Null when the page is not here.
    const PageRef& find(PageNumber page);
    /// The same, which asks for nothing: the page may go as if nobody had looked.
    const Page* glance(PageNumber page) const {
        return page < slots_.size() ? slots_[page].content.get() : nullptr;
    }
    void put(PageNumber page, PageRef content);
    void drop(PageNumber page);
    void clear();

  private:
    struct Slot {
        PageRef content;
        bool asked = false;
    };

    std::size_t budget_;
    std::vector<Slot> slots_; ///< by page number
    std::vector<PageNumber> ring_;
    std::size_t hand_ = 0;
};

} // namespace tolva::jet
