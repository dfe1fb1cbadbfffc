#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "files/file_system.h"

namespace tolva::files {

/// Backslashes become slashes, doubled ones single, a closing one goes (but for the root's own).
std::string with_slashes(std::string_view path);

/// The folder of a slashed path: "" for a plain name, "/" or "C:/" for a name in a root.
std::string folder_of(std::string_view path);
std::string name_of(std::string_view path);
std::string join(std::string_view folder, std::string_view name);

/// What `resolve` promises, for a file system that knows how to ask for an exact path and to list a folder.
class CaseBlindLookup {
  public:
    virtual ~CaseBlindLookup() = default;
    virtual bool exact(const std::string& path) const = 0;
    /// Empty for a folder that cannot be read.
    virtual std::vector<std::string> entries(const std::string& folder) const = 0;

    /// `path` slashed; parts that exist in another letter case take that case, the rest stays.
    std::string find(const std::string& path) const;
    /// The same for the folder alone: the last part stays as spelled.
    std::string find_folder(const std::string& path) const {
        return join(find(folder_of(path)), name_of(path));
    }
};

/// The failure of one operation on one path, as the text of error `number`, the path and the reason.
[[noreturn]] void fail(int number, const std::string& path, const std::string& reason);

} // namespace tolva::files
