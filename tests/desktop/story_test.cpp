#include <gtest/gtest.h>

#include <QLabel>
#include <QStackedWidget>
#include <QTimer>

#include "desk_by_hand.h"
#include "desktop/grid_view.h"
#include "desktop/text_edit.h"
#include "messages/generalmessage.h"
#include "records/listings.h"

namespace tolva::desktop {
namespace {

/// A day at the desk, by hand: from the password to a reminder, on a copy of a desk that another engine
/// wrote.
class Story : public testing::Test, protected DeskByHand {
  protected:
    void SetUp() override {
        TOLVA_NEEDS_SAMPLE("desk/data/listings.mdb");
        lay_out(support::shared_sample("desk"));
        protect_by_password();
    }

    void protect_by_password() {
        dao::DBEngine engine(*disk, [] { return 2026; });
        const auto database = engine.Workspaces(0).OpenDatabase(folder.file("data/database.mdb"));
        const auto set = database->OpenRecordset("preference_table");
        set->Edit();
        set->write("p_passwordprotect", true);
        set->write("p_password", std::string("Open Sesame"));
        set->write("p_bdayschedule", std::int64_t{module::Settings::birthdays_always});
        set->write("p_bday", std::string("2"));
        set->write("p_expire", std::string("30"));
        set->Update();
        engine.commit();
    }

    // --- What is on show ---

    platform::Screen& listings() { return module->listings(); }

    std::vector<messages::generalmessage*> reminders() {
        std::vector<messages::generalmessage*> raised;
        for (platform::Screen* screen : runtime.screens())
            if (auto* dialog = dynamic_cast<messages::generalmessage*>(screen))
                raised.push_back(dialog);
        return raised;
    }

    long count(dao::Database& database, const std::string& query) {
        const auto set = database.OpenRecordset(query);
        if (set->RecordCount() > 0)
            set->MoveLast();
        return set->RecordCount();
    }

    // --- What the hands do ---

    /// Presses a key in the date picker, as soon as it stands.
    void pick_with(Qt::Key key) {
        auto* const look = new QTimer(QCoreApplication::instance());
        QObject::connect(look, &QTimer::timeout, look, [this, look, key] {
            if (!module->choosedate.loaded() ||
                QApplication::activeWindow() != host.form_of(module->choosedate()))
                return;
            look->stop();
            look->deleteLater();
            press(key);
        });
        look->start(1);
    }
    void field(const char* name, const QString& value) { fill(listings(), name, value); }
    void open_listings() { open("Command9", &module::Module::listings); }
    void clear_reminders() {
        for (auto* dialog : reminders())
            form(*dialog).close();
        settle();
    }

