#include <algorithm>

#include "basic/text.h"
#include "files/path.h"
#include "jet/column_properties.h"
#include "jet/database.h"
#include "jet/definition_writer.h"
#include "jet/header_page.h"
#include "jet/memory_pager.h"
#include "jet/table_writer.h"

namespace tolva::jet {
namespace {

/// The moment that the file says it was born. The security ids below are masked by it, so that it is the same
/// for all Jet 4 files made here; those of Jet 3 have them plain.
constexpr double birth = 38143.544644212961;
struct SecurityIds {
    Bytes admin, engine, users;
};
const SecurityIds jet4_ids = {{0xa6, 0x33}, {0xa7, 0x31}, {0xa7, 0x33}};
const SecurityIds jet3_ids = {{0x03, 0x01}, {0x02, 0x03}, {0x02, 0x01}};

constexpr std::int64_t root_container = 0x0f00'0000;
constexpr std::int64_t tables_container = 0x0f00'0001;
constexpr std::int64_t databases_container = 0x0f00'0002;
constexpr std::int64_t relations_container = 0x0f00'0003;
constexpr std::int64_t database_object = 0x1000'0000;
constexpr std::int64_t first_own_container = -0x8000'0000LL;

constexpr std::int64_t system_flag = -0x8000'0000LL;
constexpr std::int64_t table_type = 1, database_type = 2, container_type = 3;
constexpr std::int64_t every_right = 0x000f'ffff;

ColumnSchema column(const char* name, ColumnType type, int size = 0) {
    ColumnSchema out;
    out.name = name;
    out.type = type;
    out.size = size;
    return out;
}

IndexSchema index(const char* name, std::vector<const char*> columns) {
    IndexSchema out;
    out.name = name;
    for (const char* part : columns)
        out.parts.push_back({part, false});
    return out;
}

/// The four tables that every file has, on pages 2 to 5.
std::vector<TableSchema> system_tables(const Format& format) {
    using T = ColumnType;
    const int longest_bytes = format.version == Format::Version::jet4 ? 510 : 255;
    TableSchema objects{
        "MSysObjects",
        {column("Id", T::long_integer), column("ParentId", T::long_integer), column("Name", T::text, 255),
         column("Type", T::integer), column("DateCreate", T::date), column("DateUpdate", T::date),
         column("Owner", T::binary, longest_bytes), column("Flags", T::long_integer),
         column("Database", T::memo), column("Connect", T::memo), column("ForeignName", T::text, 255),
         column("RmtInfoShort", T::binary, longest_bytes), column("RmtInfoLong", T::ole),
         column("Lv", T::ole), column("LvProp", T::ole), column("LvModule", T::ole),
         column("LvExtra", T::ole)},
        {index("ParentIdName", {"ParentId", "Name"}), index("Id", {"Id"})}};
    objects.indexes[0].unique = true;
    objects.indexes[1].primary = true;
    TableSchema rights{"MSysACEs",
                       {column("ObjectId", T::long_integer), column("SID", T::binary, longest_bytes),
                        column("ACM", T::long_integer), column("FInheritable", T::boolean)},
                       {index("ObjectId", {"ObjectId"})}};
    rights.indexes[0].required = true;
    TableSchema queries{"MSysQueries",
                        {column("ObjectId", T::long_integer), column("Attribute", T::byte),
                         column("Order", T::binary, longest_bytes), column("Name1", T::text, 255),
                         column("Name2", T::text, 255), column("Expression", T::memo),
                         column("Flag", T::integer), column("LvExtra", T::long_integer)},
                        {index("ObjectIdAttribute", {"ObjectId", "Attribute", "Order"})}};
    queries.indexes[0].unique = true;
    TableSchema relations{"MSysRelationships",
                          {column("szRelationship", T::text, 255), column("grbit", T::long_integer),
                           column("ccolumn", T::long_integer), column("icolumn", T::long_integer),
                           column("szObject", T::text, 255), column("szColumn", T::text, 255),
                           column("szReferencedObject", T::text, 255),
                           column("szReferencedColumn", T::text, 255)},
                          {index("szRelationship", {"szRelationship"}), index("szObject", {"szObject"}),
                           index("szReferencedObject", {"szReferencedObject"})}};
    for (IndexSchema& each : relations.indexes)
        each.ignore_nulls = true;
    return {objects, rights, queries, relations};
}

class FileBuilder {
  public:
    FileBuilder(const Format& format, const std::string& path)
        : format_(format), ids_(format.version == Format::Version::jet4 ? jet4_ids : jet3_ids),
          pager_(format, path), space_(pager_) {}

