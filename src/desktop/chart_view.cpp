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

QString number_text(double value) {
    return QLocale(QLocale::English, QLocale::UnitedStates).toString(value, 'f', 0);
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

void ChartView::show(const std::vector<platform::Chart::Bar>& bars) {
    bars_ = bars;
    // For those who can't see the bars.
    QStringList spoken;
    for (const auto& bar : bars_)
        if (bar.value && *bar.value != 0)
            spoken += to_qt(bar.label).trimmed() + QStringLiteral(": ") + number_text(*bar.value);
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
    const double left = fontMetrics().horizontalAdvance(number_text(top)) + line;
    const QRectF plot(left, line * 1.75, width() - left - line, height() - line * 3.5);
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
                         Qt::AlignRight | Qt::AlignVCenter, number_text(value));
    }
}

void ChartView::paint_bars(QPainter& painter, const QRectF& plot, double top) const {
    const int line = fontMetrics().height();
    const double slot = plot.width() / static_cast<double>(std::max<std::size_t>(bars_.size(), 1));
    double free_from = 0;
    for (std::size_t at = 0; at < bars_.size(); ++at) {
        const auto& bar = bars_[at];
        const double from = plot.left() + slot * static_cast<double>(at);
        if (bar.value && *bar.value > 0) {
            const double height = plot.height() * *bar.value / top;
            painter.fillRect(QRectF(from + slot * 0.15, plot.bottom() - height, slot * 0.7, height),
                             palette().color(QPalette::Highlight));
        }
        // Where months stand close together, a name that finds no room is left out.
        const QString label = to_qt(bar.label).trimmed();
        const double width = fontMetrics().horizontalAdvance(label);
        const double start = from + (slot - width) / 2;
        if (label.isEmpty() || start < free_from)
            continue;
        painter.drawText(QRectF(start, plot.bottom() + line / 4.0, width + 1, line), Qt::AlignCenter, label);
        free_from = start + width + line / 2.0;
    }
}

} // namespace tolva::desktop
