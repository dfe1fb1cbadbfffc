#include "printing/list.h"

#include "basic/text.h"
#include "printing/page.h"

namespace tolva::printing {

using basic::trim;

namespace {

constexpr float list_font_size = 10;
constexpr double header_y = 15;
constexpr double rule_y = 20;
constexpr double rule_left = 20;
constexpr double rule_right = 240;
/// A row that would begin here or below goes to a new page; compared in single precision.
constexpr float last_row = static_cast<float>(185 * twips_a_millimetre);

using Cells = std::array<std::string, ListLayout::columns>;

/// Columns 1 to 6 of a grid row, trimmed. The grid is left on the last of them.
Cells cells_of(platform::Grid& grid, int row) {
    Cells cells;
    grid.Row = row;
    for (int column = 0; column < ListLayout::columns; ++column) {
        grid.Col = column + 1;
        cells[static_cast<std::size_t>(column)] = trim(grid.Text());
    }
    return cells;
}

void print_header(platform::Printer& printer, const ListLayout& layout, const Cells& captions) {
    printer.FontBold = true;
    for (std::size_t column = 0; column < captions.size(); ++column) {
        printxy(printer, layout.x[column], header_y);
        printer.Print(captions[column]);
    }
    printline(printer, rule_left, rule_y, rule_right, rule_y);
    printer.FontBold = false;
    printy(printer, rule_y);
}

void print_row(platform::Printer& printer, const ListLayout& layout, const Cells& cells) {
    for (std::size_t column = 0; column + 1 < cells.size(); ++column) {
        printx(printer, layout.x[column]);
        printer.Print_on(cells[column]);
    }
    printx(printer, layout.x.back());
    printer.Print(cells.back());
}

} // namespace

void print_list(module::Module& module, platform::Grid& grid, const ListLayout& layout,
                const std::string& job_name) {
    module.confirm("Print List?");
    const Cells captions = layout.captions.front().empty() ? cells_of(grid, 0) : layout.captions;

    platform::Printer& printer = module.printer();
    platform::LongWork work(module.runtime, "Printing the list");
    printer.job_name = job_name;
    printer.FontName = "Arial";
    printer.FontSize = list_font_size;
    printer.set_Orientation(platform::Printer::landscape);
    print_header(printer, layout, captions);
    for (int row = 1; row < grid.Rows(); ++row) {
        const Cells cells = cells_of(grid, row);
        if (printer.CurrentY() >= last_row) {
            printer.FontBold = true;
            printer.NewPage();
            print_header(printer, layout, captions);
        }
        print_row(printer, layout, cells);
        work.step();
    }
    printer.EndDoc();
    printer.set_Orientation(platform::Printer::portrait);
}

} // namespace tolva::printing
