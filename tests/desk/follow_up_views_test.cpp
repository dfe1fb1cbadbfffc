#include <gtest/gtest.h>

#include <functional>

#include "support/desk.h"

// What the follow-up views of the three customer screens have in common: whom they mark, when they stop, and
// what they leave behind.

namespace tolva {
namespace {

using basic::make_date;
using support::Desk;
using Texts = std::vector<std::string>;

/// One of the screens, as these views see it.
struct Customers {
    const char* name;
    platform::Slot<module::RecordEntry> module::Module::*screen;
    std::unique_ptr<dao::Database> module::Module::*db;
    std::unique_ptr<dao::Recordset> module::Module::*set;
    std::string module::Module::*query;
    /// The window of the contact view, in days.
    std::string module::Settings::*window;
    /// Only rows with this date are cleared.
    const char* dated;
    const char* everybody;
    const char* new_record;
    const char* close;
    const char* birthdays;
    const char* birthdays_caption;
    const char* contacts;
    const char* contacts_caption;
    const char* no_contacts;
};

const Customers listings_kind{"listings",
                              &module::Module::listings,
                              &module::Module::listingdb,
                              &module::Module::listingset,
                              &module::Module::listingquery,
                              &module::Settings::p_customer,
                              "datelisted",
                              "m_alllistings",
                              "m_newlisting",
                              "Command5",
                              "m_birthdays",
                              "Customers with Birthdays",
                              "m_customerstocontact",
                              "Customers to Contact",
                              "No Customers to Contact"};
const Customers prospect_kind{"prospect",
                              &module::Module::prospect,
                              &module::Module::prospectdb,
                              &module::Module::prospectset,
                              &module::Module::prospectquery,
                              &module::Settings::p_prospect,
                              "dateacquired",
                              "m_allprospects",
                              "m_newprospect",
                              "Command5",
                              "m_birthdays",
                              "Prospects with Birthdays",
                              "m_prospectstocontact",
                              "Prospects to Contact",
                              "No Prospects to Contact"};
const Customers sold_kind{"sold",
                          &module::Module::sold,
                          &module::Module::solddb,
                          &module::Module::soldset,
                          &module::Module::soldquery,
                          &module::Settings::p_customer,
                          "datesold",
                          "m_allcustomers",
                          "m_newcustomer",
                          "Command5",
                          "m_birthdays",
                          "Customers with Birthdays",
                          "m_customerstocontact",
                          "Customers to Contact",
                          "No Customers to Contact"};

class FollowUpViews : public testing::TestWithParam<const Customers*> {
  protected:
    void begin(basic::DateParts now = {2026, 11, 20, 10, 0, 0}) {
        desk.clock.set(now);
        desk.start();
        desk.module().settings.p_bdayschedule = module::Settings::birthdays_never;
    }
    void add(int id, const std::map<std::string, jet::Value>& more) {
        std::map<std::string, jet::Value> values{{"id", std::int64_t{id}},
                                                 {"last", "L" + std::to_string(id)},
                                                 {"co_last", std::string()},
                                                 {"city", std::string("Utica")},
                                                 {"soldcity", std::string("Utica")},
                                                 {"interestlevel", std::string("Hot")},
                                                 {kind().dated, make_date(2026, 1, 1)},
                                                 {"datelastcontact", make_date(2026, 1, 1)},
                                                 {"sellingprice", 0.0},
                                                 {"commission", 0.0},
                                                 {"expenses", 0.0},
                                                 {"netcommission", 0.0},
                                                 {"Flag", std::int64_t{0}}};
        for (const auto& [column, value] : more)
            values[column] = value;
        const auto schema = (desk.module().*kind().db)->OpenRecordset("select * from [table]")->schema();
        std::erase_if(values, [&](const auto& value) {
            return std::none_of(schema.columns.begin(), schema.columns.end(),
                                [&](const auto& column) { return column.name == value.first; });
        });
        Desk::add(*(desk.module().*kind().db), values);
    }
    records::RecordScreen& screen() {
        return static_cast<records::RecordScreen&>((desk.module().*kind().screen)());
    }
    template <typename Control>
    Control& control(const char* name) {
        return dynamic_cast<Control&>(*screen().find(name));
    }
    void choose(const char* entry) { desk.choose(control<platform::MenuEntry>(entry)); }
    void open_over_everybody() {
        screen().show();
        choose(kind().everybody);
    }
    Texts ids() { return Desk::ids(screen()); }
    const std::string& query() { return desk.module().*kind().query; }
    void expect_nothing_behind_the_rows(const Texts& rows) {
        EXPECT_EQ(ids(), rows);
        EXPECT_EQ((desk.module().*kind().set)->RecordCount(), 0);
        desk.runtime().click_row(screen().grid1, 1);
        ASSERT_TRUE(desk.host.error);
        EXPECT_EQ(desk.host.error->number, 3021);
    }
    static const Customers& kind() { return *GetParam(); }

