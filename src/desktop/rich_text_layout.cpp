#include "desktop/rich_text_layout.h"

#include <QFontMetricsF>
#include <QTextLayout>
#include <algorithm>
#include <limits>

#include "desktop/rich_text_fonts.h"
#include "desktop/rich_text_formats.h"

namespace tolva::desktop {

namespace {

/// Narrower columns are set as this wide, in twips.
constexpr double least_width = 360;
/// What measures lose in the toolkit's fixed-point numbers, in twips.
constexpr double grace = 1;

} // namespace

RichTextLayout::RichTextLayout(QTextDocument* document, double unit)
    : QAbstractTextDocumentLayout(document), unit_(unit) {}

void RichTextLayout::set_source(const rtf::Document& source) {
    default_tab_ = source.default_tab;
    const auto says = [&source](std::string_view name) {
        return std::any_of(source.words.begin(), source.words.end(),
                           [name](const rtf::KeptWord& word) { return word.name == name; });
    };
    widow_control_ = says("widowctrl");
    larger_space_counts_ = says("htmautsp");
    colours_.clear();
    for (std::size_t index = 0; index < source.colours.size(); ++index)
        colours_.push_back(colour_of(source, static_cast<int>(index)));
}

void RichTextLayout::set_page(double width, double height) {
    if (width == width_ && height == page_height_)
        return;
    width_ = width;
    page_height_ = height;
    lay_out();
}

void RichTextLayout::documentChanged(int, int, int) {
    // A text edit tells the width of its window by the document's page.
    if (page_height_ <= 0 && document()->pageSize().width() > 0)
        width_ = document()->pageSize().width();
    lay_out();
}

// --- Lines ---

namespace {

/// The fonts of a part of a block, or that of its end where the part is empty.
std::vector<QFont> fonts_of(const QTextBlock& block, int start, int length) {
    std::vector<QFont> fonts;
    for (auto at = block.begin(); length > 0 && !at.atEnd(); ++at) {
        const int from = at.fragment().position() - block.position();
        if (from < start + length && from + at.fragment().length() > start)
            fonts.push_back(at.fragment().charFormat().font());
    }
    if (fonts.empty())
        fonts.push_back(block.charFormat().font());
    return fonts;
}

} // namespace

/// Whether the toolkit counts a part of some font's line gap twice.
bool RichTextLayout::has_swollen_gaps(const QTextBlock& block) const {
    const auto fonts = fonts_of(block, 0, block.length() - 1);
    return std::any_of(fonts.begin(), fonts.end(), [this](const QFont& font) { return share_of(font) < 1; });
}

/// The line gap that the fonts of a line ask for.
double RichTextLayout::gap_of(const QTextBlock& block, const QTextLine& line) const {
    double top = line.ascent();
    for (const QFont& font : fonts_of(block, line.textStart(), line.textLength())) {
        const QFontMetricsF metrics(font, paintDevice());
        top = std::max(top, metrics.ascent() + share_of(font) * std::max(metrics.leading(), 0.0));
    }
    return top - line.ascent();
}

double RichTextLayout::share_of(const QFont& font) const {
    const QString key = font.families().join(QLatin1Char(',')) + QString::number(font.weight()) +
                        QString::number(static_cast<int>(font.style()));
    auto share = gap_shares_.constFind(key);
    if (share == gap_shares_.constEnd())
        share = gap_shares_.insert(key, line_gap_share(font));
    return *share;
}

BlockData::Line RichTextLayout::line_of(const QTextLine& line, const rtf::ParagraphFormat& format,
                                        double gap) const {
    constexpr double single = 240;
    constexpr double above_base_line = 0.8;
    const double letters = line.ascent() + line.descent();
    const double natural = letters + gap;
    BlockData::Line made;
    made.height = natural;
    made.drop = gap;
    if (format.line_multiple && format.line > 0) {
        // More stands below the letters, and what is less is missing above them.
        made.height = natural * format.line / single;
        made.drop += std::min(made.height - natural, 0.0);
    } else if (!format.line_multiple && format.line > 0) {
        made.height = std::max(natural, px(format.line));
        made.drop = made.height - letters;
    } else if (!format.line_multiple && format.line < 0) {
        made.height = px(-format.line);
        made.drop = above_base_line * made.height - line.ascent();
    }
    return made;
}

void RichTextLayout::break_lines(const QTextBlock& block, const Column& column) const {
    BlockData& data = BlockData::of(block);
    if (data.broken_width == column.width && data.broken_left == column.left)
        return;
    data.broken_width = column.width;
    data.broken_left = column.left;
    data.lines.clear();
    const rtf::ParagraphFormat& format = *data.format;
    QTextLayout& layout = *block.layout();
    layout.setPosition(QPointF(column.left, 0));
    const bool has_tabs = block.text().contains(QLatin1Char('\t'));
    data.has_hanging_tabs = format.first != 0 && has_tabs;
    data.has_leaders =
        has_tabs && std::any_of(format.tabs.begin(), format.tabs.end(),
                                [](const rtf::TabStop& stop) { return stop.leader != rtf::TabLeader::none; });
    const bool swollen = has_swollen_gaps(block);
    set_tabs(block, true);
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        const double left = px(format.left + (data.lines.empty() ? format.first : 0));
        line.setPosition(QPointF(left, 0));
        line.setLineWidth(std::max(column.width - left - px(format.right), px(least_width)));
        if (has_tabs)
            reach_far_tab(block, line);
        const double gap = swollen ? gap_of(block, line) : std::max(line.leading(), 0.0);
        data.lines.push_back(line_of(line, format, gap));
        if (data.lines.size() == 1 && data.has_hanging_tabs)
            set_tabs(block, false);
    }
    layout.endLayout();
    if (data.has_hanging_tabs)
        set_tabs(block, true);
    if (ends_page(block))
        data.lines.back().height = 0;
}

