#include "jet/stored_table.h"

#include <algorithm>
#include <cassert>

#include "basic/run_time_error.h"
#include "basic/text.h"
#include "jet/bytes.h"
#include "jet/damage.h"
#include "jet/prefetch.h"
#include "jet/stored_row.h"
#include "jet/text_order.h"
#include "jet/usage_map.h"

namespace tolva::jet {
namespace {

TableSchema schema_of(const std::string& name, const TableDefinition& definition, const Format& format) {
    TableSchema schema;
    schema.name = name;
    if (format.version == Format::Version::jet3)
        schema.text_order = TextOrder::general_jet3;
    for (const Column& column : definition.columns) {
        ColumnSchema out;
        out.name = column.name;
        out.type = column.type;
        if (column.type == ColumnType::text)
            out.size = static_cast<int>(column.length / format.character_size);
        if (column.type == ColumnType::binary)
            out.size = column.length;
        out.required = column.required;
        out.zero_length = column.zero_length;
        out.default_value = column.default_value;
        out.auto_number = column.is_auto_number();
        out.fixed_length = column.is_fixed() && column.type == ColumnType::text;
        if (column.type == ColumnType::numeric) {
            out.precision = column.precision;
            out.scale = column.scale;
        }
        schema.columns.push_back(out);
    }
    for (const LogicalIndex& index : definition.logical_indexes) {
        const RealIndex& real = definition.real_indexes[index.real];
        IndexSchema out;
        out.name = index.name;
        for (const RealIndex::Part& part : real.parts)
            out.parts.push_back({definition.columns[part.column].name, part.descending});
        out.primary = index.kind == LogicalIndex::primary;
        out.unique = real.unique();
        out.ignore_nulls = real.ignores_nulls();
        out.required = real.required();
        schema.indexes.push_back(out);
    }
    return schema;
}

} // namespace

StoredTable::StoredTable(FilePager& pager, PageSpace& space, std::string name, TableDefinition definition)
    : pager_(pager), name_(std::move(name)), definition_(std::move(definition)),
      schema_(schema_of(name_, definition_, pager.format())), writer_(pager, space, definition_) {}

StoredTable::~StoredTable() = default;

std::optional<std::size_t> StoredTable::find_column(const std::string& name) const {
    for (std::size_t i = 0; i < schema_.columns.size(); ++i)
        if (basic::equal_names(schema_.columns[i].name, name))
            return i;
    const std::string folded = basic::lower(name);
    for (std::size_t i = 0; i < schema_.columns.size(); ++i)
        if (basic::lower(schema_.columns[i].name) == folded)
            return i;
    return std::nullopt;
}

std::uint32_t StoredTable::row_count() const {
    return get32(pager_.read(definition_.page)->data() + pager_.format().definition.row_count);
}

std::vector<PageNumber> StoredTable::data_pages() const {
    return UsageMap(pager_, definition_.owned_map, definition_.page, UsageMap::Kind::owned).pages();
}

RowId StoredTable::id_at(PageNumber page, std::uint8_t slot) const {
    if (lives_.empty())
        return {page, slot};
    const auto life = lives_.find({page, slot});
    return {page, slot, life == lives_.end() ? std::uint16_t{0} : life->second};
}

Record StoredTable::find_row(RowId id) const {
    if (id.page == 0 || id.page >= pager_.page_count() || !(id_at(id.page, id.slot) == id))
        return {};
    PageRef page = pager_.read(id.page);
    if (!is_data_page(*page))
        return {};
    const DataPageView view(pager_.format(), pager_.path(), id.page, *page);
    if (view.owner() != definition_.page || id.slot >= view.slots())
        return {};
    if (view.flags(id.slot) & DataPageView::hidden_flag)
        return {};
    const std::uint16_t flags = view.flags(id.slot);
    Record record{std::move(page), view.record(id.slot), flags};
    return flags ? follow_moved_row(pager_, std::move(record), id.page) : std::move(record);
}

bool StoredTable::exists(RowId id) const {
    return find_row(id).page != nullptr;
}

void StoredTable::expect(std::span<const RowId> coming) const {
    // First where the page tells of its records, and some rows later, when that has come, the record.
    constexpr std::size_t pages_ahead = 7, records_ahead = 3;
    if (coming.size() > pages_ahead)
        if (const Page* page = pager_.glance(coming[pages_ahead].page))
            prefetch(std::span(*page).first(pager_.format().data.slots));
    if (coming.size() > records_ahead)
        if (const Page* page = pager_.glance(coming[records_ahead].page))
            prefetch(DataPageView::likely_record(pager_.format(), *page, coming[records_ahead].slot));
}

std::unique_ptr<RowSeeker> StoredTable::reader(RowId id) const {
    auto row = std::make_unique<StoredRow>(*this);
    row->go_to(id);
    return row;
}

Row StoredTable::read(RowId id) const {
    const auto row = reader(id);
    Row values;
    values.reserve(schema_.columns.size());
    for (std::size_t i = 0; i < schema_.columns.size(); ++i)
        values.push_back(row->value(i));
    return values;
}

std::unique_ptr<RowCursor> StoredTable::scan() const {
    return std::make_unique<TableScan>(*this);
}

void StoredTable::check_writable() const {
    if (pager_.read_only())
        not_writable(pager_.path(), "the file can only be read");
    if (const std::string& why = writer_.indexes().hindrance(); !why.empty())
        not_writable(pager_.path(), "in table '" + name_ + "' " + why);
}

RowId StoredTable::insert(const Row& row) {
    assert(row.size() == schema_.columns.size());
    check_writable();
    ++changes_;
    const auto inserted = writer_.insert(row);
    if (inserted.in_old_slot)
        ++lives_[{inserted.place.page, inserted.place.slot}];
    return id_at(inserted.place.page, inserted.place.slot);
}

void StoredTable::draw_auto_numbers(Row& row) {
    assert(row.size() == schema_.columns.size());
    check_writable();
    writer_.draw_auto_numbers(row);
}

void StoredTable::update(RowId id, const Row& row) {
    assert(row.size() == schema_.columns.size());
    check_writable();
    if (!exists(id))
        throw basic::RunTimeError(3167);
    ++changes_;
    writer_.update({id.page, id.slot}, row);
}

void StoredTable::change(RowId id, const Row& values, const std::vector<bool>& written) {
    assert(values.size() == schema_.columns.size() && written.size() == values.size());
    check_writable();
    if (!exists(id))
        throw basic::RunTimeError(3167);
    ++changes_;
    if (!writer_.change_plain({id.page, id.slot}, values, written))
        Table::change(id, values, written);
}

void StoredTable::erase(RowId id) {
    check_writable();
    if (!exists(id))
        throw basic::RunTimeError(3167);
    ++changes_;
    writer_.erase({id.page, id.slot});
}

std::vector<RowId> StoredTable::find(std::size_t index, std::span<const Value> values) const {
    const std::size_t real = definition_.logical_indexes[index].real;
    const RealIndex& shape = definition_.real_indexes[real];
    assert(!values.empty() && values.size() <= shape.parts.size());
    // Bytes of no length leave nothing in a key, so that any other bytes would seem to begin with them.
    const bool traceless = std::any_of(values.begin(), values.end(), [](const Value& value) {
        const auto* bytes = std::get_if<Bytes>(&value);
        return bytes && bytes->empty();
    });
    const bool left_out = shape.ignores_nulls() && std::all_of(values.begin(), values.end(),
                                                               [](const Value& v) { return is_null(v); });
    if (left_out || traceless || !indexes().understands(real))
        return find_by_scan(shape, values);

    Row wanted(values.begin(), values.end());
    for (std::size_t i = 0; i < wanted.size(); ++i)
        if (auto* number = std::get_if<double>(&wanted[i]);
            number && definition_.columns[shape.parts[i].column].type == ColumnType::single_real)
            *number = static_cast<float>(*number);
    const Key prefix = indexes().prefix(real, wanted);
    // Of a long key the entries hold no more than a start and a sum; the rows themselves decide.
    if (prefix.size() >= pager_.format().longest_key - key_sum_size)
        return find_by_scan(shape, values);

    const auto rows = rows_named([&] {
        MappedIndexPages pages = indexes().pages(real);
        return indexes().tree(real, pages).find_prefix(prefix);
    });
    return rows ? *rows : find_by_scan(shape, values);
}

/// The rows that a look into an index names, in the order of the table. Nothing where the index is damaged:
/// its pages make no sense, or it names a row twice or one that isn't there. The rows themselves are sound
/// all the same.
std::optional<std::vector<RowId>>
StoredTable::rows_named(const std::function<std::vector<RowId>()>& look) const {
    std::vector<RowId> rows;
    try {
        rows = look();
    } catch (const basic::RunTimeError& error) {
        if (error.number() != 3049)
            throw;
        return std::nullopt;
    }
    for (RowId& row : rows)
        row = id_at(row.page, row.slot);
    std::sort(rows.begin(), rows.end());
    if (std::adjacent_find(rows.begin(), rows.end()) != rows.end())
        return std::nullopt;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        expect(std::span(rows).subspan(i + 1));
        if (!exists(rows[i]))
            return std::nullopt;
    }
    return rows;
}

