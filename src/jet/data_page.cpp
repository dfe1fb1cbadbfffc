#include "jet/data_page.h"

#include <algorithm>
#include <cstring>

#include "jet/bytes.h"
#include "jet/damage.h"

namespace tolva::jet {

DataPageView::DataPageView(const Format& format, const std::string& path, PageNumber number,
                           std::span<const std::uint8_t> bytes)
    : format_(&format), bytes_(bytes) {
    if (!is_data_page(bytes))
        damaged(path, number, "is expected to hold records and does not");
    slots_ = get16(bytes.data() + format.data.row_count);
    const std::size_t first = format.data.slots + 2 * slots_;
    if (slots_ > format.data.most_rows + 1 || first > format.page_size)
        damaged(path, number, "claims " + std::to_string(slots_) + " records");
    std::size_t above = format.page_size;
    for (std::size_t slot = 0; slot < slots_; ++slot) {
        const std::size_t at = offset(slot);
        if (at < first || at > format.page_size)
            damaged(path, number, "record " + std::to_string(slot) + " lies outside the page's records");
        if (at > above)
            in_order_ = false;
        above = at;
    }
}

std::uint16_t DataPageView::raw(std::size_t slot) const {
    return get16(bytes_.data() + format_->data.slots + 2 * slot);
}

std::span<const std::uint8_t> DataPageView::record(std::size_t slot) const {
    const std::size_t start = offset(slot);
    std::size_t end = format_->page_size;
    if (in_order_) {
        // The next greater offset is that of the nearest slot before this one that differs.
        for (std::size_t before = slot; before-- > 0;) {
            if (offset(before) == start)
                continue;
            end = offset(before);
            break;
        }
        if (slot > 0 && is_tombstone(slot))
            end = offset(slot - 1);
    } else {
        for (std::size_t other = 0; other < slots_; ++other)
            if (offset(other) > start)
                end = std::min(end, offset(other));
    }
    return bytes_.subspan(start, end - start);
}

std::uint32_t DataPageView::owner() const {
    return get32(bytes_.data() + format_->data.owner);
}

bool DataPageView::holds_long_values() const {
    return std::memcmp(bytes_.data() + format_->data.owner, "LVAL", 4) == 0;
}

std::size_t DataPageView::free_space() const {
    return get16(bytes_.data() + format_->data.free_space);
}

std::size_t DataPageView::actual_free_space() const {
    std::size_t lowest = format_->page_size;
    for (std::size_t slot = 0; slot < slots_; ++slot)
        lowest = std::min(lowest, offset(slot));
    return lowest - format_->data.slots - 2 * slots_;
}

Record read_record(const Pager& pager, RecordPlace place, PageNumber named_by) {
    if (place.page == 0 || place.page >= pager.page_count())
        damaged(pager.path(), named_by,
                "points to page " + std::to_string(place.page) + ", which is not there");
    Record record{pager.read(place.page), {}, 0};
    const DataPageView view(pager.format(), pager.path(), place.page, *record.page);
    if (place.slot >= view.slots())
        damaged(pager.path(), place.page,
                "has no record " + std::to_string(place.slot) + ", to which page " +
                    std::to_string(named_by) + " points");
    record.bytes = view.record(place.slot);
    record.flags = view.flags(place.slot);
    return record;
}

} // namespace tolva::jet
