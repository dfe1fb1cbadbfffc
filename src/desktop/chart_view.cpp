#include "desktop/chart_view.h"

#include <QHelpEvent>
#include <QLocale>
#include <QPainter>
#include <QToolTip>
#include <algorithm>
#include <cmath>

#include "desktop/text.h"

namespace tolva::desktop {

double scale_step(double highest, double most_lines) {
    const double wanted = std::max(highest / most_lines, 1.0);
    const double power = std::pow(10.0, std::floor(std::log10(wanted)));
    for (const double factor : {1.0, 2.0, 5.0})
        if (power * factor >= wanted)
            return power * factor;
    return power * 10;
}

namespace {

constexpr ChartView::Unit whole = {1, "", 0}, thousands = {1e3, "K", 0};
constexpr ChartView::Unit shorter_units[] = {thousands, {1e6, "M", 2}, {1e6, "M", 1}};

/// With the thousands grouped; money in whole dollars, as a chart is to be read at a glance. A value below
/// the unit is written in the next one that it reaches.
QString value_text(double value, platform::Chart::Values values, const ChartView::Unit& shortest = whole) {
    const ChartView::Unit& unit = std::abs(value) >= shortest.size    ? shortest
                                  : std::abs(value) >= thousands.size ? thousands
                                                                      : whole;
    const QString digits = QLocale(QLocale::English, QLocale::UnitedStates)
                               .toString(std::abs(value) / unit.size, 'f', unit.decimals);
    const QString dollar = values == platform::Chart::Values::money ? QStringLiteral("$") : QString();
    return (value <= -0.5 ? QStringLiteral("-") : QString()) + dollar + digits + QString::fromUtf8(unit.sign);
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
        if (const QString words = words_of(bar); !words.isEmpty())
            spoken += words;
    setAccessibleDescription(spoken.join(QStringLiteral(", ")));
    update();
}

QString ChartView::words_of(const platform::Chart::Bar& bar) const {
    if (!bar.value || *bar.value == 0)
        return {};
    return to_qt(bar.label).trimmed() + QStringLiteral(": ") + value_text(*bar.value, values_);
}

QSize ChartView::sizeHint() const {
    // A year's months, each with its name.
    return {fontMetrics().height() * 58, fontMetrics().height() * 11};
}

QSize ChartView::minimumSizeHint() const {
    return {fontMetrics().height() * 16, fontMetrics().height() * 8};
}

/// Under the mouse each bar tells itself, whatever found room above it.
bool ChartView::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto& mouse = static_cast<const QHelpEvent&>(*event);
    const QRectF plot = scale().plot;
    QString words;
    for (std::size_t at = 0; at < bars_.size(); ++at)
        if (slot_of(at, plot).contains(mouse.pos()))
            words = words_of(bars_[at]);
    QToolTip::showText(mouse.globalPos(), words, this);
    return true;
}

// --- Bars and scale ---

double ChartView::Scale::height_of(double value) const {
    return plot.bottom() - plot.height() * value / top;
}

ChartView::Scale ChartView::scale() const {
    double highest = 0;
    for (const auto& bar : bars_)
        highest = std::max(highest, bar.value.value_or(0));
    const int line = fontMetrics().height();
    // Below the title, with room for the highest bar's value above it and for the labels below.
    QRectF plot(0, line * 2.5, width() - line, height() - line * 4.25);
    constexpr double most_lines = 5, lines_apart = 1.5;
    const double step =
        scale_step(highest, std::clamp(plot.height() / (lines_apart * line), 1.0, most_lines));
    const double top = step * std::max(1.0, std::ceil(highest / step));
    plot.setLeft(fontMetrics().horizontalAdvance(value_text(top, values_)) + line);
    return {plot, step, top};
}

QRectF ChartView::slot_of(std::size_t bar, const QRectF& plot) const {
    const double wide = plot.width() / static_cast<double>(bars_.size());
    return {plot.left() + wide * static_cast<double>(bar), plot.top(), wide, plot.height()};
}

void ChartView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), palette().base());
    painter.setPen(palette().color(QPalette::Text));
    const int line = fontMetrics().height();
    painter.drawText(QRect(0, line / 4, width(), line), Qt::AlignCenter, title_);
    const Scale scale = this->scale();
    if (scale.plot.width() <= 0 || scale.plot.height() <= 0)
        return;
    paint_scale(painter, scale);
    paint_bars(painter, scale);
}

