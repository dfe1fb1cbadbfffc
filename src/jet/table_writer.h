#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "jet/long_value.h"
#include "jet/record_store.h"
#include "jet/row_codec.h"
#include "jet/table_definition.h"
#include "jet/table_indexes.h"
#include "jet/value.h"

namespace tolva::jet {

/// Changes the rows of one table, with their long values, its indexes and its counters. Every check of a
/// change comes before its first write; what fails later is undone as a statement of the pager.
class TableWriter {
  public:
    TableWriter(Pager& pager, PageSpace& space, const TableDefinition& definition);

    struct Inserted {
        RecordPlace place;
        /// The slot was a tombstone: ids of the row that stood there must not name the new one.
        bool in_old_slot = false;
    };
    Inserted insert(const Row& row);
    /// See Table.
    void draw_auto_numbers(Row& row);
    void update(RecordPlace place, const Row& row);
    /// Stores only the columns that are `written`, and leaves all other bytes of the row's fields as they
    /// are. False, with nothing changed, when that touches a key or a long value or makes the row too long:
    /// then only `update` will do.
    bool change_plain(RecordPlace place, const Row& values, const std::vector<bool>& written);
    void erase(RecordPlace place);

    /// From now on rows stand in the order of their coming.
    void keep_order() { rows_.keep_order(); }

    const TableIndexes& indexes() const { return indexes_; }

  private:
    /// The records that make up one row: its header slot and, when it has moved, where it went.
    struct Standing {
        std::vector<RecordPlace> hops;
        std::vector<std::uint8_t> bytes;
    };
    Standing find(RecordPlace place) const;
    /// The stored values of the indexed columns of a row; null elsewhere.
    Row indexed_values(PageNumber where, std::span<const std::uint8_t> bytes) const;

    /// The same of a row that is about to be stored.
    Row stored_values(std::span<const StoredField> fields) const;

    void check_values(const Row& row) const;
    bool has_rule(const Column& column) const;
    void check_value(const Column& column, const Value& value) const;
    std::vector<StoredField> encode(const Row& row) const;
    std::vector<std::size_t> inside_limits(std::vector<StoredField>& fields) const;
    void statement(const std::function<void()>& change);
    void add_to_row_count(int difference);
    void write_long_values(std::vector<StoredField>& fields, std::span<const std::size_t> limits,
                           const RowView* old, PageNumber where);
    void erase_long_values(const RowView& row, PageNumber where);
    void store(const Standing& standing, std::span<const std::uint8_t> bytes);

    Pager& pager_;
    PageSpace& space_;
    const TableDefinition& definition_;
    TableIndexes indexes_;
    RecordStore rows_;
};

} // namespace tolva::jet
