#include "desktop/customer_blocks.h"
#include "desktop/forms.h"
#include "desktop/record_form.h"

namespace tolva::desktop {

namespace {

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
    customer_columns->addWidget(titled_block(builder, "Seller", person_rows()), 1);
    auto* const contact_column = new QVBoxLayout;
    contact_column->addWidget(titled_block(builder, "Contact Information", contact_rows()), 3);
    contact_column->addWidget(titled_block(builder, "Notes", note_rows()), 2);
    customer_columns->addLayout(contact_column, 1);
    columns->addWidget(customer, 2);

    QGroupBox* const listing = builder.frame("f_listinginfo");
    auto* const listing_column = new QVBoxLayout(listing);
    auto* const property = new QWidget(&builder.form());
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
