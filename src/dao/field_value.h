#pragma once

#include <string>
#include <utility>

#include "jet/value.h"

namespace tolva::dao {

/// What a field holds, with the conversions that the logic uses. They fail as the language's own do: null
/// gives error 94, text that is no number, date or yes/no gives 13, and so do bytes.
class FieldValue {
  public:
    FieldValue() = default;
    /// `current_year` completes a text that is a date without a year.
    explicit FieldValue(jet::Value value, int current_year = 2000)
        : value_(std::move(value)), current_year_(current_year) {}

    bool is_null() const { return jet::is_null(value_); }
    const jet::Value& raw() const { return value_; }

    /// The string form: dates in the platform's short form, numbers up to 15 digits, yes/no "True"/"False".
    std::string text() const;
    /// A yes is -1, a date its days; text goes through the strict conversion.
    double number() const;
    bool yes_no() const;
    basic::Date date() const;

    /// Null and "" alike: how the screens test for an empty field.
    bool is_null_or_empty() const;

  private:
    jet::Value value_;
    int current_year_ = 2000;
};

} // namespace tolva::dao
