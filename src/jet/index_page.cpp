#include "jet/index_page.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cstring>

#include "jet/bytes.h"
#include "jet/damage.h"

namespace tolva::jet {
namespace {

constexpr std::uint8_t node_type = 3, leaf_type = 4, second_byte = 1;

bool shares(std::span<const std::uint8_t> entry, std::span<const std::uint8_t> start) {
    return entry.size() > start.size() && std::equal(start.begin(), start.end(), entry.begin());
}

void set_end(std::uint8_t* ends, std::size_t offset) {
    ends[offset / 8] = static_cast<std::uint8_t>(ends[offset / 8] | 1U << offset % 8);
}

void put_prefix(std::uint8_t* page, const IndexPageLayout& layout, std::size_t prefix) {
    page[layout.prefix] = static_cast<std::uint8_t>(prefix);
    if (layout.prefix_size == 2)
        page[layout.prefix + 1] = static_cast<std::uint8_t>(prefix >> 8);
}

std::size_t longest_prefix(const IndexPageLayout& layout) {
    return layout.prefix_size == 2 ? 0xffff : 0xff;
}

} // namespace

IndexPageLayout::IndexPageLayout(const Format& format) : free_space(2), owner(4) {
    if (format.version == Format::Version::jet3) {
        previous = 8, next = 12, tail = 16, prefix = 20, level = 21, ends = 22, entries = 248;
        prefix_size = 1;
    } else {
        previous = 12, next = 16, tail = 20, prefix = 24, level = 26, ends = 27, entries = 480;
        prefix_size = 2;
    }
    capacity = format.page_size - entries;
}

void append_row(Key& key, RowId row) {
    key.insert(key.end(),
               {static_cast<std::uint8_t>(row.page >> 16), static_cast<std::uint8_t>(row.page >> 8),
                static_cast<std::uint8_t>(row.page), row.slot});
}

RowId row_of(std::span<const std::uint8_t> leaf_entry) {
    const auto at = leaf_entry.last(row_size);
    return {static_cast<std::uint32_t>(at[0] << 16 | at[1] << 8 | at[2]), at[3]};
}

PageNumber child_of(std::span<const std::uint8_t> node_entry) {
    const auto at = node_entry.last(child_size);
    return static_cast<PageNumber>(at[0]) << 24 | static_cast<PageNumber>(at[1] << 16 | at[2] << 8 | at[3]);
}

// EntryList ----------------------------------------------------------------------------------------------

std::span<const std::uint8_t> EntryList::operator[](std::size_t i) const {
    return std::span(bytes_).subspan(start(i), ends_[i] - start(i));
}

std::size_t EntryList::bytes(std::size_t first, std::size_t count) const {
    return count == 0 ? 0 : ends_[first + count - 1] - start(first);
}

void EntryList::insert(std::size_t i, std::span<const std::uint8_t> entry) {
    const auto at = static_cast<std::ptrdiff_t>(start(i));
    const auto size = static_cast<std::uint32_t>(entry.size());
    bytes_.insert(bytes_.begin() + at, entry.begin(), entry.end());
    ends_.insert(ends_.begin() + static_cast<std::ptrdiff_t>(i), static_cast<std::uint32_t>(at));
    for (; i < ends_.size(); ++i)
        ends_[i] += size;
}

void EntryList::erase(std::size_t i) {
    const auto from = static_cast<std::ptrdiff_t>(start(i));
    const std::uint32_t size = ends_[i] - static_cast<std::uint32_t>(from);
    bytes_.erase(bytes_.begin() + from, bytes_.begin() + from + size);
    ends_.erase(ends_.begin() + static_cast<std::ptrdiff_t>(i));
    for (; i < ends_.size(); ++i)
        ends_[i] -= size;
}

void EntryList::replace(std::size_t i, std::span<const std::uint8_t> entry) {
    erase(i);
    insert(i, entry);
}

void EntryList::set_child(std::size_t i, PageNumber child) {
    std::uint8_t* const at = bytes_.data() + ends_[i] - child_size;
    for (std::size_t byte = 0; byte < child_size; ++byte)
        at[byte] = static_cast<std::uint8_t>(child >> (24 - 8 * byte));
}

EntryList EntryList::slice(std::size_t first, std::size_t count) const {
    EntryList part;
    for (std::size_t i = first; i < first + count; ++i)
        part.push_back((*this)[i]);
    return part;
}

// IndexPage ----------------------------------------------------------------------------------------------

IndexPage::IndexPage(const IndexPages& pages, PageNumber number, PageNumber table_page)
    : layout_(pages.format()), number_(number) {
    if (number == 0 || number >= pages.page_count())
        damaged_index(pages, number, "an index names this page, which is not there");
    page_ = pages.read(number);
    const std::uint8_t* const at = page_->data();
    const auto fail = [&](const std::string& reason) { damaged_index(pages, number, reason); };
    if (page_->size() < layout_.entries + layout_.capacity)
        fail("the page is cut short");
    if (at[0] != node_type && at[0] != leaf_type)
        fail("an index names this page, which is no index page");
    if (get32(at + layout_.owner) != table_page)
        fail("the index page belongs to another table");
    header_.leaf = at[0] == leaf_type;
    header_.previous = get32(at + layout_.previous);
    header_.next = get32(at + layout_.next);
    header_.tail = header_.leaf ? 0 : get32(at + layout_.tail);
    header_.level = at[layout_.level];
    free_space_ = get16(at + layout_.free_space);
    find_ends();
    if (used() > layout_.capacity)
        fail("an index entry ends beyond the page");
    if (ends_.empty())
        return;
    prefix_ = layout_.prefix_size == 2 ? get16(at + layout_.prefix) : at[layout_.prefix];
    if (prefix_ > ends_.front())
        fail("the start that the index entries share is longer than the first of them");
    const std::size_t least = header_.leaf ? row_size + 1 : row_size + child_size + 1;
    for (std::size_t i = 0; i < ends_.size(); ++i)
        if ((i == 0 ? 0 : prefix_) + ends_[i] - start(i) < least)
            fail("an index entry is too short for what it must hold");
}

void IndexPage::find_ends() {
    const std::uint8_t* const bits = page_->data() + layout_.ends;
    const std::size_t size = layout_.entries - layout_.ends;
    ends_.reserve(128);
    for (std::size_t byte = 0; byte < size; byte += 8) {
        std::uint64_t word = 0;
        for (std::size_t i = 0; i < std::min<std::size_t>(8, size - byte); ++i)
            word |= static_cast<std::uint64_t>(bits[byte + i]) << 8 * i;
        for (; word != 0; word &= word - 1)
            ends_.push_back(
                static_cast<std::uint16_t>(byte * 8 + static_cast<unsigned>(std::countr_zero(word))));
    }
}

std::span<const std::uint8_t> IndexPage::stored(std::size_t i) const {
    return std::span(*page_).subspan(layout_.entries + start(i), ends_[i] - start(i));
}

IndexPage::Pieces IndexPage::operator[](std::size_t i) const {
    const auto first = stored(0);
    if (i == 0)
        return {first.first(prefix_), first.subspan(prefix_)};
    return {first.first(prefix_), stored(i)};
}

Key IndexPage::whole(std::size_t i) const {
    Key entry;
    copy_whole(i, entry);
    return entry;
}

void IndexPage::copy_whole(std::size_t i, Key& into) const {
    const Pieces pieces = (*this)[i];
    into.assign(pieces.head.begin(), pieces.head.end());
    into.insert(into.end(), pieces.rest.begin(), pieces.rest.end());
}

EntryList IndexPage::entries() const {
    EntryList list;
    for (std::size_t i = 0; i < size(); ++i)
        list.push_back(whole(i));
    return list;
}

std::size_t IndexPage::lower_bound(std::span<const std::uint8_t> bytes) const {
    if (ends_.empty())
        return 0;
    // What they share need be compared only once: it decides for all, or for none.
    const auto head = stored(0).first(prefix_);
    const std::size_t both = std::min(head.size(), bytes.size());
    const int by_head = both == 0 ? 0 : std::memcmp(head.data(), bytes.data(), both);
    if (by_head != 0)
        return by_head < 0 ? size() : 0;
    if (bytes.size() < head.size())
        return 0;
    const auto rest = bytes.subspan(head.size());
    std::size_t low = 0, high = size();
    while (low < high) {
        const std::size_t middle = (low + high) / 2;
        const auto other = (*this)[middle].rest;
        if (std::lexicographical_compare(other.begin(), other.end(), rest.begin(), rest.end()))
            low = middle + 1;
        else
            high = middle;
    }
    return low;
}

bool IndexPage::starts_with(std::size_t i, std::span<const std::uint8_t> bytes) const {
    const Pieces entry = (*this)[i];
    if (entry.size() < bytes.size())
        return false;
    const std::size_t in_head = std::min(entry.head.size(), bytes.size());
    const auto rest = bytes.subspan(in_head);
    return std::equal(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(in_head),
                      entry.head.begin()) &&
           std::equal(rest.begin(), rest.end(), entry.rest.begin());
}

PageNumber IndexPage::child(std::size_t i) const {
    return i < size() ? child_of(whole(i)) : header_.tail;
}

RowId IndexPage::row(std::size_t i) const {
    const Pieces entry = (*this)[i];
    return entry.rest.size() >= row_size ? row_of(entry.rest) : row_of(whole(i));
}

/// Puts `stored` in the place of the entries from `from` to before `to`; `lengths` are those of the entries
/// that it holds. The others move and stay what they are.
void IndexPage::splice(IndexPages& pages, std::size_t from, std::size_t to,
                       std::span<const std::uint8_t> stored, std::span<const std::uint16_t> lengths) const {
    std::uint8_t* const page = pages.modify(number_).data();
    std::uint8_t* const entries = page + layout_.entries;
    const std::size_t cut_start = start(from), cut_end = start(to);
    const std::size_t new_used = used() - (cut_end - cut_start) + stored.size();
    std::memmove(entries + cut_start + stored.size(), entries + cut_end, used() - cut_end);
    if (!stored.empty())
        std::memcpy(entries + cut_start, stored.data(), stored.size());
    if (new_used < used())
        std::memset(entries + new_used, 0, used() - new_used);

    std::uint8_t* const ends = page + layout_.ends;
    std::memset(ends + cut_start / 8, 0, layout_.entries - layout_.ends - cut_start / 8);
    for (std::size_t i = from; i-- > 0 && ends_[i] >= cut_start / 8 * 8;)
        set_end(ends, ends_[i]);
    std::size_t end = cut_start;
    for (const std::uint16_t length : lengths)
        set_end(ends, end += length);
    for (std::size_t i = to; i < size(); ++i)
        set_end(ends, ends_[i] - cut_end + cut_start + stored.size());
    put16(page + layout_.free_space, layout_.capacity - new_used);
    if (size() - (to - from) + lengths.size() <= 1)
        put_prefix(page, layout_, 0);
}

bool IndexPage::insert_in_place(IndexPages& pages, std::size_t i, std::span<const std::uint8_t> entry) const {
    if (size() > 0 && !shares(entry, stored(0).first(prefix_)))
        return false;
    const std::size_t growth = entry.size() - prefix_; // there is no prefix without entries
    if (used() + growth > layout_.capacity)
        return false;
    const auto whole_length = static_cast<std::uint16_t>(entry.size());
    if (i == 0 && size() > 0) {
        // The entry that was first gives up what it shares with the new one.
        Key both(entry.begin(), entry.end());
        const auto rest = (*this)[0].rest;
        both.insert(both.end(), rest.begin(), rest.end());
        const std::uint16_t lengths[] = {whole_length, static_cast<std::uint16_t>(rest.size())};
        splice(pages, 0, 1, both, lengths);
    } else {
        const std::uint16_t lengths[] = {static_cast<std::uint16_t>(growth)};
        splice(pages, i, i, entry.subspan(prefix_), lengths);
    }
    return true;
}

void IndexPage::erase_in_place(IndexPages& pages, std::size_t i) const {
    if (i == 0 && size() > 1 && prefix_ > 0) {
        const Key second = whole(1);
        const std::uint16_t lengths[] = {static_cast<std::uint16_t>(second.size())};
        splice(pages, 0, 2, second, lengths);
    } else {
        splice(pages, i, i + 1, {}, {});
    }
}

// Writing ------------------------------------------------------------------------------------------------

std::size_t shared_prefix(const EntryList& entries) {
    if (entries.size() < 2)
        return 0;
    // In order, the first and the last share what all share.
    const auto first = entries[0], last = entries.back();
    const std::size_t most = std::min(first.size(), last.size());
    const auto differ =
        std::mismatch(first.begin(), first.begin() + static_cast<std::ptrdiff_t>(most), last.begin());
    return static_cast<std::size_t>(differ.first - first.begin());
}

std::optional<std::size_t> fitting_prefix(const IndexPageLayout& layout, const EntryList& entries,
                                          bool may_share) {
    const std::size_t bytes = entries.bytes(0, entries.size());
    if (bytes <= layout.capacity)
        return 0;
    if (!may_share)
        return std::nullopt;
    const std::size_t prefix = std::min(shared_prefix(entries), longest_prefix(layout));
    if (bytes - prefix * (entries.size() - 1) <= layout.capacity)
        return prefix;
    return std::nullopt;
}

void write_index_page(IndexPages& pages, PageNumber number, PageNumber table_page,
                      const IndexPageHeader& header, const EntryList& entries, std::size_t prefix) {
    const IndexPageLayout layout(pages.format());
    std::uint8_t* const page = pages.modify(number).data();
    page[0] = header.leaf ? leaf_type : node_type;
    page[1] = second_byte;
    put32(page + layout.owner, table_page);
    put32(page + layout.previous, header.previous);
    put32(page + layout.next, header.next);
    put32(page + layout.tail, header.tail);
    put_prefix(page, layout, prefix);
    page[layout.level] = header.level;
    std::memset(page + layout.ends, 0, layout.entries - layout.ends + layout.capacity);
    std::size_t end = 0;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const auto stored = entries[i].subspan(i == 0 ? 0 : prefix);
        assert(end + stored.size() <= layout.capacity);
        std::memcpy(page + layout.entries + end, stored.data(), stored.size());
        set_end(page + layout.ends, end += stored.size());
    }
    put16(page + layout.free_space, layout.capacity - end);
}

void set_previous(IndexPages& pages, PageNumber number, PageNumber previous) {
    put32(pages.modify(number).data() + IndexPageLayout(pages.format()).previous, previous);
}

void set_next(IndexPages& pages, PageNumber number, PageNumber next) {
    put32(pages.modify(number).data() + IndexPageLayout(pages.format()).next, next);
}

void damaged_index(const IndexPages& pages, PageNumber page, const std::string& reason) {
    damaged(pages.path(), page, reason);
}

} // namespace tolva::jet
