#include "desktop/chart_view.h"

#include <gtest/gtest.h>

namespace tolva::desktop {
namespace {

using Values = platform::Chart::Values;

TEST(ChartView, TellsItsBarsToThoseWhoCannotSeeThem) {
    ChartView chart;
    chart.set_title(QStringLiteral("Money Made"));
    chart.show({{"1/2026", 107250.4}, {" ", 0.0}, {"3/2026", std::nullopt}, {"4/2026", -1200.0}},
               Values::money);
    EXPECT_EQ(chart.accessibleName(), QStringLiteral("Money Made"));
    EXPECT_EQ(chart.accessibleDescription(), QStringLiteral("1/2026: $107,250, 4/2026: -$1,200"));
    chart.show({{"1/2026", 14.0}}, Values::counts);
    EXPECT_EQ(chart.accessibleDescription(), QStringLiteral("1/2026: 14"));
}

TEST(ChartView, WritesTheValueAboveItsBar) {
    ChartView chart;
    chart.resize(400, 240);
    const auto picture = [&](double value) {
        chart.show({{"1/2026", 100.0}, {"2/2026", value}}, Values::counts);
        return chart.grab().toImage();
    };
    // A bar that is one higher ends a row or two higher; more rows differ only where its value is written.
    const QImage one = picture(50.0), more = picture(51.0);
    int differing_rows = 0;
    for (int y = 0; y < one.height(); ++y)
        for (int x = one.width() / 2; x < one.width(); ++x)
            if (one.pixel(x, y) != more.pixel(x, y)) {
                ++differing_rows;
                break;
            }
    EXPECT_GT(differing_rows, 5);
}

TEST(ChartView, AScaleHasAHandfulOfRoundSteps) {
    EXPECT_EQ(scale_step(0), 1);
    EXPECT_EQ(scale_step(4), 1);
    EXPECT_EQ(scale_step(14), 5);
    EXPECT_EQ(scale_step(107250), 50000);
    EXPECT_EQ(scale_step(3600000), 1000000);
}

} // namespace
} // namespace tolva::desktop