/// Whether nothing stands behind the paragraph's last page break: its end doesn't go over to the next page.
bool RichTextLayout::ends_page(const QTextBlock& block) const {
    const BlockData& data = BlockData::of(block);
    return page_height_ > 0 && !data.page_breaks.empty() && data.page_breaks.back() == block.length() - 2;
}

// --- Pages ---

bool RichTextLayout::fits(const Flow& flow, double height) const {
    return page_height_ <= 0 || flow.y + height <= (flow.page + 1) * page_height_ + px(grace);
}

bool RichTextLayout::at_page_top(const Flow& flow) const {
    return page_height_ <= 0 || flow.y <= flow.page * page_height_;
}

void RichTextLayout::next_page(Flow& flow) const {
    if (page_height_ <= 0)
        return;
    ++flow.page;
    flow.y = flow.page * page_height_;
}

std::size_t RichTextLayout::lines_that_fit(const BlockData& data, std::size_t line, const Flow& flow) const {
    Flow ahead = flow;
    std::size_t count = 0;
    for (; line + count < data.lines.size() && fits(ahead, data.lines[line + count].height); ++count)
        ahead.y += data.lines[line + count].height;
    return count;
}

void RichTextLayout::place_line(const QTextBlock& block, std::size_t index, Flow& flow) const {
    BlockData& data = BlockData::of(block);
    BlockData::Line& line = data.lines[index];
    line.page = flow.page;
    QTextLine set = block.layout()->lineAt(static_cast<int>(index));
    set.setPosition(QPointF(set.position().x(), flow.y + line.drop - block.layout()->position().y()));
    data.place |= QRectF(data.broken_left, flow.y, data.broken_width, line.height);
    flow.y += line.height;
}

/// How much of the space before the paragraph stands behind the one above already.
int RichTextLayout::space_shared_above(const QTextBlock& block) const {
    const QTextBlock above = block.previous();
    if (!larger_space_counts_ || !above.isValid() || BlockData::of(block).starts_page || ends_page(above) ||
        BlockData::of(above).end != rtf::Paragraph::End::paragraph ||
        BlockData::of(above).in_table != BlockData::of(block).in_table)
        return 0;
    return std::max(std::min(BlockData::of(above).format->after, BlockData::of(block).format->before), 0);
}

RichTextLayout::Flow RichTextLayout::place_paragraph(const QTextBlock& block, const Column& column,
                                                     Flow flow) const {
    break_lines(block, column);
    BlockData& data = BlockData::of(block);
    const rtf::ParagraphFormat& format = *data.format;
    const bool control_widows = format.widow_control == rtf::WidowControl::document
                                    ? widow_control_
                                    : format.widow_control == rtf::WidowControl::on;
    data.place = QRectF();
    flow.y += px(format.before - space_shared_above(block)) + room_above(block);

    double whole = 0;
    for (const BlockData::Line& line : data.lines)
        whole += line.height;
    if (format.keep && !fits(flow, whole) && whole <= page_height_)
        next_page(flow);

    QTextLayout& layout = *block.layout();
    auto page_break = data.page_breaks.begin();
    for (std::size_t at = 0; at < data.lines.size(); ++at) {
        const std::size_t room = lines_that_fit(data, at, flow);
        const std::size_t left = data.lines.size() - at;
        // One line alone, at a page's end or at the next one's top. Three lines can't be parted at all.
        const bool lonely =
            (room == 1 && left > 1 && (at == 0 || left == 2)) || (room == 2 && left == 3 && at == 0);
        if ((room == 0 || (control_widows && lonely)) && !at_page_top(flow))
            next_page(flow);
        if (at == 0)
            layout.setPosition(QPointF(column.left, flow.y));
        place_line(block, at, flow);
        const QTextLine line = layout.lineAt(static_cast<int>(at));
        const int behind = line.textStart() + line.textLength();
        if (page_break != data.page_breaks.end() && *page_break < behind) {
            ++page_break;
            if (at + 1 < data.lines.size())
                next_page(flow);
        }
    }
    if (!ends_page(block))
        flow.y += room_below(block) + px(format.after);
    return flow;
}

