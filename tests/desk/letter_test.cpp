#include <gtest/gtest.h>

#include "letters/merge.h"
#include "support/customers.h"
#include "support/desk.h"

namespace tolva {
namespace {

using basic::make_date;
using module::LetterMode;
using support::customer;
using support::Customer;
using support::Desk;
using support::letter_of;
using Texts = std::vector<std::string>;

/// A desk with the letter screen, and a record screen's store to fill.
class Letter : public testing::Test {
  protected:
    Letter() {
        desk.start();
        desk.module().settings.salespersonname = "Pat Agent";
    }

    letters::letter& screen() { return static_cast<letters::letter&>(desk.module().letter()); }
    records::listings& listings() { return desk.listings(); }
    records::prospect& prospects() { return static_cast<records::prospect&>(desk.module().prospect()); }
    records::sold& sales() { return static_cast<records::sold&>(desk.module().sold()); }

    void add_listing(const Customer& values) {
        Desk::add(*desk.module().listingdb,
                  customer(values, {{"id", ++last_id}, {"datelisted", make_date(2026, 11, 1)}}));
    }
    void add_prospect(const Customer& values) {
        Desk::add(*desk.module().prospectdb, customer(values, {{"id", ++last_id},
                                                               {"dateacquired", make_date(2026, 11, 1)},
                                                               {"interestlevel", std::string("Hot!")}}));
    }
    void add_sale(const Customer& values) {
        Desk::add(*desk.module().solddb, customer(values, {{"id", ++last_id},
                                                           {"datesold", make_date(2026, 11, 1)},
                                                           {"sellingprice", 1.0},
                                                           {"commission", 1.0},
                                                           {"expenses", 1.0},
                                                           {"netcommission", 1.0}}));
    }

    /// From the listings' grid or form to a letter screen with that letter in it.
    void open_for_list(const std::string& text) {
        desk.click(desk.menu().Command9);
        desk.choose(listings().m_printletter);
        load(letter_of(text));
    }
    void open_for_form(const std::string& text) {
        desk.click(desk.menu().Command9);
        desk.runtime().click_row(listings().grid1, 1);
        desk.choose(listings().m_printletter);
        load(letter_of(text));
    }
    void load(const std::string& source) {
        desk.host.file_to_open = desk.write_letter("letter.rtf", source);
        desk.click(screen().Command1);
    }
    void print_list() {
        desk.host.answers = {1};
        desk.click(screen().Command2);
    }
    /// What the letter of the one listing reads like.
    std::string printed_for(const Customer& values, const std::string& text) {
        add_listing(values);
        open_for_form(text);
        desk.click(screen().Command2);
        return only_page();
    }
    std::string only_page() {
        const auto& jobs = desk.host.recorded_printer.jobs;
        EXPECT_EQ(jobs.size(), 1u);
        return jobs.empty() || jobs[0].pages.empty() ? std::string() : jobs[0].pages[0].rich_text;
    }
    Texts pages() {
        Texts texts;
        for (const auto& job : desk.host.recorded_printer.jobs)
            for (const auto& page : job.pages)
                texts.push_back(page.rich_text);
        return texts;
    }

