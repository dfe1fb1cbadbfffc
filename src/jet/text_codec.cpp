#include "jet/text_codec.h"

#include <cstring>

#include "basic/single_byte_page.h"
#include "jet/bytes.h"

namespace tolva::jet {
namespace {

void append_utf8(std::string& out, char32_t point) {
    const auto put = [&](char32_t byte) { out += static_cast<char>(static_cast<unsigned char>(byte)); };
    if (point < 0x80) {
        put(point);
    } else if (point < 0x800) {
        put(0xc0 | point >> 6);
        put(0x80 | (point & 0x3f));
    } else if (point < 0x10000) {
        put(0xe0 | point >> 12);
        put(0x80 | (point >> 6 & 0x3f));
        put(0x80 | (point & 0x3f));
    } else {
        put(0xf0 | point >> 18);
        put(0x80 | (point >> 12 & 0x3f));
        put(0x80 | (point >> 6 & 0x3f));
        put(0x80 | (point & 0x3f));
    }
}

/// Joins surrogates; a lone one becomes U+FFFD.
class Utf16Sink {
  public:
    explicit Utf16Sink(std::string& out) : out_(out) {}

    void unit(std::uint16_t unit) {
        if (high_ != 0) {
            if (unit >= 0xdc00 && unit < 0xe000) {
                append_utf8(out_, 0x10000 + (static_cast<char32_t>(high_ - 0xd800) << 10) + (unit - 0xdc00u));
                high_ = 0;
                return;
            }
            flush();
        }
        if (unit >= 0xd800 && unit < 0xdc00)
            high_ = unit;
        else
            append_utf8(out_, unit >= 0xdc00 && unit < 0xe000 ? 0xfffd : unit);
    }
    void flush() {
        if (high_ != 0)
            append_utf8(out_, 0xfffd);
        high_ = 0;
    }

