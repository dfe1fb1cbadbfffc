#pragma once

#include <string>

#include "platform/host.h"
#include "platform/printer.h"

namespace tolva::printing {

/// Millimetres to twips as the print routines count them: a figure of its own, not 1440 divided by 25.4.
inline constexpr double twips_a_millimetre = 56.7;
inline constexpr double twips_an_inch = 1440;

/// Positions and lines in millimetres.
void printx(platform::Printer& printer, double x);
void printy(platform::Printer& printer, double y);
void printxy(platform::Printer& printer, double x, double y);
void printline(platform::Printer& printer, double x1, double y1, double x2, double y2);

/// The margins around a rich text, in twips from the paper's edges.
struct Margins {
    double left, top, right, bottom;
};

/// Margins as boxes and settings tell them: inches, each by its leading number, so 0 where there is none.
Margins margins_in_inches(const std::string& left, const std::string& top, const std::string& right,
                          const std::string& bottom);

/// Prints a rich text page by page between margins, as a job of its own. The blank that opens the job, and
/// one after each new page, go out in the current font at the page's corner and are part of the output. A
/// text that ends with its page gives no blank page. Margins below zero reach off the paper, by a sheet at
/// most. Error 482 when the margins leave no room on the paper; what was printed of the job ahead is given up
/// too.
void printrichtext(platform::Printer& printer, const rtf::RichText& text, const Margins& margins);

/// Prints a document, or only what is selected in it, between the margins that the document itself bears.
void print_selection(platform::Printer& printer, const rtf::RichText& text, platform::PrintScope scope);

} // namespace tolva::printing
