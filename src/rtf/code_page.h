#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tolva::rtf {

/// How bytes become characters: a code page by its Windows number, or the glyphs of a symbol font. Cheap to
/// copy; the tables behind it are constants.
class CodePage {
  public:
    static constexpr int utf_8 = 65001;
    static constexpr int windows_1252 = 1252;

    /// A number that is not at hand stands for 1252.
    explicit CodePage(int number = windows_1252);
    /// The glyphs of a symbol font; see symbol_font.h. A name without a table gives the private area.
    static CodePage of_symbol_font(std::string_view font_name);

    int number() const { return number_; }
    /// Whether a byte below 80 always stands for itself and is never part of anything longer.
    bool keeps_ascii() const { return kind_ == Kind::single_byte || kind_ == Kind::utf_8; }
    bool is_symbol() const { return kind_ == Kind::symbol; }

    /// How many bytes a character takes that begins with this one; at least 1.
    std::size_t length(unsigned char first) const;
    /// The character of `length` bytes; U+FFFD where they mean nothing.
    char32_t decode(std::string_view bytes) const;

    /// The byte for a character. Nothing for one that the page lacks, and for all of those above 7F in pages
    /// of more than one byte.
    std::optional<unsigned char> encode(char32_t character) const;

    friend bool operator==(const CodePage&, const CodePage&) = default;

  private:
    enum class Kind : std::uint8_t { single_byte, two_byte, utf_8, symbol };

    Kind kind_ = Kind::single_byte;
    int number_ = windows_1252;
    /// Single bytes from 80 on.
    std::u16string_view upper_;
    /// Symbol fonts: the glyphs from 20 on.
    std::u32string_view glyphs_;
};

/// The code page of a font's character set; nothing where the set leaves it to the document (1) or is
/// unknown.
std::optional<int> code_page_of_charset(int charset);

/// Whether we have the page's characters.
bool has_code_page(int number);

void append_utf8(std::string& text, char32_t character);
/// Leaves at most that many bytes, and no character in part.
void cut_utf8(std::string& text, std::size_t bytes);

} // namespace tolva::rtf
