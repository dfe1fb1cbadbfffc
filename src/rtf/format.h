#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "rtf/shared.h"

namespace tolva::rtf {

// Measures are twips (1/1440 inch) unless told otherwise. Fonts and colours are indexes into the document's
// tables; index 0 of the colours is the automatic colour.

enum class Underline : std::uint8_t {
    none,
    single,
    words,
    dotted,
    dashed,
    dash_dot,
    dash_dot_dot,
    double_line,
    thick,
    wave,
    heavy_wave,
    double_wave,
    long_dash,
    thick_dotted,
    thick_dashed,
    thick_dash_dot,
    thick_dash_dot_dot,
    thick_long_dash,
};

enum class Script : std::uint8_t { baseline, superscript, subscript };

struct CharacterFormat {
    static constexpr std::int16_t untold = -1;

    std::int16_t font = 0;
    std::int16_t half_points = 24;
    std::int16_t colour = 0;
    /// The marker's colour; 0 for none.
    std::int16_t highlight = 0;
    /// The ground's colour; 0 for none. A highlight lies over it.
    std::int16_t background = 0;
    /// Half points above (or, negative, below) the base line.
    std::int16_t raise = 0;
    /// Twips between letters beyond their own.
    std::int16_t letter_spacing = 0;
    /// Letters of at least this many half points move together where they fit: 0 for none, `untold` where the
    /// source leaves it to the program.
    std::int16_t kerning = untold;
    /// The style sheet's number of the character style; its properties are spelled out here all the same.
    std::int16_t style = 0;
    /// 0 for the document's own.
    std::uint16_t language = 0;
    Underline underline = Underline::none;
    Script script = Script::baseline;
    bool bold = false;
    bool italic = false;
    bool strike = false;
    bool double_strike = false;
    bool caps = false;
    bool small_caps = false;
    bool hidden = false;
    bool outline = false;
    bool shadow = false;
    bool embossed = false;
    bool engraved = false;

    friend bool operator==(const CharacterFormat&, const CharacterFormat&) = default;
};

enum class Alignment : std::uint8_t { left, right, centre, justified, distributed };

enum class TabKind : std::uint8_t { left, right, centre, decimal, bar };
enum class TabLeader : std::uint8_t { none, dots, middle_dots, hyphens, line, thick_line, equals };

struct TabStop {
    int position = 0;
    TabKind kind = TabKind::left;
    TabLeader leader = TabLeader::none;

    friend bool operator==(const TabStop&, const TabStop&) = default;
};

enum class BorderStyle : std::uint8_t {
    none,
    single,
    thick,
    double_line,
    triple,
    dotted,
    dashed,
    small_dashes,
    dash_dot,
    dash_dot_dot,
    hairline,
    wave,
    double_wave,
    embossed,
    engraved,
    inset,
    outset,
};

struct Border {
    std::int16_t width = 0;
    /// Between the border and the text.
    std::int16_t space = 0;
    std::int16_t colour = 0;
    BorderStyle style = BorderStyle::none;
    bool shadow = false;

    friend bool operator==(const Border&, const Border&) = default;
};

/// `between` divides paragraphs of like borders, `bar` stands outside the text.
struct ParagraphBorders {
    Border top, bottom, left, right, between, bar;

    friend bool operator==(const ParagraphBorders&, const ParagraphBorders&) = default;
};

enum class NumberKind : std::uint8_t {
    none,
    bullet,
    decimal,
    upper_letter,
    lower_letter,
    upper_roman,
    lower_roman,
    ordinal,
};

/// How a paragraph of a simple list numbers itself. The text shown for it is `Paragraph::list_text`.
struct Numbering {
    NumberKind kind = NumberKind::none;
    int start = 1;
    int indent = 0;
    int space = 0;
    bool hanging = false;
    /// Of the number or bullet; -1 for the paragraph's own.
    std::int16_t font = -1;
    std::string before, after;

    friend bool operator==(const Numbering&, const Numbering&) = default;
};

enum class WidowControl : std::uint8_t { document, on, off };

struct ParagraphFormat {
    Alignment alignment = Alignment::left;
    int left = 0;
    int right = 0;
    /// Of the first line, from `left`.
    int first = 0;
    int before = 0;
    int after = 0;
    /// With `line_multiple`, 240ths of a line; else 0 for the font's own height, above 0 the least height,
    /// below 0 the exact one.
    int line = 0;
    bool line_multiple = false;
    bool page_break_before = false;
    /// On one page.
    bool keep = false;
    /// On one page with the next paragraph.
    bool keep_next = false;
    bool right_to_left = false;
    WidowControl widow_control = WidowControl::document;
    /// The style sheet's number of the paragraph style; its properties are spelled out here all the same.
    std::int16_t style = 0;
    /// 0 to 8; 9 is body text.
    std::int16_t outline_level = 9;
    /// A list of the document's list table, 0 for none, and the level in it.
    std::int16_t list = 0;
    std::int16_t list_level = 0;
    /// The ground's colour; 0 for none.
    std::int16_t background = 0;
    /// Hundredths of a per cent of grey over the ground.
    std::int16_t shading = 0;
    std::vector<TabStop> tabs;
    Shared<Numbering> numbering;
    Shared<ParagraphBorders> borders;

    friend bool operator==(const ParagraphFormat&, const ParagraphFormat&) = default;
};

enum class CellMerge : std::uint8_t { none, first, continued };
enum class CellAlignment : std::uint8_t { top, centre, bottom };

struct CellFormat {
    /// The right edge, from the margin.
    int right = 0;
    Border top, bottom, left, right_border;
    CellMerge across = CellMerge::none;
    CellMerge down = CellMerge::none;
    CellAlignment alignment = CellAlignment::top;
    std::int16_t background = 0;
    std::int16_t shading = 0;

    friend bool operator==(const CellFormat&, const CellFormat&) = default;
};

/// A table's row. There are at least as many cells here as there are in the text.
struct RowFormat {
    /// The left edge, from the margin.
    int left = 0;
    /// Half the space between the texts of neighbouring cells.
    int gap = 0;
    /// 0 for what the text needs, above 0 the least height, below 0 the exact one.
    int height = 0;
    Alignment alignment = Alignment::left;
    /// Repeated on each page.
    bool header = false;
    /// On one page.
    bool keep = false;
    Border top, bottom, left_border, right_border, horizontal, vertical;
    std::vector<CellFormat> cells;

    friend bool operator==(const RowFormat&, const RowFormat&) = default;
};

} // namespace tolva::rtf
