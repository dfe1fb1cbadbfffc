#pragma once

#include <QRectF>
#include <QTextBlock>
#include <QTextDocument>
#include <cstddef>
#include <vector>

#include "rtf/document.h"

namespace tolva::desktop {

// A rich text as a document of the toolkit: one block for each paragraph, one character for each character,
// but that hidden text is left out and characters beyond U+FFFF count two. Blocks keep what the toolkit's own
// formats can't say; `RichTextLayout` knows what to make of it.

/// What a block keeps of its paragraph, and what the layout has found for it.
class BlockData final : public QTextBlockUserData {
  public:
    static BlockData& of(const QTextBlock& block);

    rtf::Shared<rtf::ParagraphFormat> format;
    rtf::Shared<rtf::RowFormat> row;
    bool in_table = false;
    rtf::Paragraph::End end = rtf::Paragraph::End::paragraph;
    bool starts_page = false;

    /// Where in the block a page ends: at a line separator that stands for a page break.
    std::vector<int> page_breaks;

    /// Characters of the paragraph as the rich text counts them, without its end.
    std::size_t length = 0;
    /// Where characters are left out ahead of a place in the block, and how many.
    struct Hidden {
        int at;
        std::size_t characters;
    };
    std::vector<Hidden> hidden;

    struct Line {
        /// From one line to the next, and from the line's top to that of its text.
        double height = 0;
        double drop = 0;
        int page = 0;
    };
    std::vector<Line> lines;
    /// The first line begins elsewhere than the others, and has its tabs in other places.
    bool has_hanging_tabs = false;
    /// Dots or the like lead to some of its tab stops.
    bool has_leaders = false;
    /// What the lines were broken for; below 0 before they are.
    double broken_left = -1;
    double broken_width = -1;
    /// In the whole text; for a paragraph on several pages all of them.
    QRectF place;
};

/// Puts paragraphs of `source` in the place of `count` blocks, at least one of each. `unit` is the size of a
/// twip on what the text is shown or printed on.
void show_paragraphs(QTextDocument& target, int first_block, int count, const rtf::Document& source,
                     std::size_t first, std::size_t behind, double unit);
void show_document(QTextDocument& target, const rtf::Document& source, double unit);

/// Positions in the one and in the other.
int widget_position(const QTextDocument& document, std::size_t position);
std::size_t text_position(const QTextDocument& document, int position);

/// Properties of the character that stands for a picture: its size in twips and what is seen.
enum PictureProperty : int {
    picture_width = QTextFormat::UserProperty,
    picture_height,
    picture_image,
};

} // namespace tolva::desktop
