#include <gtest/gtest.h>

#include "support/desk.h"

namespace tolva {
namespace {

using support::Desk;
using support::file_content;

class Preferences : public testing::Test {
  protected:
    Preferences() {
        desk.start();
        desk.click(desk.menu().Command10);
    }

    std::string list(const std::string& name) { return file_content(desk.data_file(name)); }

    Desk desk;
};

TEST_F(Preferences, TheScreenShowsTheSettingsAndLists) {
    auto& screen = desk.preferences();
    EXPECT_EQ(screen.caption, "Preferences");
    EXPECT_EQ(screen.pref_tmargin.text, "1");
    EXPECT_EQ(screen.pref_bmargin.text, "1");
    EXPECT_EQ(screen.pref_lmargin.text, "1");
    EXPECT_EQ(screen.pref_rmargin.text, "1");
    EXPECT_EQ(screen.pref_expire.text, "30");
    EXPECT_EQ(screen.pref_bday.text, "5");
    EXPECT_EQ(screen.pref_customer.text, "14");
    EXPECT_EQ(screen.pref_prospect.text, "14");
    EXPECT_EQ(screen.pref_inmarket.text, "30");
    EXPECT_EQ(screen.pref_labeladjust.text, "0");
    EXPECT_EQ(screen.thepassword.text, "");
    EXPECT_EQ(screen.passwordprotect.value, 0);
    EXPECT_TRUE(screen.pref_bdayschedule[1].value);
    EXPECT_EQ(screen.feature[0].text, "Central Air");
    EXPECT_EQ(screen.feature[21].text, "Landscaping");
    EXPECT_EQ(screen.garage.text.find('\n'), screen.garage.text.find('\r') + 1);
}

TEST_F(Preferences, TheOptionButtonsRunAlwaysPromptNeverWithTheIndicesTwoOneZero) {
    const auto& options = desk.preferences().pref_bdayschedule;
    EXPECT_EQ(options[2].caption, "Always");
    EXPECT_EQ(options[1].caption, "Prompt Each Time");
    EXPECT_EQ(options[0].caption, "Never");
    desk.runtime().choose(desk.preferences().pref_bdayschedule, 2);
    desk.click(desk.preferences().Command1);
    EXPECT_EQ(desk.stored_settings()["p_bdayschedule"], "2");
}

TEST_F(Preferences, SavingStoresEverySettingTrimmed) {
    auto& screen = desk.preferences();
    desk.type(screen.pref_tmargin, " 1.25 ");
    desk.type(screen.pref_bmargin, "0.5");
    desk.type(screen.pref_lmargin, "0.75");
    desk.type(screen.pref_rmargin, "2");
    desk.type(screen.pref_labeladjust, "0.1");
    desk.type(screen.pref_expire, "45");
    desk.type(screen.pref_bday, "2");
    desk.type(screen.pref_customer, "7");
    desk.type(screen.pref_prospect, "8");
    desk.type(screen.pref_inmarket, "anything at all");
    desk.type(screen.thepassword, " Pass ");
    desk.type(screen.salesperson1, "José Agent");
    desk.runtime().tick(screen.passwordprotect, 1);
    desk.click(screen.Command1);
    auto row = desk.stored_settings();
    EXPECT_EQ(row["tmargin"], "1.25");
    EXPECT_EQ(row["bmargin"], "0.5");
    EXPECT_EQ(row["lmargin"], "0.75");
    EXPECT_EQ(row["rmargin"], "2");
    EXPECT_EQ(row["labeladjust"], "0.1");
    EXPECT_EQ(row["p_expire"], "45");
    EXPECT_EQ(row["p_bday"], "2");
    EXPECT_EQ(row["p_customer"], "7");
    EXPECT_EQ(row["p_prospect"], "8");
    EXPECT_EQ(row["p_inmarket"], "anything at all");
    EXPECT_EQ(row["p_password"], "Pass");
    EXPECT_EQ(row["p_passwordprotect"], "True");
    EXPECT_EQ(row["salespersonname"], "José Agent");
    EXPECT_EQ(row["p_sold"], "");
}

TEST_F(Preferences, ASettingIsStoredUncutHoweverLong) {
    const std::string name(255, 'n');
    desk.type(desk.preferences().salesperson1, name);
    desk.click(desk.preferences().Command1);
    ASSERT_FALSE(desk.host.error) << desk.host.error->text;
    EXPECT_EQ(desk.stored_settings()["salespersonname"], name);
}

TEST_F(Preferences, SavingStampsLastdateWithToday) {
    desk.click(desk.preferences().Command1);
    EXPECT_EQ(desk.stored_settings()["lastdate"], "11/20/2026");
    EXPECT_TRUE(desk.preferences().visible());
}

TEST_F(Preferences, AnEntryWithACommaComesBackAsTwo) {
    desk.type(desk.preferences().construction, "Brick, red\r\nFrame");
    desk.click(desk.preferences().Command2);
    desk.click(desk.menu().Command10);
    EXPECT_EQ(desk.preferences().construction.text, "Brick\r\nred\r\nFrame\r\n");
}

TEST_F(Preferences, BlankLinesOfAListVanishOnLoad) {
    desk.type(desk.preferences().garage, "1 Car\r\n\r\n   \r\n2 Car");
    desk.click(desk.preferences().Command2);
    desk.click(desk.menu().Command10);
    EXPECT_EQ(desk.preferences().garage.text, "1 Car\r\n2 Car\r\n");
}

TEST_F(Preferences, AListIsWrittenAsTypedInWindows1252WithItsLastLineEnded) {
    desk.type(desk.preferences().basement, "  Träger\r\nFull");
    desk.click(desk.preferences().Command1);
    EXPECT_EQ(list("basement.txt"), "Tr\xE4ger\r\nFull\r\n");
}

TEST_F(Preferences, EmptyFeaturesAreTwentyTwoLinesOfQuotesAndStillRead) {
    for (int index = 0; index < module::feature_count; ++index)
        desk.type(desk.preferences().feature[index], " ");
    desk.click(desk.preferences().Command1);
    std::string expected;
    for (int index = 0; index < module::feature_count; ++index)
        expected += "\"\"\r\n";
    EXPECT_EQ(list("features.txt"), expected);
    desk.restart();
    desk.start();
    EXPECT_FALSE(desk.host.error);
    EXPECT_EQ(desk.module().settings.features[5], "");
}

TEST_F(Preferences, AFeatureMayHoldAComma) {
    desk.type(desk.preferences().feature[3], "Pool, heated");
    desk.click(desk.preferences().Command1);
    // In memory the names are refreshed only by the next load of the settings.
    EXPECT_EQ(desk.module().settings.features[3], "Above Ground Pool");
    desk.module().loadpreferences();
    EXPECT_EQ(desk.module().settings.features[3], "Pool, heated");
}

TEST_F(Preferences, ExitAlwaysSavesFirst) {
    desk.type(desk.preferences().pref_expire, "99");
    desk.click(desk.preferences().Command2);
    EXPECT_EQ(desk.stored_settings()["p_expire"], "99");
    EXPECT_FALSE(desk.module().preferences.loaded());
    EXPECT_EQ(desk.host.shown.back().screen, "Form1");
}

TEST_F(Preferences, TheCloseBoxLeavesTableAndFilesAsTheyWere) {
    const auto before = desk.stored_settings();
    const std::string garage = list("garage.txt");
    desk.type(desk.preferences().pref_expire, "99");
    desk.type(desk.preferences().garage, "None");
    desk.close(desk.preferences());
    EXPECT_EQ(desk.stored_settings(), before);
    EXPECT_EQ(list("garage.txt"), garage);
    EXPECT_EQ(desk.host.shown.back().screen, "Form1");
}

TEST_F(Preferences, AllNumberBoxesButTheExpirySelectTheirText) {
    auto& screen = desk.preferences();
    for (platform::TextBox* box : {&screen.pref_bday, &screen.pref_bmargin, &screen.pref_customer,
                                   &screen.pref_inmarket, &screen.pref_labeladjust, &screen.pref_lmargin,
                                   &screen.pref_prospect, &screen.pref_rmargin, &screen.pref_tmargin}) {
        desk.runtime().focus(*box);
        EXPECT_EQ(box->selection_wishes(), 1u) << box->name();
        EXPECT_EQ(box->selection_length(), box->text.size()) << box->name();
    }
    desk.runtime().focus(screen.pref_expire);
    EXPECT_EQ(screen.pref_expire.selection_wishes(), 0u);
}

TEST_F(Preferences, SavingDoesNotTouchTheCounters) {
    desk.module().settings.listing_counter = 41;
    desk.click(desk.preferences().Command1);
    EXPECT_EQ(desk.stored_settings()["listing_counter"], "41");
}

TEST(PreferencesFailure, FeaturesWithFewerItemsKeepTheProgramFromStarting) {
    Desk desk;
    std::ofstream(desk.data_file("features.txt"), std::ios::binary) << "\"only one\"\r\n";
    desk.start();
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 62);
    EXPECT_EQ(desk.host.error->text, "Input past end of file");
    EXPECT_FALSE(desk.module().Form1.loaded());
    EXPECT_TRUE(desk.host.ended);
}

TEST(PreferencesFailure, AMissingListEndsTheProgramWhenThePreferencesOpen) {
    Desk desk;
    desk.start();
    std::filesystem::remove(desk.data_file("garage.txt"));
    desk.click(desk.menu().Command10);
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 53);
}

TEST(PreferencesFailure, AMissingListEndsTheProgramWhenARecordScreenOpens) {
    Desk desk;
    desk.start();
    std::filesystem::remove(desk.data_file("listingsource.txt"));
    desk.click(desk.menu().Command9);
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 53);
}

} // namespace
} // namespace tolva
