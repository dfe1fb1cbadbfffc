#pragma once

#include "module/module.h"
#include "platform/rich_text_box.h"

namespace tolva::shell {

/// The help documents, to read and to print. The caption is the same whichever is shown.
class instructions : public platform::Screen {
  public:
    explicit instructions(module::Module& module);

    platform::RichTextBox rtf1{*this, "rtf1", platform::RichTextBox::Kind::read_only};
    platform::CommonDialog CommonDialog1{*this, "CommonDialog1"};
    platform::Button Command1{*this, "Command1", "Print"};
    platform::Button Command2{*this, "Command2", "EXIT"};

    /// Brings the screen up with a document of the data folder in it. Error 53 when there is none, 321 when
    /// it is no rich text.
    void show_document(const std::string& name);

  private:
    void Command1_Click();

    module::Module& module_;
};

} // namespace tolva::shell
