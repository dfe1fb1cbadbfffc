#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tolva::rtf {

/// The number behind a control word. Numbers that no 32 bits hold are clamped.
struct Parameter {
    std::int32_t value = 0;
    bool given = false;

    std::int32_t or_else(std::int32_t standard) const { return given ? value : standard; }
    /// What a switch means: on without a number, off with 0.
    bool on() const { return !given || value != 0; }
};

struct Token {
    enum class Kind : std::uint8_t {
        end,
        open,   ///< {
        close,  ///< }
        word,   ///< \name, `text` is the name
        symbol, ///< \ and one other character, or a bare tab: `byte`
        hex,    ///< \'xx: `byte`
        text,   ///< bytes that stand for themselves: `text`
    };

    Kind kind = Kind::end;
    unsigned char byte = 0;
    Parameter parameter;
    std::string_view text;
};

/// Takes a source apart. Never reads beyond it and bears any bytes: a backslash at the end is nothing, hex
/// digits that aren't are 0. Bare line ends and other control characters are passed over. Views point into
/// the source.
class Lexer {
  public:
    explicit Lexer(std::string_view source) : source_(source) {}

    Token next();

    /// Where the last token began, and where the next one does.
    std::size_t token_start() const { return token_start_; }
    std::size_t position() const { return position_; }
    std::string_view slice(std::size_t from, std::size_t to) const { return source_.substr(from, to - from); }

    /// The bytes that follow a \bin; empty when the source has fewer.
    std::string_view take(std::int32_t count);

    enum class Skip : std::uint8_t { whole, cut };
    /// Goes on behind the brace that closes the current group, over all groups within it. `cut` when the
    /// source ends before, or a \bin in it tells of more bytes than there are.
    Skip skip_group();

  private:
    Token control();
    Token word();
    Parameter parameter();

    std::string_view source_;
    std::size_t position_ = 0;
    std::size_t token_start_ = 0;
};

/// The value of a hexadecimal digit, or -1.
int hex_digit(unsigned char character);

} // namespace tolva::rtf
