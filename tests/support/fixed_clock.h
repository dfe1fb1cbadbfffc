#pragma once

#include "platform/clock.h"

namespace tolva::support {

/// A clock that stands where the test sets it.
class FixedClock final : public platform::Clock {
  public:
    explicit FixedClock(basic::DateParts moment) { set(moment); }

    void set(basic::DateParts moment) { moment_ = basic::make_moment(moment); }
    void advance_minutes(double minutes) { moment_ = basic::add_days(moment_, minutes / (24 * 60)); }
    basic::Date moment() const override { return moment_; }

  private:
    basic::Date moment_;
};

} // namespace tolva::support
