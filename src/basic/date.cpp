#include "basic/date.h"

#include <cmath>

#include "basic/number.h"
#include "basic/run_time_error.h"

namespace tolva::basic {

namespace {

constexpr int first_year = 100, last_year = 9999;
constexpr int seconds_of_day = 24 * 60 * 60;

constexpr bool is_leap(int year) {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

/// Days from the first of January of year 1 to the first of January of `year`.
constexpr long days_before_year(int year) {
    const long years = year - 1;
    return years * 365 + years / 4 - years / 100 + years / 400;
}

constexpr int days_before_month(int year, int month) {
    constexpr int common[] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334};
    return common[month - 1] + (month > 2 && is_leap(year) ? 1 : 0);
}

constexpr long day_zero = days_before_year(1899) + days_before_month(1899, 12) + 29;

constexpr long day_number(int year, int month, int day) {
    return days_before_year(year) + days_before_month(year, month) + day - 1 - day_zero;
}

constexpr double first_day = static_cast<double>(day_number(first_year, 1, 1));
constexpr double last_day = static_cast<double>(day_number(last_year, 12, 31));

/// The whole day and the seconds in it, rounded; error 6 outside the calendar.
struct DayAndSecond {
    long day;
    int second;
};

DayAndSecond split(Date date) {
    double day = std::trunc(date.days);
    double second = std::floor(std::fabs(date.days - day) * seconds_of_day + 0.5);
    if (second >= seconds_of_day) {
        second = 0;
        day += 1;
    }
    if (!(day >= first_day && day <= last_day))
        throw RunTimeError(6);
    return {static_cast<long>(day), static_cast<int>(second)};
}

/// A day and a time of that day, put together as the store keeps them.
Date join(double day, double time) {
    return {day < 0 ? day - time : day + time};
}

std::string date_part_text(const DateParts& parts) {
    return std::to_string(parts.month) + "/" + std::to_string(parts.day) + "/" + std::to_string(parts.year);
}

std::string time_part_text(const DateParts& parts) {
    const auto two_digits = [](int number) { return (number < 10 ? ":0" : ":") + std::to_string(number); };
    const int hour = parts.hour % 12 == 0 ? 12 : parts.hour % 12;
    return std::to_string(hour) + two_digits(parts.minute) + two_digits(parts.second) +
           (parts.hour < 12 ? " AM" : " PM");
}

} // namespace

int days_in_month(int year, int month) {
    if (month < 1 || month > 12)
        throw RunTimeError(5);
    constexpr int common[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return common[month - 1] + (month == 2 && is_leap(year) ? 1 : 0);
}

Date make_date(int year, int month, int day) {
    if (year < first_year || year > last_year || day < 1 || day > days_in_month(year, month))
        throw RunTimeError(5);
    return {static_cast<double>(day_number(year, month, day))};
}

Date make_moment(const DateParts& parts) {
    if (parts.hour < 0 || parts.hour > 23 || parts.minute < 0 || parts.minute > 59 || parts.second < 0 ||
        parts.second > 59)
        throw RunTimeError(5);
    const double seconds = (parts.hour * 60.0 + parts.minute) * 60.0 + parts.second;
    return join(make_date(parts.year, parts.month, parts.day).days, seconds / seconds_of_day);
}

DateParts parts_of(Date date) {
    const DayAndSecond moment = split(date);
    const long days = moment.day + day_zero;

    DateParts parts;
    parts.year = static_cast<int>(days * 400 / 146097) + 1; // 146097 days are 400 years; a year off at most
    while (days_before_year(parts.year) > days)
        --parts.year;
    while (days_before_year(parts.year + 1) <= days)
        ++parts.year;
    const int day_of_year = static_cast<int>(days - days_before_year(parts.year));
    parts.month = 12;
    while (days_before_month(parts.year, parts.month) > day_of_year)
        --parts.month;
    parts.day = day_of_year - days_before_month(parts.year, parts.month) + 1;

    parts.hour = moment.second / 3600;
    parts.minute = moment.second / 60 % 60;
    parts.second = moment.second % 60;
    return parts;
}

Date day_of(Date date) {
    return {std::trunc(date.days) + 0.0};
}

Date time_of(Date date) {
    return {std::fabs(date.days - std::trunc(date.days))};
}

Date add_days(Date date, double days) {
    const double sum = day_of(date).days + time_of(date).days + days;
    const double day = std::floor(sum);
    if (!(day >= first_day && day <= last_day))
        throw RunTimeError(6);
    return join(day, sum - day);
}

std::string date_to_text(Date date) {
    const DateParts parts = parts_of(date);
    const DayAndSecond moment = split(date);
    if (moment.day == 0)
        return time_part_text(parts);
    if (moment.second == 0)
        return date_part_text(parts);
    return date_part_text(parts) + " " + time_part_text(parts);
}

} // namespace tolva::basic
