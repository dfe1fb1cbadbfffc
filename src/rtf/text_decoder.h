#pragma once

#include <string>
#include <string_view>

#include "rtf/code_page.h"

namespace tolva::rtf {

/// Turns what a source holds as text into UTF-8: bytes by a code page, also where the bytes of one character
/// come in parts, and 16-bit units. What means nothing becomes U+FFFD. Of control characters only the tab
/// gets through.
class TextDecoder {
  public:
    /// Bytes by the page.
    void bytes(std::string_view bytes, const CodePage& page, std::string& out);
    /// Bytes that are UTF-8, by the page where they aren't.
    void utf8_or_page(std::string_view bytes, const CodePage& page, std::string& out);
    /// One \uN. In symbol fonts the private area stands for the font's bytes.
    void unit(std::int32_t value, const CodePage& page, std::string& out);
    void character(char32_t character, std::string& out);

    /// Whether a character has begun that isn't complete.
    bool pending() const { return !partial_.empty() || high_surrogate_ != 0; }
    /// Gives up what is pending, as something else than text follows.
    void flush(std::string& out);
    /// Forgets it.
    void reset();

  private:
    void put(char32_t character, std::string& out);

    std::string partial_;
    std::size_t wanted_ = 0;
    CodePage partial_page_;
    char32_t high_surrogate_ = 0;
};

} // namespace tolva::rtf
