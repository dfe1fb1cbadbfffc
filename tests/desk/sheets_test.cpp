#include <gtest/gtest.h>

#include "support/customers.h"
#include "support/desk.h"
#include "support/paper.h"

namespace tolva {
namespace {

using support::block;
using support::Desk;
using support::Printed;
using support::printed;

/// A desk with one screen in form mode, whose fields hold "=" and their names unless a test fills them.
class Sheets : public testing::Test {
  protected:
    Sheets() { desk.start(); }

    /// Fills every field that a sheet could show.
    static void fill(platform::Screen& screen) {
        for (platform::Control* control : screen.controls()) {
            if (auto* box = dynamic_cast<platform::TextControl*>(control))
                box->text = " =" + box->name() + " ";
            if (auto* box = dynamic_cast<platform::CheckBox*>(control))
                box->value = 0;
        }
    }
    /// The new record's shell is stored, and then the form is filled without saving.
    template <class Screen>
    Screen& form(platform::Button& button, platform::MenuEntry Screen::*new_record,
                 platform::Slot<module::RecordEntry>& slot) {
        desk.click(button);
        auto& screen = static_cast<Screen&>(slot());
        desk.choose(screen.*new_record);
        fill(screen);
        return screen;
    }
    records::listings& listing() {
        return form(desk.menu().Command9, &records::listings::m_newlisting, desk.module().listings);
    }
    records::prospect& prospect() {
        return form(desk.menu().Command3, &records::prospect::m_newprospect, desk.module().prospect);
    }
    records::sold& sale() {
        return form(desk.menu().Command7, &records::sold::m_newcustomer, desk.module().sold);
    }
    records::addressbook& address() {
        return form(desk.menu().Command1, &records::addressbook::m_new, desk.module().addressbook);
    }

    const support::RecordedPrinter::Page& only_page() {
        const auto& jobs = desk.host.recorded_printer.jobs;
        EXPECT_EQ(jobs.size(), 1u);
        EXPECT_EQ(jobs.at(0).pages.size(), 1u);
        return jobs.at(0).pages.at(0);
    }
    void expect_page(const std::vector<std::vector<Printed>>& blocks) {
        std::vector<Printed> expected;
        for (const auto& lines : blocks)
            expected.insert(expected.end(), lines.begin(), lines.end());
        EXPECT_EQ(printed(only_page()), expected);
        EXPECT_EQ(only_page().orientation, platform::Printer::portrait);
        EXPECT_TRUE(only_page().rules.empty());
        for (const auto& word : only_page().words)
            EXPECT_EQ(word.size, 11);
    }
    static std::vector<Printed> person(const std::string& heading) {
        return block(15, 15, 11,
                     {"#" + heading, "=first =middle =last", "=co_first =co_middle =co_last", "=businessname",
                      "=address", "=city, =state =zip", "", "Home Phone: =homephone",
                      "Work Phone: =workphone", "Cell Phone: =cellphone", "Fax: =fax", "Employer: =employer",
                      "Birthday: =birthday", "Co-Seller Birthday: =co_birthday", "Email: =email"});
    }

