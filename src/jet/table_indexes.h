#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "jet/index_key.h"
#include "jet/index_tree.h"
#include "jet/page_space.h"
#include "jet/table_definition.h"

namespace tolva::jet {

/// The pages of one real index, by its own map.
class MappedIndexPages final : public IndexPages {
  public:
    MappedIndexPages(Pager& pager, PageSpace& space, RecordPlace owned_map, PageNumber definition_page);

    const Format& format() const override { return pager_.format(); }
    std::string path() const override { return pager_.path(); }
    PageNumber page_count() const override { return pager_.page_count(); }
    PageRef read(PageNumber page) const override { return pager_.read(page); }
    std::span<std::uint8_t> modify(PageNumber page) override { return pager_.modify(page); }
    PageNumber allocate() override;
    void release(PageNumber page) override;

  private:
    Pager& pager_;
    PageSpace& space_;
    RecordPlace owned_map_;
    PageNumber definition_page_;
};

/// All real indexes of a table, kept equal to its rows.
class TableIndexes {
  public:
    /// For each real index the key of one row; nothing where the index leaves the row out.
    using Keys = std::vector<std::optional<Key>>;

    TableIndexes(Pager& pager, PageSpace& space, const TableDefinition& definition);

    /// Empty when rows can be written; else why not (a text order or a code page that is not known).
    const std::string& hindrance() const { return hindrance_; }
    /// Whether this index's keys are known to us.
    bool understands(std::size_t index) const { return understood_[index]; }
    /// Places of the columns that some index uses.
    const std::vector<std::size_t>& columns() const { return columns_; }

    /// `row` needs values for `columns()` only, as they are stored. 3058 when a key may not have nulls and
    /// has.
    Keys keys(std::span<const Value> row) const;
    /// The same without the test, for rows as they stand.
    Keys keys_as_stored(std::span<const Value> row) const;

    /// 3022 when a unique index has the key already. Keys equal to `old`'s are the row's own.
    void check_unique(const Keys& keys, const Keys* old, std::span<const Value> row) const;

    void insert(const Keys& keys, RowId row);
    void erase(const Keys& keys, RowId row);
    void update(const Keys& old, const Keys& keys, RowId row);

    /// What every key begins with whose first columns have these values.
    Key prefix(std::size_t index, std::span<const Value> values) const;
    IndexTree tree(std::size_t index, MappedIndexPages& pages) const;
    MappedIndexPages pages(std::size_t index) const;

  private:
    void add(std::size_t index, const Key& key, RowId row);

    Pager& pager_;
    PageSpace& space_;
    const TableDefinition& definition_;
    std::vector<std::vector<KeyPart>> parts_;
    std::vector<bool> understood_;
    std::vector<std::size_t> columns_;
    std::string hindrance_;
};

} // namespace tolva::jet
