#include "jet/table_definition.h"

#include <algorithm>

#include "jet/bytes.h"
#include "jet/damage.h"
#include "jet/text_codec.h"

namespace tolva::jet {
namespace {

constexpr std::uint8_t definition_page_type = 2;
constexpr std::size_t next_page_offset = 4;
constexpr std::size_t page_head = 8; ///< of a continuation, before its share of the definition
constexpr std::uint16_t no_column = 0xffff;
constexpr std::size_t parts_of_an_index = 10;
constexpr std::size_t most_columns_of_a_table = 255;

/// The definition's bytes in one piece: the first page whole, then each following page without its head.
class DefinitionBytes {
  public:
    DefinitionBytes(const Pager& pager, PageNumber first) : pager_(pager), first_(first) {
        const Format& format = pager.format();
        if (first == 0)
            fail("is said to begin on page 0");
        for (PageNumber page = first; page != 0;) {
            if (std::find(pages_.begin(), pages_.end(), page) != pages_.end())
                fail("its chain of pages runs in a circle");
            if (page >= pager.page_count())
                fail("continues on page " + std::to_string(page) + ", which is not there");
            const PageRef bytes = pager.read(page);
            if ((*bytes)[0] != definition_page_type)
                damaged(pager.path(), page, "is expected to be a table definition and is not");
            const std::size_t skip = pages_.empty() ? 0 : page_head;
            bytes_.insert(bytes_.end(), bytes->begin() + static_cast<std::ptrdiff_t>(skip), bytes->end());
            pages_.push_back(page);
            page = get32(bytes->data() + next_page_offset);
        }
        length_ = get32(bytes_.data() + format.definition.length);
    }

    const std::vector<PageNumber>& pages() const { return pages_; }

    const std::uint8_t* at(std::size_t offset, std::size_t size) const {
        if (offset > bytes_.size() || size > bytes_.size() - offset)
            fail("ends too soon");
        return bytes_.data() + offset;
    }
    std::uint8_t u8(std::size_t offset) const { return *at(offset, 1); }
    std::uint16_t u16(std::size_t offset) const { return get16(at(offset, 2)); }
    std::uint32_t u32(std::size_t offset) const { return get32(at(offset, 4)); }
    std::size_t size() const { return bytes_.size(); }
    /// Where the definition ends by its own account; unused bytes follow.
    std::size_t length() const { return std::min<std::size_t>(length_, bytes_.size()); }

    /// A counted name; moves `offset` behind it.
    std::string name(std::size_t& offset) const {
        const std::size_t head = pager_.format().definition.name_count_size;
        const std::size_t length = head == 1 ? u8(offset) : u16(offset);
        const std::uint8_t* start = at(offset + head, length);
        offset += head + length;
        return decode_text({start, length}, pager_.format());
    }

    [[noreturn]] void fail(const std::string& reason) const {
        damaged(pager_.path(), first_, "the table definition " + reason);
    }

