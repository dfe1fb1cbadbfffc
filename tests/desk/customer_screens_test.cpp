#include <gtest/gtest.h>

#include "support/desk.h"

// What prospects, homes sold and addresses show and offer: each as a table, to be held against the listings'.

namespace tolva {
namespace {

using support::Desk;
using Names = std::vector<std::string>;

struct ScreenTable {
    const char* name;
    platform::Slot<module::RecordEntry> module::Module::*screen;
    Names in_grid, in_form;
    std::map<std::string, std::string> captions;
    /// Text and combo boxes that don't select their text, beside the ones that no record screen has so.
    Names not_selecting;
    int selecting;
    const char* new_record;
    const char* exit;
    const char* grid_caption;
};

const ScreenTable prospect_table{
    "prospect",
    &module::Module::prospect,
    {"f_customerlist", "Frame10", "Command11", "m_import", "m_newprospect", "m_searchprospect", "m_exit",
     "m_printlist", "m_printlabels", "m_quicksearch"},
    {"Command5", "Command6", "Command7", "Command8", "Command9", "m_deleteprospect", "m_saveprospect",
     "m_printprospect", "m_followup", "m_appointment"},
    {{"f_customerlist", "Prospects"},
     {"f_homedesired", "Home Information or Home Desired"},
     {"Frame10", "Quick Search"},
     {"Command5", "&Close Prospect"},
     {"Command6", "|<"},
     {"Command7", "<"},
     {"Command8", ">"},
     {"Command9", ">|"},
     {"Command11", "EXIT"},
     {"Command1", "D"},
     {"Command2", "D"},
     {"Command3", "D"},
     {"Command4", "D"},
     {"Command36", "D"},
     {"Command37", "D"},
     {"m_newprospect", "New Prospect"},
     {"m_import", "Import Prospects"},
     {"m_quicksearch", "&Quick Search"},
     {"m_allprospects", "All Prospects"},
     {"m_birthdays", "Birthdays"},
     {"m_prospectstocontact", "Prospects to Contact"},
     {"m_schmes", "Schedule Message Reminder"},
     {"m_schlet", "Schedule Letter"},
     {"m_appointment", "Set Appointment"},
     {"m_printprospect", "Print Prospect"},
     {"includeinprinting", "Include in Printing?"},
     {"prospecttype_0", "Listing Prospect"},
     {"prospecttype_1", "Buying Prospect"}},
    {"contacthistory", "notes"},
    37,
    "m_newprospect",
    "Command11",
    "Prospects"};

const ScreenTable sold_table{"sold",
                             &module::Module::sold,
                             {"f_customerlist", "Frame9_0", "Frame9_1", "Frame10", "Command10",
                              "m_newcustomer", "m_searchcustomer", "m_import", "m_exit", "m_printlist",
                              "m_printlabels", "m_quicksearch"},
                             {"Command5", "Command6", "Command7", "Command8", "Command9", "m_deletecustomer",
                              "m_printcustomer", "m_followup"},
                             {{"f_customerlist", "Sold Homes"},
                              {"f_customerinfo", "Sale Information"},
                              {"f_listinginfo", "Property Sold"},
                              {"Frame9_0", "Totals"},
                              {"Frame9_1", "Averages"},
                              {"Frame10", "Quick Search"},
                              {"Command4", "Search"},
                              {"Command5", "&Close Listing"},
                              {"Command6", "|<"},
                              {"Command7", "<"},
                              {"Command8", ">"},
                              {"Command9", ">|"},
                              {"Command10", "EXIT"},
                              {"Command1", "D"},
                              {"Command2", "D"},
                              {"Command3", "D"},
                              {"Command36", "D"},
                              {"Command37", "D"},
                              {"m_newcustomer", "&New Customer"},
                              {"m_searchcustomer", "&Search for Customer"},
                              {"m_deletecustomer", "&Delete Customer"},
                              {"m_import", "Import Sold Properties"},
                              {"m_quicksearch", "&Quick Search"},
                              {"m_soldthismonth", "Sold This Month"},
                              {"m_soldlastmonth", "Sold Last Month"},
                              {"m_soldthisyear", "Sold this Year"},
                              {"m_allcustomers", "&All Customers"},
                              {"m_birthdays", "&Birthdays"},
                              {"m_customerstocontact", "&Customers to Contact"},
                              {"m_schmess", "Schedule Message Reminder"},
                              {"m_schlet", "Schedule Letter"},
                              {"m_setappointment", "Set &Appointment"},
                              {"m_printcustomer", "Print &Customer"},
                              {"includeinprinting", "Include in Printing?"},
                              {"agency_0", "Listing Agent"},
                              {"agency_1", "Selling Agent"},
                              {"agency_2", "Listing && Selling Agent"}},
                             {"contacthistory", "notes"},
                             47,
                             "m_newcustomer",
                             "Command10",
                             "Sold Properties"};

const ScreenTable addressbook_table{
    "addressbook",
    &module::Module::addressbook,
    {"f_customerlist", "Command1", "Frame10", "mimport", "m_quicksearch", "m_new", "m_search", "m_exit",
     "m_printlist"},
    {"Command3", "Command4", "Command5", "Command6", "Command18", "m_delete", "m_save", "m_printaddress"},
    {{"f_customerlist", "Address List"},
     {"Frame10", "Quick Search"},
     {"Command1", "EXIT"},
     {"Command2", "Search"},
     {"Command3", "|<"},
     {"Command4", "<"},
     {"Command5", ">"},
     {"Command6", ">|"},
     {"Command18", "Close Customer"},
     {"m_file", "&File"},
     {"m_new", "New Address"},
     {"m_search", "Search for Addresses"},
     {"m_delete", "Delete Address"},
     {"m_save", "Save Address"},
     {"mimport", "Import Addresses"},
     {"m_exit", "Exit"},
     {"m_print", "&Print"},
     {"m_printaddress", "Print Address"},
     {"m_printlist", "Print List"},
     {"m_quicksearch", "&Quick Search"},
     {"m_alladdresses", "All Addresses"}},
    {"notes"},
    13,
    "m_new",
    "Command1",
    "Address Book"};

class CustomerScreens : public testing::TestWithParam<const ScreenTable*> {
  protected:
    CustomerScreens() {
        desk.start();
        screen().show();
    }
    records::RecordScreen& screen() {
        return static_cast<records::RecordScreen&>((desk.module().*table().screen)());
    }
    /// By the name under which the window has it, indexes included.
    platform::Control* find(const std::string& object_name) {
        for (platform::Control* control : screen().controls())
            if (control->object_name() == object_name)
                return control;
        return nullptr;
    }
    void choose(const char* entry) { desk.choose(dynamic_cast<platform::MenuEntry&>(*find(entry))); }
    static const ScreenTable& table() { return *GetParam(); }

