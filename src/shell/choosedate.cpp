#include "shell/choosedate.h"

namespace tolva::shell {

choosedate::choosedate(module::Module& module)
    : Screen(module.runtime, "choosedate", "Choose Date"), module_(module) {
    MonthView1.on_date_click = [this](basic::Date date) {
        module_.chosendate = basic::date_to_text(date);
        picked_ = true;
        unload();
    };
    Command1.on_click = [this] { unload(); };
    Command1.on_got_focus = [this] { unload(); };
}

void choosedate::on_load() {
    MonthView1.value = module_.today();
    active_control = &MonthView1;
}

/// Whatever way it is left without picking, nothing is chosen.
void choosedate::on_unload() {
    if (!picked_)
        module_.chosendate.clear();
}

} // namespace tolva::shell
