#pragma once

#include <functional>
#include <optional>
#include <string>

#include "basic/date.h"
#include "dao/recordset.h"

namespace tolva::records {

/// The first and the last day of a span, as the query texts write them: "6/1/2005".
struct DateSpan {
    std::string start;
    std::string end;
};

/// The whole month of a day, and the whole month before it.
DateSpan month_of(basic::Date day);
DateSpan month_before(basic::Date day);

/// A view that asks which customers need attention: it clears the working mark of the rows of one query,
/// marks those of a second one that pass a test, and then selects on the mark. The marks stay in the table
/// until the next such view.
struct FollowUpView {
    const char* caption;
    std::string clearing_query;
    std::string candidate_query;
    std::string result_query;
    const char* mode;
    const char* nobody;
    /// The mark of a candidate that passes.
    std::function<std::optional<int>(const dao::Recordset& row)> mark;
};

/// The tests of the screens that tell no marks apart: 1 when either owner's birthday, or the next contact, is
/// near.
std::function<std::optional<int>(const dao::Recordset&)> either_birthday(basic::Date today);
std::function<std::optional<int>(const dao::Recordset&)> next_contact_within(double days, basic::Date today);

/// Whether this year's return of the day lies within the coming seven days, today and the seventh counting.
/// February 29 is taken as February 28 in every year; only this year is looked at.
bool birthday_within_a_week(const dao::FieldValue& birthday, basic::Date today);

/// Whether a date lies at most `days` from today on either side.
bool within_days(const dao::FieldValue& date, double days, basic::Date today);

} // namespace tolva::records
