#include "jet/definition_writer.h"

#include <algorithm>

#include "basic/run_time_error.h"
#include "basic/text.h"
#include "jet/bytes.h"
#include "jet/index_tree.h"
#include "jet/table_indexes.h"
#include "jet/text_codec.h"

namespace tolva::jet {
namespace {

// What every definition has in these places.
constexpr std::uint32_t definition_magic = 1625;
constexpr std::uint32_t index_magic = 0x0783;
constexpr std::uint8_t user_kind = 0x4e, system_kind = 0x53;
constexpr std::uint8_t system_column_flag = 0x10;
constexpr std::uint16_t general_order = 1033, western_page = 1252;
constexpr std::size_t parts_of_an_index = 10;
constexpr int default_text_size = 255;

std::size_t length_of(const ColumnSchema& column, const Format& format) {
    const auto size = static_cast<std::size_t>(column.size > 0 ? column.size : default_text_size);
    switch (column.type) {
    case ColumnType::boolean:
        return 1;
    case ColumnType::text:
        return size * format.character_size;
    case ColumnType::binary:
        return size;
    default:
        return natural_length(column.type);
    }
}

bool is_fixed(const ColumnSchema& column) {
    switch (column.type) {
    case ColumnType::text:
        return column.fixed_length;
    case ColumnType::binary:
    case ColumnType::memo:
    case ColumnType::ole:
        return false;
    default:
        return true;
    }
}

class DefinitionWriter {
  public:
    DefinitionWriter(const Format& format, const TableSchema& table, bool is_system)
        : format_(format), table_(table), is_system_(is_system), bytes_(format.definition.end) {}

    std::vector<std::uint8_t> write(const std::vector<RecordPlace>& maps,
                                    const std::vector<PageNumber>& roots) {
        auto map = maps.begin();
        head(*map++, *map++);
        for (const ColumnSchema& column : table_.columns)
            this->column(column);
        for (const ColumnSchema& column : table_.columns)
            name(column.name);
        for (std::size_t i = 0; i < table_.indexes.size(); ++i)
            real_index(table_.indexes[i], *map++, roots[i]);
        for (std::size_t i = 0; i < table_.indexes.size(); ++i)
            logical_index(table_.indexes[i], i);
        for (const IndexSchema& index : table_.indexes)
            name(index.name);
        for (std::size_t id = 0; id < table_.columns.size(); ++id) {
            const ColumnType type = table_.columns[id].type;
            if (type != ColumnType::memo && type != ColumnType::ole)
                continue;
            std::uint8_t* const at = grow(10);
            put16(at, id);
            put32(at + 2, (*map++).stored());
            put32(at + 6, (*map++).stored());
        }
        put16(grow(2), 0xffff);
        put32(bytes_.data() + format_.definition.length, static_cast<std::uint32_t>(bytes_.size()));
        return bytes_;
    }

  private:
    std::uint8_t* grow(std::size_t size) {
        bytes_.resize(bytes_.size() + size);
        return bytes_.data() + bytes_.size() - size;
    }

    void head(RecordPlace owned, RecordPlace free) {
        const auto& d = format_.definition;
        std::size_t variable = 0;
        for (const ColumnSchema& column : table_.columns)
            variable += !is_fixed(column);
        std::uint8_t* const at = bytes_.data();
        if (d.magic != 0)
            put32(at + d.magic, definition_magic);
        if (d.auto_step != 0)
            put32(at + d.auto_step, 1);
        at[d.kind] = is_system_ ? system_kind : user_kind;
        put16(at + d.most_columns, table_.columns.size());
        put16(at + d.variable_columns, variable);
        put16(at + d.columns, table_.columns.size());
        put32(at + d.logical_indexes, static_cast<std::uint32_t>(table_.indexes.size()));
        put32(at + d.real_indexes, static_cast<std::uint32_t>(table_.indexes.size()));
        put32(at + d.owned_map, owned.stored());
        put32(at + d.free_map, free.stored());
        grow(table_.indexes.size() * format_.index_counter.size);
    }

    void column(const ColumnSchema& column) {
        const auto& c = format_.column;
        std::uint8_t* const at = grow(c.size);
        const std::size_t length = length_of(column, format_);
        at[c.type] = static_cast<std::uint8_t>(column.type);
        if (c.magic != 0)
            put32(at + c.magic, definition_magic);
        put16(at + c.id, next_id_);
        put16(at + c.variable_index, next_variable_);
        put16(at + c.position, next_id_);
        if (column.type == ColumnType::numeric) {
            at[c.precision] = static_cast<std::uint8_t>(column.precision);
            at[c.scale] = static_cast<std::uint8_t>(column.scale);
        } else {
            put16(at + c.text_order, general_order);
            if (c.code_page != 0)
                put16(at + c.code_page, western_page);
        }
        std::uint8_t flags = Column::nullable_flag;
        if (is_system_)
            flags |= system_column_flag;
        if (is_fixed(column))
            flags |= Column::fixed_flag;
        if (column.auto_number)
            flags |= Column::auto_number_flag;
        at[c.flags] = flags;
        const bool compresses = column.type == ColumnType::text || column.type == ColumnType::memo;
        if (c.more_flags != 0 && compresses && !is_system_)
            at[c.more_flags] = Column::compressed_flag;
        if (is_fixed(column) && column.type != ColumnType::boolean) {
            put16(at + c.fixed_offset, next_fixed_);
            next_fixed_ += length;
        }
        put16(at + c.length, length);
        ++next_id_;
        next_variable_ += !is_fixed(column);
    }

