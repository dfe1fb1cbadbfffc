#include "jet/text_order_general.h"

#include <algorithm>
#include <cassert>

namespace tolva::jet {
namespace {

/// Two-byte weights use 254 values of their second byte: 00 and 01 end parts of a key.
constexpr unsigned second_bytes = 254;

constexpr std::uint16_t weight_after(std::uint16_t weight, unsigned steps) {
    if (weight <= 0xff)
        return static_cast<std::uint16_t>(weight + steps);
    const unsigned place = (weight >> 8) * second_bytes + (weight & 0xff) - 2 + steps;
    return static_cast<std::uint16_t>((place / second_bytes) << 8 | (place % second_bytes + 2));
}

constexpr Expansion expansions[] = {
    // clang-format off
    {0x00C6, {0x4A, 0x51}, {2, 2}}, {0x00DE, {0x6D, 0x57}, {2, 2}}, {0x00DF, {0x6B, 0x6B}, {2, 2}},
    {0x00E6, {0x4A, 0x51}, {2, 2}}, {0x00FE, {0x6D, 0x57}, {2, 2}}, {0x0132, {0x59, 0x5B}, {2, 2}},
    {0x0133, {0x59, 0x5B}, {2, 2}}, {0x0152, {0x64, 0x51}, {2, 2}}, {0x0153, {0x64, 0x51}, {2, 2}},
    {0x01C4, {0x4F, 0x78}, {2, 0x14}}, {0x01C5, {0x4F, 0x78}, {2, 0x14}}, {0x01C6, {0x4F, 0x78}, {2, 0x14}},
    {0x01C7, {0x5E, 0x5B}, {2, 2}}, {0x01C8, {0x5E, 0x5B}, {2, 2}}, {0x01C9, {0x5E, 0x5B}, {2, 2}},
    {0x01CA, {0x62, 0x5B}, {2, 2}}, {0x01CB, {0x62, 0x5B}, {2, 2}}, {0x01CC, {0x62, 0x5B}, {2, 2}},
    {0x01E2, {0x4A, 0x51}, {0x17, 0x17}}, {0x01E3, {0x4A, 0x51}, {0x17, 0x17}},
    {0x01F1, {0x4F, 0x78}, {2, 2}}, {0x01F2, {0x4F, 0x78}, {2, 2}}, {0x01F3, {0x4F, 0x78}, {2, 2}},
    {0x01FC, {0x4A, 0x51}, {0x0E, 0x0E}}, {0x01FD, {0x4A, 0x51}, {0x0E, 0x0E}},
    {0x05F0, {0x7999, 0x7999}, {2, 2}}, {0x05F1, {0x7999, 0x799D}, {2, 2}}, {0x05F2, {0x799D, 0x799D}, {2, 2}},
    {0xFB00, {0x53, 0x53}, {2, 2}}, {0xFB01, {0x53, 0x59}, {2, 2}}, {0xFB02, {0x53, 0x5E}, {2, 2}},
    {0xFB03, {0x53, 0x53, 0x59}, {2, 2, 2}}, {0xFB04, {0x53, 0x53, 0x5E}, {2, 2, 2}},
    {0xFB05, {0x6C06, 0x6D}, {2, 2}}, {0xFB06, {0x6B, 0x6D}, {2, 2}},
    // clang-format on
};

const Expansion* find_expansion(char16_t unit) {
    const auto found = std::lower_bound(std::begin(expansions), std::end(expansions), unit,
                                        [](const Expansion& e, char16_t u) { return e.unit < u; });
    return found != std::end(expansions) && found->unit == unit ? found : nullptr;
}

// Kana by sound: 02 to 06 for the bare vowels, eight further for each consonant. Added to it: the second
// weight of a voiced (3xx) or half voiced (4xx) sound, and 1xxx for one written small.

constexpr std::uint16_t hiragana[] = {
    0x1002, 0x002, 0x1003, 0x003, 0x1004, 0x004, 0x1005, 0x005,  0x1006, 0x006, 0x00A,  0x30A, 0x00B,  0x30B,
    0x00C,  0x30C, 0x00D,  0x30D, 0x00E,  0x30E, 0x012,  0x312,  0x013,  0x313, 0x014,  0x314, 0x015,  0x315,
    0x016,  0x316, 0x01A,  0x31A, 0x01B,  0x31B, 0x101C, 0x01C,  0x31C,  0x01D, 0x31D,  0x01E, 0x31E,  0x022,
    0x023,  0x024, 0x025,  0x026, 0x02A,  0x32A, 0x42A,  0x02B,  0x32B,  0x42B, 0x02C,  0x32C, 0x42C,  0x02D,
    0x32D,  0x42D, 0x02E,  0x32E, 0x42E,  0x032, 0x033,  0x034,  0x035,  0x036, 0x103A, 0x03A, 0x103C, 0x03C,
    0x103E, 0x03E, 0x042,  0x043, 0x044,  0x045, 0x046,  0x104A, 0x04A,  0x04B, 0x04D,  0x04E, 0x080,  0x304};
constexpr std::uint16_t katakana_only[] = {0x100A, 0x100D, 0x34A, 0x34B, 0x34D, 0x34E};
constexpr std::uint16_t half_width[] = {
    0x04E, 0x1002, 0x1003, 0x1004, 0x1005, 0x1006, 0x103A, 0x103C, 0x103E, 0x101C, 0,     0x002,
    0x003, 0x004,  0x005,  0x006,  0x00A,  0x00B,  0x00C,  0x00D,  0x00E,  0x012,  0x013, 0x014,
    0x015, 0x016,  0x01A,  0x01B,  0x01C,  0x01D,  0x01E,  0x022,  0x023,  0x024,  0x025, 0x026,
    0x02A, 0x02B,  0x02C,  0x02D,  0x02E,  0x032,  0x033,  0x034,  0x035,  0x036,  0x03A, 0x03C,
    0x03E, 0x042,  0x043,  0x044,  0x045,  0x046,  0x04A,  0x080};
/// In the order of an old poem that the circled ones follow by Unicode's count, not by their sounds.
constexpr std::uint8_t circled[] = {0x03, 0x46, 0x2A, 0x23, 0x2E, 0x2D, 0x1E, 0x1B, 0x43, 0x24, 0x44, 0x4E,
                                    0x4A, 0x0A, 0x3E, 0x1A, 0x45, 0x16, 0x1C, 0x25, 0x22, 0x42, 0x34, 0x04,
                                    0x4B, 0x26, 0x06, 0x0C, 0x3A, 0x32, 0x0D, 0x2C, 0x0E, 0x4D, 0x1D, 0x02,
                                    0x12, 0x0B, 0x3C, 0x35, 0x33, 0x13, 0x03, 0x2B, 0x36, 0x15, 0x14};
constexpr std::uint8_t circle = 0xEE;

constexpr CharCode kana_code(std::uint16_t packed) {
    if (packed == 0)
        return {};
    const std::uint8_t voice = (packed >> 8) & 0xf;
    return {packed & 0x1000 ? CharCode::Kind::small_kana : CharCode::Kind::kana,
            static_cast<std::uint16_t>(packed & 0xff), voice ? voice : std::uint8_t{2}};
}

template <std::size_t Size>
CharCode from_row(const std::uint16_t (&row)[Size], char16_t first, char16_t unit) {
    return unit >= first && unit < first + Size ? kana_code(row[unit - first]) : CharCode{};
}

CharCode kana(char16_t unit) {
    if (unit < 0x30a1)
        return from_row(hiragana, 0x3041, unit);
    if (unit < 0x30f5)
        return from_row(hiragana, 0x30a1, unit);
    if (unit < 0x3100)
        return from_row(katakana_only, 0x30f5, unit);
    if (unit >= 0x32d0 && unit < 0x32d0 + std::size(circled))
        return {CharCode::Kind::kana, circled[unit - 0x32d0], circle};
    return from_row(half_width, 0xff66, unit);
}

CharCode in_stretch(const Stretch& stretch, unsigned place) {
    using Kind = CharCode::Kind;
    const auto counted = static_cast<std::uint16_t>(stretch.code + place);
    switch (stretch.step) {
    case Step::same:
        return {Kind::weight, stretch.code, stretch.second};
    case Step::next:
        return {Kind::weight, weight_after(stretch.code, place), stretch.second};
    case Step::pairs:
        return {Kind::weight, weight_after(stretch.code, place / 2), stretch.second};
    case Step::seconds:
        return {Kind::weight, stretch.code, static_cast<std::uint8_t>(stretch.second + place)};
    case Step::sixth:
        return {Kind::weight, weight_after(stretch.code, place * 6), stretch.second};
    case Step::mark:
        return {Kind::mark, counted, 0};
    case Step::record:
        return {Kind::record, counted, 0};
    case Step::repeat:
        return {Kind::repeat, 0, stretch.second};
    case Step::lengthen:
        return {Kind::lengthen, 0, stretch.second};
    }
    return {};
}

/// The last of `runs` that starts at or before `unit`, when it reaches that far.
template <typename Run>
const Run* find_run(std::span<const Run> runs, char16_t unit) {
    auto after = std::upper_bound(runs.begin(), runs.end(), unit,
                                  [](char16_t u, const Run& run) { return u < run.first; });
    if (after == runs.begin())
        return nullptr;
    const Run& run = *--after;
    return unit - run.first < run.count ? &run : nullptr;
}

CharCode in_block(const CodeBlock& block, char16_t unit) {
    if (const Stretch* stretch = find_run(block.stretches, unit))
        return in_stretch(*stretch, static_cast<unsigned>(unit - stretch->first));
    if (const CodeList* list = find_run(block.lists, unit))
        return {CharCode::Kind::weight, list->codes[unit - list->first], list->second};
    if (find_expansion(unit))
        return {CharCode::Kind::expansion, 0, 0};
    return kana(unit);
}

} // namespace

CharCode general_code(char16_t unit) {
    for (const CodeBlock* block :
         {&general_latin, &general_scripts, &general_latin_additional, &general_symbols, &general_east_asia})
        if (unit <= block->last)
            return in_block(*block, unit);
    return {};
}

const Expansion& general_expansion(char16_t unit) {
    const Expansion* const found = find_expansion(unit);
    assert(found);
    return *found;
}

} // namespace tolva::jet
