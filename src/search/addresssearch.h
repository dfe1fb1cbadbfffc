#pragma once

#include "search/criteria.h"

namespace tolva::search {

/// Criteria over the address book. It hides where the other searches unload, so it keeps its fields.
class addresssearch : public platform::Screen {
  public:
    explicit addresssearch(module::Module& module);

    platform::TextBox last{*this, "last"};
    platform::TextBox first{*this, "first"};
    platform::TextBox businessname{*this, "businessname"};
    platform::TextBox city{*this, "city"};
    platform::TextBox state{*this, "state"};
    platform::TextBox phone{*this, "phone"};
    platform::TextBox notes{*this, "notes"};

    platform::Button Command1{*this, "Command1", "&Search"};
    platform::Button Command2{*this, "Command2", "&Clear Form"};
    platform::Button Command3{*this, "Command3", "E&XIT"};

    bool on_close() override;

  private:
    void Command1_Click();
    void leave();
    std::string compose() const;

    module::Module& module_;
};

} // namespace tolva::search
