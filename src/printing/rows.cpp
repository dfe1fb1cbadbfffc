#include "printing/rows.h"

#include "module/shared_routines.h"

namespace tolva::printing {

namespace {

std::string name_of(const dao::Recordset& customer) {
    return stored_text(customer, "first") + " " + stored_text(customer, "last");
}

} // namespace

std::string stored_text(const dao::Recordset& row, const char* column) {
    return module::shown_text(row.field(column));
}

bool included(const dao::Recordset& customer) {
    const dao::FieldValue value = customer.field("includeinprinting");
    return !value.is_null() && value.yes_no();
}

void print_address(platform::Printer& printer, const dao::Recordset& customer, double x) {
    for (const std::string& line : {name_of(customer), stored_text(customer, "address"),
                                    stored_text(customer, "city") + ", " + stored_text(customer, "state") +
                                        " " + stored_text(customer, "zip")}) {
        printer.set_CurrentX(x);
        printer.Print(line);
    }
}

std::string customer_job(const std::string& what, const dao::Recordset& customer) {
    return what + ": " + name_of(customer);
}

} // namespace tolva::printing
