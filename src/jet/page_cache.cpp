#include "jet/page_cache.h"

namespace tolva::jet {

const PageRef& PageCache::find(PageNumber page) {
    static const PageRef nothing;
    if (page >= slots_.size())
        return nothing;
    Slot& slot = slots_[page];
    slot.asked = true;
    return slot.content;
}

void PageCache::put(PageNumber page, PageRef content) {
    if (page >= slots_.size())
        slots_.resize(page + page / 2 + 64);
    Slot& slot = slots_[page];
    const bool known = slot.content != nullptr;
    slot.content = std::move(content);
    slot.asked = false;
    if (known)
        return;
    if (ring_.size() < budget_) {
        ring_.push_back(page);
        return;
    }
    // The hand passes pages asked for since its last visit, and takes the place of the first that was not. A
    // page that was dropped leaves an empty slot behind, whose place is free.
    for (;; hand_ = (hand_ + 1) % ring_.size()) {
        Slot& candidate = slots_[ring_[hand_]];
        if (candidate.content && candidate.asked && ring_[hand_] != page) {
            candidate.asked = false;
            continue;
        }
        if (ring_[hand_] != page)
            candidate.content.reset();
        ring_[hand_] = page;
        hand_ = (hand_ + 1) % ring_.size();
        return;
    }
}

void PageCache::drop(PageNumber page) {
    if (page < slots_.size())
        slots_[page].content.reset();
}

void PageCache::clear() {
    slots_.clear();
    ring_.clear();
    hand_ = 0;
}

} // namespace tolva::jet
