#include <array>
#include <optional>
#include <vector>

#include "basic/date.h"
#include "basic/run_time_error.h"
#include "basic/text.h"

// How a text becomes a date. The reading is generous, as the platform's is: blanks, commas, "/" and "-" part
// the pieces of a date, ":" and "." those of a time; a time may stand behind or ahead of the date; the pieces
// of a date are tried in several orders until one gives a real day.

namespace tolva::basic {

namespace {

constexpr std::array<std::string_view, 7> weekday_names = {"sunday",   "monday", "tuesday", "wednesday",
                                                           "thursday", "friday", "saturday"};

struct Token {
    enum class Kind { number, month, weekday, am, pm, date_separator, time_separator, comma, end };

    Kind kind;
    int value = 0; ///< of a number; 1 to 12 of a month
};

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}
bool is_letter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// The position of a name, spelled out or by its first three letters.
template <std::size_t count>
std::optional<int> find_name(const std::array<std::string_view, count>& names, std::string_view word) {
    for (std::size_t i = 0; i < count; ++i) {
        if (equal_names(word, names[i]) || equal_names(word, names[i].substr(0, 3)))
            return static_cast<int>(i);
    }
    return std::nullopt;
}

std::optional<Token> word_token(std::string_view word) {
    if (const auto month = find_name(month_names, word))
        return Token{Token::Kind::month, *month + 1};
    if (find_name(weekday_names, word))
        return Token{Token::Kind::weekday};
    if (equal_names(word, "am") || equal_names(word, "a"))
        return Token{Token::Kind::am};
    if (equal_names(word, "pm") || equal_names(word, "p"))
        return Token{Token::Kind::pm};
    return std::nullopt;
}

/// The text's tokens with an end token behind them, or nothing when something else stands in it.
std::optional<std::vector<Token>> tokens_of(std::string_view text) {
    constexpr std::size_t longest_number = 6;
    std::vector<Token> tokens;
    for (std::size_t at = 0; at < text.size();) {
        const char c = text[at];
        std::size_t end = at + 1;
        if (is_digit(c)) {
            while (end < text.size() && is_digit(text[end]))
                ++end;
            if (end - at > longest_number)
                return std::nullopt;
            tokens.push_back({Token::Kind::number, std::stoi(std::string(text.substr(at, end - at)))});
        } else if (is_letter(c)) {
            while (end < text.size() && is_letter(text[end]))
                ++end;
            const auto token = word_token(text.substr(at, end - at));
            if (!token)
                return std::nullopt;
            tokens.push_back(*token);
        } else if (c == '/' || c == '-') {
            tokens.push_back({Token::Kind::date_separator});
        } else if (c == ':' || c == '.') {
            tokens.push_back({Token::Kind::time_separator});
        } else if (c == ',') {
            tokens.push_back({Token::Kind::comma});
        } else if (c != ' ' && c != '\t') {
            return std::nullopt;
        }
        at = end;
    }
    tokens.push_back({Token::Kind::end});
    return tokens;
}

/// The two-digit years reach from 1930 to 2029.
int full_year(int year) {
    if (year < 30)
        return year + 2000;
    return year < 100 ? year + 1900 : year;
}

std::optional<Date> real_date(int year, int month, int day) {
    if (year < 100 || year > 9999 || month < 1 || month > 12)
        return std::nullopt;
    if (day < 1 || day > days_in_month(year, month))
        return std::nullopt;
    return make_date(year, month, day);
}

std::optional<Date> first_real(std::initializer_list<std::optional<Date>> readings) {
    for (const auto& reading : readings)
        if (reading)
            return reading;
    return std::nullopt;
}

class DateReader {
  public:
    DateReader(const std::vector<Token>& tokens, int current_year)
        : tokens_(tokens), current_year_(current_year) {}

    std::optional<Date> read() {
        while (here() != Token::Kind::end)
            if (!read_piece())
                return std::nullopt;
        if (numbers_.empty() && month_ == 0)
            return time_;
        const auto day = date();
        if (!day || !time_)
            return day;
        return Date{day->days < 0 ? day->days - time_->days : day->days + time_->days};
    }

  private:
    Token::Kind here(std::size_t ahead = 0) const {
        const std::size_t at = at_ + ahead;
        return at < tokens_.size() ? tokens_[at].kind : Token::Kind::end;
    }