    Desk desk;
};

TEST_F(Sheets, OfAListingHaveEachLineAtItsPlace) {
    desk.choose(listing().m_printlisting);
    expect_page({
        person("Seller"),
        block(15, 85, 11,
              {"#Property Particulars", "Address: =listingaddress", "=listingcity, =listingstate =listingzip",
               "Construction: =construction", "Legal: =legaldescription", "Subdivision: =subdivision",
               "Year Built: =yearbuilt", "Square Feet: =squarefeet", "# Rooms:=rooms",
               "# Bedrooms: =bedrooms", "Bathrooms: =bathrooms", "Basement: =basement", "Garage: =garage",
               "City Tax: $=citytaxes", "County Tax: $=countytaxes", "Lot X-Y: =lotx X =loty",
               "Acres: =acres"}),
        block(110, 15, 11,
              {"#Listing Particulars", "Date Listed: =datelisted", "Date Expires: =dateexpires",
               "Listing Source: =listingsource", "Listing Price: $=listingprice", "Commission: =commission%",
               "Date Last Contact: =datelastcontact", "Date Next Contact: =datenextcontact", "MLS #: =mls"}),
    });
    EXPECT_EQ(desk.host.recorded_printer.jobs[0].name, "Listing: =first =last");
    EXPECT_TRUE(desk.host.boxes.empty());
}

TEST_F(Sheets, OfAProspectHaveEachLineAtItsPlace) {
    auto& screen = prospect();
    screen.prospecttype[0].value = 1;
    screen.prospecttype[1].value = 1;
    screen.feature[3].value = 1;
    screen.feature[21].value = 1;
    screen.feature[3].caption = "  A Pool ";
    desk.choose(screen.m_printprospect);
    expect_page({
        person("Customer"),
        block(15, 85, 11,
              {"#Home Information or Home Desired", "Cities Desired: =cities", "Construction: =construction",
               "Subs Desired: =subdivision", "Streets: =streets", "Square Feet: =squarefeet",
               "# Rooms:=rooms", "# Bedrooms: =bedrooms", "Bathrooms: =bathrooms", "Basement: =basement",
               "Garage: =garage", "Acres: =acres", "Price Desired: $=price"}),
        block(110, 15, 11,
              {"#Prospect Particulars", "Date Acquired: =dateacquired", "Date in Market: =dateinmarket",
               "Prospect Source: =prospectsource", "Interest Level: =interestlevel", "Listing Prospect",
               "Buying Prospect", "Date Last Contact: =datelastcontact",
               "Date Next Contact: =datenextcontact", "", "#Features", "A Pool", "Landscaping"}),
    });
}

TEST_F(Sheets, OfAProspectWithoutTypeOrFeaturesMoveUpAndEndAtTheHeading) {
    desk.choose(prospect().m_printprospect);
    const auto lines = printed(only_page());
    EXPECT_EQ(lines.back().text, "Features");
    EXPECT_EQ(lines.back().style, "bu");
    const auto expected = block(110, 15, 11,
                                {"#Prospect Particulars", "Date Acquired: =dateacquired",
                                 "Date in Market: =dateinmarket", "Prospect Source: =prospectsource",
                                 "Interest Level: =interestlevel", "Date Last Contact: =datelastcontact",
                                 "Date Next Contact: =datenextcontact", "", "#Features"});
    ASSERT_GE(lines.size(), expected.size());
    EXPECT_EQ(std::vector<Printed>(lines.end() - static_cast<std::ptrdiff_t>(expected.size()), lines.end()),
              expected);
}

TEST_F(Sheets, OfASaleHaveEachLineAtItsPlace) {
    auto& screen = sale();
    for (auto& box : screen.agency)
        box->value = 1;
    screen.netcommission.caption = " 12.50 ";
    desk.choose(screen.m_printcustomer);
    expect_page({
        person("Seller"),
        block(15, 85, 11,
              {"#Property Sold",
               "Business Name: =businessname",
               "Address: =soldaddress",
               "=soldcity, =soldstate =soldzip",
               "Construction: =construction",
               "Square Feet: =squarefeet",
               "Bedrooms: =bedrooms",
               "Bathrooms: =bathrooms",
               "Basement: =basement",
               "Garage: =garage",
               "Lot X-Y: =lotx X =loty",
               "Acres: =acres",
               "Date Sold: =datesold",
               "Customer Source: =customersource",
               "",
               "#Money Made",
               "Selling Price: $=sellingprice",
               "Commission Rate: =commissionrate",
               "Commission: $=commission",
               "Expenses: $=expenses",
               "Net Commission: $12.50"}),
        block(110, 15, 11,
              {"#You Are...", "Listing Agent", "Selling Agent", "Listing & Selling Agent", "",
               "#Listing Agent (if not you)", "Name: =listingname", "Company: =listingcompany",
               "Phone #: =listingphone", "", "#Selling Agent (if not you)", "Name: =sellingname",
               "Company: =sellingcompany", "Phone #: =sellingphone", "",
               "Date/Last Contact: =datelastcontact", "Next Contact Date: =datenextcontact"}),
    });
}

TEST_F(Sheets, OfAnAddressRunDownFromTheCornerOfThePage) {
    desk.choose(address().m_printaddress);
    expect_page({block(0, 0, 11,
                       {"=first =middle =last", "=businessname", "=address", "=city, =state =zip", "",
                        "Home Phone: =homephone", "Work Phone: =workphone", "Cell Phone: =cellphone",
                        "Fax: =fax", "Email: =email"})});
}

TEST_F(Sheets, ShowEditsThatAreNotStoredAndStoreNothing) {
    auto& screen = listing();
    desk.choose(screen.m_printlisting);
    EXPECT_EQ(printed(only_page())[1].text, "=first =middle =last");
    EXPECT_EQ(desk.stored_listings().at(0).at("first"), "");
}

TEST_F(Sheets, KeepTheLineOfAMissingCoOwner) {
    auto& screen = listing();
    for (platform::TextBox* box : {&screen.co_first, &screen.co_middle, &screen.co_last})
        box->text.clear();
    desk.choose(screen.m_printlisting);
    const auto lines = printed(only_page());
    EXPECT_EQ(lines[2].text, "  ");
    EXPECT_EQ(lines[3].text, "=businessname");
    EXPECT_GT(lines[3].y, lines[2].y);
}

TEST_F(Sheets, LetALongTextRunOnInItsLine) {
    auto& screen = listing();
    const std::string text(300, 'w');
    screen.legaldescription.text = text;
    desk.choose(screen.m_printlisting);
    const auto lines = printed(only_page());
    const auto legal = std::find_if(lines.begin(), lines.end(),
                                    [&](const auto& line) { return line.text == "Legal: " + text; });
    ASSERT_NE(legal, lines.end());
    EXPECT_EQ((legal + 1)->text, "Subdivision: =subdivision");
    EXPECT_EQ((legal + 1)->y, legal->y + 11 * 20 * 1.15F);
}

TEST_F(Sheets, HaveNoNotesAndNoHistory) {
    desk.choose(listing().m_printlisting);
    for (const auto& line : printed(only_page())) {
        EXPECT_EQ(line.text.find("=notes"), std::string::npos);
        EXPECT_EQ(line.text.find("=contacthistory"), std::string::npos);
    }
}

TEST_F(Sheets, ThatCannotBePrintedEndTheProgram) {
    auto& screen = listing();
    desk.host.recorded_printer.failing_jobs = {1};
    desk.choose(screen.m_printlisting);
    ASSERT_TRUE(desk.host.error.has_value());
    EXPECT_EQ(desk.host.error->number, 482);
}

} // namespace
} // namespace tolva
