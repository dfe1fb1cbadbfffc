#include "desktop/tool_icons.h"

#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <array>

namespace tolva::desktop {

namespace {

// The pictures are drawn on a field of 24 by 24.
constexpr double field = 24;

void draw_sheet(QPainter& painter, const QPointF& corner = {6, 3}) {
    QPainterPath sheet;
    sheet.moveTo(corner);
    sheet.lineTo(corner + QPointF(8, 0));
    sheet.lineTo(corner + QPointF(12, 4));
    sheet.lineTo(corner + QPointF(12, 17));
    sheet.lineTo(corner + QPointF(0, 17));
    sheet.closeSubpath();
    painter.setBrush(Qt::white);
    painter.drawPath(sheet);
    painter.drawPolyline(
        QPolygonF({corner + QPointF(8, 0), corner + QPointF(8, 4), corner + QPointF(12, 4)}));
}

void draw_new(QPainter& painter) {
    draw_sheet(painter);
}

void draw_open(QPainter& painter) {
    painter.setBrush(QColor(0xE8, 0xC0, 0x60));
    painter.drawPolygon(QPolygonF({{3, 19}, {3, 6}, {9, 6}, {11, 8}, {18, 8}, {18, 11}, {21, 11}, {18, 19}}));
    painter.drawPolyline(QPolygonF({{3, 19}, {6, 11}, {18, 11}}));
}

void draw_save(QPainter& painter) {
    painter.setBrush(QColor(0x50, 0x70, 0xB0));
    painter.drawPolygon(QPolygonF({{4, 4}, {18, 4}, {20, 6}, {20, 20}, {4, 20}}));
    painter.setBrush(Qt::white);
    painter.drawRect(QRectF(8, 4, 8, 6));
    painter.drawRect(QRectF(7, 13, 10, 7));
}

void draw_print(QPainter& painter) {
    painter.setBrush(Qt::white);
    painter.drawRect(QRectF(7, 3, 10, 7));
    painter.setBrush(QColor(0xB0, 0xB0, 0xB0));
    painter.drawRoundedRect(QRectF(3, 9, 18, 8), 1.5, 1.5);
    painter.setBrush(Qt::white);
    painter.drawRect(QRectF(7, 14, 10, 7));
    painter.drawLine(QPointF(9, 17), QPointF(15, 17));
    painter.drawLine(QPointF(9, 19), QPointF(13, 19));
}

void draw_cut(QPainter& painter) {
    painter.drawLine(QPointF(8, 15), QPointF(16, 3));
    painter.drawLine(QPointF(16, 15), QPointF(8, 3));
    painter.drawEllipse(QPointF(7, 18), 2.6, 2.6);
    painter.drawEllipse(QPointF(17, 18), 2.6, 2.6);
}

void draw_copy(QPainter& painter) {
    painter.save();
    painter.scale(0.8, 0.8);
    draw_sheet(painter, {3, 2});
    draw_sheet(painter, {12, 9});
    painter.restore();
}

void draw_paste(QPainter& painter) {
    painter.setBrush(QColor(0xC0, 0x90, 0x60));
    painter.drawRect(QRectF(4, 4, 14, 17));
    painter.setBrush(QColor(0xD0, 0xD0, 0xD0));
    painter.drawRect(QRectF(8, 2.5, 6, 4));
    painter.setBrush(Qt::white);
    painter.drawRect(QRectF(9, 9, 11, 13));
    for (const double line : {12.0, 15.0, 18.0})
        painter.drawLine(QPointF(11, line), QPointF(18, line));
}

void draw_letter(QPainter& painter, const QString& letter, bool bold, bool italic, bool underlined) {
    QFont font(QStringLiteral("Times New Roman"));
    font.setPixelSize(19);
    font.setBold(bold);
    font.setItalic(italic);
    font.setUnderline(underlined);
    painter.setFont(font);
    painter.drawText(QRectF(0, 0, field, field), Qt::AlignCenter, letter);
}

void draw_bold(QPainter& painter) {
    draw_letter(painter, QStringLiteral("B"), true, false, false);
}

void draw_italic(QPainter& painter) {
    draw_letter(painter, QStringLiteral("I"), false, true, false);
}

void draw_underline(QPainter& painter) {
    draw_letter(painter, QStringLiteral("U"), false, false, true);
}

/// Lines of text, short and long in turn; `side` is 0 for the left, 1 for the middle, 2 for the right.
void draw_lines(QPainter& painter, int side) {
    constexpr double width = 16, least = 10;
    for (int line = 0; line < 5; ++line) {
        const double length = line % 2 == 0 ? width : least;
        const double left = 4 + (width - length) * side / 2;
        painter.drawLine(QPointF(left, 5 + 3.5 * line), QPointF(left + length, 5 + 3.5 * line));
    }
}

void draw_left(QPainter& painter) {
    draw_lines(painter, 0);
}

void draw_centre(QPainter& painter) {
    draw_lines(painter, 1);
}

void draw_right(QPainter& painter) {
    draw_lines(painter, 2);
}

struct Picture {
    const char* key;
    void (*draw)(QPainter&);
};

constexpr std::array pictures = {
    Picture{"New", draw_new},           Picture{"Open", draw_open},
    Picture{"Save", draw_save},         Picture{"Print", draw_print},
    Picture{"Cut", draw_cut},           Picture{"Copy", draw_copy},
    Picture{"Paste", draw_paste},       Picture{"Bold", draw_bold},
    Picture{"Italic", draw_italic},     Picture{"Underline", draw_underline},
    Picture{"Align Left", draw_left},   Picture{"Center", draw_centre},
    Picture{"Align Right", draw_right},
};

class PaintedIcon final : public QIconEngine {
  public:
    explicit PaintedIcon(void (*draw)(QPainter&)) : draw_(draw) {}

    void paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State) override {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(place.topLeft());
        painter->scale(place.width() / field, place.height() / field);
        painter->setPen(QPen(QColor(0x20, 0x20, 0x20), 1.3));
        if (mode == QIcon::Disabled)
            painter->setOpacity(0.4);
        draw_(*painter);
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return picture;
    }

    QIconEngine* clone() const override { return new PaintedIcon(draw_); }

  private:
    void (*draw_)(QPainter&);
};

} // namespace

QIcon tool_icon(const QString& key) {
    for (const Picture& picture : pictures)
        if (key == QLatin1String(picture.key))
            return QIcon(new PaintedIcon(picture.draw));
    return QIcon(new PaintedIcon(draw_new));
}

} // namespace tolva::desktop
