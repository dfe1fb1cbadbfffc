#include "basic/date.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "basic/run_time_error.h"
#include "support/errors.h"
#include "support/samples.h"

namespace tolva::basic {
namespace {

constexpr int this_year = 2026;

using support::error_number;

std::string read(const std::string& text) {
    if (!is_date(text, this_year)) {
        EXPECT_EQ(error_number([&] { to_date(text, this_year); }), 13) << text;
        return "no";
    }
    return date_to_text(to_date(text, this_year));
}

TEST(DateText, AgreesWithTheTableOfDateTexts) {
    TOLVA_NEEDS_SAMPLE("dates.tsv");
    std::ifstream table(support::shared_sample("dates.tsv"));
    int lines = 0;
    for (std::string line; std::getline(table, line);) {
        if (line.starts_with("#"))
            continue;
        const std::size_t first = line.find('\t');
        ASSERT_NE(first, std::string::npos) << line;
        const std::size_t second = line.find('\t', first + 1);
        const std::string text = line.substr(0, first);
        const std::string valid = line.substr(first + 1, second - first - 1);
        if (valid == "yes")
            EXPECT_EQ(read(text), line.substr(second + 1)) << '"' << text << '"';
        else
            EXPECT_EQ(read(text), "no") << '"' << text << '"';
        ++lines;
    }
    EXPECT_GT(lines, 50);
}

TEST(DateText, IsMonthDayYear) {
    EXPECT_EQ(read("3/7/2026"), "3/7/2026");
    EXPECT_EQ(read("03/07/2026"), "3/7/2026");
    EXPECT_EQ(read("3-7-2026"), "3/7/2026");
    EXPECT_EQ(read(" 3 / 7 / 2026 "), "3/7/2026");
    EXPECT_EQ(read("3 7 2026"), "3/7/2026");
}

TEST(DateText, AnImpossibleMonthSwapsWithTheDay) {
    EXPECT_EQ(read("13/7/2026"), "7/13/2026");
    EXPECT_EQ(read("13/7"), "7/13/2026");
    EXPECT_EQ(read("13/13/2026"), "no");
    EXPECT_EQ(read("32/13/2026"), "no");
}

TEST(DateText, AYearMayComeFirst) {
    EXPECT_EQ(read("2026-03-07"), "3/7/2026");
    EXPECT_EQ(read("2026/3/7"), "3/7/2026");
    EXPECT_EQ(read("32/3/7"), "3/7/1932");
    EXPECT_EQ(read("2026 March 7"), "3/7/2026");
    EXPECT_EQ(read("2026/13/7"), "no");
}

TEST(DateText, TwoDigitYearsReachFrom1930To2029) {
    EXPECT_EQ(read("3/7/00"), "3/7/2000");
    EXPECT_EQ(read("3/7/29"), "3/7/2029");
    EXPECT_EQ(read("3/7/30"), "3/7/1930");
    EXPECT_EQ(read("3/7/99"), "3/7/1999");
    EXPECT_EQ(read("1/1/100"), "1/1/100");
    EXPECT_EQ(read("12/31/9999"), "12/31/9999");
    EXPECT_EQ(read("3/7/10000"), "no");
}

TEST(DateText, WithoutAYearTakesTheCurrentOne) {
    EXPECT_EQ(read("3/7"), "3/7/2026");
    EXPECT_EQ(read("March 7"), "3/7/2026");
    EXPECT_EQ(read("7 march"), "3/7/2026");
    EXPECT_EQ(date_to_text(to_date("2/29", 2028)), "2/29/2028");
}

TEST(DateText, AMonthAndAYearAreItsFirstDay) {
    EXPECT_EQ(read("3/2026"), "3/1/2026");
    EXPECT_EQ(read("2026/3"), "3/1/2026");
    EXPECT_EQ(read("June 2005"), "6/1/2005");
    EXPECT_EQ(read("2/30"), "2/1/1930") << "no such day this year, so it is a year";
}

TEST(DateText, MonthsAndWeekdaysHaveNames) {
    EXPECT_EQ(read("March 7, 2026"), "3/7/2026");
    EXPECT_EQ(read("Mar 7 2026"), "3/7/2026");
    EXPECT_EQ(read("7-MAR-05"), "3/7/2005");
    EXPECT_EQ(read("Saturday, March 7, 2026"), "3/7/2026");
    EXPECT_EQ(read("Sat 3/7/2026"), "3/7/2026");
    for (const char* text :
         {"March", "Saturday", "Marc 7", "March 7th, 2026", "March April 7", "7 8 March 2026"})
        EXPECT_EQ(read(text), "no") << text;
}

TEST(DateText, ADayThatTheMonthLacksIsNone) {
    EXPECT_EQ(read("2/29/2004"), "2/29/2004");
    EXPECT_EQ(read("2/29/2000"), "2/29/2000");
    for (const char* text : {"2/29/2005", "2/29/1900", "0/7/2026", "3/0/2026", "3/32/2026", "4/31/2026"})
        EXPECT_EQ(read(text), "no") << text;
}

TEST(DateText, TimesHaveColonsOrPointsOrAHalfOfTheDay) {
    EXPECT_EQ(read("8:30"), "8:30:00 AM");
    EXPECT_EQ(read("8:30am"), "8:30:00 AM");
    EXPECT_EQ(read("8:30:15 p"), "8:30:15 PM");
    EXPECT_EQ(read("8 PM"), "8:00:00 PM");
    EXPECT_EQ(read("20:15"), "8:15:00 PM");
    EXPECT_EQ(read("12:00 AM"), "12:00:00 AM");
    EXPECT_EQ(read("12:30 PM"), "12:30:00 PM");
    EXPECT_EQ(read("0:30 AM"), "12:30:00 AM");
    EXPECT_EQ(read("13.50"), "1:50:00 PM");
    for (const char* text : {"25:00", "24:00", "8:60", "8:30:60", "13:00 PM", "8:", ":30", "8:30:15:2",
                             "8:30 AM PM", "PM", "3.7.2026", "8:30 9:30"})
        EXPECT_EQ(read(text), "no") << text;
}

TEST(DateText, ADateAndATimeStandInEitherOrder) {
    EXPECT_EQ(read("3/7/2026 8:30 AM"), "3/7/2026 8:30:00 AM");
    EXPECT_EQ(read("8:30 AM 3/7/2026"), "3/7/2026 8:30:00 AM");
    EXPECT_EQ(read("3/7 8 pm"), "3/7/2026 8:00:00 PM");
    EXPECT_EQ(read("March 7, 2026, 20:15"), "3/7/2026 8:15:00 PM");
    EXPECT_EQ(read("3/7 8:30 2026"), "no");
}

TEST(DateText, AnythingElseIsNoDate) {
    for (const char* text :
         {"", " ", "abc", "12", "2005", "20260307", "3/7/2026x", "3\\7\\2026", "3//7", "/3/7", "3/7/", "3,7,",
          "1/2/3/4", "-3/7/2026", "12/7:30", "3/7/2026 9", "\xC3\xA9"})
        EXPECT_EQ(read(text), "no") << '"' << text << '"';
}

TEST(Date, CountsDaysFromTheEndOf1899) {
    EXPECT_EQ(make_date(1899, 12, 30).days, 0);
    EXPECT_EQ(make_date(1900, 1, 1).days, 2);
    EXPECT_EQ(make_date(1800, 1, 1).days, -36522);
    EXPECT_EQ(make_date(2026, 11, 21).days, 46347);
    EXPECT_EQ(make_date(100, 1, 1).days, -657434);
    EXPECT_EQ(make_date(9999, 12, 31).days, 2958465);
}

TEST(Date, EveryDayOfTheCalendarComesBack) {
    DateParts expected;
    expected.year = 100, expected.month = 1, expected.day = 1;
    for (double day = -657434; day <= 2958465; ++day) {
        const DateParts parts = parts_of({day});
        ASSERT_TRUE(parts.year == expected.year && parts.month == expected.month && parts.day == expected.day)
            << day;
        if (++expected.day > days_in_month(expected.year, expected.month)) {
            expected.day = 1;
            if (++expected.month > 12)
                expected.month = 1, ++expected.year;
        }
    }
}

TEST(Date, OnlyRealDatesAreMade) {
    EXPECT_EQ(error_number([] { make_date(2005, 2, 29); }), 5);
    EXPECT_EQ(error_number([] { make_date(99, 1, 1); }), 5);
    EXPECT_EQ(error_number([] { make_date(2005, 13, 1); }), 5);
    EXPECT_EQ(error_number([] { make_moment({2005, 1, 1, 24, 0, 0}); }), 5);
}

TEST(Date, BeforeDayZeroTheTimeStillCountsAwayFromZero) {
    const DateParts parts = parts_of({-1.25});
    EXPECT_EQ(parts.month, 12);
    EXPECT_EQ(parts.day, 29);
    EXPECT_EQ(parts.hour, 6);
    EXPECT_EQ(make_moment(parts).days, -1.25);
    EXPECT_EQ(date_to_text({-1.25}), "12/29/1899 6:00:00 AM");
    EXPECT_EQ(day_of({-1.25}).days, -1);
    EXPECT_EQ(time_of({-1.25}).days, 0.25);
    EXPECT_TRUE(Date{-1.25} < Date{-1.0}) << "compared as the raw number";
}

TEST(Date, AddingDaysCountsOnInTime) {
    EXPECT_EQ(add_days({-1.25}, 1).days, 0.25);
    EXPECT_EQ(add_days({-1.25}, 0.5).days, -1.75);
    EXPECT_EQ(add_days({0.25}, -1).days, -1.25);
    EXPECT_EQ(add_days({-1.75}, 0.5).days, 0.25);
    EXPECT_EQ(date_to_text(add_days(make_date(2026, 12, 31), 60)), "3/1/2027");
    EXPECT_EQ(error_number([] { add_days(make_date(9999, 12, 31), 1); }), 6);
}

TEST(Date, TimesAreRoundedToTheSecond) {
    const double second = 1.0 / 86400;
    EXPECT_EQ(date_to_text({5 + 30600.4 * second}), "1/4/1900 8:30:00 AM");
    EXPECT_EQ(date_to_text({5 + 30600.6 * second}), "1/4/1900 8:30:01 AM");
    EXPECT_EQ(date_to_text({4 + 86399.7 * second}), "1/4/1900");
    EXPECT_EQ(date_to_text({-1 - 86399.7 * second}), "12:00:00 AM") << "up to day zero";
}

TEST(Date, TheShortFormLeavesOutDayZeroAndMidnight) {
    EXPECT_EQ(date_to_text({0}), "12:00:00 AM");
    EXPECT_EQ(date_to_text({0.5}), "12:00:00 PM");
    EXPECT_EQ(date_to_text(make_date(2026, 3, 7)), "3/7/2026");
    EXPECT_EQ(date_to_text(make_moment({2026, 3, 7, 0, 5, 9})), "3/7/2026 12:05:09 AM");
}

TEST(Date, EverySecondOfADaySurvivesItsText) {
    for (int second = 0; second < 86400; second += 7) {
        const Date time = make_moment({2026, 3, 7, second / 3600, second / 60 % 60, second % 60});
        ASSERT_EQ(to_date(date_to_text(time), this_year), time) << second;
    }
}

TEST(Date, OutsideTheCalendarIsAnOverflow) {
    for (const double days :
         {2958466.0, -657435.0, 1e300, std::nan(""), std::numeric_limits<double>::infinity()})
        EXPECT_EQ(error_number([days] { date_to_text({days}); }), 6) << days;
}

} // namespace
} // namespace tolva::basic
