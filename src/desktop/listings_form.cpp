#include "desktop/forms.h"
#include "desktop/record_form.h"

namespace tolva::desktop {

namespace {

const std::vector<Row> seller_rows = {
    {{"Name:", {grows("first", 11), fixed("middle", 5, "Middle Name"), grows("last", 13, "Last Name")}}},
    {{"Co-Name:",
      {grows("co_first", 11), fixed("co_middle", 5, "Co-Owner's Middle Name"),
       grows("co_last", 13, "Co-Owner's Last Name")}}},
    {{"Business Name:", {grows("businessname", 30)}}},
    {{"Address:", {grows("address", 30)}}},
    {{"City State Zip:", {grows("city", 16), fixed("state", 3, "State"), fixed("zip", 10, "Zip")}}},
    {{"Home Phone:", {fixed("homephone", 16)}}},
    {{"Work Phone:", {fixed("workphone", 16)}}},
    {{"Cell Phone:", {fixed("cellphone", 16)}}},
    {{"Fax:", {fixed("fax", 16)}}},
    {{"Employer:", {grows("employer", 30)}}},
    {date_entry("Birthday:", "birthday", "Command36", "Choose date for Birthday")},
    {date_entry("Co-Birthday:", "co_birthday", "Command37", "Choose date for Co-Birthday")},
    {{"Email:", {grows("email", 30)}}},
};

const std::vector<Row> contact_rows = {
    {date_entry("Date/Last Contact:", "datelastcontact", "Command1", "Choose date for Date/Last Contact")},
    {date_entry("Next Contact Date:", "datenextcontact", "Command2", "Choose date for Next Contact Date")},
    {{"Contact Notes", {lines("contacthistory", 32)}, true}},
    {{"", {tick("includeinprinting")}}},
};

const std::vector<Row> note_rows = {
    {{"", {lines("notes", 32, "Notes")}}},
};

const std::vector<Row> property_rows = {
    {{"Address:", {grows("listingaddress", 30)}}},
    {{"City State Zip:",
      {grows("listingcity", 16), grows("listingstate", 4, "State of the Property"),
       fixed("listingzip", 10, "Zip of the Property")}}},
    {{"Legal:", {grows("legaldescription", 30)}}},
    {{"Year Built:", {fixed("yearbuilt", 10)}}, {"Square Feet:", {fixed("squarefeet", 10)}}},
    {{"City Tax: $", {fixed("citytaxes", 10)}}, {"County Tax: $", {fixed("countytaxes", 10)}}},
    {{"# Rooms:", {fixed("rooms", 5)}}, {"# Bedrooms:", {fixed("bedrooms", 5)}}},
    {{"Bathrooms:", {fixed("bathrooms", 5)}}, {"Acres:", {fixed("acres", 10)}}},
    {{"Basement:", {grows("basement", 12)}}, {"Garage:", {grows("garage", 12)}}},
    {{"Lot X-Y:", {fixed("lotx", 6), fixed("loty", 6, "Lot Y")}},
     {"Subdivision:", {grows("subdivision", 14)}}},
    {{"Construction:", {grows("construction", 20)}}},
};

const std::vector<Row> contract_rows = {
    {{"MLS #:", {fixed("mls", 12)}}, {"Listing Source:", {grows("listingsource", 14)}}},
    {date_entry("Date Listed:", "datelisted", "Command3", "Choose date for Date Listed"),
     {"Listing Price: $", {fixed("listingprice", 10)}}},
    {date_entry("Date Expires:", "dateexpires", "Command4", "Choose date for Date Expires"),
     {"Commission: %", {fixed("commission", 10)}}},
};

void fill_form(FormBuilder& builder, QWidget& page) {
    auto* const columns = new QHBoxLayout(&page);
    columns->setContentsMargins(0, 0, 0, 0);

    QGroupBox* const customer = builder.frame("f_customerinfo");
    auto* const customer_columns = new QHBoxLayout(customer);
    customer_columns->addWidget(titled_block(builder, "Seller", seller_rows), 1);
    auto* const contact_column = new QVBoxLayout;
    contact_column->addWidget(titled_block(builder, "Contact Information", contact_rows), 3);
    contact_column->addWidget(titled_block(builder, "Notes", note_rows), 2);
    customer_columns->addLayout(contact_column, 1);
    columns->addWidget(customer, 2);

    QGroupBox* const listing = builder.frame("f_listinginfo");
    auto* const listing_column = new QVBoxLayout(listing);
    auto* const property = new QWidget;
    fill_block(builder, *property, property_rows);
    listing_column->addWidget(property);
    listing_column->addWidget(titled_block(builder, "Listing Particulars", contract_rows));
    listing_column->addStretch(1);
    columns->addWidget(listing, 1);
}

} // namespace

void build_listings(FormBuilder& builder) {
    build_record_form(builder, {
                                   "Command11",
                                   "Command10",
                                   {"Command6", "Command7", "Command8", "Command9"},
                                   "Command5",
                                   "first",
                                   fill_form,
                               });
}

} // namespace tolva::desktop
