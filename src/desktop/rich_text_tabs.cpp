#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <QTextLayout>
#include <algorithm>
#include <cmath>

#include "desktop/rich_text_layout.h"

namespace tolva::desktop {

namespace {

constexpr double twips_an_inch = 1440;
/// Default tab stops closer than this many twips are set as far apart.
constexpr int least_tab = 60;

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

QTextOption::Tab tab_of(const rtf::TabStop& stop) {
    const double position = stop.position * screen_unit();
    switch (stop.kind) {
    case rtf::TabKind::right:
        return {position, QTextOption::RightTab};
    case rtf::TabKind::centre:
        return {position, QTextOption::CenterTab};
    case rtf::TabKind::decimal:
        return {position, QTextOption::DelimiterTab, QLatin1Char('.')};
    default:
        return {position, QTextOption::LeftTab};
    }
}

QChar leader_of(rtf::TabLeader leader) {
    switch (leader) {
    case rtf::TabLeader::middle_dots:
        return QChar(0xB7);
    case rtf::TabLeader::hyphens:
        return QLatin1Char('-');
    case rtf::TabLeader::line:
    case rtf::TabLeader::thick_line:
        return QLatin1Char('_');
    case rtf::TabLeader::equals:
        return QLatin1Char('=');
    default:
        return QLatin1Char('.');
    }
}

QTextCharFormat format_at(const QTextBlock& block, int position) {
    for (auto at = block.begin(); !at.atEnd(); ++at)
        if (at.fragment().contains(block.position() + position))
            return at.fragment().charFormat();
    return block.charFormat();
}

} // namespace

/// The stops of a line that begins `left` twips from the margin, counted from there, in order.
std::vector<rtf::TabStop> RichTextLayout::stops_of(const rtf::ParagraphFormat& format, int left) const {
    std::vector<rtf::TabStop> stops;
    int last = 0;
    for (const rtf::TabStop& stop : format.tabs) {
        if (stop.kind == rtf::TabKind::bar)
            continue;
        stops.push_back(stop);
        last = std::max(last, stop.position);
    }
    // Text that hangs over goes on, behind a tab, where the other lines begin.
    if (format.first < 0) {
        stops.push_back({format.left});
        last = std::max(last, format.left);
    }
    const int step = std::max(default_tab_, least_tab);
    const int end = static_cast<int>(width_ / unit_);
    for (int stop = (last / step + 1) * step; stop <= end; stop += step)
        stops.push_back({stop});
    for (rtf::TabStop& stop : stops)
        stop.position -= left;
    std::stable_sort(stops.begin(), stops.end(),
                     [](const auto& one, const auto& other) { return one.position < other.position; });
    return stops;
}

/// The toolkit asks for the tabs whenever it measures a line, so they are those of the line at hand.
void RichTextLayout::set_tabs(const QTextBlock& block, bool first_line) const {
    const rtf::ParagraphFormat& format = *BlockData::of(block).format;
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setTextDirection(format.right_to_left ? Qt::RightToLeft : Qt::LeftToRight);
    option.setAlignment(alignment_of(format.alignment));
    QList<QTextOption::Tab> tabs;
    for (const rtf::TabStop& stop : stops_of(format, format.left + (first_line ? format.first : 0)))
        tabs.append(tab_of(stop));
    option.setTabs(tabs);
    block.layout()->setTextOption(option);
}

/// The stop that the tab at `position` leads to, or a plain one at the line's beginning.
rtf::TabStop RichTextLayout::stop_behind(const QTextBlock& block, const QTextLine& line, int position) const {
    const rtf::ParagraphFormat& format = *BlockData::of(block).format;
    const double reached = line.cursorToX(position) - line.cursorToX(line.textStart());
    const int first = line.lineNumber() == 0 ? format.first : 0;
    for (const rtf::TabStop& stop : stops_of(format, format.left + first))
        if (px(stop.position) > reached)
            return stop;
    return {};
}

/// A tab may lead to a stop in the margin: the line then reaches as far. There is no margin on the screen,
/// and what stood there couldn't be seen.
void RichTextLayout::reach_far_tab(const QTextBlock& block, QTextLine& line) const {
    if (page_height_ <= 0)
        return;
    const int last = line.textStart() + line.textLength() - 1;
    const QString text = block.text();
    if (last < line.textStart() || last + 1 >= text.size() || text[last] != QLatin1Char('\t'))
        return;
    const rtf::TabStop stop = stop_behind(block, line, last);
    if (stop.kind != rtf::TabKind::left && px(stop.position) > line.width())
        line.setLineWidth(px(stop.position + 1));
}

/// Fills the line's tabs with what the source wants to lead to their stops. Dots of neighbouring lines stand
/// under each other.
void RichTextLayout::draw_leaders(QPainter& painter, const QTextBlock& block, const QTextLine& line) const {
    const QString text = block.text();
    const QTextLayout& layout = *block.layout();
    for (int at = line.textStart(); at < line.textStart() + line.textLength(); ++at) {
        if (text[at] != QLatin1Char('\t'))
            continue;
        const rtf::TabLeader leader = stop_behind(block, line, at).leader;
        if (leader == rtf::TabLeader::none)
            continue;
        const QTextCharFormat format = format_at(block, at);
        const QChar sign = leader_of(leader);
        const double width = QFontMetricsF(format.font(), paintDevice()).horizontalAdvance(sign);
        const double from = line.cursorToX(at), to = line.cursorToX(at + 1);
        const int first = static_cast<int>(std::ceil(from / width));
        const int count = static_cast<int>(std::floor(to / width)) - first;
        if (count <= 0)
            continue;
        QTextLayout signs(QString(count, sign), format.font(), paintDevice());
        if (format.hasProperty(QTextFormat::ForegroundBrush)) {
            QTextCharFormat colour;
            colour.setForeground(format.foreground());
            signs.setFormats({{0, count, colour}});
        }
        signs.beginLayout();
        const QTextLine set = signs.createLine();
        signs.endLayout();
        signs.draw(&painter,
                   layout.position() + QPointF(first * width, line.y() + line.ascent() - set.ascent()));
    }
}

} // namespace tolva::desktop
