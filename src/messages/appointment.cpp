#include "messages/appointment.h"

#include "basic/text.h"
#include "messages/planner.h"

namespace tolva::messages {

appointment::appointment(module::Module& module)
    : Screen(module.runtime, "appointment", "Set Appointment"), module_(module) {
    apptmessage.on_got_focus = [this] { module::Module::selectfieldtext(*this); };
    Month1.on_date_click = [this](basic::Date date) { Month1_DateClick(date); };
    Command1.on_click = [this] { unload(); };
}

void appointment::on_load() {
    Month1.value = module_.today();
}

/// What the planner shows of another day is not saved here; it is lost.
void appointment::Month1_DateClick(basic::Date date) {
    module_.appointmentpending = false;
    module_.appointmenttext = module_.appointmentname + " " + module_.appointmentlast + ", " +
                              module_.appointmentphone + ": " + basic::trim(apptmessage.text);
    module_.appointmentpending = true;
    planner& day = module_.planner();
    day.show();
    day.MonthView1.value = date;
    module_.loadplannerday(date);
    day.rectoform();
    unload();
}

} // namespace tolva::messages
