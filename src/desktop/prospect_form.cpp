#include "desktop/customer_blocks.h"
#include "desktop/forms.h"
#include "desktop/record_form.h"
#include "module/settings.h"

namespace tolva::desktop {

namespace {

const std::vector<Row> market_rows = {
    {date_entry("Date Acquired:", "dateacquired", "Command3", "Choose date for Date Acquired")},
    {date_entry("Date in Market:", "dateinmarket", "Command4", "Choose date for Date in Market")},
    {{"Interest Level:", {grows("interestlevel", 22)}}},
    {{"Prospect Source:", {grows("prospectsource", 22)}}},
};

const std::vector<Row> home_rows = {
    {{"Cities Desired:", {grows("cities", 30)}}},
    {{"Construction:", {grows("construction", 14)}}, {"Sub:", {grows("subdivision", 14)}}},
    {{"Streets Desired:", {grows("streets", 30)}}},
    {{"Square Feet:", {fixed("squarefeet", 10)}}, {"# Rooms:", {fixed("rooms", 6)}}},
    {{"# Bedrooms:", {fixed("bedrooms", 6)}}, {"# Bathrooms:", {fixed("bathrooms", 6)}}},
    {{"Basement:", {grows("basement", 12)}}, {"Garage:", {grows("garage", 12)}}},
    {{"Acres:", {fixed("acres", 10)}}, {"Price Desired: $", {fixed("price", 10)}}},
};

void fill_form(FormBuilder& builder, QWidget& page) {
    auto* const columns = new QHBoxLayout(&page);
    columns->setContentsMargins(0, 0, 0, 0);
    columns->addWidget(titled_block(builder, "Prospect", person_rows()), 1);

    auto* const middle = new QVBoxLayout;
    middle->addWidget(titled_block(builder, "Prospect Information", market_rows));
    QGroupBox* const type = builder.frame_titled(QStringLiteral("Prospect Type"));
    auto* const types = new QHBoxLayout(type);
    types->addWidget(builder("prospecttype_0"));
    types->addWidget(builder("prospecttype_1"));
    types->addStretch(1);
    middle->addWidget(type);
    middle->addWidget(titled_block(builder, "Contact Information", contact_rows()), 1);
    columns->addLayout(middle, 1);

    auto* const right = new QVBoxLayout;
    QGroupBox* const home = builder.frame("f_homedesired");
    auto* const home_column = new QVBoxLayout(home);
    auto* const block = new QWidget(&builder.form());
    fill_block(builder, *block, home_rows);
    home_column->addWidget(block);
    home_column->addLayout(tick_columns(builder, "feature", module::feature_count, 3));
    right->addWidget(home);
    right->addWidget(titled_block(builder, "Notes", note_rows()), 1);
    columns->addLayout(right, 1);
}

} // namespace

void build_prospect(FormBuilder& builder) {
    build_record_form(builder, {
                                   "Command10",
                                   "Command11",
                                   {"Command6", "Command7", "Command8", "Command9"},
                                   "Command5",
                                   "first",
                                   fill_form,
                               });
}

} // namespace tolva::desktop
