#pragma once

#include "module/module.h"

namespace tolva::messages {

/// Composes a row of the message store: a reminder (text) or a letter (file), by the shared `messagekind`.
/// Its `savemessage` is the only code that adds to the store; the record screens drive it unseen.
class generalmessagecreate : public platform::Screen {
  public:
    explicit generalmessagecreate(module::Module& module);

    platform::MonthView Month1{*this, "Month1"};
    platform::Frame Frame1{*this, "Frame1", "Time"};
    platform::TextBox time1{*this, "time1"};
    platform::Label Label1_0{*this, "Label1", "Click on Date", 0};
    /// Label1 item 1.
    platform::Label Label1_1{*this, "Label1", "Message", 1};
    platform::TextBox message1{*this, "message1", platform::TextBox::Kind::multi_line};
    platform::TextBox letterpath{*this, "letterpath"};
    platform::Button Command3{*this, "Command3", "Browse to Letter"};
    platform::TextBox customerid{*this, "customerid"};
    platform::Button Command2{*this, "Command2", "Save Message"};
    platform::Button Command1{*this, "Command1", "EXIT"};
    platform::CommonDialog dlgCommonDialog{*this, "dlgCommonDialog"};

    void on_load() override;

    void showmessageboxes();
    void showletterboxes();

    /// Adds the row as the controls and `messagekind` have it and unloads the screen. Any failure shows
    /// "Error with Data", stores nothing and leaves the screen open.
    void savemessage();

  private:
    void Command3_Click();

    module::Module& module_;
};

} // namespace tolva::messages
