#include "messages/poll.h"

#include "messages/generalmessage.h"

namespace tolva::messages {

namespace {

generalmessage& show_dialog(module::Module& module, platform::ShowMode mode) {
    auto screen = std::make_unique<generalmessage>(module);
    generalmessage& dialog = *screen;
    module.runtime.load(std::move(screen), [] {});
    dialog.show(mode);
    return dialog;
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
    module.messageset = module.messagedb->OpenRecordset(
        "Select * from [table] where messageflag = false and messagetype <=4 and messagedate = #" +
        module.today_text() + "# order by messagedate, messagetime");
    auto& set = *module.messageset;
    if (set.RecordCount() == 0) {
        module.runtime.message("No Messages Scheduled Today", "Message");
        return;
    }
    for (set.MoveFirst(); !set.Eof(); set.MoveNext())
        show_dialog(module, platform::ShowMode::activate).fill(set);
}

} // namespace tolva::messages
