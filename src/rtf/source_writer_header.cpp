#include "rtf/source_writer.h"

#include "rtf/escape.h"

namespace tolva::rtf {

namespace {

constexpr std::string_view families[] = {
    "\\fnil", "\\froman", "\\fswiss", "\\fmodern", "\\fscript", "\\fdecor", "\\ftech", "\\fbidi",
};

void append_number(std::string& out, std::string_view name, int value) {
    out += name;
    out += std::to_string(value);
}

} // namespace

void SourceWriter::write_header() {
    out_ += "{\\rtf1\\ansi";
    append_number(out_, "\\ansicpg", document_.code_page);
    append_number(out_, "\\deff", fonts_.number(document_.default_font));
    if (document_.language)
        append_number(out_, "\\deflang", document_.language);
    write_fonts();
    write_colours();
    for (const std::string& group : document_.groups) {
        out_ += group;
        out_ += "\r\n";
    }
    out_ += "\\uc1";
    write_kept(document_.words);
    write_page();
    line_end();
}

void SourceWriter::write_fonts() {
    out_ += "{\\fonttbl";
    for (const Font& font : document_.fonts) {
        append_number(out_, "{\\f", font.number);
        out_ += families[static_cast<std::size_t>(font.family)];
        if (font.pitch)
            append_number(out_, "\\fprq", font.pitch);
        if (font.charset >= 0)
            append_number(out_, "\\fcharset", font.charset);
        if (font.code_page)
            append_number(out_, "\\cpg", font.code_page);
        out_ += ' ';
        const CodePage page = page_of_name(font, document_.code_page);
        write_escaped(out_, font.name, page);
        if (!font.alternative.empty()) {
            out_ += "{\\*\\falt ";
            write_escaped(out_, font.alternative, page);
            out_ += '}';
        }
        out_ += ";}";
    }
    out_ += "}\r\n";
}

void SourceWriter::write_colours() {
    out_ += "{\\colortbl ";
    for (const Colour& colour : document_.colours) {
        if (!colour.automatic) {
            append_number(out_, "\\red", colour.red);
            append_number(out_, "\\green", colour.green);
            append_number(out_, "\\blue", colour.blue);
        }
        out_ += ';';
    }
    out_ += "}\r\n";
}

void SourceWriter::write_kept(const std::vector<KeptWord>& kept) {
    for (const KeptWord& word : kept) {
        out_ += '\\';
        out_ += word.name;
        if (word.value)
            out_ += std::to_string(*word.value);
    }
}

void SourceWriter::write_page() {
    // All of them: where one is missing, readers differ in what they take for it.
    const PageSetup& page = document_.page;
    append_number(out_, "\\paperw", page.width);
    append_number(out_, "\\paperh", page.height);
    append_number(out_, "\\margl", page.left);
    append_number(out_, "\\margr", page.right);
    append_number(out_, "\\margt", page.top);
    append_number(out_, "\\margb", page.bottom);
    if (page.gutter)
        append_number(out_, "\\gutter", page.gutter);
    if (page.landscape)
        out_ += "\\landscape";
    append_number(out_, "\\deftab", document_.default_tab);
}

void SourceWriter::write_section(const Section& section) {
    const bool first = &section == &document_.sections.front();
    if (first && section == Section{})
        return;
    out_ += "\\sectd";
    write_kept(section.words);
    for (const std::string& group : section.groups)
        out_ += group;
    line_end();
}

} // namespace tolva::rtf
