#include "jet/open_database.h"

#include <algorithm>

#include "basic/run_time_error.h"
#include "basic/text.h"
#include "jet/check.h"
#include "jet/column_properties.h"
#include "jet/damage.h"

namespace tolva::jet {
namespace {

/// In the catalog: a local table, and the flags of one that is not the user's.
constexpr std::int64_t table_type = 1;
constexpr std::int64_t system_flags = 0x8000'0002;

std::int64_t number_of(const Value& value) {
    const auto* number = std::get_if<std::int64_t>(&value);
    return number ? *number : 0;
}

} // namespace

std::unique_ptr<Database> Database::open(files::FileSystem& disk, const std::string& path) {
    return std::make_unique<OpenDatabase>(disk, path, FilePager::Access::write);
}

std::unique_ptr<Database> Database::open_to_read(files::FileSystem& disk, const std::string& path) {
    return std::make_unique<OpenDatabase>(disk, path, FilePager::Access::read);
}

OpenDatabase::OpenDatabase(files::FileSystem& disk, const std::string& path, FilePager::Access access)
    : pager_(disk, path, access) {
    read_catalog();
    if (!pager_.was_cut_short())
        return;
    // Another program's writing was cut. Whether the file is whole all the same, only a look at it can tell.
    const std::vector<std::string> findings = check(*this);
    if (!findings.empty())
        throw basic::RunTimeError::with_text(
            3049, basic::error_text(3049, pager_.path()) +
                      "  Another program was cut short while it wrote: " + findings.front() + ".");
}

void OpenDatabase::read_catalog() {
    const StoredTable table(pager_, space_, "MSysObjects", read_table_definition(pager_, catalog_page));
    const auto column = [&](const char* name) {
        const auto found = table.find_column(name);
        if (!found)
            damaged(path(), catalog_page, std::string("the catalog has no column '") + name + "'");
        return *found;
    };
    const std::size_t id = column("Id"), name = column("Name"), type = column("Type"),
                      flags = column("Flags"), properties = column("LvProp");
    for (const auto row = table.scan(); row->next();) {
        if (number_of(row->value(type)) != table_type)
            continue;
        Entry entry;
        const Value name_value = row->value(name);
        if (const auto* text = std::get_if<std::string>(&name_value))
            entry.name = *text;
        // The object's number is its definition's page, in 24 bits.
        entry.page = static_cast<PageNumber>(number_of(row->value(id)) & 0x00ff'ffff);
        entry.is_system = (number_of(row->value(flags)) & system_flags) != 0;
        Value blob = row->value(properties);
        if (auto* bytes = std::get_if<Bytes>(&blob))
            entry.properties = std::move(*bytes);
        catalog_.push_back(std::move(entry));
    }
}

/// By the maps of all tables that can be read. A file whose map of free pages lies loses nothing by it.
std::vector<bool> OpenDatabase::used_pages() {
    std::vector<bool> used(pager_.page_count());
    const auto mark = [&](PageNumber page) {
        if (page < used.size())
            used[page] = true;
    };
    const auto mark_map = [&](RecordPlace place) {
        if (place.page == 0)
            return;
        mark(place.page);
        const UsageMap map(pager_, place, 0, UsageMap::Kind::owned);
        for (const PageNumber page : map.map_pages())
            mark(page);
        for (const PageNumber page : map.pages())
            mark(page);
    };
    for (const Entry& entry : catalog_) {
        try {
            const TableDefinition table = read_table_definition(pager_, entry.page);
            for (const PageNumber page : table.pages)
                mark(page);
            mark_map(table.owned_map);
            for (const RealIndex& index : table.real_indexes)
                mark_map(index.owned_map);
            for (const Column& column : table.columns)
                mark_map(column.owned_map);
        } catch (const basic::RunTimeError& error) {
            if (error.number() != 3049)
                throw;
        }
    }
    return used;
}

std::vector<std::string> OpenDatabase::table_names() const {
    std::vector<std::string> names;
    for (const Entry& entry : catalog_)
        if (!entry.is_system)
            names.push_back(entry.name);
    std::sort(names.begin(), names.end());
    return names;
}

StoredTable& OpenDatabase::stored_table(const std::string& name) {
    const std::string folded = basic::lower(name);
    const auto entry = std::find_if(catalog_.begin(), catalog_.end(),
                                    [&](const Entry& e) { return basic::lower(e.name) == folded; });
    if (entry == catalog_.end())
        throw basic::RunTimeError(3078, name);
    auto place = tables_.find(entry->page);
    if (place == tables_.end()) {
        TableDefinition definition = read_table_definition(pager_, entry->page);
        const auto rules = read_column_properties(entry->properties, pager_.format());
        for (Column& column : definition.columns) {
            const auto rule = rules.find(column.name);
            if (rule == rules.end())
                continue;
            column.required = rule->second.required;
            column.zero_length = rule->second.zero_length;
            column.default_value = rule->second.default_value;
        }
        auto table = std::make_unique<StoredTable>(pager_, space_, entry->name, std::move(definition));
        place = tables_.emplace(entry->page, std::move(table)).first;
    }
    return *place->second;
}

void OpenDatabase::commit() {
    pager_.commit();
    for (const auto& [page, table] : tables_)
        table->committed();
}

void OpenDatabase::rollback() {
    pager_.rollback();
    for (const auto& [page, table] : tables_)
        table->rolled_back();
}

} // namespace tolva::jet
