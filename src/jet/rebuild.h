#pragma once

#include <string>
#include <vector>

#include "files/file_system.h"

namespace tolva::jet {

/// Makes a new file of the same version with another file's tables: their columns, properties, indexes, rows
/// and the rows' order, and nothing of what deletions and changes have left behind. The other file is only
/// read; the new one has its name when all of it stands and has been compared.
///
/// Returns the names of what the new file lacks: stored queries, relationships and other things that are no
/// tables of the file itself.
///
/// Errors: 58 when `to` exists, 3027 when a table has an index in an order that we do not know, 3049 when the
/// other file is damaged, 3022 and its like when rows break a rule of an index.
std::vector<std::string> rebuild(files::FileSystem& disk, const std::string& from, const std::string& to);

} // namespace tolva::jet
