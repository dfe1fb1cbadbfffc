#include "rtf/paragraph_words.h"

#include <algorithm>

#include "rtf/border_words.h"
#include "rtf/limits.h"
#include "rtf/numbering_words.h"

namespace tolva::rtf {

namespace {

template <int ParagraphFormat::*member>
void measure(ParagraphFormat& format, PendingTab&, Parameter parameter) {
    format.*member = std::clamp(parameter.value, -limits::measure, limits::measure);
}

template <std::int16_t ParagraphFormat::*member, int least, int most>
void number(ParagraphFormat& format, PendingTab&, Parameter parameter) {
    format.*member = static_cast<std::int16_t>(std::clamp(parameter.value, least, most));
}

template <bool ParagraphFormat::*member>
void turn(ParagraphFormat& format, PendingTab&, Parameter parameter) {
    format.*member = parameter.on();
}

template <Alignment alignment>
void align(ParagraphFormat& format, PendingTab&, Parameter) {
    format.alignment = alignment;
}

template <TabKind kind>
void tab_kind(ParagraphFormat&, PendingTab& tab, Parameter) {
    tab.kind = kind;
}

template <TabLeader leader>
void tab_leader(ParagraphFormat&, PendingTab& tab, Parameter) {
    tab.leader = leader;
}

void add_tab(ParagraphFormat& format, TabStop stop) {
    const auto behind =
        std::upper_bound(format.tabs.begin(), format.tabs.end(), stop,
                         [](const TabStop& a, const TabStop& b) { return a.position < b.position; });
    if (behind != format.tabs.begin() && std::prev(behind)->position == stop.position)
        *std::prev(behind) = stop;
    else if (format.tabs.size() < limits::tabs)
        format.tabs.insert(behind, stop);
}

void tab_stop(ParagraphFormat& format, PendingTab& tab, Parameter parameter) {
    add_tab(format, {std::clamp(parameter.value, -limits::measure, limits::measure), tab.kind, tab.leader});
    tab = {};
}

void bar_tab(ParagraphFormat& format, PendingTab& tab, Parameter parameter) {
    tab.kind = TabKind::bar;
    tab_stop(format, tab, parameter);
}

constexpr ParagraphWord words[] = {
    {"ql", Refers::nothing, align<Alignment::left>},
    {"qr", Refers::nothing, align<Alignment::right>},
    {"qc", Refers::nothing, align<Alignment::centre>},
    {"qj", Refers::nothing, align<Alignment::justified>},
    {"qd", Refers::nothing, align<Alignment::distributed>},
    {"li", Refers::nothing, measure<&ParagraphFormat::left>},
    {"ri", Refers::nothing, measure<&ParagraphFormat::right>},
    {"fi", Refers::nothing, measure<&ParagraphFormat::first>},
    {"sb", Refers::nothing, measure<&ParagraphFormat::before>},
    {"sa", Refers::nothing, measure<&ParagraphFormat::after>},
    {"sl", Refers::nothing, measure<&ParagraphFormat::line>},
    {"slmult", Refers::nothing,
     [](ParagraphFormat& format, PendingTab&, Parameter parameter) {
         format.line_multiple = parameter.value != 0;
     }},
    {"pagebb", Refers::nothing, turn<&ParagraphFormat::page_break_before>},
    {"keep", Refers::nothing, turn<&ParagraphFormat::keep>},
    {"keepn", Refers::nothing, turn<&ParagraphFormat::keep_next>},
    {"widctlpar", Refers::nothing,
     [](ParagraphFormat& format, PendingTab&, Parameter) { format.widow_control = WidowControl::on; }},
    {"nowidctlpar", Refers::nothing,
     [](ParagraphFormat& format, PendingTab&, Parameter) { format.widow_control = WidowControl::off; }},
    {"rtlpar", Refers::nothing,
     [](ParagraphFormat& format, PendingTab&, Parameter) { format.right_to_left = true; }},
    {"ltrpar", Refers::nothing,
     [](ParagraphFormat& format, PendingTab&, Parameter) { format.right_to_left = false; }},
    {"s", Refers::nothing, number<&ParagraphFormat::style, 0, 32000>},
    {"outlinelevel", Refers::nothing, number<&ParagraphFormat::outline_level, 0, 9>},
    {"ls", Refers::nothing, number<&ParagraphFormat::list, 0, 32000>},
    {"ilvl", Refers::nothing, number<&ParagraphFormat::list_level, 0, 8>},
    {"cbpat", Refers::colour, number<&ParagraphFormat::background, 0, 32000>},
    {"shading", Refers::nothing, number<&ParagraphFormat::shading, 0, 10000>},
    {"tx", Refers::nothing, tab_stop},
    {"tb", Refers::nothing, bar_tab},
    {"tql", Refers::nothing, tab_kind<TabKind::left>},
    {"tqr", Refers::nothing, tab_kind<TabKind::right>},
    {"tqc", Refers::nothing, tab_kind<TabKind::centre>},
    {"tqdec", Refers::nothing, tab_kind<TabKind::decimal>},
    {"tldot", Refers::nothing, tab_leader<TabLeader::dots>},
    {"tlmdot", Refers::nothing, tab_leader<TabLeader::middle_dots>},
    {"tlhyph", Refers::nothing, tab_leader<TabLeader::hyphens>},
    {"tlul", Refers::nothing, tab_leader<TabLeader::line>},
    {"tlth", Refers::nothing, tab_leader<TabLeader::thick_line>},
    {"tleq", Refers::nothing, tab_leader<TabLeader::equals>},
};

constexpr ParagraphBorderWord border_names[] = {
    {"brdrt", &ParagraphBorders::top},       {"brdrb", &ParagraphBorders::bottom},
    {"brdrl", &ParagraphBorders::left},      {"brdrr", &ParagraphBorders::right},
    {"brdrbtw", &ParagraphBorders::between}, {"brdrbar", &ParagraphBorders::bar},
};

constexpr std::string_view tab_kinds[] = {"", "\\tqr", "\\tqc", "\\tqdec", ""};
constexpr std::string_view tab_leaders[] = {"",       "\\tldot", "\\tlmdot", "\\tlhyph",
                                            "\\tlul", "\\tlth",  "\\tleq"};
constexpr std::string_view alignments[] = {"", "\\qr", "\\qc", "\\qj", "\\qd"};

} // namespace

std::span<const ParagraphWord> paragraph_words() {
    return words;
}

std::span<const ParagraphBorderWord> paragraph_border_words() {
    return border_names;
}

void write_paragraph_words(std::string& out, const ParagraphFormat& format, const SourceFonts& fonts) {
    const auto word = [&out](std::string_view name, int value, int standard = 0) {
        if (value != standard) {
            out += '\\';
            out += name;
            out += std::to_string(value);
        }
    };
    const auto flag = [&out](std::string_view name, bool on) {
        if (on) {
            out += '\\';
            out += name;
        }
    };
    word("s", format.style);
    flag("rtlpar", format.right_to_left);
    flag("pagebb", format.page_break_before);
    flag("keep", format.keep);
    flag("keepn", format.keep_next);
    flag("widctlpar", format.widow_control == WidowControl::on);
    flag("nowidctlpar", format.widow_control == WidowControl::off);
    write_numbering(out, *format.numbering, fonts);
    word("fi", format.first);
    word("li", format.left);
    word("ri", format.right);
    word("sb", format.before);
    word("sa", format.after);
    word("sl", format.line);
    word("slmult", format.line_multiple ? 1 : 0);
    out += alignments[static_cast<std::size_t>(format.alignment)];
    word("outlinelevel", format.outline_level, 9);
    word("ls", format.list);
    word("ilvl", format.list_level);
    for (const TabStop& stop : format.tabs) {
        out += tab_kinds[static_cast<std::size_t>(stop.kind)];
        out += tab_leaders[static_cast<std::size_t>(stop.leader)];
        out += stop.kind == TabKind::bar ? "\\tb" : "\\tx";
        out += std::to_string(stop.position);
    }
    for (const ParagraphBorderWord& each : border_names)
        write_border(out, each.name, (*format.borders).*each.border);
    word("cbpat", format.background);
    word("shading", format.shading);
}

} // namespace tolva::rtf
