#include "messages/generalmessage.h"

#include "basic/number.h"
#include "basic/run_time_error.h"
#include "basic/text.h"
#include "messages/generalmessagecreate.h"
#include "messages/message_kind.h"

namespace tolva::messages {

generalmessage::generalmessage(module::Module& module)
    : Screen(module.runtime, "generalmessage", "Message"), module_(module) {
    messageid.visible = false;
    messagetype.text = "0";
    messagetype.visible = false;
    customerid.text = "0";
    customerid.visible = false;
    Command3.visible = false;
    Command1.on_click = [this] { Command1_Click(); };
    Command2.on_click = [this] { Command2_Click(); };
    Command3.on_click = [this] { Command3_Click(); };
}

void generalmessage::fill(const dao::Recordset& row) {
    const auto shown = [&](const char* column) {
        const dao::FieldValue value = row.field(column);
        return value.is_null() ? std::string() : basic::trim(value.text());
    };
    messagedate.caption = shown("messagedate");
    messagetime.caption = shown("messagetime");
    messagetext.text = shown("messagetext");
    customerid.text = shown("customerid");
    messageid.caption = shown("messageid");
    messagetype.text = shown("messagetype");

    // A sold customer's reminder has no button, though the action below would know the way.
    const double kind = basic::leading_number(messagetype.text);
    if (kind == listing_reminder) {
        Command3.visible = true;
        Command3.caption = "View Customer";
        Command3.enabled = module_.listings.exists();
    } else if (kind == prospect_reminder) {
        Command3.visible = true;
        Command3.caption = "View Prospect";
        Command3.enabled = module_.prospect.exists();
    }
}

void generalmessage::open_by_id() {
    module_.messageset = module_.messagedb->OpenRecordset("Select * from [table] where messageid = " +
                                                          basic::trim(messageid.caption));
}

void generalmessage::Command1_Click() {
    open_by_id();
    module_.messageset->Delete();
    unload();
}

void generalmessage::Command2_Click() {
    open_by_id();
    module_.messageset->Delete();
    // The load runs under whatever kind was set last, and the new row gets it: neither the kind nor the
    // customer is carried over. With EXIT in the compose dialog the message is gone.
    auto& compose = module_.generalmessagecreate();
    compose.show();
    compose.letterpath.visible = false;
    compose.Command3.visible = false;
    compose.time1.text = basic::trim(messagetime.caption);
    compose.Month1.value = module_.to_date(messagedate.caption);
    compose.message1.text = basic::trim(messagetext.text);
    unload();
}

void generalmessage::Command3_Click() {
    const struct {
        MessageKind kind;
        platform::Slot<module::RecordEntry>& screen;
        dao::Database& database;
        std::unique_ptr<dao::Recordset>& set;
        std::string& query;
        const char* order;
        const char* not_found;
    } ways[] = {
        {listing_reminder, module_.listings, *module_.listingdb, module_.listingset, module_.listingquery,
         " order by datelisted, last, first", "That Listing Does Not Exist"},
        {prospect_reminder, module_.prospect, *module_.prospectdb, module_.prospectset, module_.prospectquery,
         " order by dateacquired, last, first", "That Prospect Does Not Exist"},
        {sold_reminder, module_.sold, *module_.solddb, module_.soldset, module_.soldquery,
         " order by datesold, last, first", "That Customer Does Not Exist"},
    };
    const double kind = basic::leading_number(messagetype.text);
    for (const auto& way : ways) {
        if (kind != way.kind)
            continue;
        // Emptying the grid loads a screen that wasn't: it takes the first-load flag and the long caption.
        way.screen->cleargrid();
        way.query = "select * from [table] where id=" + basic::trim(customerid.text) + way.order;
        way.set = way.database.OpenRecordset(way.query);
        if (way.set->RecordCount() < 1) {
            runtime().message(way.not_found, "Message");
            return;
        }
        way.screen->creategrid("normal");
        way.screen->show();
        way.screen->clickgrid();
    }
}

void generalmessage::on_unload() {
    try {
        open_by_id();
        if (module_.messageset->field("messageflag").yes_no())
            module_.messageset->Delete();
    } catch (const basic::RunTimeError&) {
        // "Delete Message" may have left no row to read: closing is silent.
    }
}

} // namespace tolva::messages
