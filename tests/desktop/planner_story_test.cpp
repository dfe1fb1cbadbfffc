#include <gtest/gtest.h>

#include <QCheckBox>
#include <QStackedWidget>
#include <QTabBar>

#include "desk_by_hand.h"
#include "desktop/grid_view.h"
#include "desktop/line_edit.h"
#include "messages/planner.h"
#include "printed_pages.h"
#include "support/customers.h"
#include "support/desk.h"

namespace tolva::desktop {
namespace {

using basic::make_date;

/// Days of the planner, by hand, on the desk as it is delivered.
class PlannerStory : public testing::Test, protected DeskByHand {
  protected:
    void SetUp() override {
        lay_out(support::Desk::delivered());
        shell::start(*module);
        settle();
    }

    messages::planner& planner() { return module->planner(); }
    QWidget* on_planner(const char* name) { return widget(planner(), name); }
    QString written(const char* name) { return text(planner(), name); }
    LineEdit* line(const char* name) { return static_cast<LineEdit*>(on_planner(name)); }
    QCalendarWidget* calendar() { return static_cast<QCalendarWidget*>(on_planner("MonthView1")); }

    void open_planner() {
        click(widget(module->Form1(), "Command2"));
        settle();
        await_focus(planner());
        make_room();
    }
    /// A customer screen with its first row open.
    module::RecordEntry& open_first(const char* button,
                                    platform::Slot<module::RecordEntry> module::Module::*slot) {
        module::RecordEntry& customers = open(button, slot);
        auto* const grid = static_cast<GridView*>(widget(customers, "grid1"));
        click(grid->viewport(), grid->visualRect(grid->model()->index(0, 1)).center());
        settle();
        return customers;
    }
    /// The first time in a year, when the planner says that it makes one.
    void open_new_planner() {
        QString said;
        answer_with(Qt::Key_Return, &said);
        open_planner();
        EXPECT_EQ(said, QStringLiteral("Creating Planner Database"));
    }
    void make_room() {
        form(planner()).resize(form(planner()).wanted_size());
        settle();
    }
    void turn_to(int tab) {
        auto* const tabs = static_cast<QTabBar*>(on_planner("TabStrip1"));
        click(tabs, tabs->tabRect(tab - 1).center());
        settle();
    }
    module::PlannerDay stored(basic::Date date) {
        return module::PlannerFiles(*disk, module->appfolder).read(date);
    }
};

constexpr int to_do_list = 1, day_plan = 2;
const basic::Date today = make_date(2026, 11, 20);

TEST_F(PlannerStory, OfADayTypedDown) {
    open_new_planner();
    EXPECT_EQ(form(planner()).windowTitle(), QStringLiteral("11/20/2026"));
    turn_to(day_plan);
    EXPECT_FALSE(on_planner("td_0")->isVisible());
    click(on_planner("timeperiod_0"));
    type(QStringLiteral("Breakfast"));
    press(Qt::Key_Return);
    type(QStringLiteral("Signs"));
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    type(QStringLiteral("Call Ann"));
    press(Qt::Key_Up);
    press(Qt::Key_Up);
    type(QStringLiteral(" at Elm Way"));
    EXPECT_EQ(written("timeperiod_1"), QStringLiteral("Signs at Elm Way"));

    // Past the last one in sight the page follows; at the ends the keys lead nowhere.
    for (int step = 0; step < module::PlannerDay::slots + 5; ++step)
        press(Qt::Key_Down);
    EXPECT_EQ(QApplication::focusWidget(), on_planner("timeperiod_59"));
    EXPECT_FALSE(on_planner("timeperiod_59")->visibleRegion().isEmpty());
    EXPECT_TRUE(on_planner("timeperiod_0")->visibleRegion().isEmpty());
    type(QStringLiteral("Lock up"));

    form(planner()).close();
    settle();
    EXPECT_FALSE(module->planner.loaded());
    EXPECT_TRUE(form(module->Form1()).isActiveWindow());
    const module::PlannerDay day = stored(today);
    EXPECT_EQ(day.appointments[0], "Breakfast");
    EXPECT_EQ(day.appointments[3], "Call Ann");
    EXPECT_EQ(day.appointments[59], "Lock up");

    open_planner();
    EXPECT_EQ(written("timeperiod_3"), QStringLiteral("Call Ann"));
}

TEST_F(PlannerStory, OfAToDoThatIsDoneAndSoCrossedOut) {
    open_new_planner();
    click(on_planner("td_0"));
    type(QStringLiteral("Buy signs"));
    press(Qt::Key_Return);
    type(QStringLiteral("Call the bank"));
    click(on_planner("notes"));
    type(QStringLiteral("A cold day"));
    click(on_planner("cb_0"));
    EXPECT_FALSE(line("td_0")->font().strikeOut()) << "not ahead of the day's being shown anew";

    click_day(calendar(), 12);
    EXPECT_EQ(form(planner()).windowTitle(), QStringLiteral("11/12/2026"));
    EXPECT_EQ(written("td_0"), QString());
    EXPECT_EQ(written("notes"), QString());
    EXPECT_EQ(stored(today).todoitems[1], "Call the bank");
    EXPECT_EQ(stored(today).daynotes, "A cold day");

    click_day(calendar(), 20);
    EXPECT_EQ(written("td_0"), QStringLiteral("Buy signs"));
    EXPECT_TRUE(static_cast<QCheckBox*>(on_planner("cb_0"))->isChecked());
    EXPECT_TRUE(line("td_0")->font().strikeOut());
    EXPECT_FALSE(line("td_1")->font().strikeOut());
    click(on_planner("Command1"));
    EXPECT_TRUE(form(module->Form1()).isActiveWindow());
    EXPECT_EQ(stored(today).tododone[0], '1');
}

TEST_F(PlannerStory, OfADayLookedForByKeysAndOneOfTheNextYear) {
    open_new_planner();
    EXPECT_EQ(calendar()->selectedDate(), QDate(2026, 11, 20));
    press(Qt::Key_Right);
    press(Qt::Key_Down);
    EXPECT_EQ(form(planner()).windowTitle(), QStringLiteral("11/20/2026")) << "looked for, not picked";
    press(Qt::Key_Return);
    EXPECT_EQ(form(planner()).windowTitle(), QStringLiteral("11/28/2026"));

    click(on_planner("notes"));
    type(QStringLiteral("The last of the old year"));
    for (int month = 0; month < 2; ++month)
        click(calendar()->findChild<QWidget*>(QStringLiteral("qt_calendar_nextmonth")));
    QString said;
    answer_with(Qt::Key_Return, &said);
    click_day(calendar(), 15);
    EXPECT_EQ(said, QStringLiteral("Creating Planner Database"));
    EXPECT_EQ(form(planner()).windowTitle(), QStringLiteral("1/15/2027"));
    EXPECT_EQ(stored(make_date(2026, 11, 28)).daynotes, "The last of the old year");
    EXPECT_EQ(written("notes"), QString());
    said.clear();
    click_day(calendar(), 16);
    EXPECT_EQ(said, QString()) << "the year is there now";
}

TEST_F(PlannerStory, OfADayOnPaper) {
    if (!support::has_command("pdftotext"))
        GTEST_SKIP() << "pdftotext, which reads the pages back, is not installed";
    open_new_planner();
    turn_to(day_plan);
    click(on_planner("timeperiod_1"));
    type(QStringLiteral("Breakfast"));
    turn_to(to_do_list);
    click(on_planner("td_0"));
    type(QStringLiteral("Signs"));
    press(Qt::Key_Return);
    type(QStringLiteral("Bank"));
    click(on_planner("cb_0"));
    QString asked;
    answer_with(Qt::Key_Return, &asked);
    choose(planner(), "m_print");
    EXPECT_EQ(asked, QStringLiteral("Print Daily Planner?"));
    const QDir printed(to_qt(folder.file("printed")));
    const QStringList jobs = printed.entryList({QStringLiteral("*.pdf")}, QDir::Files);
    ASSERT_EQ(jobs.size(), 1);
    std::string words;
    for (const PrintedPage& page : read_pages(from_qt(printed.filePath(jobs[0]))))
        for (const PrintedWord& word : page.words)
            words += word.text + " ";
    EXPECT_EQ(words, "Daily Planner 11/20/2026 7:15: Breakfast To Do List for 11/20/2026 Bank ");
}

// --- Appointments ---

struct Customers {
    const char* button; ///< of the main menu
    platform::Slot<module::RecordEntry> module::Module::*slot;
    const char* appointment; ///< the entry of its menu
    std::string kind;        ///< the first character of its links
};

/// On a desk that another engine wrote.
class AppointmentStory : public PlannerStory, public testing::WithParamInterface<Customers> {
  protected:
    void SetUp() override {
        TOLVA_NEEDS_SAMPLE("desk/data/listings.mdb");
        lay_out(support::shared_sample("desk"));
        shell::start(*module);
        settle();
        for (platform::Screen* screen : runtime.screens())
            if (screen->name() == "generalmessage")
                form(*screen).close();
        settle();
    }
};

TEST_P(AppointmentStory, OfACustomerPlacedOnADayAndFoundAgain) {
    module::RecordEntry& customers = open_first(GetParam().button, GetParam().slot);
    const auto field = [&](const char* name) {
        return static_cast<platform::TextControl*>(customers.find(name))->text;
    };
    const std::string last = field("last");
    ASSERT_FALSE(last.empty());
    const std::string couple = field("co_last") == last ? " & " + field("co_first") : "";
    const std::string entry =
        field("first") + couple + " " + last + ", " + field("homephone") + ": show the house";
    const std::string link = GetParam().kind + field("id");

    choose(customers, GetParam().appointment);
    platform::Screen& dialog = module->appointment();
    EXPECT_TRUE(form(dialog).isActiveWindow());
    EXPECT_EQ(QApplication::focusWidget(), widget(dialog, "apptmessage"));
    type(QStringLiteral("show the house"));
    click_day(static_cast<QCalendarWidget*>(widget(dialog, "Month1")), 25);
    settle();
    EXPECT_FALSE(module->appointment.loaded());
    EXPECT_TRUE(form(planner()).isActiveWindow());
    EXPECT_EQ(form(planner()).windowTitle(), QStringLiteral("11/25/2026"));
    EXPECT_EQ(calendar()->selectedDate(), QDate(2026, 11, 25));

    make_room();
    turn_to(day_plan);
    double_click(on_planner("timeperiod_2"));
    EXPECT_EQ(from_qt(written("timeperiod_2")), entry);
    EXPECT_EQ(stored(make_date(2026, 11, 25)).appointments[2], entry);
    EXPECT_EQ(stored(make_date(2026, 11, 25)).appointmentlinks[2], link);
    form(planner()).close();
    form(customers).close();
    settle();

    // The slot is a door to the customer from now on.
    open_planner();
    click_day(calendar(), 25);
    turn_to(day_plan);
    double_click(on_planner("timeperiod_2"));
    settle();
    EXPECT_EQ(from_qt(written("timeperiod_2")), entry);
    module::RecordEntry& found = (module.get()->*GetParam().slot)();
    EXPECT_TRUE(form(found).isActiveWindow());
    EXPECT_EQ(form(found).findChild<QStackedWidget*>()->currentIndex(), 1);
    // The sample has sales that share an id; the first of them opens.
    EXPECT_EQ(static_cast<platform::TextControl*>(found.find("id"))->text, link.substr(1));
}

INSTANTIATE_TEST_SUITE_P(
    PlannerStory, AppointmentStory,
    testing::Values(Customers{"Command9", &module::Module::listings, "m_appointment", "1"},
                    Customers{"Command3", &module::Module::prospect, "m_appointment", "2"},
                    Customers{"Command7", &module::Module::sold, "m_setappointment", "3"}),
    [](const auto& each) { return std::string(each.param.button); });

TEST_F(PlannerStory, OfAnAppointmentThatIsNotSet) {
    support::Desk::add(*module->listingdb, support::customer({{"id", std::int64_t{7}}, {"last", "Archer"}},
                                                             {{"datelisted", today}}));
    platform::Screen& listings = open_first("Command9", &module::Module::listings);
    choose(listings, "m_appointment");
    press(Qt::Key_X, Qt::AltModifier);
    settle();
    EXPECT_FALSE(module->appointment.loaded());
    EXPECT_FALSE(module->planner.loaded());
    EXPECT_FALSE(module->appointmentpending);
    EXPECT_TRUE(form(listings).isVisible());
}

} // namespace
} // namespace tolva::desktop
