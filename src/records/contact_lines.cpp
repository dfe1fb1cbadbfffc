#include "records/contact_lines.h"

#include "basic/text.h"

namespace tolva::records {

using basic::trim;

namespace {

const std::string line_end = "\r\n";

std::string address_lines(const ContactFields& contact) {
    return trim(contact.address.text) + line_end + trim(contact.city.text) + ", " + trim(contact.state.text) +
           " " + trim(contact.zip.text) + line_end;
}

} // namespace

std::string contact_lines(const ContactFields& contact) {
    return address_lines(contact) + "Home: " + trim(contact.homephone.text) + line_end +
           "Cell: " + trim(contact.cellphone.text) + line_end + "Work: " + trim(contact.workphone.text) +
           line_end;
}

std::string reminder_text(const OwnerFields& owners, const std::string& address_heading,
                          const ContactFields& contact) {
    std::string text = trim(owners.first.text) + " " + trim(owners.last.text) + line_end +
                       trim(owners.co_first.text) + " " + trim(owners.co_last.text) + line_end;
    if (!address_heading.empty())
        text += address_heading + line_end;
    return text + address_lines(contact) + line_end + "Home Phone: " + trim(contact.homephone.text) +
           line_end + "Cell Phone: " + trim(contact.cellphone.text) + line_end +
           "Work Phone: " + trim(contact.workphone.text) + line_end;
}

} // namespace tolva::records
