#include "desktop/rich_text_layout.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTextLayout>
#include <algorithm>
#include <cmath>
#include <limits>

#include "desktop/rich_text_formats.h"

namespace tolva::desktop {

namespace {

constexpr double twips_an_inch = 1440;
/// Narrower columns are set as this wide, in twips.
constexpr double least_width = 360;
/// Default tab stops closer than this many twips are set as far apart.
constexpr int least_tab = 60;
/// What measures lose in the toolkit's fixed-point numbers, in twips.
constexpr double grace = 1;

/// Tab stops are told to the toolkit as on the screen, whatever it lays out for.
double screen_unit() {
    const QScreen* const screen = QGuiApplication::primaryScreen();
    return (screen ? std::round(screen->logicalDotsPerInchY()) : 96) / twips_an_inch;
}

Qt::Alignment alignment_of(rtf::Alignment alignment) {
    switch (alignment) {
    case rtf::Alignment::right:
        return Qt::AlignRight | Qt::AlignAbsolute;
    case rtf::Alignment::centre:
        return Qt::AlignHCenter;
    case rtf::Alignment::justified:
    case rtf::Alignment::distributed:
        return Qt::AlignJustify;
    default:
        return Qt::AlignLeft | Qt::AlignAbsolute;
    }
}

} // namespace

RichTextLayout::RichTextLayout(QTextDocument* document, double unit)
    : QAbstractTextDocumentLayout(document), unit_(unit) {}

void RichTextLayout::set_source(const rtf::Document& source) {
    default_tab_ = source.default_tab;
    widow_control_ = std::any_of(source.words.begin(), source.words.end(),
                                 [](const rtf::KeptWord& word) { return word.name == "widowctrl"; });
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

QTextOption::Tab tab_of(const rtf::TabStop& stop) {
    switch (stop.kind) {
    case rtf::TabKind::right:
        return {0, QTextOption::RightTab};
    case rtf::TabKind::centre:
        return {0, QTextOption::CenterTab};
    case rtf::TabKind::decimal:
        return {0, QTextOption::DelimiterTab, QLatin1Char('.')};
    default:
        return {0, QTextOption::LeftTab};
    }
}

} // namespace

/// The stops of a line that begins `left` twips from the margin: the toolkit counts them from where it
/// begins.
QList<QTextOption::Tab> RichTextLayout::tabs_of(const rtf::ParagraphFormat& format, int left) const {
    const double tab_unit = screen_unit();
    QList<QTextOption::Tab> tabs;
    int last = 0;
    for (const rtf::TabStop& stop : format.tabs) {
        if (stop.kind == rtf::TabKind::bar)
            continue;
        tabs.append(tab_of(stop));
        tabs.back().position = (stop.position - left) * tab_unit;
        last = std::max(last, stop.position);
    }
    // Text that hangs over goes on, behind a tab, where the other lines begin.
    if (format.first < 0) {
        tabs.append(QTextOption::Tab((format.left - left) * tab_unit, QTextOption::LeftTab));
        last = std::max(last, format.left);
    }
    const int step = std::max(default_tab_, least_tab);
    const int end = static_cast<int>(width_ / unit_);
    for (int stop = (last / step + 1) * step; stop <= end; stop += step)
        tabs.append(QTextOption::Tab((stop - left) * tab_unit, QTextOption::LeftTab));
    std::sort(tabs.begin(), tabs.end(),
              [](const auto& one, const auto& other) { return one.position < other.position; });
    return tabs;
}

/// The toolkit asks for the tabs whenever it measures a line, so they are those of the line at hand.
void RichTextLayout::set_tabs(const QTextBlock& block, bool first_line) const {
    const rtf::ParagraphFormat& format = *BlockData::of(block).format;
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setTextDirection(format.right_to_left ? Qt::RightToLeft : Qt::LeftToRight);
    option.setAlignment(alignment_of(format.alignment));
    option.setTabs(tabs_of(format, format.left + (first_line ? format.first : 0)));
    block.layout()->setTextOption(option);
}

BlockData::Line RichTextLayout::line_of(const QTextLine& line, const rtf::ParagraphFormat& format) const {
    constexpr double single = 240;
    constexpr double above_base_line = 0.8;
    BlockData::Line made;
    const double natural = line.ascent() + line.descent() + std::max(line.leading(), 0.0);
    made.height = natural;
    if (format.line_multiple && format.line > 0) {
        made.height = natural * format.line / single;
        made.drop = made.height - natural;
    } else if (!format.line_multiple && format.line > 0) {
        made.height = std::max(natural, px(format.line));
        made.drop = made.height - natural;
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
    data.has_hanging_tabs = format.first != 0 && block.text().contains(QLatin1Char('\t'));
    set_tabs(block, true);
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        const double left = px(format.left + (data.lines.empty() ? format.first : 0));
        line.setPosition(QPointF(left, 0));
        line.setLineWidth(std::max(column.width - left - px(format.right), px(least_width)));
        data.lines.push_back(line_of(line, format));
        if (data.lines.size() == 1 && data.has_hanging_tabs)
            set_tabs(block, false);
    }
    layout.endLayout();
    if (data.has_hanging_tabs)
        set_tabs(block, true);
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

RichTextLayout::Flow RichTextLayout::place_paragraph(const QTextBlock& block, const Column& column,
                                                     Flow flow) const {
    break_lines(block, column);
    BlockData& data = BlockData::of(block);
    const rtf::ParagraphFormat& format = *data.format;
    const bool control_widows = format.widow_control == rtf::WidowControl::document
                                    ? widow_control_
                                    : format.widow_control == rtf::WidowControl::on;
    data.place = QRectF();
    flow.y += px(format.before) + room_above(block);

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
