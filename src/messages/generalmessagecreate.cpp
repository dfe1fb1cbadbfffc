#include "messages/generalmessagecreate.h"

#include "basic/number.h"
#include "basic/run_time_error.h"
#include "basic/text.h"
#include "messages/message_kind.h"

namespace tolva::messages {

generalmessagecreate::generalmessagecreate(module::Module& module)
    : Screen(module.runtime, "generalmessagecreate", "Enter Message"), module_(module) {
    time1.text = "8:30 AM";
    customerid.text = "0";
    customerid.visible = false;
    Command1.on_click = [this] { unload(); };
    Command2.on_click = [this] { savemessage(); };
    Command3.on_click = [this] { Command3_Click(); };
}

void generalmessagecreate::on_load() {
    Month1.value = module_.today();
    time1.text = "8:30 AM";
    const auto kind = module_.messagekind;
    if (kind >= listing_reminder && kind <= general_reminder)
        showmessageboxes();
    if (kind >= listing_letter && kind <= last_letter)
        showletterboxes();
}

void generalmessagecreate::showmessageboxes() {
    Label1_1.visible = true;
    message1.visible = true;
    letterpath.visible = false;
    Command3.visible = false;
    message1.text.clear();
}

void generalmessagecreate::showletterboxes() {
    Label1_1.visible = false;
    message1.visible = false;
    letterpath.visible = true;
    Command3.visible = true;
    message1.text = "Sent Letter";
}

void generalmessagecreate::Command3_Click() {
    dlgCommonDialog.initial_folder = module_.appfolder + "\\letters";
    dlgCommonDialog.title = "Open";
    dlgCommonDialog.filter = "All Files (*.*)";
    dlgCommonDialog.show_open();
    if (!dlgCommonDialog.file_name.empty())
        letterpath.text = dlgCommonDialog.file_name;
}

void generalmessagecreate::savemessage() {
    try {
        auto& set = *module_.messageset;
        set.AddNew();
        // No number is drawn for messages: every row is 1, and the dialogs act on the first row of that
        // number.
        constexpr std::int64_t messageid = 1;
        // Nothing to do with the message, but it stamps the day, and the daily question rests on that.
        module_.savepreferences();
        set.write("messageid", messageid);
        set.write("messagetype", std::int64_t{module_.messagekind});
        set.write("customerid", basic::leading_number(customerid.text));
        set.write("messagetext", basic::trim(message1.text));
        set.write("messagedate", Month1.value);
        set.write("messagetime", basic::trim(time1.text));
        set.write("messageflag", false);
        set.write("letterpath", basic::trim(letterpath.text));
        set.Update();
        unload();
    } catch (const basic::RunTimeError&) {
        runtime().message("Error with Data", "Error Message");
    }
}

} // namespace tolva::messages
