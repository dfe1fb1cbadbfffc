#include "messages/poll.h"

#include "messages/generalmessage.h"
#include "module/shared_routines.h"

namespace tolva::messages {

namespace {

generalmessage& show_dialog(module::Module& module, platform::ShowMode mode) {
    auto screen = std::make_unique<generalmessage>(module);
    generalmessage& dialog = *screen;
    module.runtime.load(std::move(screen), [] {});
    dialog.show(mode);
    return dialog;
}

/// Opens what has not yet risen today; says so and gives false when there is nothing.
bool open_todays_messages(module::Module& module) {
    module.messageset = module.messagedb->OpenRecordset(
        "Select * from [table] where messageflag = false and messagetype <=4 and messagedate = #" +
        module.today_text() + "# order by messagedate, messagetime");
    if (module.messageset->RecordCount() > 0)
        return true;
    module.runtime.message("No Messages Scheduled Today", "Message");
    return false;
}

} // namespace

void pollmessages(module::Module& module, platform::Timer& timer) {
    timer.enabled = true;
    const std::string today = module.today_text();
    module.messageset = module.messagedb->OpenRecordset(
        "Select * from [table] where messageflag = false and messagetype<=4 and ((messagedate < #" + today +
        "#) or (messagedate = #" + today + "# and messagetime <= #" + module.now_text() +
        "#))  order by messagedate, messagetime");
    auto& set = *module.messageset;
    if (set.RecordCount() == 0)
        return;
    for (set.MoveFirst(); !set.Eof(); set.MoveNext()) {
        set.Edit();
        set.write("messageflag", true);
        set.Update();
        show_dialog(module, platform::ShowMode::without_focus).fill(set);
    }
}

void show_todays_messages(module::Module& module, platform::Timer& timer) {
    timer.enabled = true;
    if (!open_todays_messages(module))
        return;
    auto& set = *module.messageset;
    for (set.MoveFirst(); !set.Eof(); set.MoveNext())
        show_dialog(module, platform::ShowMode::activate).fill(set);
}

void print_todays_messages(module::Module& module) {
    if (!open_todays_messages(module))
        return;
    constexpr float font_size = 10;
    platform::Printer& printer = module.printer();
    printer.job_name = "Messages for " + module.today_text();
    printer.FontBold = true;
    printer.FontUnderline = true;
    printer.FontName = "Arial";
    printer.FontSize = font_size;
    printer.Print("Messages for " + module.today_text());
    printer.FontBold = false;
    printer.FontUnderline = false;
    printer.Print("");
    auto& set = *module.messageset;
    const auto text = [&](const char* column) { return module::shown_text(set.field(column)); };
    for (set.MoveFirst(); !set.Eof(); set.MoveNext()) {
        printer.FontBold = true;
        printer.Print(text("messagetime"));
        printer.FontBold = false;
        printer.Print(text("messagetext"));
        printer.Print("");
    }
    printer.EndDoc();
}

} // namespace tolva::messages
