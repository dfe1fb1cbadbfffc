#pragma once

#include "records/record_screen.h"

namespace tolva::records {

/// The people who may list a home or buy one: how warm they are, when they come into the market, and the home
/// that they have or want.
class prospect : public RecordScreen {
  public:
    explicit prospect(module::Module& module);

    // --- The form ---

    platform::Frame f_homedesired{*this, "f_homedesired", "Home Information or Home Desired"};

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
    /// Masked boxes without a mask: plain text of up to 20 characters.
    platform::TextBox homephone{*this, "homephone"};
    platform::TextBox workphone{*this, "workphone"};
    platform::TextBox cellphone{*this, "cellphone"};
    platform::TextBox fax{*this, "fax"};
    platform::TextBox employer{*this, "employer"};
    platform::TextBox birthday{*this, "birthday"};
    platform::TextBox co_birthday{*this, "co_birthday"};
    platform::TextBox email{*this, "email"};

    platform::TextBox dateacquired{*this, "dateacquired"};
    platform::TextBox dateinmarket{*this, "dateinmarket"};
    platform::ComboBox interestlevel{*this, "interestlevel"};
    platform::ComboBox prospectsource{*this, "prospectsource"};
    platform::ControlArray<platform::CheckBox> prospecttype{*this, "prospecttype", 2};

    platform::TextBox datelastcontact{*this, "datelastcontact"};
    platform::TextBox datenextcontact{*this, "datenextcontact"};
    platform::TextBox contacthistory{*this, "contacthistory", platform::TextBox::Kind::multi_line};
    platform::CheckBox includeinprinting{*this, "includeinprinting", "Include in Printing?"};

    platform::TextBox cities{*this, "cities"};
    platform::ComboBox construction{*this, "construction"};
    platform::TextBox subdivision{*this, "subdivision"};
    platform::TextBox streets{*this, "streets"};
    platform::TextBox squarefeet{*this, "squarefeet"};
    platform::TextBox rooms{*this, "rooms"};
    platform::TextBox bedrooms{*this, "bedrooms"};
    platform::TextBox bathrooms{*this, "bathrooms"};
    platform::ComboBox basement{*this, "basement"};
    platform::ComboBox garage{*this, "garage"};
    platform::TextBox acres{*this, "acres"};
    platform::TextBox price{*this, "price"};
    platform::ControlArray<platform::CheckBox> feature{*this, "feature", module::feature_count};
    platform::TextBox notes{*this, "notes", platform::TextBox::Kind::multi_line};

    // --- Buttons ---

    /// The date buttons: last contact, next contact, acquired, in market, birthday, co-birthday.
    platform::Button Command1{*this, "Command1", "D"};
    platform::Button Command2{*this, "Command2", "D"};
    platform::Button Command3{*this, "Command3", "D"};
    platform::Button Command4{*this, "Command4", "D"};
    platform::Button Command36{*this, "Command36", "D"};
    platform::Button Command37{*this, "Command37", "D"};

    platform::Button Command5{*this, "Command5", "&Close Prospect"};
    platform::Button Command6{*this, "Command6", "|<"};
    platform::Button Command7{*this, "Command7", "<"};
    platform::Button Command8{*this, "Command8", ">"};
    platform::Button Command9{*this, "Command9", ">|"};
    platform::Button Command10{*this, "Command10", "Search"};
    platform::Button Command11{*this, "Command11", "EXIT"};

    // --- Menus ---

    platform::MenuEntry m_file{*this, "m_file", "&File"};
    platform::MenuEntry m_newprospect{m_file, "m_newprospect", "New Prospect"};
    platform::MenuEntry m_searchprospect{m_file, "m_searchprospect", "Search for Prospect"};
    platform::MenuEntry m_saveprospect{m_file, "m_saveprospect", "Save Prospect"};
    platform::MenuEntry m_deleteprospect{m_file, "m_deleteprospect", "Delete Prospect"};
    platform::MenuEntry m_import{m_file, "m_import", "Import Prospects"};
    platform::MenuEntry m_exit{m_file, "m_exit", "Exit"};

    platform::MenuEntry m_print{*this, "m_print", "&Print"};
    platform::MenuEntry m_printprospect{m_print, "m_printprospect", "Print Prospect"};
    platform::MenuEntry m_printlist{m_print, "m_printlist", "Print List"};
    platform::MenuEntry m_printlabels{m_print, "m_printlabels", "Print Labels"};
    platform::MenuEntry m_printletters{m_print, "m_printletters", "Print Letter(s)"};

    platform::MenuEntry m_quicksearch{*this, "m_quicksearch", "&Quick Search"};
    platform::MenuEntry m_allprospects{m_quicksearch, "m_allprospects", "All Prospects"};
    platform::MenuEntry m_birthdays{m_quicksearch, "m_birthdays", "Birthdays"};
    platform::MenuEntry m_prospectstocontact{m_quicksearch, "m_prospectstocontact", "Prospects to Contact"};

    platform::MenuEntry m_followup{*this, "m_followup", "Follow &Up"};
    platform::MenuEntry m_schmes{m_followup, "m_schmes", "Schedule Message Reminder"};
    platform::MenuEntry m_schlet{m_followup, "m_schlet", "Schedule Letter"};
    platform::MenuEntry m_appointment{m_followup, "m_appointment", "Set Appointment"};

    void on_load() override;
    void rectoform() override;
    void createlists() override;
    /// The same routine under two names: the close flow runs both.
    void saveprospect() { savelisting(); }

  protected:
    void first_view() override;
    std::string quick_search_query() const override { return owners_search_query("city"); }
    void fill_new_record() override;
    void new_record_copied() override;
    void close_new_record() override;
    void fill_grid() override;

  private:
    void bind_views();
    void print_sheet();
    void show_all_prospects();
    void schedule_in_market();

    ContactFields contact() const { return {address, city, state, zip, homephone, cellphone, workphone}; }
};

} // namespace tolva::records
