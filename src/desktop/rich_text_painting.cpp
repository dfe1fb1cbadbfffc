#include <QPainter>
#include <QTextLayout>

#include "desktop/rich_text_layout.h"

namespace tolva::desktop {

void RichTextLayout::draw_page(QPainter& painter, int page) {
    const int number = pages_.at(static_cast<std::size_t>(page)).number;
    // As wide as may be: negative indents reach into the margins.
    const QRectF part(-width_, number * page_height_, 3 * width_, page_height_);
    painter.save();
    painter.translate(0, -part.top());
    draw_grounds(painter, part);
    painter.setPen(Qt::black);
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        const BlockData& data = BlockData::of(block);
        QTextLayout& layout = *block.layout();
        for (std::size_t at = 0; at < data.lines.size(); ++at) {
            if (data.lines[at].page != number)
                continue;
            if (data.has_hanging_tabs)
                set_tabs(block, at == 0);
            const QTextLine line = layout.lineAt(static_cast<int>(at));
            line.draw(&painter, layout.position());
            if (data.has_leaders)
                draw_leaders(painter, block, line);
        }
    }
    draw_rules(painter, part);
    painter.restore();
}

void RichTextLayout::draw(QPainter* painter, const PaintContext& context) {
    const QRectF part = context.clip.isValid() ? context.clip : QRectF(QPointF(), size_);
    draw_grounds(*painter, part);
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        if (!BlockData::of(block).place.intersects(part))
            continue;
        QTextLayout& layout = *block.layout();
        QList<QTextLayout::FormatRange> selections;
        for (const Selection& selection : context.selections) {
            const int from = std::max(selection.cursor.selectionStart() - block.position(), 0);
            const int to = std::min(selection.cursor.selectionEnd() - block.position(), block.length());
            if (from < to)
                selections.append({from, to - from, selection.format});
        }
        painter->setPen(context.palette.color(QPalette::Text));
        draw_block(*painter, block, selections, part);
        const int caret = context.cursorPosition - block.position();
        if (context.cursorPosition < -1 && !layout.preeditAreaText().isEmpty())
            layout.drawCursor(painter, QPointF(),
                              layout.preeditAreaPosition() - (context.cursorPosition + 2));
        else if (caret >= 0 && caret < block.length())
            layout.drawCursor(painter, QPointF(), caret);
    }
    draw_rules(*painter, part);
}

void RichTextLayout::draw_block(QPainter& painter, const QTextBlock& block,
                                const QList<QTextLayout::FormatRange>& selections, const QRectF& part) const {
    const BlockData& data = BlockData::of(block);
    if (!data.has_hanging_tabs || data.lines.size() < 2) {
        block.layout()->draw(&painter, QPointF(), selections, part);
        if (data.has_leaders)
            for (std::size_t at = 0; at < data.lines.size(); ++at)
                draw_leaders(painter, block, block.layout()->lineAt(static_cast<int>(at)));
        return;
    }
    // The first line with its tabs, then the others with theirs.
    QRectF first = part, rest = part;
    first.setBottom(data.place.top() + data.lines.front().height);
    rest.setTop(first.bottom());
    for (const bool is_first : {true, false}) {
        const QRectF& lines = is_first ? first : rest;
        if (!lines.isValid())
            continue;
        set_tabs(block, is_first);
        painter.save();
        painter.setClipRect(lines, Qt::IntersectClip);
        block.layout()->draw(&painter, QPointF(), selections, lines);
        for (int at = is_first ? 0 : 1; data.has_leaders && at < (is_first ? 1 : block.layout()->lineCount());
             ++at)
            draw_leaders(painter, block, block.layout()->lineAt(at));
        painter.restore();
    }
    set_tabs(block, true);
}

void RichTextLayout::draw_grounds(QPainter& painter, const QRectF& part) const {
    for (const Ground& ground : grounds_)
        if (ground.place.intersects(part))
            painter.fillRect(ground.place.intersected(part), ground.colour);
}

void RichTextLayout::draw_rules(QPainter& painter, const QRectF& part) const {
    for (const Rule& rule : rules_) {
        const QRectF place = QRectF(rule.line.p1(), rule.line.p2()).normalized().adjusted(-1, -1, 1, 1);
        if (!place.intersects(part))
            continue;
        const std::size_t colour = static_cast<std::size_t>(std::max<int>(rule.border.colour, 0));
        QPen pen(colour < colours_.size() && colours_[colour].isValid() ? colours_[colour]
                                                                        : QColor(Qt::black));
        pen.setWidthF(px(std::max<int>(rule.border.width, 5)));
        pen.setCapStyle(Qt::FlatCap);
        switch (rule.border.style) {
        case rtf::BorderStyle::dotted:
            pen.setStyle(Qt::DotLine);
            break;
        case rtf::BorderStyle::dashed:
        case rtf::BorderStyle::small_dashes:
            pen.setStyle(Qt::DashLine);
            break;
        case rtf::BorderStyle::dash_dot:
            pen.setStyle(Qt::DashDotLine);
            break;
        case rtf::BorderStyle::dash_dot_dot:
            pen.setStyle(Qt::DashDotDotLine);
            break;
        default:
            break;
        }
        painter.setPen(pen);
        if (rule.border.style != rtf::BorderStyle::double_line) {
            painter.drawLine(rule.line);
            continue;
        }
        const QPointF aside = rule.line.dx() != 0 ? QPointF(0, pen.widthF()) : QPointF(pen.widthF(), 0);
        painter.drawLine(rule.line.translated(-aside));
        painter.drawLine(rule.line.translated(aside));
    }
}