  private:
    std::string& out_;
    std::uint16_t high_ = 0;
};

bool is_compressed(std::span<const std::uint8_t> stored) {
    return stored.size() >= 2 && stored[0] == 0xff && stored[1] == 0xfe;
}

constexpr char16_t replacement = 0xfffd;
constexpr std::size_t upper_half = 0x80;

/// A byte to which its page gives no character stands for the control character of its number, so that every
/// byte survives a round trip.
char16_t unit_of(std::u16string_view page, std::uint8_t byte) {
    if (byte < upper_half)
        return byte;
    if (page.size() != upper_half)
        return replacement;
    const char16_t unit = page[byte - upper_half];
    return unit == u' ' ? byte : unit;
}

std::uint8_t byte_of(std::u16string_view page, char16_t unit) {
    if (unit < upper_half)
        return static_cast<std::uint8_t>(unit);
    const std::size_t place = page.find(unit);
    if (place != page.npos)
        return static_cast<std::uint8_t>(upper_half + place);
    if (unit <= 0xff && page.size() == upper_half && page[unit - upper_half] == u' ')
        return static_cast<std::uint8_t>(unit);
    return '?';
}

/// Where plain ASCII ends, at the end of the text or at a byte that is zero or no ASCII.
const std::uint8_t* end_of_ascii(const std::uint8_t* at, const std::uint8_t* end) {
    // Eight at a time, the last of them perhaps anew.
    const auto eight_are_plain = [](const std::uint8_t* from) {
        constexpr std::uint64_t lows = 0x0101'0101'0101'0101, highs = lows << 7;
        std::uint64_t eight;
        std::memcpy(&eight, from, sizeof eight);
        return (((eight - lows) | eight) & highs) == 0; // no high bit, and no zero that borrowed
    };
    if (end - at >= 8) {
        while (end - at >= 8 && eight_are_plain(at))
            at += 8;
        if (end - at < 8 && eight_are_plain(end - 8))
            return end;
    }
    while (at != end && *at != 0 && *at < upper_half)
        ++at;
    return at;
}

void assign_bytes(std::string& out, const std::uint8_t* begin, const std::uint8_t* end) {
    out.assign(reinterpret_cast<const char*>(begin), static_cast<std::size_t>(end - begin));
}

void decode_bytes(std::span<const std::uint8_t> stored, int code_page, std::string& out) {
    const std::uint8_t* const end = stored.data() + stored.size();
    const std::uint8_t* at = end_of_ascii(stored.data(), end);
    assign_bytes(out, stored.data(), at);
    std::u16string_view page;
    for (; at != end; ++at) {
        if (*at >= upper_half && page.empty())
            page = basic::single_byte_page(code_page);
        append_utf8(out, unit_of(page, *at));
    }
}

} // namespace

bool knows_code_page(int number) {
    return !basic::single_byte_page(number).empty();
}

std::uint8_t code_page_byte(int number, char16_t unit) {
    return unit < upper_half ? static_cast<std::uint8_t>(unit)
                             : byte_of(basic::single_byte_page(number), unit);
}

std::string decode_text(std::span<const std::uint8_t> stored, const Format& format) {
    std::string out;
    decode_text(stored, format, out);
    return out;
}

void decode_text(std::span<const std::uint8_t> stored, const Format& format, std::string& out) {
    if (format.character_size == 1) {
        decode_bytes(stored, format.code_page, out);
        return;
    }
    const std::uint8_t* at = stored.data();
    const std::uint8_t* const end = at + stored.size();
    bool one_byte = false;
    if (is_compressed(stored)) {
        at += 2;
        one_byte = true;
        // Nearly every value is plain ASCII from here to its end.
        const std::uint8_t* const stop = end_of_ascii(at, end);
        assign_bytes(out, at, stop);
        at = stop;
        if (at == end)
            return;
    } else {
        out.clear();
        out.reserve(stored.size() / 2 + 8);
    }
    Utf16Sink sink(out);
    const bool switches = one_byte;
    while (at != end) {
        if (switches && *at == 0) {
            one_byte = !one_byte;
            ++at;
        } else if (one_byte) {
            sink.unit(*at++);
        } else if (end - at >= 2) {
            sink.unit(get16(at));
            at += 2;
        } else {
            break; // half a character
        }
    }
    sink.flush();
}

std::u16string to_utf16(std::string_view text) {
    std::u16string out;
    out.reserve(text.size());
    const auto* at = reinterpret_cast<const unsigned char*>(text.data());
    const auto* const end = at + text.size();
    while (at != end) {
        const unsigned char lead = *at;
        if (lead < 0x80) {
            out += static_cast<char16_t>(lead);
            ++at;
            continue;
        }
        const int more = lead >= 0xf0 && lead < 0xf5 ? 3 : lead >= 0xe0 ? 2 : lead >= 0xc2 ? 1 : 0;
        char32_t point = more == 3 ? lead & 7u : more == 2 ? lead & 15u : lead & 31u;
        bool good = more != 0 && lead < 0xf5 && end - at > more;
        for (int i = 1; good && i <= more; ++i) {
            good = (at[i] & 0xc0) == 0x80;
            point = point << 6 | (at[i] & 0x3fu);
        }
        good = good && !(more == 2 && point < 0x800) &&
               !(more == 3 && (point < 0x10000 || point > 0x10ffff)) && !(point >= 0xd800 && point < 0xe000);
        if (!good) {
            out += u'\xfffd';
            ++at;
            continue;
        }
        at += more + 1;
        if (point >= 0x10000) {
            out += static_cast<char16_t>(0xd800 + ((point - 0x10000) >> 10));
            out += static_cast<char16_t>(0xdc00 + ((point - 0x10000) & 0x3ff));
        } else {
            out += static_cast<char16_t>(point);
        }
    }
    return out;
}

void encode_text(std::vector<std::uint8_t>& out, std::u16string_view units, bool may_compress,
                 const Format& format) {
    if (format.character_size == 1) {
        const std::u16string_view page = basic::single_byte_page(format.code_page);
        for (const char16_t unit : units)
            out.push_back(byte_of(page, unit));
        return;
    }
    const std::size_t start = out.size();
    const std::size_t plain_size = units.size() * 2;
    if (may_compress && !units.empty() && units.size() <= format.longest_compressed) {
        out.push_back(0xff);
        out.push_back(0xfe);
        bool one_byte = true;
        bool worth = true;
        for (const char16_t unit : units) {
            if ((unit & 0xff) == 0)
                worth = false; // its zero would read as a switch
            if (!worth || out.size() - start >= plain_size)
                break;
            if ((unit < 0x100) != one_byte) {
                out.push_back(0);
                one_byte = !one_byte;
            }
            out.push_back(static_cast<std::uint8_t>(unit));
            if (!one_byte)
                out.push_back(static_cast<std::uint8_t>(unit >> 8));
        }
        if (worth && out.size() - start < plain_size)
            return;
        out.resize(start);
    }
    out.resize(start + plain_size);
    for (std::size_t i = 0; i < units.size(); ++i)
        put16(out.data() + start + 2 * i, units[i]);
}

} // namespace tolva::jet
