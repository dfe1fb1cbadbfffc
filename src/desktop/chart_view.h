#pragma once

#include <QWidget>
#include <vector>

#include "platform/chart.h"

namespace tolva::desktop {

/// A bar chart, painted: sharp at every size, in the colours of the desktop, with each bar's value above it.
class ChartView : public QWidget {
  public:
    explicit ChartView(QWidget* parent = nullptr);

    void set_title(const QString& title);
    void show(const std::vector<platform::Chart::Bar>& bars, platform::Chart::Values values);
    using QWidget::show;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void paint_scale(QPainter& painter, const QRectF& plot, double step, double top) const;
    void paint_bars(QPainter& painter, const QRectF& plot, double top) const;

    QString title_;
    std::vector<platform::Chart::Bar> bars_;
    platform::Chart::Values values_ = platform::Chart::Values::counts;
};

/// The distance between the lines of a scale that reaches up to `highest` in a handful of steps: 1, 2 or 5
/// times a power of ten, and never less than 1.
double scale_step(double highest);

} // namespace tolva::desktop
