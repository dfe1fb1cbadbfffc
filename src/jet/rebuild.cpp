#include "jet/rebuild.h"

#include <cmath>

#include "basic/run_time_error.h"
#include "files/path.h"
#include "jet/bytes.h"
#include "jet/damage.h"
#include "jet/open_database.h"

namespace tolva::jet {
namespace {

/// How many rows are put into the new file before they leave memory.
constexpr std::size_t rows_at_once = 5000;

bool same(const Value& a, const Value& b) {
    const auto* one = std::get_if<double>(&a);
    const auto* other = std::get_if<double>(&b);
    return a == b || (one && other && std::isnan(*one) && std::isnan(*other));
}

class Rebuild {
  public:
    Rebuild(files::FileSystem& disk, const std::string& from, const std::string& to)
        : disk_(disk), old_(disk, from, FilePager::Access::read), path_(to) {}

    void run() {
        std::vector<TableSchema> schemas;
        for (const OpenDatabase::Entry* entry : tables()) {
            const StoredTable& table = old_.stored_table(entry->name);
            if (const std::string& why = table.indexes().hindrance(); !why.empty())
                not_writable(old_.path(), "in table '" + entry->name + "' " + why);
            schemas.push_back(table.schema());
            schemas.back().properties = entry->properties;
        }
        Database::create(disk_, path_, schemas, old_.pager().format().version);
        OpenDatabase file(disk_, path_);
        for (const OpenDatabase::Entry* entry : tables())
            copy_rows(old_.stored_table(entry->name), file, entry->name);
    }

    /// What the catalog holds besides tables, and the folders and notes that programs keep for themselves.
    std::vector<std::string> left_out() {
        StoredTable& catalog = old_.stored_table("MSysObjects");
        const auto name = catalog.find_column("Name"), type = catalog.find_column("Type");
        std::vector<std::string> names;
        if (!name || !type)
            return names;
        for (const auto row = catalog.scan(); row->next();) {
            constexpr std::int64_t table = 1, database = 2, folder = 3, note = -32757;
            const Value kind = row->value(*type), text = row->value(*name);
            const auto* number = std::get_if<std::int64_t>(&kind);
            const auto* word = std::get_if<std::string>(&text);
            if (!number || !word || word->starts_with("MSys"))
                continue;
            if (*number != table && *number != database && *number != folder && *number != note)
                names.push_back(*word);
        }
        return names;
    }

  private:
    std::vector<const OpenDatabase::Entry*> tables() const {
        std::vector<const OpenDatabase::Entry*> own;
        for (const OpenDatabase::Entry& entry : old_.catalog())
            if (!entry.is_system)
                own.push_back(&entry);
        return own;
    }

    void copy_rows(const StoredTable& from, OpenDatabase& file, const std::string& name) {
        // Rows that were there before a column became required are rows all the same, so the writer is told
        // no such rules.
        const TableDefinition definition =
            read_table_definition(file.pager(), file.stored_table(name).definition().page);
        TableWriter writer(file.pager(), file.space(), definition);
        writer.keep_order();
        const std::size_t columns = from.schema().columns.size();
        Row row(columns);
        std::size_t pending = 0;
        for (const auto old = from.scan(); old->next();) {
            for (std::size_t i = 0; i < columns; ++i)
                row[i] = old->value(i);
            writer.insert(row);
            if (++pending % rows_at_once == 0)
                file.commit();
        }
        copy_counter(from, file, definition.page);
        file.commit();
        compare(from, file.stored_table(name));
    }

    /// The last number that was drawn, which may be one of a row that is gone.
    void copy_counter(const StoredTable& from, OpenDatabase& file, PageNumber page) {
        const Format::Definition& d = old_.pager().format().definition;
        const PageRef source = old_.pager().read(from.definition().page);
        const auto target = file.pager().modify(page);
        for (const std::size_t at : {d.last_auto, d.auto_step})
            if (at != 0)
                put32(target.data() + at, get32(source->data() + at));
    }

    void compare(const StoredTable& from, const StoredTable& to) {
        const auto old = from.scan(), copy = to.scan();
        for (;;) {
            const bool more = old->next();
            bool equal = more == copy->next();
            for (std::size_t i = 0; more && equal && i < from.schema().columns.size(); ++i)
                equal = same(old->value(i), copy->value(i));
            if (!equal)
                damaged(path_, more ? old->id().page : 0,
                        "the new table '" + to.schema().name + "' does not hold what the old one does");
            if (!more)
                return;
        }
    }

    files::FileSystem& disk_;
    OpenDatabase old_;
    std::string path_;
};

} // namespace

std::vector<std::string> rebuild(files::FileSystem& disk, const std::string& from, const std::string& to) {
    const std::string target = disk.resolve(to);
    if (disk.exists(target))
        files::fail(58, target, "");
    const std::string unfinished = target + ".unfinished";
    if (disk.exists_exactly(unfinished))
        disk.remove(unfinished); // what an earlier cut left
    try {
        Rebuild work(disk, from, unfinished);
        work.run();
        auto left_out = work.left_out();
        disk.rename(unfinished, target);
        disk.sync_folder(files::folder_of(target));
        return left_out;
    } catch (...) {
        if (disk.exists_exactly(unfinished))
            disk.remove(unfinished);
        throw;
    }
}

} // namespace tolva::jet
