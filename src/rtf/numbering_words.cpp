#include "rtf/numbering_words.h"

#include <algorithm>

#include "rtf/escape.h"
#include "rtf/limits.h"

namespace tolva::rtf {

namespace {

template <NumberKind kind>
void of_kind(Numbering& numbering, Parameter) {
    numbering.kind = kind;
}

template <int Numbering::*member>
void measure(Numbering& numbering, Parameter parameter) {
    numbering.*member = std::clamp(parameter.value, -limits::measure, limits::measure);
}

/// Only when no other word has told the kind: "body" merely means that the paragraph has a number.
void of_body(Numbering& numbering, Parameter) {
    if (numbering.kind == NumberKind::none)
        numbering.kind = NumberKind::decimal;
}

constexpr NumberingWord words[] = {
    {"pnlvlblt", Refers::nothing, of_kind<NumberKind::bullet>},
    {"pnlvlbody", Refers::nothing, of_body},
    {"pnlvl", Refers::nothing, of_body},
    {"pndec", Refers::nothing, of_kind<NumberKind::decimal>},
    {"pncard", Refers::nothing, of_kind<NumberKind::decimal>},
    {"pnucltr", Refers::nothing, of_kind<NumberKind::upper_letter>},
    {"pnlcltr", Refers::nothing, of_kind<NumberKind::lower_letter>},
    {"pnucrm", Refers::nothing, of_kind<NumberKind::upper_roman>},
    {"pnlcrm", Refers::nothing, of_kind<NumberKind::lower_roman>},
    {"pnord", Refers::nothing, of_kind<NumberKind::ordinal>},
    {"pnordt", Refers::nothing, of_kind<NumberKind::ordinal>},
    {"pnstart", Refers::nothing, measure<&Numbering::start>},
    {"pnindent", Refers::nothing, measure<&Numbering::indent>},
    {"pnsp", Refers::nothing, measure<&Numbering::space>},
    {"pnhang", Refers::nothing, [](Numbering& numbering, Parameter) { numbering.hanging = true; }},
    {"pnf", Refers::font,
     [](Numbering& numbering, Parameter parameter) {
         numbering.font = static_cast<std::int16_t>(parameter.value);
     }},
};

constexpr std::string_view kinds[] = {
    "",
    "\\pnlvlblt",
    "\\pnlvlbody\\pndec",
    "\\pnlvlbody\\pnucltr",
    "\\pnlvlbody\\pnlcltr",
    "\\pnlvlbody\\pnucrm",
    "\\pnlvlbody\\pnlcrm",
    "\\pnlvlbody\\pnord",
};

std::string roman(int number) {
    struct Step {
        int value;
        std::string_view letters;
    };
    static constexpr Step steps[] = {{1000, "M"}, {900, "CM"}, {500, "D"}, {400, "CD"}, {100, "C"},
                                     {90, "XC"},  {50, "L"},   {40, "XL"}, {10, "X"},   {9, "IX"},
                                     {5, "V"},    {4, "IV"},   {1, "I"}};
    std::string result;
    for (const Step& step : steps)
        for (; number >= step.value; number -= step.value)
            result += step.letters;
    return result;
}

std::string lower_case(std::string text) {
    for (char& character : text)
        if (character >= 'A' && character <= 'Z')
            character = static_cast<char>(character - 'A' + 'a');
    return text;
}

std::string letters(int number) {
    const int place = number - 1;
    return std::string(static_cast<std::size_t>(place / 26 + 1), static_cast<char>('A' + place % 26));
}

std::string ordinal(int number) {
    const int tens = number / 10 % 10;
    const int ones = number % 10;
    const char* const ending = tens == 1   ? "th"
                               : ones == 1 ? "st"
                               : ones == 2 ? "nd"
                               : ones == 3 ? "rd"
                                           : "th";
    return std::to_string(number) + ending;
}

} // namespace

std::span<const NumberingWord> numbering_words() {
    return words;
}

void write_numbering(std::string& out, const Numbering& numbering, const SourceFonts& fonts) {
    if (numbering == Numbering{})
        return;
    const auto word = [&out](std::string_view name, int value, int standard) {
        if (value != standard) {
            out += '\\';
            out += name;
            out += std::to_string(value);
        }
    };
    out += "{\\*\\pn";
    out += kinds[static_cast<std::size_t>(numbering.kind)];
    CodePage page = fonts.document_page();
    if (numbering.font >= 0) {
        word("pnf", fonts.number(numbering.font), -1);
        page = fonts.page(numbering.font);
    }
    word("pnindent", numbering.indent, 0);
    word("pnsp", numbering.space, 0);
    // Told even where it is the first number: readers differ in what they take for it.
    if (numbering.kind != NumberKind::none && numbering.kind != NumberKind::bullet)
        out += "\\pnstart" + std::to_string(numbering.start);
    else
        word("pnstart", numbering.start, 1);
    if (numbering.hanging)
        out += "\\pnhang";
    if (!numbering.before.empty()) {
        out += "{\\pntxtb ";
        write_escaped(out, numbering.before, page);
        out += '}';
    }
    if (!numbering.after.empty()) {
        out += "{\\pntxta ";
        write_escaped(out, numbering.after, page);
        out += '}';
    }
    out += '}';
}

std::string number_text(NumberKind kind, int number) {
    // Roman numerals and repeated letters would grow without bound.
    const bool small = number >= 1 && number <= 780;
    switch (kind) {
    case NumberKind::none:
    case NumberKind::bullet:
        return {};
    case NumberKind::upper_letter:
        return small ? letters(number) : std::to_string(number);
    case NumberKind::lower_letter:
        return small ? lower_case(letters(number)) : std::to_string(number);
    case NumberKind::upper_roman:
        return number >= 1 && number < 5000 ? roman(number) : std::to_string(number);
    case NumberKind::lower_roman:
        return number >= 1 && number < 5000 ? lower_case(roman(number)) : std::to_string(number);
    case NumberKind::ordinal:
        return number >= 1 ? ordinal(number) : std::to_string(number);
    case NumberKind::decimal:
        break;
    }
    return std::to_string(number);
}

std::string numbering_text(const Numbering& numbering, int number) {
    if (numbering.kind == NumberKind::bullet && numbering.before.empty() && numbering.after.empty())
        return "\u2022";
    return numbering.before + number_text(numbering.kind, number) + numbering.after;
}

} // namespace tolva::rtf
