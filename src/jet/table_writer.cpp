#include "jet/table_writer.h"

#include <algorithm>
#include <limits>

#include "basic/run_time_error.h"
#include "jet/bytes.h"
#include "jet/damage.h"
#include "jet/text_codec.h"

namespace tolva::jet {
namespace {

/// No row of these fields takes more, wherever its long values go.
std::size_t longest_row(const Format& format, const TableDefinition& table,
                        std::span<const StoredField> fields, std::size_t longest_inline) {
    const std::size_t width = format.row.count_size;
    std::size_t size = width * (table.variable_columns + 3u) + (table.most_columns + 7u) / 8;
    std::size_t fixed = 0;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const Column& column = table.columns[i];
        if (column.is_fixed())
            fixed = std::max<std::size_t>(fixed, column.fixed_offset + column.length);
        else if (column.is_long())
            size += LongValueHead::size + std::min(fields[i].bytes.size(), longest_inline);
        else
            size += fields[i].bytes.size();
    }
    size += fixed;
    return size + size / 256 + 1; // the jumps of rows that count in single bytes
}

RowId index_id(RecordPlace place) {
    return {place.page, place.slot};
}

} // namespace

TableWriter::TableWriter(Pager& pager, PageSpace& space, const TableDefinition& definition)
    : pager_(pager), space_(space), definition_(definition), indexes_(pager, space, definition),
      rows_(pager, space, {definition.owned_map, definition.free_map}, definition.page, definition.page) {}

TableWriter::Standing TableWriter::find(RecordPlace place) const {
    Standing standing{{place}, {}};
    const Record record =
        follow_moved_row(pager_, read_record(pager_, place, definition_.page), place.page, &standing.hops);
    standing.bytes.assign(record.bytes.begin(), record.bytes.end());
    return standing;
}

Row TableWriter::indexed_values(PageNumber where, std::span<const std::uint8_t> bytes) const {
    const RowView view(pager_, where, bytes);
    Row values(definition_.columns.size());
    for (const std::size_t place : indexes_.columns())
        values[place] = decode_column(pager_, where, definition_.columns[place], view);
    return values;
}

bool TableWriter::has_rule(const Column& column) const {
    return column.required || !column.zero_length;
}

void TableWriter::check_value(const Column& column, const Value& value) const {
    if (column.required && is_null(value) && column.type != ColumnType::boolean)
        throw basic::RunTimeError(3314, column.name);
    const auto* text = std::get_if<std::string>(&value);
    if (text && text->empty() && !column.zero_length)
        throw basic::RunTimeError(3315, column.name);
}

void TableWriter::check_values(const Row& row) const {
    for (std::size_t i = 0; i < row.size(); ++i)
        check_value(definition_.columns[i], row[i]);
}

std::vector<StoredField> TableWriter::encode(const Row& row) const {
    std::vector<StoredField> fields;
    fields.reserve(row.size());
    for (std::size_t i = 0; i < row.size(); ++i) {
        const Column& column = definition_.columns[i];
        if (!column.is_long()) {
            fields.push_back(encode_field(pager_.format(), column, row[i]));
            continue;
        }
        // The value as it will be stored; where it goes is decided when all checks are done.
        StoredField field;
        field.null = is_null(row[i]);
        if (const auto* text = std::get_if<std::string>(&row[i]); text && column.type == ColumnType::memo)
            encode_text(field.bytes, to_utf16(*text), column.compresses(), pager_.format());
        else if (const auto* bytes = std::get_if<Bytes>(&row[i]); bytes && column.type == ColumnType::ole)
            field.bytes = *bytes;
        else if (!field.null)
            throw basic::RunTimeError(3421);
        fields.push_back(std::move(field));
    }
    return fields;
}

/// How many bytes of each long value stay in the row: the usual few, or none where the row would grow too
/// long. 3047 when it is too long even so.
std::vector<std::size_t> TableWriter::inside_limits(std::vector<StoredField>& fields) const {
    const Format& format = pager_.format();
    std::vector<std::size_t> limits(fields.size(), format.long_value.longest_inline);
    // Nearly every row is far from the limit, and need not be laid out to see that.
    if (longest_row(format, definition_, fields, format.long_value.longest_inline) <= format.data.longest_row)
        return limits;
    std::vector<StoredField> shape = fields;
    std::vector<std::size_t> inside;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (!definition_.columns[i].is_long() || fields[i].null)
            continue;
        shape[i].bytes.assign(LongValueStore::field_size(fields[i].bytes.size(), limits[i]), 0);
        if (!fields[i].bytes.empty() && fields[i].bytes.size() <= limits[i])
            inside.push_back(i);
    }
    std::sort(inside.begin(), inside.end(),
              [&](std::size_t a, std::size_t b) { return fields[a].bytes.size() < fields[b].bytes.size(); });
    while (encode_row(format, definition_, shape).size() > format.data.longest_row) {
        if (inside.empty())
            throw basic::RunTimeError(3047);
        limits[inside.back()] = 0;
        shape[inside.back()].bytes.resize(LongValueHead::size);
        inside.pop_back();
    }
    return limits;
}

