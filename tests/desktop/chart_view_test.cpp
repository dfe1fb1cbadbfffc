#include "desktop/chart_view.h"

#include <gtest/gtest.h>

namespace tolva::desktop {
namespace {

using Values = platform::Chart::Values;

/// How many rows of a picture differ between two columns.
int differing_rows(const QImage& one, const QImage& other, int from, int to) {
    int rows = 0;
    for (int y = 0; y < one.height(); ++y)
        for (int x = from; x < to; ++x)
            if (one.pixel(x, y) != other.pixel(x, y)) {
                ++rows;
                break;
            }
    return rows;
}

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
    EXPECT_GT(differing_rows(one, more, one.width() / 2, one.width()), 5);
}

TEST(ChartView, FindsRoomForTheValueOfEachMonthOfAYear) {
    for (const int width : {1300, 890, 640}) {
        ChartView chart;
        chart.resize(width, 200);
        const auto picture = [&](int changed_month) {
            std::vector<platform::Chart::Bar> bars;
            for (int month = 1; month <= 12; ++month)
                bars.push_back({std::to_string(month) + "/2026",
                                1951000.0 + 100000 * (month % 3) + (month == changed_month ? 60000 : 0)});
            chart.show(bars, Values::money);
            return chart.grab().toImage();
        };
        const QImage plain = picture(0);
        const int line = chart.fontMetrics().height();
        const double left = chart.fontMetrics().horizontalAdvance(QStringLiteral("$2,500,000")) + line;
        const double slot = (width - line - left) / 12;
        for (int month = 1; month <= 12; ++month) {
            const int from = static_cast<int>(left + slot * (month - 1));
            // The bar is some pixels higher; the value has other digits besides.
            EXPECT_GT(differing_rows(plain, picture(month), from, static_cast<int>(from + slot)), 7)
                << "month " << month << " at a width of " << width;
        }
    }
}

TEST(ChartView, AValueBelowTheOthersUnitIsWrittenInItsOwn) {
    ChartView chart;
    chart.resize(250, 200);
    const auto picture = [&](double low) {
        // The two high ones find room in tenths of millions at most.
        chart.show({{"1/2026", 2e6}, {"2/2026", 2e6}, {" ", 0.0}, {"4/2026", low}}, Values::money);
        return chart.grab().toImage();
    };
    // The bars are alike but for part of a row; the digits are not.
    EXPECT_GT(differing_rows(picture(20000), picture(30000), 210, 250), 4);
}

TEST(ChartView, ALowScaleHasFewerLines) {
    EXPECT_EQ(scale_step(14, 2), 10);
    EXPECT_EQ(scale_step(3600000, 2), 2000000);
    EXPECT_EQ(scale_step(3600000, 1), 5000000);
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
