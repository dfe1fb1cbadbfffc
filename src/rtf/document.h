#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "rtf/format.h"
#include "rtf/picture.h"

namespace tolva::rtf {

struct Font {
    enum class Family : std::uint8_t { unknown, roman, swiss, modern, script, decor, technical, bidi };

    /// How the source calls it; what is kept of the source in its own words refers to it so.
    int number = 0;
    std::string name = "Times New Roman";
    /// Another font for machines without this one; may be empty.
    std::string alternative;
    Family family = Family::unknown;
    /// 0 for any, 1 fixed, 2 variable.
    std::int16_t pitch = 0;
    /// Windows' character set; -1 when not told, 2 for symbols.
    std::int16_t charset = -1;
    /// Overrules the character set; 0 when not told.
    int code_page = 0;

    friend bool operator==(const Font&, const Font&) = default;
};

struct Colour {
    std::uint8_t red = 0, green = 0, blue = 0;
    /// The window's or printer's own, whatever the three say.
    bool automatic = false;

    friend bool operator==(const Colour&, const Colour&) = default;
};

struct PageSetup {
    int width = 12240;
    int height = 15840;
    int left = 1800;
    int right = 1800;
    int top = 1440;
    int bottom = 1440;
    /// Added to the inner margin for binding.
    int gutter = 0;
    /// Told beside width and height, which already are as the page lies.
    bool landscape = false;

    friend bool operator==(const PageSetup&, const PageSetup&) = default;
};

/// A word of the source that has no meaning here and is written back as it came.
struct KeptWord {
    std::string_view name;
    std::optional<int> value;

    friend bool operator==(const KeptWord&, const KeptWord&) = default;
};

/// A stretch of paragraphs with headers, footers and columns of its own. The words and the groups are kept in
/// the source's own form.
struct Section {
    std::vector<KeptWord> words;
    std::vector<std::string> groups;

    /// Whether its first paragraph begins a page.
    bool starts_page() const;

    friend bool operator==(const Section&, const Section&) = default;
};

/// What stands in a paragraph beside its text. A field and an object are a pair of marks around the result
/// that is shown; pairs nest properly.
struct Inset {
    enum class Kind : std::uint8_t {
        picture, ///< counts as one character
        kept,    ///< source that shows nothing: footnotes, bookmarks, index entries
        field,   ///< a field begins; the source is its instruction
        object,  ///< an embedded object begins; the source is its data
        end,     ///< of the last field or object that began
    };

    Kind kind = Kind::kept;
    std::string source;
    Picture picture;

    friend bool operator==(const Inset&, const Inset&) = default;
};

/// Text of one format, or one inset.
struct Run {
    /// UTF-8. A tab is U+0009, a line break within the paragraph U+000B, a page break U+000C; there are no
    /// other control characters below U+0020. Empty for an inset.
    std::string text;
    CharacterFormat format;
    std::shared_ptr<const Inset> inset;

    friend bool operator==(const Run& a, const Run& b) {
        return a.text == b.text && a.format == b.format &&
               (a.inset == b.inset || (a.inset && b.inset && *a.inset == *b.inset));
    }
};

/// The number or bullet ahead of a list's paragraph, as shown: "1." and what parts it from the text.
struct ListText {
    std::string text;
    CharacterFormat format;

    friend bool operator==(const ListText&, const ListText&) = default;
};

struct Paragraph {
    enum class End : std::uint8_t { paragraph, cell, row };

    Shared<ParagraphFormat> format;
    std::vector<Run> runs;
    /// Of the paragraph's own mark: the height of an empty one, and what is typed into it.
    CharacterFormat mark;
    /// Empty for most.
    Shared<ListText> list_text;
    /// Whether it belongs to a table. The paragraphs of a row stand together; each cell ends with `End::cell`
    /// but the last, which ends with `End::row`.
    bool in_table = false;
    End end = End::paragraph;
    /// Whether the next paragraph begins the next of the document's sections.
    bool ends_section = false;
    /// The same for all paragraphs of a row.
    Shared<RowFormat> row;

    friend bool operator==(const Paragraph&, const Paragraph&) = default;
};

/// A rich text. A plain value: copies are independent, equality compares all that a save keeps.
struct Document {
    Document();

    /// Of bytes for which no font tells one.
    int code_page = 1252;
    /// Never empty.
    std::vector<Font> fonts;
    int default_font = 0;
    /// Never empty; the first is the automatic one unless the source says otherwise.
    std::vector<Colour> colours;
    /// 0 when not told.
    int language = 0;
    int default_tab = 720;
    PageSetup page;
    std::vector<KeptWord> words;
    /// What belongs to the document as a whole, in the source's own form: style sheet, list tables, info.
    std::vector<std::string> groups;
    /// One more than there are paragraphs with `ends_section`.
    std::vector<Section> sections;
    /// Never empty.
    std::vector<Paragraph> paragraphs;
    /// Whether the last paragraph lacks its mark, as in the source of a selection within a paragraph.
    bool unended = false;

    /// What reading could not keep, in plain words, each once. Not part of what equality compares.
    std::vector<std::string> dropped;

    /// The index of a font or colour, added when it is new. Beyond what a document holds (limits.h) the
    /// default one.
    int font_index(const Font& font);
    int colour_index(Colour colour);

    friend bool operator==(const Document& a, const Document& b);
};

/// What a save would lose of what the source held: an empty list for most letters.
std::vector<std::string> losses(const Document& document);

/// Whether the paragraph shows nothing but marks of length 0.
bool shows_nothing(const Paragraph& paragraph);

} // namespace tolva::rtf
