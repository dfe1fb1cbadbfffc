#include "analysis/graph.h"

#include "analysis/printed_charts.h"
#include "basic/number.h"
#include "basic/run_time_error.h"
#include "basic/text.h"
#include "module/shared_routines.h"

namespace tolva::analysis {

using basic::trim;

namespace {

int months_between(basic::Date from, basic::Date to) {
    constexpr int months_a_year = 12;
    const basic::DateParts a = basic::parts_of(from);
    const basic::DateParts b = basic::parts_of(to);
    return (b.year - a.year) * months_a_year + b.month - a.month;
}

/// Adds what a column holds; a null makes the bar null for good.
void add(std::optional<double>& sum, const dao::FieldValue& value) {
    if (value.is_null())
        sum.reset();
    else if (sum)
        *sum += value.number();
}

} // namespace

graph::graph(module::Module& module) : Screen(module.runtime, "graph", "Graph of Sales"), module_(module) {
    mon1.tool_tip = "Beginning Month";
    year1.tool_tip = "Beginning Year";
    mon2.tool_tip = "Ending Month";
    year2.tool_tip = "Ending Year";
    Command1.on_click = [this] { Command1_Click(); };
    Command2.on_click = [this] { Command2_Click(); };
    Command3.on_click = [this] {
        unload();
        module_.Form1().show();
    };
}

void graph::on_load() {
    const basic::DateParts today = basic::parts_of(module_.today());
    for (platform::ComboBox* box : {&mon1, &mon2}) {
        for (const std::string_view month : basic::month_names)
            box->add_item(std::string(month));
        box->set_list_index(static_cast<std::size_t>(today.month - 1));
    }
    year1.text = std::to_string(today.year);
    year2.text = std::to_string(today.year);
    chart1.visible = false;
    chart2.visible = false;
}

void graph::on_unload() {
    module_.Form1().show();
}

void graph::Command1_Click() {
    const double m1 = mon1.list_index() + 1;
    const double m2 = mon2.list_index() + 1;
    const double y1 = basic::leading_number(year1.text);
    const double y2 = basic::leading_number(year2.text);
    const std::string begin = basic::spaced_number_text(m1) + "/1/" + basic::spaced_number_text(y1);
    const int days = module::daysinmonth(
        module_.to_date(basic::spaced_number_text(m2) + "/1/" + basic::spaced_number_text(y2)));
    const std::string end = basic::spaced_number_text(m2) + "/" + basic::spaced_number_text(days) + "/" +
                            basic::spaced_number_text(y2);
    int months = months_between(module_.to_date(begin), module_.to_date(end));
    if (months < 0) {
        runtime().message("Invalid Dates!", "Error");
        return;
    }
    ++months;
    // A month without a sale keeps a blank label and no height.
    const std::vector<platform::Chart::Bar> empty(static_cast<std::size_t>(months), {" ", 0.0});
    std::vector<platform::Chart::Bar> units = empty, commission = empty, sales = empty;

    module_.soldset = module_.solddb->OpenRecordset("select * from [table] where (datesold >= #" +
                                                    trim(begin) + "# and datesold <= #" + trim(end) + "#)");
    dao::Recordset& set = *module_.soldset;
    if (set.RecordCount() == 0) {
        runtime().message("No Customers Sold Between those Dates", "Message");
        return;
    }
    const basic::Date first_month = module_.to_date(begin);
    for (set.MoveFirst(); !set.Eof(); set.MoveNext()) {
        const basic::Date sold = set.field("datesold").date();
        const basic::DateParts parts = basic::parts_of(sold);
        const auto row = static_cast<std::size_t>(months_between(first_month, sold));
        const std::string label = std::to_string(parts.month) + "/" + std::to_string(parts.year);
        for (auto* bars : {&units, &commission, &sales})
            bars->at(row).label = label;
        *units.at(row).value += 1;
        add(commission.at(row).value, set.field("commission"));
        add(sales.at(row).value, set.field("sellingprice"));
    }
    for (platform::Chart* chart : {&chart1, &chart2, &chart3})
        chart->visible = true;
    chart1.bars = std::move(units);
    chart2.bars = std::move(commission);
    chart3.bars = std::move(sales);
}

void graph::Command2_Click() {
    if (module_.confirm("Print Graphs?") != 1)
        return;
    try {
        print_charts(module_.printer(), caption,
                     trim(mon1.text) + " " + trim(year1.text) + " to " + trim(mon2.text) + " " +
                         trim(year2.text),
                     {{"UNITS SOLD", chart1}, {"COMMISSION", chart2}, {"TOTAL IN SALES", chart3}});
    } catch (const basic::RunTimeError&) {
        // Where it failed among bold words, what is printed next is none of them.
        module_.printer().FontBold = false;
        runtime().message("Your Printer Does Not Support Printing of Graphs", "Printer Error");
    }
}

} // namespace tolva::analysis