    void name(const std::string& text) {
        const std::u16string units = to_utf16(text);
        const std::size_t head = format_.definition.name_count_size,
                          size = units.size() * format_.character_size;
        if (head == 1)
            *grow(head) = static_cast<std::uint8_t>(size);
        else
            put16(grow(head), size);
        encode_text(bytes_, units, false, format_);
    }

    std::size_t id_of(const std::string& name) const {
        for (std::size_t id = 0; id < table_.columns.size(); ++id)
            if (basic::lower(table_.columns[id].name) == basic::lower(name))
                return id;
        throw basic::RunTimeError(3265);
    }

    void real_index(const IndexSchema& index, RecordPlace map, PageNumber root) {
        const auto& r = format_.real_index;
        std::uint8_t* const at = grow(r.size);
        if (r.has_magic)
            put32(at, index_magic);
        for (std::size_t i = 0; i < parts_of_an_index; ++i) {
            std::uint8_t* const part = at + r.parts + 3 * i;
            put16(part, i < index.parts.size() ? id_of(index.parts[i].column) : 0xffff);
            part[2] = i < index.parts.size() && !index.parts[i].descending;
        }
        put32(at + r.owned_map, map.stored());
        put32(at + r.root, root);
        std::uint8_t flags = r.usual_flag;
        if (index.unique || index.primary)
            flags |= RealIndex::unique_flag;
        if (index.ignore_nulls)
            flags |= RealIndex::ignore_nulls_flag;
        if (index.required || index.primary)
            flags |= RealIndex::required_flag;
        at[r.flags] = flags;
    }

    void logical_index(const IndexSchema& index, std::size_t number) {
        const auto& l = format_.logical_index;
        std::uint8_t* const at = grow(l.size);
        if (format_.real_index.has_magic)
            put32(at, definition_magic);
        put32(at + l.number, static_cast<std::uint32_t>(number));
        put32(at + l.real_number, static_cast<std::uint32_t>(number));
        put32(at + l.relation + 1, 0xffff'ffff); // part of no relation
        at[l.relation + 9] = 4;
        at[l.relation + 10] = 4;
        at[l.kind] = index.primary ? LogicalIndex::primary : LogicalIndex::plain;
    }

    const Format& format_;
    const TableSchema& table_;
    bool is_system_;
    std::vector<std::uint8_t> bytes_;
    std::size_t next_id_ = 0, next_variable_ = 0, next_fixed_ = 0;
};

/// Spreads a definition over its first page and as many more as it takes.
void spread(Pager& pager, PageSpace& space, PageNumber first, std::vector<std::uint8_t> bytes) {
    constexpr std::size_t head = 8;
    const std::size_t room = pager.format().page_size - head;
    const auto write = [&](PageNumber page, std::size_t from, std::size_t size, PageNumber next) {
        const auto out = pager.modify(page);
        std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(from), size, out.begin() + head);
        out[0] = 2;
        out[1] = 1;
        put16(out.data() + 2, room - size);
        put32(out.data() + 4, next);
    };
    PageNumber page = first;
    for (std::size_t from = head; from < bytes.size();) {
        const std::size_t size = std::min(room, bytes.size() - from);
        const PageNumber next = from + size < bytes.size() ? space.allocate() : 0;
        write(page, from, size, next);
        from += size;
        page = next;
    }
}

void check_schema(const TableSchema& table) {
    constexpr std::size_t most_columns = 255, most_indexes = 32;
    const bool good = !table.columns.empty() && table.columns.size() <= most_columns &&
                      table.indexes.size() <= most_indexes;
    if (!good)
        throw basic::RunTimeError(5);
    for (const IndexSchema& index : table.indexes)
        if (index.parts.empty() || index.parts.size() > parts_of_an_index)
            throw basic::RunTimeError(5);
}

} // namespace

RecordPlace MapPages::add() {
    const Format& format = pager_.format();
    const std::vector<std::uint8_t> empty(format.map.inline_size);
    if (page_ != 0) {
        const PageRef bytes = pager_.read(page_);
        const DataPageView view(format, pager_.path(), page_, *bytes);
        const auto slot = view.slot_for(empty.size());
        if (slot && DataPageEditor(format, pager_.path(), page_, pager_.modify(page_)).put(*slot, empty, 0))
            return {page_, *slot};
    }
    page_ = space_.allocate();
    DataPageEditor::start(format, pager_.modify(page_), 0);
    DataPageEditor(format, pager_.path(), page_, pager_.modify(page_)).put(0, empty, 0);
    return {page_, 0};
}

TableDefinition write_table_definition(Pager& pager, PageSpace& space, MapPages& maps, PageNumber page,
                                       const TableSchema& table, bool is_system) {
    check_schema(table);
    std::vector<RecordPlace> places = {maps.add(), maps.add()};
    std::vector<PageNumber> roots;
    for (std::size_t i = 0; i < table.indexes.size(); ++i) {
        places.push_back(maps.add());
        MappedIndexPages pages(pager, space, places.back(), page);
        roots.push_back(pages.allocate());
        IndexTree::create(pages, roots.back(), page);
    }
    for (const ColumnSchema& column : table.columns) {
        if (column.type != ColumnType::memo && column.type != ColumnType::ole)
            continue;
        places.push_back(maps.add());
        places.push_back(maps.add());
    }
    spread(pager, space, page, DefinitionWriter(pager.format(), table, is_system).write(places, roots));
    return read_table_definition(pager, page);
}

} // namespace tolva::jet
