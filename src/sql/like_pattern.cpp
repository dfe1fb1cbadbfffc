#include "sql/like_pattern.h"

#include <algorithm>
#include <cstring>

#include "basic/run_time_error.h"
#include "basic/text.h"

namespace tolva::sql {

namespace {

constexpr int invalid_pattern = 93;

bool is_ascii(std::string_view text) {
    unsigned char all = 0;
    for (char c : text)
        all |= static_cast<unsigned char>(c);
    return all < 0x80;
}

constexpr char lower_ascii(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
}

bool equal_lower(const char* text, std::string_view lower) {
    return std::equal(lower.begin(), lower.end(), text,
                      [](char wanted, char c) { return lower_ascii(c) == wanted; });
}

/// Whether `lower` stands anywhere in an ASCII text, whatever the text's letter case.
bool contains_lower(std::string_view text, std::string_view lower) {
    if (lower.empty())
        return true;
    if (text.size() < lower.size())
        return false;
    const char small = lower.front();
    const char capital = small >= 'a' && small <= 'z' ? static_cast<char>(small - 32) : small;
    const char* const last = text.data() + (text.size() - lower.size());
    for (const char* at = text.data(); at <= last; ++at)
        if ((*at == small || *at == capital) && equal_lower(at + 1, lower.substr(1)))
            return true;
    return false;
}

} // namespace

LikePattern::LikePattern(std::string_view pattern) {
    const std::u32string letters = basic::to_code_points(pattern);
    for (std::size_t at = 0; at < letters.size(); ++at) {
        const char32_t c = letters[at];
        if (c == U'*') {
            const bool run_already = !elements_.empty() && elements_.back().kind == Element::Kind::any_run;
            if (!run_already)
                elements_.push_back({Element::Kind::any_run, 0, {}});
        } else if (c == U'?') {
            elements_.push_back({Element::Kind::any_one, 0, {}});
        } else if (c == U'#') {
            elements_.push_back({Element::Kind::digit, 0, {}});
        } else if (c == U'[') {
            at = read_list(letters, at);
        } else {
            elements_.push_back({Element::Kind::letter, basic::lower(c), {}});
        }
    }
    find_plain_form();
}

/// Reads the list that opens at `at`; returns where it closes.
std::size_t LikePattern::read_list(const std::u32string& pattern, std::size_t at) {
    const std::size_t close = pattern.find(U']', at);
    if (close == std::u32string::npos)
        throw basic::RunTimeError(invalid_pattern);
    std::u32string_view list = std::u32string_view(pattern).substr(at + 1, close - at - 1);
    if (list.empty())
        return close;

    Element element{Element::Kind::one_of, 0, {}};
    if (list.size() > 1 && list.front() == U'!') {
        element.kind = Element::Kind::none_of;
        list.remove_prefix(1);
    }
    while (!list.empty()) {
        const char32_t first = basic::lower(list.front());
        const bool range = list.size() > 2 && list[1] == U'-';
        const char32_t last = range ? basic::lower(list[2]) : first;
        if (last < first)
            throw basic::RunTimeError(invalid_pattern);
        element.ranges.push_back({first, last});
        list.remove_prefix(range ? 3 : 1);
    }
    elements_.push_back(std::move(element));
    return close;
}

void LikePattern::find_plain_form() {
    std::size_t first = 0, end = elements_.size();
    if (first < end && elements_[first].kind == Element::Kind::any_run) {
        open_start_ = true;
        ++first;
    }
    if (first < end && elements_[end - 1].kind == Element::Kind::any_run) {
        open_end_ = true;
        --end;
    }
    for (; first < end; ++first) {
        const Element& element = elements_[first];
        if (element.kind != Element::Kind::letter || element.letter >= 0x80)
            return;
        plain_.push_back(static_cast<char>(element.letter));
    }
    is_plain_ = true;
    if (plain_.empty() && open_start_)
        open_end_ = true; // a lone "*" is open at both its ends
}

std::string LikePattern::certain_letters() const {
    const auto is_plain = [](const Element& element) {
        const char32_t c = element.letter;
        return element.kind == Element::Kind::letter &&
               ((c >= U'a' && c <= U'z') || (c >= U'0' && c <= U'9'));
    };
    std::string longest, run;
    for (const Element& element : elements_) {
        if (!is_plain(element)) {
            run.clear();
            continue;
        }
        run.push_back(static_cast<char>(element.letter));
        if (run.size() > longest.size())
            longest = run;
    }
    return longest;
}

bool LikePattern::matches(std::string_view text) const {
    if (is_plain_ && is_ascii(text)) {
        if (open_start_ && open_end_)
            return contains_lower(text, plain_);
        if (text.size() < plain_.size())
            return false;
        if (open_start_)
            return equal_lower(text.data() + (text.size() - plain_.size()), plain_);
        if (!open_end_ && text.size() != plain_.size())
            return false;
        return equal_lower(text.data(), plain_);
    }
    folded_ = basic::to_code_points(text);
    for (char32_t& c : folded_)
        c = basic::lower(c);
    return matches_elements(folded_);
}

bool LikePattern::matches_one(const Element& element, char32_t letter) const {
    const auto in_list = [&] {
        return std::any_of(element.ranges.begin(), element.ranges.end(), [letter](const Range& range) {
            return letter >= range.first && letter <= range.last;
        });
    };
    switch (element.kind) {
    case Element::Kind::letter:
        return element.letter == letter;
    case Element::Kind::digit:
        return letter >= U'0' && letter <= U'9';
    case Element::Kind::one_of:
        return in_list();
    case Element::Kind::none_of:
        return !in_list();
    case Element::Kind::any_one:
    case Element::Kind::any_run:
        return true;
    }
    return false;
}

/// Goes back to the last run only: an earlier one need never take more than it took first.
bool LikePattern::matches_elements(std::u32string_view text) const {
    constexpr std::size_t none = static_cast<std::size_t>(-1);
    std::size_t at = 0, element = 0, run = none, run_end = 0;
    while (at < text.size()) {
        if (element < elements_.size() && elements_[element].kind == Element::Kind::any_run) {
            run = element++;
            run_end = at;
        } else if (element < elements_.size() && matches_one(elements_[element], text[at])) {
            ++element;
            ++at;
        } else if (run != none) {
            element = run + 1;
            at = ++run_end;
        } else {
            return false;
        }
    }
    while (element < elements_.size() && elements_[element].kind == Element::Kind::any_run)
        ++element;
    return element == elements_.size();
}

} // namespace tolva::sql
