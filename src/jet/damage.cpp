#include "jet/damage.h"

#include "basic/run_time_error.h"

namespace tolva::jet {

void damaged(const std::string& path, std::uint32_t page, const std::string& reason) {
    throw basic::RunTimeError::with_text(3049, basic::error_text(3049, path) + "  Page " +
                                                   std::to_string(page) + ": " + reason + ".");
}

void not_writable(const std::string& path, const std::string& reason) {
    throw basic::RunTimeError::with_text(3027, basic::error_text(3027) + "  '" + path + "': " + reason + ".");
}

} // namespace tolva::jet
