#pragma once

#include <optional>

#include "jet/stored_table.h"

namespace tolva::jet {

/// Decodes the columns of one row, whose page it holds.
class StoredRow final : public RowSeeker {
  public:
    explicit StoredRow(const StoredTable& table) : table_(table) {}

    void go_to(RowId id) override;
    void stand_on(Record record, PageNumber page);
    Value value(std::size_t column) const override;
    void read_into(std::size_t column, Value& into) const override;

  private:
    const StoredTable& table_;
    Record record_;
    PageNumber page_ = 0;
    std::optional<RowView> view_;
};

/// Walks a table's pages in ascending order, and each page's slots.
class TableScan final : public RowCursor {
  public:
    explicit TableScan(const StoredTable& table);

    bool next() override;
    RowId id() const override { return id_; }
    Value value(std::size_t column) const override { return row_.value(column); }
    void read_into(std::size_t column, Value& into) const override { row_.read_into(column, into); }

  private:
    void reload();
    bool next_page();

    const StoredTable& table_;
    std::vector<PageNumber> pages_;
    std::size_t place_ = 0; ///< of the page after the current one
    PageRef page_;
    std::optional<DataPageView> view_;
    PageNumber number_ = 0;
    std::size_t slot_ = 0; ///< the next one to look at
    std::uint64_t version_;
    RowId id_;
    StoredRow row_;
};

} // namespace tolva::jet
