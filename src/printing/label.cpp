#include "printing/label.h"

#include "basic/number.h"
#include "printing/page.h"
#include "printing/rows.h"

namespace tolva::printing {

using module::LabelMode;

namespace {

constexpr float label_font_size = 12;
/// From one label's left edge to the next one's; the rows follow at one inch.
constexpr double label_pitch_inches = 2.92;

} // namespace

label::label(module::Module& module)
    : Screen(module.runtime, "label", "Click on Starting Label"), module_(module) {
    for (const auto& button : Command1) {
        button->caption = std::to_string(button->index() + 1);
        button->on_click = [this, index = button->index()] { print_from(index); };
    }
    Command2.on_click = [this] { unload(); };
}

void label::print_from(int index) {
    if (module_.confirm("Print Labels?") != 1)
        return;
    // The listings have no such test: each gets its label.
    switch (module_.labelmode) {
    case LabelMode::listings:
        print_labels(*module_.listingset, false, index);
        break;
    case LabelMode::prospects:
        print_labels(*module_.prospectset, true, index);
        break;
    case LabelMode::sold:
        print_labels(*module_.soldset, true, index);
        break;
    }
    unload();
}

void label::print_labels(dao::Recordset& customers, bool test_inclusion, int index) {
    platform::Printer& printer = module_.printer();
    platform::LongWork work(runtime(), "Printing labels");
    printer.job_name = "Labels";
    printer.FontName = "Arial";
    printer.FontSize = label_font_size;
    const double adjust = basic::leading_number(module_.settings.labeladjust) * twips_an_inch;

    int position = index;
    for (customers.MoveFirst(); !customers.Eof(); customers.MoveNext()) {
        if (test_inclusion && !included(customers))
            continue;
        if (++position > module::Module::label_count) {
            position = 1;
            printer.NewPage();
        }
        const auto entry = static_cast<std::size_t>(position - 1);
        const double x = (module_.labelcolumn[entry] - 1) * label_pitch_inches * twips_an_inch;
        const double y = (module_.labelrow[entry] - 1) * twips_an_inch + adjust;
        printer.set_CurrentY(y);
        print_address(printer, customers, x);
        work.step();
    }
    printer.EndDoc();
}

} // namespace tolva::printing
