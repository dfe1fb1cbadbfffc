#include "printing/rows.h"

#include "basic/text.h"

namespace tolva::printing {

namespace {

std::string text_of(const dao::Recordset& customer, const char* column) {
    const dao::FieldValue value = customer.field(column);
    return value.is_null() ? std::string() : basic::trim(value.text());
}

std::string name_of(const dao::Recordset& customer) {
    return text_of(customer, "first") + " " + text_of(customer, "last");
}

} // namespace

bool included(const dao::Recordset& customer) {
    const dao::FieldValue value = customer.field("includeinprinting");
    return !value.is_null() && value.yes_no();
}

void print_address(platform::Printer& printer, const dao::Recordset& customer, double x) {
    for (const std::string& line :
         {name_of(customer), text_of(customer, "address"),
          text_of(customer, "city") + ", " + text_of(customer, "state") + " " + text_of(customer, "zip")}) {
        printer.set_CurrentX(x);
        printer.Print(line);
    }
}

std::string customer_job(const std::string& what, const dao::Recordset& customer) {
    return what + ": " + name_of(customer);
}

} // namespace tolva::printing
