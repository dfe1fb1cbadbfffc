#pragma once

#include <optional>

#include "records/record_screen.h"

namespace tolva::records {

/// Every home that the agent has sold: the customer, the property, who acted on either side, the money made.
/// Over the grid stand totals and averages of the rows on show.
class sold : public RecordScreen {
  public:
    explicit sold(module::Module& module);

    // --- The summary ---

    platform::ControlArray<platform::Frame> Frame9{*this, "Frame9", 2};
    platform::Label ttsold{*this, "ttsold", "0"};
    platform::Label ttsales{*this, "ttsales", "0"};
    platform::Label ttcom{*this, "ttcom", "0"};
    platform::Label ttexp{*this, "ttexp", "0"};
    platform::Label ttnet{*this, "ttnet", "0"};
    platform::Label aasales{*this, "aasales", "0"};
    platform::Label aacom{*this, "aacom", "0"};
    platform::Label aaexp{*this, "aaexp", "0"};
    platform::Label aanet{*this, "aanet", "0"};

    // --- The form ---

    platform::Frame f_customerinfo{*this, "f_customerinfo", "Sale Information"};
    platform::Frame f_listinginfo{*this, "f_listinginfo", "Property Sold"};

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
    /// Loaded, tested and used by the close flow, but never written.
    platform::TextBox birthday{*this, "birthday"};
    platform::TextBox co_birthday{*this, "co_birthday"};
    platform::TextBox email{*this, "email"};
    platform::ComboBox customersource{*this, "customersource"};
    platform::TextBox notes{*this, "notes", platform::TextBox::Kind::multi_line};
    platform::TextBox datelastcontact{*this, "datelastcontact"};
    platform::TextBox datenextcontact{*this, "datenextcontact"};
    platform::TextBox contacthistory{*this, "contacthistory", platform::TextBox::Kind::multi_line};
    platform::CheckBox includeinprinting{*this, "includeinprinting", "Include in Printing?"};

    platform::TextBox soldbusiness{*this, "soldbusiness"};
    platform::TextBox soldaddress{*this, "soldaddress"};
    platform::TextBox soldcity{*this, "soldcity"};
    platform::TextBox soldstate{*this, "soldstate"};
    platform::TextBox soldzip{*this, "soldzip"};
    platform::ComboBox construction{*this, "construction"};
    platform::TextBox squarefeet{*this, "squarefeet"};
    platform::TextBox bedrooms{*this, "bedrooms"};
    platform::TextBox bathrooms{*this, "bathrooms"};
    platform::ComboBox basement{*this, "basement"};
    platform::ComboBox garage{*this, "garage"};
    platform::TextBox lotx{*this, "lotx"};
    platform::TextBox loty{*this, "loty"};
    platform::TextBox acres{*this, "acres"};
    platform::TextBox datesold{*this, "datesold"};
    platform::ControlArray<platform::CheckBox> agency{*this, "agency", 3};
    platform::TextBox sellingprice{*this, "sellingprice"};
    platform::TextBox commissionrate{*this, "commissionrate"};
    platform::TextBox commission{*this, "commission"};
    platform::TextBox expenses{*this, "expenses"};
    platform::Label netcommission{*this, "netcommission", ""};
    platform::TextBox listingname{*this, "listingname"};
    platform::TextBox listingcompany{*this, "listingcompany"};
    platform::TextBox listingphone{*this, "listingphone"};
    platform::TextBox sellingname{*this, "sellingname"};
    platform::TextBox sellingcompany{*this, "sellingcompany"};
    platform::TextBox sellingphone{*this, "sellingphone"};

    // --- Buttons ---

    /// The date buttons: last contact, next contact, sold, birthday, co-birthday.
    platform::Button Command1{*this, "Command1", "D"};
    platform::Button Command2{*this, "Command2", "D"};
    platform::Button Command3{*this, "Command3", "D"};
    platform::Button Command36{*this, "Command36", "D"};
    platform::Button Command37{*this, "Command37", "D"};

    platform::Button Command4{*this, "Command4", "Search"};
    /// The listings' caption on this screen too.
    platform::Button Command5{*this, "Command5", "&Close Listing"};
    platform::Button Command6{*this, "Command6", "|<"};
    platform::Button Command7{*this, "Command7", "<"};
    platform::Button Command8{*this, "Command8", ">"};
    platform::Button Command9{*this, "Command9", ">|"};
    platform::Button Command10{*this, "Command10", "EXIT"};

    // --- Menus ---

    platform::MenuEntry m_file{*this, "m_file", "&File"};
    platform::MenuEntry m_newcustomer{m_file, "m_newcustomer", "&New Customer"};
    platform::MenuEntry m_searchcustomer{m_file, "m_searchcustomer", "&Search for Customer"};
    platform::MenuEntry m_deletecustomer{m_file, "m_deletecustomer", "&Delete Customer"};
    platform::MenuEntry m_import{m_file, "m_import", "Import Sold Properties"};
    platform::MenuEntry m_exit{m_file, "m_exit", "E&xit"};

    platform::MenuEntry m_print{*this, "m_print", "&Print"};
    platform::MenuEntry m_printcustomer{m_print, "m_printcustomer", "Print &Customer"};
    platform::MenuEntry m_printlist{m_print, "m_printlist", "Print &List"};
    platform::MenuEntry m_printlabels{m_print, "m_printlabels", "Print &Labels"};
    platform::MenuEntry m_printletters{m_print, "m_printletters", "Print &Letter(s)"};

    platform::MenuEntry m_quicksearch{*this, "m_quicksearch", "&Quick Search"};
    platform::MenuEntry m_soldthismonth{m_quicksearch, "m_soldthismonth", "Sold This Month"};
    platform::MenuEntry m_soldlastmonth{m_quicksearch, "m_soldlastmonth", "Sold Last Month"};
    platform::MenuEntry m_soldthisyear{m_quicksearch, "m_soldthisyear", "Sold this Year"};
    platform::MenuEntry m_allcustomers{m_quicksearch, "m_allcustomers", "&All Customers"};
    platform::MenuEntry m_birthdays{m_quicksearch, "m_birthdays", "&Birthdays"};
    platform::MenuEntry m_customerstocontact{m_quicksearch, "m_customerstocontact", "&Customers to Contact"};

    platform::MenuEntry m_followup{*this, "m_followup", "Follow &Up"};
    platform::MenuEntry m_schmess{m_followup, "m_schmess", "Schedule Message Reminder"};
    platform::MenuEntry m_schlet{m_followup, "m_schlet", "Schedule Letter"};
    platform::MenuEntry m_setappointment{m_followup, "m_setappointment", "Set &Appointment"};

    void cleargrid() override;
    void rectoform() override;

  protected:
    void first_view() override;
    std::string quick_search_query() const override { return owners_search_query("soldcity"); }
    void fill_new_record() override;
    std::string new_id_text() const override;
    void close_new_record() override;
    void fill_grid() override;
    void row_added(const dao::Recordset& row) override;

  private:
    void bind_views();
    void print_sheet();
    void work_out_net();
    void search_customer();

    ContactFields contact() const { return {address, city, state, zip, homephone, cellphone, workphone}; }

    /// The sums of the rows in the grid; a null among them makes its sum null.
    struct Totals {
        int rows = 0;
        std::optional<double> sales = 0, commission = 0, expenses = 0, net = 0;
    };
    Totals totals_;
};

} // namespace tolva::records
