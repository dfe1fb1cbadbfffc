#pragma once

#include <array>
#include <string>

#include "messages/message_kind.h"
#include "module/module.h"
#include "records/contact_lines.h"

namespace tolva::records {

/// A person who may have a birthday.
struct BirthdayFields {
    const platform::TextControl& first;
    const platform::TextControl& last;
    const platform::TextControl& birthday;
};

struct BirthdayReminders {
    messages::MessageKind kind;
    std::string customerid;
    /// The owner and the second owner.
    std::array<BirthdayFields, 2> persons;
    ContactFields contact;
};

/// Schedules each person's birthdays for this year and `p_bday` years more, if the setting says so or the
/// user does when asked (once for both). A birthday gone by this year is skipped. A February 29 fails with
/// error 13 at the first year without that day; what was scheduled before it stays.
void schedule_birthdays(module::Module& module, const BirthdayReminders& reminders);

} // namespace tolva::records
