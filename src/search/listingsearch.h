#pragma once

#include "search/criteria.h"

namespace tolva::search {

/// Criteria over the listings. A search is one more view of the listings screen.
class listingsearch : public platform::Screen {
  public:
    explicit listingsearch(module::Module& module);

    platform::TextBox last{*this, "last"};
    platform::TextBox first{*this, "first"};
    platform::TextBox businessname{*this, "businessname"};
    platform::TextBox city{*this, "city"};
    platform::TextBox state{*this, "state"};
    platform::TextBox phone{*this, "phone"};
    platform::TextBox employer{*this, "employer"};

    platform::TextBox listingaddress{*this, "listingaddress"};
    platform::TextBox listingcity{*this, "listingcity"};
    platform::TextBox datelisted1{*this, "datelisted1"};
    platform::TextBox datelisted2{*this, "datelisted2"};
    platform::TextBox dateexpires1{*this, "dateexpires1"};
    platform::TextBox dateexpires2{*this, "dateexpires2"};
    platform::TextBox datelastcontact1{*this, "datelastcontact1"};
    platform::TextBox datelastcontact2{*this, "datelastcontact2"};
    platform::TextBox datenextcontact1{*this, "datenextcontact1"};
    platform::TextBox datenextcontact2{*this, "datenextcontact2"};
    platform::TextBox listingprice1{*this, "listingprice1"};
    platform::TextBox listingprice2{*this, "listingprice2"};
    platform::TextBox mls{*this, "mls"};

    /// The date buttons, those of the lower bounds first.
    platform::Button Command1{*this, "Command1", "D"};
    platform::Button Command2{*this, "Command2", "D"};
    platform::Button Command3{*this, "Command3", "D"};
    platform::Button Command4{*this, "Command4", "D"};
    platform::Button Command5{*this, "Command5", "D"};
    platform::Button Command6{*this, "Command6", "D"};
    platform::Button Command7{*this, "Command7", "D"};
    platform::Button Command8{*this, "Command8", "D"};

    platform::Button Command9{*this, "Command9", "&Search"};
    platform::Button Command10{*this, "Command10", "&Clear Form"};
    platform::Button Command11{*this, "Command11", "E&XIT"};

  private:
    void Command9_Click();
    void Command10_Click();
    std::string compose() const;

    module::Module& module_;
};

} // namespace tolva::search
