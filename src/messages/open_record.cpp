#include "messages/open_record.h"

#include "messages/message_kind.h"

namespace tolva::messages {

std::optional<RecordWay> way_to(module::Module& module, double kind) {
    if (kind == listing_reminder)
        return RecordWay{module.listings,
                         *module.listingdb,
                         module.listingset,
                         module.listingquery,
                         " order by datelisted, last, first",
                         "That Listing Does Not Exist"};
    if (kind == prospect_reminder)
        return RecordWay{module.prospect,
                         *module.prospectdb,
                         module.prospectset,
                         module.prospectquery,
                         " order by dateacquired, last, first",
                         "That Prospect Does Not Exist"};
    if (kind == sold_reminder)
        return RecordWay{module.sold,
                         *module.solddb,
                         module.soldset,
                         module.soldquery,
                         " order by datesold, last, first",
                         "That Customer Does Not Exist"};
    return std::nullopt;
}

void open_record(module::Module& module, const RecordWay& way, const std::string& id, bool keep_query,
                 void (module::RecordEntry::*open)()) {
    module::RecordEntry& screen = way.screen();
    screen.cleargrid();
    const std::string query = "select * from [table] where id=" + id + way.order;
    if (keep_query)
        way.query = query;
    way.set = way.database.OpenRecordset(query);
    if (way.set->RecordCount() < 1) {
        module.runtime.message(way.not_found, "Message");
        return;
    }
    screen.creategrid("normal");
    screen.show();
    (screen.*open)();
}

} // namespace tolva::messages
