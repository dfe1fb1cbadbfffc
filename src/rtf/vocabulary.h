#pragma once

#include <cstdint>
#include <string_view>

namespace tolva::rtf {

/// What kind of thing a control word is; each kind gives `Word::value` its own meaning.
enum class Topic : std::uint8_t {
    character,        ///< index into character_words()
    paragraph,        ///< index into paragraph_words()
    paragraph_border, ///< index into paragraph_border_words()
    border,           ///< index into border_words()
    table,            ///< index into table_words()
    table_border,     ///< index into table_border_words()
    numbering,        ///< index into numbering_words()
    other_border,     ///< begins a border of something that has none here
    symbol,           ///< the character it stands for
    structure,        ///< Structure
    header,           ///< Header
    destination,      ///< Destination
    font,             ///< FontWord
    colour,           ///< ColourWord
    picture,          ///< PictureWord
    page,             ///< PageWord
    document_word,    ///< kept for the document
    section_word,     ///< kept for the section
    inline_word,      ///< kept in its place in the text
    silent,           ///< known to change nothing that is shown or kept
    noted,            ///< index into the phrases of `noted_phrase`
};

enum class Structure : std::uint8_t {
    plain,
    paragraph_defaults,
    paragraph,
    in_table,
    nesting,
    box,
    cell,
    row,
    nested_cell,
    nested_row,
    section_defaults,
    section,
};

enum class Header : std::uint8_t {
    rtf,
    ansi,
    mac,
    pc,
    pca,
    code_page,
    default_font,
    default_language,
    default_tab,
    unicode_skip,
    unicode,
    binary,
};

/// What a group that begins with the word is.
enum class Destination : std::uint8_t {
    body,      ///< text of the document
    container, ///< holds groups but no text of its own
    fonts,
    font_alternative,
    colours,
    picture,
    shape_picture, ///< a picture that has a fallback
    fallback_picture,
    list_text,
    numbering,
    number_before,
    number_after,
    field,
    object,
    result,       ///< what a field or an object shows
    alternatives, ///< a group in two codings, the second in Unicode
    unicode_alternative,
    shape,
    shape_text,
    nested_row,
    list_table,     ///< kept for the document, and understood
    list_overrides, ///< the same
    document_group, ///< kept for the document
    section_group,  ///< kept for the section
    inline_group,   ///< kept in its place in the text
    skipped,        ///< left out, as nothing shown depends on it
    note_theme,     ///< left out with a word about it, from here on
    note_data,
    note_maths,
    note_drawing,
};

enum class FontWord : std::uint8_t {
    unknown,
    roman,
    swiss,
    modern,
    script,
    decor,
    technical,
    bidi,
    charset,
    pitch,
    code_page,
};

enum class ColourWord : std::uint8_t { red, green, blue };

enum class PictureWord : std::uint8_t {
    png,
    jpeg,
    enhanced_metafile,
    metafile,
    os2_metafile,
    mac,
    dib,
    bitmap,
    width,
    height,
    goal_width,
    goal_height,
    scale_x,
    scale_y,
    crop_left,
    crop_right,
    crop_top,
    crop_bottom,
    bits_per_pixel,
    planes,
    bytes_per_line,
};

enum class PageWord : std::uint8_t { width, height, left, right, top, bottom, gutter, landscape };

struct Word {
    std::string_view name;
    Topic topic = Topic::silent;
    std::int32_t value = 0;
};

/// All that is known of a control word; null for an unknown one. The word lives as long as the program.
const Word* find_word(std::string_view name);

/// What is lost with a word or group of that kind, in plain words.
std::string_view noted_phrase(std::int32_t value);
std::string_view noted_phrase(Destination destination);

} // namespace tolva::rtf
