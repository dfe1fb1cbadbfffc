#include "jet/long_value.h"

#include "jet/bytes.h"
#include "jet/damage.h"

namespace tolva::jet {
namespace {

constexpr std::uint32_t inside_flag = 0x8000'0000;
constexpr std::uint32_t single_flag = 0x4000'0000;
constexpr std::size_t next_size = 4;

} // namespace

LongValueHead read_long_value_head(const Pager& pager, PageNumber where,
                                   std::span<const std::uint8_t> field) {
    if (field.size() < LongValueHead::size)
        damaged(pager.path(), where, "the head of a long value is cut short");
    const std::uint32_t first = get32(field.data());
    LongValueHead head;
    head.length = first & LongValueHead::length_mask;
    head.place = RecordPlace::from(get32(field.data() + 4));
    head.stamp = get32(field.data() + 8);
    head.form = first & inside_flag   ? LongValueHead::Form::inside
                : first & single_flag ? LongValueHead::Form::single
                                      : LongValueHead::Form::chain;
    if (head.form == LongValueHead::Form::inside && head.length > field.size() - LongValueHead::size)
        damaged(pager.path(), where, "a long value inside a row is cut short");
    return head;
}

void visit_long_value(const Pager& pager, PageNumber where, const LongValueHead& head,
                      const std::function<void(RecordPlace, std::span<const std::uint8_t>)>& visit) {
    if (head.form == LongValueHead::Form::inside || head.length == 0)
        return;
    const auto fetch = [&](RecordPlace place, PageNumber named_by) {
        Record record = read_record(pager, place, named_by);
        if (record.flags != 0)
            damaged(pager.path(), place.page,
                    "record " + std::to_string(place.slot) + " is deleted, but page " +
                        std::to_string(named_by) + " has a long value there");
        return record;
    };
    if (head.form == LongValueHead::Form::single) {
        const Record record = fetch(head.place, where);
        if (record.bytes.size() < head.length)
            damaged(pager.path(), head.place.page, "a long value is shorter than its row says");
        visit(head.place, record.bytes.first(head.length));
        return;
    }
    if (head.length > std::uint64_t{pager.page_count()} * pager.format().page_size)
        damaged(pager.path(), where, "a long value claims to be longer than the file");
    std::uint32_t left = head.length;
    RecordPlace place = head.place;
    PageNumber named_by = where;
    // A circle comes back to a place noted after a power of two of steps.
    RecordPlace noted;
    std::size_t steps = 0;
    while (left > 0) {
        if (place == noted)
            damaged(pager.path(), place.page, "a long value runs in a circle");
        if ((steps & (steps + 1)) == 0)
            noted = place;
        ++steps;
        const Record record = fetch(place, named_by);
        if (record.bytes.size() <= next_size)
            damaged(pager.path(), place.page, "a piece of a long value is empty");
        const auto piece = record.bytes.subspan(next_size);
        const std::size_t size = std::min<std::size_t>(piece.size(), left);
        visit(place, piece.first(size));
        left -= static_cast<std::uint32_t>(size);
        named_by = place.page;
        place = RecordPlace::from(get32(record.bytes.data()));
        if (left > 0 && place.page == 0)
            damaged(pager.path(), named_by, "a long value ends before its length");
    }
}

std::vector<std::uint8_t> read_long_value(const Pager& pager, PageNumber where,
                                          std::span<const std::uint8_t> field) {
    const LongValueHead head = read_long_value_head(pager, where, field);
    if (head.form == LongValueHead::Form::inside) {
        const auto bytes = field.subspan(LongValueHead::size, head.length);
        return {bytes.begin(), bytes.end()};
    }
    std::vector<std::uint8_t> bytes;
    visit_long_value(pager, where, head, [&](RecordPlace, std::span<const std::uint8_t> piece) {
        bytes.insert(bytes.end(), piece.begin(), piece.end());
    });
    return bytes;
}

} // namespace tolva::jet
