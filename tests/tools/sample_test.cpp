#include <algorithm>
#include <set>

#include "tools/table_rows.h"
#include "tools/tolva_data.h"

namespace tolva::tools {
namespace {

/// The made-up customers of one day.
class SampleDesk : public TolvaData {
  protected:
    static constexpr const char* day = "11/20/2026";
    static constexpr const char* today = "2026-11-20 00:00:00";

    std::string fill(const std::string& name) const {
        const std::string path = folder.file(name);
        std::filesystem::create_directory(path);
        for (const char* store : {"address", "database", "listings", "messagedata", "prospect", "sold"}) {
            const std::string schema = TOLVA_SOURCE_DIR "/delivery/schemas/" + std::string(store) + ".schema";
            output({"make", path + "/" + store + ".mdb", schema});
        }
        output({"load", path + "/database.mdb", "preference_table"},
               support::file_content(TOLVA_SOURCE_DIR "/delivery/rows/database.tsv"));
        const auto result = support::run_program({TOLVA_BUILD_DIR "/tolva-sample", path, day});
        EXPECT_EQ(result.code, 0) << result.err;
        return path;
    }

    TableRows query(const std::string& path, const std::string& store, const std::string& text) const {
        return TableRows(output({"query", path + "/" + store + ".mdb", text}));
    }
};

TEST_F(SampleDesk, IsSoundAndAsLargeAsASmallOffice) {
    const std::string path = fill("desk");
    const std::vector<std::pair<std::string, std::size_t>> sizes = {
        {"listings", 60}, {"prospect", 40}, {"sold", 40}, {"address", 30}};
    for (const auto& [store, rows] : sizes) {
        EXPECT_EQ(query(path, store, "select id from [table]").rows.size(), rows) << store;
        EXPECT_EQ(output({"check", path + "/" + store + ".mdb"}), "");
    }
    EXPECT_EQ(output({"check", path + "/messagedata.mdb", path + "/database.mdb"}), "");
}

TEST_F(SampleDesk, TheSameDayGivesTheSameCustomers) {
    const std::string first = fill("first"), second = fill("second");
    for (const char* store : {"listings", "prospect", "sold", "address", "messagedata"}) {
        EXPECT_TRUE(output({"dump", first + "/" + store + ".mdb", "table"}) ==
                    output({"dump", second + "/" + store + ".mdb", "table"}))
            << store;
    }
}

TEST_F(SampleDesk, CountersHoldTheLastIds) {
    const std::string path = fill("desk");
    const auto settings = query(path, "database", "select * from [preference_table]").row(0);
    const std::vector<std::pair<std::string, std::string>> counters = {{"listings", "listing_counter"},
                                                                       {"prospect", "prospect_counter"},
                                                                       {"sold", "sold_counter"},
                                                                       {"address", "address_counter"}};
    for (const auto& [store, counter] : counters) {
        const auto ids = query(path, store, "select id from [table]").column("id");
        int last = 0;
        for (const std::string& id : ids) {
            EXPECT_GT(std::stoi(id), last) << store;
            last = std::stoi(id);
        }
        EXPECT_GT(last, static_cast<int>(ids.size())) << store << " has no gap";
        EXPECT_EQ(settings.at(counter), std::to_string(last)) << store;
    }
}

TEST_F(SampleDesk, RemindersAreDueSinceYesterdayTodayAndLater) {
    const std::string path = fill("desk");
    const auto count = [&](const std::string& where) {
        return query(path, "messagedata",
                     "select * from [table] where messagetype<=4 and messageflag=false and " + where)
            .rows.size();
    };
    EXPECT_EQ(count("messagedate<#11/20/2026#"), 1u);
    EXPECT_GE(count("messagedate=#11/20/2026# and messagetime<=#12:10:00 AM#"), 2u);
    EXPECT_GE(count("messagedate=#11/20/2026# and messagetime>#5:00:00 PM#"), 3u);
    EXPECT_GE(count("messagedate>#11/20/2026#"), 20u);
    EXPECT_GE(query(path, "messagedata", "select * from [table] where messagetype>4").rows.size(), 6u);
}

TEST_F(SampleDesk, EveryMessageSpeaksOfACustomerThatIsThereAndOfALetterThatIs) {
    const std::string path = fill("desk");
    const auto ids = [&](const std::string& store) {
        const auto column = query(path, store, "select id from [table]").column("id");
        return std::set<std::string>(column.begin(), column.end());
    };
    const std::set<std::string> listings = ids("listings"), prospects = ids("prospect"), sold = ids("sold");
    const TableRows messages = query(path, "messagedata", "select * from [table]");
    for (std::size_t i = 0; i < messages.rows.size(); ++i) {
        const auto message = messages.row(i);
        const int type = std::stoi(message.at("messagetype"));
        const std::string customer = message.at("customerid");
        const bool known = type == 4                ? customer == "0"
                           : type == 1 || type == 5 ? listings.count(customer) > 0
                           : type == 2 || type == 6 ? prospects.count(customer) > 0
                                                    : sold.count(customer) > 0;
        EXPECT_TRUE(known) << "type " << type << ", customer " << customer;
        const std::string letter = message.at("letterpath");
        EXPECT_EQ(letter.empty(), type <= 4);
        if (!letter.empty()) {
            EXPECT_TRUE(std::filesystem::exists(TOLVA_SOURCE_DIR "/delivery/letters/" + letter)) << letter;
        }
    }
}

TEST_F(SampleDesk, ListingsRunOutAndBirthdaysFallAroundToday) {
    const std::string path = fill("desk");
    EXPECT_GE(query(path, "listings",
                    "select id from [table] where dateexpires between #11/20/2026# and #12/20/2026#")
                  .rows.size(),
              6u);
    EXPECT_GE(query(path, "listings", "select id from [table] where dateexpires < #11/20/2026#").rows.size(),
              2u);
    int birthdays = 0;
    for (const std::string& birthday :
         query(path, "listings", "select birthday from [table]").column("birthday"))
        birthdays += birthday != "\\N" && birthday.substr(4, 6) == std::string(today).substr(4, 6);
    EXPECT_GE(birthdays, 1);
}

TEST_F(SampleDesk, TownsAndZipCodesAreAmongTheDelivered) {
    const std::string path = fill("desk");
    const TableRows zips(support::file_content(TOLVA_SOURCE_DIR "/delivery/rows/zipcodes.tsv"));
    std::set<std::vector<std::string>> known(zips.rows.begin(), zips.rows.end());
    for (const char* store : {"listings", "prospect", "sold", "address"}) {
        for (const auto& place : query(path, store, "select city, state, zip from [table]").rows)
            EXPECT_TRUE(known.count(place)) << store << ": " << place[0] << " " << place[2];
    }
}

TEST_F(SampleDesk, NamesHoldWhatRealNamesHold) {
    const std::string path = fill("desk");
    std::string names;
    for (const char* store : {"listings", "prospect", "sold", "address"}) {
        const TableRows people = query(path, store, "select first, last from [table]");
        for (const auto& row : people.rows)
            names += row[0] + " " + row[1] + "\n";
    }
    for (const char* part : {"'", "-", "é", "ñ", "ö"})
        EXPECT_NE(names.find(part), std::string::npos) << part;
}

TEST_F(SampleDesk, WithoutFilesThereIsAClearFailure) {
    const auto result = support::run_program({TOLVA_BUILD_DIR "/tolva-sample", folder.file("nowhere")});
    EXPECT_EQ(result.code, 1);
    EXPECT_NE(result.err.find("listings.mdb"), std::string::npos) << result.err;
    EXPECT_EQ(support::run_program({TOLVA_BUILD_DIR "/tolva-sample"}).code, 2);
}

} // namespace
} // namespace tolva::tools
