#include "jet/text_order.h"

#include <algorithm>
#include <array>
#include <string>

#include "jet/text_order_general.h"
#include "jet/text_order_jet3.h"

namespace tolva::jet {
namespace {

// The parts of a key, in order; each that is there shows where the one before it ends:
//
//   weights  01  second weights  01 01  kana forms  01  records  00
//
// The second weights run up to the last that is not the plain 02; without kana and records nothing stands
// behind them but the 00.
constexpr std::uint8_t part_end = 0x01;
constexpr std::uint8_t text_end = 0x00;
constexpr std::uint8_t plain_second = 0x02;
constexpr std::uint8_t kana_lead = 0x7f;
constexpr std::uint16_t nothing_to_repeat = 0xffff;

// A record: where in the text, as a count of weights; a class; the character's code in it.
constexpr unsigned record_flag = 0x8000, record_base = 7, record_step = 4;
constexpr std::uint8_t record_class = 6;

// How a kana is written, two bits each, three to a byte under a leading 10.
enum KanaForm : std::uint8_t { written_small = 2, written_full = 3, sounds_once = 1, sounds_long = 3 };
constexpr std::uint8_t kana_end[] = {0x02, 0x80, 0xff, 0x80};

constexpr std::uint8_t no_kana = 0;

std::u16string_view without_trailing_blanks(std::u16string_view text) {
    while (!text.empty() && text.back() == u' ')
        text.remove_suffix(1);
    return text;
}

/// Takes a text's characters one by one and builds the parts of its key.
class KeyParts {
  public:
    void add(char16_t unit) {
        const CharCode code = general_code(unit);
        switch (code.kind) {
        case CharCode::Kind::none:
            break;
        case CharCode::Kind::weight:
            weigh(code.code, code.second);
            break;
        case CharCode::Kind::expansion:
            expand(general_expansion(unit));
            break;
        case CharCode::Kind::mark:
            mark(static_cast<std::uint8_t>(code.code));
            break;
        case CharCode::Kind::record:
            record(static_cast<std::uint8_t>(code.code));
            break;
        case CharCode::Kind::kana:
            kana(code, written_full);
            break;
        case CharCode::Kind::small_kana:
            kana(code, written_small);
            break;
        case CharCode::Kind::repeat:
            repeat(code.second);
            break;
        case CharCode::Kind::lengthen:
            lengthen();
            break;
        }
    }

    void append_to(std::vector<std::uint8_t>& key) {
        key.insert(key.end(), weights_.begin(), weights_.end());
        key.push_back(part_end);
        while (!seconds_.empty() && seconds_.back() <= plain_second)
            seconds_.pop_back();
        key.insert(key.end(), seconds_.begin(), seconds_.end());
        const bool has_kana = !forms_.empty();
        if (has_kana || !records_.empty()) {
            key.insert(key.end(), {part_end, part_end});
            if (has_kana) {
                append_forms(key, forms_, written_full);
                key.push_back(0xff);
                append_forms(key, lengths_, sounds_once);
                key.insert(key.end(), std::begin(kana_end), std::end(kana_end));
                if (!records_.empty())
                    key.push_back(0xff);
            }
            if (!records_.empty())
                key.push_back(part_end);
            key.insert(key.end(), records_.begin(), records_.end());
        }
        key.push_back(text_end);
    }

  private:
    void weigh(std::uint16_t weight, std::uint8_t second) {
        if (weight > 0xff)
            weights_.push_back(static_cast<std::uint8_t>(weight >> 8));
        weights_.push_back(static_cast<std::uint8_t>(weight));
        seconds_.push_back(second);
        last_ = weight;
        last_kana_ = no_kana;
    }

    void expand(const Expansion& letters) {
        for (std::size_t i = 0; i < letters.weights.size() && letters.weights[i]; ++i)
            weigh(letters.weights[i], letters.seconds[i]);
    }

    /// Adds to the second weight before it; at the start of a text it has a second weight of its own, which
    /// belongs to no weight.
    void mark(std::uint8_t amount) {
        if (!seconds_.empty()) {
            seconds_.back() = static_cast<std::uint8_t>(seconds_.back() + amount);
        } else {
            seconds_.push_back(amount);
            unplaced_ = 1;
        }
    }

    void record(std::uint8_t code) {
        const std::size_t place = record_base + record_step * (seconds_.size() - unplaced_);
        const unsigned field = record_flag | static_cast<unsigned>(place);
        records_.insert(records_.end(), {static_cast<std::uint8_t>(field >> 8),
                                         static_cast<std::uint8_t>(field), record_class, code});
    }

