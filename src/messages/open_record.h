#pragma once

#include <string>

#include "module/module.h"

namespace tolva::messages {

/// How one kind of customer is found and shown from outside its screen.
struct RecordWay {
    platform::Slot<module::RecordEntry>& screen;
    dao::Database& database;
    std::unique_ptr<dao::Recordset>& set;
    std::string& query;
    const char* order;
    const char* not_found;
};

/// The way to the customers of a kind: 1 listings, 2 prospects, 3 sold; nothing for any other.
std::optional<RecordWay> way_to(module::Module& module, double kind);

/// Opens the one record: empties the screen's grid (which loads a screen that wasn't, and takes its first
/// view), finds the id, fills the grid, shows the screen and has `open` take the row. Tells when there is no
/// such record. `keep_query` makes the query the screen's view.
void open_record(module::Module& module, const RecordWay& way, const std::string& id, bool keep_query,
                 void (module::RecordEntry::*open)());

} // namespace tolva::messages
