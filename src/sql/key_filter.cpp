#include "sql/key_filter.h"

#include <algorithm>
#include <string_view>

#include "jet/text_order.h"

namespace tolva::sql {

namespace {

/// Whether the index has the column's keys as they come, from the least up.
bool holds_ascending(const jet::Table& table, const jet::IndexSchema& index, std::size_t column) {
    return std::any_of(index.parts.begin(), index.parts.end(), [&](const jet::IndexSchema::Part& part) {
        return !part.descending && table.find_column(part.column) == column;
    });
}

std::string_view as_characters(std::span<const std::uint8_t> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

} // namespace

std::optional<KeyFilter> KeyFilter::make(const Condition& condition, const jet::Table& table,
                                         std::size_t index) {
    if (condition.op == Operator::like)
        return make_share(condition, table, table.schema().indexes[index]);
    if (condition.op != Operator::logical_and && condition.op != Operator::logical_or)
        return std::nullopt;

    KeyFilter filter;
    filter.kind_ = condition.op == Operator::logical_and ? Kind::all : Kind::any;
    for (const Condition& operand : condition.operands) {
        if (auto part = make(operand, table, index))
            filter.parts_.push_back(std::move(*part));
        else if (filter.kind_ == Kind::any)
            return std::nullopt;
    }
    if (filter.parts_.empty())
        return std::nullopt;
    return filter;
}

std::optional<KeyFilter> KeyFilter::make_share(const Condition& like, const jet::Table& table,
                                               const jet::IndexSchema& index) {
    const Condition& column = like.operands[0];
    // Of a memo the keys hold only the start.
    if (column.op != Operator::column || !like.pattern ||
        table.schema().columns[column.column].type != jet::ColumnType::text ||
        !holds_ascending(table, index, column.column))
        return std::nullopt;
    const std::string letters = like.pattern->certain_letters();
    if (letters.empty())
        return std::nullopt;
    KeyFilter filter;
    filter.share_ = jet::key_share(letters, table.schema().text_order);
    return filter;
}

bool KeyFilter::operator()(std::span<const std::uint8_t> key) const {
    const auto passes = [key](const KeyFilter& part) { return part(key); };
    switch (kind_) {
    case Kind::all:
        return std::all_of(parts_.begin(), parts_.end(), passes);
    case Kind::any:
        return std::any_of(parts_.begin(), parts_.end(), passes);
    default:
        return as_characters(key).find(as_characters(share_)) != std::string_view::npos;
    }
}

} // namespace tolva::sql
