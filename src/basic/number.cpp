#include "basic/number.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <system_error>

#include "basic/run_time_error.h"

namespace tolva::basic {

namespace {

constexpr int shown_digits = 15;

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

/// The digits before the point, behind it, and the exponent of a number's text, in the one form that the
/// library reads: "12.5e-3".
class NumberText {
  public:
    void put(char c) { text_.push_back(c); }

    /// Error 6 beyond a double; what is too small for one is 0.
    double value() const {
        double result = 0;
        const auto [end, failure] = std::from_chars(text_.data(), text_.data() + text_.size(), result);
        if (failure != std::errc::result_out_of_range)
            return result;
        if (is_tiny())
            return 0;
        throw RunTimeError(6);
    }

  private:
    /// Whether a value out of range lies too near to zero rather than too far from it: by the power of ten of
    /// its first digit that counts.
    bool is_tiny() const {
        const std::size_t mark = std::min(text_.find('e'), text_.size());
        const std::size_t point = std::min(text_.find('.'), mark);
        const std::size_t first = text_.find_first_of("123456789");
        if (first >= mark)
            return true;
        const double place = static_cast<double>(point) - static_cast<double>(first);
        return place + exponent(mark) < 0;
    }

    double exponent(std::size_t mark) const {
        if (mark == text_.size())
            return 0;
        const bool negative = text_[mark + 1] == '-';
        double size = 0;
        for (std::size_t at = mark + (negative ? 2 : 1); at < text_.size(); ++at)
            size = size * 10 + (text_[at] - '0');
        return negative ? -size : size;
    }

    std::string text_;
};

/// The decimal digits that a number shows: 0.d1d2d3... times ten to `exponent`, no zeros at the end.
struct Digits {
    bool negative = false;
    std::string digits;
    int exponent = 0;
};

Digits digits_of(double value) {
    char buffer[40];
    const auto [end, failure] = std::to_chars(buffer, buffer + sizeof buffer, std::fabs(value),
                                              std::chars_format::scientific, shown_digits - 1);
    const std::string text(buffer, failure == std::errc() ? end : buffer);
    const std::size_t mark = text.find('e');

    Digits result;
    result.digits = text.substr(0, 1) + text.substr(2, mark - 2);
    result.digits.erase(result.digits.find_last_not_of('0') + 1);
    if (result.digits.empty())
        return result;
    result.negative = value < 0;
    result.exponent = std::atoi(text.c_str() + mark + 1) + 1;
    return result;
}

std::string not_finite_text(double value) {
    if (std::isnan(value))
        return "-1.#IND";
    return value < 0 ? "-1.#INF" : "1.#INF";
}

/// Adds one to the last digit of a whole number's text.
std::string add_one(std::string digits) {
    for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit) {
        if (*digit != '9') {
            ++*digit;
            return digits;
        }
        *digit = '0';
    }
    digits.insert(digits.begin(), '1');
    return digits;
}

} // namespace

double leading_number(std::string_view text) {
    std::string squeezed;
    std::copy_if(text.begin(), text.end(), std::back_inserter(squeezed),
                 [](char c) { return c != ' ' && c != '\t' && c != '\r' && c != '\n'; });

    NumberText number;
    std::size_t at = 0;
    const auto here = [&] { return at < squeezed.size() ? squeezed[at] : '\0'; };
    if (here() == '+' || here() == '-') {
        if (here() == '-')
            number.put('-');
        ++at;
    }
    int digits = 0;
    for (; is_digit(here()); ++at, ++digits)
        number.put(here());
    if (here() == '.') {
        if (digits == 0)
            number.put('0');
        number.put('.');
        for (++at; is_digit(here()); ++at, ++digits)
            number.put(here());
        number.put('0');
    }
    if (digits == 0)
        return 0;

    if (here() == 'e' || here() == 'E' || here() == 'd' || here() == 'D') {
        std::string exponent = "e";
        ++at;
        if (here() == '+' || here() == '-') {
            if (here() == '-')
                exponent.push_back('-');
            ++at;
        }
        if (is_digit(here())) {
            for (; is_digit(here()); ++at)
                exponent.push_back(here());
            for (char c : exponent)
                number.put(c);
        }
    }
    return number.value();
}

