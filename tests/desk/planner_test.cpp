#include "messages/planner.h"

#include <gtest/gtest.h>

#include "messages/appointment.h"
#include "module/planner_day.h"
#include "support/desk.h"

namespace tolva {
namespace {

using basic::make_date;
using module::PlannerDay;
using support::Desk;
using Texts = std::vector<std::string>;

class Planner : public testing::Test {
  protected:
    Planner() {
        desk.start();
        desk.click(desk.menu().Command2);
    }
    messages::planner& screen() { return desk.module().planner(); }
    PlannerDay stored(int month, int day) {
        return module::PlannerFiles(*desk.disk, desk.module().appfolder).read(make_date(2026, month, day));
    }
    void pick(int month, int day) {
        desk.runtime().pick_date(screen().MonthView1, make_date(2026, month, day));
    }

    Desk desk;
};

TEST_F(Planner, OpensOnTodayWithTheDayInItsCaption) {
    EXPECT_TRUE(screen().visible());
    EXPECT_EQ(screen().caption, "11/20/2026");
    EXPECT_EQ(screen().MonthView1.value, make_date(2026, 11, 20));
}

TEST_F(Planner, TheSlotsRunByQuarterHoursOnATwelveHourClock) {
    EXPECT_EQ(screen().Label1[0].caption, "7:00");
    EXPECT_EQ(screen().Label1[1].caption, "7:15");
    EXPECT_EQ(screen().Label1[23].caption, "12:45");
    EXPECT_EQ(screen().Label1[24].caption, "1:00");
    EXPECT_EQ(screen().Label1[59].caption, "9:45");
}

TEST_F(Planner, TheTabsSwitchTheFrames) {
    EXPECT_TRUE(screen().plannerframe.visible);
    EXPECT_FALSE(screen().appointmentframe.visible);
    desk.runtime().select_tab(screen().TabStrip1, 2);
    EXPECT_FALSE(screen().plannerframe.visible);
    EXPECT_TRUE(screen().appointmentframe.visible);
    desk.runtime().select_tab(screen().TabStrip1, 1);
    EXPECT_TRUE(screen().plannerframe.visible);
    EXPECT_EQ(screen().TabStrip1.tabs(), (Texts{"To-Do List", "Planner"}));
}

TEST_F(Planner, AClickOnADateSavesTheOldDayUnderTheOldDate) {
    desk.type(screen().timeperiod[4], " breakfast ");
    desk.type(screen().td[0], "buy signs");
    desk.type(screen().notes, "note");
    pick(11, 25);
    EXPECT_EQ(screen().timeperiod[4].text, "");
    EXPECT_EQ(screen().MonthView1.value, make_date(2026, 11, 25));
    EXPECT_EQ(screen().caption, "11/25/2026");
    EXPECT_EQ(stored(11, 20).appointments[4], "breakfast");
    EXPECT_EQ(stored(11, 20).todoitems[0], "buy signs");
    EXPECT_EQ(stored(11, 20).daynotes, "note");
    EXPECT_EQ(stored(11, 25).daynotes, "");
}

TEST_F(Planner, ATickedLineIsStruckOutOnlyWhenTheDayIsShownAnew) {
    desk.type(screen().td[3], "done soon");
    desk.runtime().tick(screen().cb[3], 1);
    EXPECT_FALSE(screen().td[3].strike_out);
    pick(11, 21);
    EXPECT_FALSE(screen().td[3].strike_out);
    pick(11, 20);
    EXPECT_TRUE(screen().td[3].strike_out);
    EXPECT_EQ(screen().cb[3].value, 1);
    EXPECT_EQ(screen().td[3].tool_tip, "done soon");
}

TEST_F(Planner, EveryWayOutSaves) {
    desk.type(screen().notes, "saved by the menu");
    desk.choose(screen().m_save);
    EXPECT_EQ(stored(11, 20).daynotes, "saved by the menu");
    EXPECT_TRUE(screen().visible());
    desk.type(screen().notes, "by EXIT");
    desk.click(screen().Command1);
    EXPECT_EQ(stored(11, 20).daynotes, "by EXIT");
    EXPECT_EQ(desk.host.shown.back().screen, "Form1");
    desk.click(desk.menu().Command2);
    desk.type(screen().notes, "by the menu's exit");
    desk.choose(screen().m_exit);
    EXPECT_EQ(stored(11, 20).daynotes, "by the menu's exit");
    EXPECT_EQ(desk.host.shown.back().screen, "Form1");
    desk.click(desk.menu().Command2);
    desk.type(screen().notes, "by the close box");
    desk.close(screen());
    EXPECT_EQ(stored(11, 20).daynotes, "by the close box");
    EXPECT_EQ(desk.host.shown.back().screen, "Form1");
}

TEST_F(Planner, TheProgramsEndSavesNothingOfTheDayOnShow) {
    desk.type(screen().notes, "kept");
    desk.choose(screen().m_save);
    desk.type(screen().notes, "never saved");
    desk.click(desk.menu().Command8);
    EXPECT_TRUE(desk.host.ended);
    EXPECT_EQ(stored(11, 20).daynotes, "kept");
}

TEST_F(Planner, ClearEmptiesTheBoxesAndTheFileFollowsWithTheNextSave) {
    desk.type(screen().timeperiod[0], "x");
    desk.type(screen().td[0], "y");
    desk.runtime().tick(screen().cb[0], 1);
    desk.choose(screen().m_save);
    desk.choose(screen().m_Clear);
    EXPECT_EQ(desk.host.box_texts(), Texts{"Creating Planner Database"}) << "no question";
    EXPECT_EQ(screen().timeperiod[0].text, "");
    EXPECT_EQ(screen().cb[0].value, 0);
    EXPECT_EQ(stored(11, 20).appointments[0], "x");
    desk.choose(screen().m_save);
    EXPECT_EQ(stored(11, 20), PlannerDay());
}

TEST_F(Planner, ReScheduleFailsAsItIsMeantTo) {
    EXPECT_EQ(screen().m_reschedule.caption, "Re-Schedule To Do List");
    desk.choose(screen().m_reschedule);
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 424);
}

TEST_F(Planner, ADoubleClickOnAnEmptyLineSavesTheDayAndDoesNothingMore) {
    desk.type(screen().notes, "typed");
    desk.runtime().double_click(screen().td[7]);
    EXPECT_EQ(stored(11, 20).daynotes, "typed");
    EXPECT_FALSE(desk.module().listings.loaded());
    screen().d[2].text = "9123";
    desk.runtime().double_click(screen().timeperiod[2]);
    EXPECT_FALSE(desk.host.error);
}

class PlannerLinks : public Planner {
  protected:
    void add_listing(int id) {
        Desk::add(*desk.module().listingdb, {{"id", std::int64_t{id}},
                                             {"last", std::string("Linked")},
                                             {"datelisted", make_date(2026, 1, 1)}});
    }
    messages::appointment& dialog() {
        return static_cast<messages::appointment&>(desk.module().appointment());
    }
    void prepare_appointment() {
        desk.click(desk.menu().Command9);
        desk.choose(desk.listings().m_newlisting);
        desk.type(desk.listings().first, "Ann");
        desk.type(desk.listings().last, "Baker");
        desk.type(desk.listings().co_first, "Bill");
        desk.type(desk.listings().co_last, "Baker");
        desk.type(desk.listings().homephone, "555-1111");
        desk.choose(desk.listings().m_appointment);
    }
};

TEST_F(PlannerLinks, ASlotLeadsToItsListing) {
    add_listing(207);
    screen().d[5].text = "1207";
    desk.runtime().double_click(screen().timeperiod[5]);
    EXPECT_TRUE(desk.listings().visible());
    EXPECT_EQ(desk.listings().last.text, "Linked");
    EXPECT_EQ(desk.module().listingquery,
              "select * from [table] where id=207 order by datelisted, last, first");
}

TEST_F(PlannerLinks, ASlotWhoseListingIsGoneSaysSo) {
    screen().d[5].text = "1207";
    desk.runtime().double_click(screen().timeperiod[5]);
    EXPECT_EQ(desk.host.boxes.back().text, "That Listing Does Not Exist");
    EXPECT_EQ(desk.host.boxes.back().title, "Message");
    screen().d[5].text = "2207";
    desk.runtime().double_click(screen().timeperiod[5]);
    EXPECT_EQ(desk.host.boxes.back().text, "That Prospect Does Not Exist");
    screen().d[5].text = "3207";
    desk.runtime().double_click(screen().timeperiod[5]);
    EXPECT_EQ(desk.host.boxes.back().text, "That Customer Does Not Exist");
}

TEST_F(PlannerLinks, AToDoLinkToAListingFailsByItsQuery) {
    add_listing(207);
    desk.click(desk.menu().Command9);
    const std::string view = desk.module().listingquery;
    screen().tp[5].text = "1207";
    desk.runtime().double_click(screen().td[5]);
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 3061);
    EXPECT_EQ(desk.module().listingquery, view) << "the query is not the screen's view";
}

