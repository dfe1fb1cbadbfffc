#pragma once

#include "module/module.h"

namespace tolva::messages {

/// Prepares an appointment with a customer: the message and the day. The slot or line is then chosen by a
/// double click on the planner.
class appointment : public platform::Screen {
  public:
    explicit appointment(module::Module& module);

    platform::TextBox apptmessage{*this, "apptmessage"};
    platform::MonthView Month1{*this, "Month1"};
    platform::Button Command1{*this, "Command1", "E&XIT w/o Setting Appointment"};

    void on_load() override;

  private:
    void Month1_DateClick(basic::Date date);

    module::Module& module_;
};

} // namespace tolva::messages
