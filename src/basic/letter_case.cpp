#include "basic/text.h"

#include <algorithm>
#include <iterator>

namespace tolva::basic {

namespace {

/// Capital letters `first` to `last`, each `step`th one, whose small letters lie `distance` behind them. The
/// ranges ascend, by their capitals.
struct CapitalRange {
    char32_t first;
    char32_t last;
    int step;
    int distance;
};

constexpr CapitalRange capital_ranges[] = {
    {0x0041, 0x005A, 1, 32},   {0x00C0, 0x00D6, 1, 32},   {0x00D8, 0x00DE, 1, 32},
    {0x0100, 0x012E, 2, 1},    {0x0132, 0x0136, 2, 1},    {0x0139, 0x0147, 2, 1},
    {0x014A, 0x0176, 2, 1},    {0x0178, 0x0178, 1, -121}, {0x0179, 0x017D, 2, 1},
    {0x0181, 0x0181, 1, 210},  {0x0182, 0x0184, 2, 1},    {0x0186, 0x0186, 1, 206},
    {0x0187, 0x0187, 1, 1},    {0x0189, 0x018A, 1, 205},  {0x018B, 0x018B, 1, 1},
    {0x018E, 0x018E, 1, 79},   {0x018F, 0x018F, 1, 202},  {0x0190, 0x0190, 1, 203},
    {0x0191, 0x0191, 1, 1},    {0x0193, 0x0193, 1, 205},  {0x0194, 0x0194, 1, 207},
    {0x0196, 0x0196, 1, 211},  {0x0197, 0x0197, 1, 209},  {0x0198, 0x0198, 1, 1},
    {0x019C, 0x019C, 1, 211},  {0x019D, 0x019D, 1, 213},  {0x019F, 0x019F, 1, 214},
    {0x01A0, 0x01A4, 2, 1},    {0x01A6, 0x01A6, 1, 218},  {0x01A7, 0x01A7, 1, 1},
    {0x01A9, 0x01A9, 1, 218},  {0x01AC, 0x01AC, 1, 1},    {0x01AE, 0x01AE, 1, 218},
    {0x01AF, 0x01AF, 1, 1},    {0x01B1, 0x01B2, 1, 217},  {0x01B3, 0x01B5, 2, 1},
    {0x01B7, 0x01B7, 1, 219},  {0x01B8, 0x01B8, 1, 1},    {0x01BC, 0x01BC, 1, 1},
    {0x01C4, 0x01C4, 1, 2},    {0x01C7, 0x01C7, 1, 2},    {0x01CA, 0x01CA, 1, 2},
    {0x01CD, 0x01DB, 2, 1},    {0x01DE, 0x01EE, 2, 1},    {0x01F1, 0x01F1, 1, 2},
    {0x01F4, 0x01F4, 1, 1},    {0x01F6, 0x01F6, 1, -97},  {0x01F7, 0x01F7, 1, -56},
    {0x01F8, 0x021E, 2, 1},    {0x0220, 0x0220, 1, -130}, {0x0222, 0x0232, 2, 1},
    {0x023B, 0x023B, 1, 1},    {0x023D, 0x023D, 1, -163}, {0x0241, 0x0241, 1, 1},
    {0x0243, 0x0243, 1, -195}, {0x0244, 0x0244, 1, 69},   {0x0245, 0x0245, 1, 71},
    {0x0246, 0x024E, 2, 1},    {0x0370, 0x0372, 2, 1},    {0x0376, 0x0376, 1, 1},
    {0x037F, 0x037F, 1, 116},  {0x0386, 0x0386, 1, 38},   {0x0388, 0x038A, 1, 37},
    {0x038C, 0x038C, 1, 64},   {0x038E, 0x038F, 1, 63},   {0x0391, 0x03A1, 1, 32},
    {0x03A3, 0x03AB, 1, 32},   {0x03CF, 0x03CF, 1, 8},    {0x03D8, 0x03EE, 2, 1},
    {0x03F7, 0x03F7, 1, 1},    {0x03F9, 0x03F9, 1, -7},   {0x03FA, 0x03FA, 1, 1},
    {0x03FD, 0x03FF, 1, -130}, {0x0400, 0x040F, 1, 80},   {0x0410, 0x042F, 1, 32},
    {0x0460, 0x0480, 2, 1},    {0x048A, 0x04BE, 2, 1},    {0x04C0, 0x04C0, 1, 15},
    {0x04C1, 0x04CD, 2, 1},    {0x04D0, 0x052E, 2, 1},    {0x1E00, 0x1E94, 2, 1},
    {0x1EA0, 0x1EFE, 2, 1}};

/// Letters whose other case does not lead back to them: the long s, the final sigma, title case.
struct OneWay {
    char32_t from;
    char32_t to;
};

constexpr OneWay only_upper[] = {{0x00B5, 0x039C}, {0x0131, 0x0049}, {0x017F, 0x0053}, {0x01C5, 0x01C4},
                                 {0x01C8, 0x01C7}, {0x01CB, 0x01CA}, {0x01F2, 0x01F1}, {0x03C2, 0x03A3},
                                 {0x03D0, 0x0392}, {0x03D1, 0x0398}, {0x03D5, 0x03A6}, {0x03D6, 0x03A0},
                                 {0x03F0, 0x039A}, {0x03F1, 0x03A1}, {0x03F5, 0x0395}, {0x1E9B, 0x1E60}};

constexpr OneWay only_lower[] = {{0x0130, 0x0069}, {0x01C5, 0x01C6}, {0x01C8, 0x01C9}, {0x01CB, 0x01CC},
                                 {0x01F2, 0x01F3}, {0x03F4, 0x03B8}, {0x1E9E, 0x00DF}};

template <std::size_t count>
const OneWay* find_one_way(const OneWay (&table)[count], char32_t letter) {
    const auto found = std::find_if(std::begin(table), std::end(table),
                                    [letter](const OneWay& entry) { return entry.from == letter; });
    return found == std::end(table) ? nullptr : found;
}

template <typename Change>
std::string change_each(std::string_view text, Change change) {
    if (std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; })) {
        std::string result(text);
        for (char& c : result)
            c = static_cast<char>(change(static_cast<char32_t>(c)));
        return result;
    }
    std::u32string code_points = to_code_points(text);
    for (char32_t& c : code_points)
        c = change(c);
    return from_code_points(code_points);
}

} // namespace

