#pragma once

#include <string>

#include "dao/recordset.h"
#include "platform/printer.h"

namespace tolva::printing {

/// What print routines read of a stored row.

/// A column's text, trimmed; a null is nothing.
std::string stored_text(const dao::Recordset& row, const char* column);

/// Whether the customer is to get printed mail; a null is no yes.
bool included(const dao::Recordset& customer);

/// Name, street and town on three lines that begin at `x`, from the current height down. A null column prints
/// as nothing.
void print_address(platform::Printer& printer, const dao::Recordset& customer, double x);

/// What a job for one customer is called in the queue: "Letter: Ann Smith".
std::string customer_job(const std::string& what, const dao::Recordset& customer);

} // namespace tolva::printing
