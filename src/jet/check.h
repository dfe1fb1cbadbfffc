#pragma once

#include <string>
#include <vector>

#include "jet/database.h"

namespace tolva::jet {

/// Looks at every page of an open file: that each belongs to one owner or is free, and once; that maps, page
/// heads and counters say what is there; that every row and long value can be read whole; that every index is
/// in order and names each row of its table under the key that the row's values have. Pending changes count.
/// One line for each finding, with file, page and reason; none for a good file. It changes nothing.
std::vector<std::string> check(Database& database);

} // namespace tolva::jet
