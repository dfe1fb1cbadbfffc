#include "dao/default_value.h"

#include <string_view>

#include "basic/number.h"
#include "basic/text.h"

namespace tolva::dao {

namespace {

std::string_view without_blanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

/// The text between two quotation marks that are all of `source`.
std::optional<std::string> quoted_text(std::string_view source) {
    const char mark = source.front();
    if ((mark != '"' && mark != '\'') || source.size() < 2 || source.back() != mark)
        return std::nullopt;
    std::string text;
    for (std::size_t at = 1; at + 1 < source.size(); ++at) {
        if (source[at] == mark) {
            ++at;
            if (at + 1 >= source.size() || source[at] != mark)
                return std::nullopt;
        }
        text += source[at];
    }
    return text;
}

} // namespace

std::optional<jet::Value> default_value(const std::string& expression, std::optional<basic::Date> now) {
    std::string_view source = without_blanks(expression);
    if (!source.empty() && source.front() == '=')
        source = without_blanks(source.substr(1));
    if (source.empty())
        return std::nullopt;
    if (const auto text = quoted_text(source))
        return *text;
    const auto is = [&](std::string_view word) { return basic::equal_names(source, word); };
    if (is("true") || is("yes"))
        return true;
    if (is("false") || is("no"))
        return false;
    if (is("null"))
        return jet::Value();
    if (now && is("now()"))
        return *now;
    if (now && is("date()"))
        return basic::day_of(*now);
    if (const auto number = basic::strict_number(source))
        return *number;
    return std::nullopt;
}

} // namespace tolva::dao
