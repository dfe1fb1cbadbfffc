#include "messages/generalmessage.h"

#include "basic/number.h"
#include "basic/run_time_error.h"
#include "basic/text.h"
#include "messages/generalmessagecreate.h"
#include "messages/message_kind.h"
#include "messages/open_record.h"
#include "module/shared_routines.h"

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
    const auto shown = [&](const char* column) { return module::shown_text(row.field(column)); };
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
    if (const auto way = way_to(module_, basic::leading_number(messagetype.text)))
        open_record(module_, *way, basic::trim(customerid.text), true, &module::RecordEntry::clickgrid);
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