void TableWriter::statement(const std::function<void()>& change) {
    pager_.begin_statement();
    try {
        change();
    } catch (...) {
        pager_.undo_statement();
        throw;
    }
    pager_.end_statement();
}

void TableWriter::add_to_row_count(int difference) {
    std::uint8_t* const at = pager_.modify(definition_.page).data() + pager_.format().definition.row_count;
    const std::uint32_t count = get32(at);
    if (difference < 0 && count == 0)
        return; // a count that was wrong before
    put32(at, count + static_cast<std::uint32_t>(difference));
}

void TableWriter::draw_auto_numbers(Row& row) {
    for (std::size_t i = 0; i < row.size(); ++i) {
        const Column& column = definition_.columns[i];
        if (!column.is_auto_number() || column.type != ColumnType::long_integer)
            continue;
        const auto& d = pager_.format().definition;
        const PageRef page = pager_.read(definition_.page);
        const std::uint32_t last = get32(page->data() + d.last_auto);
        if (is_null(row[i])) {
            // The number is gone whatever becomes of the row, so that no two callers ever see the same.
            std::uint32_t step = d.auto_step != 0 ? get32(page->data() + d.auto_step) : 1;
            if (step == 0)
                step = 1;
            put32(pager_.modify(definition_.page).data() + d.last_auto, last + step);
            row[i] = std::int64_t{static_cast<std::int32_t>(last + step)};
        } else if (const auto* given = std::get_if<std::int64_t>(&row[i]);
                   given && *given > static_cast<std::int32_t>(last) &&
                   *given <= std::numeric_limits<std::int32_t>::max()) {
            put32(pager_.modify(definition_.page).data() + d.last_auto, static_cast<std::uint32_t>(*given));
        }
    }
}

void TableWriter::write_long_values(std::vector<StoredField>& fields, std::span<const std::size_t> limits,
                                    const RowView* old, PageNumber where) {
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const Column& column = definition_.columns[i];
        if (!column.is_long())
            continue;
        const bool had = old && !old->is_null(column);
        if (had && !fields[i].null) {
            // A value that stays the same stays where it is.
            const auto field = old->field(column);
            const LongValueHead head = read_long_value_head(pager_, where, field);
            if (head.length == fields[i].bytes.size() && head.form != LongValueHead::Form::inside &&
                read_long_value(pager_, where, field) == fields[i].bytes) {
                fields[i].bytes.assign(field.begin(), field.begin() + LongValueHead::size);
                continue;
            }
        }
        LongValueStore values(pager_, space_, column, definition_.page);
        if (had)
            values.erase(where, old->field(column));
        if (!fields[i].null)
            fields[i].bytes = values.write(fields[i].bytes, limits[i]);
    }
}

void TableWriter::erase_long_values(const RowView& row, PageNumber where) {
    for (const Column& column : definition_.columns) {
        if (!column.is_long() || row.is_null(column))
            continue;
        LongValueStore(pager_, space_, column, definition_.page).erase(where, row.field(column));
    }
}

TableWriter::Inserted TableWriter::insert(const Row& given) {
    Row row = given;
    draw_auto_numbers(row);
    std::vector<StoredField> fields = encode(row);
    check_values(row);
    const auto limits = inside_limits(fields);
    const Row indexed = stored_values(fields);
    const auto keys = indexes_.keys(indexed);
    indexes_.check_unique(keys, nullptr, indexed);

    Inserted inserted;
    statement([&] {
        write_long_values(fields, limits, nullptr, 0);
        const auto placed = rows_.insert(encode_row(pager_.format(), definition_, fields));
        inserted = {placed.place, placed.in_old_slot};
        indexes_.insert(keys, index_id(placed.place));
        add_to_row_count(1);
    });
    return inserted;
}

