#pragma once

#include "desktop/field_block.h"

namespace tolva::desktop {

/// The parts of a customer's form that the record screens lay out alike.

/// Names, address, telephones, birthdays, email.
std::vector<Row> person_rows();
/// The dates of contact, the history, and whether the record is printed.
std::vector<Row> contact_rows();
std::vector<Row> note_rows();

} // namespace tolva::desktop
