#pragma once

#include <QWidget>
#include <vector>

#include "platform/chart.h"

namespace tolva::desktop {

/// A bar chart, painted: sharp at every size, in the colours of the desktop, with each bar's value above it:
/// in full where there is room, otherwise in thousands or millions.
class ChartView : public QWidget {
  public:
    explicit ChartView(QWidget* parent = nullptr);

    void set_title(const QString& title);
    void show(const std::vector<platform::Chart::Bar>& bars, platform::Chart::Values values);
    using QWidget::show;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    /// How shortly a value is written that reaches it.
    struct Unit {
        double size;
        const char* sign;
        int decimals;
    };

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    /// Where the bars stand, and how high a value is.
    struct Scale {
        QRectF plot;
        double step, top;

        double height_of(double value) const;
    };
    struct Text {
        QString text;
        QRectF place;
    };

    Scale scale() const;
    /// A bar's part of the plot, with the gaps beside it.
    QRectF slot_of(std::size_t bar, const QRectF& plot) const;
    /// Its name and value; empty where nothing stands.
    QString words_of(const platform::Chart::Bar& bar) const;

    void paint_scale(QPainter& painter, const Scale& scale) const;
    void paint_bars(QPainter& painter, const Scale& scale) const;

    Text text_at(const QString& text, double centre, double top) const;
    std::vector<Text> names(const Scale& scale) const;
    std::vector<Text> values(const Scale& scale, const Unit& unit) const;
    bool touch(const Text& one, const Text& other) const;
    /// Whether one of the texts, from left to right, touches the next.
    bool overlap(const std::vector<Text>& texts) const;
    void write(QPainter& painter, const std::vector<Text>& texts) const;

    QString title_;
    std::vector<platform::Chart::Bar> bars_;
    platform::Chart::Values values_ = platform::Chart::Values::counts;
};

/// The distance between the lines of a scale that reaches up to `highest` in at most so many steps: 1, 2 or 5
/// times a power of ten, and never less than 1.
double scale_step(double highest, double most_lines = 5);

} // namespace tolva::desktop
