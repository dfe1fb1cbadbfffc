#pragma once

#include <string>
#include <vector>

#include "platform/chart.h"
#include "platform/printer.h"

namespace tolva::analysis {

/// A chart as it goes on paper: under its caption a line for each bar, with its label, the bar lying on its
/// side, and its value.
struct PrintedChart {
    const char* caption;
    const platform::Chart& chart;
};

/// Prints a title, what span the charts are of, and the charts that are on show, one below the other, as one
/// job. Bars of one chart are in proportion to its largest; nothing is drawn to the left of zero.
void print_charts(platform::Printer& printer, const std::string& title, const std::string& span,
                  const std::vector<PrintedChart>& charts);

} // namespace tolva::analysis
