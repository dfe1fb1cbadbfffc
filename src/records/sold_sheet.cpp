// The one-page sheet of a sale: what the form shows, saved or not.

#include "basic/text.h"
#include "records/person_block.h"
#include "records/sold.h"

namespace tolva::records {

using printing::shown;

void sold::print_sheet() {
    printing::Sheet sheet(module_.printer(), "Home Sold: " + shown(first) + " " + shown(last));
    print_person(sheet, "Seller", *this);

    sheet.begin_at(sheet_left, sheet_middle);
    sheet.heading("Property Sold");
    sheet.lines({
        "Business Name: " + shown(businessname),
        "Address: " + shown(soldaddress),
        shown(soldcity) + ", " + shown(soldstate) + " " + shown(soldzip),
        "Construction: " + shown(construction),
        "Square Feet: " + shown(squarefeet),
        "Bedrooms: " + shown(bedrooms),
        "Bathrooms: " + shown(bathrooms),
        "Basement: " + shown(basement),
        "Garage: " + shown(garage),
        "Lot X-Y: " + shown(lotx) + " X " + shown(loty),
        "Acres: " + shown(acres),
        "Date Sold: " + shown(datesold),
        "Customer Source: " + shown(customersource),
    });
    sheet.empty_line();
    sheet.heading("Money Made");
    sheet.lines({
        "Selling Price: $" + shown(sellingprice),
        "Commission Rate: " + shown(commissionrate),
        "Commission: $" + shown(commission),
        "Expenses: $" + shown(expenses),
        "Net Commission: $" + basic::trim(netcommission.caption),
    });

    sheet.begin_at(sheet_right, sheet_top);
    sheet.heading("You Are...");
    constexpr const char* roles[] = {"Listing Agent", "Selling Agent", "Listing & Selling Agent"};
    for (const auto& box : agency)
        if (box->value != 0)
            sheet.line(roles[box->index()]);
    sheet.empty_line();
    sheet.heading("Listing Agent (if not you)");
    sheet.lines({
        "Name: " + shown(listingname),
        "Company: " + shown(listingcompany),
        "Phone #: " + shown(listingphone),
    });
    sheet.empty_line();
    sheet.heading("Selling Agent (if not you)");
    sheet.lines({
        "Name: " + shown(sellingname),
        "Company: " + shown(sellingcompany),
        "Phone #: " + shown(sellingphone),
    });
    sheet.empty_line();
    // Worded otherwise than on the other sheets: meant.
    sheet.lines({
        "Date/Last Contact: " + shown(datelastcontact),
        "Next Contact Date: " + shown(datenextcontact),
    });
    sheet.end();
}

} // namespace tolva::records
