#include "jet/page_space.h"

#include <algorithm>

namespace tolva::jet {
namespace {

constexpr RecordPlace free_pages_place{1, 0};

} // namespace

PageSpace::PageSpace(Pager& pager, std::function<std::vector<bool>()> used_pages)
    : pager_(pager), used_pages_(std::move(used_pages)) {}

void PageSpace::claim(PageNumber page) {
    UsageMap map(pager_, free_pages_place, 0, UsageMap::Kind::global);
    map.set(page, false, [&](PageNumber added) { claim(added); });
}

PageNumber PageSpace::allocate() {
    const UsageMap map(pager_, free_pages_place, 0, UsageMap::Kind::global);
    if (used_pages_) {
        used_ = used_pages_();
        used_pages_ = nullptr;
    }
    // The first pages are the file's own.
    constexpr PageNumber first_possible = 6;
    auto free = map.first();
    while (free && (*free < first_possible || (*free < used_.size() && used_[*free]))) {
        claim(*free);
        free = map.first();
    }
    if (!free) {
        const PageNumber page = pager_.append();
        claim(page);
        return page;
    }
    claim(*free);
    const auto bytes = pager_.modify(*free);
    std::fill(bytes.begin(), bytes.end(), std::uint8_t{0});
    return *free;
}

void PageSpace::release(PageNumber page) {
    if (page < used_.size())
        used_[page] = false;
    UsageMap map(pager_, free_pages_place, 0, UsageMap::Kind::global);
    map.set(page, true, [&](PageNumber added) { claim(added); });
}

void PageSpace::set(UsageMap& map, PageNumber page, bool member) {
    map.set(page, member, [&](PageNumber added) { claim(added); });
}

} // namespace tolva::jet
