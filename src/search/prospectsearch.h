#pragma once

#include "search/criteria.h"

namespace tolva::search {

/// Criteria over the prospects: a person, spans of dates, or a home by ranges, features and places. Every
/// home criterion looks at the prospect's column and at its twin, which nothing here fills.
class prospectsearch : public platform::Screen {
  public:
    explicit prospectsearch(module::Module& module);

    platform::TextBox last{*this, "last"};
    platform::TextBox first{*this, "first"};
    platform::TextBox businessname{*this, "businessname"};
    platform::TextBox city{*this, "city"};
    platform::TextBox state{*this, "state"};
    platform::TextBox phone{*this, "phone"};
    platform::TextBox employer{*this, "employer"};

    platform::TextBox cities{*this, "cities"};
    platform::ComboBox construction{*this, "construction"};
    platform::TextBox subdivision{*this, "subdivision"};
    platform::TextBox streets{*this, "streets"};
    platform::TextBox squarefeet1{*this, "squarefeet1"};
    platform::TextBox squarefeet2{*this, "squarefeet2"};
    platform::TextBox rooms1{*this, "rooms1"};
    platform::TextBox rooms2{*this, "rooms2"};
    platform::TextBox bedrooms1{*this, "bedrooms1"};
    platform::TextBox bedrooms2{*this, "bedrooms2"};
    platform::TextBox bathrooms1{*this, "bathrooms1"};
    platform::TextBox bathrooms2{*this, "bathrooms2"};
    platform::ComboBox basement{*this, "basement"};
    platform::ComboBox garage{*this, "garage"};
    platform::TextBox acres1{*this, "acres1"};
    platform::TextBox acres2{*this, "acres2"};
    platform::TextBox price1{*this, "price1"};
    platform::TextBox price2{*this, "price2"};
    platform::TextBox dateacquired1{*this, "dateacquired1"};
    platform::TextBox dateacquired2{*this, "dateacquired2"};
    platform::TextBox dateinmarket1{*this, "dateinmarket1"};
    platform::TextBox dateinmarket2{*this, "dateinmarket2"};
    platform::ComboBox prospectsource{*this, "prospectsource"};
    platform::TextBox datelastcontact1{*this, "datelastcontact1"};
    platform::TextBox datelastcontact2{*this, "datelastcontact2"};
    platform::TextBox datenextcontact1{*this, "datenextcontact1"};
    platform::TextBox datenextcontact2{*this, "datenextcontact2"};
    platform::ComboBox interestlevel{*this, "interestlevel"};
    platform::ControlArray<platform::CheckBox> prospecttype{*this, "prospecttype", 2};
    platform::ControlArray<platform::CheckBox> feature{*this, "feature", module::feature_count};

    /// The date buttons; only the first two work.
    platform::Button Command4{*this, "Command4", "D"};
    platform::Button Command5{*this, "Command5", "D"};
    platform::Button Command6{*this, "Command6", "D"};
    platform::Button Command7{*this, "Command7", "D"};
    platform::Button Command8{*this, "Command8", "D"};
    platform::Button Command9{*this, "Command9", "D"};
    platform::Button Command10{*this, "Command10", "D"};
    platform::Button Command11{*this, "Command11", "D"};

    platform::Button Command1{*this, "Command1", "Search"};
    platform::Button Command2{*this, "Command2", "Clear Form"};
    platform::Button Command3{*this, "Command3", "EXIT"};

    void on_load() override;

  private:
    void Command1_Click();
    void Command2_Click();
    std::string compose() const;

    module::Module& module_;
};

} // namespace tolva::search
