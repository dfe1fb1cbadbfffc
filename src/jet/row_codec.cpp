#include "jet/row_codec.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

#include "basic/run_time_error.h"
#include "jet/bytes.h"
#include "jet/damage.h"
#include "jet/text_codec.h"

namespace tolva::jet {
namespace {

/// Where an offset has one byte, a jump table stands between the offsets and their count: a byte for each 256
/// bytes of the whole row, the first one last. It tells from which offset on 256 more are to be added. Those
/// for stretches that no offset reaches are dummies and stand in front.
constexpr std::size_t jump_distance = 256;
constexpr std::uint8_t dummy_jump = 0xff;

std::size_t jumps_of_row(std::size_t row_size) {
    return (row_size - 1) / jump_distance;
}

void append_jumps(std::vector<std::uint8_t>& row, std::span<const std::size_t> offsets, std::size_t behind) {
    const std::size_t size = row.size() + behind;
    std::size_t jumps = 0;
    while (jumps_of_row(size + jumps) > jumps)
        ++jumps;
    for (; jumps > 0; --jumps) {
        const auto first = std::lower_bound(offsets.begin(), offsets.end(), jump_distance * jumps);
        row.push_back(first == offsets.end() ? dummy_jump
                                             : static_cast<std::uint8_t>(first - offsets.begin()));
    }
}

/// A decimal on disk: the sign, then four words of magnitude, the most significant first.
constexpr std::size_t decimal_size = 17;

Decimal decode_decimal(const Column& column, const std::uint8_t* at) {
    Decimal value;
    value.negative = at[0] & 0x80;
    value.scale = column.scale;
    for (std::size_t word = 0; word < 3; ++word)
        value.magnitude[word] = get32(at + 13 - 4 * word);
    return value;
}

void encode_decimal(const Column& column, const Decimal& value, std::vector<std::uint8_t>& out) {
    if (value.scale != column.scale)
        throw basic::RunTimeError(3421);
    out.assign(decimal_size, 0);
    out[0] = value.negative ? 0x80 : 0;
    for (std::size_t word = 0; word < 3; ++word)
        put32(out.data() + 13 - 4 * word, value.magnitude[word]);
}

template <typename Kind>
const Kind& of_kind(const Value& value) {
    const Kind* found = std::get_if<Kind>(&value);
    if (!found)
        throw basic::RunTimeError(3421);
    return *found;
}

std::int64_t whole(const Value& value, std::int64_t low, std::int64_t high) {
    const std::int64_t number = of_kind<std::int64_t>(value);
    if (number < low || number > high)
        throw basic::RunTimeError(6);
    return number;
}

void encode_text_field(const Format& format, const Column& column, const std::string& text,
                       std::vector<std::uint8_t>& out) {
    std::u16string units = to_utf16(text);
    if (units.size() * format.character_size > column.length)
        throw basic::RunTimeError(3163);
    // Fixed text always fills its width.
    if (column.is_fixed())
        units.resize(column.length / format.character_size, u' ');
    encode_text(out, units, column.compresses() && !column.is_fixed(), format);
}

} // namespace

RowView::RowView(const Pager& pager, PageNumber where, std::span<const std::uint8_t> bytes)
    : pager_(&pager), format_(&pager.format()), where_(where), bytes_(bytes),
      width_(format_->row.count_size) {
    if (bytes.size() < width_)
        fail("is too short");
    columns_ = number(bytes.data());
    mask_size_ = (columns_ + 7) / 8;
    if (bytes.size() < width_ + mask_size_)
        fail("is too short for its " + std::to_string(columns_) + " columns");
    mask_ = bytes.data() + bytes.size() - mask_size_;
}

std::size_t RowView::number(const std::uint8_t* at) const {
    return width_ == 1 ? *at : get16(at);
}

void RowView::fail(const std::string& reason) const {
    damaged(pager_->path(), where_, "a row " + reason);
}

std::span<const std::uint8_t> RowView::field(const Column& column) const {
    if (column.type == ColumnType::boolean)
        return {};
    if (column.is_fixed()) {
        const std::size_t start = width_ + column.fixed_offset;
        if (start + column.length > bytes_.size() - mask_size_)
            fail("ends before its column '" + column.name + "'");
        return bytes_.subspan(start, column.length);
    }
    if (trailer_.offsets == nullptr)
        find_trailer(column);
    if (column.variable_index >= trailer_.count)
        return {};
    const std::size_t start = offset(column.variable_index), end = offset(column.variable_index + 1u);
    if (start > end || end > trailer_.last || start < width_)
        fail("puts its column '" + column.name + "' outside itself");
    return bytes_.subspan(start, end - start);
}

/// From the end: the mask, the count, the jump table, the offsets from first to last, and where the last
/// value ends.
void RowView::find_trailer(const Column& asking) const {
    const std::size_t tail = mask_size_ + width_;
    if (bytes_.size() < width_ + tail + width_)
        fail("is too short for its column '" + asking.name + "'");
    const std::uint8_t* const count_at = bytes_.data() + bytes_.size() - tail;
    const std::size_t count = number(count_at);
    const std::size_t jumps = format_->row.jump_table ? jumps_of_row(bytes_.size()) : 0;
    const std::size_t size = tail + jumps + width_ * (count + 1);
    if (bytes_.size() < width_ + size)
        fail("claims " + std::to_string(count) + " variable columns");
    const std::size_t last = bytes_.size() - size;
    const std::size_t real_jumps = std::min(jumps, last / jump_distance);
    trailer_ = {count_at - jumps, count, last, {count_at - real_jumps, real_jumps}};
}

std::size_t RowView::offset(std::size_t variable_column) const {
    const std::size_t stored = number(trailer_.offsets - width_ * (variable_column + 1));
    if (trailer_.jumps.empty())
        return stored;
    const auto passed = std::count_if(trailer_.jumps.begin(), trailer_.jumps.end(),
                                      [&](auto at) { return at <= variable_column; });
    return stored + jump_distance * static_cast<std::size_t>(passed);
}

Value decode_field(const Pager& pager, PageNumber where, const Column& column,
                   std::span<const std::uint8_t> field) {
    const auto need = [&](std::size_t size) {
        if (field.size() < size)
            damaged(pager.path(), where, "column '" + column.name + "' of a row is cut short");
        return field.data();
    };
    switch (column.type) {
    case ColumnType::boolean:
        return true;
    case ColumnType::byte:
        return std::int64_t{*need(1)};
    case ColumnType::integer:
        return std::int64_t{static_cast<std::int16_t>(get16(need(2)))};
    case ColumnType::long_integer:
        return std::int64_t{static_cast<std::int32_t>(get32(need(4)))};
    case ColumnType::currency:
        return Currency{static_cast<std::int64_t>(get64(need(8)))};
    case ColumnType::single_real:
        return double{get_float(need(4))};
    case ColumnType::double_real:
        return get_double(need(8));
    case ColumnType::date:
        return basic::Date{get_double(need(8))};
    case ColumnType::text:
        return decode_text(field, pager.format());
    case ColumnType::numeric:
        return decode_decimal(column, need(decimal_size));
    default:
        return Bytes(field.begin(), field.end());
    }
}

StoredField encode_field(const Format& format, const Column& column, const Value& value) {
    StoredField field;
    if (is_null(value))
        return field;
    field.null = false;
    auto& out = field.bytes;
    switch (column.type) {
    case ColumnType::boolean:
        field.null = !of_kind<bool>(value);
        break;
    case ColumnType::byte:
        out = {static_cast<std::uint8_t>(whole(value, 0, 255))};
        break;
    case ColumnType::integer:
        out.resize(2);
        put16(out.data(), static_cast<std::uint16_t>(whole(value, -32768, 32767)));
        break;
    case ColumnType::long_integer:
        out.resize(4);
        put32(out.data(), static_cast<std::uint32_t>(whole(value, std::numeric_limits<std::int32_t>::min(),
                                                           std::numeric_limits<std::int32_t>::max())));
        break;
    case ColumnType::currency:
        out.resize(8);
        put64(out.data(), static_cast<std::uint64_t>(of_kind<Currency>(value).scaled));
        break;
    case ColumnType::single_real: {
        const double number = of_kind<double>(value);
        if (std::isfinite(number) && std::fabs(number) > std::numeric_limits<float>::max())
            throw basic::RunTimeError(6);
        out.resize(4);
        put_float(out.data(), static_cast<float>(number));
        break;
    }
    case ColumnType::double_real:
        out.resize(8);
        put_double(out.data(), of_kind<double>(value));
        break;
    case ColumnType::date:
        out.resize(8);
        put_double(out.data(), of_kind<basic::Date>(value).days);
        break;
    case ColumnType::text:
        encode_text_field(format, column, of_kind<std::string>(value), out);
        break;
    case ColumnType::numeric:
        encode_decimal(column, of_kind<Decimal>(value), out);
        break;
    default:
        out = of_kind<Bytes>(value);
        if (out.size() > column.length)
            throw basic::RunTimeError(3163);
        if (column.is_fixed() || column.type == ColumnType::guid)
            out.resize(column.length);
        break;
    }
    return field;
}

std::vector<std::uint8_t> encode_row(const Format& format, const TableDefinition& table,
                                     std::span<const StoredField> fields) {
    return encode_row(format, table, std::vector<StoredFieldView>(fields.begin(), fields.end()));
}

std::vector<std::uint8_t> encode_row(const Format& format, const TableDefinition& table,
                                     std::span<const StoredFieldView> fields) {
    const std::size_t width = format.row.count_size;
    std::vector<std::uint8_t> row;
    const auto put_number = [&](std::size_t at, std::size_t value) {
        row[at] = static_cast<std::uint8_t>(value);
        if (width == 2)
            row[at + 1] = static_cast<std::uint8_t>(value >> 8);
    };
    const auto append = [&](std::size_t value) {
        row.resize(row.size() + width);
        put_number(row.size() - width, value);
    };

    std::size_t fixed_end = width;
    for (const Column& column : table.columns)
        if (column.is_fixed() && column.type != ColumnType::boolean)
            fixed_end = std::max(fixed_end, width + column.fixed_offset + column.length);
    std::vector<std::uint8_t> mask((table.most_columns + 7u) / 8);
    // The place of a moved row is left in four bytes, so no row is shorter.
    if (table.variable_columns == 0 && fixed_end + mask.size() < 4)
        fixed_end = 4 - mask.size();

    append(table.most_columns);
    row.resize(fixed_end);
    std::vector<std::size_t> by_index(table.variable_columns, table.columns.size());
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        const Column& column = table.columns[i];
        if (!fields[i].null)
            mask[column.id / 8u] |= static_cast<std::uint8_t>(1 << column.id % 8);
        if (column.type == ColumnType::boolean)
            continue;
        if (!column.is_fixed())
            by_index[column.variable_index] = i;
        else if (!fields[i].null)
            std::copy(fields[i].bytes.begin(), fields[i].bytes.end(),
                      row.begin() + static_cast<std::ptrdiff_t>(width + column.fixed_offset));
    }
    if (table.variable_columns != 0) {
        std::vector<std::size_t> offsets;
        for (const std::size_t place : by_index) {
            offsets.push_back(row.size());
            if (place < fields.size() && !fields[place].null)
                row.insert(row.end(), fields[place].bytes.begin(), fields[place].bytes.end());
        }
        offsets.push_back(row.size());
        for (auto offset = offsets.rbegin(); offset != offsets.rend(); ++offset)
            append(*offset);
        if (format.row.jump_table)
            append_jumps(row, offsets, width + mask.size());
        append(table.variable_columns);
    }
    row.insert(row.end(), mask.begin(), mask.end());
    return row;
}

} // namespace tolva::jet