void ChartView::paint_scale(QPainter& painter, const Scale& scale) const {
    const int line = fontMetrics().height();
    QColor faint = palette().color(QPalette::Text);
    faint.setAlphaF(0.2F);
    for (double value = 0; value <= scale.top + scale.step / 2; value += scale.step) {
        const double y = scale.height_of(value);
        painter.setPen(faint);
        painter.drawLine(QPointF(scale.plot.left(), y), QPointF(scale.plot.right(), y));
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(QRectF(0, y - line / 2.0, scale.plot.left() - line / 3.0, line),
                         Qt::AlignRight | Qt::AlignVCenter, value_text(value, values_));
    }
}

void ChartView::paint_bars(QPainter& painter, const Scale& scale) const {
    constexpr double gap = 0.15;
    for (std::size_t at = 0; at < bars_.size(); ++at) {
        const auto& value = bars_[at].value;
        if (!value || *value <= 0)
            continue;
        QRectF bar = slot_of(at, scale.plot);
        bar.adjust(bar.width() * gap, 0, -bar.width() * gap, 0);
        bar.setTop(scale.height_of(*value));
        painter.fillRect(bar, palette().color(QPalette::Highlight));
    }
    write(painter, names(scale));
    std::vector<Text> texts = values(scale, whole);
    if (values_ == platform::Chart::Values::money)
        for (const Unit& unit : shorter_units)
            if (overlap(texts))
                texts = values(scale, unit);
    // Where even the shortest find no room, the highest bars go first.
    std::stable_sort(texts.begin(), texts.end(),
                     [](const Text& a, const Text& b) { return a.place.top() < b.place.top(); });
    write(painter, texts);
}

// --- What is written at the bars ---

ChartView::Text ChartView::text_at(const QString& text, double centre, double top) const {
    const double wide = fontMetrics().horizontalAdvance(text) + 1;
    const double left = std::clamp(centre - wide / 2, 0.0, std::max(width() - wide, 0.0));
    return {text, QRectF(left, top, wide, fontMetrics().height())};
}

std::vector<ChartView::Text> ChartView::names(const Scale& scale) const {
    const double top = scale.plot.bottom() + fontMetrics().height() / 4.0;
    std::vector<Text> texts;
    for (std::size_t at = 0; at < bars_.size(); ++at)
        if (const QString name = to_qt(bars_[at].label).trimmed(); !name.isEmpty())
            texts.push_back(text_at(name, slot_of(at, scale.plot).center().x(), top));
    return texts;
}

std::vector<ChartView::Text> ChartView::values(const Scale& scale, const Unit& unit) const {
    std::vector<Text> texts;
    for (std::size_t at = 0; at < bars_.size(); ++at)
        if (const auto& value = bars_[at].value; value && *value != 0)
            texts.push_back(text_at(value_text(*value, values_, unit), slot_of(at, scale.plot).center().x(),
                                    scale.height_of(std::max(*value, 0.0)) - fontMetrics().height()));
    return texts;
}

bool ChartView::touch(const Text& one, const Text& other) const {
    const double gap = fontMetrics().height() / 4.0;
    return one.place.intersects(other.place.adjusted(-gap, 0, gap, 0));
}

bool ChartView::overlap(const std::vector<Text>& texts) const {
    for (std::size_t at = 1; at < texts.size(); ++at)
        if (touch(texts[at - 1], texts[at]))
            return true;
    return false;
}

/// What finds no room beside what is written already is left out.
void ChartView::write(QPainter& painter, const std::vector<Text>& texts) const {
    std::vector<Text> written;
    for (const Text& text : texts) {
        const auto touches = [&](const Text& other) { return touch(text, other); };
        if (std::any_of(written.begin(), written.end(), touches))
            continue;
        painter.drawText(text.place, Qt::AlignCenter, text.text);
        written.push_back(text);
    }
}

} // namespace tolva::desktop
