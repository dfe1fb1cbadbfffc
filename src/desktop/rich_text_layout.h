#pragma once

#include <QAbstractTextDocumentLayout>
#include <QHash>
#include <QTextLayout>
#include <QTextOption>
#include <vector>

#include "desktop/rich_text_document.h"
#include "desktop/table_row.h"

namespace tolva::desktop {

/// Lays out what `show_document` made, in one column: on pages, where a page's height is given, or endless. A
/// line stands whole on one page. The device of the document's layout decides the fonts' metrics.
class RichTextLayout final : public QAbstractTextDocumentLayout {
  public:
    /// `unit` is the size of a twip.
    RichTextLayout(QTextDocument* document, double unit);

    /// What the source says beside its paragraphs. Ahead of showing it.
    void set_source(const rtf::Document& source);
    /// Page height 0 is endless.
    void set_page(double width, double height);

    /// Room left free around endless text.
    void set_inset(double inset) { inset_ = inset; }

    /// Where the page's first line begins in the document; pages in order. Pages that no line stands on don't
    /// count: spacing can be higher than a page.
    int page_start(int page) const { return pages_.at(static_cast<std::size_t>(page)).start; }
    /// Paints what stands on the page, its corner at the painter's origin.
    void draw_page(QPainter& painter, int page);

    // --- QAbstractTextDocumentLayout ---

    void draw(QPainter* painter, const PaintContext& context) override;
    int hitTest(const QPointF& point, Qt::HitTestAccuracy accuracy) const override;
    int pageCount() const override { return static_cast<int>(pages_.size()); }
    QSizeF documentSize() const override { return size_; }
    QRectF frameBoundingRect(QTextFrame* frame) const override;
    QRectF blockBoundingRect(const QTextBlock& block) const override;

  protected:
    void documentChanged(int from, int removed, int added) override;
    void resizeInlineObject(QTextInlineObject item, int position, const QTextFormat& format) override;
    void drawInlineObject(QPainter* painter, const QRectF& place, QTextInlineObject object, int position,
                          const QTextFormat& format) override;

  private:
    /// Where the next line goes. The page stays until a line finds no room on it.
    struct Flow {
        double y = 0;
        int page = 0;
    };
    /// A page that lines stand on: which one of the flow's it is, and where in the document it begins.
    struct Page {
        int number;
        int start;
    };
    /// A column that text is set in.
    struct Column {
        double left, width;
    };
    struct Rule {
        QLineF line;
        rtf::Border border;
    };
    struct Ground {
        QRectF place;
        QColor colour;
    };

    void lay_out();
    void break_lines(const QTextBlock& block, const Column& column) const;
    bool ends_page(const QTextBlock& block) const;
    BlockData::Line line_of(const QTextLine& line, const rtf::ParagraphFormat& format, double gap) const;
    bool has_swollen_gaps(const QTextBlock& block) const;
    double gap_of(const QTextBlock& block, const QTextLine& line) const;
    double share_of(const QFont& font) const;
    int space_shared_above(const QTextBlock& block) const;
    Flow place_paragraph(const QTextBlock& block, const Column& column, Flow flow) const;
    void place_line(const QTextBlock& block, std::size_t index, Flow& flow) const;
    /// How many of the lines from `line` on go on the page that the flow is on.
    std::size_t lines_that_fit(const BlockData& data, std::size_t line, const Flow& flow) const;
    bool fits(const Flow& flow, double height) const;
    void next_page(Flow& flow) const;
    bool at_page_top(const Flow& flow) const;
    void finish_pages();

    Flow place_row(const TableRow& row, Flow flow);
    Flow place_cells(const TableRow& row, Flow flow) const;
    Flow place_cell(const TableRow& row, std::size_t cell, Flow flow) const;
    void align_cells(const TableRow& row, const Flow& top, const Flow& bottom) const;
    void rule_row(const TableRow& row, const Flow& top, const Flow& bottom);
    Column cell_edges(const TableRow& row, std::size_t cell) const;
    void rule_paragraph(const QTextBlock& block);
    /// What a paragraph's borders take of the height.
    double room_above(const QTextBlock& block) const;
    double room_below(const QTextBlock& block) const;
    struct Sides {
        rtf::Border top, bottom, left, right;
    };
    /// A box around a place, in as many parts as there are pages.
    void add_box(const QRectF& place, const Sides& sides, const QColor& ground);
    QColor ground_of(int background, int shading) const;
    double px(double twips) const { return twips * unit_; }

    // Tabs are told in rich_text_tabs.cpp, rows in rich_text_rows.cpp, painting in rich_text_painting.cpp.
    void set_tabs(const QTextBlock& block, bool first_line) const;
    std::vector<rtf::TabStop> stops_of(const rtf::ParagraphFormat& format, int left) const;
    rtf::TabStop stop_behind(const QTextBlock& block, const QTextLine& line, int position) const;
    void reach_far_tab(const QTextBlock& block, QTextLine& line) const;
    void draw_leaders(QPainter& painter, const QTextBlock& block, const QTextLine& line) const;
    void draw_grounds(QPainter& painter, const QRectF& part) const;
    void draw_block(QPainter& painter, const QTextBlock& block,
                    const QList<QTextLayout::FormatRange>& selections, const QRectF& part) const;
    void draw_rules(QPainter& painter, const QRectF& part) const;

    double unit_;
    double width_ = 0;
    double page_height_ = 0;
    double inset_ = 0;
    int default_tab_ = 720;
    bool widow_control_ = false;
    /// Between paragraphs, of the space after the one and before the other; else both do.
    bool larger_space_counts_ = false;
    std::vector<QColor> colours_;
    mutable QHash<QString, double> gap_shares_;
    QSizeF size_;
    std::vector<Page> pages_;
    std::vector<Rule> rules_;
    std::vector<Ground> grounds_;
};

} // namespace tolva::desktop
