#include "jet/table_indexes.h"

#include <algorithm>

#include "basic/run_time_error.h"
#include "jet/bytes.h"
#include "jet/damage.h"
#include "jet/text_codec.h"

namespace tolva::jet {
namespace {

/// How a column's values become keys; nothing for a type or a text order that is not known.
std::optional<KeyPart> key_part(const Format& format, const Column& column, bool descending) {
    KeyPart part;
    part.type = column.type;
    part.descending = descending;
    switch (column.type) {
    case ColumnType::boolean:
    case ColumnType::byte:
    case ColumnType::integer:
    case ColumnType::long_integer:
    case ColumnType::currency:
    case ColumnType::single_real:
    case ColumnType::double_real:
    case ColumnType::date:
    case ColumnType::binary:
    case ColumnType::guid:
    case ColumnType::numeric:
        return part;
    case ColumnType::text:
    case ColumnType::memo:
        if (const auto order = known_text_order(format, column.text_order, column.text_order_version)) {
            part.order = *order;
            return part;
        }
        return std::nullopt;
    default:
        return std::nullopt;
    }
}

} // namespace

MappedIndexPages::MappedIndexPages(Pager& pager, PageSpace& space, RecordPlace owned_map,
                                   PageNumber definition_page)
    : pager_(pager), space_(space), owned_map_(owned_map), definition_page_(definition_page) {}

PageNumber MappedIndexPages::allocate() {
    const PageNumber page = space_.allocate();
    UsageMap map(pager_, owned_map_, definition_page_, UsageMap::Kind::owned);
    space_.set(map, page, true);
    return page;
}

void MappedIndexPages::release(PageNumber page) {
    UsageMap map(pager_, owned_map_, definition_page_, UsageMap::Kind::owned);
    if (!map.contains(page))
        return; // by the map it is not this index's to give
    space_.set(map, page, false);
    space_.release(page);
}

TableIndexes::TableIndexes(Pager& pager, PageSpace& space, const TableDefinition& definition)
    : pager_(pager), space_(space), definition_(definition) {
    if (const Format& format = pager.format();
        format.character_size == 1 && !knows_code_page(format.code_page))
        hindrance_ = "texts are in code page " + std::to_string(format.code_page) +
                     ", which is not known, so rows can be read but not changed";
    for (const RealIndex& index : definition.real_indexes) {
        std::vector<KeyPart> parts;
        bool understood = true;
        for (const RealIndex::Part& part : index.parts) {
            const Column& column = definition.columns[part.column];
            columns_.push_back(part.column);
            const auto known = key_part(pager.format(), column, part.descending);
            if (known) {
                parts.push_back(*known);
                continue;
            }
            understood = false;
            if (hindrance_.empty())
                hindrance_ = "the order of the index over column '" + column.name +
                             "' is not known, so rows can be read but not changed";
        }
        parts_.push_back(std::move(parts));
        understood_.push_back(understood);
    }
    std::sort(columns_.begin(), columns_.end());
    columns_.erase(std::unique(columns_.begin(), columns_.end()), columns_.end());
}

MappedIndexPages TableIndexes::pages(std::size_t index) const {
    return {pager_, space_, definition_.real_indexes[index].owned_map, definition_.page};
}

IndexTree TableIndexes::tree(std::size_t index, MappedIndexPages& pages) const {
    const PageNumber root = definition_.real_indexes[index].root;
    if (root == 0 || root >= pager_.page_count())
        damaged(pager_.path(), definition_.page,
                "an index starts at page " + std::to_string(root) + ", which is not there");
    return {pages, root, definition_.page};
}

TableIndexes::Keys TableIndexes::keys_as_stored(std::span<const Value> row) const {
    Keys keys;
    for (std::size_t i = 0; i < parts_.size(); ++i) {
        const RealIndex& index = definition_.real_indexes[i];
        std::vector<Value> values;
        bool all_null = true;
        for (const RealIndex::Part& part : index.parts) {
            values.push_back(row[part.column]);
            all_null = all_null && is_null(values.back());
        }
        if (!understood_[i] || (all_null && index.ignores_nulls()))
            keys.emplace_back();
        else
            keys.emplace_back(make_key(parts_[i], values, pager_.format().longest_key));
    }
    return keys;
}

TableIndexes::Keys TableIndexes::keys(std::span<const Value> row) const {
    for (const RealIndex& index : definition_.real_indexes)
        for (const RealIndex::Part& part : index.parts)
            if (index.required() && is_null(row[part.column]))
                throw basic::RunTimeError(3058);
    return keys_as_stored(row);
}

void TableIndexes::check_unique(const Keys& keys, const Keys* old, std::span<const Value> row) const {
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const RealIndex& index = definition_.real_indexes[i];
        if (!index.unique() || !keys[i] || (old && (*old)[i] == keys[i]))
            continue;
        // Null equals nothing, itself included.
        const bool has_null = std::any_of(index.parts.begin(), index.parts.end(),
                                          [&](const auto& part) { return is_null(row[part.column]); });
        if (has_null)
            continue;
        MappedIndexPages own = pages(i);
        if (tree(i, own).contains(*keys[i]))
            throw basic::RunTimeError(3022);
    }
}

void TableIndexes::add(std::size_t index, const Key& key, RowId row) {
    MappedIndexPages own = pages(index);
    IndexTree entries = tree(index, own);
    const bool is_new = !entries.contains(key);
    entries.insert(key, row);
    if (!is_new)
        return;
    // Counts keys that were new when they came; it does not fall when they go.
    std::uint8_t* const counter =
        pager_.modify(definition_.page).data() + definition_.real_indexes[index].counter_offset;
    put32(counter, get32(counter) + 1);
}

void TableIndexes::insert(const Keys& keys, RowId row) {
    for (std::size_t i = 0; i < keys.size(); ++i)
        if (keys[i])
            add(i, *keys[i], row);
}

void TableIndexes::erase(const Keys& keys, RowId row) {
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (!keys[i])
            continue;
        MappedIndexPages own = pages(i);
        IndexTree entries = tree(i, own);
        if (entries.erase(*keys[i], row))
            continue;
        // Another program may have given the row a key that differs from ours; the entry names it all the
        // same.
        std::optional<Key> theirs;
        entries.walk([&](std::span<const std::uint8_t> key, RowId named) {
            if (named.page == row.page && named.slot == row.slot)
                theirs.emplace(key.begin(), key.end());
            return !theirs;
        });
        if (!theirs || !entries.erase(*theirs, row))
            damaged(pager_.path(), definition_.real_indexes[i].root,
                    "the index does not have the row in record " + std::to_string(row.slot) + " of page " +
                        std::to_string(row.page));
    }
}

void TableIndexes::update(const Keys& old, const Keys& keys, RowId row) {
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (old[i] == keys[i])
            continue;
        Keys gone(keys.size()), come(keys.size());
        gone[i] = old[i];
        come[i] = keys[i];
        erase(gone, row);
        insert(come, row);
    }
}

Key TableIndexes::prefix(std::size_t index, std::span<const Value> values) const {
    return search_prefix(std::span(parts_[index]).first(std::min(values.size(), parts_[index].size())),
                         values, pager_.format().longest_key);
}

} // namespace tolva::jet
