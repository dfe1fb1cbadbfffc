#pragma once

#include <memory>
#include <string>
#include <vector>

#include "files/file_system.h"
#include "jet/format.h"
#include "jet/schema.h"
#include "jet/table.h"

namespace tolva::jet {

/// An open .mdb file. Nothing is written but through `commit`, which makes all pending changes durable as one
/// (see the pager); what is pending when the object goes is dropped.
class Database {
  public:
    virtual ~Database() = default;

    /// Opens for reading and writing where the system allows it, else for reading alone. Nobody else opens
    /// the file for writing while the object lives.
    /// Errors: 3024 absent, 3343 not such a file, 3031 password or encoded pages, 3049 damaged (the text
    /// names file, page and reason), 3045 held by another writer or another engine.
    static std::unique_ptr<Database> open(files::FileSystem& disk, const std::string& path);

    /// Opens for reading alone, also while another process writes: the file as its last whole commit left it
    /// at this moment, whatever becomes of it. Errors as above.
    static std::unique_ptr<Database> open_to_read(files::FileSystem& disk, const std::string& path);

    /// Makes a new file with these tables, empty. Error 58 when the path exists.
    static void create(files::FileSystem& disk, const std::string& path,
                       const std::vector<TableSchema>& tables,
                       Format::Version version = Format::Version::jet4);

    virtual const std::string& path() const = 0;
    virtual bool read_only() const = 0;

    /// The user's tables (no system tables), by name.
    virtual std::vector<std::string> table_names() const = 0;
    /// Error 3078 when absent. The table lives as long as the database.
    virtual Table& table(const std::string& name) = 0;

    virtual bool has_pending_changes() const = 0;
    virtual void commit() = 0;
    virtual void rollback() = 0;
};

} // namespace tolva::jet
