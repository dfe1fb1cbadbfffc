#include "printing/page.h"

#include <algorithm>

#include "basic/number.h"
#include "basic/run_time_error.h"

namespace tolva::printing {

namespace {

constexpr int printer_error = 482;

/// Millimetres as the printer takes them: twips, rounded to single precision.
double twips(double millimetres) {
    return static_cast<double>(static_cast<float>(millimetres * twips_a_millimetre));
}

} // namespace

void printx(platform::Printer& printer, double x) {
    printer.set_CurrentX(twips(x));
}

void printy(platform::Printer& printer, double y) {
    printer.set_CurrentY(twips(y));
}

void printxy(platform::Printer& printer, double x, double y) {
    printx(printer, x);
    printy(printer, y);
}

void printline(platform::Printer& printer, double x1, double y1, double x2, double y2) {
    printer.Line(twips(x1), twips(y1), twips(x2), twips(y2));
}

Margins margins_in_inches(const std::string& left, const std::string& top, const std::string& right,
                          const std::string& bottom) {
    const auto in_twips = [](const std::string& inches) {
        return basic::leading_number(inches) * twips_an_inch;
    };
    return {in_twips(left), in_twips(top), in_twips(right), in_twips(bottom)};
}

void printrichtext(platform::Printer& printer, const rtf::RichText& text, const Margins& margins) {
    const double width = printer.Width();
    const double height = printer.Height();
    // A margin below zero lies off the paper, where nothing is gained by more than another sheet.
    const platform::PaperRectangle where{
        std::max(margins.left, -width) - printer.OffsetX(),
        std::max(margins.top, -height) - printer.OffsetY(),
        width - std::max(margins.right, -width) - printer.OffsetX(),
        height - std::max(margins.bottom, -height) - printer.OffsetY(),
    };
    const auto give_up = [&printer] {
        printer.KillDoc();
        throw basic::RunTimeError(printer_error);
    };
    const std::size_t length = text.length();
    // Told ahead of the job: a queue may print what has been begun.
    if (length > 0 && (where.right <= where.left || where.bottom <= where.top))
        give_up();
    printer.Print(" ");
    std::size_t next = printer.set_rich_text(text, where, 0);
    for (std::size_t start = 0; next < length;) {
        // A printer that takes nothing would otherwise feed paper without end.
        if (next <= start)
            give_up();
        start = next;
        printer.NewPage();
        printer.Print(" ");
        next = printer.set_rich_text(text, where, start);
    }
    printer.EndDoc();
}

void print_selection(platform::Printer& printer, const rtf::RichText& text, platform::PrintScope scope) {
    rtf::RichText part = text;
    if (scope == platform::PrintScope::selection && text.sel_length() > 0)
        part.set_text_rtf(text.sel_rtf());
    const rtf::PageSetup& page = text.document().page;
    printrichtext(printer, part,
                  {static_cast<double>(page.left), static_cast<double>(page.top),
                   static_cast<double>(page.right), static_cast<double>(page.bottom)});
}

} // namespace tolva::printing
