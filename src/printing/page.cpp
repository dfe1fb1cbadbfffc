#include "printing/page.h"

#include "basic/run_time_error.h"

namespace tolva::printing {

namespace {

constexpr int printer_error = 482;

} // namespace

void printx(platform::Printer& printer, double x) {
    printer.set_CurrentX(x * twips_a_millimetre);
}

void printy(platform::Printer& printer, double y) {
    printer.set_CurrentY(y * twips_a_millimetre);
}

void printxy(platform::Printer& printer, double x, double y) {
    printx(printer, x);
    printy(printer, y);
}

void printline(platform::Printer& printer, double x1, double y1, double x2, double y2) {
    printer.Line(x1 * twips_a_millimetre, y1 * twips_a_millimetre, x2 * twips_a_millimetre,
                 y2 * twips_a_millimetre);
}

void printrichtext(platform::Printer& printer, const rtf::RichText& text, const Margins& margins) {
    const platform::PaperRectangle where{
        margins.left - printer.OffsetX(),
        margins.top - printer.OffsetY(),
        printer.Width() - margins.right - printer.OffsetX(),
        printer.Height() - margins.bottom - printer.OffsetY(),
    };
    const std::size_t length = text.length();
    // Told ahead of the job: a queue may print what has been begun.
    if (length > 0 && (where.right <= where.left || where.bottom <= where.top))
        throw basic::RunTimeError(printer_error);
    printer.Print(" ");
    std::size_t next = printer.set_rich_text(text, where, 0);
    for (std::size_t start = 0; next < length;) {
        // A printer that takes nothing would otherwise feed paper without end.
        if (next <= start) {
            printer.KillDoc();
            throw basic::RunTimeError(printer_error);
        }
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
