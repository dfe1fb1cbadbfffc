#include "desktop/application_icon.h"

#include <QPainter>
#include <QPainterPath>

namespace tolva::desktop {

namespace {

/// Drawn on a square of this many units.
constexpr double side = 64;

void draw_house(QPainter& painter) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x2f, 0x5d, 0x8a));
    QPainterPath roof;
    roof.moveTo(32, 5);
    roof.lineTo(61, 31);
    roof.lineTo(55, 36);
    roof.lineTo(32, 15);
    roof.lineTo(9, 36);
    roof.lineTo(3, 31);
    roof.closeSubpath();
    painter.drawPath(roof);

    QPainterPath walls;
    walls.moveTo(32, 18);
    walls.lineTo(52, 36);
    walls.lineTo(52, 59);
    walls.lineTo(12, 59);
    walls.lineTo(12, 36);
    walls.closeSubpath();
    painter.setBrush(QColor(0x5b, 0x8f, 0xc2));
    painter.drawPath(walls);

    painter.setBrush(QColor(0xf4, 0xf7, 0xfb));
    painter.drawRect(QRectF(19, 40, 11, 19));
}

void draw_bell(QPainter& painter) {
    painter.save();
    painter.translate(34, 30);
    QPainterPath bell;
    bell.moveTo(14, 1);
    bell.cubicTo(22, 2, 23, 9, 23, 15);
    bell.cubicTo(23, 20, 25, 22, 28, 25);
    bell.lineTo(0, 25);
    bell.cubicTo(3, 22, 5, 20, 5, 15);
    bell.cubicTo(5, 9, 6, 2, 14, 1);
    bell.closeSubpath();
    bell.addEllipse(QPointF(14, 29), 4, 4);
    painter.setPen(QPen(QColor(0xff, 0xff, 0xff), 2.5));
    painter.setBrush(QColor(0xf0, 0xa3, 0x2b));
    painter.drawPath(bell);
    painter.restore();
}

QPixmap draw(int pixels) {
    QPixmap picture(pixels, pixels);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(pixels / side, pixels / side);
    draw_house(painter);
    draw_bell(painter);
    return picture;
}

} // namespace

QIcon application_icon() {
    QIcon icon;
    for (const int pixels : {16, 22, 24, 32, 48, 64, 96, 128, 256})
        icon.addPixmap(draw(pixels));
    return icon;
}

} // namespace tolva::desktop
