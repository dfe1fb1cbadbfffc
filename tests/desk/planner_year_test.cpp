// The planner's file of a year: how its days lie in it, how it is made, and what is read from one that is
// cut.

#include "module/planner_day.h"

#include <gtest/gtest.h>

#include "messages/planner.h"
#include "support/desk.h"
#include "support/faulty_disk.h"
#include "support/read_only_disk.h"

namespace tolva {
namespace {

using basic::make_date;
using module::PlannerDay;
using support::Desk;
using support::FaultyDisk;
using support::file_content;

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

TEST_F(PlannerFile, AFileInAnotherLetterCaseCountsAsAbsent) {
    std::ofstream(desk.data_file("p2026.fil"), std::ios::binary) << "somebody's";
    const bool tells_cases_apart = !std::filesystem::exists(year_file());
    desk.module().loadplannerday(make_date(2026, 1, 1));
    EXPECT_EQ(desk.host.boxes.size(), 1u);
    EXPECT_EQ(std::filesystem::file_size(year_file()), 5599800u);
    desk.module().loadplannerday(make_date(2026, 1, 1));
    EXPECT_EQ(desk.host.boxes.size(), 1u) << "from now on it is there";
    // It stays where it can, and is overwritten where both names are one.
    const std::vector<std::string> names = desk.disk->list(desk.module().appfolder + "/data");
    EXPECT_EQ(std::count(names.begin(), names.end(), "p2026.fil"), tells_cases_apart);
    if (tells_cases_apart) {
        EXPECT_EQ(file_content(desk.data_file("p2026.fil")), "somebody's");
    }
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

TEST_F(PlannerFile, AToDoTextOf120CharactersKeepsItsFirst100) {
    desk.click(desk.menu().Command2);
    messages::planner& screen = desk.module().planner();
    desk.type(screen.td[0], std::string(100, 'a') + std::string(20, 'b'));
    desk.click(screen.Command1);
    desk.click(desk.menu().Command2);
    EXPECT_EQ(desk.module().planner().td[0].text, std::string(100, 'a'));
    EXPECT_EQ(desk.module().planner().td[1].text, "");
}

TEST_F(PlannerFile, AYearThatMayOnlyBeReadIsShownAndEndsTheProgramAtTheFirstSave) {
    desk.module().loadplannerday(make_date(2026, 11, 20));
    desk.module().plannerday.daynotes = "of last week";
    desk.module().saveplannerday(make_date(2026, 11, 20));
    const auto disk = files::make_disk();
    desk.disk = std::make_unique<support::ReadOnlyDisk>(*disk);
    desk.restart();
    desk.start();
    desk.click(desk.menu().Command2);
    ASSERT_FALSE(desk.host.error);
    messages::planner& screen = desk.module().planner();
    EXPECT_EQ(screen.notes.text, "of last week");
    desk.choose(screen.m_save);
    ASSERT_TRUE(desk.host.error);
    EXPECT_EQ(desk.host.error->number, 75);
    EXPECT_TRUE(desk.host.ended);
}

/// The text of a field, read without any of the program's own code.
std::string field_of(const std::string& record, std::size_t offset, std::size_t width) {
    std::string text;
    for (const char character : record.substr(offset, width)) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < 0x80) {
            text += character;
        } else if (byte == 0x96) {
            text += "\u2013";
        } else {
            EXPECT_GE(byte, 0xA0) << "a character that this reader doesn't know";
            text += static_cast<char>(0xC0 | byte >> 6);
            text += static_cast<char>(0x80 | (byte & 0x3F));
        }
    }
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

TEST_F(PlannerFile, EachDayShowsWhatItsBytesSayAndIsLeftAsItWas) {
    TOLVA_NEEDS_SAMPLE("desk/data/P2026.FIL");
    std::filesystem::copy_file(support::shared_sample("desk/data/P2026.FIL"), year_file());
    std::filesystem::permissions(year_file(), std::filesystem::perms::owner_write,
                                 std::filesystem::perm_options::add);
    const std::string before = file_content(year_file());
    desk.click(desk.menu().Command2);
    messages::planner& screen = desk.module().planner();
    int texts = 0;
    for (int number = 1; number <= 365; ++number) {
        SCOPED_TRACE("day " + std::to_string(number));
        desk.runtime().pick_date(screen.MonthView1, basic::add_days(make_date(2026, 1, 1), number - 1));
        const std::string record = before.substr(static_cast<std::size_t>(number - 1) * 15300, 15300);
        for (int slot = 0; slot < 60; ++slot) {
            const auto at = static_cast<std::size_t>(slot);
            const std::string text = field_of(record, at * 100, 100);
            ASSERT_EQ(screen.timeperiod[slot].text, text);
            ASSERT_EQ(screen.d[slot].text, field_of(record, 6000 + at * 8, 8));
            texts += !text.empty();
        }
        ASSERT_EQ(screen.notes.text, field_of(record, 6480, 100));
        for (int line = 0; line < 80; ++line) {
            const auto at = static_cast<std::size_t>(line);
            const std::string text = field_of(record, 6580 + at * 100, 100);
            ASSERT_EQ(screen.td[line].text, text);
            ASSERT_EQ(screen.cb[line].value, record[14580 + at] - '0');
            ASSERT_EQ(screen.tp[line].text, field_of(record, 14660 + at * 8, 8));
            texts += !text.empty();
        }
    }
    EXPECT_GT(texts, 5);
    desk.click(screen.Command1);
    EXPECT_TRUE(file_content(year_file()) == before) << "looking at a day has changed it";
}

const std::string year = "/desk\\data\\P2026.FIL";

TEST(MakingAYear, EndedAnywhereLeavesItWholeOrAbsent) {
    using Fault = FaultyDisk::Fault;
    const basic::Date date = make_date(2026, 5, 5);
    int absent = 0, whole = 0;
    for (const Fault fault : {Fault::kill, Fault::power_cut}) {
        bool finished = false;
        for (int operation = 1; !finished; ++operation) {
            SCOPED_TRACE(operation);
            FaultyDisk disk;
            disk.plan({fault, operation, static_cast<std::uint32_t>(operation)});
            try {
                module::PlannerFiles(disk, "/desk").create(date);
                finished = true;
            } catch (const support::PowerCut&) {
            }
            for (std::uint32_t outcome = 0; !finished && outcome < 4; ++outcome) {
                FaultyDisk next(disk.survivors(outcome, 512));
                module::PlannerFiles days(next, "/desk");
                if (!next.exists(year)) {
                    ++absent;
                    days.create(date);
                } else {
                    ++whole;
                }
                const auto files = next.content();
                ASSERT_EQ(files.count(year), 1u);
                ASSERT_EQ(files.at(year).size(), 5599800u);
                ASSERT_EQ(days.read(date), PlannerDay());
            }
        }
    }
    EXPECT_GT(absent, 0);
    EXPECT_GT(whole, 0);
}

TEST(MakingAYear, ThatFindsNoRoomFailsAndLeavesNothing) {
    FaultyDisk disk;
    module::PlannerFiles days(disk, "/desk");
    const basic::Date date = make_date(2026, 5, 5);
    // There is no room for the file's name, or for its content.
    for (const int operation : {1, 2}) {
        disk.plan({FaultyDisk::Fault::fail_for_good, operation, 0, 512, FaultyDisk::Failure::disk_full});
        EXPECT_THROW(days.create(date), basic::RunTimeError);
        EXPECT_TRUE(disk.content().empty());
    }
    disk.plan({});
    days.create(date);
    EXPECT_EQ(days.read(date), PlannerDay());
}

} // namespace
} // namespace tolva