char32_t lower(char32_t letter) {
    if (letter < 0x80)
        return letter >= U'A' && letter <= U'Z' ? letter + 32 : letter;
    const auto range = std::find_if(std::begin(capital_ranges), std::end(capital_ranges),
                                    [letter](const CapitalRange& entry) { return letter <= entry.last; });
    if (range != std::end(capital_ranges) && letter >= range->first &&
        (letter - range->first) % static_cast<char32_t>(range->step) == 0)
        return static_cast<char32_t>(static_cast<int>(letter) + range->distance);
    const OneWay* one_way = find_one_way(only_lower, letter);
    return one_way ? one_way->to : letter;
}

char32_t upper(char32_t letter) {
    if (letter < 0x80)
        return letter >= U'a' && letter <= U'z' ? letter - 32 : letter;
    for (const CapitalRange& range : capital_ranges) {
        const int capital = static_cast<int>(letter) - range.distance;
        if (capital >= static_cast<int>(range.first) && capital <= static_cast<int>(range.last) &&
            (capital - static_cast<int>(range.first)) % range.step == 0)
            return static_cast<char32_t>(capital);
    }
    const OneWay* one_way = find_one_way(only_upper, letter);
    return one_way ? one_way->to : letter;
}

std::string lower(std::string_view text) {
    return change_each(text, [](char32_t c) { return lower(c); });
}

std::string upper(std::string_view text) {
    return change_each(text, [](char32_t c) { return upper(c); });
}

} // namespace tolva::basic
