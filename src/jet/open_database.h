#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "jet/database.h"
#include "jet/file_pager.h"
#include "jet/stored_table.h"

namespace tolva::jet {

/// A file of tables over its pager. The catalog is itself a table, whose definition every file has on page 2.
class OpenDatabase final : public Database {
  public:
    static constexpr PageNumber catalog_page = 2;
    static constexpr PageNumber global_map_page = 1;

    OpenDatabase(files::FileSystem& disk, const std::string& path,
                 FilePager::Access access = FilePager::Access::write);

    const std::string& path() const override { return pager_.path(); }
    bool read_only() const override { return pager_.read_only(); }
    std::vector<std::string> table_names() const override;
    Table& table(const std::string& name) override { return stored_table(name); }
    bool has_pending_changes() const override { return pager_.dirty(); }
    void commit() override;
    void rollback() override;

    /// Any table, the system's included.
    StoredTable& stored_table(const std::string& name);
    struct Entry {
        std::string name;
        PageNumber page = 0;
        bool is_system = false;
        std::vector<std::uint8_t> properties;
    };
    const std::vector<Entry>& catalog() const { return catalog_; }
    FilePager& pager() { return pager_; }
    PageSpace& space() { return space_; }

  private:
    void read_catalog();
    std::vector<bool> used_pages();

    FilePager pager_;
    PageSpace space_{pager_, [this] { return used_pages(); }};
    std::vector<Entry> catalog_;
    std::map<PageNumber, std::unique_ptr<StoredTable>> tables_;
};

} // namespace tolva::jet
