#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "basic/number.h"
#include "basic/run_time_error.h"

namespace tolva::basic {
namespace {

int error_of(const std::string& text) {
    try {
        leading_number(text);
    } catch (const RunTimeError& error) {
        return error.number();
    }
    return 0;
}

TEST(LeadingNumber, TakesTheLongestNumericStart) {
    EXPECT_EQ(leading_number("12abc"), 12);
    EXPECT_EQ(leading_number("-.5x"), -0.5);
    EXPECT_EQ(leading_number("+7"), 7);
    EXPECT_EQ(leading_number("1.2.3"), 1.2);
    EXPECT_EQ(leading_number("7."), 7);
    EXPECT_EQ(leading_number(".25"), 0.25);
}

TEST(LeadingNumber, IsZeroWithoutANumberAtTheStart) {
    for (const char* text : {"", " ", "abc", "$12", ",5", ".", "-", "+-3", "e5", "--4"})
        EXPECT_EQ(leading_number(text), 0) << '"' << text << '"';
}

TEST(LeadingNumber, StopsAtAThousandsComma) {
    EXPECT_EQ(leading_number("125,000"), 125);
}

TEST(LeadingNumber, SkipsBlanksTabsAndLineEndsAnywhere) {
    EXPECT_EQ(leading_number(" 1 2 3"), 123);
    EXPECT_EQ(leading_number("- 5"), -5);
    EXPECT_EQ(leading_number("\t1\r\n2"), 12);
    EXPECT_EQ(leading_number("1 e 2"), 100);
}

TEST(LeadingNumber, ReadsExponentsWithEAndD) {
    EXPECT_EQ(leading_number("1e5"), 100000);
    EXPECT_EQ(leading_number("1d3"), 1000);
    EXPECT_EQ(leading_number("2.5E-1"), 0.25);
    EXPECT_EQ(leading_number("1E+2x"), 100);
}

TEST(LeadingNumber, LeavesAnExponentWithoutDigits) {
    EXPECT_EQ(leading_number("1e"), 1);
    EXPECT_EQ(leading_number("1e+"), 1);
    EXPECT_EQ(leading_number("3 days"), 3);
}

TEST(LeadingNumber, OverflowsBeyondADoubleAndVanishesBelowOne) {
    EXPECT_EQ(error_of("1e400"), 6);
    EXPECT_EQ(error_of("-1e99999999999999999999"), 6);
    EXPECT_EQ(error_of(std::string(400, '9')), 6);
    EXPECT_EQ(error_of(std::string(500, '9') + "e-5"), 6);
    EXPECT_EQ(leading_number("0." + std::string(400, '0') + "1e5"), 0);
    EXPECT_EQ(leading_number("0e99999"), 0);
    EXPECT_EQ(leading_number("1e-400"), 0);
    EXPECT_EQ(leading_number("0." + std::string(400, '0') + "1"), 0);
    EXPECT_EQ(leading_number("1.7976931348623157e308"), std::numeric_limits<double>::max());
}

TEST(NumberToText, ShowsUpToFifteenDigits) {
    EXPECT_EQ(number_to_text(0.1 + 0.2), "0.3");
    EXPECT_EQ(number_to_text(1.0 / 3), "0.333333333333333");
    EXPECT_EQ(number_to_text(123456789.125), "123456789.125");
    EXPECT_EQ(number_to_text(-2.5), "-2.5");
    EXPECT_EQ(number_to_text(125000.0), "125000");
    EXPECT_EQ(number_to_text(100.0), "100");
    EXPECT_EQ(number_to_text(0.5), "0.5");
}

TEST(NumberToText, TakesAnExponentOnlyBeyondPlainDigits) {
    EXPECT_EQ(number_to_text(999999999999999.0), "999999999999999");
    EXPECT_EQ(number_to_text(1e14), "100000000000000");
    EXPECT_EQ(number_to_text(1e15), "1E+15");
    EXPECT_EQ(number_to_text(1234567890123456.0), "1.23456789012346E+15");
    EXPECT_EQ(number_to_text(0.0001), "0.0001");
    EXPECT_EQ(number_to_text(1e-5), "1E-05");
    EXPECT_EQ(number_to_text(-1.25e-7), "-1.25E-07");
    EXPECT_EQ(number_to_text(1e100), "1E+100");
    EXPECT_EQ(number_to_text(9.9999999999999999e14), "1E+15");
}

TEST(NumberToText, ShowsNegativeZeroAsZero) {
    EXPECT_EQ(number_to_text(-0.0), "0");
}

TEST(NumberToText, ShowsWhatIsNoNumberAsThePlatformDoes) {
    EXPECT_EQ(number_to_text(std::numeric_limits<double>::infinity()), "1.#INF");
    EXPECT_EQ(number_to_text(std::nan("")), "-1.#IND");
}

TEST(NumberToText, ShowsWholeNumbersInFull) {
    EXPECT_EQ(number_to_text(std::int64_t{-2147483648}), "-2147483648");
    EXPECT_EQ(number_to_text(std::numeric_limits<std::int64_t>::max()), "9223372036854775807");
}

TEST(StrictNumber, ReadsAWholeText) {
    EXPECT_EQ(strict_number("12"), 12);
    EXPECT_EQ(strict_number(" -3.5 "), -3.5);
    EXPECT_EQ(strict_number("1,234,567.5"), 1234567.5);
    EXPECT_EQ(strict_number("$125,000"), 125000);
    EXPECT_EQ(strict_number("-$5"), -5);
    EXPECT_EQ(strict_number("$-5"), -5);
    EXPECT_EQ(strict_number("5-"), -5);
    EXPECT_EQ(strict_number("(5)"), -5);
    EXPECT_EQ(strict_number("($1,000.25)"), -1000.25);
    EXPECT_EQ(strict_number("1e3"), 1000);
    EXPECT_EQ(strict_number(".5"), 0.5);
}

TEST(StrictNumber, RefusesWhatIsNotANumberToTheEnd) {
    for (const char* text : {"", " ", "abc", "12x", "1 2", "--3", "-3-", "$", "$$3", "1.2.3", ",5", "1.5,0",
                             "(5", "5)", "1e", "-(5)"})
        EXPECT_EQ(strict_number(text), std::nullopt) << '"' << text << '"';
}

TEST(RoundHalfEven, TakesHalvesToTheEvenNeighbour) {
    EXPECT_EQ(round_half_even(0.5), 0);
    EXPECT_EQ(round_half_even(1.5), 2);
    EXPECT_EQ(round_half_even(2.5), 2);
    EXPECT_EQ(round_half_even(-0.5), 0);
    EXPECT_EQ(round_half_even(-1.5), -2);
    EXPECT_EQ(round_half_even(-2.5), -2);
    EXPECT_EQ(round_half_even(2.4999), 2);
    EXPECT_EQ(round_half_even(2.5001), 3);
    EXPECT_EQ(round_half_even(1e300), 1e300);
}

TEST(MoneyText, HasTwoDecimalsAndAtLeastOneDigitAhead) {
    EXPECT_EQ(money_text(0), "0.00");
    EXPECT_EQ(money_text(0.5), "0.50");
    EXPECT_EQ(money_text(-0.5), "-0.50");
    EXPECT_EQ(money_text(7), "7.00");
    EXPECT_EQ(money_text(1234567.891), "1234567.89");
    EXPECT_EQ(money_text(1e18), "1000000000000000000.00");
}

TEST(MoneyText, RoundsHalvesOfTheShownDigitsAwayFromZero) {
    EXPECT_EQ(money_text(0.125), "0.13");
    EXPECT_EQ(money_text(1.005), "1.01");
    EXPECT_EQ(money_text(2.675), "2.68");
    EXPECT_EQ(money_text(-0.125), "-0.13");
    EXPECT_EQ(money_text(0.005), "0.01");
    EXPECT_EQ(money_text(0.0049999), "0.00");
    EXPECT_EQ(money_text(0.994999), "0.99");
    EXPECT_EQ(money_text(0.995), "1.00");
    EXPECT_EQ(money_text(999.995), "1000.00");
}

TEST(MoneyText, ShowsNoSignOnWhatRoundsToZero) {
    EXPECT_EQ(money_text(-0.001), "0.00");
    EXPECT_EQ(money_text(-0.0), "0.00");
}

} // namespace
} // namespace tolva::basic
