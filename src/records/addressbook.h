#pragma once

#include "records/record_screen.h"

namespace tolva::records {

/// The general address book: names, addresses, telephones and notes. No dates, no tests, no follow-up;
/// nothing is cut, so a text that its column cannot hold fails in the store.
class addressbook : public RecordScreen {
  public:
    explicit addressbook(module::Module& module);

    // --- The form ---

    platform::TextBox first{*this, "first"};
    platform::TextBox middle{*this, "middle"};
    platform::TextBox last{*this, "last"};
    platform::TextBox businessname{*this, "businessname"};
    platform::TextBox address{*this, "address"};
    platform::TextBox city{*this, "city"};
    platform::TextBox state{*this, "state"};
    platform::TextBox zip{*this, "zip"};
    platform::TextBox homephone{*this, "homephone"};
    platform::TextBox workphone{*this, "workphone"};
    platform::TextBox cellphone{*this, "cellphone"};
    platform::TextBox fax{*this, "fax"};
    platform::TextBox email{*this, "email"};
    platform::TextBox notes{*this, "notes", platform::TextBox::Kind::multi_line};

    // --- Buttons ---

    platform::Button Command18{*this, "Command18", "Close Customer"};
    platform::Button Command3{*this, "Command3", "|<"};
    platform::Button Command4{*this, "Command4", "<"};
    platform::Button Command5{*this, "Command5", ">"};
    platform::Button Command6{*this, "Command6", ">|"};
    platform::Button Command1{*this, "Command1", "EXIT"};
    platform::Button Command2{*this, "Command2", "Search"};

    // --- Menus ---

    platform::MenuEntry m_file{*this, "m_file", "&File"};
    platform::MenuEntry m_new{m_file, "m_new", "New Address"};
    platform::MenuEntry m_search{m_file, "m_search", "Search for Addresses"};
    platform::MenuEntry m_delete{m_file, "m_delete", "Delete Address"};
    platform::MenuEntry m_save{m_file, "m_save", "Save Address"};
    platform::MenuEntry mimport{m_file, "mimport", "Import Addresses"};
    platform::MenuEntry m_exit{m_file, "m_exit", "Exit"};

    platform::MenuEntry m_print{*this, "m_print", "&Print"};
    platform::MenuEntry m_printaddress{m_print, "m_printaddress", "Print Address"};
    platform::MenuEntry m_printlist{m_print, "m_printlist", "Print List"};

    platform::MenuEntry m_quicksearch{*this, "m_quicksearch", "&Quick Search"};
    platform::MenuEntry m_alladdresses{m_quicksearch, "m_alladdresses", "All Addresses"};

    /// Opens the view before it sets the mode, and has no lists to fill.
    void on_load() override;
    void savecustomer() { savelisting(); }

  protected:
    void first_view() override;
    std::string quick_search_query() const override;
    void fill_grid() override;

  private:
    void print_sheet();
};

} // namespace tolva::records