TEST_F(PlannerLinks, AToDoLinkToAProspectOpensIt) {
    Desk::add(*desk.module().prospectdb, {{"id", std::int64_t{9}}, {"last", std::string("Warm")}});
    screen().tp[5].text = "29";
    desk.runtime().double_click(screen().td[5]);
    EXPECT_FALSE(desk.host.error);
    EXPECT_EQ(static_cast<records::prospect&>(desk.module().prospect()).last.text, "Warm");
}

TEST_F(PlannerLinks, AnAppointmentIsPlacedByADoubleClickHoweverLater) {
    prepare_appointment();
    EXPECT_EQ(dialog().caption, "Set Appointment");
    EXPECT_EQ(dialog().Month1.value, make_date(2026, 11, 20));
    desk.type(dialog().apptmessage, " show the house ");
    desk.runtime().pick_date(dialog().Month1, make_date(2026, 12, 1));
    EXPECT_FALSE(desk.module().appointment.loaded());
    EXPECT_EQ(screen().caption, "12/1/2026");
    EXPECT_TRUE(desk.module().appointmentpending);
    // Closing the planner and coming back changes nothing: it still waits.
    desk.click(screen().Command1);
    desk.click(desk.menu().Command2);
    pick(12, 1);
    desk.runtime().double_click(screen().timeperiod[8]);
    EXPECT_EQ(screen().timeperiod[8].text, "Ann & Bill Baker, 555-1111: show the house");
    EXPECT_FALSE(desk.module().appointmentpending);
    EXPECT_EQ(stored(12, 1).appointmentlinks[8], "11");
    EXPECT_EQ(stored(12, 1).appointments[8], "Ann & Bill Baker, 555-1111: show the house");
    // And the slot is now a door to the listing, whose record the entry had saved.
    desk.runtime().double_click(screen().timeperiod[8]);
    EXPECT_EQ(desk.listings().last.text, "Baker");
}