// --- Pictures ---

void RichTextLayout::resizeInlineObject(QTextInlineObject item, int, const QTextFormat& format) {
    const double width = px(format.intProperty(picture_width));
    const double height = px(format.intProperty(picture_height));
    // One that is larger than the page is shown whole all the same.
    double scale = 1;
    if (width > width_)
        scale = width_ / width;
    if (page_height_ > 0 && height * scale > page_height_)
        scale = page_height_ / height;
    item.setWidth(width * scale);
    item.setAscent(height * scale);
    item.setDescent(0);
}

void RichTextLayout::drawInlineObject(QPainter* painter, const QRectF& place, QTextInlineObject, int,
                                      const QTextFormat& format) {
    const QImage image = format.property(picture_image).value<QImage>();
    painter->save();
    if (image.isNull()) {
        painter->setPen(QPen(Qt::gray, px(10)));
        painter->drawRect(place);
    } else {
        painter->setRenderHint(QPainter::SmoothPixmapTransform);
        painter->drawImage(place, image);
    }
    painter->restore();
}

// --- Boxes ---

QColor RichTextLayout::ground_of(int background, int shading) const {
    const std::size_t index = static_cast<std::size_t>(std::max(background, 0));
    QColor colour = index > 0 && index < colours_.size() ? colours_[index] : QColor();
    if (shading <= 0)
        return colour;
    if (!colour.isValid())
        colour = Qt::white;
    constexpr double whole = 10000;
    const double rest = 1 - std::min(shading / whole, 1.0);
    return QColor::fromRgbF(static_cast<float>(colour.redF() * rest),
                            static_cast<float>(colour.greenF() * rest),
                            static_cast<float>(colour.blueF() * rest));
}

void RichTextLayout::add_box(const QRectF& place, const Sides& sides, const QColor& ground) {
    if (place.isEmpty())
        return;
    const auto rule = [this](const QPointF& from, const QPointF& to, const rtf::Border& border) {
        if (border.style != rtf::BorderStyle::none)
            rules_.push_back({QLineF(from, to), border});
    };
    const int first = page_height_ > 0 ? static_cast<int>(place.top() / page_height_) : 0;
    const int last = page_height_ > 0 ? static_cast<int>((place.bottom() - px(1)) / page_height_) : 0;
    for (int page = first; page <= last; ++page) {
        QRectF part = place;
        if (page_height_ > 0)
            part &= QRectF(place.left(), page * page_height_, place.width(), page_height_);
        if (ground.isValid())
            grounds_.push_back({part, ground});
        rule(part.topLeft(), part.bottomLeft(), sides.left);
        rule(part.topRight(), part.bottomRight(), sides.right);
        rule(part.topLeft(), part.topRight(), sides.top);
        rule(part.bottomLeft(), part.bottomRight(), sides.bottom);
    }
}

namespace {

/// Whether the two stand in one box.
bool share_box(const QTextBlock& one, const QTextBlock& other) {
    if (!one.isValid() || !other.isValid())
        return false;
    const rtf::ParagraphFormat& upper = *BlockData::of(one).format;
    const rtf::ParagraphFormat& lower = *BlockData::of(other).format;
    return upper.borders == lower.borders && upper.left == lower.left && upper.right == lower.right &&
           BlockData::of(one).in_table == BlockData::of(other).in_table;
}

double thickness(const rtf::Border& border) {
    return border.style == rtf::BorderStyle::none ? 0 : border.width + border.space;
}

} // namespace

double RichTextLayout::room_above(const QTextBlock& block) const {
    return share_box(block.previous(), block) ? 0 : px(thickness(BlockData::of(block).format->borders->top));
}

double RichTextLayout::room_below(const QTextBlock& block) const {
    return share_box(block, block.next()) ? 0 : px(thickness(BlockData::of(block).format->borders->bottom));
}

void RichTextLayout::rule_paragraph(const QTextBlock& block) {
    const BlockData& data = BlockData::of(block);
    const rtf::ParagraphFormat& format = *data.format;
    const QColor ground = ground_of(format.background, format.shading);
    const rtf::ParagraphBorders& borders = *format.borders;
    if (!ground.isValid() && borders == rtf::ParagraphBorders())
        return;
    const bool begins = !share_box(block.previous(), block);
    const bool ends = !share_box(block, block.next());
    const Sides sides{begins ? borders.top : rtf::Border(), ends ? borders.bottom : borders.between,
                      borders.left, borders.right};
    QRectF box(data.broken_left + px(format.left + std::min(format.first, 0)), data.place.top(), 0,
               data.place.height());
    box.setRight(data.broken_left + data.broken_width - px(format.right));
    box.adjust(-px(borders.left.space), -px(begins ? borders.top.space : 0), px(borders.right.space),
               px(ends ? borders.bottom.space : 0));
    if (!begins) // what parts the two paragraphs is within the box
        box.setTop(std::min(box.top(), BlockData::of(block.previous()).place.bottom()));
    add_box(box, sides, ground);
}

} // namespace tolva::desktop
