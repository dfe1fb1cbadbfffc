#include "records/birthday_reminders.h"

#include "basic/number.h"
#include "basic/text.h"
#include "messages/automatic.h"

namespace tolva::records {

using basic::trim;

namespace {

bool wanted(module::Module& module) {
    switch (module.settings.p_bdayschedule) {
    case module::Settings::birthdays_always:
        return true;
    case module::Settings::birthdays_prompt:
        return module.confirm("Automatically Schedule Birthday Reminders?") == 1;
    default:
        return false;
    }
}

void schedule_person(module::Module& module, const BirthdayReminders& reminders, const BirthdayFields& person,
                     double years) {
    const basic::DateParts born = basic::parts_of(module.to_date(person.birthday.text));
    for (int year = 0; year <= years; ++year) {
        const basic::Date date = module.to_date(std::to_string(born.month) + "/" + std::to_string(born.day) +
                                                "/" + std::to_string(module.this_year() + year));
        if (date < module.today())
            continue;
        messages::schedule(module,
                           {date, "8:30 AM",
                            "HAPPY BIRTHDAY!\r\n" + trim(person.first.text) + " " + trim(person.last.text) +
                                "\r\n" + "Birthday: " + trim(person.birthday.text) + "\r\n" +
                                contact_lines(reminders.contact),
                            reminders.kind, reminders.customerid});
    }
}

} // namespace

void schedule_birthdays(module::Module& module, const BirthdayReminders& reminders) {
    if (!wanted(module))
        return;
    for (const BirthdayFields& person : reminders.persons) {
        const double years = basic::leading_number(module.settings.p_bday);
        if (years > 0 && module.is_date(person.birthday.text))
            schedule_person(module, reminders, person, years);
    }
}

} // namespace tolva::records
