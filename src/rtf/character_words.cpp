#include "rtf/character_words.h"

#include <algorithm>

#include "rtf/limits.h"

namespace tolva::rtf {

namespace {

struct Switch {
    std::string_view name;
    bool CharacterFormat::*member;
};

constexpr Switch switches[] = {
    {"b", &CharacterFormat::bold},        {"i", &CharacterFormat::italic},
    {"strike", &CharacterFormat::strike}, {"striked", &CharacterFormat::double_strike},
    {"caps", &CharacterFormat::caps},     {"scaps", &CharacterFormat::small_caps},
    {"v", &CharacterFormat::hidden},      {"outl", &CharacterFormat::outline},
    {"shad", &CharacterFormat::shadow},   {"embo", &CharacterFormat::embossed},
    {"impr", &CharacterFormat::engraved},
};

constexpr std::string_view underlines[] = {
    "ulnone",   "ul",    "ulw",      "uld",       "uldash",     "uldashd",
    "uldashdd", "uldb",  "ulth",     "ulwave",    "ulhwave",    "ululdbwave",
    "ulldash",  "ulthd", "ulthdash", "ulthdashd", "ulthdashdd", "ulthldash",
};

template <bool CharacterFormat::*member>
void turn(CharacterFormat& format, Parameter parameter) {
    format.*member = parameter.on();
}

template <Underline underline>
void underlined(CharacterFormat& format, Parameter parameter) {
    format.underline = parameter.on() ? underline : Underline::none;
}

template <std::int16_t CharacterFormat::*member>
void number(CharacterFormat& format, Parameter parameter) {
    format.*member = static_cast<std::int16_t>(std::clamp(parameter.value, -32000, 32000));
}

void size(CharacterFormat& format, Parameter parameter) {
    const int half_points = parameter.or_else(24);
    format.half_points = static_cast<std::int16_t>(std::clamp(half_points, 1, limits::half_points));
}

void kerning(CharacterFormat& format, Parameter parameter) {
    format.kerning = static_cast<std::int16_t>(std::clamp(parameter.value, 0, limits::half_points));
}

template <int sign>
void raise(CharacterFormat& format, Parameter parameter) {
    const int half_points = std::clamp(parameter.or_else(6), -limits::half_points, limits::half_points);
    format.raise = static_cast<std::int16_t>(sign * half_points);
}

template <Script value>
void script(CharacterFormat& format, Parameter parameter) {
    format.script = parameter.on() ? value : Script::baseline;
}

/// Quarter points, the older form of letter spacing.
void spacing_in_quarters(CharacterFormat& format, Parameter parameter) {
    format.letter_spacing = static_cast<std::int16_t>(std::clamp(parameter.value, -6336, 6336) * 5);
}

void language(CharacterFormat& format, Parameter parameter) {
    format.language = static_cast<std::uint16_t>(std::clamp(parameter.value, 0, 0xFFFF));
}

constexpr CharacterWord words[] = {
    {"f", Refers::font, number<&CharacterFormat::font>},
    {"fs", Refers::nothing, size},
    {"cf", Refers::colour, number<&CharacterFormat::colour>},
    {"highlight", Refers::colour, number<&CharacterFormat::highlight>},
    {"cb", Refers::colour, number<&CharacterFormat::background>},
    {"chcbpat", Refers::colour, number<&CharacterFormat::background>},
    {"lang", Refers::nothing, language},
    {"cs", Refers::nothing, number<&CharacterFormat::style>},
    {"up", Refers::nothing, raise<1>},
    {"dn", Refers::nothing, raise<-1>},
    {"expnd", Refers::nothing, spacing_in_quarters},
    {"expndtw", Refers::nothing, number<&CharacterFormat::letter_spacing>},
    {"kerning", Refers::nothing, kerning},
    {"super", Refers::nothing, script<Script::superscript>},
    {"sub", Refers::nothing, script<Script::subscript>},
    {"nosupersub", Refers::nothing,
     [](CharacterFormat& format, Parameter) { format.script = Script::baseline; }},
    {"b", Refers::nothing, turn<&CharacterFormat::bold>},
    {"i", Refers::nothing, turn<&CharacterFormat::italic>},
    {"strike", Refers::nothing, turn<&CharacterFormat::strike>},
    {"striked", Refers::nothing, turn<&CharacterFormat::double_strike>},
    // Text that a tracked change has taken out stays to be seen, struck through.
    {"deleted", Refers::nothing, turn<&CharacterFormat::strike>},
    {"caps", Refers::nothing, turn<&CharacterFormat::caps>},
    {"scaps", Refers::nothing, turn<&CharacterFormat::small_caps>},
    {"v", Refers::nothing, turn<&CharacterFormat::hidden>},
    {"outl", Refers::nothing, turn<&CharacterFormat::outline>},
    {"shad", Refers::nothing, turn<&CharacterFormat::shadow>},
    {"embo", Refers::nothing, turn<&CharacterFormat::embossed>},
    {"impr", Refers::nothing, turn<&CharacterFormat::engraved>},
    {"ulnone", Refers::nothing,
     [](CharacterFormat& format, Parameter) { format.underline = Underline::none; }},
    {"ul", Refers::nothing, underlined<Underline::single>},
    {"ulw", Refers::nothing, underlined<Underline::words>},
    {"uld", Refers::nothing, underlined<Underline::dotted>},
    {"uldash", Refers::nothing, underlined<Underline::dashed>},
    {"uldashd", Refers::nothing, underlined<Underline::dash_dot>},
    {"uldashdd", Refers::nothing, underlined<Underline::dash_dot_dot>},
    {"uldb", Refers::nothing, underlined<Underline::double_line>},
    {"ulth", Refers::nothing, underlined<Underline::thick>},
    {"ulwave", Refers::nothing, underlined<Underline::wave>},
    {"ulhwave", Refers::nothing, underlined<Underline::heavy_wave>},
    {"ululdbwave", Refers::nothing, underlined<Underline::double_wave>},
    {"ulldash", Refers::nothing, underlined<Underline::long_dash>},
    {"ulthd", Refers::nothing, underlined<Underline::thick_dotted>},
    {"ulthdash", Refers::nothing, underlined<Underline::thick_dashed>},
    {"ulthdashd", Refers::nothing, underlined<Underline::thick_dash_dot>},
    {"ulthdashdd", Refers::nothing, underlined<Underline::thick_dash_dot_dot>},
    {"ulthldash", Refers::nothing, underlined<Underline::thick_long_dash>},
};

void append_word(std::string& out, std::string_view name, int value) {
    out += '\\';
    out += name;
    out += std::to_string(value);
}

} // namespace

std::span<const CharacterWord> character_words() {
    return words;
}

void write_character_words(std::string& out, const CharacterFormat& from, const CharacterFormat& to,
                           const CharacterFormat& plain, const SourceFonts& fonts) {
    if (from == to)
        return;
    // These have no word that gives back the document's or the program's own.
    if ((from.language != to.language && to.language == 0) || (from.style != to.style && to.style == 0) ||
        (from.kerning != to.kerning && to.kerning == CharacterFormat::untold)) {
        out += "\\plain";
        write_character_words(out, plain, to, plain, fonts);
        return;
    }
    const auto change = [&out](std::string_view name, int before, int now) {
        if (before != now)
            append_word(out, name, now);
    };
    change("cs", from.style, to.style);
    if (from.font != to.font)
        append_word(out, "f", fonts.number(to.font));
    change("fs", from.half_points, to.half_points);
    change("lang", from.language, to.language);
    change("cf", from.colour, to.colour);
    change("highlight", from.highlight, to.highlight);
    change("cb", from.background, to.background);
    change("expndtw", from.letter_spacing, to.letter_spacing);
    change("kerning", from.kerning, to.kerning);
    if (from.raise != to.raise)
        append_word(out, to.raise < 0 ? "dn" : "up", to.raise < 0 ? -to.raise : to.raise);
    if (from.script != to.script)
        out += to.script == Script::superscript ? "\\super"
               : to.script == Script::subscript ? "\\sub"
                                                : "\\nosupersub";
    if (from.underline != to.underline) {
        out += '\\';
        out += underlines[static_cast<std::size_t>(to.underline)];
    }
    for (const Switch& each : switches) {
        if (from.*each.member == to.*each.member)
            continue;
        out += '\\';
        out += each.name;
        if (!(to.*each.member))
            out += '0';
    }
}

} // namespace tolva::rtf