void RichTextLayout::lay_out() {
    if (width_ <= 0)
        return;
    rules_.clear();
    grounds_.clear();
    const Column whole{inset_, std::max(width_ - 2 * inset_, px(least_width))};
    Flow flow{inset_, 0};
    // Paragraphs that want to stay with the next one.
    QTextBlock chain, chain_moved;
    Flow chain_top;
    for (QTextBlock block = document()->begin(); block.isValid();) {
        BlockData& data = BlockData::of(block);
        if (data.starts_page && block != document()->begin() && !at_page_top(flow))
            next_page(flow);
        if (data.in_table) {
            const TableRow row(block);
            flow = place_row(row, flow);
            block = row.last.next();
            chain = QTextBlock();
            continue;
        }
        const Flow top = flow;
        flow = place_paragraph(block, whole, flow);
        const bool parted =
            chain.isValid() && BlockData::of(chain).lines.front().page != data.lines.front().page;
        if (parted && chain != chain_moved && !at_page_top(chain_top)) {
            chain_moved = block = chain;
            flow = chain_top;
            next_page(flow);
            continue;
        }
        if (!data.format->keep_next)
            chain = QTextBlock();
        else if (!chain.isValid()) {
            chain = block;
            chain_top = top;
        }
        block = block.next();
    }
    double right = width_;
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        rule_paragraph(block);
        right = std::max(right, BlockData::of(block).place.right());
    }
    size_ = QSizeF(right, page_height_ > 0 ? (flow.page + 1) * page_height_ : flow.y + inset_);
    finish_pages();
    Q_EMIT documentSizeChanged(size_);
    Q_EMIT update();
}

/// The pages' first characters. A row that goes over to another page has text of several cells on both.
void RichTextLayout::finish_pages() {
    pages_.clear();
    constexpr int none = std::numeric_limits<int>::max();
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        const BlockData& data = BlockData::of(block);
        for (std::size_t at = 0; at < data.lines.size(); ++at) {
            const std::size_t page = static_cast<std::size_t>(data.lines[at].page);
            while (pages_.size() <= page)
                pages_.push_back({static_cast<int>(pages_.size()), none});
            const int start = block.position() + block.layout()->lineAt(static_cast<int>(at)).textStart();
            pages_[page].start = std::min(pages_[page].start, start);
        }
    }
    std::erase_if(pages_, [](const Page& page) { return page.start == none; });
}

// --- Places ---

QRectF RichTextLayout::frameBoundingRect(QTextFrame*) const {
    return {QPointF(), size_};
}

QRectF RichTextLayout::blockBoundingRect(const QTextBlock& block) const {
    return block.isValid() && block.document() == document() ? BlockData::of(block).place : QRectF();
}

int RichTextLayout::hitTest(const QPointF& point, Qt::HitTestAccuracy accuracy) const {
    // The nearest block: by height first, then, among the cells of a row, by side.
    QTextBlock nearest;
    std::pair least(std::numeric_limits<double>::max(), std::numeric_limits<double>::max());
    const auto distance = [](double at, double from, double to) {
        return at < from ? from - at : at > to ? at - to : 0.0;
    };
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        const QRectF& place = BlockData::of(block).place;
        const std::pair far(distance(point.y(), place.top(), place.bottom()),
                            distance(point.x(), place.left(), place.right()));
        if (far < least) {
            least = far;
            nearest = block;
        }
    }
    if (!nearest.isValid())
        return accuracy == Qt::ExactHit ? -1 : 0;
    const QTextLayout& layout = *nearest.layout();
    const QPointF inside = point - layout.position();
    for (int at = 0; at < layout.lineCount(); ++at) {
        const QTextLine line = layout.lineAt(at);
        const BlockData::Line& measured = BlockData::of(nearest).lines[static_cast<std::size_t>(at)];
        const double bottom = line.y() - measured.drop + measured.height;
        if (inside.y() > bottom && at + 1 < layout.lineCount())
            continue;
        if (accuracy == Qt::ExactHit && !line.naturalTextRect().contains(inside))
            return -1;
        return nearest.position() + line.xToCursor(inside.x());
    }
    return nearest.position();
}

} // namespace tolva::desktop
