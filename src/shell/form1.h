#pragma once

#include "module/module.h"

namespace tolva::shell {

/// The main menu. It stays open for the whole run; closing it ends the program at once, with nothing asked
/// and nothing saved. Its timer drives the reminders.
class Form1 : public platform::Screen {
  public:
    explicit Form1(module::Module& module);

    platform::Button Command9{*this, "Command9", "Current Listings"};
    platform::Button Command3{*this, "Command3", "Prospects"};
    platform::Button Command7{*this, "Command7", "Homes Sold"};
    platform::Button Command1{*this, "Command1", "Address Book"};
    platform::Button Command2{*this, "Command2", "Daily Planner && To Do List"};
    platform::Button Command11{*this, "Command11", "Schedule Message"};
    platform::Button Command12{*this, "Command12", "Show Today's Messages"};
    platform::Button Command13{*this, "Command13", "Print Today's Messages"};
    platform::Button Command14{*this, "Command14", "Print Scheduled Letters"};
    platform::Button Command5{*this, "Command5", "Word Processor"};
    platform::Button Command4{*this, "Command4", "Payment Calculator"};
    platform::Button Command6{*this, "Command6", "Graphs"};
    platform::Button Command10{*this, "Command10", "Preferences"};
    platform::Button Command8{*this, "Command8", "EXIT"};

    platform::Timer MTimer1{*this, "MTimer1"};
    platform::CommonDialog cd{*this, "cd"};

    platform::MenuEntry mfile{*this, "mfile", "&File"};
    platform::MenuEntry mviewinstr{mfile, "mviewinstr", "View &Instructions"};
    platform::MenuEntry mviewtutorial{mfile, "mviewtutorial", "View &Tutorial"};
    platform::MenuEntry m_changeprinter{mfile, "m_changeprinter", "Change Default &Printer"};
    platform::MenuEntry m_version{mfile, "m_version", "&Version & Build Date"};

    void on_load() override;
    void on_unload() override;

  private:
    void MTimer1_Timer();

    /// Binds a button to a screen, where the program has that screen.
    template <class T>
    void bind_screen(platform::Button& button, platform::Slot<T>& screen) {
        if (screen.exists())
            button.on_click = [&screen] { screen().show(); };
    }

    module::Module& module_;
};

} // namespace tolva::shell
