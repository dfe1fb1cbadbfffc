#pragma once

#include "module/module.h"

namespace tolva::analysis {

/// The monthly payment of a mortgage from amount, rate and term.
class paymentcalculator : public platform::Screen {
  public:
    explicit paymentcalculator(module::Module& module);

    platform::TextBox amountfinanced{*this, "amountfinanced"};
    platform::TextBox interestrate{*this, "interestrate"};
    /// In years, whatever its name says.
    platform::TextBox terminmonths{*this, "terminmonths"};
    /// Never seen: "30" until the form is cleared, which empties it too. Meant.
    platform::TextBox daysuntilfirstpayment{*this, "daysuntilfirstpayment"};

    platform::Button Command2{*this, "Command2", "Calculate Payment"};
    platform::Button Command1{*this, "Command1", "&Clear Form"};
    platform::Button Command3{*this, "Command3", "EXIT"};

    void on_unload() override;

  private:
    void Command2_Click();

    module::Module& module_;
};

} // namespace tolva::analysis