    void kana(const CharCode& code, KanaForm form, KanaForm length = sounds_once) {
        weigh(static_cast<std::uint16_t>(kana_lead << 8 | code.code), code.second);
        forms_.push_back(form);
        lengths_.push_back(length);
        last_kana_ = static_cast<std::uint8_t>(code.code);
    }

    void repeat(std::uint8_t second) {
        if (last_kana_ != no_kana)
            kana({CharCode::Kind::kana, last_kana_, second}, static_cast<KanaForm>(forms_.back()));
        else
            weigh(last_ ? last_ : nothing_to_repeat, second);
    }

    void lengthen() {
        if (last_kana_ == no_kana) {
            repeat(plain_second);
            return;
        }
        // Within each row of eight the sounds stand by their vowels; the n alone has none.
        const std::uint8_t vowel = last_kana_ & 7 ? last_kana_ & 7 : last_kana_;
        kana({CharCode::Kind::kana, vowel, plain_second}, static_cast<KanaForm>(forms_.back()), sounds_long);
    }

    static void append_forms(std::vector<std::uint8_t>& key, std::vector<std::uint8_t>& forms,
                             KanaForm plain) {
        while (!forms.empty() && forms.back() == plain)
            forms.pop_back();
        for (std::size_t i = 0; i < forms.size(); i += 3) {
            unsigned packed = 0x80;
            for (std::size_t j = 0; j < 3 && i + j < forms.size(); ++j)
                packed |= static_cast<unsigned>(forms[i + j]) << (4 - 2 * j);
            key.push_back(static_cast<std::uint8_t>(packed));
        }
    }

    std::vector<std::uint8_t> weights_, seconds_, records_, forms_, lengths_;
    std::size_t unplaced_ = 0; ///< second weights without a weight
    std::uint16_t last_ = 0;
    std::uint8_t last_kana_ = no_kana;
};

// ASCII, where a weight of a table is all there is, but for the characters that leave a record. -----------

struct AsciiCode {
    std::uint16_t weight = 0; ///< two bytes, the second 00 for a weight of one
    std::uint8_t record = 0;
};

std::array<AsciiCode, 128> make_ascii_codes() {
    std::array<AsciiCode, 128> codes;
    for (char16_t unit = 0; unit < codes.size(); ++unit) {
        const CharCode code = general_code(unit);
        if (code.kind == CharCode::Kind::weight)
            codes[unit].weight = static_cast<std::uint16_t>(code.code > 0xff ? code.code : code.code << 8);
        else if (code.kind == CharCode::Kind::record)
            codes[unit].record = static_cast<std::uint8_t>(code.code);
    }
    return codes;
}

const std::array<AsciiCode, 128>& ascii_codes() {
    static const std::array<AsciiCode, 128> codes = make_ascii_codes();
    return codes;
}

bool is_ascii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 128; });
}

std::string_view without_trailing_blanks(std::string_view text) {
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return text;
}

/// The key of a text of weights alone; nothing is appended for any other.
bool append_plain_key(std::vector<std::uint8_t>& key, std::u16string_view text) {
    const auto& codes = ascii_codes();
    const bool plain = std::all_of(text.begin(), text.end(), [&](char16_t unit) {
        return unit < codes.size() && codes[unit].weight != 0;
    });
    if (!plain)
        return false;
    for (const char16_t unit : text) {
        const std::uint16_t weight = codes[unit].weight;
        key.push_back(static_cast<std::uint8_t>(weight >> 8));
        if (weight & 0xff)
            key.push_back(static_cast<std::uint8_t>(weight));
    }
    key.insert(key.end(), {part_end, text_end});
    return true;
}

/// Reads the weights of an ASCII text, or its records, one at each call and 0 at the end.
class AsciiReader {
  public:
    AsciiReader(std::string_view text, const std::array<AsciiCode, 128>& codes)
        : rest_(text), codes_(codes) {}

    std::uint16_t next_weight() {
        while (!rest_.empty()) {
            const AsciiCode& code = codes_[static_cast<unsigned char>(rest_.front())];
            rest_.remove_prefix(1);
            if (code.weight)
                return code.weight;
            records_ = records_ || code.record;
        }
        return 0;
    }

    std::uint32_t next_record() {
        while (!rest_.empty()) {
            const AsciiCode& code = codes_[static_cast<unsigned char>(rest_.front())];
            rest_.remove_prefix(1);
            if (code.record)
                return (place_ + 1) << 8 | code.record;
            place_ += code.weight != 0;
        }
        return 0;
    }

    bool met_records() const { return records_; }

  private:
    std::string_view rest_;
    const std::array<AsciiCode, 128>& codes_;
    std::uint32_t place_ = 0;
    bool records_ = false;
};

