#pragma once

#include "module/module.h"

namespace tolva::search {

/// Adds a city to the zip codes, through whatever set the last lookup left. Nothing is tested.
class zipcode : public platform::Screen {
  public:
    explicit zipcode(module::Module& module);

    platform::TextBox zcity{*this, "zcity"};
    platform::TextBox zstate{*this, "zstate"};
    platform::TextBox zzip{*this, "zzip"};

    platform::Button Command1{*this, "Command1", "Add"};
    platform::Button Command2{*this, "Command2", "Clear"};
    platform::Button Command3{*this, "Command3", "EXIT"};

  private:
    void Command1_Click();

    module::Module& module_;
};

} // namespace tolva::search
