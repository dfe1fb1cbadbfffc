#pragma once

#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "analysis/graph.h"
#include "analysis/paymentcalculator.h"
#include "letters/followupletters.h"
#include "letters/frm_main.h"
#include "letters/letter.h"
#include "messages/appointment.h"
#include "messages/generalmessage.h"
#include "messages/generalmessagecreate.h"
#include "messages/planner.h"
#include "module/module.h"
#include "printing/label.h"
#include "printing/printaddress.h"
#include "records/addressbook.h"
#include "records/listings.h"
#include "records/prospect.h"
#include "records/sold.h"
#include "search/addresssearch.h"
#include "search/listingsearch.h"
#include "search/prospectsearch.h"
#include "search/zipcode.h"
#include "shell/assembly.h"
#include "shell/choosedate.h"
#include "shell/form1.h"
#include "shell/instructions.h"
#include "shell/preferences.h"
#include "shell/security.h"
#include "support/fixed_clock.h"
#include "support/samples.h"
#include "support/scripted_host.h"

namespace tolva::support {

/// A program folder of its own and a program over it, without a display: the screens are driven through the
/// same user actions that the desktop calls. `start` may be called again after `restart`, as a user would
/// start the program anew on the same folder.
class Desk {
  public:
    using Record = std::map<std::string, std::string>;
    using Records = std::vector<Record>;

    /// A copy of the empty desk that is delivered with the program.
    static std::filesystem::path delivered() { return std::filesystem::path(TOLVA_BUILD_DIR) / "delivered"; }

    explicit Desk(const std::filesystem::path& source = delivered(),
                  basic::DateParts now = {2026, 11, 20, 10, 0, 0})
        : clock(now) {
        copy_desk(source, folder);
        build();
    }

    TemporaryFolder folder;
    FixedClock clock;
    ScriptedHost host;
    std::unique_ptr<files::FileSystem> disk = files::make_disk();

    /// Drops the running program as a killed process would be, and stands ready to start it anew.
    void restart() {
        module_.reset();
        runtime_.reset();
        host = ScriptedHost();
        build();
    }

    void start() { shell::start(module()); }

    module::Module& module() { return *module_; }
    platform::Runtime& runtime() { return *runtime_; }

    // --- The screens ---

    shell::security& security() { return static_cast<shell::security&>(module().security()); }
    shell::Form1& menu() { return static_cast<shell::Form1&>(module().Form1()); }
    shell::preferences& preferences() { return static_cast<shell::preferences&>(module().preferences()); }
    records::listings& listings() { return static_cast<records::listings&>(module().listings()); }
    messages::generalmessagecreate& compose() { return module().generalmessagecreate(); }

    /// The open reminder dialogs, oldest first.
    std::vector<messages::generalmessage*> dialogs() {
        std::vector<messages::generalmessage*> open;
        for (platform::Screen* screen : runtime().screens())
            if (auto* dialog = dynamic_cast<messages::generalmessage*>(screen))
                open.push_back(dialog);
        return open;
    }

    /// What stands in the id column of a record screen's grid, row by row.
    static std::vector<std::string> ids(const module::RecordEntry& screen) {
        std::vector<std::string> cells;
        const auto& grid = static_cast<const records::RecordScreen&>(screen).grid1;
        for (int row = 1; row < grid.Rows(); ++row)
            cells.push_back(grid.cell(row, 0));
        return cells;
    }

    // --- What the user does ---

    void click(platform::Button& button) { runtime().click(button); }
    void choose(platform::MenuEntry& entry) { runtime().click(entry); }
    void close(platform::Screen& screen) { runtime().close(screen); }
    void type(platform::TextControl& control, const std::string& text) {
        runtime().focus(control);
        runtime().edit(control, text);
    }
    void press_enter(platform::TextControl& control) {
        constexpr int enter_key = 13;
        runtime().focus(control);
        runtime().press_key(control, enter_key);
    }
    /// The next date picker is left by picking this day, or by its EXIT.
    void will_pick(int year, int month, int day) {
        host.modal_visits.push_back([this, year, month, day](platform::Screen& screen) {
            auto& picker = dynamic_cast<shell::choosedate&>(screen);
            runtime().pick_date(picker.MonthView1, basic::make_date(year, month, day));
        });
    }
    void will_leave_picker() {
        host.modal_visits.push_back(
            [this](platform::Screen& screen) { click(dynamic_cast<shell::choosedate&>(screen).Command1); });
    }
    /// Minutes go by, and the program looks at the clock.
    void wait_minutes(double minutes) {
        runtime().poll_clock();
        clock.advance_minutes(minutes);
        runtime().poll_clock();
    }

    // --- What is stored ---

    static Records rows(dao::Database& database, const std::string& query) {
        Records records;
        const auto set = database.OpenRecordset(query);
        if (set->RecordCount() == 0)
            return records;
        for (set->MoveFirst(); !set->Eof(); set->MoveNext()) {
            Record record;
            for (const auto& column : set->schema().columns) {
                const dao::FieldValue value = set->field(column.name);
                record[column.name] = value.is_null() ? "<null>" : value.text();
            }
            records.push_back(std::move(record));
        }
        return records;
    }
    Records messages() { return rows(*module().messagedb, "select * from [table]"); }
    Records stored_listings() { return rows(*module().listingdb, "select * from [table] order by id"); }
    Record stored_settings() { return rows(*module().preferencedb, "preference_table").at(0); }

    /// Writes a document into the letters folder and gives its path as the file box would.
    std::string write_letter(const std::string& name, const std::string& source) const {
        const std::string path = folder.file("letters/" + name);
        std::ofstream(path, std::ios::binary) << source;
        return path;
    }

    /// Changes the settings row as another program would, ahead of `start`.
    void set_setting(const std::string& column, const jet::Value& value) {
        dao::DBEngine engine(*disk, [] { return 2026; });
        const auto database = engine.Workspaces(0).OpenDatabase(data_file("database.mdb"));
        const auto set = database->OpenRecordset("preference_table");
        set->Edit();
        set->write(column, value);
        set->Update();
        engine.commit();
    }

    /// Adds a row to the table of a store, ahead of `start` or beside the program.
    static void add(dao::Database& database, const std::map<std::string, jet::Value>& values) {
        const auto set = database.OpenRecordset("select * from [table]");
        set->AddNew();
        for (const auto& [column, value] : values)
            set->write(column, value);
        set->Update();
    }

    std::string data_file(const std::string& name) const { return folder.file("data/" + name); }

  private:
    void build() {
        runtime_ = std::make_unique<platform::Runtime>(host, clock);
        module_ = std::make_unique<module::Module>(*runtime_, *disk, folder.path().string());
        shell::assemble(*module_);
    }

    std::unique_ptr<platform::Runtime> runtime_;
    std::unique_ptr<module::Module> module_;
};

} // namespace tolva::support
