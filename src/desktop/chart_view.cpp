#include "desktop/chart_view.h"

#include <QLocale>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "desktop/text.h"

namespace tolva::desktop {

double scale_step(double highest) {
    constexpr double most_lines = 5;
    const double wanted = std::max(highest / most_lines, 1.0);
    const double power = std::pow(10.0, std::floor(std::log10(wanted)));
    for (const double factor : {1.0, 2.0, 5.0})
        if (power * factor >= wanted)
            return power * factor;
    return power * 10;
}

namespace {

/// With the thousands grouped; money in whole dollars, as a chart is to be read at a glance.
QString value_text(double value, platform::Chart::Values values) {
    const QString digits = QLocale(QLocale::English, QLocale::UnitedStates).toString(std::abs(value), 'f', 0);
    const QString unit = values == platform::Chart::Values::money ? QStringLiteral("$") : QString();
    return (value <= -0.5 ? QStringLiteral("-") : QString()) + unit + digits;
}

} // namespace

ChartView::ChartView(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setFocusPolicy(Qt::NoFocus);
}

void ChartView::set_title(const QString& title) {
    title_ = title;
    setAccessibleName(title);
}

void ChartView::show(const std::vector<platform::Chart::Bar>& bars, platform::Chart::Values values) {
    bars_ = bars;
    values_ = values;
    // For those who can't see the bars.
    QStringList spoken;
    for (const auto& bar : bars_)
        if (bar.value && *bar.value != 0)
            spoken += to_qt(bar.label).trimmed() + QStringLiteral(": ") + value_text(*bar.value, values_);
    setAccessibleDescription(spoken.join(QStringLiteral(", ")));
    update();
}

QSize ChartView::sizeHint() const {
    return {fontMetrics().height() * 28, fontMetrics().height() * 11};
}

QSize ChartView::minimumSizeHint() const {
    return {fontMetrics().height() * 16, fontMetrics().height() * 8};
}

void ChartView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), palette().base());
    painter.setPen(palette().color(QPalette::Text));
    const int line = fontMetrics().height();
    painter.drawText(QRect(0, line / 4, width(), line), Qt::AlignCenter, title_);

    double highest = 0;
    for (const auto& bar : bars_)
        highest = std::max(highest, bar.value.value_or(0));
    const double step = scale_step(highest);
    const double top = step * std::max(1.0, std::ceil(highest / step));
    const double left = fontMetrics().horizontalAdvance(value_text(top, values_)) + line;
    // Below the title, with room for the highest bar's value above it and for the labels below.
    const QRectF plot(left, line * 2.5, width() - left - line, height() - line * 4.25);
    if (plot.width() <= 0 || plot.height() <= 0)
        return;
    paint_scale(painter, plot, step, top);
    paint_bars(painter, plot, top);
}

void ChartView::paint_scale(QPainter& painter, const QRectF& plot, double step, double top) const {
    const int line = fontMetrics().height();
    QColor faint = palette().color(QPalette::Text);
    faint.setAlphaF(0.2F);
    for (double value = 0; value <= top + step / 2; value += step) {
        const double y = plot.bottom() - plot.height() * value / top;
        painter.setPen(faint);
        painter.drawLine(QPointF(plot.left(), y), QPointF(plot.right(), y));
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(QRectF(0, y - line / 2.0, plot.left() - line / 3.0, line),
                         Qt::AlignRight | Qt::AlignVCenter, value_text(value, values_));
    }
}

void ChartView::paint_bars(QPainter& painter, const QRectF& plot, double top) const {
    const int line = fontMetrics().height();
    const double slot = plot.width() / static_cast<double>(std::max<std::size_t>(bars_.size(), 1));
    // Where bars stand close together, a text that finds no room is left out.
    std::vector<QRectF> taken;
    const auto write = [&](const QString& text, double centre, double y) {
        const double width = fontMetrics().horizontalAdvance(text);
        const QRectF place(centre - width / 2, y, width + 1, line);
        const QRectF with_gap = place.adjusted(-line / 4.0, 0, line / 4.0, 0);
        const auto overlaps = [&](const QRectF& other) { return other.intersects(with_gap); };
        if (text.isEmpty() || std::any_of(taken.begin(), taken.end(), overlaps))
            return;
        painter.drawText(place, Qt::AlignCenter, text);
        taken.push_back(place);
    };
    for (std::size_t at = 0; at < bars_.size(); ++at) {
        const auto& bar = bars_[at];
        const double from = plot.left() + slot * static_cast<double>(at);
        if (bar.value && *bar.value != 0) {
            const double height = std::max(0.0, plot.height() * *bar.value / top);
            painter.fillRect(QRectF(from + slot * 0.15, plot.bottom() - height, slot * 0.7, height),
                             palette().color(QPalette::Highlight));
            write(value_text(*bar.value, values_), from + slot / 2, plot.bottom() - height - line);
        }
        write(to_qt(bar.label).trimmed(), from + slot / 2, plot.bottom() + line / 4.0);
    }
}

} // namespace tolva::desktop