    void pass_the_gate() {
        shell::start(*module);
        settle();
        ASSERT_FALSE(module->Form1.loaded());
        type(QStringLiteral("open window"));
        QString said;
        answer_with(Qt::Key_Return, &said);
        press(Qt::Key_Return);
        EXPECT_EQ(said, QStringLiteral("Incorrect Password"));
        EXPECT_EQ(text(module->security(), "password"), QString());
        settle();
        type(QStringLiteral("open sesame"));
        press(Qt::Key_Return);
        settle();
        ASSERT_TRUE(module->Form1.loaded());
        EXPECT_TRUE(form(module->Form1()).isVisible());
        EXPECT_FALSE(form(module->security()).isVisible());
    }
};

TEST_F(Story, OfANewListingFromThePasswordToItsReminder) {
    pass_the_gate();
    EXPECT_FALSE(reminders().empty()) << "what is due rises with the start";
    clear_reminders();
    EXPECT_TRUE(reminders().empty());

    // To the listings, and a new one by the keys of the menu.
    open_listings();
    auto* const pages = form(listings()).findChild<QStackedWidget*>();
    EXPECT_EQ(pages->currentIndex(), 0);
    EXPECT_EQ(QApplication::focusWidget(), widget(listings(), "grid1"));
    press(Qt::Key_F, Qt::AltModifier);
    press(Qt::Key_N);
    EXPECT_EQ(pages->currentIndex(), 1);
    EXPECT_EQ(QApplication::focusWidget(), widget(listings(), "first"));
    EXPECT_EQ(text(listings(), "datelisted"), QStringLiteral("11/20/2026"));
    EXPECT_FALSE(widget(listings(), "Command6")->isVisible()) << "a new record has no neighbours";

    // Names by Tab, the city completed by Enter.
    type(QStringLiteral("Ann"));
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    type(QStringLiteral("Archer"));
    field("address", QStringLiteral("12 Elm Way"));
    field("city", QStringLiteral("longmo"));
    press(Qt::Key_Return);
    EXPECT_EQ(text(listings(), "city"), QStringLiteral("Longmont"));
    EXPECT_EQ(text(listings(), "state"), QStringLiteral("CO"));
    EXPECT_TRUE(text(listings(), "zip").startsWith(QLatin1String("80")));
    EXPECT_EQ(QApplication::focusWidget(), widget(listings(), "homephone"));
    type(QStringLiteral("303 555 0101"));

    // A birthday from the calendar, and one that is left without.
    pick_with(Qt::Key_Return);
    click(widget(listings(), "Command36"));
    EXPECT_EQ(text(listings(), "birthday"), QStringLiteral("11/20/2026"));
    pick_with(Qt::Key_Tab);
    click(widget(listings(), "Command37"));
    EXPECT_EQ(text(listings(), "co_birthday"), QString());

    // Leaving the day of listing proposes the expiry; a click selects the whole field first.
    field("datelisted", QStringLiteral("12/1/2026"));
    EXPECT_EQ(text(listings(), "datelisted"), QStringLiteral("12/1/2026"));
    EXPECT_EQ(text(listings(), "dateexpires"), QString());
    press(Qt::Key_Tab);
    EXPECT_EQ(text(listings(), "dateexpires"), QStringLiteral("5/30/2027"));

    // The access key of Close leaves the field first, so the expiry follows the day typed last.
    const long messages_before = count(*module->messagedb, "select * from [table]");
    field("datelisted", QStringLiteral("12/2/2026"));
    press(Qt::Key_C, Qt::AltModifier);
    EXPECT_EQ(pages->currentIndex(), 0);
    EXPECT_EQ(QApplication::focusWidget(), widget(listings(), "grid1"));
    EXPECT_EQ(count(*module->messagedb, "select * from [table]"), messages_before + 2 + 3)
        << "two about the expiry, and a birthday this year and two more";
    const auto stored = module->listingdb->OpenRecordset("select * from [table] where last = 'Archer'");
    ASSERT_EQ(stored->RecordCount(), 1);
    EXPECT_EQ(stored->field("first").text(), "Ann");
    EXPECT_EQ(stored->field("city").text(), "Longmont");
    EXPECT_EQ(stored->field("dateexpires").text(), "5/31/2027");

    // This morning's birthday greeting rises with the next look at the clock, over the main menu.
    host.start_clock(runtime);
    ASSERT_TRUE(wait_until([this] {
        clock.advance_minutes(0.05);
        return !reminders().empty();
    }));
    auto& greeting = *reminders().front();
    EXPECT_TRUE(text(greeting, "messagetext").startsWith(QStringLiteral("HAPPY BIRTHDAY!\nAnn Archer\n")));
    EXPECT_EQ(form(greeting).findChild<QLabel*>(QStringLiteral("messagedate"))->text(),
              QStringLiteral("11/20/2026"));

    // View Customer opens the record; the dialog stays until it is deleted.
    click(widget(greeting, "Command3"));
    settle();
    EXPECT_EQ(pages->currentIndex(), 1);
    EXPECT_TRUE(form(listings()).isActiveWindow());
    EXPECT_EQ(text(listings(), "last"), QStringLiteral("Archer"));
    ASSERT_EQ(reminders().size(), 1u);
    form(greeting).activateWindow();
    settle();
    const long messages_now = count(*module->messagedb, "select * from [table]");
    click(widget(greeting, "Command1"));
    settle();
    EXPECT_TRUE(reminders().empty());
    EXPECT_EQ(count(*module->messagedb, "select * from [table]"), messages_now - 1);

    // The way out.
    form(module->Form1()).activateWindow();
    settle();
    click(widget(module->Form1(), "Command8"));
    EXPECT_TRUE(runtime.ended());
    EXPECT_FALSE(host.failed());
}

TEST_F(Story, OfALongListOpenedByKeysAndLeftUnsaved) {
    pass_the_gate();
    clear_reminders();
    open_listings();
    auto* const grid = form(listings()).findChild<GridView*>();
    ASSERT_GT(grid->model()->rowCount(), 50);
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    const QString name = grid->currentIndex().data().toString();
    press(Qt::Key_Return);
    EXPECT_EQ(name.section(QLatin1Char(' '), 0, 0), text(listings(), "first"));
    type(QStringLiteral("Changed"));
    form(listings()).close();
    settle();
    EXPECT_FALSE(module->listings.loaded());
    EXPECT_TRUE(form(module->Form1()).isActiveWindow());
    EXPECT_EQ(count(*module->listingdb, "select * from [table] where first = 'Changed'"), 0);
}

TEST_F(Story, OfADoubleClickOnARow) {
    pass_the_gate();
    clear_reminders();
    open_listings();
    // The second click falls on the form that the first one has brought up, on whatever lies there.
    auto* const grid = form(listings()).findChild<GridView*>();
    for (int row = 0; row < 14; ++row) {
        const QPoint place =
            in_window(grid->viewport(), grid->visualRect(grid->model()->index(row, 1)).center());
        QTest::mouseDClick(form(listings()).windowHandle(), Qt::LeftButton, {}, place);
        settle();
        EXPECT_EQ(form(listings()).findChild<QStackedWidget*>()->currentIndex(), 1);
        EXPECT_EQ(QApplication::focusWidget(), widget(listings(), "first")) << row;
        press(Qt::Key_C, Qt::AltModifier);
        ASSERT_EQ(form(listings()).findChild<QStackedWidget*>()->currentIndex(), 0);
    }
}

TEST_F(Story, OfAQuickSearchThatFindsNobody) {
    pass_the_gate();
    clear_reminders();
    open_listings();
    click(widget(listings(), "sname"));
    type(QStringLiteral("xyzzy"));
    press(Qt::Key_Return);
    auto* const grid = form(listings()).findChild<GridView*>();
    EXPECT_EQ(grid->model()->rowCount(), 1);
    EXPECT_TRUE(grid->currentIndex().isValid());
    click(grid->viewport(), grid->visualRect(grid->model()->index(0, 1)).center());
    EXPECT_EQ(form(listings()).findChild<QStackedWidget*>()->currentIndex(), 0)
        << "a blank row opens nothing";
}

struct RecordStory {
    const char* button; ///< of the main menu
    platform::Slot<module::RecordEntry> module::Module::*slot;
    std::unique_ptr<dao::Database> module::Module::*store;
    const char* close;
};

class EachStory : public Story, public testing::WithParamInterface<RecordStory> {};

TEST_P(EachStory, OfARecordOpenedByKeysChangedAndClosed) {
    pass_the_gate();
    clear_reminders();
    platform::Screen& screen = open(GetParam().button, GetParam().slot);
    auto* const pages = form(screen).findChild<QStackedWidget*>();
    EXPECT_EQ(QApplication::focusWidget(), widget(screen, "grid1"));
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    ASSERT_EQ(pages->currentIndex(), 1);
    EXPECT_EQ(QApplication::focusWidget(), widget(screen, "first"));
    const QString last = text(screen, "last");
    type(QStringLiteral("Zebulon"));
    click(widget(screen, GetParam().close));
    settle();
    EXPECT_EQ(pages->currentIndex(), 0);
    EXPECT_EQ(QApplication::focusWidget(), widget(screen, "grid1"));
    const auto stored =
        (module.get()->*GetParam().store)->OpenRecordset("select * from [table] where first = 'Zebulon'");
    ASSERT_EQ(stored->RecordCount(), 1);
    EXPECT_EQ(stored->field("last").text(), from_qt(last));
    form(screen).close();
    settle();
    EXPECT_TRUE(form(module->Form1()).isActiveWindow());
}

INSTANTIATE_TEST_SUITE_P(
    Story, EachStory,
    testing::Values(
        RecordStory{"Command9", &module::Module::listings, &module::Module::listingdb, "Command5"},
        RecordStory{"Command3", &module::Module::prospect, &module::Module::prospectdb, "Command5"},
        RecordStory{"Command7", &module::Module::sold, &module::Module::solddb, "Command5"},
        RecordStory{"Command1", &module::Module::addressbook, &module::Module::addressdb, "Command18"}),
    [](const auto& each) { return std::string(each.param.button); });

} // namespace
} // namespace tolva::desktop
