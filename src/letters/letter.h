#pragma once

#include "module/module.h"
#include "platform/rich_text_box.h"

namespace tolva::letters {

/// Prints a letter document, merged with the customer on a record screen's form or with every one of its
/// list; whose is in `lettermode`, which is read only when the printing begins.
class letter : public platform::Screen {
  public:
    explicit letter(module::Module& module);

    platform::TextBox ps{*this, "ps"};
    platform::Frame Frame1{*this, "Frame1", "Margins"};
    platform::TextBox bottom_margin{*this, "bottom_margin"};
    platform::TextBox right_margin{*this, "right_margin"};
    platform::TextBox top_margin{*this, "top_margin"};
    platform::TextBox left_margin{*this, "left_margin"};
    platform::Button Command4{*this, "Command4", "E&xit"};
    platform::Button Command2{*this, "Command2", "&Print Letter"};
    platform::Button Command1{*this, "Command1", "&Load Letter"};
    platform::CommonDialog dlgCommonDialog{*this, "dlgCommonDialog"};
    platform::RichTextBox rtf1{*this, "rtf1", platform::RichTextBox::Kind::read_only};

    void on_load() override;

    /// Merges and prints the letter for the current row of the set that `lettermode` names. Error 53 when the
    /// letter's file has gone, 94 for a null in a merged column, 482 when the printer fails or the margins
    /// leave no room.
    void printletter();

  private:
    void Command1_Click();
    void Command2_Click();
    void print_for_list();
    void print_for_form(const char* left_out);
    void load_letter(const std::string& path);
    dao::Recordset& customers() const;

    module::Module& module_;
};

} // namespace tolva::letters
