#pragma once

#include "module/module.h"

namespace tolva::printing {

/// One customer to a page, with a return address. No menu leads here, and the selector between the two
/// layouts is never assigned, so neither runs from the button: meant.
class printaddress : public platform::Screen {
  public:
    static constexpr int return_lines = 8;

    explicit printaddress(module::Module& module);

    platform::TextBox r_x{*this, "r_x"};
    platform::TextBox r_y{*this, "r_y"};
    platform::TextBox a_x{*this, "a_x"};
    platform::TextBox a_y{*this, "a_y"};
    platform::ControlArray<platform::TextBox> returnaddress{*this, "returnaddress", return_lines};
    platform::Button Command1{*this, "Command1", "Print Sheets"};
    platform::Button Command2{*this, "Command2", "EXIT"};

    enum class Layout { none, listings, prospects };

    void on_load() override;

    /// The sheets of a layout, without the question.
    void print_sheets(Layout layout);

  private:
    void print_sheet(const dao::Recordset& customer, Layout layout);
    void print_return_lines(int from, int to, bool positioned);

    module::Module& module_;
};

} // namespace tolva::printing
