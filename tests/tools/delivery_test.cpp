#include <algorithm>
#include <set>
#include <sstream>

#include "tools/table_rows.h"
#include "tools/tolva_data.h"

namespace tolva::tools {
namespace {

const std::filesystem::path delivery = TOLVA_SOURCE_DIR "/delivery";

std::string delivered(const std::string& relative) {
    return support::file_content(delivery / relative);
}

std::vector<std::string> lines(const std::string& text) {
    std::vector<std::string> result;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
        result.push_back(line);
    return result;
}

/// The columns of a schema text, each as "name type" without the blanks between, and nothing else of it.
std::set<std::string> columns_of(const std::string& schema) {
    std::set<std::string> columns;
    for (const std::string& line : lines(schema)) {
        std::istringstream words(line);
        std::string column, word;
        while (words >> word)
            column += (column.empty() ? "" : " ") + word;
        if (!column.empty() && column[0] != '#' && column.rfind("table ", 0) != 0 &&
            column.rfind("index ", 0) != 0)
            columns.insert(column);
    }
    return columns;
}

using Delivery = TolvaData;

TEST_F(Delivery, EveryColumnOfAGrownDeskHasItsPlace) {
    TOLVA_NEEDS_SAMPLE("desk/data/listings.mdb");
    // Wider than in the files that are around, so that what the screens let through fits.
    std::set<std::string> wider = {"z_state text 2", "c_subdivision text 50", "mls text 50"};
    for (const char* setting :
         {"tmargin", "bmargin", "lmargin", "rmargin", "p_expire", "p_bday", "p_customer", "p_prospect",
          "p_inmarket", "p_sold", "labeladjust", "p_password", "salespersonname"})
        wider.insert(setting + std::string(" text 50"));
    for (const char* name :
         {"address", "database", "listings", "messagedata", "prospect", "sold", "zipcodes"}) {
        const std::string file = support::copy_sample("desk/data/" + std::string(name) + ".mdb", folder);
        const auto ours = columns_of(delivered("schemas/" + std::string(name) + ".schema"));
        for (const std::string& column : columns_of(output({"schema", file}))) {
            if (!wider.count(column)) {
                EXPECT_TRUE(ours.count(column)) << name << ": " << column;
            }
        }
    }
}

TEST_F(Delivery, NothingIsRequiredAndNoIndexIsUnique) {
    for (const auto& entry : std::filesystem::directory_iterator(delivery / "schemas")) {
        const std::string schema = support::file_content(entry.path());
        for (const char* word : {" required", " nozerolength", " unique", " primary", " counter"}) {
            for (const std::string& line : lines(schema)) {
                if (line[0] != '#') {
                    EXPECT_EQ(line.find(word), std::string::npos) << entry.path() << ": " << line;
                }
            }
        }
    }
}

TEST_F(Delivery, TheSettingsRowHasNoNull) {
    const TableRows settings(delivered("rows/database.tsv"));
    ASSERT_EQ(settings.rows.size(), 1u);
    const auto row = settings.row(0);
    EXPECT_EQ(row.size(), columns_of(delivered("schemas/database.schema")).size());
    for (const auto& [column, field] : row)
        EXPECT_NE(field, "\\N") << column;
    EXPECT_EQ(row.at("tmargin"), "1");
    EXPECT_EQ(row.at("p_bdayschedule"), "1");
    EXPECT_EQ(row.at("listing_counter"), "0");
    EXPECT_EQ(row.at("p_password"), "");
}

TEST_F(Delivery, ZipCodesAreWholeSortedAndFitTheirColumns) {
    const TableRows zips(delivered("rows/zipcodes.tsv"));
    EXPECT_EQ(zips.columns, (std::vector<std::string>{"z_city", "z_state", "z_zip"}));
    EXPECT_GT(zips.rows.size(), 41000u);
    std::vector<std::string> order;
    for (const auto& row : zips.rows) {
        ASSERT_EQ(row.size(), 3u);
        EXPECT_TRUE(!row[0].empty() && row[0].size() <= 50) << row[0];
        EXPECT_EQ(row[1].size(), 2u) << row[0];
        EXPECT_TRUE(row[2].size() == 5 && row[2].find_first_not_of("0123456789") == std::string::npos)
            << row[2];
        order.push_back(row[1] + "\t" + row[0] + "\t" + row[2]);
    }
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
    EXPECT_EQ(std::adjacent_find(order.begin(), order.end()), order.end());
}

TEST_F(Delivery, ListsEndEachLineAsTheirReadersWant) {
    for (const char* name : {"construction", "basement", "garage", "listingsource", "features"}) {
        const std::string text = delivered("data/" + std::string(name) + ".txt");
        ASSERT_GE(text.size(), 2u) << name;
        EXPECT_EQ(text.substr(text.size() - 2), "\r\n") << name;
        for (const std::string& line : lines(text)) {
            EXPECT_TRUE(line.size() > 1 && line.back() == '\r') << name << ": " << line;
            EXPECT_EQ(line.find(','), std::string::npos) << name << ": " << line; // would read back as two
        }
    }
}

TEST_F(Delivery, ThereAre22QuotedFeatures) {
    const auto features = lines(delivered("data/features.txt"));
    EXPECT_EQ(features.size(), 22u);
    for (const std::string& line : features)
        EXPECT_TRUE(line.size() > 3 && line[0] == '"' && line.substr(line.size() - 2) == "\"\r") << line;
    EXPECT_EQ(features.front(), "\"Central Air\"\r");
    EXPECT_EQ(features.back(), "\"Landscaping\"\r");
}

TEST_F(Delivery, LettersAreRichTextOfTheSingleByteEra) {
    int letters = 0;
    for (const auto& entry : std::filesystem::directory_iterator(delivery / "letters")) {
        const std::string text = support::file_content(entry.path());
        EXPECT_EQ(entry.path().extension(), ".rtf");
        EXPECT_EQ(text.substr(0, 23), "{\\rtf1\\ansi\\ansicpg1252") << entry.path();
        EXPECT_EQ(text.substr(text.size() - 3), "}\r\n") << entry.path();
        EXPECT_TRUE(std::all_of(text.begin(), text.end(), [](unsigned char c) { return c < 128; }))
            << entry.path();
        ++letters;
    }
    EXPECT_GE(letters, 2);
}

} // namespace
} // namespace tolva::tools
