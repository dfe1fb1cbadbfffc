#pragma once

#include <array>
#include <string>

#include "messages/message_kind.h"
#include "module/module.h"

namespace tolva::records {

/// Where a customer is reached: the lines that close every automatic message. The texts are those on the
/// form.
struct ContactFields {
    const platform::TextControl& address;
    const platform::TextControl& city;
    const platform::TextControl& state;
    const platform::TextControl& zip;
    const platform::TextControl& homephone;
    const platform::TextControl& cellphone;
    const platform::TextControl& workphone;
};

/// Address, city and the three telephones, a line each, the last one ended too. Empty fields leave their
/// labels and blank lines in place.
std::string contact_lines(const ContactFields& contact);

struct BirthdayFields {
    const platform::TextControl& first;
    const platform::TextControl& last;
    const platform::TextControl& birthday;
};

struct BirthdayReminders {
    messages::MessageKind kind;
    std::string customerid;
    /// The owner and the second owner: either may have a birthday.
    std::array<BirthdayFields, 2> persons;
    ContactFields contact;
};

/// Schedules each person's birthdays for this year and `p_bday` years more, if the setting says so or the
/// user does when asked (once for both). A birthday gone by this year is skipped. A February 29 fails with
/// error 13 at the first year without that day; what was scheduled before it stays.
void schedule_birthdays(module::Module& module, const BirthdayReminders& reminders);

} // namespace tolva::records