std::string number_to_text(double value) {
    if (!std::isfinite(value))
        return not_finite_text(value);
    const Digits number = digits_of(value);
    if (number.digits.empty())
        return "0";

    std::string text = number.digits;
    const int count = static_cast<int>(text.size());
    if (number.exponent > shown_digits || number.exponent < -3) {
        if (count > 1)
            text.insert(1, 1, '.');
        const int power = number.exponent - 1;
        const std::string shown = std::to_string(std::abs(power));
        text += power < 0 ? "E-" : "E+";
        if (shown.size() < 2)
            text += '0';
        text += shown;
    } else if (number.exponent <= 0) {
        text.insert(0, static_cast<std::size_t>(-number.exponent), '0');
        text.insert(0, "0.");
    } else if (number.exponent < count) {
        text.insert(static_cast<std::size_t>(number.exponent), 1, '.');
    } else {
        text.append(static_cast<std::size_t>(number.exponent - count), '0');
    }
    if (number.negative)
        text.insert(text.begin(), '-');
    return text;
}

std::string number_to_text(std::int64_t value) {
    return std::to_string(value);
}

std::string spaced_number_text(double value) {
    const std::string digits = number_to_text(value);
    return digits.front() == '-' ? digits : " " + digits;
}

std::optional<double> strict_number(std::string_view text) {
    NumberText number;
    bool negative = false, sign = false, currency = false, bracket = false;
    int digits = 0;
    std::size_t at = 0;
    const auto here = [&] { return at < text.size() ? text[at] : '\0'; };
    const auto skip_blanks = [&] {
        while (here() == ' ' || here() == '\t')
            ++at;
    };
    // What may stand around the digits: blanks, one sign, one currency sign; brackets mean minus.
    const auto read_marks = [&] {
        for (skip_blanks();; skip_blanks()) {
            if ((here() == '-' || here() == '+') && !sign && !bracket) {
                sign = true;
                negative = here() == '-';
            } else if (here() == '$' && !currency) {
                currency = true;
            } else if (here() == '(' && digits == 0 && !sign && !bracket) {
                bracket = negative = true;
            } else {
                return;
            }
            ++at;
        }
    };

    read_marks();
    for (; is_digit(here()) || (here() == ',' && digits > 0); ++at) {
        if (here() == ',')
            continue;
        number.put(here());
        ++digits;
    }
    if (here() == '.') {
        if (digits == 0)
            number.put('0');
        number.put('.');
        for (++at; is_digit(here()); ++at, ++digits)
            number.put(here());
        number.put('0');
    }
    if (digits == 0)
        return std::nullopt;
    if (here() == 'e' || here() == 'E' || here() == 'd' || here() == 'D') {
        number.put('e');
        ++at;
        if (here() == '+' || here() == '-') {
            if (here() == '-')
                number.put('-');
            ++at;
        }
        if (!is_digit(here()))
            return std::nullopt;
        for (; is_digit(here()); ++at)
            number.put(here());
    }
    read_marks();
    if (bracket && here() == ')') {
        bracket = false;
        ++at;
        skip_blanks();
    }
    if (at != text.size() || bracket)
        return std::nullopt;
    return negative ? -number.value() : number.value();
}

double round_half_even(double value) {
    const double below = std::floor(value);
    const double rest = value - below;
    if (rest < 0.5)
        return below;
    if (rest > 0.5)
        return below + 1;
    return std::fmod(below, 2) == 0 ? below : below + 1;
}

std::string money_text(double value) {
    if (!std::isfinite(value))
        return not_finite_text(value);
    const Digits number = digits_of(value);

    // Hundredths as a whole number's text, cut behind the second decimal, then rounded by the digit cut off.
    const int hundredths = number.exponent + 2;
    std::string whole;
    bool round_up = false;
    if (!number.digits.empty() && hundredths >= 0) {
        const std::size_t wanted = static_cast<std::size_t>(hundredths);
        whole = number.digits.substr(0, wanted);
        round_up = wanted < number.digits.size() && number.digits[wanted] >= '5';
        whole.append(wanted - whole.size(), '0');
    }
    if (round_up)
        whole = add_one(whole);
    if (whole.size() < 3)
        whole.insert(0, 3 - whole.size(), '0');

    const bool zero = whole.find_first_not_of('0') == std::string::npos;
    whole.insert(whole.size() - 2, 1, '.');
    if (number.negative && !zero)
        whole.insert(whole.begin(), '-');
    return whole;
}

} // namespace tolva::basic
