#pragma once

#include <array>
#include <string>
#include <string_view>

namespace tolva::basic {

/// A moment as the store keeps it: days since 1899-12-30, the time of day as the fraction. Before that day
/// the fraction still counts away from zero (-1.25 is 1899-12-29 06:00). No time zone.
struct Date {
    double days = 0;

    friend bool operator==(Date a, Date b) { return a.days == b.days; }
    friend bool operator<(Date a, Date b) { return a.days < b.days; }
};

/// The calendar reading of a Date (proleptic Gregorian, years 100 to 9999), rounded to the second.
struct DateParts {
    int year = 1899, month = 12, day = 30;
    int hour = 0, minute = 0, second = 0;
};

/// Years 100 to 9999, real months, days and times; anything else is error 5.
Date make_date(int year, int month, int day);
Date make_moment(const DateParts& parts);
int days_in_month(int year, int month);

/// Error 6 for a number of days outside the years 100 to 9999.
DateParts parts_of(Date date);

/// The date without its time, and the time alone (a Date on day zero).
Date day_of(Date date);
Date time_of(Date date);
/// Counts on in time, over day zero too. Error 6 outside the years 100 to 9999.
Date add_days(Date date, double days);

/// "January" to "December".
inline constexpr std::array<std::string_view, 12> month_names = {
    "January", "February", "March",     "April",   "May",      "June",
    "July",    "August",   "September", "October", "November", "December"};

/// The date test on a text, and its conversion. Month/day/year whatever the machine's locale; an impossible
/// month swaps with the day, and a year may also come first; years 00-29 are 20xx, 30-99 are 19xx; a date
/// without a year takes `current_year`, unless only a month and a year make a real date of it; a time alone
/// lies on day zero.
bool is_date(std::string_view text, int current_year);
/// Error 13 when `is_date` would say no.
Date to_date(std::string_view text, int current_year);

/// The platform's short form: "3/7/2026", a time as "8:30:00 AM", both with a blank between; day zero shows
/// its time alone, midnight its date alone. Errors as `parts_of`.
std::string date_to_text(Date date);

} // namespace tolva::basic
