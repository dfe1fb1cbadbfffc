#pragma once

#include "jet/page_space.h"
#include "jet/schema.h"
#include "jet/table_definition.h"

namespace tolva::jet {

/// Lays out small usage maps, one record after the other, on pages of their own.
class MapPages {
  public:
    MapPages(Pager& pager, PageSpace& space) : pager_(pager), space_(space) {}
    /// A new empty map.
    RecordPlace add();

  private:
    Pager& pager_;
    PageSpace& space_;
    PageNumber page_ = 0;
};

/// Writes the definition of a new table that begins on `page`, a page of zeros, with empty maps and empty
/// indexes. Columns get their ids in order. Text is in the order "General".
TableDefinition write_table_definition(Pager& pager, PageSpace& space, MapPages& maps, PageNumber page,
                                       const TableSchema& table, bool is_system);

} // namespace tolva::jet
