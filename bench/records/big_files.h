#pragma once

#include <string>

#include "basic/date.h"
#include "files/file_system.h"

namespace tolva::bench {

/// The day around which everything in the files happens.
inline constexpr basic::DateParts day{2026, 11, 20, 10, 0, 0};

/// Fills the four empty customer files of a data folder with `rows` made-up customers each, of the width that
/// real ones have. The same number gives the same files.
void fill_customer_files(files::FileSystem& disk, const std::string& data_folder, int rows);

} // namespace tolva::bench
