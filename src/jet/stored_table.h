#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "jet/file_pager.h"
#include "jet/table.h"
#include "jet/table_definition.h"
#include "jet/table_writer.h"

namespace tolva::jet {

/// A table of an open file.
class StoredTable final : public Table {
  public:
    StoredTable(FilePager& pager, PageSpace& space, std::string name, TableDefinition definition);
    ~StoredTable() override;

    const TableSchema& schema() const override { return schema_; }
    std::optional<std::size_t> find_column(const std::string& name) const override;
    std::uint32_t row_count() const override;

    RowId insert(const Row& row) override;
    void draw_auto_numbers(Row& row) override;
    void update(RowId id, const Row& row) override;
    void change(RowId id, const Row& values, const std::vector<bool>& written) override;
    void erase(RowId id) override;

    Row read(RowId id) const override;
    bool exists(RowId id) const override;
    void expect(std::span<const RowId> coming) const override;
    std::unique_ptr<RowSeeker> reader(RowId id) const override;
    std::unique_ptr<RowCursor> scan() const override;
    std::vector<RowId> find(std::size_t index, std::span<const Value> values) const override;
    std::optional<std::vector<RowId>> find_by_key(std::size_t index, const KeyTest& passes) const override;

    const TableDefinition& definition() const { return definition_; }
    const TableIndexes& indexes() const { return writer_.indexes(); }

    /// What becomes of the lives of row ids with the changes of the file.
    void committed() { stored_lives_ = lives_; }
    void rolled_back() { lives_ = stored_lives_; }

  private:
    friend class StoredRow;
    friend class TableScan;

    /// Moves on whenever rows may have changed.
    std::uint64_t version() const { return changes_ + pager_.undo_count(); }
    std::vector<PageNumber> data_pages() const;
    RowId id_at(PageNumber page, std::uint8_t slot) const;
    /// The row's bytes, wherever it stands now; no page when there is no such row.
    Record find_row(RowId id) const;

    using Lives = std::map<std::pair<PageNumber, std::uint8_t>, std::uint16_t>;

    void check_writable() const;
    /// Whether the first columns of an index have these values in a row.
    bool matches(const RowReader& row, const RealIndex& index, std::span<const Value> values) const;
    std::optional<std::vector<RowId>> rows_named(const std::function<std::vector<RowId>()>& look) const;
    std::vector<RowId> find_by_scan(const RealIndex& index, std::span<const Value> values) const;

    FilePager& pager_;
    std::string name_;
    TableDefinition definition_;
    TableSchema schema_;
    TableWriter writer_;
    std::uint64_t changes_ = 0;
    /// Slots that have had more than one row since the file was opened.
    Lives lives_, stored_lives_;
};

} // namespace tolva::jet
