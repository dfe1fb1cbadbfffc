#include "analysis/printed_charts.h"

#include <algorithm>

#include "basic/number.h"
#include "printing/page.h"

namespace tolva::analysis {

namespace {

constexpr float title_size = 14, text_size = 10;

/// In millimetres.
constexpr double left = 15, top = 15, bars_begin = 40, bars_end = 150, values_begin = 155;

/// How far below the top of a line its bar lies, in twips. It is drawn in strokes that lie closer than a
/// printer's lines are thick.
constexpr double bar_depth = 60, stroke_step = 8;
constexpr int strokes_a_bar = 15;

double largest(const platform::Chart& chart) {
    double most = 0;
    for (const platform::Chart::Bar& bar : chart.bars)
        most = std::max(most, bar.value.value_or(0));
    return most;
}

std::string value_text(const platform::Chart& chart, double value) {
    return chart.values == platform::Chart::Values::money ? "$" + basic::money_text(value)
                                                          : basic::number_to_text(value);
}

void print_bar(platform::Printer& printer, const platform::Chart& chart, const platform::Chart::Bar& bar,
               double most) {
    printing::printx(printer, left);
    printer.Print_on(bar.label);
    if (!bar.value) {
        printer.Print("");
        return;
    }
    // Only now it is sure on which page the line is.
    const double y = static_cast<double>(printer.CurrentY()) + bar_depth;
    if (*bar.value > 0) {
        const double end = bars_begin + (bars_end - bars_begin) * *bar.value / most;
        for (int stroke = 0; stroke < strokes_a_bar; ++stroke) {
            const double at = y + stroke * stroke_step;
            printer.Line(bars_begin * printing::twips_a_millimetre, at, end * printing::twips_a_millimetre,
                         at);
        }
    }
    printing::printx(printer, values_begin);
    printer.Print(value_text(chart, *bar.value));
}

} // namespace

void print_charts(platform::Printer& printer, const std::string& title, const std::string& span,
                  const std::vector<PrintedChart>& charts) {
    printer.job_name = title;
    printer.FontName = "Arial";
    printer.FontSize = title_size;
    printer.FontBold = true;
    printing::printxy(printer, left, top);
    printer.Print(title);
    printer.FontSize = text_size;
    printer.FontBold = false;
    printing::printx(printer, left);
    printer.Print(span);
    for (const PrintedChart& printed : charts) {
        if (!printed.chart.visible)
            continue;
        printer.FontBold = true;
        printer.Print("");
        printing::printx(printer, left);
        printer.Print(printed.caption);
        printer.FontBold = false;
        const double most = largest(printed.chart);
        for (const platform::Chart::Bar& bar : printed.chart.bars)
            print_bar(printer, printed.chart, bar, most);
    }
    printer.FontBold = false;
    printer.EndDoc();
}

} // namespace tolva::analysis
