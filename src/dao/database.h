#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "basic/date.h"
#include "dao/recordset.h"
#include "files/file_system.h"
#include "jet/database.h"

namespace tolva::dao {

class DBEngine;

/// One open store, as the logic sees it. It outlives its sets; what was not made durable when it goes is
/// lost.
class Database {
  public:
    Database(DBEngine& engine, std::unique_ptr<jet::Database> file);
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    /// `source` is a table's name, in brackets or without (a table-type set: rows in page and slot order), or
    /// a query text (an updatable dynaset; its fields are all the table's columns, whatever the query lists).
    /// The set stands on its first row when there is one.
    /// The errors are those of the query language and of the store.
    std::unique_ptr<Recordset> OpenRecordset(const std::string& source);

    /// Names that conditions may use though a table of this file lacks the columns, as a file of an earlier
    /// make may: there they are null in every row.
    void set_optional_columns(std::vector<std::string> columns) { optional_columns_ = std::move(columns); }

    const std::string& Name() const { return file_->path(); }
    jet::Database& file() { return *file_; }

  private:
    friend class Recordset;
    /// Called by a set ahead of each change, so that what another store has pending becomes durable first.
    void about_to_change();
    /// Grows with each change, so that a set knows when what it holds of a row is out of date.
    std::size_t changes() const { return changes_; }
    int current_year() const;
    std::optional<basic::Date> moment() const;

    DBEngine& engine_;
    std::unique_ptr<jet::Database> file_;
    std::size_t changes_ = 0;
    std::vector<std::string> optional_columns_;
};

class Workspace {
  public:
    explicit Workspace(DBEngine& engine) : engine_(engine) {}

    /// Shared, read and write. Errors as jet::Database::open.
    std::unique_ptr<Database> OpenDatabase(const std::string& path);

  private:
    DBEngine& engine_;
};

/// The engine: its default workspace, and the one rule that spans stores. At any moment at most one store has
/// changes that are not durable: a change to another store commits it first, and `commit` makes the rest
/// durable. So the order of change is the order on disk.
class DBEngine {
  public:
    /// `current_year` completes dates that texts give without a year, and `moment` is what new rows get from
    /// the defaults Date() and Now(); without it they start as null. Both are asked anew each time.
    DBEngine(files::FileSystem& disk, std::function<int()> current_year,
             std::function<basic::Date()> moment = {});
    DBEngine(const DBEngine&) = delete;
    DBEngine& operator=(const DBEngine&) = delete;

    /// Item 0 is the only one; error 3265 for others.
    Workspace& Workspaces(int item);

    void commit();

  private:
    friend class Database;
    friend class Workspace;

    files::FileSystem& disk_;
    std::function<int()> current_year_;
    std::function<basic::Date()> moment_;
    Workspace default_workspace_{*this};
    Database* pending_ = nullptr;
};

} // namespace tolva::dao
