#include "desktop/customer_blocks.h"

namespace tolva::desktop {

namespace {

constexpr int phone_characters = 16;
/// What a box of notes shows of a line.
constexpr int note_characters = 36;

} // namespace

std::vector<Row> person_rows() {
    return {
        {{"Name:", {grows("first", 11), fixed("middle", 5, "Middle Name"), grows("last", 15, "Last Name")}}},
        {{"Co-Name:",
          {grows("co_first", 11), fixed("co_middle", 5, "Co-Owner's Middle Name"),
           grows("co_last", 15, "Co-Owner's Last Name")}}},
        {{"Business Name:", {grows("businessname", 32)}}},
        {{"Address:", {grows("address", 32)}}},
        {{"City State Zip:", {grows("city", 17), fixed("state", 3, "State"), fixed("zip", 10, "Zip")}}},
        {{"Home Phone:", {fixed("homephone", phone_characters)}}},
        {{"Work Phone:", {fixed("workphone", phone_characters)}}},
        {{"Cell Phone:", {fixed("cellphone", phone_characters)}}},
        {{"Fax:", {fixed("fax", phone_characters)}}},
        {{"Employer:", {grows("employer", 32)}}},
        {date_entry("Birthday:", "birthday", "Command36", "Choose date for Birthday")},
        {date_entry("Co-Birthday:", "co_birthday", "Command37", "Choose date for Co-Birthday")},
        {{"Email:", {grows("email", 32)}}},
    };
}

std::vector<Row> contact_rows() {
    return {
        {date_entry("Date/Last Contact:", "datelastcontact", "Command1",
                    "Choose date for Date/Last Contact")},
        {date_entry("Next Contact Date:", "datenextcontact", "Command2",
                    "Choose date for Next Contact Date")},
        {{"Contact Notes", {lines("contacthistory", note_characters)}, true}},
        {{"", {plain("includeinprinting")}}},
    };
}

std::vector<Row> note_rows() {
    return {{{"", {lines("notes", note_characters, "Notes")}}}};
}

} // namespace tolva::desktop
