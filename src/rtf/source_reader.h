#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "rtf/builder.h"
#include "rtf/character_words.h"
#include "rtf/document.h"
#include "rtf/font_table.h"
#include "rtf/lexer.h"
#include "rtf/list_tables.h"
#include "rtf/paragraph_words.h"
#include "rtf/picture_reader.h"
#include "rtf/read.h"
#include "rtf/table_words.h"
#include "rtf/text_decoder.h"
#include "rtf/vocabulary.h"

namespace tolva::rtf {

/// One pass over a source: the tokens come from the lexer, a stack of groups holds what braces scope, and
/// what a word means for the text goes to the builder.
class SourceReader {
  public:
    SourceReader(std::string_view source, RawBytes raw_bytes);

    Document read();

  private:
    /// What a closing brace takes back.
    struct Group {
        Destination destination = Destination::body;
        CharacterFormat characters;
        Shared<ParagraphFormat> paragraph;
        bool in_table = false;
        std::int32_t unicode_skip = 1;
    };

    /// A field or object whose group is open.
    struct Mark {
        std::shared_ptr<Inset> inset;
        /// What holds ahead of it and behind it.
        CharacterFormat characters;
        bool placed = false;
    };

    /// Which border the border words describe.
    struct BorderTarget {
        Border ParagraphBorders::*of_paragraph = nullptr;
        bool all_sides = false;
        Border RowFormat::*of_row = nullptr;
        Border CellFormat::*of_cell = nullptr;
        /// The phrase for what is lost with a border that has no place here; below 0 for none.
        std::int32_t lost = -1;
    };

    // source_reader.cpp: tokens and text
    void take(Token& token);
    bool skips(Token& token);
    void symbol(unsigned char character);
    void bytes(std::string_view bytes, bool raw);
    void unit(std::int32_t value);
    void character(char32_t character);
    /// Of the text at hand.
    CodePage page() const;
    /// The body's text, for appending something to it.
    std::string& body_text();
    /// Hands decoded text to what the group at hand collects.
    void deliver();
    void flush();

    // source_reader_groups.cpp: what groups are
    void open_group();
    void close_group();
    /// The first word of a group; true when the word needs nothing more, as the group is gone or entered.
    bool begin_group(const Token& token, const Word* word);
    void begin_group_in_mark(Destination destined);
    void begin_alternative(Destination destined);
    void enter(Destination destined);
    void enter_field(Inset::Kind kind);
    void enter_kept(Destination destined);
    void leave(const Group& group);
    void skip_group();
    /// The source of the group at hand, which is passed over; empty when it can't be kept.
    std::string take_group();
    void place_mark();
    Destination destination() const { return groups_.back().destination; }
    bool in_body() const { return destination() == Destination::body; }

    // source_reader_words.cpp: what words do
    void apply(const Token& token, const Word* word);
    void apply_border(const Word& word, Parameter parameter);
    void apply_structure(Structure structure, Parameter parameter);
    void apply_header(Header header, Parameter parameter);
    void apply_code_page(Header header, Parameter parameter);
    void apply_page(PageWord word, Parameter parameter);
    void apply_colour(ColourWord word, Parameter parameter);
    /// Words that only the body of the document heeds.
    void apply_kept(const Word& word, Parameter parameter);
    void add_colour();
    Parameter resolved(Refers refers, Parameter parameter) const;
    void end_paragraph(Structure structure);
    void make_list_text();
    CharacterFormat plain() const;
    void keep_word(std::vector<KeptWord>& words, const Word& word, Parameter parameter);
    void note(std::string_view phrase);

    Document document_;
    Builder builder_;
    Lexer lexer_;
    RawBytes raw_bytes_;
    FontTable fonts_;
    ListTables lists_;
    PictureReader picture_;
    TextDecoder decoder_;
    std::string decoded_;

    std::vector<Group> groups_;
    /// Open groups beyond those that are kept.
    std::size_t deeper_ = 0;
    bool finished_ = false;
    bool group_begins_ = false;
    bool starred_ = false;
    std::size_t group_start_ = 0;
    /// Units still to pass over behind a \u.
    std::int32_t to_skip_ = 0;

    std::vector<Mark> marks_;
    RowInSource row_;
    PendingTab tab_;
    BorderTarget border_;
    Numbering numbering_;
    ListText list_text_;
    Colour colour_;
    bool colour_told_ = false;
    bool colours_begun_ = false;
    bool colours_read_ = false;
    bool fonts_read_ = false;
    bool shape_picture_ = false;
    bool nested_cell_ = false;
    /// How often the numbering at hand has counted.
    int numbered_ = 0;
    Shared<Numbering> last_numbering_;
};

} // namespace tolva::rtf
