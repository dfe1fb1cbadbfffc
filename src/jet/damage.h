#pragma once

#include <cstdint>
#include <string>

namespace tolva::jet {

/// Error 3049 for a file whose bytes make no sense: names the file, the page and what is wrong with it.
[[noreturn]] void damaged(const std::string& path, std::uint32_t page, const std::string& reason);

/// Error 3027, with the reason why this file or table may be read only.
[[noreturn]] void not_writable(const std::string& path, const std::string& reason);

} // namespace tolva::jet
