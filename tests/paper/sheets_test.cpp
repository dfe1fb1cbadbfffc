// The sheet of one record, from the menu of its screen to the page.

#include "desk_on_paper.h"

namespace tolva::desktop {
namespace {

using basic::make_date;
using Texts = std::vector<std::string>;

class PaperSheets : public DeskOnPaper {
  protected:
    static constexpr double sheet_size = 11;
    static constexpr double left = 15, right = 110, top = 15, middle = 85;

    /// What customers of all three kinds have.
    static Row person(const Row& own) {
        return support::customer({{"id", std::int64_t{1}},
                                  {"first", "Ann"},
                                  {"middle", "B."},
                                  {"last", "Archer"},
                                  {"co_first", "Carl"},
                                  {"co_middle", "D."},
                                  {"co_last", "Archer"},
                                  {"businessname", "Archer & Sons"},
                                  {"address", "12 Elm Way"},
                                  {"city", "Salem"},
                                  {"state", "OR"},
                                  {"zip", "97301"},
                                  {"homephone", "503 555-0101"},
                                  {"workphone", "503 555-0102"},
                                  {"cellphone", "503 555-0103"},
                                  {"fax", "503 555-0104"},
                                  {"employer", "City of Salem"},
                                  {"birthday", make_date(1961, 2, 3)},
                                  {"email", "ann@example.org"},
                                  {"construction", "Brick"},
                                  {"basement", "Full"},
                                  {"garage", "2 Car Attached"},
                                  {"datenextcontact", make_date(2026, 12, 1)}},
                                 own);
    }
    /// Prints the record after a first name was typed over the stored one, and gives the page.
    PrintedPage print(const RecordWindow& window) {
        platform::Screen& screen = open(window);
        open_row(screen, 1);
        type(QStringLiteral("Anna"));
        choose(screen, window.sheet);
        EXPECT_EQ(jobs().size(), 1U);
        const auto printed = pages();
        EXPECT_EQ(printed.size(), 1U);
        EXPECT_NEAR(printed.at(0).width, 12240, 1);
        EXPECT_NEAR(printed.at(0).height, 15840, 1);
        const auto stored = support::Desk::rows(*((*module).*window.store), "select * from [table]");
        EXPECT_EQ(stored.at(0).at("first"), "Ann") << "printing stores nothing";
        return printed.at(0);
    }
    static void expect_person(const PrintedPage& page, const std::string& heading) {
        expect_lines(page, left, top, sheet_size,
                     {heading, "Anna B. Archer", "Carl D. Archer", "Archer & Sons", "12 Elm Way",
                      "Salem, OR 97301", "", "Home Phone: 503 555-0101", "Work Phone: 503 555-0102",
                      "Cell Phone: 503 555-0103", "Fax: 503 555-0104", "Employer: City of Salem",
                      "Birthday: 2/3/1961", "Co-Seller Birthday:", "Email: ann@example.org"},
                     right);
    }
};

TEST_F(PaperSheets, OfAListingHasItsThreeBlocksInPlace) {
    add(listings_window, person({{"listingaddress", std::string("9 Oak Ave")},
                                 {"listingcity", std::string("Keizer")},
                                 {"listingstate", std::string("OR")},
                                 {"listingzip", std::string("97303")},
                                 {"legaldescription", std::string("Lot 4, Block 2")},
                                 {"subdivision", std::string("Oak Grove")},
                                 {"yearbuilt", std::string("1987")},
                                 {"squarefeet", std::string("1850")},
                                 {"rooms", std::string("8")},
                                 {"bedrooms", std::string("3")},
                                 {"bathrooms", std::string("2.5")},
                                 {"citytaxes", std::string("1200")},
                                 {"countytaxes", std::string("900")},
                                 {"lotx", std::string("80")},
                                 {"loty", std::string("120")},
                                 {"acres", std::string("0.22")},
                                 {"datelisted", make_date(2026, 11, 2)},
                                 {"dateexpires", make_date(2027, 5, 1)},
                                 {"listingsource", std::string("Sign")},
                                 {"listingprice", 245000.0},
                                 {"commission", 6.5},
                                 {"mls", std::string("M-4711")}}));
    const PrintedPage page = print(listings_window);
    expect_person(page, "Seller");
    expect_lines(page, left, middle, sheet_size,
                 {"Property Particulars", "Address: 9 Oak Ave", "Keizer, OR 97303", "Construction: Brick",
                  "Legal: Lot 4, Block 2", "Subdivision: Oak Grove", "Year Built: 1987", "Square Feet: 1850",
                  "# Rooms:8", "# Bedrooms: 3", "Bathrooms: 2.5", "Basement: Full", "Garage: 2 Car Attached",
                  "City Tax: $1200", "County Tax: $900", "Lot X-Y: 80 X 120", "Acres: 0.22"});
    expect_lines(page, right, top, sheet_size,
                 {"Listing Particulars", "Date Listed: 11/2/2026", "Date Expires: 5/1/2027",
                  "Listing Source: Sign", "Listing Price: $245000", "Commission: 6.5%",
                  "Date Last Contact: 11/1/2026", "Date Next Contact: 12/1/2026", "MLS #: M-4711"});
    EXPECT_EQ(jobs().at(0), "0001 Listing_ Anna Archer.pdf");
}

TEST_F(PaperSheets, OfAProspectEndsWithTheFeaturesWanted) {
    add(prospect_window, person({{"cities", std::string("Salem, Keizer")},
                                 {"subdivision", std::string("Oak Grove")},
                                 {"streets", std::string("Elm")},
                                 {"squarefeet", 1800.0},
                                 {"rooms", 7.0},
                                 {"bedrooms", 3.0},
                                 {"bathrooms", 1.5},
                                 {"acres", 0.5},
                                 {"price", 230000.0},
                                 {"dateacquired", make_date(2026, 11, 2)},
                                 {"dateinmarket", make_date(2027, 1, 15)},
                                 {"prospectsource", std::string("Friend")},
                                 {"interestlevel", std::string("Hot!")},
                                 {"prospecttype1", true},
                                 {"feature0", true},
                                 {"feature21", true}}));
    const PrintedPage page = print(prospect_window);
    expect_person(page, "Customer");
    expect_lines(page, left, middle, sheet_size,
                 {"Home Information or Home Desired", "Cities Desired: Salem, Keizer", "Construction: Brick",
                  "Subs Desired: Oak Grove", "Streets: Elm", "Square Feet: 1800", "# Rooms:7",
                  "# Bedrooms: 3", "Bathrooms: 1.5", "Basement: Full", "Garage: 2 Car Attached", "Acres: 0.5",
                  "Price Desired: $230000"},
                 right);
    const auto& features = module->settings.features;
    expect_lines(page, right, top, sheet_size,
                 {"Prospect Particulars", "Date Acquired: 11/2/2026", "Date in Market: 1/15/2027",
                  "Prospect Source: Friend", "Interest Level: Hot!", "Buying Prospect",
                  "Date Last Contact: 11/1/2026", "Date Next Contact: 12/1/2026", "", "Features",
                  features.front(), features.back(), ""});
    EXPECT_EQ(jobs().at(0), "0001 Prospect_ Anna Archer.pdf");
}

TEST_F(PaperSheets, OfASaleTellsTheMoneyAndBothAgents) {
    add(sold_window, person({{"soldaddress", std::string("9 Oak Ave")},
                             {"soldcity", std::string("Keizer")},
                             {"soldstate", std::string("OR")},
                             {"soldzip", std::string("97303")},
                             {"squarefeet", 1850.0},
                             {"bedrooms", 3.0},
                             {"bathrooms", 2.5},
                             {"lotx", 80.0},
                             {"loty", 120.0},
                             {"acres", 0.22},
                             {"datesold", make_date(2026, 11, 2)},
                             {"customersource", std::string("Sign")},
                             {"sellingprice", 240000.0},
                             {"commissionrate", 6.0},
                             {"commission", 14400.0},
                             {"expenses", 400.0},
                             {"netcommission", 14000.0},
                             {"agency2", true},
                             {"listingname", std::string("Lee Lister")},
                             {"listingcompany", std::string("Lister Homes")},
                             {"listingphone", std::string("503 555-0110")},
                             {"sellingname", std::string("Sue Seller")},
                             {"sellingcompany", std::string("Seller Homes")},
                             {"sellingphone", std::string("503 555-0120")}}));
    const PrintedPage page = print(sold_window);
    expect_person(page, "Seller");
    expect_lines(page, left, middle, sheet_size,
                 {"Property Sold",
                  "Business Name: Archer & Sons",
                  "Address: 9 Oak Ave",
                  "Keizer, OR 97303",
                  "Construction: Brick",
                  "Square Feet: 1850",
                  "Bedrooms: 3",
                  "Bathrooms: 2.5",
                  "Basement: Full",
                  "Garage: 2 Car Attached",
                  "Lot X-Y: 80 X 120",
                  "Acres: 0.22",
                  "Date Sold: 11/2/2026",
                  "Customer Source: Sign",
                  "",
                  "Money Made",
                  "Selling Price: $240000",
                  "Commission Rate: 6",
                  "Commission: $14400.00",
                  "Expenses: $400.00",
                  "Net Commission: $14000.00"},
                 right);
    expect_lines(page, right, top, sheet_size,
                 {"You Are...", "Listing & Selling Agent", "", "Listing Agent (if not you)",
                  "Name: Lee Lister", "Company: Lister Homes", "Phone #: 503 555-0110", "",
                  "Selling Agent (if not you)", "Name: Sue Seller", "Company: Seller Homes",
                  "Phone #: 503 555-0120", "", "Date/Last Contact: 11/1/2026",
                  "Next Contact Date: 12/1/2026"});
    EXPECT_EQ(jobs().at(0), "0001 Home Sold_ Anna Archer.pdf");
}

TEST_F(PaperSheets, OfAnAddressBeginsInTheCornerOfThePage) {
    Row row;
    for (const char* column : {"first", "middle", "last", "businessname", "address", "city", "state", "zip",
                               "homephone", "workphone", "cellphone", "fax", "email", "id"})
        row[column] = person({}).at(column);
    add(address_window, row);
    const PrintedPage page = print(address_window);
    expect_lines(page, 0, 0, sheet_size,
                 {"Anna B. Archer", "Archer & Sons", "12 Elm Way", "Salem, OR 97301", "",
                  "Home Phone: 503 555-0101", "Work Phone: 503 555-0102", "Cell Phone: 503 555-0103",
                  "Fax: 503 555-0104", "Email: ann@example.org"});
    EXPECT_EQ(jobs().at(0), "0001 Address_ Anna Archer.pdf");
}

TEST_F(PaperSheets, HaveHeadingsInBoldWithARuleUnderThem) {
    if (!support::has_command("pdftoppm"))
        GTEST_SKIP() << "pdftoppm, which paints the pages, is not installed";
    add(listings_window, person({{"datelisted", make_date(2026, 11, 2)}}));
    const PrintedPage page = print(listings_window);
    const QImage picture = painted(0, 1);
    for (const char* heading : {"Seller", "Property", "Particulars"})
        EXPECT_TRUE(has_rule(picture, page.word(heading))) << heading;
    for (const char* plain : {"Anna", "Employer:", "Acres:", "MLS"})
        EXPECT_FALSE(has_rule(picture, page.word(plain))) << plain;
    const std::string fonts = support::run_program({"pdffonts", job_file(0)}).out;
    EXPECT_NE(fonts.find("-Bold"), std::string::npos) << fonts;
}

} // namespace
} // namespace tolva::desktop
