#pragma once

#include "dao/recordset.h"

namespace tolva::bench {

/// Writes every column of the row under `AddNew` with something of its type, three notes among them, the way
/// a busy record looks: about 900 bytes. The same `id` gives the same row.
void write_made_up_row(dao::Recordset& set, int id);

} // namespace tolva::bench
