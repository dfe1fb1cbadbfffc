// The one-page sheet of a listing: what the form shows, saved or not.

#include "records/listings.h"
#include "records/person_block.h"

namespace tolva::records {

using printing::shown;

void listings::print_sheet() {
    printing::Sheet sheet(module_.printer(), "Listing: " + shown(first) + " " + shown(last));
    print_person(sheet, "Seller", *this);

    sheet.begin_at(sheet_left, sheet_middle);
    sheet.heading("Property Particulars");
    sheet.lines({
        "Address: " + shown(listingaddress),
        shown(listingcity) + ", " + shown(listingstate) + " " + shown(listingzip),
        "Construction: " + shown(construction),
        "Legal: " + shown(legaldescription),
        "Subdivision: " + shown(subdivision),
        "Year Built: " + shown(yearbuilt),
        "Square Feet: " + shown(squarefeet),
        "# Rooms:" + shown(rooms),
        "# Bedrooms: " + shown(bedrooms),
        "Bathrooms: " + shown(bathrooms),
        "Basement: " + shown(basement),
        "Garage: " + shown(garage),
        "City Tax: $" + shown(citytaxes),
        "County Tax: $" + shown(countytaxes),
        "Lot X-Y: " + shown(lotx) + " X " + shown(loty),
        "Acres: " + shown(acres),
    });

    sheet.begin_at(sheet_right, sheet_top);
    sheet.heading("Listing Particulars");
    sheet.lines({
        "Date Listed: " + shown(datelisted),
        "Date Expires: " + shown(dateexpires),
        "Listing Source: " + shown(listingsource),
        "Listing Price: $" + shown(listingprice),
        "Commission: " + shown(commission) + "%",
        "Date Last Contact: " + shown(datelastcontact),
        "Date Next Contact: " + shown(datenextcontact),
        "MLS #: " + shown(mls),
    });
    sheet.end();
}

} // namespace tolva::records
