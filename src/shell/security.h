#pragma once

#include "module/module.h"

namespace tolva::shell {

/// The password gate, and the program's first screen: loading it opens the stores. Without password
/// protection it shows the main menu and is never seen itself.
class security : public platform::Screen {
  public:
    explicit security(module::Module& module);

    platform::TextBox password{*this, "password", platform::TextBox::Kind::password};
    platform::Button Command1{*this, "Command1", "&Continue"};
    platform::Button Command2{*this, "Command2", "E&XIT"};

    void on_load() override;
    void on_unload() override;

  private:
    void Command1_Click();
    void enter();

    module::Module& module_;
};

} // namespace tolva::shell
