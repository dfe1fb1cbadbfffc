#pragma once

#include <string>

#include "files/file_system.h"

namespace tolva::data {

/// Copies an agent's files as they stood at one moment, while the program may be running: `folder` is a
/// program folder (what lies in its data/ and letters/) or a data folder itself (what lies in it). No commit
/// begins while the files are read; each .mdb is copied as its last whole commit left it. Nothing is copied
/// that belongs to a run of the program or to a change under way.
///
/// `target` is made when absent, and must be empty: error 75. Error 3024 when one of the seven stores is
/// missing: then nothing is copied. Returns how many files were copied, all of them synced.
std::size_t back_up(files::FileSystem& disk, const std::string& folder, const std::string& target);

} // namespace tolva::data
