#include "desktop/field_block.h"
#include "desktop/fitting_scroll_area.h"
#include "desktop/forms.h"
#include "module/settings.h"

namespace tolva::desktop {

namespace {

constexpr int number_characters = 10;
/// A label without the signs that lead over to its field.
std::string bare(const std::string& label) {
    return label.substr(0, label.find(':'));
}

Entry date_span(const char* label, const char* from, const char* from_button, const char* to,
                const char* to_button) {
    const std::string name = bare(label);
    return {label,
            {fixed(from, date_characters, name + " from"),
             button(from_button, "Choose date for " + name + " from"), word("to"),
             fixed(to, date_characters, name + " to"), button(to_button, "Choose date for " + name + " to")}};
}

Entry span(const char* label, const char* from, const char* to) {
    const std::string name = bare(label);
    return {label,
            {fixed(from, number_characters, name + " from"), word("to"),
             fixed(to, number_characters, name + " to")}};
}

const std::vector<Row> person_rows = {
    {{"Last Name:", {grows("last", 24)}}},
    {{"First Name:", {grows("first", 24)}}},
    {{"Business Name:", {grows("businessname", 24)}}},
    {{"City:", {grows("city", 24)}}},
    {{"State:", {fixed("state", 6)}}},
    {{"Phone:", {fixed("phone", 16)}}},
    {{"Employer:", {grows("employer", 24)}}},
};

const std::vector<Row> listing_rows = {
    {{"Listing Address:", {grows("listingaddress", 24)}}},
    {{"Listing City:", {grows("listingcity", 24)}}},
    {date_span("Date Listed:", "datelisted1", "Command1", "datelisted2", "Command5")},
    {date_span("Date Expires:", "dateexpires1", "Command2", "dateexpires2", "Command6")},
    {date_span("Date Last Cont:", "datelastcontact1", "Command3", "datelastcontact2", "Command7")},
    {date_span("Date Next Cont:", "datenextcontact1", "Command4", "datenextcontact2", "Command8")},
    {span("Listing Price: $", "listingprice1", "listingprice2")},
    {{"MLS #:", {fixed("mls", 16)}}},
};

const std::vector<Row> home_rows = {
    {{"City Desired:", {grows("cities", 18)}}, {"Construction:", {grows("construction", 18)}}},
    {{"Subdivision:", {grows("subdivision", 18)}}, {"Street:", {grows("streets", 18)}}},
    {span("Square Feet:", "squarefeet1", "squarefeet2"), span("Rooms:", "rooms1", "rooms2")},
    {span("Bedrooms:", "bedrooms1", "bedrooms2"), span("Bathrooms:", "bathrooms1", "bathrooms2")},
    {{"Basement:", {grows("basement", 18)}}, {"Garage:", {grows("garage", 18)}}},
    {span("Acres:", "acres1", "acres2"), span("Price: $", "price1", "price2")},
    {date_span("Date Acquired:", "dateacquired1", "Command4", "dateacquired2", "Command5"),
     date_span("Date in Market:", "dateinmarket1", "Command6", "dateinmarket2", "Command7")},
    {{"Prospect Source:", {grows("prospectsource", 18)}}, {"Interest Level:", {grows("interestlevel", 18)}}},
    {date_span("Date Last Contact::", "datelastcontact1", "Command8", "datelastcontact2", "Command9"),
     date_span("Date Next Contact:", "datenextcontact1", "Command10", "datenextcontact2", "Command11")},
    {{"", {plain("prospecttype_0"), plain("prospecttype_1")}}},
};

const std::vector<Row> address_rows = {
    {{"Last Name:", {grows("last", 30)}}},
    {{"First Name:", {grows("first", 30)}}},
    {{"Business Name:", {grows("businessname", 30)}}},
    {{"City:", {grows("city", 30)}}},
    {{"State:", {fixed("state", 6)}}},
    {{"Phone:", {fixed("phone", 16)}}},
    {{"Notes:", {grows("notes", 30)}}},
};

const std::vector<Row> zip_rows = {
    {{"City:", {grows("zcity", 26)}}},
    {{"State:", {fixed("zstate", 6)}}},
    {{"Zip Code:", {fixed("zzip", 12)}}},
};

/// Frames in a row, and the buttons below them.
void finish(FormBuilder& builder, QWidget* page, std::initializer_list<const char*> buttons,
            const char* first) {
    auto* const whole = new QVBoxLayout(&builder.form());
    auto* const scroll = new FittingScrollArea(&builder.form());
    scroll->setWidget(page);
    whole->addWidget(scroll, 1);
    auto* const bottom = new QHBoxLayout;
    bottom->addStretch(1);
    for (const char* name : buttons)
        bottom->addWidget(builder(name));
    whole->addLayout(bottom);
    builder.form().set_first(builder.control(first));
}

QHBoxLayout* columns_of(QWidget* page) {
    auto* const columns = new QHBoxLayout(page);
    columns->setContentsMargins(0, 0, 0, 0);
    return columns;
}

} // namespace

void build_listingsearch(FormBuilder& builder) {
    auto* const page = new QWidget(&builder.form());
    QHBoxLayout* const columns = columns_of(page);
    columns->addWidget(titled_block(builder, "Personal Information", person_rows), 1);
    columns->addWidget(titled_block(builder, "Listing Information", listing_rows), 1);
    finish(builder, page, {"Command9", "Command10", "Command11"}, "last");
}

void build_prospectsearch(FormBuilder& builder) {
    auto* const page = new QWidget(&builder.form());
    QHBoxLayout* const columns = columns_of(page);
    columns->addWidget(titled_block(builder, "Personal Information", person_rows), 1);
    auto* const right = new QVBoxLayout;
    right->addWidget(titled_block(builder, "Home Information", home_rows));
    QGroupBox* const features = builder.frame_titled(QStringLiteral("Property Features"));
    auto* const ticks = new QVBoxLayout(features);
    ticks->addLayout(tick_columns(builder, "feature", module::feature_count, 4));
    ticks->addStretch(1);
    right->addWidget(features);
    right->addStretch(1);
    columns->addLayout(right, 2);
    finish(builder, page, {"Command1", "Command2", "Command3"}, "last");
}

void build_addresssearch(FormBuilder& builder) {
    auto* const page = new QWidget(&builder.form());
    columns_of(page)->addWidget(titled_block(builder, "Address Information", address_rows));
    finish(builder, page, {"Command1", "Command2", "Command3"}, "last");
}

void build_zipcode(FormBuilder& builder) {
    auto* const page = new QWidget(&builder.form());
    fill_block(builder, *page, zip_rows);
    finish(builder, page, {"Command1", "Command2", "Command3"}, "zcity");
}

} // namespace tolva::desktop
