#include "shell/choosedate.h"

namespace tolva::shell {

choosedate::choosedate(module::Module& module)
    : Screen(module.runtime, "choosedate", "Choose Date"), module_(module) {
    MonthView1.on_date_click = [this](basic::Date date) { leave_with(basic::date_to_text(date)); };
    Command1.on_click = [this] { leave_with(""); };
    Command1.on_got_focus = [this] { leave_with(""); };
}

void choosedate::on_load() {
    MonthView1.value = module_.today();
    active_control = &MonthView1;
}

void choosedate::leave_with(const std::string& date) {
    module_.chosendate = date;
    unload();
}

} // namespace tolva::shell
