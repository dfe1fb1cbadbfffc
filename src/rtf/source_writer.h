#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "rtf/document.h"
#include "rtf/source_fonts.h"

namespace tolva::rtf {

/// Writes one document from top to bottom and keeps track of what a reader knows at each place, so that only
/// changes are written.
class SourceWriter {
  public:
    explicit SourceWriter(const Document& document);

    std::string write();

  private:
    /// What a closing brace takes back.
    struct Group {
        CharacterFormat characters;
        Shared<ParagraphFormat> paragraph;
        bool in_table = false;
    };

    // source_writer_header.cpp
    void write_header();
    void write_fonts();
    void write_colours();
    void write_page();
    void write_kept(const std::vector<KeptWord>& words);
    void write_section(const Section& section);

    void write_paragraph(const Paragraph& paragraph);
    void write_runs(const Paragraph& paragraph);
    void write_list_text(const Paragraph& paragraph);
    void write_inset(const Run& run);
    void write_picture(const Picture& picture);
    void write_end(const Paragraph& paragraph, bool last);
    void set_paragraph(const Paragraph& paragraph);
    void set_characters(const CharacterFormat& format);

    /// Words, each with its backslash, and groups; a blank closes a last word if text follows.
    void words(std::string_view source);
    void text(std::string_view utf8, int font);
    void open(std::string_view words_of_group);
    void close();
    void line_end();

    const Document& document_;
    SourceFonts fonts_;
    CharacterFormat plain_;
    std::string out_;
    bool word_open_ = false;
    Group now_;
    /// What stood ahead of each field or object that is open.
    std::vector<Group> outer_;
};

} // namespace tolva::rtf
