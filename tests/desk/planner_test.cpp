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
using support::file_content;
using Texts = std::vector<std::string>;

// --- The year's file ---

TEST(PlannerDays, AreNumberedFromTheFirstOfJanuary) {
    EXPECT_EQ(module::dayofyear(make_date(2026, 1, 1)), 1);
    EXPECT_EQ(module::dayofyear(make_date(2026, 12, 31)), 365);
    EXPECT_EQ(module::dayofyear(make_date(2028, 12, 31)), 366);
    EXPECT_EQ(module::dayofyear(make_date(2026, 3, 1)), 60);
    EXPECT_EQ(module::dayofyear(make_date(2028, 3, 1)), 61);
    EXPECT_EQ(module::dayofyear(make_date(2028, 2, 29)), 60);
}

class PlannerFile : public testing::Test {
  protected:
    PlannerFile() { desk.start(); }
    std::string year_file(int year = 2026) { return desk.data_file("P" + std::to_string(year) + ".FIL"); }

    Desk desk;
};

TEST_F(PlannerFile, TheFirstUseOfAYearMakesAllItsDaysAndSaysSo) {
    desk.module().loadplannerday(make_date(2026, 5, 5));
    ASSERT_EQ(desk.host.boxes.size(), 1u);
    EXPECT_EQ(desk.host.boxes[0].text, "Creating Planner Database");
    EXPECT_EQ(desk.host.boxes[0].title, "Please Wait");
    EXPECT_EQ(std::filesystem::file_size(year_file()), 5599800u);
    const std::string content = file_content(year_file());
    for (std::size_t record = 0; record < 366; ++record) {
        const std::string day = content.substr(record * 15300, 15300);
        EXPECT_EQ(day.substr(0, 14580), std::string(14580, ' '));
        EXPECT_EQ(day.substr(14580, 80), std::string(80, '0'));
        EXPECT_EQ(day.substr(14660), std::string(640, ' '));
    }
    desk.module().loadplannerday(make_date(2026, 6, 6));
    EXPECT_EQ(desk.host.boxes.size(), 1u);
    EXPECT_FALSE(std::filesystem::exists(year_file() + ".new"));
}

TEST_F(PlannerFile, ADayIsWrittenIntoItsRecordAloneFieldByField) {
    desk.module().loadplannerday(make_date(2026, 1, 1));
    const std::string before = file_content(year_file());
    PlannerDay& day = desk.module().plannerday;
    day.appointments[0] = "first";
    day.appointments[59] = "last é";
    day.appointmentlinks[1] = "1207";
    day.daynotes = "note";
    day.todoitems[79] = std::string(120, 'x');
    day.tododone[3] = '1';
    day.todolinks[2] = "212345678";
    desk.module().saveplannerday(make_date(2026, 1, 3));
    std::string expected(15300, ' ');
    expected.replace(14580, 80, std::string(80, '0'));
    expected.replace(0, 5, "first");
    expected.replace(5900, 6, "last \xE9");
    expected.replace(6008, 4, "1207");
    expected.replace(6480, 4, "note");
    expected.replace(6580 + 79 * 100, 100, std::string(100, 'x'));
    expected[14583] = '1';
    expected.replace(14660 + 16, 8, "21234567");
    const std::string after = file_content(year_file());
    EXPECT_EQ(after.substr(0, 30600), before.substr(0, 30600));
    EXPECT_EQ(after.substr(30600, 15300), expected);
    EXPECT_EQ(after.substr(45900), before.substr(45900));
}

TEST_F(PlannerFile, ADayReadsBackAsItWasWritten) {
    desk.module().loadplannerday(make_date(2026, 1, 1));
    PlannerDay day;
    for (int slot = 0; slot < PlannerDay::slots; ++slot)
        day.appointments[static_cast<std::size_t>(slot)] = "slot " + std::to_string(slot);
    for (int line = 0; line < PlannerDay::todos; ++line)
        day.todolinks[static_cast<std::size_t>(line)] = "3" + std::to_string(line);
    day.daynotes = "a–b “quoted”";
    desk.module().plannerday = day;
    desk.module().saveplannerday(make_date(2026, 12, 31));
    desk.module().loadplannerday(make_date(2026, 12, 31));
    EXPECT_EQ(desk.module().plannerday, day);
}

