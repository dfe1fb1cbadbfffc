#pragma once

#include "basic/date.h"

namespace tolva::platform {

/// The one source of today and now, in local time; tests set it.
class Clock {
  public:
    virtual ~Clock() = default;
    virtual basic::Date moment() const = 0;

    /// The day without a time.
    basic::Date today() const { return basic::day_of(moment()); }
    /// The time without a day, as the store keeps times.
    basic::Date now() const { return basic::time_of(moment()); }
};

/// The machine's wall clock.
class SystemClock final : public Clock {
  public:
    basic::Date moment() const override;
};

} // namespace tolva::platform
