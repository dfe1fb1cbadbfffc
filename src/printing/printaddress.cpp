#include "printing/printaddress.h"

#include "basic/number.h"
#include "basic/text.h"
#include "printing/page.h"
#include "printing/rows.h"

namespace tolva::printing {

using basic::leading_number;
using basic::trim;

printaddress::printaddress(module::Module& module)
    : Screen(module.runtime, "printaddress", "Print Addresses"), module_(module) {
    r_x.text = "15";
    r_y.text = "155";
    a_x.text = "140";
    a_y.text = "230";
    Command1.on_click = [this] {
        if (module_.confirm("Print Addresses?") == 1)
            print_sheets(Layout::none);
    };
    Command2.on_click = [this] { unload(); };
}

void printaddress::on_load() {
    returnaddress[0].text = module_.settings.salespersonname;
}

void printaddress::print_sheets(Layout layout) {
    platform::Printer& printer = module_.printer();
    if (layout != Layout::none) {
        platform::LongWork work(runtime(), "Printing address sheets");
        printer.job_name = "Address sheets";
        constexpr float listing_size = 11, prospect_size = 12;
        printer.FontName = "Arial";
        printer.FontSize = layout == Layout::listings ? listing_size : prospect_size;
        dao::Recordset& customers = layout == Layout::listings ? *module_.listingset : *module_.prospectset;
        for (customers.MoveFirst(); !customers.Eof(); customers.MoveNext()) {
            if (!included(customers))
                continue;
            print_sheet(customers, layout);
            // Also behind the last one: a run that prints ends with an empty page.
            printer.NewPage();
            work.step();
        }
    }
    printer.EndDoc();
}

void printaddress::print_return_lines(int from, int to, bool positioned) {
    platform::Printer& printer = module_.printer();
    for (int line = from; line <= to; ++line) {
        if (!positioned)
            printx(printer, leading_number(r_x.text));
        printer.Print(trim(returnaddress[line].text));
        positioned = false;
    }
}

void printaddress::print_sheet(const dao::Recordset& customer, Layout layout) {
    platform::Printer& printer = module_.printer();
    printxy(printer, leading_number(r_x.text), leading_number(r_y.text));
    if (layout == Layout::listings) {
        print_return_lines(0, 3, true);
        printer.Print("");
        printer.FontBold = true;
        print_return_lines(4, 7, false);
        printer.FontBold = false;
    } else {
        print_return_lines(0, 4, true);
    }
    printy(printer, leading_number(a_y.text));
    print_address(printer, customer, leading_number(a_x.text) * twips_a_millimetre);
}

} // namespace tolva::printing
