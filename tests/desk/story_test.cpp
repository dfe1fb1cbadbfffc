// The follow-up idea from end to end, over a desk that other programs made: the results are read back by a
// reader of the format that is none of ours.

#include <gtest/gtest.h>

#include <algorithm>

#include "basic/text.h"
#include "jet/check.h"
#include "support/desk.h"
#include "support/mdb_json.h"

namespace tolva {
namespace {

using support::Desk;
using support::JsonRow;

class Story : public testing::Test {
  protected:
    void SetUp() override {
        TOLVA_NEEDS_SAMPLE("desk/data/listings.mdb");
        TOLVA_NEEDS_MDB_JSON();
        desk = std::make_unique<Desk>(support::shared_sample("desk"));
        desk->start();
    }

    std::vector<JsonRow> read(const std::string& file, const std::string& table = "table") {
        return support::mdb_json(desk->data_file(file), table, desk->folder);
    }
    JsonRow find(const std::vector<JsonRow>& rows, const std::string& column, const std::string& value) {
        const auto row = std::find_if(rows.begin(), rows.end(), [&](const JsonRow& r) {
            const auto field = r.find(column);
            return field != r.end() && field->second == value;
        });
        return row == rows.end() ? JsonRow{} : *row;
    }
    /// Every file as its makers would still read it, and sound by our own check.
    void expect_sound_files() {
        for (const char* name : {"database.mdb", "listings.mdb", "address.mdb", "prospect.mdb", "sold.mdb",
                                 "zipcodes.mdb", "messagedata.mdb"}) {
            const auto file = jet::Database::open(*desk->disk, desk->data_file(name));
            EXPECT_EQ(jet::check(*file), std::vector<std::string>{}) << name;
        }
    }

