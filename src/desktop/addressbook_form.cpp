#include "desktop/customer_blocks.h"
#include "desktop/forms.h"
#include "desktop/record_form.h"

namespace tolva::desktop {

namespace {

const std::vector<Row> address_rows = {
    {{"Name:", {grows("first", 14), fixed("middle", 6, "Middle Name"), grows("last", 20, "Last Name")}}},
    {{"Business Name:", {grows("businessname", 40)}}},
    {{"Address:", {grows("address", 40)}}},
    {{"City State Zip:", {grows("city", 24), fixed("state", 3, "State"), fixed("zip", 10, "Zip")}}},
    {{"Home Phone:", {fixed("homephone", 16)}}, {"Work Phone:", {fixed("workphone", 16)}}},
    {{"Cell Phone:", {fixed("cellphone", 16)}}, {"Fax:", {fixed("fax", 16)}}},
    {{"Email:", {grows("email", 40)}}},
};

void fill_form(FormBuilder& builder, QWidget& page) {
    auto* const columns = new QHBoxLayout(&page);
    columns->setContentsMargins(0, 0, 0, 0);
    columns->addWidget(titled_block(builder, "Address Information", address_rows), 3);
    columns->addWidget(titled_block(builder, "Notes", note_rows()), 2);
}

} // namespace

void build_addressbook(FormBuilder& builder) {
    build_record_form(builder, {
                                   "Command2",
                                   "Command1",
                                   {"Command3", "Command4", "Command5", "Command6"},
                                   "Command18",
                                   "first",
                                   fill_form,
                               });
}

} // namespace tolva::desktop
