#pragma once

#include "module/module.h"

namespace tolva::messages {

/// The dialog of one raised reminder; as many may be open as there are reminders.
class generalmessage : public platform::Screen {
  public:
    explicit generalmessage(module::Module& module);

    platform::Label Label3{*this, "Label3", "You Have a Message!"};
    platform::Label messagedate{*this, "messagedate", ""};
    platform::Label messagetime{*this, "messagetime", ""};
    platform::TextBox messagetext{*this, "messagetext", platform::TextBox::Kind::multi_line};
    platform::Label messageid{*this, "messageid", ""};
    platform::TextBox messagetype{*this, "messagetype"};
    platform::TextBox customerid{*this, "customerid"};
    platform::Button Command1{*this, "Command1", "Delete Message"};
    platform::Button Command2{*this, "Command2", "Re-Schedule Message"};
    platform::Button Command3{*this, "Command3", ""};

    /// Fills the dialog from the current row of the message set, and offers the way to the customer.
    void fill(const dao::Recordset& row);

    /// Closing consumes a raised message: it leaves the store.
    void on_unload() override;

  private:
    void Command1_Click();
    void Command2_Click();
    void Command3_Click();

    /// Every row of this dialog's number; the first one in the table's order is acted on, which need not be
    /// the one on show.
    void open_by_id();

    module::Module& module_;
};

} // namespace tolva::messages
