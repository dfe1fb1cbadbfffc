#include "rtf/code_page.h"

#include <algorithm>
#include <iterator>

#include "basic/single_byte_page.h"
#include "rtf/code_page_tables.h"
#include "rtf/symbol_font.h"

namespace tolva::rtf {

namespace {

constexpr char32_t replacement = 0xFFFD;
/// Where symbol fonts of unknown glyphs have their characters: F000 and the byte.
constexpr char32_t private_area = 0xF000;

bool is_two_byte(int number) {
    return number == 932 || number == 936 || number == 949 || number == 950;
}

/// Pages that differ from another one only where no document cares.
int stand_in(int number) {
    switch (number) {
    case 0:
    case 819:
    case 28591:
        return CodePage::windows_1252;
    case 10001:
        return 932;
    case 10002:
        return 950;
    case 10003:
    case 1361:
        return 949;
    case 10008:
        return 936;
    case 10017:
        return 10007;
    case 10004:
        return 1256;
    case 10005:
        return 1255;
    case 10021:
        return 874;
    default:
        return number;
    }
}

/// Which bytes begin a character of two.
bool is_lead(int number, unsigned char byte) {
    switch (number) {
    case 932:
        return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
    case 936:
    case 949:
    case 950:
        return byte >= 0x81 && byte <= 0xFE;
    default:
        return false;
    }
}

char32_t decode_pair(int number, unsigned char lead, unsigned char trail) {
    switch (number) {
    case 932:
        return two_byte_932(lead, trail);
    case 936:
        return two_byte_936(lead, trail);
    case 949:
        return two_byte_949(lead, trail);
    default:
        return two_byte_950(lead, trail);
    }
}

/// A byte above 7F that stands alone in a two-byte page.
char32_t decode_alone(int number, unsigned char byte) {
    if (number == 932 && byte >= 0xA1 && byte <= 0xDF)
        return 0xFF61u + (byte - 0xA1u); // half-width katakana
    if (number == 936 && byte == 0x80)
        return 0x20AC;
    return byte == 0x80 ? 0x80u : replacement;
}

std::size_t utf8_length(unsigned char first) {
    if (first >= 0xF0 && first <= 0xF4)
        return 4;
    if (first >= 0xE0 && first <= 0xEF)
        return 3;
    return first >= 0xC2 && first <= 0xDF ? 2 : 1;
}

char32_t decode_utf8(std::string_view bytes) {
    const auto first = static_cast<unsigned char>(bytes[0]);
    if (bytes.size() == 1)
        return first < 0x80 ? first : replacement;
    char32_t character = first & (0xFFu >> (bytes.size() + 1));
    for (const char byte : bytes.substr(1)) {
        if ((static_cast<unsigned char>(byte) & 0xC0) != 0x80)
            return replacement;
        character = character << 6 | (static_cast<unsigned char>(byte) & 0x3Fu);
    }
    constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
    return character < smallest[bytes.size()] || surrogate || character > 0x10FFFF ? replacement : character;
}

} // namespace

CodePage::CodePage(int number) : number_(stand_in(number)) {
    if (number_ == utf_8) {
        kind_ = Kind::utf_8;
    } else if (is_two_byte(number_)) {
        kind_ = Kind::two_byte;
    } else {
        upper_ = basic::single_byte_page(number_);
        if (upper_.empty()) {
            number_ = windows_1252;
            upper_ = basic::single_byte_page(number_);
        }
    }
}

CodePage CodePage::of_symbol_font(std::string_view font_name) {
    CodePage page;
    page.kind_ = Kind::symbol;
    page.number_ = 0;
    page.upper_ = {};
    page.glyphs_ = symbol_glyphs(font_name);
    return page;
}

std::size_t CodePage::length(unsigned char first) const {
    switch (kind_) {
    case Kind::two_byte:
        return is_lead(number_, first) ? 2 : 1;
    case Kind::utf_8:
        return utf8_length(first);
    default:
        return 1;
    }
}

char32_t CodePage::decode(std::string_view bytes) const {
    const auto first = static_cast<unsigned char>(bytes[0]);
    switch (kind_) {
    case Kind::symbol: {
        if (first < 0x20)
            return first;
        const char32_t glyph = first - 0x20u < glyphs_.size() ? glyphs_[first - 0x20u] : 0;
        return glyph ? glyph : private_area + first;
    }
    case Kind::utf_8:
        return decode_utf8(bytes);
    case Kind::two_byte: {
        if (first < 0x80)
            return first;
        if (bytes.size() == 1)
            return decode_alone(number_, first);
        const char32_t character = decode_pair(number_, first, static_cast<unsigned char>(bytes[1]));
        return character ? character : replacement;
    }
    case Kind::single_byte:
        break;
    }
    if (first < 0x80)
        return first;
    const char16_t character = upper_[first - 0x80u];
    if (character != u' ')
        return character;
    // Unused bytes of this range keep their number, so that nothing is lost on the way back.
    return first < 0xA0 ? first : replacement;
}

std::optional<unsigned char> CodePage::encode(char32_t character) const {
    if (kind_ == Kind::symbol) {
        if (character >= private_area + 0x20 && character <= private_area + 0xFF) {
            const auto byte = static_cast<unsigned char>(character - private_area);
            if (decode(std::string_view(reinterpret_cast<const char*>(&byte), 1)) == character)
                return byte;
            return std::nullopt;
        }
        const std::size_t at = character ? glyphs_.find(character) : std::u32string_view::npos;
        if (at == std::u32string_view::npos)
            return std::nullopt;
        return static_cast<unsigned char>(at + 0x20);
    }
    if (character < 0x80)
        return static_cast<unsigned char>(character);
    if (kind_ != Kind::single_byte || character > 0xFFFF)
        return std::nullopt;
    const std::size_t at = upper_.find(static_cast<char16_t>(character));
    if (at != std::u16string_view::npos)
        return static_cast<unsigned char>(at + 0x80);
    if (character < 0xA0 && upper_[character - 0x80u] == u' ')
        return static_cast<unsigned char>(character);
    return std::nullopt;
}

std::optional<int> code_page_of_charset(int charset) {
    struct Pair {
        int charset, code_page;
    };
    static constexpr Pair pairs[] = {
        {0, 1252},   {77, 10000}, {78, 932},   {79, 949},   {80, 936},   {81, 950},
        {83, 1255},  {84, 1256},  {85, 10006}, {86, 10081}, {87, 874},   {88, 10029},
        {89, 10007}, {128, 932},  {129, 949},  {130, 949},  {134, 936},  {136, 950},
        {161, 1253}, {162, 1254}, {163, 1258}, {177, 1255}, {178, 1256}, {186, 1257},
        {204, 1251}, {222, 874},  {238, 1250}, {254, 437},  {255, 850},
    };
    const auto pair = std::find_if(std::begin(pairs), std::end(pairs),
                                   [charset](const Pair& candidate) { return candidate.charset == charset; });
    return pair == std::end(pairs) ? std::nullopt : std::optional<int>(pair->code_page);
}

bool has_code_page(int number) {
    const int page = stand_in(number);
    return page == CodePage::utf_8 || is_two_byte(page) || !basic::single_byte_page(page).empty();
}

void cut_utf8(std::string& text, std::size_t bytes) {
    if (text.size() <= bytes)
        return;
    while (bytes && (static_cast<unsigned char>(text[bytes]) & 0xC0) == 0x80)
        --bytes;
    text.resize(bytes);
}

void append_utf8(std::string& text, char32_t character) {
    if ((character >= 0xD800 && character <= 0xDFFF) || character > 0x10FFFF)
        character = replacement;
    if (character < 0x80) {
        text += static_cast<char>(character);
    } else if (character < 0x800) {
        text += static_cast<char>(0xC0 | character >> 6);
        text += static_cast<char>(0x80 | (character & 0x3F));
    } else if (character < 0x10000) {
        text += static_cast<char>(0xE0 | character >> 12);
        text += static_cast<char>(0x80 | (character >> 6 & 0x3F));
        text += static_cast<char>(0x80 | (character & 0x3F));
    } else {
        text += static_cast<char>(0xF0 | character >> 18);
        text += static_cast<char>(0x80 | (character >> 12 & 0x3F));
        text += static_cast<char>(0x80 | (character >> 6 & 0x3F));
        text += static_cast<char>(0x80 | (character & 0x3F));
    }
}

} // namespace tolva::rtf