    std::unique_ptr<Desk> desk;
};

TEST_F(Story, WhatIsDueRisesAtStartOldestFirstAndLeadsToItsRecord) {
    const auto dialogs = desk->dialogs();
    ASSERT_EQ(dialogs.size(), 6u);
    std::vector<std::string> dates;
    for (auto* dialog : dialogs)
        dates.push_back(dialog->messagedate.caption);
    EXPECT_EQ(dates, (std::vector<std::string>{"11/14/2026", "11/19/2026", "11/20/2026", "11/20/2026",
                                               "11/20/2026", "11/20/2026"}));
    desk->click(dialogs[1]->Command3);
    EXPECT_EQ(desk->host.box_texts(), std::vector<std::string>{"That Listing Does Not Exist"});
    desk->click(dialogs[0]->Command3);
    EXPECT_EQ(desk->listings().id.text, "44");
    const JsonRow stored = find(read("listings.mdb"), "id", "44");
    EXPECT_EQ(desk->listings().last.text, stored.at("last"));
}

TEST_F(Story, ANewListingIsStoredWhereItsMakersReadItWithItsReminders) {
    const std::size_t before = read("messagedata.mdb").size();
    desk->click(desk->menu().Command9);
    auto& screen = desk->listings();
    desk->choose(screen.m_newlisting);
    EXPECT_EQ(screen.id.text, "308");
    desk->type(screen.first, "Zoë");
    desk->type(screen.last, "O'Keefe-Núñez");
    desk->type(screen.city, "Schenec");
    desk->press_enter(screen.city);
    EXPECT_EQ(screen.state.text, "NY");
    desk->type(screen.listingprice, "245000");
    desk->type(screen.notes, "long story\r\n" + std::string(6000, '.'));
    desk->type(screen.birthday, "12/24/1960");
    desk->will_pick(2026, 11, 18);
    desk->click(screen.Command3);
    desk->runtime().focus(screen.datelisted);
    desk->click(screen.Command5);
    ASSERT_FALSE(desk->host.error) << desk->host.error->text;

    const JsonRow stored = find(read("listings.mdb"), "id", "308");
    EXPECT_EQ(stored.at("first"), "Zoë");
    EXPECT_EQ(stored.at("last"), "O'Keefe-Núñez");
    EXPECT_EQ(stored.at("city"), "Schenectady");
    EXPECT_EQ(stored.at("datelisted"), "2026-11-18 00:00:00");
    EXPECT_EQ(stored.at("dateexpires"), "2027-05-17 00:00:00");
    EXPECT_EQ(stored.at("notes"), "long story\r\n" + std::string(6000, '.'));
    EXPECT_EQ(stored.at("Flag"), "100");

    const auto messages = read("messagedata.mdb");
    EXPECT_EQ(messages.size(), before + 2 + 6);
    EXPECT_EQ(messages[before].at("messagedate"), "2027-04-17 00:00:00");
    EXPECT_EQ(messages[before].at("messagetime"), "1899-12-30 08:00:00");
    EXPECT_EQ(messages[before].at("customerid"), "308");
    EXPECT_EQ(messages[before + 2].at("messagedate"), "2026-12-24 00:00:00");
    EXPECT_EQ(read("database.mdb", "preference_table").at(0).at("listing_counter"), "308");

    // Months go by with the program closed; then the warning rises and leads back.
    desk->click(desk->menu().Command8);
    desk->restart();
    desk->clock.set({2027, 4, 17, 9, 0, 0});
    desk->start();
    messages::generalmessage* warning = nullptr;
    for (auto* dialog : desk->dialogs())
        if (dialog->customerid.text == "308" && dialog->messagedate.caption == "4/17/2027")
            warning = dialog;
    ASSERT_TRUE(warning);
    EXPECT_EQ(warning->messagetext.text.substr(0, 28), "LISTING EXPIRING IN 30 DAYS!");
    desk->click(warning->Command3);
    EXPECT_EQ(desk->listings().last.text, "O'Keefe-Núñez");
    desk->click(desk->menu().Command8);
    desk->restart();
    expect_sound_files();
}

TEST_F(Story, ScheduledLettersPrintStandInTheHistoryAndAreGone) {
    // Nine are due; three of their customers are gone.
    struct Expected {
        const char *file, *id, *greeting;
    };
    const Expected printed[] = {
        {"prospect.mdb", "29", "Dear Barbara,"}, {"sold.mdb", "38", "Dear Mark,"},
        {"listings.mdb", "93", "Dear Barbara,"}, {"prospect.mdb", "74", "Dear Linda & Jessica,"},
        {"listings.mdb", "123", "Dear Karen,"},  {"prospect.mdb", "133", "Dear Ashley and ,"},
    };
    std::vector<std::string> histories;
    for (const Expected& letter : printed) {
        const JsonRow row = find(read(letter.file), "id", letter.id);
        const auto history = row.find("contacthistory");
        histories.push_back(history == row.end() ? "" : basic::trim(history->second));
    }
    const std::size_t scheduled = read("messagedata.mdb").size();

    desk->click(desk->menu().Command14);
    EXPECT_EQ(desk->host.box_texts(), std::vector<std::string>{"6 Letters Printed"});
    const auto& jobs = desk->host.recorded_printer.jobs;
    ASSERT_EQ(jobs.size(), std::size(printed));
    for (std::size_t at = 0; at < jobs.size(); ++at) {
        const Expected& letter = printed[at];
        const JsonRow row = find(read(letter.file), "id", letter.id);
        const std::string& page = jobs[at].pages.at(0).rich_text;
        EXPECT_EQ(jobs[at].name, "Letter: " + row.at("first") + " " + row.at("last"));
        for (const std::string& words : {std::string("November 20, 2026"), std::string(letter.greeting),
                                         row.at("address"), row.at("city")})
            EXPECT_NE(page.find(words), std::string::npos) << words << "\nnot in\n" << page;
        EXPECT_EQ(row.at("contacthistory"), "11/20/2026: Sent Letter\r\n" + histories[at]);
        EXPECT_EQ(row.at("datelastcontact").substr(0, 10), "2026-11-20");
    }
    const auto left = read("messagedata.mdb");
    EXPECT_EQ(left.size(), scheduled - 9);
    for (const JsonRow& row : left)
        EXPECT_FALSE(std::stoi(row.at("messagetype")) > 4 && row.at("messagedate") < "2026-11-21");
    desk->click(desk->menu().Command8);
    desk->restart();
    expect_sound_files();
}

TEST_F(Story, AThousandEditsLeaveEveryFileSoundAndReadable) {
    desk->click(desk->menu().Command9);
    auto& screen = desk->listings();
    ASSERT_GT(screen.grid1.Rows(), 250);
    desk->runtime().click_row(screen.grid1, 1);
    for (int round = 0; round < 200; ++round) {
        screen.notes.text =
            "round " + std::to_string(round) + std::string(static_cast<std::size_t>(round % 7) * 900, 'n');
        screen.last.text = "Smith" + std::to_string(round % 13);
        desk->click(round % 3 ? screen.Command8 : screen.Command9);
        ASSERT_FALSE(desk->host.error) << desk->host.error->text;
        if (round % 50 == 49)
            desk->click(screen.Command6);
    }
    desk->click(desk->menu().Command8);
    desk->restart();
    expect_sound_files();
    EXPECT_EQ(read("listings.mdb").size(), 300u);
}

TEST_F(Story, EveryListingOpensAndSavesWithoutChangingWhatOthersWrote) {
    const auto before = read("listings.mdb");
    desk->click(desk->menu().Command9);
    auto& screen = desk->listings();
    desk->choose(screen.m_alllistings);
    const int rows = screen.grid1.Rows() - 1;
    desk->runtime().click_row(screen.grid1, 1);
    for (int row = 0; row < rows; ++row)
        desk->click(screen.Command8);
    ASSERT_FALSE(desk->host.error) << desk->host.error->text;
    const auto after = read("listings.mdb");
    ASSERT_EQ(after.size(), before.size());
    // A row that grew may have moved, and other readers meet it in another place.
    for (const JsonRow& old : before) {
        const JsonRow row = find(after, "id", old.at("id"));
        for (const auto& [column, value] : old) {
            const auto field = row.find(column);
            const std::string now = field == row.end() ? "" : field->second;
            // Outer blanks go, and numbers that were typed are shown only when above 0.
            EXPECT_TRUE(now == basic::trim(value) || (now.empty() && std::atof(value.c_str()) <= 0))
                << column << " of " << old.at("id") << ": \"" << value << "\" became \"" << now << '"';
        }
    }
}

} // namespace
} // namespace tolva
