#include "platform/clock.h"

#include <ctime>

namespace tolva::platform {

basic::Date SystemClock::moment() const {
    const std::time_t seconds = std::time(nullptr);
    // One thread only, so the shared result of localtime is safe, and it exists on every platform.
    const std::tm* local = std::localtime(&seconds);
    return basic::make_moment({local->tm_year + 1900, local->tm_mon + 1, local->tm_mday, local->tm_hour,
                               local->tm_min, local->tm_sec});
}

} // namespace tolva::platform