TEST_F(PlannerLinks, AnAppointmentsDayDropsWhatWasUnsavedOfAnotherDay) {
    desk.type(screen().notes, "never saved");
    prepare_appointment();
    desk.runtime().pick_date(dialog().Month1, make_date(2026, 12, 1));
    EXPECT_EQ(screen().notes.text, "");
    EXPECT_EQ(stored(11, 20).daynotes, "");
    pick(11, 20);
    EXPECT_EQ(screen().notes.text, "");
}

TEST_F(PlannerLinks, AnAppointmentOverwritesTheSlotAndItsLink) {
    prepare_appointment();
    desk.runtime().pick_date(dialog().Month1, make_date(2026, 11, 20));
    screen().td[8].text = "somebody else";
    screen().tp[8].text = "2345";
    desk.runtime().double_click(screen().td[8]);
    EXPECT_EQ(screen().td[8].text, "Ann & Bill Baker, 555-1111:");
    EXPECT_EQ(stored(11, 20).todoitems[8], "Ann & Bill Baker, 555-1111:");
    EXPECT_EQ(stored(11, 20).todolinks[8], "11");
    EXPECT_FALSE(desk.module().prospect.loaded());
}

TEST_F(PlannerLinks, LeavingWithoutSettingKeepsAnEarlierPendingState) {
    prepare_appointment();
    EXPECT_EQ(dialog().Command1.caption, "E&XIT w/o Setting Appointment");
    desk.module().appointmentpending = true;
    desk.click(dialog().Command1);
    EXPECT_TRUE(desk.module().appointmentpending);
    EXPECT_FALSE(desk.module().appointment.loaded());
}

TEST_F(PlannerLinks, DifferentLastNamesGiveTheFirstOwnerAlone) {
    prepare_appointment();
    desk.click(dialog().Command1);
    desk.type(desk.listings().co_last, "Cole");
    desk.choose(desk.listings().m_appointment);
    EXPECT_EQ(desk.module().appointmentname, "Ann");
    EXPECT_EQ(desk.module().appointmentlink, "11");
}

} // namespace
} // namespace tolva
