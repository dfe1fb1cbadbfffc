#include "jet/page_space.h"

#include <algorithm>

namespace tolva::jet {
namespace {

constexpr RecordPlace free_pages_place{1, 0};

} // namespace

PageSpace::PageSpace(Pager& pager) : pager_(pager) {}

void PageSpace::claim(PageNumber page) {
    UsageMap map(pager_, free_pages_place, 0, UsageMap::Kind::global);
    map.set(page, false, [&](PageNumber added) { claim(added); });
}

PageNumber PageSpace::allocate() {
    const UsageMap map(pager_, free_pages_place, 0, UsageMap::Kind::global);
    const auto free = map.first();
    // The first pages are the file's own, whatever a map says.
    constexpr PageNumber first_possible = 6;
    if (!free || *free < first_possible) {
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
    UsageMap map(pager_, free_pages_place, 0, UsageMap::Kind::global);
    map.set(page, true, [&](PageNumber added) { claim(added); });
}

void PageSpace::set(UsageMap& map, PageNumber page, bool member) {
    map.set(page, member, [&](PageNumber added) { claim(added); });
}

} // namespace tolva::jet
