// The one-page sheet of a prospect: what the form shows, saved or not.

#include "basic/text.h"
#include "records/person_block.h"
#include "records/prospect.h"

namespace tolva::records {

using printing::shown;

void prospect::print_sheet() {
    printing::Sheet sheet(module_.printer(), "Prospect: " + shown(first) + " " + shown(last));
    print_person(sheet, "Customer", *this);

    sheet.begin_at(sheet_left, sheet_middle);
    sheet.heading("Home Information or Home Desired");
    sheet.lines({
        "Cities Desired: " + shown(cities),
        "Construction: " + shown(construction),
        "Subs Desired: " + shown(subdivision),
        "Streets: " + shown(streets),
        "Square Feet: " + shown(squarefeet),
        "# Rooms:" + shown(rooms),
        "# Bedrooms: " + shown(bedrooms),
        "Bathrooms: " + shown(bathrooms),
        "Basement: " + shown(basement),
        "Garage: " + shown(garage),
        "Acres: " + shown(acres),
        "Price Desired: $" + shown(price),
    });

    sheet.begin_at(sheet_right, sheet_top);
    sheet.heading("Prospect Particulars");
    sheet.lines({
        "Date Acquired: " + shown(dateacquired),
        "Date in Market: " + shown(dateinmarket),
        "Prospect Source: " + shown(prospectsource),
        "Interest Level: " + shown(interestlevel),
    });
    if (prospecttype[0].value != 0)
        sheet.line("Listing Prospect");
    if (prospecttype[1].value != 0)
        sheet.line("Buying Prospect");
    sheet.lines({
        "Date Last Contact: " + shown(datelastcontact),
        "Date Next Contact: " + shown(datenextcontact),
    });
    sheet.empty_line();
    sheet.heading("Features");
    for (const auto& box : feature)
        if (box->value != 0)
            sheet.line(basic::trim(box->caption));
    sheet.end();
}

} // namespace tolva::records
