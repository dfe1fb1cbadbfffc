#include "files/path.h"

#include <algorithm>

#include "basic/run_time_error.h"
#include "basic/text.h"

namespace tolva::files {

std::string with_slashes(std::string_view path) {
    std::string out;
    out.reserve(path.size());
    for (const char raw : path) {
        const char c = raw == '\\' ? '/' : raw;
        // Two leading slashes stay: they name another machine.
        if (c == '/' && out.size() > 1 && out.back() == '/')
            continue;
        out += c;
    }
    const bool drive_root = out.size() == 3 && out[1] == ':';
    if (out.size() > 1 && out.back() == '/' && !drive_root)
        out.pop_back();
    return out;
}

std::string folder_of(std::string_view path) {
    const auto slash = path.rfind('/');
    if (slash == std::string_view::npos)
        return {};
    if (slash == 0)
        return "/";
    if (slash == 2 && path[1] == ':') // the root of a drive keeps its slash
        return std::string(path.substr(0, 3));
    return std::string(path.substr(0, slash));
}

std::string name_of(std::string_view path) {
    const auto slash = path.rfind('/');
    return std::string(slash == std::string_view::npos ? path : path.substr(slash + 1));
}

std::string join(std::string_view folder, std::string_view name) {
    std::string out(folder);
    if (!out.empty() && out.back() != '/')
        out += '/';
    return out.append(name);
}

std::string CaseBlindLookup::find(const std::string& path) const {
    if (path.empty() || exact(path))
        return path;
    const std::string above = folder_of(path);
    if (above == path)
        return path;
    const std::string folder = find(above);
    const std::string name = name_of(path);
    const std::string as_given = join(folder, name);
    if (exact(as_given))
        return as_given;

    const std::string wanted = basic::lower(name);
    std::vector<std::string> names = entries(folder);
    std::sort(names.begin(), names.end());
    for (const std::string& candidate : names)
        if (basic::lower(candidate) == wanted)
            return join(folder, candidate);
    return as_given;
}

void fail(int number, const std::string& path, const std::string& reason) {
    std::string text = basic::error_text(number) + ": '" + path + "'";
    if (!reason.empty())
        text += " (" + reason + ")";
    throw basic::RunTimeError::with_text(number, text);
}

} // namespace tolva::files
