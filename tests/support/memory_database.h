#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "basic/run_time_error.h"
#include "basic/text.h"
#include "jet/database.h"
#include "support/memory_table.h"

namespace tolva::support {

/// A store of one table in memory. It notes each commit by its name in a log that several stores may share.
class MemoryDatabase : public jet::Database {
  public:
    MemoryDatabase(std::string path, jet::TableSchema schema, std::vector<std::string>& log)
        : only_table(std::move(schema)), path_(std::move(path)), log_(log) {}

    const std::string& path() const override { return path_; }
    bool read_only() const override { return is_read_only; }
    std::vector<std::string> table_names() const override { return {only_table.schema().name}; }

    jet::Table& table(const std::string& name) override {
        if (!basic::equal_names(name, only_table.schema().name))
            throw basic::RunTimeError(3078, name);
        return only_table;
    }

    bool has_pending_changes() const override { return only_table.changes != committed_; }
    void commit() override {
        log_.push_back(path_ + " " + std::to_string(only_table.changes - committed_));
        committed_ = only_table.changes;
    }
    void rollback() override { committed_ = only_table.changes; }

    MemoryTable only_table;
    bool is_read_only = false;

  private:
    std::string path_;
    std::vector<std::string>& log_;
    int committed_ = 0;
};

} // namespace tolva::support
