#pragma once

#include "module/module.h"

namespace tolva::shell {

/// The modal month calendar behind the "D" buttons. It leaves the day in `chosendate`, or nothing. Its way
/// out works on a click and on merely receiving the focus, so nobody but the user gives it the focus.
class choosedate : public platform::Screen {
  public:
    explicit choosedate(module::Module& module);

    platform::MonthView MonthView1{*this, "MonthView1"};
    platform::Button Command1{*this, "Command1", "E&XIT"};

    void on_load() override;
    void on_unload() override;

  private:
    module::Module& module_;
    bool picked_ = false;
};

} // namespace tolva::shell