    /// One piece of the date or the whole time, with the separator behind it.
    bool read_piece() {
        const bool starts_time =
            here() == Token::Kind::number && (here(1) == Token::Kind::time_separator ||
                                              here(1) == Token::Kind::am || here(1) == Token::Kind::pm);
        if (starts_time) {
            if (!read_time())
                return false;
        } else if (here() == Token::Kind::number) {
            if (!begin_date_piece() || numbers_.size() == 3)
                return false;
            numbers_.push_back(tokens_[at_++].value);
            if (!skip_date_separator())
                return false;
        } else if (here() == Token::Kind::month) {
            if (!begin_date_piece() || month_ != 0)
                return false;
            month_ = tokens_[at_++].value;
            if (!skip_date_separator())
                return false;
        } else if (here() == Token::Kind::weekday) {
            if (weekday_seen_)
                return false;
            weekday_seen_ = true;
            ++at_;
        } else {
            return false;
        }
        return skip_comma();
    }

    /// The pieces of a date stand together, with no time between them.
    bool begin_date_piece() {
        const bool first = numbers_.empty() && month_ == 0;
        if (first)
            time_was_first_ = time_.has_value();
        return time_was_first_ == time_.has_value();
    }

    bool skip_date_separator() {
        if (here() != Token::Kind::date_separator)
            return true;
        ++at_;
        const bool time_follows = here(1) == Token::Kind::time_separator;
        return (here() == Token::Kind::number && !time_follows) || here() == Token::Kind::month;
    }

    bool skip_comma() {
        if (here() != Token::Kind::comma)
            return true;
        ++at_;
        return here() != Token::Kind::end;
    }

    bool read_time() {
        if (time_)
            return false;
        int fields[3] = {tokens_[at_++].value, 0, 0};
        for (int i = 1; here() == Token::Kind::time_separator; ++i) {
            ++at_;
            if (i == 3 || here() != Token::Kind::number)
                return false;
            fields[i] = tokens_[at_++].value;
        }
        if (here() == Token::Kind::am || here() == Token::Kind::pm) {
            if (fields[0] > 12)
                return false;
            fields[0] = fields[0] % 12 + (here() == Token::Kind::pm ? 12 : 0);
            ++at_;
        }
        if (fields[0] > 23 || fields[1] > 59 || fields[2] > 59)
            return false;
        DateParts parts;
        parts.hour = fields[0], parts.minute = fields[1], parts.second = fields[2];
        time_ = make_moment(parts);
        return true;
    }

    std::optional<Date> date() const {
        const std::vector<int>& n = numbers_;
        if (month_ != 0) {
            if (n.size() == 1)
                return first_real(
                    {real_date(current_year_, month_, n[0]), real_date(full_year(n[0]), month_, 1)});
            if (n.size() == 2)
                return first_real(
                    {real_date(full_year(n[1]), month_, n[0]), real_date(full_year(n[0]), month_, n[1])});
            return std::nullopt;
        }
        if (n.size() == 2)
            return first_real({real_date(current_year_, n[0], n[1]), real_date(current_year_, n[1], n[0]),
                               real_date(full_year(n[1]), n[0], 1), real_date(full_year(n[0]), n[1], 1)});
        if (n.size() == 3)
            return first_real({real_date(full_year(n[2]), n[0], n[1]), real_date(full_year(n[2]), n[1], n[0]),
                               real_date(full_year(n[0]), n[1], n[2])});
        return std::nullopt;
    }

    const std::vector<Token>& tokens_;
    int current_year_;
    std::size_t at_ = 0;
    std::vector<int> numbers_;
    int month_ = 0;
    bool weekday_seen_ = false;
    bool time_was_first_ = false;
    std::optional<Date> time_;
};

std::optional<Date> read_date(std::string_view text, int current_year) {
    const auto tokens = tokens_of(text);
    if (!tokens)
        return std::nullopt;
    return DateReader(*tokens, current_year).read();
}

} // namespace

bool is_date(std::string_view text, int current_year) {
    return read_date(text, current_year).has_value();
}

Date to_date(std::string_view text, int current_year) {
    const auto date = read_date(text, current_year);
    if (!date)
        throw RunTimeError(13);
    return *date;
}

} // namespace tolva::basic
