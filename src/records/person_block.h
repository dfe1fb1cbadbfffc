#pragma once

#include "printing/sheet.h"

namespace tolva::records {

/// Where the blocks of a customer's sheet begin, in millimetres.
inline constexpr double sheet_left = 15, sheet_right = 110, sheet_top = 15, sheet_middle = 85;

/// The first block of a customer's sheet: both owners, the address and the telephones, as the form shows
/// them.
template <class Form>
void print_person(printing::Sheet& sheet, const char* heading, const Form& form) {
    using printing::shown;
    sheet.begin_at(sheet_left, sheet_top);
    sheet.heading(heading);
    sheet.lines({
        shown(form.first) + " " + shown(form.middle) + " " + shown(form.last),
        shown(form.co_first) + " " + shown(form.co_middle) + " " + shown(form.co_last),
        shown(form.businessname),
        shown(form.address),
        shown(form.city) + ", " + shown(form.state) + " " + shown(form.zip),
    });
    sheet.empty_line();
    sheet.lines({
        "Home Phone: " + shown(form.homephone),
        "Work Phone: " + shown(form.workphone),
        "Cell Phone: " + shown(form.cellphone),
        "Fax: " + shown(form.fax),
        "Employer: " + shown(form.employer),
        "Birthday: " + shown(form.birthday),
        "Co-Seller Birthday: " + shown(form.co_birthday),
        "Email: " + shown(form.email),
    });
}

} // namespace tolva::records