    Desk desk;
    std::int64_t last_id = 0;
};

// --- The way in ---

TEST_F(Letter, AFormIsSavedAheadOfItsLetter) {
    add_listing({{"first", "Ann"}});
    desk.click(desk.menu().Command9);
    desk.runtime().click_row(listings().grid1, 1);
    desk.type(listings().first, "Anna");
    desk.choose(listings().m_printletter);
    EXPECT_EQ(desk.module().lettermode, LetterMode::listing_form);
    EXPECT_EQ(desk.stored_listings()[0]["first"], "Anna");
    EXPECT_TRUE(screen().visible());
    EXPECT_FALSE(screen().modal());
}

TEST_F(Letter, EachScreenNamesItsListAndItsForm) {
    add_listing({});
    add_prospect({});
    add_sale({});
    desk.click(desk.menu().Command9);
    desk.choose(listings().m_printletter);
    EXPECT_EQ(desk.module().lettermode, LetterMode::listing_list);

    desk.click(desk.menu().Command3);
    desk.choose(prospects().m_printletters);
    EXPECT_EQ(desk.module().lettermode, LetterMode::prospect_list);
    desk.runtime().click_row(prospects().grid1, 1);
    desk.choose(prospects().m_printletters);
    EXPECT_EQ(desk.module().lettermode, LetterMode::prospect_form);

    desk.click(desk.menu().Command7);
    desk.choose(sales().m_printletters);
    EXPECT_EQ(desk.module().lettermode, LetterMode::sold_list);
    desk.runtime().click_row(sales().grid1, 1);
    desk.choose(sales().m_printletters);
    EXPECT_EQ(desk.module().lettermode, LetterMode::sold_form);
}

TEST_F(Letter, AnEmptyListHasNobodyToWriteTo) {
    desk.click(desk.menu().Command9);
    desk.click(desk.menu().Command3);
    desk.click(desk.menu().Command7);
    desk.choose(listings().m_printletter);
    desk.choose(prospects().m_printletters);
    desk.choose(sales().m_printletters);
    EXPECT_EQ(desk.host.box_texts(),
              (Texts{"No Active Listings", "No Active Prospects", "No Active Customers"}));
    for (const auto& box : desk.host.boxes)
        EXPECT_EQ(box.title, "Message");
    EXPECT_FALSE(desk.module().letter.loaded());
}

// --- The screen ---

TEST_F(Letter, TheScreenBeginsWithTheMarginsOfTheSettings) {
    desk.module().settings.tmargin = " 1.25 ";
    desk.module().settings.bmargin = "2";
    desk.module().settings.lmargin = "3";
    desk.module().settings.rmargin = "4";
    EXPECT_EQ(screen().caption, "Print Letters");
    EXPECT_EQ(screen().top_margin.text, "1.25");
    EXPECT_EQ(screen().bottom_margin.text, "2");
    EXPECT_EQ(screen().left_margin.text, "3");
    EXPECT_EQ(screen().right_margin.text, "4");
    EXPECT_EQ(screen().rtf1.content().text(), "Click Load Letter to Select");
    EXPECT_FALSE(screen().Command2.available());
}

TEST_F(Letter, LoadingAsksInTheLettersFolderAndEnablesPrinting) {
    desk.host.file_to_open = "";
    desk.click(screen().Command1);
    EXPECT_FALSE(screen().Command2.available());
    EXPECT_EQ(desk.module().letterfile, "");
    const auto& asked = desk.host.files_asked.at(0);
    EXPECT_EQ(asked.folder, desk.module().appfolder + "\\letters");
    EXPECT_EQ(asked.title, "Open");
    EXPECT_EQ(asked.filter, "All Files (*.*)");

    load(letter_of("Dear <firstname>,"));
    EXPECT_TRUE(screen().Command2.available());
    EXPECT_EQ(screen().rtf1.content().text(), "Dear <firstname>,");
    EXPECT_EQ(desk.module().letterfile, desk.host.file_to_open);
}

TEST_F(Letter, TheLoadedPathOutlivesTheScreenButIsNotShownAgain) {
    load(letter_of("a letter"));
    const std::string path = desk.module().letterfile;
    desk.click(screen().Command4);
    EXPECT_FALSE(desk.module().letter.loaded());
    EXPECT_EQ(desk.module().letterfile, path);
    EXPECT_EQ(screen().rtf1.content().text(), "Click Load Letter to Select");
    EXPECT_FALSE(screen().Command2.available());
}

TEST_F(Letter, LoadingEnablesPrintingEvenWithoutAPrinter) {
    desk.module().printerready = 0;
    EXPECT_FALSE(screen().Command2.available());
    load(letter_of("a letter"));
    EXPECT_TRUE(screen().Command2.available());
}

// --- Whole lists ---

TEST_F(Letter, ALetterWithoutTagsPrintsUnchangedOncePerIncludedRecord) {
    add_listing({{"first", "Ann"}});
    add_listing({{"first", "Bob"}});
    open_for_list("The office is closed on Monday.");
    print_list();
    const std::string text = "The office is closed on Monday.";
    EXPECT_EQ(pages(), (Texts{text, text}));
}

TEST_F(Letter, AListPassesOverThoseLeftOutInSilence) {
    add_listing({{"first", "Ann"}});
    add_listing({{"first", "Bob"}, {"includeinprinting", false}});
    add_listing({{"first", "Cid"}});
    open_for_list("Dear <firstname>");
    print_list();
    EXPECT_EQ(pages(), (Texts{"Dear Ann", "Dear Cid"}));
    EXPECT_EQ(desk.host.box_texts(), Texts{"Print Letters?"});
    EXPECT_EQ(desk.host.boxes[0].title, "Are You Sure?");
    EXPECT_TRUE(desk.module().listingset->Eof());
}

TEST_F(Letter, ALetterIsAJobOfItsOwnUnderTheCustomersName) {
    add_listing({{"first", "Ann"}, {"last", "Smith"}});
    add_listing({{"first", "Bob"}, {"last", "Jones"}});
    open_for_list("Dear <firstname>");
    print_list();
    const auto& jobs = desk.host.recorded_printer.jobs;
    ASSERT_EQ(jobs.size(), 2u);
    EXPECT_EQ(jobs[0].name, "Letter: Bob Jones");
    EXPECT_EQ(jobs[1].name, "Letter: Ann Smith");
    ASSERT_EQ(desk.host.works.size(), 1u);
    EXPECT_EQ(desk.host.works[0].steps, 2);
    EXPECT_TRUE(desk.host.works[0].over);
}

TEST_F(Letter, CancelAtTheQuestionPrintsNothing) {
    add_listing({});
    open_for_list("Dear <firstname>");
    desk.host.answers = {2};
    desk.click(screen().Command2);
    EXPECT_TRUE(desk.host.recorded_printer.jobs.empty());
}

TEST_F(Letter, ProspectsAndSalesAreWalkedInTheirOwnSets) {
    add_prospect({{"first", "Pia"}});
    add_sale({{"first", "Sam"}});
    desk.click(desk.menu().Command3);
    desk.choose(prospects().m_printletters);
    load(letter_of("Dear <firstname>"));
    print_list();
    desk.click(desk.menu().Command7);
    desk.choose(sales().m_printletters);
    print_list();
    EXPECT_EQ(pages(), (Texts{"Dear Pia", "Dear Sam"}));
}

// --- The record on the form ---

TEST_F(Letter, AFormPrintsAtOnce) {
    EXPECT_EQ(printed_for({{"first", "Ann"}}, "Dear <firstname>"), "Dear Ann");
    EXPECT_TRUE(desk.host.boxes.empty());
}

TEST_F(Letter, AFormThatIsLeftOutSaysSoAndPrintsNothing) {
    const Customer left_out = {{"includeinprinting", false}};
    add_listing(left_out);
    add_prospect(left_out);
    add_sale(left_out);
    open_for_form("Dear <firstname>");
    desk.click(screen().Command2);
    desk.click(desk.menu().Command3);
    desk.runtime().click_row(prospects().grid1, 1);
    desk.choose(prospects().m_printletters);
    desk.click(screen().Command2);
    desk.click(desk.menu().Command7);
    desk.runtime().click_row(sales().grid1, 1);
    desk.choose(sales().m_printletters);
    desk.click(screen().Command2);
    // A sold customer is a Prospect in it too.
    EXPECT_EQ(desk.host.box_texts(), (Texts{"This Customer has 'Include in Printing' set to False",
                                            "This Prospect has 'Include in Printing' set to False",
                                            "This Prospect has 'Include in Printing' set to False"}));
    EXPECT_TRUE(desk.host.recorded_printer.jobs.empty());
}

TEST_F(Letter, WhoseLetterItIsCountsWhenItIsPrinted) {
    add_listing({{"first", "Ann"}});
    add_prospect({{"first", "Pia"}});
    open_for_form("Dear <firstname>");
    desk.click(desk.menu().Command3);
    desk.runtime().click_row(prospects().grid1, 1);
    desk.choose(prospects().m_printletters);
    desk.click(screen().Command2);
    EXPECT_EQ(only_page(), "Dear Pia");
}

// --- Tags ---

TEST_F(Letter, EveryTagHasItsValueTrimmed) {
    const std::string text = printed_for(
        {
            {"first", " Ann "},
            {"last", "Smith"},
            {"co_first", "Bob"},
            {"co_last", "Jones"},
            {"homephone", "(555) 010-0199"},
            {"address", "1 Elm St"},
            {"city", "Salem"},
            {"state", "OR"},
            {"zip", "97301"},
            {"businessname", "Elm Works"},
        },
        "<firstname>|<lastname>|<cofirstname>|<colastname>|<phone>|<address>|<city>|<state>|<zip>|"
        "<businessname>|<salesperson>|<ps>|<bothnames>|<date>");
    EXPECT_EQ(text, "Ann|Smith|Bob|Jones|(555) 010-0199|1 Elm St|Salem|OR|97301|Elm Works|Pat Agent||Ann|"
                    "November 20, 2026");
}

TEST_F(Letter, ATagIsReplacedEachTimeAndInItsOwnLetterCaseOnly) {
    EXPECT_EQ(printed_for({{"first", "Ann"}}, "<firstname> <FirstName> <firstname>"), "Ann <FirstName> Ann");
}

TEST_F(Letter, TagsOfTheWordProcessorWithoutARuleStay) {
    EXPECT_EQ(printed_for({}, "<make> <model> <year>"), "<make> <model> <year>");
}

TEST_F(Letter, APostscriptIsTrimmedAndAnEmptyOneVanishes) {
    add_listing({});
    open_for_form("P.S. [<ps>]");
    desk.click(screen().Command2);
    desk.type(screen().ps, "  call me ");
    desk.click(screen().Command2);
    EXPECT_EQ(pages(), (Texts{"P.S. []", "P.S. [call me]"}));
}

TEST_F(Letter, ACoupleOfOneNameHasItsFirstNamesJoined) {
    EXPECT_EQ(printed_for({{"first", "Ann"}, {"last", "Smith"}, {"co_first", "Bob"}, {"co_last", "Smith"}},
                          "Dear <bothnames>,"),
              "Dear Ann & Bob,");
}

TEST_F(Letter, ACoupleOfTwoNamesHasTheFirstOneAlone) {
    EXPECT_EQ(printed_for({{"first", "Ann"}, {"last", "Smith"}, {"co_first", "Bob"}, {"co_last", "Jones"}},
                          "Dear <bothnames>,"),
              "Dear Ann,");
}

TEST_F(Letter, ACoupleOfOneNameWithoutTheSecondFirstNameKeepsTheTag) {
    EXPECT_EQ(printed_for({{"first", "Ann"}, {"last", "Smith"}, {"co_last", "Smith"}}, "Dear <bothnames>,"),
              "Dear <bothnames>,");
}

TEST_F(Letter, TwoEmptyLastNamesAreOneName) {
    EXPECT_EQ(printed_for({{"first", "Ann"}, {"co_first", "Bob"}}, "Dear <bothnames>,"), "Dear Ann & Bob,");
}

TEST_F(Letter, AValueThatHoldsALaterTagIsReplacedInItsTurn) {
    EXPECT_EQ(
        printed_for({{"first", "<lastname>"}, {"last", "<city>"}, {"city", "<firstname>"}}, "<firstname>"),
        "<firstname>");
}

TEST_F(Letter, ThePostscriptComesLateForListingsAndEarlyForTheOthers) {
    const Customer twisted = {{"businessname", "<ps>"}};
    add_listing(twisted);
    add_prospect(twisted);
    add_sale(twisted);
    open_for_form("<businessname>|<ps>");
    desk.type(screen().ps, "<businessname>");
    desk.click(screen().Command2);
    desk.click(desk.menu().Command3);
    desk.runtime().click_row(prospects().grid1, 1);
    desk.choose(prospects().m_printletters);
    desk.click(screen().Command2);
    desk.click(desk.menu().Command7);
    desk.runtime().click_row(sales().grid1, 1);
    desk.choose(sales().m_printletters);
    desk.click(screen().Command2);
    EXPECT_EQ(pages(), (Texts{"<businessname>|<businessname>", "<ps>|<ps>", "<ps>|<ps>"}));
}

TEST_F(Letter, ATagThatFormattingHasSplitPrintsAsItStands) {
    EXPECT_EQ(printed_for({{"first", "Ann"}}, "<first\\b name\\b0 > <firstname>"), "<firstname> Ann");
}

TEST_F(Letter, AccentsComeThrough) {
    EXPECT_EQ(
        printed_for({{"first", "Ren\u00e9e"}, {"last", "\u0141uk\u00e1cs"}}, "\\'c0 <firstname> <lastname>"),
        "\u00c0 Ren\u00e9e \u0141uk\u00e1cs");
}

TEST_F(Letter, AValueChangesTheMarkupAsItStands) {
    EXPECT_EQ(printed_for({{"first", "A\\par B"}, {"last", "{\\b C}"}}, "<firstname> <lastname>"),
              "A\r\nB C");
}

TEST_F(Letter, WhateverAValueDoesToTheMarkupThereIsALetterAndAFreshOneBehindIt) {
    const std::string values[] = {"}}}}",
                                  "{{{{",
                                  "\\",
                                  "\\bin99999999 x",
                                  "\\'",
                                  "{\\*\\fonttbl",
                                  "\\u-99999999",
                                  "{\\pict\\bin5 ab",
                                  "\\trowd\\cell\\row",
                                  "\\ud\\upr{",
                                  "\x01\x02"};
    for (const std::string& value : values)
        add_listing({{"first", value}});
    open_for_list("Dear <firstname>, good day.");
    print_list();
    EXPECT_FALSE(desk.host.error.has_value());
    EXPECT_EQ(desk.host.recorded_printer.jobs.size(), std::size(values));
    for (const std::string& page : pages())
        EXPECT_EQ(page.substr(0, 5), "Dear ");
    EXPECT_EQ(screen().rtf1.content().text(), "Dear <firstname>, good day.");
}

TEST_F(Letter, TheScreenShowsTheTagsAgainAfterwards) {
    printed_for({{"first", "Ann"}}, "Dear <firstname>,");
    EXPECT_EQ(screen().rtf1.content().text(), "Dear <firstname>,");
}

TEST_F(Letter, DatesAreSpelledOut) {
    EXPECT_EQ(letters::spelled_date(make_date(2026, 3, 7)), "March 7, 2026");
    EXPECT_EQ(letters::spelled_date(make_date(2026, 12, 31)), "December 31, 2026");
}

// --- Paper ---

TEST_F(Letter, MarginsAreReadAnewForEachLetter) {
    add_listing({});
    open_for_form("a letter");
    desk.click(screen().Command2);
    desk.type(screen().left_margin, "2.5 inches");
    desk.type(screen().top_margin, "0.5");
    desk.type(screen().bottom_margin, "3");
    desk.type(screen().right_margin, "none");
    desk.click(screen().Command2);
    const auto& jobs = desk.host.recorded_printer.jobs;
    ASSERT_EQ(jobs.size(), 2u);
    // The paper is 12240 by 15840, and 360 of each edge can't be printed on.
    const auto& first = jobs[0].pages[0].rich_place;
    EXPECT_EQ(first.left, 1440 - 360);
    EXPECT_EQ(first.top, 1440 - 360);
    EXPECT_EQ(first.right, 12240 - 1440 - 360);
    EXPECT_EQ(first.bottom, 15840 - 1440 - 360);
    const auto& second = jobs[1].pages[0].rich_place;
    EXPECT_EQ(second.left, 3600 - 360);
    EXPECT_EQ(second.top, 720 - 360);
    EXPECT_EQ(second.right, 12240 - 360);
    EXPECT_EQ(second.bottom, 15840 - 4320 - 360);
}

TEST_F(Letter, AnUnreadableMarginIsNoneAndLiesOutsideThePrintableEdge) {
    add_listing({});
    open_for_form("a letter");
    desk.type(screen().left_margin, "wide");
    desk.click(screen().Command2);
    EXPECT_EQ(desk.host.recorded_printer.jobs.at(0).pages.at(0).rich_place.left, -360);
}

// --- Failures ---

TEST_F(Letter, ANullInAMergedColumnEndsTheProgramEvenWithoutItsTag) {
    add_listing({{"first", "Ann"}, {"businessname", {}}});
    open_for_list("Dear <firstname>");
    print_list();
    ASSERT_TRUE(desk.host.error.has_value());
    EXPECT_EQ(desk.host.error->number, 94);
    EXPECT_TRUE(desk.host.ended);
    EXPECT_TRUE(desk.host.recorded_printer.jobs.empty());
}

TEST_F(Letter, ALetterThatHasVanishedEndsTheProgram) {
    add_listing({});
    open_for_form("a letter");
    std::filesystem::remove(desk.module().letterfile);
    desk.click(screen().Command2);
    ASSERT_TRUE(desk.host.error.has_value());
    EXPECT_EQ(desk.host.error->number, 53);
}

TEST_F(Letter, APrinterFailureEndsTheProgramAndTheWork) {
    add_listing({});
    add_listing({});
    open_for_list("a letter");
    desk.host.recorded_printer.failing_jobs = {2};
    print_list();
    ASSERT_TRUE(desk.host.error.has_value());
    EXPECT_EQ(desk.host.error->number, 482);
    EXPECT_EQ(desk.host.recorded_printer.jobs.size(), 1u);
    EXPECT_TRUE(desk.host.works.at(0).over);
}

} // namespace
} // namespace tolva
