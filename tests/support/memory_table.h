#pragma once

#include <algorithm>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "basic/run_time_error.h"
#include "basic/text.h"
#include "jet/index_key.h"
#include "jet/table.h"
#include "jet/text_order.h"

namespace tolva::support {

/// A table in memory with the rules of a stored one: rows on pages and in slots that are not used twice,
/// checks ahead of each change. It counts how often each column was decoded.
class MemoryTable : public jet::Table {
  public:
    explicit MemoryTable(jet::TableSchema schema, std::uint8_t rows_of_page = 10)
        : decoded(schema.columns.size()), schema_(std::move(schema)), rows_of_page_(rows_of_page) {}

    const jet::TableSchema& schema() const override { return schema_; }

    std::optional<std::size_t> find_column(const std::string& name) const override {
        for (std::size_t i = 0; i < schema_.columns.size(); ++i)
            if (basic::equal_names(schema_.columns[i].name, name))
                return i;
        return std::nullopt;
    }

    std::uint32_t row_count() const override { return static_cast<std::uint32_t>(rows_.size()); }

    jet::RowId insert(const jet::Row& row) override {
        check(row, nullptr);
        const jet::RowId id = next_;
        if (++next_.slot == rows_of_page_)
            next_ = {next_.page + 1, 0};
        rows_[id] = row;
        ++changes;
        return id;
    }

    void draw_auto_numbers(jet::Row&) override {}

    void update(jet::RowId id, const jet::Row& row) override {
        stored(id);
        check(row, &id);
        rows_[id] = row;
        ++changes;
    }

    void erase(jet::RowId id) override {
        stored(id);
        rows_.erase(id);
        ++changes;
    }

    jet::Row read(jet::RowId id) const override { return stored(id); }
    bool exists(jet::RowId id) const override { return rows_.count(id) != 0; }

    std::unique_ptr<jet::RowSeeker> reader(jet::RowId id) const override {
        auto seeker = std::make_unique<Seeker>(*this);
        seeker->go_to(id);
        return seeker;
    }

    std::unique_ptr<jet::RowCursor> scan() const override {
        ++scans;
        return std::make_unique<Cursor>(*this);
    }

    std::vector<jet::RowId> find(std::size_t index, std::span<const jet::Value> values) const override {
        ++finds;
        std::vector<jet::RowId> found;
        for (const auto& [id, row] : rows_)
            if (starts_with(row, schema_.indexes[index], values))
                found.push_back(id);
        return found;
    }

    std::optional<std::vector<jet::RowId>> find_by_key(std::size_t index,
                                                       const KeyTest& passes) const override {
        ++key_walks;
        std::vector<jet::KeyPart> parts;
        for (const auto& part : schema_.indexes[index].parts)
            parts.push_back({schema_.columns[*find_column(part.column)].type, part.descending});
        std::vector<jet::RowId> found;
        for (const auto& [id, row] : rows_) {
            std::vector<jet::Value> values;
            for (const auto& part : schema_.indexes[index].parts)
                values.push_back(row[*find_column(part.column)]);
            constexpr std::size_t longest = 510;
            const jet::Key key = jet::make_key(parts, values, longest);
            if (key.size() >= longest || passes(key))
                found.push_back(id);
        }
        return found;
    }

    mutable std::vector<int> decoded;
    mutable int scans = 0, finds = 0, key_walks = 0;
    int changes = 0;

  private:
    using Rows = std::map<jet::RowId, jet::Row>;

    class Cursor : public jet::RowCursor {
      public:
        explicit Cursor(const MemoryTable& table) : table_(table) {}

        jet::Value value(std::size_t column) const override {
            ++table_.decoded[column];
            return at_->second[column];
        }
        bool next() override {
            at_ = started_ ? std::next(at_) : table_.rows_.begin();
            started_ = true;
            return at_ != table_.rows_.end();
        }
        jet::RowId id() const override { return at_->first; }

      private:
        const MemoryTable& table_;
        Rows::const_iterator at_;
        bool started_ = false;
    };

    class Seeker : public jet::RowSeeker {
      public:
        explicit Seeker(const MemoryTable& table) : table_(table) {}

        void go_to(jet::RowId id) override { row_ = &table_.stored(id); }
        jet::Value value(std::size_t column) const override {
            ++table_.decoded[column];
            return (*row_)[column];
        }

      private:
        const MemoryTable& table_;
        const jet::Row* row_ = nullptr;
    };

    const jet::Row& stored(jet::RowId id) const {
        const auto found = rows_.find(id);
        if (found == rows_.end())
            throw basic::RunTimeError(3167);
        return found->second;
    }

    static bool same(const jet::Value& a, const jet::Value& b) {
        const auto* text_a = std::get_if<std::string>(&a);
        const auto* text_b = std::get_if<std::string>(&b);
        if (text_a == nullptr || text_b == nullptr)
            return a == b;
        return jet::compare_text(*text_a, *text_b, jet::TextOrder::general_jet4) == 0;
    }

    bool starts_with(const jet::Row& row, const jet::IndexSchema& index,
                     std::span<const jet::Value> values) const {
        for (std::size_t i = 0; i < values.size(); ++i)
            if (!same(row[*find_column(index.parts[i].column)], values[i]))
                return false;
        return true;
    }

    void check(const jet::Row& row, const jet::RowId* own) const {
        for (std::size_t i = 0; i < schema_.columns.size(); ++i) {
            const jet::ColumnSchema& column = schema_.columns[i];
            if (column.required && jet::is_null(row[i]))
                throw basic::RunTimeError(3314, column.name);
            const auto* text = std::get_if<std::string>(&row[i]);
            if (text == nullptr)
                continue;
            if (text->empty() && !column.zero_length)
                throw basic::RunTimeError(3315, column.name);
            const bool sized = column.type == jet::ColumnType::text;
            if (sized && basic::length(*text) > static_cast<std::size_t>(column.size))
                throw basic::RunTimeError(3163);
        }
        for (const jet::IndexSchema& index : schema_.indexes) {
            if (!index.unique)
                continue;
            std::vector<jet::Value> values;
            for (const auto& part : index.parts)
                values.push_back(row[*find_column(part.column)]);
            for (const auto& [id, other] : rows_)
                if ((own == nullptr || !(id == *own)) && starts_with(other, index, values))
                    throw basic::RunTimeError(3022);
        }
    }

    jet::TableSchema schema_;
    std::uint8_t rows_of_page_;
    jet::RowId next_{1, 0};
    Rows rows_;
};

} // namespace tolva::support
