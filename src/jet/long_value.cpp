#include "jet/long_value.h"

#include <algorithm>

#include "basic/run_time_error.h"
#include "jet/bytes.h"
#include "jet/damage.h"
#include "jet/text_codec.h"

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

Value decode_column(const Pager& pager, PageNumber where, const Column& column, const RowView& row) {
    Value value;
    decode_column(pager, where, column, row, value);
    return value;
}

void decode_column(const Pager& pager, PageNumber where, const Column& column, const RowView& row,
                   Value& into) {
    const auto decode_text_of = [&](std::span<const std::uint8_t> stored) {
        auto* const text = std::get_if<std::string>(&into);
        decode_text(stored, row.format(), text ? *text : into.emplace<std::string>());
    };
    const bool null = row.is_null(column);
    if (column.type == ColumnType::boolean) {
        into = !null;
        return;
    }
    if (null) {
        into = std::monostate{};
        return;
    }
    const auto field = row.field(column);
    if (column.type == ColumnType::text) {
        decode_text_of(field);
    } else if (!column.is_long()) {
        into = decode_field(pager, where, column, field);
    } else if (column.type == ColumnType::memo) {
        const LongValueHead head = read_long_value_head(pager, where, field);
        if (head.form == LongValueHead::Form::inside)
            decode_text_of(field.subspan(LongValueHead::size, head.length));
        else
            decode_text_of(read_long_value(pager, where, field));
    } else {
        into = read_long_value(pager, where, field);
    }
}

LongValueStore::LongValueStore(Pager& pager, PageSpace& space, const Column& column,
                               PageNumber definition_page)
    : pager_(pager), records_(pager, space, {column.owned_map, column.free_map},
                              DataPageEditor::long_value_owner, definition_page) {}

std::size_t LongValueStore::field_size(std::size_t value_size, std::size_t inside) {
    return LongValueHead::size + (value_size <= inside ? value_size : 0);
}

std::vector<std::uint8_t> LongValueStore::field_for(std::size_t length, std::uint32_t form,
                                                    RecordPlace first) const {
    std::vector<std::uint8_t> field(LongValueHead::size);
    put32(field.data(), static_cast<std::uint32_t>(length) | form);
    if (first.page == 0)
        return field;
    put32(field.data() + 4, first.stored());
    if (const std::size_t stamp = pager_.format().data.long_value_stamp; stamp != 0)
        put32(field.data() + 8, get32(pager_.read(first.page)->data() + stamp));
    return field;
}

std::vector<std::uint8_t> LongValueStore::write(std::span<const std::uint8_t> value, std::size_t inside) {
    const auto& sizes = pager_.format().long_value;
    if (value.size() > LongValueHead::length_mask)
        throw basic::RunTimeError(3047);
    if (value.size() <= inside) {
        std::vector<std::uint8_t> field = field_for(value.size(), inside_flag, {});
        field.insert(field.end(), value.begin(), value.end());
        return field;
    }
    if (value.size() <= sizes.longest_single)
        return field_for(value.size(), single_flag, records_.insert(value).place);

    // From the last piece to the first, because each tells where the next stands. Each begins a page: there
    // are readers that take a piece behind a tombstone for longer than it is.
    RecordPlace next;
    std::size_t end = value.size();
    std::vector<std::uint8_t> record;
    while (end > 0) {
        const std::size_t size = end % sizes.piece != 0 ? end % sizes.piece : sizes.piece;
        record.resize(next_size);
        put32(record.data(), next.page == 0 ? 0 : next.stored());
        const auto piece = value.subspan(end - size, size);
        record.insert(record.end(), piece.begin(), piece.end());
        next = records_.insert_on_new_page(record).place;
        end -= size;
    }
    return field_for(value.size(), 0, next);
}

void LongValueStore::erase(PageNumber where, std::span<const std::uint8_t> field) {
    std::vector<RecordPlace> places;
    visit_long_value(pager_, where, read_long_value_head(pager_, where, field),
                     [&](RecordPlace place, std::span<const std::uint8_t>) { places.push_back(place); });
    for (const RecordPlace place : places)
        records_.erase(place);
}

} // namespace tolva::jet
