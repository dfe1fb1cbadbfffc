#pragma once

#include <array>
#include <cstdint>
#include <span>

namespace tolva::jet {

/// What the Jet 4 General order makes of one character. The order is that of the first NT systems with the
/// weights renumbered: a Latin letter's weight is one byte, everything else's two, and letters of either
/// case, full or half width, share it.
struct CharCode {
    enum class Kind : std::uint8_t {
        none,       ///< leaves no trace
        weight,     ///< `code` is the weight, `second` tells it from others of that weight
        expansion,  ///< weighs as two or three letters: `general_expansion`
        mark,       ///< adds `code` to the second weight of what stands before
        record,     ///< no weight; `code` and the place go to the end of the key
        kana,       ///< weight 7F `code`
        small_kana, ///< the same, written small
        repeat,     ///< weighs what the character before it weighs
        lengthen,   ///< weighs as the vowel of the kana before it
    };

    Kind kind = Kind::none;
    std::uint16_t code = 0;
    std::uint8_t second = 2;
};

/// A letter that sorts as several: the ligatures, the sharp s, the thorn.
struct Expansion {
    char16_t unit;
    std::array<std::uint16_t, 3> weights; ///< 0 ends them
    std::array<std::uint8_t, 3> seconds;
};

CharCode general_code(char16_t unit);
const Expansion& general_expansion(char16_t unit);

// How the table files hold the codes. ------------------------------------------------------------------

/// How the codes run on through a stretch of characters.
enum class Step : std::uint8_t {
    same,    ///< all have the one weight: the two cases of a letter
    next,    ///< each has the next weight
    pairs,   ///< every second one has the next weight
    seconds, ///< one weight, each the next second weight
    sixth,   ///< each has the sixth weight after the one before
    mark,
    record,
    repeat,
    lengthen,
};

/// `count` characters from `first` on. Weights up to FF are one byte; the second byte of the others runs
/// from 02 to FF.
struct Stretch {
    char16_t first;
    std::uint16_t count;
    std::uint16_t code;
    std::uint8_t second = 2;
    Step step = Step::same;
};

/// Characters from `first` on whose weights follow no rule.
struct CodeList {
    char16_t first;
    std::uint16_t count;
    const std::uint16_t* codes;
    std::uint8_t second = 2;
};

/// Both by their first characters; what neither has leaves no trace.
struct CodeBlock {
    char16_t first, last;
    std::span<const Stretch> stretches;
    std::span<const CodeList> lists;
};

extern const CodeBlock general_latin, general_scripts, general_latin_additional, general_symbols,
    general_east_asia;

namespace general {

/// The weights of A to Z, of 0 to 9 and of the numbers 1 to 20.
inline constexpr std::uint16_t letters[] = {0x4A, 0x4C, 0x4D, 0x4F, 0x51, 0x53, 0x55, 0x57, 0x59,
                                            0x5B, 0x5C, 0x5E, 0x60, 0x62, 0x64, 0x66, 0x68, 0x69,
                                            0x6B, 0x6D, 0x6F, 0x71, 0x73, 0x75, 0x76, 0x78};
inline constexpr std::uint16_t digits[] = {0x36, 0x38, 0x3A, 0x3C, 0x3E, 0x40, 0x42, 0x44, 0x46, 0x48};
inline constexpr std::uint16_t numbers[] = {0x38,   0x3A,   0x3C,   0x3E,   0x40,   0x42,   0x44,
                                            0x46,   0x48,   0x4912, 0x4915, 0x4917, 0x4919, 0x491A,
                                            0x491B, 0x491C, 0x491E, 0x491F, 0x4920, 0x4921};

} // namespace general
} // namespace tolva::jet
