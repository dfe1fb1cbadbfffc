#include "desktop/customer_blocks.h"
#include "desktop/forms.h"
#include "desktop/record_form.h"

namespace tolva::desktop {

namespace {

constexpr int money_characters = 11;

const std::vector<Row> property_rows = {
    {{"Business Name:", {grows("soldbusiness", 30)}}},
    {{"Address:", {grows("soldaddress", 30)}}},
    {{"City State Zip:",
      {grows("soldcity", 16), grows("soldstate", 4, "State of the Property"),
       fixed("soldzip", 10, "Zip of the Property")}}},
    {{"Construction:", {grows("construction", 14)}}, {"Square Feet:", {fixed("squarefeet", 10)}}},
    {{"# Bedrooms:", {fixed("bedrooms", 6)}}, {"Bathrooms:", {fixed("bathrooms", 6)}}},
    {{"Basement:", {grows("basement", 12)}}, {"Garage:", {grows("garage", 12)}}},
    {{"Lot X-Y:", {fixed("lotx", 6), word("X"), fixed("loty", 6, "Lot Y")}},
     {"Acres:", {fixed("acres", 10)}}},
    {date_entry("Date Sold:", "datesold", "Command3", "Choose date for Date Sold")},
};

const std::vector<Row> agency_rows = {
    {{"", {plain("agency_0"), plain("agency_1"), plain("agency_2")}}},
};

const std::vector<Row> money_rows = {
    {{"Selling Price: $", {fixed("sellingprice", money_characters)}},
     {"Commission Rate %:", {fixed("commissionrate", money_characters)}}},
    {{"Commission: $", {fixed("commission", money_characters)}},
     {"Expenses: $", {fixed("expenses", money_characters)}}},
    {{"Net Commission: $", {plain("netcommission")}}},
};

const std::vector<Row> listing_agent_rows = {
    {{"Name:", {grows("listingname", 16)}}},
    {{"Company:", {grows("listingcompany", 16)}}},
    {{"Phone #:", {grows("listingphone", 16)}}},
};

const std::vector<Row> selling_agent_rows = {
    {{"Name:", {grows("sellingname", 16)}}},
    {{"Company:", {grows("sellingcompany", 16)}}},
    {{"Phone #:", {grows("sellingphone", 16)}}},
};

const std::vector<Row> average_rows = {
    {{"Sales: $", {plain("aasales")}},
     {"Commission: $", {plain("aacom")}},
     {"Expenses: $", {plain("aaexp")}},
     {"Net Commission: $", {plain("aanet")}}},
};

const std::vector<Row> total_rows = {
    {{"Total Sold:", {plain("ttsold")}},
     {"Sales: $", {plain("ttsales")}},
     {"Commission: $", {plain("ttcom")}},
     {"Expenses: $", {plain("ttexp")}},
     {"Net Commission: $", {plain("ttnet")}}},
};

void fill_form(FormBuilder& builder, QWidget& page) {
    auto* const columns = new QHBoxLayout(&page);
    columns->setContentsMargins(0, 0, 0, 0);

    QGroupBox* const customer = builder.frame("f_customerinfo");
    auto* const customer_columns = new QHBoxLayout(customer);
    std::vector<Row> customer_rows = person_rows();
    customer_rows.push_back({{"Customer Source:", {grows("customersource", 20)}}});
    customer_columns->addWidget(titled_block(builder, "Customer", customer_rows), 1);
    auto* const contact_column = new QVBoxLayout;
    contact_column->addWidget(titled_block(builder, "Contact Information", contact_rows()), 3);
    contact_column->addWidget(titled_block(builder, "Notes", note_rows()), 2);
    customer_columns->addLayout(contact_column, 1);
    columns->addWidget(customer, 2);

    QGroupBox* const home = builder.frame("f_listinginfo");
    auto* const home_column = new QVBoxLayout(home);
    auto* const block = new QWidget(&builder.form());
    fill_block(builder, *block, property_rows);
    home_column->addWidget(block);
    home_column->addWidget(titled_block(builder, "You are...", agency_rows));
    home_column->addWidget(titled_block(builder, "Money Made", money_rows));
    auto* const agents = new QHBoxLayout;
    agents->addWidget(titled_block(builder, "Listing Agent (if not you)", listing_agent_rows), 1);
    agents->addWidget(titled_block(builder, "Selling Agent (if not you)", selling_agent_rows), 1);
    home_column->addLayout(agents);
    home_column->addStretch(1);
    columns->addWidget(home, 1);
}

/// The frames are one array: totals are item 0, averages item 1.
void fill_summary(FormBuilder& builder, QBoxLayout& place) {
    for (const auto& [frame, rows] :
         {std::pair("Frame9_0", &total_rows), std::pair("Frame9_1", &average_rows)}) {
        QGroupBox* const box = builder.frame(frame);
        fill_block(builder, *box, *rows);
        place.addWidget(box);
    }
}

} // namespace

void build_sold(FormBuilder& builder) {
    build_record_form(builder, {
                                   "Command4",
                                   "Command10",
                                   {"Command6", "Command7", "Command8", "Command9"},
                                   "Command5",
                                   "first",
                                   fill_form,
                                   fill_summary,
                               });
}

} // namespace tolva::desktop