void TableWriter::update(RecordPlace place, const Row& row) {
    std::vector<StoredField> fields = encode(row);
    check_values(row);
    const auto limits = inside_limits(fields);
    const Standing standing = find(place);
    const PageNumber where = standing.hops.back().page;
    const Row old_indexed = indexed_values(where, standing.bytes);
    const Row indexed = stored_values(fields);
    const auto keys = indexes_.keys(indexed);
    const auto old_keys = old_indexed == indexed ? keys : indexes_.keys_as_stored(old_indexed);
    indexes_.check_unique(keys, &old_keys, indexed);

    statement([&] {
        const RowView old(pager_, where, standing.bytes);
        write_long_values(fields, limits, &old, where);
        store(standing, encode_row(pager_.format(), definition_, fields));
        indexes_.update(old_keys, keys, index_id(place));
    });
}

bool TableWriter::change_plain(RecordPlace place, const Row& values, const std::vector<bool>& written) {
    for (std::size_t i = 0; i < written.size(); ++i)
        if (written[i] && definition_.columns[i].is_long())
            return false;
    for (const std::size_t indexed : indexes_.columns())
        if (written[indexed])
            return false;

    const Standing standing = find(place);
    const PageNumber where = standing.hops.back().page;
    const RowView old(pager_, where, standing.bytes);
    std::vector<StoredField> made;
    made.reserve(values.size()); // the views below look into it
    std::vector<StoredFieldView> fields;
    fields.reserve(values.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
        const Column& column = definition_.columns[i];
        if (written[i])
            fields.emplace_back(made.emplace_back(encode_field(pager_.format(), column, values[i])));
        else if (old.is_null(column))
            fields.emplace_back();
        else
            fields.emplace_back(false, old.field(column));
    }
    for (std::size_t i = 0; i < values.size(); ++i) {
        const Column& column = definition_.columns[i];
        if (written[i])
            check_value(column, values[i]);
        else if (has_rule(column))
            check_value(column, decode_column(pager_, where, column, old));
    }
    const std::vector<std::uint8_t> bytes = encode_row(pager_.format(), definition_, fields);
    if (bytes.size() > pager_.format().data.longest_row)
        return false;
    if (bytes != standing.bytes)
        statement([&] { store(standing, bytes); });
    return true;
}

/// Puts the row's new bytes where there is room: at home, where it went last, or somewhere else; home then
/// holds the place.
void TableWriter::store(const Standing& standing, std::span<const std::uint8_t> bytes) {
    const RecordPlace home = standing.hops.front();
    const RecordPlace last = standing.hops.back();
    const bool away = standing.hops.size() > 1;
    const auto erase_hops = [&](std::size_t keep_last) {
        for (std::size_t i = 1; i + keep_last < standing.hops.size(); ++i)
            rows_.erase(standing.hops[i]);
    };
    const auto point_home_at = [&](RecordPlace target) {
        std::uint8_t stored[4];
        put32(stored, target.stored());
        if (!rows_.replace(home, stored, DataPageView::away_flag))
            throw basic::RunTimeError(3047);
    };
    if (rows_.replace(home, bytes, 0)) {
        erase_hops(0);
        return;
    }
    if (away && rows_.replace(last, bytes, DataPageView::hidden_flag)) {
        if (standing.hops.size() > 2) {
            erase_hops(1);
            point_home_at(last);
        }
        return;
    }
    // First the old places go, so that the new one may use their room.
    erase_hops(0);
    point_home_at(home);
    point_home_at(rows_.insert(bytes, DataPageView::hidden_flag).place);
}

void TableWriter::erase(RecordPlace place) {
    const Standing standing = find(place);
    const PageNumber where = standing.hops.back().page;
    const auto keys = indexes_.keys_as_stored(indexed_values(where, standing.bytes));
    statement([&] {
        erase_long_values(RowView(pager_, where, standing.bytes), where);
        for (auto hop = standing.hops.rbegin(); hop != standing.hops.rend(); ++hop)
            rows_.erase(*hop);
        indexes_.erase(keys, index_id(place));
        add_to_row_count(-1);
    });
}

Row TableWriter::stored_values(std::span<const StoredField> fields) const {
    Row values(definition_.columns.size());
    for (const std::size_t place : indexes_.columns()) {
        const Column& column = definition_.columns[place];
        if (column.type == ColumnType::boolean)
            values[place] = !fields[place].null;
        else if (column.type == ColumnType::memo && !fields[place].null)
            values[place] = decode_text(fields[place].bytes, pager_.format());
        else if (!fields[place].null)
            values[place] = decode_field(pager_, definition_.page, column, fields[place].bytes);
    }
    return values;
}

} // namespace tolva::jet