    Desk desk;
};

TEST_P(FollowUpViews, ABirthdayTodayAndOneSevenDaysAheadAreListedButNoneOfYesterdayOrTheEighthDay) {
    begin();
    add(1, {{"birthday", make_date(1960, 11, 19)}});
    add(2, {{"birthday", make_date(1960, 11, 20)}});
    add(3, {{"co_birthday", make_date(1960, 11, 27)}});
    add(4, {{"birthday", make_date(1960, 11, 28)}, {"co_birthday", make_date(1960, 11, 28)}});
    open_over_everybody();
    choose(kind().birthdays);
    EXPECT_EQ(ids(), (Texts{"2", "3"}));
    EXPECT_EQ(query(), "select * from [table] where flag>0 order by last, first");
    EXPECT_TRUE(desk.host.boxes.empty());
}

TEST_P(FollowUpViews, OnDecember30ABirthdayOfJanuary2IsNotListed) {
    begin({2026, 12, 30, 10, 0, 0});
    add(1, {{"birthday", make_date(1960, 1, 2)}});
    open_over_everybody();
    choose(kind().birthdays);
    EXPECT_EQ(desk.host.box_texts(), Texts{"No Birthdays"});
}

TEST_P(FollowUpViews, AFebruary29BirthdayIsTakenAsTheDayBeforeInEveryYear) {
    const std::pair<basic::DateParts, bool> days[] = {{{2027, 2, 21, 10, 0, 0}, true},
                                                      {{2028, 2, 21, 10, 0, 0}, true},
                                                      {{2028, 2, 28, 10, 0, 0}, true},
                                                      {{2028, 2, 20, 10, 0, 0}, false},
                                                      {{2028, 2, 29, 10, 0, 0}, false}};
    begin();
    add(1, {{"birthday", make_date(1960, 2, 29)}});
    open_over_everybody();
    for (const auto& [day, listed] : days) {
        desk.clock.set(day);
        desk.host.boxes.clear();
        choose(kind().birthdays);
        EXPECT_EQ(desk.host.boxes.empty(), listed) << day.month << "/" << day.day << "/" << day.year;
    }
}

TEST_P(FollowUpViews, WithNoBirthdayOnFileTheOldRowsStandOverAnEmptySetUntilTheNextView) {
    begin();
    add(1, {});
    open_over_everybody();
    const std::string view = query();
    choose(kind().birthdays);
    ASSERT_EQ(desk.host.box_texts(), Texts{"No Birthdays"});
    EXPECT_EQ(desk.host.boxes[0].title, "Message");
    EXPECT_EQ(screen().caption, kind().birthdays_caption);
    EXPECT_EQ(query(), view);
    choose(kind().everybody);
    EXPECT_EQ(ids(), Texts{"1"});
    EXPECT_EQ((desk.module().*kind().set)->RecordCount(), 1);
    choose(kind().birthdays);
    expect_nothing_behind_the_rows({"1"});
}

TEST_P(FollowUpViews, WithNoNextContactOnFileTheOldRowsStandOverAnEmptySet) {
    begin();
    add(1, {});
    open_over_everybody();
    choose(kind().contacts);
    ASSERT_EQ(desk.host.box_texts(), Texts{kind().no_contacts});
    EXPECT_EQ(desk.host.boxes[0].title, "Message");
    EXPECT_EQ(screen().caption, kind().contacts_caption);
    expect_nothing_behind_the_rows({"1"});
}

TEST_P(FollowUpViews, WithNothingDatedAViewStopsWithoutAWordOverAnEmptySet) {
    begin();
    add(1, {{kind().dated, std::monostate{}}, {"birthday", make_date(1960, 11, 21)}});
    screen().show();
    const char* search = kind().name == std::string("listings")   ? "Command11"
                         : kind().name == std::string("prospect") ? "Command10"
                                                                  : "Command4";
    desk.click(control<platform::Button>(search));
    ASSERT_EQ(ids(), Texts{"1"});
    const std::string view = query();
    for (const auto& [entry, caption] : {std::pair{kind().birthdays, kind().birthdays_caption},
                                         std::pair{kind().contacts, kind().contacts_caption}}) {
        choose(entry);
        EXPECT_EQ(screen().caption, caption);
    }
    EXPECT_TRUE(desk.host.boxes.empty());
    EXPECT_EQ(query(), view);
    expect_nothing_behind_the_rows({"1"});
}

TEST_P(FollowUpViews, WithNobodyNearTheViewInForceIsShownAgain) {
    begin();
    add(1, {{"birthday", make_date(1960, 6, 1)}, {"datenextcontact", make_date(2020, 1, 1)}});
    open_over_everybody();
    const std::string view = query();
    choose(kind().birthdays);
    choose(kind().contacts);
    EXPECT_EQ(desk.host.box_texts(), (Texts{"No Birthdays", kind().no_contacts}));
    EXPECT_EQ(query(), view);
    EXPECT_EQ(ids(), Texts{"1"});
    desk.runtime().click_row(screen().grid1, 1);
    EXPECT_FALSE(desk.host.error);
    EXPECT_EQ(screen().id.text, "1");
}

TEST_P(FollowUpViews, AContactIsNearOnBothSidesOfTodayByTheNumberOfTheSettings) {
    begin();
    add(1, {{"datenextcontact", make_date(2026, 11, 16)}});
    add(2, {{"datenextcontact", make_date(2026, 11, 17)}});
    add(3, {{"datenextcontact", make_date(2026, 11, 20)}});
    add(4, {{"datenextcontact", make_date(2026, 11, 23)}});
    add(5, {{"datenextcontact", make_date(2026, 11, 24)}});
    open_over_everybody();
    std::string& window = desk.module().settings.*kind().window;
    window = "3 days";
    choose(kind().contacts);
    EXPECT_EQ(ids(), (Texts{"2", "3", "4"}));
    EXPECT_EQ(query(), "select * from [table] where flag>0 order by datenextcontact, last, first");
    for (const char* nothing : {"0", "", "many"}) {
        window = nothing;
        choose(kind().contacts);
        EXPECT_EQ(ids(), Texts{"3"}) << nothing;
    }
}

TEST_P(FollowUpViews, AMarkOnAnUndatedRowOutlivesTheClearing) {
    begin();
    add(1, {{kind().dated, std::monostate{}}, {"Flag", std::int64_t{100}}});
    add(2, {{"birthday", make_date(1960, 11, 21)}});
    add(3, {{"Flag", std::int64_t{1}}});
    open_over_everybody();
    choose(kind().birthdays);
    EXPECT_EQ(ids(), (Texts{"1", "2"}));
}

TEST_P(FollowUpViews, ComingBackFromARecordShowsTheMarkedRowsAndANewRecordAmongThem) {
    begin();
    add(51, {{"birthday", make_date(1960, 11, 21)}});
    add(52, {});
    desk.module().settings.listing_counter = 60;
    desk.module().settings.prospect_counter = 60;
    desk.module().savepreferences();
    open_over_everybody();
    choose(kind().birthdays);
    desk.runtime().click_row(screen().grid1, 1);
    desk.click(control<platform::Button>(kind().close));
    EXPECT_EQ(ids(), Texts{"51"});
    choose(kind().new_record);
    const std::string added = screen().id.text;
    desk.click(control<platform::Button>(kind().close));
    EXPECT_EQ(ids(), (Texts{added, "51"})) << "its mark of 100 counts until a view clears it";
    choose(kind().birthdays);
    EXPECT_EQ(ids(), Texts{"51"});
}

INSTANTIATE_TEST_SUITE_P(Screens, FollowUpViews, testing::Values(&listings_kind, &prospect_kind, &sold_kind),
                         [](const auto& instance) { return std::string(instance.param->name); });

} // namespace
} // namespace tolva