  private:
    const Pager& pager_;
    PageNumber first_;
    std::vector<PageNumber> pages_;
    std::vector<std::uint8_t> bytes_;
    std::uint32_t length_ = 0;
};

Column read_column(const DefinitionBytes& bytes, const Format& format, std::size_t at) {
    const auto& c = format.column;
    bytes.at(at, c.size);
    Column column;
    column.type = static_cast<ColumnType>(bytes.u8(at + c.type));
    column.id = bytes.u16(at + c.id);
    column.variable_index = bytes.u16(at + c.variable_index);
    column.position = bytes.u16(at + c.position);
    column.text_order = bytes.u16(at + c.text_order);
    if (c.text_order_version != 0)
        column.text_order_version = bytes.u8(at + c.text_order_version);
    column.precision = bytes.u8(at + c.precision);
    column.scale = bytes.u8(at + c.scale);
    column.flags = bytes.u8(at + c.flags);
    if (c.more_flags != 0)
        column.more_flags = bytes.u8(at + c.more_flags);
    column.fixed_offset = bytes.u16(at + c.fixed_offset);
    column.length = bytes.u16(at + c.length);
    return column;
}

void check_column(const DefinitionBytes& bytes, const Format& format, const TableDefinition& table,
                  const Column& column) {
    if (column.id >= table.most_columns)
        bytes.fail("numbers column '" + column.name + "' too high");
    if (const std::size_t length = natural_length(column.type); length != 0 && column.length != length)
        bytes.fail("gives column '" + column.name + "' a wrong length");
    if (column.is_fixed() && column.type != ColumnType::boolean &&
        column.fixed_offset + std::size_t{column.length} > format.data.longest_row)
        bytes.fail("puts column '" + column.name + "' outside its rows");
    if (!column.is_fixed() && column.type != ColumnType::boolean &&
        column.variable_index >= table.variable_columns)
        bytes.fail("gives column '" + column.name + "' no place among the variable ones");
    if (column.is_fixed() && column.is_long())
        bytes.fail("calls the long column '" + column.name + "' fixed");
}

} // namespace

std::size_t natural_length(ColumnType type) {
    switch (type) {
    case ColumnType::byte:
        return 1;
    case ColumnType::integer:
        return 2;
    case ColumnType::long_integer:
    case ColumnType::single_real:
        return 4;
    case ColumnType::currency:
    case ColumnType::double_real:
    case ColumnType::date:
        return 8;
    case ColumnType::guid:
        return 16;
    case ColumnType::numeric:
        return 17;
    default:
        return 0;
    }
}

TableDefinition read_table_definition(const Pager& pager, PageNumber page) {
    const Format& format = pager.format();
    const auto& d = format.definition;
    const DefinitionBytes bytes(pager, page);
    TableDefinition table;
    table.page = page;
    table.pages = bytes.pages();
    table.is_system = bytes.u8(d.kind) == 0x53;
    table.most_columns = bytes.u16(d.most_columns);
    table.variable_columns = bytes.u16(d.variable_columns);
    table.owned_map = RecordPlace::from(bytes.u32(d.owned_map));
    table.free_map = RecordPlace::from(bytes.u32(d.free_map));
    const std::size_t column_count = bytes.u16(d.columns);
    const std::size_t logical_count = bytes.u32(d.logical_indexes);
    const std::size_t real_count = bytes.u32(d.real_indexes);
    if (column_count == 0 || column_count > most_columns_of_a_table || table.most_columns < column_count)
        bytes.fail("claims " + std::to_string(column_count) + " columns");
    // Against sizes that no definition can have; the bytes themselves are tested as they are read.
    if (real_count > bytes.size() / format.real_index.size ||
        logical_count > bytes.size() / format.logical_index.size)
        bytes.fail("claims more indexes than it has room for");

    std::size_t at = d.end;
    table.real_indexes.resize(real_count);
    for (RealIndex& index : table.real_indexes) {
        index.counter_offset = at + format.index_counter.unique_entries;
        if (index.counter_offset + 4 > format.page_size)
            bytes.fail("has too many indexes");
        at += format.index_counter.size;
    }
    for (std::size_t i = 0; i < column_count; ++i, at += format.column.size)
        table.columns.push_back(read_column(bytes, format, at));
    for (Column& column : table.columns) {
        column.name = bytes.name(at);
        check_column(bytes, format, table, column);
    }
    std::stable_sort(table.columns.begin(), table.columns.end(), [](const Column& a, const Column& b) {
        return a.position != b.position ? a.position < b.position : a.id < b.id;
    });
    const auto place_of = [&](std::uint16_t id) {
        for (std::size_t i = 0; i < table.columns.size(); ++i)
            if (table.columns[i].id == id)
                return i;
        bytes.fail("names column " + std::to_string(id) + ", which it does not have");
    };
    for (std::size_t i = 0; i + 1 < table.columns.size(); ++i)
        for (std::size_t j = i + 1; j < table.columns.size(); ++j)
            if (table.columns[i].id == table.columns[j].id)
                bytes.fail("has two columns of number " + std::to_string(table.columns[i].id));

    for (RealIndex& index : table.real_indexes) {
        const auto& r = format.real_index;
        bytes.at(at, r.size);
        for (std::size_t i = 0; i < parts_of_an_index; ++i) {
            const std::uint16_t id = bytes.u16(at + r.parts + 3 * i);
            if (id == no_column)
                continue;
            index.parts.push_back({place_of(id), (bytes.u8(at + r.parts + 3 * i + 2) & 1) == 0});
        }
        index.owned_map = RecordPlace::from(bytes.u32(at + r.owned_map));
        index.root = bytes.u32(at + r.root);
        index.flags = bytes.u8(at + r.flags);
        if (index.parts.empty())
            bytes.fail("has an index without columns");
        at += r.size;
    }
    table.logical_indexes.resize(logical_count);
    for (LogicalIndex& index : table.logical_indexes) {
        const auto& l = format.logical_index;
        bytes.at(at, l.size);
        index.real = bytes.u32(at + l.real_number);
        index.kind = bytes.u8(at + l.kind);
        if (index.real >= real_count)
            bytes.fail("has an index without a tree");
        at += l.size;
    }
    for (LogicalIndex& index : table.logical_indexes)
        index.name = bytes.name(at);

    while (at + 2 <= bytes.length()) {
        const std::uint16_t id = bytes.u16(at);
        if (id == no_column)
            break;
        Column& column = table.columns[place_of(id)];
        column.owned_map = RecordPlace::from(bytes.u32(at + 2));
        column.free_map = RecordPlace::from(bytes.u32(at + 6));
        at += 10;
    }
    return table;
}

} // namespace tolva::jet