    Desk desk;
};

TEST_P(CustomerScreens, EachModeShowsItsOwnAndHidesTheOthers) {
    const auto expect_shown = [&](const Names& names, bool shown) {
        for (const std::string& name : names) {
            const auto* control = find(name);
            ASSERT_TRUE(control) << name;
            EXPECT_EQ(control->visible, shown) << name;
        }
    };
    expect_shown(table().in_grid, true);
    expect_shown(table().in_form, false);
    screen().showformbuttons();
    expect_shown(table().in_grid, false);
    expect_shown(table().in_form, true);
    screen().gobacktogrid();
    EXPECT_TRUE(screen().f_customerlist.visible);
    screen().showgridbuttons();
    expect_shown(table().in_grid, true);
    expect_shown(table().in_form, false);
}

TEST_P(CustomerScreens, TheModesChangeNothingElse) {
    std::map<std::string, bool> before;
    const auto look = [&](auto&& each) {
        for (platform::Control* control : screen().controls()) {
            const auto listed = [&](const Names& names) {
                return std::find(names.begin(), names.end(), control->object_name()) != names.end();
            };
            if (!listed(table().in_grid) && !listed(table().in_form))
                each(*control);
        }
    };
    look([&](platform::Control& control) { before[control.object_name()] = control.visible; });
    screen().showformbuttons();
    look([&](platform::Control& control) {
        EXPECT_EQ(control.visible, before.at(control.object_name())) << control.object_name();
    });
}

TEST_P(CustomerScreens, ANewRecordHasNoNavigation) {
    choose(table().new_record);
    int navigation = 0;
    for (platform::Control* control : screen().controls())
        if (const auto* button = dynamic_cast<platform::Button*>(control))
            if (button->caption == "|<" || button->caption == "<" || button->caption == ">" ||
                button->caption == ">|") {
                EXPECT_FALSE(button->visible) << button->name();
                ++navigation;
            }
    EXPECT_EQ(navigation, 4);
    EXPECT_FALSE(screen().f_customerlist.visible);
}

TEST_P(CustomerScreens, BearTheirCaptions) {
    for (const auto& [name, caption] : table().captions) {
        const auto* control = find(name);
        ASSERT_TRUE(control) << name;
        if (const auto* button = dynamic_cast<const platform::Button*>(control)) {
            EXPECT_EQ(button->caption, caption) << name;
        } else if (const auto* entry = dynamic_cast<const platform::MenuEntry*>(control)) {
            EXPECT_EQ(entry->caption, caption) << name;
        } else if (const auto* frame = dynamic_cast<const platform::Frame*>(control)) {
            EXPECT_EQ(frame->caption, caption) << name;
        } else {
            EXPECT_EQ(dynamic_cast<const platform::CheckBox&>(*control).caption, caption) << name;
        }
    }
}

TEST_P(CustomerScreens, FieldsSelectTheirTextOnFocus) {
    Names exempt = {"sname", "scity", "id"};
    exempt.insert(exempt.end(), table().not_selecting.begin(), table().not_selecting.end());
    int selecting = 0;
    for (platform::Control* control : screen().controls()) {
        auto* box = dynamic_cast<platform::TextControl*>(control);
        if (!box)
            continue;
        box->text = "abc";
        const unsigned before = box->selection_wishes();
        desk.runtime().focus(*box);
        const bool selects = box->selection_wishes() != before;
        EXPECT_EQ(selects, std::find(exempt.begin(), exempt.end(), box->name()) == exempt.end())
            << box->name();
        selecting += selects;
        EXPECT_EQ(box->selection_length(), selects ? 3u : 0u) << box->name();
    }
    EXPECT_EQ(selecting, table().selecting);
}

TEST_P(CustomerScreens, AnEmptyViewHasABlankRowThatDoesNothing) {
    EXPECT_EQ(screen().grid1.Rows(), 2);
    for (int column = 0; column < 7; ++column) {
        EXPECT_EQ(screen().grid1.cell(1, column), "");
        EXPECT_EQ(screen().grid1.alignment(column), 1);
    }
    desk.runtime().click_row(screen().grid1, 1);
    EXPECT_TRUE(screen().f_customerlist.visible);
    EXPECT_FALSE(desk.host.error);
}

TEST_P(CustomerScreens, ExitUnloadsAndTheMenusExitOnlyHides) {
    screen().sname.text = "kept";
    choose("m_exit");
    EXPECT_FALSE(screen().visible());
    EXPECT_EQ(desk.host.shown.back().screen, "Form1");
    screen().show();
    EXPECT_EQ(screen().sname.text, "kept");
    desk.host.shown.clear();
    desk.click(dynamic_cast<platform::Button&>(*find(table().exit)));
    EXPECT_FALSE((desk.module().*table().screen).loaded());
    EXPECT_EQ(desk.host.shown.back().screen, "Form1");
    screen().show();
    EXPECT_EQ(screen().sname.text, "");
    EXPECT_EQ(screen().caption, table().grid_caption) << "the plain caption of a later load";
}

TEST_P(CustomerScreens, ADeclinedDeletionLeavesTheRecordOnTheForm) {
    choose(table().new_record);
    desk.host.answers = {2};
    for (const char* entry : {"m_deleteprospect", "m_deletecustomer", "m_delete"})
        if (find(entry))
            choose(entry);
    ASSERT_EQ(desk.host.boxes.size(), 1u);
    EXPECT_EQ(desk.host.boxes[0].title, "Are You Sure?");
    EXPECT_FALSE(screen().f_customerlist.visible);
}

TEST_P(CustomerScreens, CompleteACityAndGoOnToTheTelephone) {
    choose(table().new_record);
    auto& city = dynamic_cast<platform::TextBox&>(*find("city"));
    desk.type(city, " schenec ");
    desk.press_enter(city);
    EXPECT_EQ(city.text, "Schenectady");
    EXPECT_EQ(dynamic_cast<platform::TextBox&>(*find("state")).text, "NY");
    EXPECT_EQ(dynamic_cast<platform::TextBox&>(*find("zip")).text, "12301");
    EXPECT_EQ(screen().active_control, find("homephone"));
}

TEST_P(CustomerScreens, AQuoteInACityOrASearchTextBreaksTheQuery) {
    for (const char* box : {"city", "sname"}) {
        Desk other;
        other.start();
        auto& own = static_cast<records::RecordScreen&>((other.module().*table().screen)());
        own.show();
        auto& text = dynamic_cast<platform::TextBox&>(*own.find(box));
        other.type(text, "O'Fallon");
        constexpr int sold_search_key = 12;
        if (box == std::string("sname") && table().name == std::string("sold"))
            other.runtime().press_key(text, sold_search_key);
        else
            other.press_enter(text);
        ASSERT_TRUE(other.host.error) << box;
        EXPECT_EQ(other.host.error->number, 3075) << box;
    }
}

INSTANTIATE_TEST_SUITE_P(Screens, CustomerScreens,
                         testing::Values(&prospect_table, &sold_table, &addressbook_table),
                         [](const auto& instance) { return std::string(instance.param->name); });

} // namespace
} // namespace tolva