    std::vector<std::uint8_t> build(const std::vector<TableSchema>& tables) {
        start();
        const auto own = system_tables(format_);
        MapPages system_maps(pager_, space_);
        for (PageNumber page = 0; page < own.size(); ++page)
            definitions_.push_back(write_table_definition(pager_, space_, system_maps,
                                                          first_definition + page, own[page], true));
        TableWriter objects(pager_, space_, definitions_[0]);
        TableWriter rights(pager_, space_, definitions_[1]);
        objects_ = &objects;
        rights_ = &rights;

        add_object(tables_container, root_container, "Tables", container_type, system_flag);
        add_object(databases_container, root_container, "Databases", container_type, system_flag);
        add_object(relations_container, root_container, "Relationships", container_type, system_flag);
        add_object(database_object, databases_container, "MSysDb", database_type, system_flag);
        for (PageNumber page = 0; page < own.size(); ++page)
            add_object(first_definition + page, tables_container, own[page].name, table_type, system_flag);
        std::int64_t id = first_own_container;
        for (const char* name : {"DataAccessPages", "Forms", "Modules", "Reports", "Scripts", "SysRel"})
            add_object(id++, root_container, name, container_type, 0);
        for (const TableSchema& table : tables)
            add_table(table);
        return pager_.content();
    }

  private:
    static constexpr PageNumber first_definition = 2;

    /// The header, the map of free pages with an unused one behind it, and room for the four definitions.
    void start() {
        for (PageNumber page = 0; page < 6; ++page)
            pager_.append();
        write_header(format_, pager_.modify(0), birth);
        DataPageEditor::start(format_, pager_.modify(1), 1);
        DataPageEditor maps(format_, pager_.path(), 1, pager_.modify(1));
        std::vector<std::uint8_t> map(format_.map.inline_size, 0xff);
        std::fill_n(map.begin(), 5, std::uint8_t{0});
        map[5] = 0xc0; // all free but the first six pages
        maps.put(0, map, 0);
        std::fill(map.begin(), map.end(), std::uint8_t{0});
        maps.put(1, map, 0);
    }

    void add_object(std::int64_t id, std::int64_t parent, const std::string& name, std::int64_t type,
                    std::int64_t flags, Value properties = {}) {
        Row row(definitions_[0].columns.size());
        row[0] = id;
        row[1] = parent;
        row[2] = name;
        row[3] = type;
        row[4] = row[5] = basic::Date{birth};
        row[6] = flags == system_flag ? ids_.engine : ids_.admin;
        row[7] = flags;
        row[14] = std::move(properties);
        objects_->insert(row);
        for (const Bytes& who : {ids_.admin, ids_.users})
            rights_->insert({id, who, every_right, type == container_type});
    }

    void add_table(const TableSchema& table) {
        const PageNumber page = space_.allocate();
        MapPages maps(pager_, space_);
        write_table_definition(pager_, space_, maps, page, table, false);
        add_object(page, tables_container, table.name, table_type, 0,
                   table.properties.empty() ? write_column_properties(table, pager_.format())
                                            : table.properties);
    }

    const Format& format_;
    const SecurityIds& ids_;
    MemoryPager pager_;
    PageSpace space_;
    std::vector<TableDefinition> definitions_;
    TableWriter* objects_ = nullptr;
    TableWriter* rights_ = nullptr;
};

} // namespace

void Database::create(files::FileSystem& disk, const std::string& path,
                      const std::vector<TableSchema>& tables, Format::Version version) {
    if (disk.exists(path))
        files::fail(58, path, "");
    const Format& format = version == Format::Version::jet4 ? jet4_format : jet3_format;
    files::replace_whole(disk, path, FileBuilder(format, disk.resolve(path)).build(tables));
}

} // namespace tolva::jet
