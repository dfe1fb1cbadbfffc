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
        for (std::size_t other = 0; other < slots_; ++other) {
            if (offset(other) > start)
                end = std::min(end, offset(other));
            // The bytes there are the other's.
            if (other != slot && offset(other) == start && is_tombstone(slot))
                return {};
        }
    }
    return bytes_.subspan(start, end - start);
}

std::span<const std::uint8_t> DataPageView::likely_record(const Format& format, const Page& page,
                                                          std::size_t slot) {
    const auto offset = [&](std::size_t of) -> std::size_t {
        return get16(page.data() + format.data.slots + 2 * of) & format.data.offset_mask;
    };
    const std::size_t end = std::min(slot == 0 ? page.size() : offset(slot - 1), page.size());
    const std::size_t start = std::min(offset(slot), end);
    return std::span(page).subspan(start, end - start);
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

std::optional<std::uint8_t> DataPageView::slot_for(std::size_t size) const {
    const std::size_t room = actual_free_space();
    std::size_t behind_live = slots_;
    while (behind_live > 0 && is_vacant(behind_live - 1))
        --behind_live;
    if (behind_live < slots_ && size <= room)
        return static_cast<std::uint8_t>(behind_live);
    if (slots_ < format_->data.most_rows && size + 2 <= room)
        return static_cast<std::uint8_t>(slots_);
    if (size > room)
        return std::nullopt;
    for (std::size_t slot = 0; slot < slots_; ++slot)
        if (is_vacant(slot))
            return static_cast<std::uint8_t>(slot);
    return std::nullopt;
}

DataPageEditor::DataPageEditor(const Format& format, const std::string& path, PageNumber number,
                               std::span<std::uint8_t> bytes)
    : format_(format), path_(path), number_(number), bytes_(bytes) {}

void DataPageEditor::start(const Format& format, std::span<std::uint8_t> bytes, std::uint32_t owner) {
    bytes[0] = 1;
    bytes[1] = 1;
    put16(bytes.data() + format.data.free_space, format.page_size - format.data.slots);
    put32(bytes.data() + format.data.owner, owner);
}

void DataPageEditor::set_slot(std::size_t slot, std::size_t value) {
    put16(bytes_.data() + format_.data.slots + 2 * slot, value);
}

void DataPageEditor::bring_into_order() {
    const std::vector<std::uint8_t> copy(bytes_.begin(), bytes_.end());
    const DataPageView old(format_, path_, number_, copy);
    std::size_t end = format_.page_size;
    for (std::size_t slot = 0; slot < old.slots(); ++slot) {
        const auto record = old.record(slot);
        if (record.size() > end - format_.data.slots - 2 * old.slots())
            damaged(path_, number_, "has records that lie over each other");
        end -= record.size();
        std::copy(record.begin(), record.end(), bytes_.begin() + static_cast<std::ptrdiff_t>(end));
        set_slot(slot, end | old.flags(slot));
    }
}

bool DataPageEditor::put(std::uint8_t slot, std::span<const std::uint8_t> record, std::uint16_t flags) {
    if (!view().in_order())
        bring_into_order();
    DataPageView page = view();
    const bool is_new = slot == page.slots();
    const std::size_t room = page.actual_free_space();
    if (is_new && (room < 2 || slot >= format_.data.most_rows))
        return false;
    const std::size_t old_size = is_new ? 0 : page.record(slot).size();
    if (record.size() > old_size + room - (is_new ? 2 : 0))
        return false;

    if (is_new) {
        const std::size_t lowest = format_.data.slots + 2 * page.slots() + room;
        put16(bytes_.data() + format_.data.row_count, page.slots() + 1);
        set_slot(slot, lowest);
        page = view();
    }
    const std::size_t start = page.offset(slot);
    const std::size_t end = start + old_size;
    const std::size_t lowest = page.offset(page.slots() - 1);
    // What lies below moves by the difference; its slots follow.
    const std::size_t new_start = end - record.size();
    std::memmove(bytes_.data() + lowest + new_start - start, bytes_.data() + lowest, start - lowest);
    for (std::size_t later = slot + std::size_t{1}; later < page.slots(); ++later)
        set_slot(later, (page.offset(later) + new_start - start) | page.flags(later));
    std::copy(record.begin(), record.end(), bytes_.begin() + static_cast<std::ptrdiff_t>(new_start));
    set_slot(slot, new_start | flags);
    put16(bytes_.data() + format_.data.free_space, view().actual_free_space());
    return true;
}

void DataPageEditor::bury(std::uint8_t slot) {
    put(slot, {}, DataPageView::both_flags);
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

Record follow_moved_row(const Pager& pager, Record record, PageNumber page, std::vector<RecordPlace>* hops) {
    constexpr int most_hops = 16;
    constexpr std::size_t place_size = 4;
    for (int hop = 0; record.flags & DataPageView::away_flag; ++hop) {
        if (hop == most_hops)
            damaged(pager.path(), page, "a moved row runs in a circle");
        if (record.bytes.size() < place_size)
            damaged(pager.path(), page, "the place of a moved row is cut short");
        const RecordPlace place = RecordPlace::from(get32(record.bytes.data()));
        record = read_record(pager, place, page);
        page = place.page;
        const bool gone = record.flags == DataPageView::both_flags && record.bytes.size() < place_size;
        if (!(record.flags & DataPageView::hidden_flag) || gone)
            damaged(pager.path(), page,
                    "record " + std::to_string(place.slot) + " is not the moved row that it is said to be");
        if (hops)
            hops->push_back(place);
    }
    return record;
}

} // namespace tolva::jet