std::optional<std::vector<RowId>> StoredTable::find_by_key(std::size_t index, const KeyTest& passes) const {
    const std::size_t real = definition_.logical_indexes[index].real;
    if (!indexes().understands(real))
        return std::nullopt;
    const std::size_t longest = pager_.format().longest_key;
    std::size_t entries = 0;
    auto rows = rows_named([&] {
        std::vector<RowId> named;
        MappedIndexPages pages = indexes().pages(real);
        indexes().tree(real, pages).walk([&](std::span<const std::uint8_t> key, RowId row) {
            ++entries;
            if (key.size() >= longest || passes(key))
                named.push_back(row);
            return true;
        });
        return named;
    });
    // An index that lacks a row tells nothing of it.
    const bool is_whole = entries == row_count() || definition_.real_indexes[real].ignores_nulls();
    return is_whole ? rows : std::nullopt;
}

bool StoredTable::matches(const RowReader& row, const RealIndex& index, std::span<const Value> values) const {
    for (std::size_t i = 0; i < values.size(); ++i) {
        const Value value = row.value(index.parts[i].column);
        const auto* text = std::get_if<std::string>(&value);
        const auto* other = std::get_if<std::string>(&values[i]);
        const bool equal =
            text && other ? compare_text(*text, *other, schema_.text_order) == std::weak_ordering::equivalent
                          : value == values[i];
        if (!equal)
            return false;
    }
    return true;
}

std::vector<RowId> StoredTable::find_by_scan(const RealIndex& index, std::span<const Value> values) const {
    std::vector<RowId> rows;
    for (const auto row = scan(); row->next();)
        if (matches(*row, index, values))
            rows.push_back(row->id());
    return rows;
}

} // namespace tolva::jet
