#include "jet/usage_map.h"

#include <algorithm>

#include "jet/bytes.h"
#include "jet/damage.h"

namespace tolva::jet {
namespace {

constexpr std::size_t inline_head = 5; // kind and start page
constexpr std::uint8_t map_page_type = 5;

bool bit(std::span<const std::uint8_t> bits, std::size_t place) {
    return bits[place / 8] >> place % 8 & 1;
}

void put_bit(std::span<std::uint8_t> bits, std::size_t place, bool on) {
    const auto mask = static_cast<std::uint8_t>(1 << place % 8);
    if (on)
        bits[place / 8] |= mask;
    else
        bits[place / 8] &= static_cast<std::uint8_t>(~mask);
}

} // namespace

UsageMap::UsageMap(Pager& pager, RecordPlace place, PageNumber named_by, Kind kind)
    : pager_(pager), place_(place), named_by_(named_by), kind_(kind) {
    const auto bytes = record();
    const bool good =
        !bytes.empty() && bytes[0] <= 1 && bytes.size() >= (bytes[0] == 0 ? inline_head + 1 : std::size_t{5});
    if (!good)
        damaged(pager.path(), place.page, "record " + std::to_string(place.slot) + " is no usage map");
}

std::span<const std::uint8_t> UsageMap::record() const {
    Record found = read_record(pager_, place_, named_by_);
    if (found.flags != 0)
        damaged(pager_.path(), place_.page, "record " + std::to_string(place_.slot) + " is no usage map");
    held_ = std::move(found.page);
    return found.bytes;
}

std::span<std::uint8_t> UsageMap::record_for_change() {
    const auto bytes = record();
    const auto at = static_cast<std::size_t>(bytes.data() - held_->data());
    const std::size_t size = bytes.size();
    held_.reset();
    return pager_.modify(place_.page).subspan(at, size);
}

bool UsageMap::is_inline() const {
    return record()[0] == 0;
}

std::size_t UsageMap::bits_of_page() const {
    return (pager_.format().page_size - pager_.format().map.page_bits) * 8;
}

PageRef UsageMap::map_page(PageNumber number) const {
    if (number >= pager_.page_count())
        damaged(pager_.path(), place_.page,
                "a usage map points to page " + std::to_string(number) + ", which is not there");
    PageRef page = pager_.read(number);
    if ((*page)[0] != map_page_type)
        damaged(pager_.path(), number, "is expected to be a usage map and is not");
    return page;
}

template <typename Visit>
void UsageMap::visit_members(Visit&& visit) const {
    const PageNumber end = pager_.page_count();
    const auto scan = [&](std::span<const std::uint8_t> bits, std::uint64_t start) {
        for (std::size_t byte = 0; byte < bits.size(); ++byte) {
            if (bits[byte] == 0)
                continue;
            for (std::size_t i = 0; i < 8; ++i) {
                if (!(bits[byte] >> i & 1))
                    continue;
                const std::uint64_t page = start + byte * 8 + i;
                if (page >= end)
                    return true;
                if (!visit(static_cast<PageNumber>(page)))
                    return false;
            }
        }
        return true;
    };
    const auto bytes = record();
    if (bytes[0] == 0) {
        scan(bytes.subspan(inline_head), get32(bytes.data() + 1));
        return;
    }
    const PageRef kept = held_;
    for (std::size_t place = 0; 1 + 4 * (place + 1) <= bytes.size(); ++place) {
        const PageNumber number = get32(bytes.data() + 1 + 4 * place);
        if (number == 0)
            continue;
        const PageRef page = map_page(number);
        if (!scan(std::span(*page).subspan(pager_.format().map.page_bits), place * bits_of_page()))
            return;
    }
}

std::vector<PageNumber> UsageMap::pages() const {
    std::vector<PageNumber> found;
    visit_members([&](PageNumber page) {
        found.push_back(page);
        return true;
    });
    return found;
}

std::optional<PageNumber> UsageMap::first() const {
    std::optional<PageNumber> found;
    visit_members([&](PageNumber page) {
        found = page;
        return false;
    });
    return found;
}

PageNumber UsageMap::first_told() const {
    const auto bytes = record();
    return bytes[0] == 0 ? get32(bytes.data() + 1) : 0;
}

bool UsageMap::contains(PageNumber page) const {
    const auto bytes = record();
    if (bytes[0] == 0) {
        const auto bits = bytes.subspan(inline_head);
        const PageNumber start = get32(bytes.data() + 1);
        if (page < start)
            return false;
        if (page - start >= bits.size() * 8)
            return kind_ == Kind::global;
        return bit(bits, page - start);
    }
    const std::size_t place = page / bits_of_page();
    if (1 + 4 * (place + 1) > bytes.size())
        return false;
    const PageNumber number = get32(bytes.data() + 1 + 4 * place);
    if (number == 0)
        return kind_ == Kind::global;
    const PageRef kept = map_page(number);
    return bit(std::span(*kept).subspan(pager_.format().map.page_bits), page % bits_of_page());
}

std::vector<PageNumber> UsageMap::map_pages() const {
    std::vector<PageNumber> found;
    const auto bytes = record();
    if (bytes[0] == 0)
        return found;
    for (std::size_t place = 0; 1 + 4 * (place + 1) <= bytes.size(); ++place)
        if (const PageNumber number = get32(bytes.data() + 1 + 4 * place); number != 0)
            found.push_back(number);
    return found;
}

std::vector<PageNumber> UsageMap::change(PageNumber page, bool member) {
    std::vector<PageNumber> added;
    if (contains(page) == member)
        return added;
    if (is_inline()) {
        const auto in_window = [&] {
            const auto bytes = record();
            const PageNumber start = get32(bytes.data() + 1);
            return page >= start && page - start < (bytes.size() - inline_head) * 8;
        };
        if (in_window() || slide(page)) {
            const auto bytes = record_for_change();
            put_bit(bytes.subspan(inline_head), page - get32(bytes.data() + 1), member);
            return added;
        }
        added = go_over_to_references();
    }
    const std::size_t place = page / bits_of_page();
    const auto bytes = record();
    if (1 + 4 * (place + 1) > bytes.size())
        damaged(pager_.path(), place_.page, "the file has outgrown a usage map");
    PageNumber number = get32(bytes.data() + 1 + 4 * place);
    if (number == 0) {
        number = add_map_page(place, kind_ == Kind::global);
        added.push_back(number);
    }
    map_page(number);
    put_bit(pager_.modify(number).subspan(pager_.format().map.page_bits), page % bits_of_page(), member);
    return added;
}

bool UsageMap::slide(PageNumber page) {
    if (kind_ == Kind::global)
        return false;
    const std::size_t window = (record().size() - inline_head) * 8;
    const std::vector<PageNumber> members = pages();
    PageNumber low = page, high = page;
    for (const PageNumber other : members) {
        low = std::min(low, other);
        high = std::max(high, other);
    }
    if (high - low >= window) {
        if (kind_ == Kind::owned)
            return false;
        // The new page stays, with as many of the pages before it as the window takes.
        const auto reach = static_cast<PageNumber>(window) - 1;
        if (low != page)
            low = page > reach ? page - reach : 0;
    }
    const auto bytes = record_for_change();
    put32(bytes.data() + 1, low);
    const auto bits = bytes.subspan(inline_head);
    std::fill(bits.begin(), bits.end(), std::uint8_t{0});
    for (const PageNumber other : members)
        if (other >= low && other - low < window)
            put_bit(bits, other - low, true);
    return true;
}

std::vector<PageNumber> UsageMap::go_over_to_references() {
    const auto bytes = record();
    const PageNumber start = get32(bytes.data() + 1);
    const std::vector<std::uint8_t> bits(bytes.begin() + inline_head, bytes.end());
    const std::uint64_t behind = std::uint64_t{start} + bits.size() * 8;
    if (behind > (bytes.size() - 1) / 4 * bits_of_page())
        damaged(pager_.path(), place_.page, "a usage map starts at page " + std::to_string(start));

    const auto changed = record_for_change();
    changed[0] = 1;
    std::fill(changed.begin() + 1, changed.end(), std::uint8_t{0});
    std::vector<PageNumber> added;
    // Each page is told again, those before the window too: of the global map they are not free.
    for (PageNumber page = kind_ == Kind::global ? 0 : start; page < behind; ++page) {
        const auto more = change(page, page >= start && bit(bits, page - start));
        added.insert(added.end(), more.begin(), more.end());
    }
    return added;
}

PageNumber UsageMap::add_map_page(std::size_t place, bool filled) {
    const PageNumber number = pager_.append();
    const auto page = pager_.modify(number);
    page[0] = map_page_type;
    page[1] = 1;
    if (filled)
        std::fill(page.begin() + static_cast<std::ptrdiff_t>(pager_.format().map.page_bits), page.end(),
                  std::uint8_t{0xff});
    put32(record_for_change().data() + 1 + 4 * place, number);
    return number;
}

} // namespace tolva::jet
