#include <gtest/gtest.h>

#include "records/addressbook.h"
#include "search/addresssearch.h"
#include "support/desk.h"

namespace tolva {
namespace {

using support::Desk;
using Texts = std::vector<std::string>;

class AddressSearch : public testing::Test {
  protected:
    AddressSearch() {
        desk.start();
        desk.click(desk.menu().Command1);
        desk.choose(static_cast<records::addressbook&>(desk.module().addressbook()).m_search);
    }
    search::addresssearch& screen() {
        return static_cast<search::addresssearch&>(desk.module().addresssearch());
    }
    void add(int id, const std::string& last, const std::string& notes) {
        Desk::add(*desk.module().addressdb, {{"id", std::int64_t{id}}, {"last", last}, {"notes", notes}});
    }

    Desk desk;
};

TEST_F(AddressSearch, FragmentsComeInTheirOrderToTheLetter) {
    desk.type(screen().last, "l");
    desk.type(screen().first, "f");
    desk.type(screen().businessname, "b");
    desk.type(screen().city, "c");
    desk.type(screen().state, "s");
    desk.type(screen().notes, "n");
    desk.click(screen().Command1);
    EXPECT_EQ(
        desk.module().addressquery,
        "select * from [table] where id > 0 and (last like '*l*') and (first like '*f*') and "
        "(businessname like '*b*') and (city like '*c*') and (state like '*s*') and (notes like '*n*')");
    EXPECT_EQ(desk.host.box_texts(), Texts{"No Addresses Found"});
    EXPECT_EQ(desk.host.boxes[0].title, "Search Results");
}

TEST_F(AddressSearch, NotesAreSearchedAndTheScreenHidesWithItsFields) {
    add(1, "A", std::string(3000, 'x') + "needle");
    add(2, "B", "");
    desk.type(screen().notes, "NEEDLE");
    desk.click(screen().Command1);
    EXPECT_EQ(desk.host.box_texts(), Texts{"1 Records Found"});
    EXPECT_EQ(Desk::ids(desk.module().addressbook()), Texts{"1"});
    desk.close(screen());
    EXPECT_TRUE(desk.module().addresssearch.loaded());
    EXPECT_FALSE(screen().visible());
    EXPECT_TRUE(desk.module().addressbook().visible());
    EXPECT_EQ(screen().notes.text, "NEEDLE");
    desk.module().addresssearch().show();
    desk.click(screen().Command2);
    EXPECT_EQ(screen().notes.text, "");
    desk.click(screen().Command3);
    EXPECT_FALSE(screen().visible());
}

TEST_F(AddressSearch, AnyPhoneEndsTheSearchBeforeAnyQueryRuns) {
    const std::string before = desk.module().addressquery;
    desk.type(screen().phone, " ");
    desk.click(screen().Command1);
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 424);
    EXPECT_EQ(desk.module().addressquery, before);
}

TEST_F(AddressSearch, AQuoteBreaksTheQuery) {
    desk.type(screen().notes, "it's");
    desk.click(screen().Command1);
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 3075);
}

TEST_F(AddressSearch, AnEmptySearchIsTheViewAndBringsTheBookUpEmpty) {
    add(1, "A", "");
    desk.type(screen().last, "nobody");
    desk.click(screen().Command1);
    EXPECT_EQ(desk.module().addressquery, "select * from [table] where id > 0 and (last like '*nobody*')");
    EXPECT_FALSE(desk.module().addressbook.loaded());
    desk.click(screen().Command3);
    EXPECT_EQ(Desk::ids(desk.module().addressbook()), Texts{""});
    EXPECT_EQ(screen().last.text, "nobody");
}

TEST_F(AddressSearch, AfterAnEmptySearchAnEarlierOnesRowsStandOverTheEmptySet) {
    add(1, "A", "");
    desk.click(screen().Command1);
    desk.type(screen().last, "nobody");
    desk.click(screen().Command1);
    desk.click(screen().Command3);
    EXPECT_EQ(Desk::ids(desk.module().addressbook()), Texts{"1"});
    EXPECT_EQ(desk.module().addressset->RecordCount(), 0);
    desk.runtime().click_row(static_cast<records::addressbook&>(desk.module().addressbook()).grid1, 1);
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 3021);
}

TEST_F(AddressSearch, BearsItsCaptions) {
    EXPECT_EQ(screen().caption, "Address Search");
    EXPECT_EQ(screen().Command1.caption, "&Search");
    EXPECT_EQ(screen().Command2.caption, "&Clear Form");
    EXPECT_EQ(screen().Command3.caption, "E&XIT");
}

TEST_F(AddressSearch, WithoutCriteriaEveryAddressIsCounted) {
    add(1, "A", "");
    add(2, "B", "");
    add(0, "no id", "");
    desk.click(screen().Command1);
    EXPECT_EQ(desk.host.box_texts(), Texts{"2 Records Found"});
}

TEST_F(AddressSearch, EveryFieldSelectsItsText) {
    for (platform::Control* control : screen().controls())
        if (auto* box = dynamic_cast<platform::TextBox*>(control)) {
            desk.runtime().focus(*box);
            EXPECT_EQ(box->selection_wishes(), 1u) << box->name();
        }
}

} // namespace
} // namespace tolva
