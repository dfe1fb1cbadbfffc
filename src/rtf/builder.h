#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "rtf/document.h"

namespace tolva::rtf {

/// Puts a document's paragraphs together in the order of the source, and sees to what every document
/// guarantees: rows that are whole, marks that nest, no paragraph too many at the end, bounded numbers.
class Builder {
  public:
    explicit Builder(Document& document) : document_(document) {}

    /// Text of that format at the end of the current paragraph, for appending something to it.
    std::string& text(const CharacterFormat& format);
    void add_inset(std::shared_ptr<const Inset> inset, const CharacterFormat& format);
    /// Ahead of the current paragraph's text; only the first counts.
    void set_list_text(ListText text);
    bool has_list_text() const { return !current_.list_text->text.empty(); }
    /// The format of the current paragraph's first text, or the given one when it has none yet.
    const CharacterFormat& first_format(const CharacterFormat& otherwise) const;

    /// Where the source ends a paragraph. The row is the one described last; it counts when a row breaks off.
    void end_paragraph(const Shared<ParagraphFormat>& format, const CharacterFormat& mark, bool in_table,
                       const Shared<RowFormat>& row);
    void end_cell(const Shared<ParagraphFormat>& format, const CharacterFormat& mark);
    void end_row(const Shared<ParagraphFormat>& format, const CharacterFormat& mark,
                 const Shared<RowFormat>& row);
    void end_section(const Shared<ParagraphFormat>& format, const CharacterFormat& mark,
                     const Shared<RowFormat>& row);
    /// The section that is being read.
    Section& section() { return section_; }

    /// Whether anything has been added.
    bool empty() const { return document_.paragraphs.empty() && current_.runs.empty(); }
    /// Whether the current paragraph shows anything yet.
    bool current_counts() const { return !shows_nothing(current_); }

    /// Where the source ends; `plain` is the mark's format of a document without any text.
    void finish(const Shared<ParagraphFormat>& format, const CharacterFormat& plain, bool in_table,
                const Shared<RowFormat>& row);

  private:
    static constexpr std::size_t none = static_cast<std::size_t>(-1);

    void push(const Shared<ParagraphFormat>& format, const CharacterFormat& mark, Paragraph::End end);
    bool full() const;
    /// Makes a row of the paragraphs since its start, if it has any cell.
    void close_row(Shared<RowFormat> row, bool needs_cells);
    /// Moves marks that stand alone behind a paragraph's end into that paragraph.
    void fold_back();

    Document& document_;
    Paragraph current_;
    Section section_;
    std::size_t runs_ = 0;
    std::size_t row_start_ = none;
    std::size_t cells_ = 0;
};

} // namespace tolva::rtf
