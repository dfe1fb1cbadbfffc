#pragma once

#include "records/record_screen.h"

namespace tolva::records {

/// The current listings: sellers, their property and the contract. Closing a new listing schedules the
/// reminders that bring the customer back.
class listings : public RecordScreen {
  public:
    explicit listings(module::Module& module);

    // --- The form ---

    platform::Frame f_customerinfo{*this, "f_customerinfo", "Listing Information"};
    platform::Frame f_listinginfo{*this, "f_listinginfo", "Property Particulars"};

    platform::TextBox first{*this, "first"};
    platform::TextBox middle{*this, "middle"};
    platform::TextBox last{*this, "last"};
    platform::TextBox co_first{*this, "co_first"};
    platform::TextBox co_middle{*this, "co_middle"};
    platform::TextBox co_last{*this, "co_last"};
    platform::TextBox businessname{*this, "businessname"};
    platform::TextBox address{*this, "address"};
    platform::TextBox city{*this, "city"};
    platform::TextBox state{*this, "state"};
    platform::TextBox zip{*this, "zip"};
    platform::TextBox homephone{*this, "homephone"};
    platform::TextBox workphone{*this, "workphone"};
    platform::TextBox cellphone{*this, "cellphone"};
    platform::TextBox fax{*this, "fax"};
    platform::TextBox employer{*this, "employer"};
    platform::TextBox birthday{*this, "birthday"};
    platform::TextBox co_birthday{*this, "co_birthday"};
    platform::TextBox email{*this, "email"};

    platform::TextBox listingaddress{*this, "listingaddress"};
    platform::TextBox listingcity{*this, "listingcity"};
    platform::TextBox listingstate{*this, "listingstate"};
    platform::TextBox listingzip{*this, "listingzip"};
    platform::TextBox legaldescription{*this, "legaldescription"};
    platform::TextBox yearbuilt{*this, "yearbuilt"};
    platform::TextBox citytaxes{*this, "citytaxes"};
    platform::TextBox countytaxes{*this, "countytaxes"};
    platform::TextBox squarefeet{*this, "squarefeet"};
    platform::TextBox rooms{*this, "rooms"};
    platform::TextBox bedrooms{*this, "bedrooms"};
    platform::TextBox bathrooms{*this, "bathrooms"};
    platform::ComboBox basement{*this, "basement"};
    platform::ComboBox garage{*this, "garage"};
    platform::TextBox lotx{*this, "lotx"};
    platform::TextBox loty{*this, "loty"};
    platform::TextBox acres{*this, "acres"};
    platform::TextBox subdivision{*this, "subdivision"};
    platform::ComboBox construction{*this, "construction"};

    platform::TextBox mls{*this, "mls"};
    platform::TextBox datelisted{*this, "datelisted"};
    platform::TextBox dateexpires{*this, "dateexpires"};
    platform::ComboBox listingsource{*this, "listingsource"};
    platform::TextBox listingprice{*this, "listingprice"};
    platform::TextBox commission{*this, "commission"};

    platform::TextBox datelastcontact{*this, "datelastcontact"};
    platform::TextBox datenextcontact{*this, "datenextcontact"};
    platform::TextBox contacthistory{*this, "contacthistory", platform::TextBox::Kind::multi_line};
    platform::CheckBox includeinprinting{*this, "includeinprinting", "Include in Printing?"};
    platform::TextBox notes{*this, "notes", platform::TextBox::Kind::multi_line};

    // --- Buttons ---

    /// The date buttons: last contact, next contact, listed, expires, birthday, co-birthday.
    platform::Button Command1{*this, "Command1", "D"};
    platform::Button Command2{*this, "Command2", "D"};
    platform::Button Command3{*this, "Command3", "D"};
    platform::Button Command4{*this, "Command4", "D"};
    platform::Button Command36{*this, "Command36", "D"};
    platform::Button Command37{*this, "Command37", "D"};

    platform::Button Command5{*this, "Command5", "&Close Listing"};
    platform::Button Command6{*this, "Command6", "|<"};
    platform::Button Command7{*this, "Command7", "<"};
    platform::Button Command8{*this, "Command8", ">"};
    platform::Button Command9{*this, "Command9", ">|"};
    platform::Button Command10{*this, "Command10", "EXIT"};
    platform::Button Command11{*this, "Command11", "Search"};

    // --- Menus ---

    platform::MenuEntry m_file{*this, "m_file", "&File"};
    platform::MenuEntry m_newlisting{m_file, "m_newlisting", "&New Listing"};
    platform::MenuEntry m_searchlisting{m_file, "m_searchlisting", "&Search for Listing"};
    platform::MenuEntry m_savelisting{m_file, "m_savelisting", "&Save Listing"};
    platform::MenuEntry m_deletelisting{m_file, "m_deletelisting", "&Delete Listing"};
    platform::MenuEntry miport{m_file, "miport", "Import Listings"};
    platform::MenuEntry m_exit{m_file, "m_exit", "E&xit"};

    platform::MenuEntry m_print{*this, "m_print", "&Print"};
    platform::MenuEntry m_printlisting{m_print, "m_printlisting", "Print &Listing"};
    platform::MenuEntry m_printlistings{m_print, "m_printlistings", "Print &List"};
    platform::MenuEntry m_printlabels{m_print, "m_printlabels", "Print &Labels"};
    platform::MenuEntry m_printletter{m_print, "m_printletter", "Print &Letter(s)"};

    platform::MenuEntry m_quicksearch{*this, "m_quicksearch", "&Quick Search"};
    platform::MenuEntry m_thismonth{m_quicksearch, "m_thismonth", "This Month"};
    platform::MenuEntry m_lastmonth{m_quicksearch, "m_lastmonth", "Last Month"};
    platform::MenuEntry m_yeartodate{m_quicksearch, "m_yeartodate", "Year to Date"};
    platform::MenuEntry m_alllistings{m_quicksearch, "m_alllistings", "All Listings"};
    platform::MenuEntry m_expiringlistings{m_quicksearch, "m_expiringlistings", "&Expiring Listings"};
    platform::MenuEntry m_birthdays{m_quicksearch, "m_birthdays", "&Birthdays"};
    platform::MenuEntry m_customerstocontact{m_quicksearch, "m_customerstocontact", "&Customers to Contact"};

    platform::MenuEntry m_followup{*this, "m_followup", "Follow &Up"};
    platform::MenuEntry m_schmess{m_followup, "m_schmess", "Schedule Message Reminder"};
    platform::MenuEntry m_schlet{m_followup, "m_schlet", "Schedule Letter"};
    platform::MenuEntry m_appointment{m_followup, "m_appointment", "Set &Appointment"};

  protected:
    void first_view() override;
    std::string quick_search_query() const override { return owners_search_query("city"); }
    void fill_new_record() override;
    void close_new_record() override;

  private:
    void datelisted_LostFocus();
    void bind_views();
    void print_sheet();
    FollowUpView birthdays_view() const;
    FollowUpView contacts_view() const;
    FollowUpView expiring_view() const;
    void schedule_expiry();
    std::string expiry_text(const std::string& heading) const;

    ContactFields contact() const { return {address, city, state, zip, homephone, cellphone, workphone}; }
};

} // namespace tolva::records
