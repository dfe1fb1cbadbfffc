#include "jet/record_store.h"

#include <algorithm>

#include "jet/damage.h"

namespace tolva::jet {
namespace {

/// How many pages with room are looked at for one record, from the last one backward.
constexpr std::size_t most_candidates = 16;

/// A new page with less than this left is full.
constexpr std::size_t least_room = 32;

} // namespace

RecordStore::RecordStore(Pager& pager, PageSpace& space, Maps maps, std::uint32_t owner, PageNumber named_by)
    : pager_(pager), space_(space), maps_(maps), owner_(owner), named_by_(named_by) {}

DataPageEditor RecordStore::edit(PageNumber page) {
    return {pager_.format(), pager_.path(), page, pager_.modify(page)};
}

void RecordStore::tell_room(PageNumber page, bool has_room) {
    if (maps_.free.page == 0)
        return;
    UsageMap map(pager_, maps_.free, named_by_, UsageMap::Kind::free);
    space_.set(map, page, has_room);
}

PageNumber RecordStore::add_page() {
    const PageNumber page = space_.allocate();
    DataPageEditor::start(pager_.format(), pager_.modify(page), owner_);
    UsageMap map(pager_, maps_.owned, named_by_, UsageMap::Kind::owned);
    space_.set(map, page, true);
    tell_room(page, true);
    return page;
}

std::optional<RecordStore::Placed>
RecordStore::insert_into(PageNumber page, std::span<const std::uint8_t> record, std::uint16_t flags) {
    std::optional<std::uint8_t> slot;
    std::size_t slots = 0;
    {
        const PageRef bytes = pager_.read(page);
        if (!is_data_page(*bytes))
            return std::nullopt;
        const DataPageView view(pager_.format(), pager_.path(), page, *bytes);
        if (view.owner() != owner_)
            return std::nullopt;
        slot = view.slot_for(record.size());
        slots = view.slots();
    }
    if (!slot || !edit(page).put(*slot, record, flags))
        return std::nullopt;
    return Placed{{page, *slot}, *slot < slots};
}

RecordStore::Placed RecordStore::insert(std::span<const std::uint8_t> record, std::uint16_t flags) {
    // Where nothing tells which pages have room, the last ones may; where order counts, the last one.
    const bool told = maps_.free.page != 0 && !keeps_order_;
    std::vector<PageNumber> candidates = UsageMap(pager_, told ? maps_.free : maps_.owned, named_by_,
                                                  told ? UsageMap::Kind::free : UsageMap::Kind::owned)
                                             .pages();
    const std::size_t most = keeps_order_ ? 1 : most_candidates;
    std::size_t looked_at = 0;
    while (!candidates.empty() && looked_at++ < most) {
        const PageNumber page = candidates.back();
        candidates.pop_back();
        if (const auto place = insert_into(page, record, flags))
            return *place;
        // A page that is nearly full would be looked at in vain each time.
        const PageRef bytes = pager_.read(page);
        const bool ours = is_data_page(*bytes);
        if (!ours || DataPageView(pager_.format(), pager_.path(), page, *bytes).actual_free_space() <
                         pager_.format().page_size / 4)
            tell_room(page, false);
    }
    return insert_on_new_page(record, flags);
}

RecordStore::Placed RecordStore::insert_on_new_page(std::span<const std::uint8_t> record,
                                                    std::uint16_t flags) {
    const PageNumber page = add_page();
    const auto placed = insert_into(page, record, flags);
    if (!placed)
        damaged(pager_.path(), named_by_, "a record does not fit an empty page");
    const PageRef bytes = pager_.read(page);
    if (DataPageView(pager_.format(), pager_.path(), page, *bytes).actual_free_space() < least_room)
        tell_room(page, false);
    return *placed;
}

bool RecordStore::replace(RecordPlace place, std::span<const std::uint8_t> record, std::uint16_t flags) {
    const std::size_t before = read_record(pager_, place, named_by_).bytes.size();
    if (!edit(place.page).put(place.slot, record, flags))
        return false;
    if (record.size() < before)
        tell_room(place.page, true);
    return true;
}

void RecordStore::erase(RecordPlace place) {
    read_record(pager_, place, named_by_);
    edit(place.page).bury(place.slot);
    if (is_for_long_values()) {
        const PageRef bytes = pager_.read(place.page);
        const DataPageView view(pager_.format(), pager_.path(), place.page, *bytes);
        bool empty = true;
        for (std::size_t slot = 0; slot < view.slots(); ++slot)
            empty = empty && view.is_tombstone(slot);
        if (empty) {
            give_back(place.page);
            return;
        }
    }
    tell_room(place.page, true);
}

void RecordStore::give_back(PageNumber page) {
    tell_room(page, false);
    UsageMap map(pager_, maps_.owned, named_by_, UsageMap::Kind::owned);
    if (!map.contains(page))
        return; // somebody else's by the maps: leave it be
    space_.set(map, page, false);
    space_.release(page);
}

} // namespace tolva::jet
