#include "shell/instructions.h"

#include "basic/run_time_error.h"
#include "printing/page.h"

namespace tolva::shell {

instructions::instructions(module::Module& module)
    : Screen(module.runtime, "instructions", "Tolva Guide 4.0"), module_(module) {
    Command1.on_click = [this] { Command1_Click(); };
    Command2.on_click = [this] { unload(); };
}

void instructions::show_document(const std::string& name) {
    show();
    rtf1.change().load(module_.read_document(module_.appfolder + "/data/" + name));
}

/// Whatever fails on the way ends it silently.
void instructions::Command1_Click() {
    try {
        const platform::PrintScope scope = CommonDialog1.show_print(rtf1.content().sel_length() != 0);
        if (scope == platform::PrintScope::cancelled)
            return;
        platform::Printer& printer = module_.printer();
        printer.job_name = caption;
        // Opens the job.
        printer.Print("");
        printing::print_selection(printer, rtf1.content(), scope);
    } catch (const basic::RunTimeError&) {
    }
}

} // namespace tolva::shell
