#pragma once

#include <string>

#include "platform/controls.h"

namespace tolva::records {

/// Where a customer is reached, as the form shows it.
struct ContactFields {
    const platform::TextControl& address;
    const platform::TextControl& city;
    const platform::TextControl& state;
    const platform::TextControl& zip;
    const platform::TextControl& homephone;
    const platform::TextControl& cellphone;
    const platform::TextControl& workphone;
};

/// Both owners' names, as the form shows them.
struct OwnerFields {
    const platform::TextControl& first;
    const platform::TextControl& last;
    const platform::TextControl& co_first;
    const platform::TextControl& co_last;
};

/// The lines that close every automatic message: address, city and the three telephones, each ended, the last
/// one too. Empty fields leave their labels and blank lines in place.
std::string contact_lines(const ContactFields& contact);

/// The text of a reminder that the user schedules: both owners, an address under `address_heading` (left out
/// when empty), and the telephones. The address need not be the one that contact lines name.
std::string reminder_text(const OwnerFields& owners, const std::string& address_heading,
                          const ContactFields& contact);

} // namespace tolva::records
