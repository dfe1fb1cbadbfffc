#include "shell/form1.h"

#include "letters/followupletters.h"
#include "messages/generalmessagecreate.h"
#include "messages/message_kind.h"
#include "messages/planner.h"
#include "messages/poll.h"
#include "shell/instructions.h"

namespace tolva::shell {

Form1::Form1(module::Module& module)
    : Screen(module.runtime, "Form1", "TOLVA: Tolva Agent Desk"), module_(module) {
    bind_screen(Command9, module_.listings);
    bind_screen(Command3, module_.prospect);
    bind_screen(Command7, module_.sold);
    bind_screen(Command1, module_.addressbook);
    bind_screen(Command10, module_.preferences);
    bind_screen(Command4, module_.paymentcalculator);
    bind_screen(Command6, module_.graph);
    if (module_.planner.exists())
        Command2.on_click = [this] {
            module_.planner().show();
            module_.planner().open_day(module_.today());
        };
    Command11.on_click = [this] {
        module_.messagekind = messages::general_reminder;
        module_.generalmessagecreate().show();
    };
    Command12.on_click = [this] { messages::show_todays_messages(module_, MTimer1); };
    Command13.on_click = [this] { messages::print_todays_messages(module_); };
    Command14.on_click = [this] { module_.followupletters().printfollowupletters(); };
    if (module_.frmMain.exists())
        Command5.on_click = [this] { module_.openwordprocessor(); };
    Command8.on_click = [this] { runtime().end(); };

    if (module_.instructions.exists()) {
        mviewinstr.on_click = [this] { module_.instructions().show_document("TOLVA_Documentation.rtf"); };
        mviewtutorial.on_click = [this] { module_.instructions().show_document("TOLVA_Tutorial.rtf"); };
    }
    m_changeprinter.on_click = [this] { runtime().choose_printer(); };
    m_version.on_click = [this] { runtime().message("TOLVA 1.0 Build Date 11/23/05", ""); };
    MTimer1.on_timer = [this] { MTimer1_Timer(); };
}

void Form1::on_load() {
    module_.messageset = module_.messagedb->OpenRecordset("Select * from [table]");
    MTimer1.enabled = true;
    MTimer1.interval = 1;
    messages::pollmessages(module_, MTimer1);
}

void Form1::on_unload() {
    runtime().end();
}

void Form1::MTimer1_Timer() {
    messages::pollmessages(module_, MTimer1);
    // Once a day, at the first tick after midnight: saving stamps the day, and whatever saved earlier today
    // has stamped it already.
    if (!(module_.settings.lastdate < module_.today()))
        return;
    module_.savepreferences();
    if (module_.confirm("Print Follow Up Letters?") == 1)
        module_.followupletters().printfollowupletters();
}

} // namespace tolva::shell
