#pragma once

#include <utility>
#include <vector>

#include "letters/merge.h"
#include "module/module.h"
#include "platform/rich_text_box.h"

namespace tolva::letters {

/// The follow-up run: prints every scheduled letter that has come due, stamps its customer's record and
/// empties the store of due letters. The screen is never shown; its rich text box is the run's working
/// buffer.
class followupletters : public platform::Screen {
  public:
    explicit followupletters(module::Module& module);

    platform::Button Command2{*this, "Command2", "EXIT"};
    platform::Button Command1{*this, "Command1", "Print Follow Up Letters"};
    platform::RichTextBox rtf1{*this, "rtf1", platform::RichTextBox::Kind::read_only};

    /// Both passes. The first failure inside a letter passes over that letter; a second one in the same run
    /// is not caught. Every due letter leaves the store, printed or not.
    void printfollowupletters();

    /// Each merges what is in `rtf1` with the current row of its customers' set and prints it between the
    /// margins of the settings. Errors as for a letter of the letter screen.
    void print_listing_letter();
    void print_prospect_letter();
    void print_sold_letter();

  private:
    struct Kind {
        int messagetype;
        dao::Database& database;
        std::unique_ptr<dao::Recordset>& set;
        void (followupletters::*print)();
    };

    /// The run's error trap: from the first letter on it is armed, and it is taken once.
    class Trap {
      public:
        void arm() { armed_ = true; }
        bool take() { return armed_ && !std::exchange(taken_, true); }

      private:
        bool armed_ = false;
        bool taken_ = false;
    };

    std::vector<Kind> kinds();
    /// The first pass; how many letters it counts.
    int print_all(dao::Recordset& messages);
    /// How many letters this message counts as.
    int print_due(const dao::Recordset& message, Trap& trap);
    void print_and_stamp(const Kind& kind, const dao::Recordset& message);
    void print_merged(const dao::Recordset& customer);

    module::Module& module_;
};

} // namespace tolva::letters
