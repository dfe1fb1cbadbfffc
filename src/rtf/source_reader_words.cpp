#include "rtf/source_reader.h"

#include <algorithm>
#include <string>

#include "rtf/border_words.h"
#include "rtf/limits.h"
#include "rtf/numbering_words.h"

namespace tolva::rtf {

CharacterFormat SourceReader::plain() const {
    CharacterFormat format;
    format.font = static_cast<std::int16_t>(document_.default_font);
    return format;
}

void SourceReader::note(std::string_view phrase) {
    std::vector<std::string>& notes = document_.dropped;
    if (!phrase.empty() && notes.size() < limits::dropped_notes &&
        std::find(notes.begin(), notes.end(), phrase) == notes.end())
        notes.emplace_back(phrase);
}

Parameter SourceReader::resolved(Refers refers, Parameter parameter) const {
    switch (refers) {
    case Refers::font:
        parameter.value = fonts_.index_of(parameter.value);
        break;
    case Refers::colour:
        if (parameter.value < 0 || static_cast<std::size_t>(parameter.value) >= document_.colours.size())
            parameter.value = 0;
        break;
    case Refers::nothing:
        break;
    }
    return parameter;
}

void SourceReader::apply(const Token& token, const Word* word) {
    if (destination() == Destination::field || destination() == Destination::object) {
        // \objw, \flddirty and the like belong to the group's own source.
        if (token.text == "bin")
            lexer_.take(token.parameter.value);
        else
            marks_.back().inset->source += lexer_.slice(lexer_.token_start(), lexer_.position());
        return;
    }
    if (!word) {
        if (in_body())
            note("the unknown word \\" + std::string(token.text.substr(0, 32)));
        return;
    }
    Group& group = groups_.back();
    const Parameter parameter = token.parameter;
    const auto index = static_cast<std::size_t>(word->value);
    switch (word->topic) {
    case Topic::character: {
        const CharacterWord& entry = character_words()[index];
        if (destination() == Destination::fonts && entry.refers == Refers::font)
            fonts_.begin_font(parameter.value);
        else
            entry.apply(group.characters, resolved(entry.refers, parameter));
        break;
    }
    case Topic::paragraph: {
        const ParagraphWord& entry = paragraph_words()[index];
        entry.apply(group.paragraph.own(), tab_, resolved(entry.refers, parameter));
        break;
    }
    case Topic::table: {
        const TableWord& entry = table_words()[index];
        if (in_body())
            entry.apply(row_, resolved(entry.refers, parameter));
        break;
    }
    case Topic::numbering: {
        const NumberingWord& entry = numbering_words()[index];
        if (destination() == Destination::numbering)
            entry.apply(numbering_, resolved(entry.refers, parameter));
        break;
    }
    case Topic::paragraph_border:
    case Topic::table_border:
    case Topic::other_border:
    case Topic::border:
        apply_border(*word, parameter);
        break;
    case Topic::symbol:
        character(static_cast<char32_t>(word->value));
        break;
    case Topic::structure:
        apply_structure(static_cast<Structure>(word->value), parameter);
        break;
    case Topic::header:
        apply_header(static_cast<Header>(word->value), parameter);
        break;
    case Topic::font:
        if (destination() == Destination::fonts)
            fonts_.word(static_cast<FontWord>(word->value), parameter);
        break;
    case Topic::colour:
        apply_colour(static_cast<ColourWord>(word->value), parameter);
        break;
    case Topic::picture:
        if (destination() == Destination::picture)
            picture_.word(static_cast<PictureWord>(word->value), parameter);
        break;
    case Topic::page:
    case Topic::document_word:
    case Topic::section_word:
    case Topic::inline_word:
    case Topic::noted:
        if (in_body())
            apply_kept(*word, parameter);
        break;
    case Topic::destination:
    case Topic::silent:
        break;
    }
}

void SourceReader::apply_kept(const Word& word, Parameter parameter) {
    switch (word.topic) {
    case Topic::page:
        apply_page(static_cast<PageWord>(word.value), parameter);
        break;
    case Topic::document_word:
        keep_word(document_.words, word, parameter);
        break;
    case Topic::section_word:
        keep_word(builder_.section().words, word, parameter);
        break;
    case Topic::inline_word: {
        auto inset = std::make_shared<Inset>();
        inset->source = "\\" + std::string(word.name);
        builder_.add_inset(std::move(inset), groups_.back().characters);
        break;
    }
    default:
        if (parameter.on())
            note(noted_phrase(word.value));
        break;
    }
}

void SourceReader::keep_word(std::vector<KeptWord>& words, const Word& word, Parameter parameter) {
    const auto same = [&word](const KeptWord& kept) { return kept.name == word.name; };
    auto place = std::find_if(words.begin(), words.end(), same);
    if (place == words.end())
        place = words.insert(words.end(), {word.name, {}});
    place->value = parameter.given ? std::optional<int>(parameter.value) : std::nullopt;
}

void SourceReader::apply_border(const Word& word, Parameter parameter) {
    const auto index = static_cast<std::size_t>(word.value);
    border_ = word.topic == Topic::border ? border_ : BorderTarget();
    switch (word.topic) {
    case Topic::paragraph_border:
        border_.of_paragraph = paragraph_border_words()[index].border;
        return;
    case Topic::table_border:
        border_.of_row = table_border_words()[index].of_row;
        border_.of_cell = table_border_words()[index].of_cell;
        return;
    case Topic::other_border:
        border_.lost = word.value;
        return;
    default:
        break;
    }
    const BorderWord& entry = border_words()[index];
    const Parameter value = resolved(entry.refers_to_colour ? Refers::colour : Refers::nothing, parameter);
    if (border_.all_sides || border_.of_paragraph) {
        ParagraphBorders& borders = groups_.back().paragraph.own().borders.own();
        if (border_.all_sides)
            for (Border ParagraphBorders::*const side : {&ParagraphBorders::top, &ParagraphBorders::bottom,
                                                         &ParagraphBorders::left, &ParagraphBorders::right})
                entry.apply(borders.*side, value);
        else
            entry.apply(borders.*border_.of_paragraph, value);
    } else if (border_.of_row) {
        entry.apply(row_.row.own().*border_.of_row, value);
    } else if (border_.of_cell) {
        entry.apply(row_.cell.*border_.of_cell, value);
    } else if (border_.lost >= 0) {
        Border border;
        entry.apply(border, value);
        if (border.style != BorderStyle::none)
            note(noted_phrase(border_.lost));
    }
}

void SourceReader::apply_structure(Structure structure, Parameter parameter) {
    Group& group = groups_.back();
    switch (structure) {
    case Structure::plain:
        group.characters = plain();
        return;
    case Structure::paragraph_defaults:
        group.paragraph = {};
        group.in_table = false;
        tab_ = {};
        return;
    case Structure::in_table:
        group.in_table = parameter.on();
        return;
    case Structure::nesting:
        if (parameter.value > 0)
            group.in_table = true;
        return;
    case Structure::box:
        border_ = {};
        border_.all_sides = true;
        return;
    case Structure::section_defaults:
        if (in_body())
            builder_.section().words.clear();
        return;
    case Structure::nested_cell:
        if (in_body() && builder_.current_counts())
            nested_cell_ = true;
        return;
    case Structure::nested_row:
        nested_cell_ = false;
        if (in_body() && builder_.current_counts())
            end_paragraph(Structure::paragraph);
        return;
    case Structure::paragraph:
    case Structure::cell:
    case Structure::row:
    case Structure::section:
        nested_cell_ = false;
        if (in_body())
            end_paragraph(structure);
        return;
    }
}

void SourceReader::end_paragraph(Structure structure) {
    const Group& group = groups_.back();
    if (structure == Structure::paragraph || structure == Structure::cell || builder_.current_counts())
        make_list_text();
    switch (structure) {
    case Structure::cell:
        builder_.end_cell(group.paragraph, group.characters);
        break;
    case Structure::row:
        builder_.end_row(group.paragraph, group.characters, row_.row);
        break;
    case Structure::section:
        builder_.end_section(group.paragraph, group.characters, row_.row);
        break;
    default:
        builder_.end_paragraph(group.paragraph, group.characters, group.in_table, row_.row);
        break;
    }
}

void SourceReader::make_list_text() {
    const Group& group = groups_.back();
    const ParagraphFormat& format = *group.paragraph;
    std::string text;
    if (format.list > 0)
        text = lists_.next_text(format.list, format.list_level);
    const Numbering& numbering = *format.numbering;
    if (numbering.kind != NumberKind::none) {
        numbered_ = format.numbering == last_numbering_ ? numbered_ + 1 : 0;
        if (text.empty())
            text = numbering_text(numbering, numbering.start + numbered_) + '\t';
    }
    last_numbering_ = format.numbering;
    cut_utf8(text, limits::list_text_bytes);
    if (!text.empty() && !builder_.has_list_text())
        builder_.set_list_text({std::move(text), builder_.first_format(group.characters)});
}

void SourceReader::apply_header(Header header, Parameter parameter) {
    Group& group = groups_.back();
    switch (header) {
    case Header::unicode_skip:
        group.unicode_skip = std::clamp(parameter.or_else(1), 0, 255);
        return;
    case Header::unicode:
        unit(parameter.value);
        to_skip_ = group.unicode_skip;
        return;
    case Header::binary: {
        const std::string_view bytes = lexer_.take(parameter.value);
        if (destination() == Destination::picture)
            picture_.bytes(bytes);
        return;
    }
    case Header::default_language:
        document_.language = std::clamp(parameter.value, 0, 0xFFFF);
        return;
    case Header::default_tab:
        document_.default_tab = parameter.value > 0 ? std::min(parameter.value, limits::measure) : 720;
        return;
    case Header::default_font:
        if (document_.fonts.empty())
            fonts_.set_default_number(parameter.value);
        return;
    default:
        apply_code_page(header, parameter);
        return;
    }
}

void SourceReader::apply_code_page(Header header, Parameter parameter) {
    // It counts for all that follows; a later change would make the text depend on the place of its fonts.
    if (!document_.fonts.empty() || !builder_.empty() || !in_body())
        return;
    switch (header) {
    case Header::mac:
        fonts_.set_document_page(10000);
        break;
    case Header::pc:
        fonts_.set_document_page(437);
        break;
    case Header::pca:
        fonts_.set_document_page(850);
        break;
    case Header::ansi:
        fonts_.set_document_page(CodePage::windows_1252);
        break;
    case Header::code_page:
        if (has_code_page(parameter.value))
            fonts_.set_document_page(parameter.value);
        break;
    default:
        break;
    }
}

void SourceReader::apply_page(PageWord word, Parameter parameter) {
    PageSetup& page = document_.page;
    const int side = std::clamp(parameter.value, 1, limits::measure);
    const int margin = std::clamp(parameter.value, -limits::measure, limits::measure);
    switch (word) {
    case PageWord::width:
        page.width = side;
        break;
    case PageWord::height:
        page.height = side;
        break;
    case PageWord::left:
        page.left = margin;
        break;
    case PageWord::right:
        page.right = margin;
        break;
    case PageWord::top:
        page.top = margin;
        break;
    case PageWord::bottom:
        page.bottom = margin;
        break;
    case PageWord::gutter:
        page.gutter = margin;
        break;
    case PageWord::landscape:
        page.landscape = parameter.on();
        break;
    }
}

void SourceReader::apply_colour(ColourWord word, Parameter parameter) {
    if (destination() != Destination::colours)
        return;
    const auto value = static_cast<std::uint8_t>(std::clamp(parameter.value, 0, 255));
    colour_told_ = true;
    switch (word) {
    case ColourWord::red:
        colour_.red = value;
        break;
    case ColourWord::green:
        colour_.green = value;
        break;
    case ColourWord::blue:
        colour_.blue = value;
        break;
    }
}

void SourceReader::add_colour() {
    if (colours_read_ || (colours_begun_ && document_.colours.size() >= limits::colours))
        return;
    if (!colours_begun_)
        document_.colours.clear();
    colours_begun_ = true;
    colour_.automatic = !colour_told_;
    document_.colours.push_back(colour_);
    colour_ = {};
    colour_told_ = false;
}

} // namespace tolva::rtf
