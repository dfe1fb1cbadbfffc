#include "rtf/source_writer.h"

#include <utility>

#include "rtf/character_words.h"
#include "rtf/escape.h"
#include "rtf/paragraph_words.h"
#include "rtf/table_words.h"
#include "rtf/write.h"

namespace tolva::rtf {

namespace {

constexpr std::string_view picture_kinds[] = {
    "\\pngblip",    "\\jpegblip", "\\emfblip",  "\\wmetafile",
    "\\pmmetafile", "\\macpict",  "\\dibitmap", "\\wbitmap",
};

} // namespace

std::string write(const Document& document) {
    return SourceWriter(document).write();
}

SourceWriter::SourceWriter(const Document& document) : document_(document), fonts_(document) {
    plain_.font = static_cast<std::int16_t>(document.default_font);
    now_.characters = plain_;
}

std::string SourceWriter::write() {
    write_header();
    std::size_t section = 0;
    write_section(document_.sections.front());
    words("\\pard\\plain");
    bool row_begins = true;
    for (const Paragraph& paragraph : document_.paragraphs) {
        if (paragraph.in_table && row_begins) {
            std::string row;
            write_row_words(row, *paragraph.row);
            words(row);
            line_end();
        }
        row_begins = !paragraph.in_table || paragraph.end == Paragraph::End::row;
        write_paragraph(paragraph);
        if (paragraph.ends_section && section + 1 < document_.sections.size()) {
            words("\\sect");
            write_section(document_.sections[++section]);
        }
    }
    while (!outer_.empty())
        close();
    out_ += "}\r\n";
    return std::move(out_);
}

void SourceWriter::write_paragraph(const Paragraph& paragraph) {
    const bool last = &paragraph == &document_.paragraphs.back();
    set_paragraph(paragraph);
    write_list_text(paragraph);
    write_runs(paragraph);
    // The end of a field within the paragraph may have taken its format back.
    set_paragraph(paragraph);
    write_end(paragraph, last);
}

void SourceWriter::write_end(const Paragraph& paragraph, bool last) {
    if (last && document_.unended)
        return;
    set_characters(paragraph.mark);
    switch (paragraph.end) {
    case Paragraph::End::paragraph:
        words("\\par");
        break;
    case Paragraph::End::cell:
        words("\\cell");
        break;
    case Paragraph::End::row:
        words("\\cell\\row");
        break;
    }
    line_end();
}

void SourceWriter::set_paragraph(const Paragraph& paragraph) {
    if (now_.paragraph == paragraph.format && now_.in_table == paragraph.in_table)
        return;
    std::string source = "\\pard";
    if (paragraph.in_table)
        source += "\\intbl";
    write_paragraph_words(source, *paragraph.format, fonts_);
    words(source);
    now_.paragraph = paragraph.format;
    now_.in_table = paragraph.in_table;
}

void SourceWriter::set_characters(const CharacterFormat& format) {
    if (now_.characters == format)
        return;
    std::string source;
    write_character_words(source, now_.characters, format, plain_, fonts_);
    words(source);
    now_.characters = format;
}

void SourceWriter::write_list_text(const Paragraph& paragraph) {
    const ListText& list = *paragraph.list_text;
    if (list.text.empty())
        return;
    open(paragraph.format->list > 0 ? "\\listtext" : "\\pntext");
    set_characters(list.format);
    text(list.text, list.format.font);
    close();
}

void SourceWriter::write_runs(const Paragraph& paragraph) {
    for (const Run& run : paragraph.runs) {
        if (run.inset) {
            write_inset(run);
        } else {
            set_characters(run.format);
            text(run.text, run.format.font);
        }
    }
}

void SourceWriter::write_inset(const Run& run) {
    const Inset& inset = *run.inset;
    switch (inset.kind) {
    case Inset::Kind::picture:
        set_characters(run.format);
        write_picture(inset.picture);
        break;
    case Inset::Kind::kept:
        set_characters(run.format);
        if (inset.source.starts_with('{')) {
            out_ += inset.source;
            word_open_ = false;
        } else {
            words(inset.source);
        }
        break;
    case Inset::Kind::field:
        set_characters(run.format);
        open("\\field" + inset.source + "{\\fldrslt");
        break;
    case Inset::Kind::object:
        set_characters(run.format);
        open("\\object" + inset.source + "{\\result");
        break;
    case Inset::Kind::end:
        if (!outer_.empty()) {
            out_ += '}';
            close();
        }
        break;
    }
}

void SourceWriter::write_picture(const Picture& picture) {
    std::string source;
    const auto word = [&source](std::string_view name, int value, int standard) {
        if (value != standard) {
            source += name;
            source += std::to_string(value);
        }
    };
    open("\\pict");
    source += picture_kinds[static_cast<std::size_t>(picture.kind)];
    if (has_kind_number(picture.kind))
        source += std::to_string(picture.kind_number);
    word("\\picw", picture.width, 0);
    word("\\pich", picture.height, 0);
    word("\\picwgoal", picture.goal_width, 0);
    word("\\pichgoal", picture.goal_height, 0);
    word("\\picscalex", picture.scale_x, 100);
    word("\\picscaley", picture.scale_y, 100);
    word("\\piccropl", picture.crop_left, 0);
    word("\\piccropr", picture.crop_right, 0);
    word("\\piccropt", picture.crop_top, 0);
    word("\\piccropb", picture.crop_bottom, 0);
    word("\\wbmbitspixel", picture.bits_per_pixel, 0);
    word("\\wbmplanes", picture.planes, 0);
    word("\\wbmwidthbytes", picture.bytes_per_line, 0);
    words(source);
    write_hex(out_, picture.bytes);
    close();
}

void SourceWriter::words(std::string_view source) {
    out_ += source;
    word_open_ = !source.ends_with('}');
}

void SourceWriter::text(std::string_view utf8, int font) {
    if (word_open_ && !utf8.empty())
        out_ += ' ';
    word_open_ = false;
    write_escaped(out_, utf8, fonts_.page(font));
}

void SourceWriter::open(std::string_view words_of_group) {
    outer_.push_back(now_);
    out_ += '{';
    words(words_of_group);
}

void SourceWriter::close() {
    out_ += '}';
    word_open_ = false;
    now_ = std::move(outer_.back());
    outer_.pop_back();
}

void SourceWriter::line_end() {
    out_ += "\r\n";
    word_open_ = false;
}

} // namespace tolva::rtf
