#include "rtf/text_decoder.h"

#include <algorithm>

namespace tolva::rtf {

namespace {

constexpr char32_t replacement = 0xFFFD;

bool is_ascii(std::string_view bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](char byte) {
        const auto value = static_cast<unsigned char>(byte);
        return value >= 0x20 && value < 0x80;
    });
}

} // namespace

void TextDecoder::put(char32_t character, std::string& out) {
    if (character >= 0x20 || character == U'\t')
        append_utf8(out, character);
}

void TextDecoder::character(char32_t character, std::string& out) {
    flush(out);
    append_utf8(out, character);
}

void TextDecoder::bytes(std::string_view bytes, const CodePage& page, std::string& out) {
    if (partial_.empty() && !high_surrogate_ && page.keeps_ascii() && is_ascii(bytes)) {
        out += bytes;
        return;
    }
    if (high_surrogate_)
        flush(out);
    for (const char byte : bytes) {
        if (!partial_.empty() && !(partial_page_ == page))
            flush(out);
        if (partial_.empty()) {
            wanted_ = page.length(static_cast<unsigned char>(byte));
            partial_page_ = page;
        }
        partial_ += byte;
        if (partial_.size() < wanted_)
            continue;
        const char32_t character = page.decode(partial_);
        const auto last = static_cast<unsigned char>(byte);
        const bool broken = character == replacement && partial_.size() > 1 && last < 0x80;
        put(character, out);
        partial_.clear();
        // A lead byte that stood alone must not swallow the letter behind it.
        if (broken)
            put(page.decode(std::string_view(&byte, 1)), out);
    }
}

void TextDecoder::utf8_or_page(std::string_view text, const CodePage& page, std::string& out) {
    static const CodePage utf8(CodePage::utf_8);
    while (!text.empty()) {
        const std::size_t length = utf8.length(static_cast<unsigned char>(text.front()));
        if (length == 1 || length > text.size()) {
            bytes(text.substr(0, 1), page, out);
            text.remove_prefix(1);
            continue;
        }
        const char32_t decoded = utf8.decode(text.substr(0, length));
        if (decoded == replacement && text.substr(0, length) != "\uFFFD") {
            bytes(text.substr(0, 1), page, out);
            text.remove_prefix(1);
        } else {
            character(decoded, out);
            text.remove_prefix(length);
        }
    }
}

void TextDecoder::unit(std::int32_t value, const CodePage& page, std::string& out) {
    if (!partial_.empty())
        flush(out);
    if (value < 0)
        value += 0x10000;
    if (value < 0 || value > 0x10FFFF)
        value = static_cast<std::int32_t>(replacement);
    const auto unit = static_cast<char32_t>(value);
    if (unit >= 0xDC00 && unit <= 0xDFFF && high_surrogate_) {
        const char32_t high = high_surrogate_;
        high_surrogate_ = 0;
        put(0x10000 + ((high - 0xD800) << 10) + (unit - 0xDC00), out);
        return;
    }
    if (high_surrogate_)
        flush(out);
    if (unit >= 0xD800 && unit <= 0xDBFF) {
        high_surrogate_ = unit;
    } else if (page.is_symbol() && unit >= 0xF020 && unit <= 0xF0FF) {
        const auto byte = static_cast<char>(unit - 0xF000);
        put(page.decode(std::string_view(&byte, 1)), out);
    } else {
        put(unit, out);
    }
}

void TextDecoder::flush(std::string& out) {
    if (!partial_.empty() || high_surrogate_)
        put(replacement, out);
    reset();
}

void TextDecoder::reset() {
    partial_.clear();
    high_surrogate_ = 0;
}

} // namespace tolva::rtf