std::weak_ordering compare_ascii(std::string_view a, std::string_view b) {
    const auto& codes = ascii_codes();
    AsciiReader left(a, codes), right(b, codes);
    for (;;) {
        const std::uint16_t l = left.next_weight(), r = right.next_weight();
        if (l != r)
            return l < r ? std::weak_ordering::less : std::weak_ordering::greater;
        if (l == 0)
            break;
    }
    if (!left.met_records() && !right.met_records())
        return std::weak_ordering::equivalent;
    AsciiReader left_records(a, codes), right_records(b, codes);
    for (;;) {
        const std::uint32_t l = left_records.next_record(), r = right_records.next_record();
        if (l != r)
            return l < r ? std::weak_ordering::less : std::weak_ordering::greater;
        if (l == 0)
            return std::weak_ordering::equivalent;
    }
}

/// UTF-16 units of UTF-8, at most so many. Malformed bytes and what lies beyond the first plane weigh
/// nothing, but the latter takes two units.
std::u16string to_units(std::string_view utf8, std::size_t most) {
    constexpr char16_t weightless = 0xfffd;
    std::u16string units;
    units.reserve(std::min(utf8.size(), most));
    for (std::size_t at = 0; at < utf8.size() && units.size() < most;) {
        const auto lead = static_cast<unsigned char>(utf8[at]);
        const std::size_t length = lead < 0x80             ? 1
                                   : (lead & 0xe0) == 0xc0 ? 2
                                   : (lead & 0xf0) == 0xe0 ? 3
                                   : (lead & 0xf8) == 0xf0 ? 4
                                                           : 0;
        char32_t point = length == 1 ? lead : length ? lead & (0x7fU >> length) : weightless;
        bool whole = length != 0 && at + length <= utf8.size();
        for (std::size_t i = 1; whole && i < length; ++i) {
            const auto byte = static_cast<unsigned char>(utf8[at + i]);
            whole = (byte & 0xc0) == 0x80;
            point = point << 6 | (byte & 0x3fU);
        }
        if (!whole || point > 0x10ffff || (point >= 0xd800 && point < 0xe000))
            point = weightless;
        if (point > 0xffff)
            units.push_back(weightless);
        units.push_back(point > 0xffff ? weightless : static_cast<char16_t>(point));
        at += whole ? length : 1;
    }
    return units;
}

std::vector<std::uint8_t> whole_key(std::string_view utf8) {
    KeyParts parts;
    const std::u16string units = to_units(utf8, std::u16string::npos);
    for (const char16_t unit : units)
        parts.add(unit);
    std::vector<std::uint8_t> key;
    parts.append_to(key);
    return key;
}

} // namespace

std::optional<TextOrder> known_text_order(const Format& format, std::uint16_t id, std::uint8_t version) {
    constexpr std::uint16_t general = 1033;
    constexpr int western_page = 1252;
    if (id != general || version != 0)
        return std::nullopt;
    if (format.version == Format::Version::jet4)
        return TextOrder::general_jet4;
    if (format.code_page == western_page)
        return TextOrder::general_jet3;
    return std::nullopt;
}

void append_text_key(std::vector<std::uint8_t>& key, std::u16string_view text, TextOrder order) {
    text = without_trailing_blanks(text.substr(0, indexed_characters));
    if (order == TextOrder::general_jet3) {
        append_jet3_text_key(key, text);
        return;
    }
    if (append_plain_key(key, text))
        return;
    KeyParts parts;
    for (const char16_t unit : text)
        parts.add(unit);
    parts.append_to(key);
}

void append_text_key(std::vector<std::uint8_t>& key, std::string_view utf8, TextOrder order) {
    append_text_key(key, to_units(utf8, indexed_characters), order);
}

std::vector<std::uint8_t> key_share(std::string_view letters_and_digits, TextOrder order) {
    std::vector<std::uint8_t> key;
    append_text_key(key, letters_and_digits, order);
    // Such a key is weights alone and what ends a text.
    const std::ptrdiff_t ending = order == TextOrder::general_jet3 ? 1 : 2;
    key.erase(key.end() - ending, key.end());
    return key;
}

std::weak_ordering compare_text(std::string_view a, std::string_view b, TextOrder order) {
    a = without_trailing_blanks(a);
    b = without_trailing_blanks(b);
    if (a == b)
        return std::weak_ordering::equivalent;
    if (order == TextOrder::general_jet3)
        return compare_jet3_text(to_units(a, std::u16string::npos), to_units(b, std::u16string::npos));
    if (is_ascii(a) && is_ascii(b))
        return compare_ascii(a, b);
    const auto left = whole_key(a), right = whole_key(b);
    return std::lexicographical_compare_three_way(left.begin(), left.end(), right.begin(), right.end());
}

} // namespace tolva::jet