TEST_F(PlannerFile, ACutFileReadsAsBlankDaysPastItsEnd) {
    desk.module().loadplannerday(make_date(2026, 1, 1));
    desk.module().plannerday.daynotes = "kept";
    desk.module().saveplannerday(make_date(2026, 1, 1));
    std::filesystem::resize_file(year_file(), 20000);
    desk.module().loadplannerday(make_date(2026, 1, 1));
    EXPECT_EQ(desk.module().plannerday.daynotes, "kept");
    desk.module().loadplannerday(make_date(2026, 7, 7));
    EXPECT_EQ(desk.module().plannerday.daynotes, "");
    EXPECT_EQ(desk.module().plannerday.todoitems[5], "");
    EXPECT_EQ(desk.host.boxes.size(), 1u) << "the file is there, so nothing is made";
}

TEST_F(PlannerFile, SavingWithoutAFileMakesOneWithThatRecordOnly) {
    desk.module().plannerday.daynotes = "alone";
    desk.module().saveplannerday(make_date(2030, 1, 2));
    EXPECT_EQ(std::filesystem::file_size(year_file(2030)), 2u * 15300);
    desk.module().loadplannerday(make_date(2030, 1, 1));
    EXPECT_EQ(desk.module().plannerday.daynotes, "");
    desk.module().loadplannerday(make_date(2030, 1, 2));
    EXPECT_EQ(desk.module().plannerday.daynotes, "alone");
}

TEST_F(PlannerFile, AFileInAnotherLetterCaseCountsAsAbsentAndStays) {
    std::ofstream(desk.data_file("p2026.fil"), std::ios::binary) << "somebody's";
    if (std::filesystem::exists(year_file()))
        GTEST_SKIP() << "this disk doesn't tell letter cases apart";
    desk.module().loadplannerday(make_date(2026, 1, 1));
    EXPECT_EQ(desk.host.boxes.size(), 1u);
    EXPECT_EQ(file_content(desk.data_file("p2026.fil")), "somebody's");
    EXPECT_EQ(std::filesystem::file_size(year_file()), 5599800u);
}

TEST_F(PlannerFile, AFileOfTheEarlierProgramOpensAndChangesInTheDaysRecordAlone) {
    TOLVA_NEEDS_SAMPLE("desk/data/P2026.FIL");
    std::filesystem::copy_file(support::shared_sample("desk/data/P2026.FIL"), year_file());
    std::filesystem::permissions(year_file(), std::filesystem::perms::owner_write,
                                 std::filesystem::perm_options::add);
    const std::string before = file_content(year_file());
    int filled = 0;
    for (int number = 1; number <= 365; ++number) {
        const basic::Date date = basic::add_days(make_date(2026, 1, 1), number - 1);
        desk.module().loadplannerday(date);
        filled += desk.module().plannerday.appointments != PlannerDay().appointments;
        desk.module().saveplannerday(date);
        ASSERT_EQ(file_content(year_file()), before) << "day " << number;
    }
    EXPECT_GT(filled, 0);
    EXPECT_TRUE(desk.host.boxes.empty());
}

// --- The screen ---

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

TEST_F(Planner, ClearEmptiesTheBoxesAndTheFileFollowsWithTheNextSave) {
    desk.type(screen().timeperiod[0], "x");
    desk.type(screen().td[0], "y");
    desk.runtime().tick(screen().cb[0], 1);
    desk.choose(screen().m_save);
    desk.choose(screen().m_Clear);
    EXPECT_TRUE(desk.host.boxes.size() == 1u) << "no question but the year's box";
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
