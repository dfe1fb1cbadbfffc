#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "module/module.h"
#include "printing/list.h"
#include "printing/sheet.h"
#include "records/contact_lines.h"
#include "records/field_rules.h"
#include "records/views.h"

namespace tolva::records {

/// The pattern of the customer screens: one table with two faces, a result grid and a form with one record.
/// The controls are the edit buffer and no other exists; everything that changes what the grid shows stores a
/// new query text, opens it and rebuilds the grid. Here stands what is common, each step once. What a screen
/// has of its own it says as data, in its constructor, and where a step differs by overriding it.
class RecordScreen : public module::RecordEntry {
  public:
    // --- Controls that every record screen has ---

    platform::Frame f_customerlist;
    platform::Grid grid1;
    platform::Frame Frame10{*this, "Frame10", "Quick Search"};
    platform::TextBox sname{*this, "sname"};
    platform::TextBox scity{*this, "scity"};
    /// The record's id, not for the user.
    platform::TextBox id{*this, "id"};

    // --- Routines ---

    void on_load() override;
    void on_unload() override;

    void cleargrid() override;
    void creategrid(const std::string& mode) override;
    void clickgrid() override { grid1_Click(); }
    void gridclick() override { grid1_Click(); }

    /// Opens the view in force anew and shows it.
    void gobacktogrid();
    void showgridbuttons();
    void showformbuttons();

    virtual void clearform();
    /// Copies the form into the row under Edit or AddNew; no Update.
    void formtorec();
    virtual void rectoform();
    /// Tests the form and reports the first fault; the caller goes on, only the row isn't stored.
    bool validate();
    void savelisting();
    virtual void createlists();

  protected:
    /// Where the rows are, and what outlives the screen.
    struct Store {
        std::unique_ptr<dao::Database>& db;
        std::unique_ptr<dao::Recordset>& set;
        std::string& query;
        bool& firstload;
        std::int32_t module::Settings::*counter;
        /// Null on a screen that doesn't tell a new record's closing from another's.
        bool* newrecord;
        /// Whether the rows have the working mark `Flag`.
        bool flagged;
    };
    struct GridColumn {
        const char* heading;
        int width;
        std::function<std::string(const dao::Recordset&)> cell;
    };
    struct Mode {
        platform::Control& control;
        bool in_grid;
        bool in_form;
    };
    struct Test {
        platform::TextControl& control;
        /// Otherwise an empty field passes.
        bool required;
        const char* fault;
    };
    struct Navigation {
        platform::Button& first;
        platform::Button& previous;
        platform::Button& next;
        platform::Button& last;
    };
    struct OptionList {
        const char* name;
        platform::ComboBox& box;
    };
    struct CityFields {
        platform::TextBox& city;
        platform::TextBox& state;
        platform::TextBox& zip;
        platform::TextBox& homephone;
    };

    RecordScreen(module::Module& module, const char* name, const char* caption, const char* list_caption,
                 int grid_columns, Store store);

    // --- What a screen says of itself (filled in its constructor) ---

    std::vector<GridColumn> grid_columns_;
    std::vector<FieldRule> fields_;
    std::vector<Mode> modes_;
    std::vector<Test> tests_;
    std::vector<OptionList> lists_;
    /// A failure inside creategrid ends it silently and leaves the rows added so far.
    bool grid_failures_are_silent_ = true;
    /// How often the close flow saves.
    int saves_on_close_ = 1;

    void take_first_view();
    void bind_navigation(const Navigation& buttons);
    /// The key that runs the quick search from its two boxes.
    void bind_quick_search(platform::Button& button, int key);
    /// The date button of the last contact also stamps the contact history.
    void bind_contact_button(platform::Button& button, platform::TextControl& field,
                             platform::TextControl& history);
    /// The search entry unloads this screen, which shows the main menu, and shows the search over it. Where
    /// the program has no such search the entry stays without an action.
    void bind_search(platform::MenuEntry& entry, platform::Slot<platform::Screen>& search);
    /// Enter in the city completes it from the zip codes.
    void bind_city(const CityFields& fields);
    void select_on_focus(std::initializer_list<platform::TextControl*> controls);

    // --- Where screens differ ---

    /// The first load of the run: the view to begin with.
    virtual void first_view() = 0;
    virtual std::string quick_search_query() const = 0;
    /// What a new record begins with, ahead of its first save.
    virtual void fill_new_record() {}
    /// Between the first copying of a new record and its Update.
    virtual void new_record_copied() {}
    /// What the id box shows of a new record.
    virtual std::string new_id_text() const;
    /// The close flow of a new record: the messages it schedules. It clears the flag itself.
    virtual void close_new_record() {}
    virtual void fill_grid();
    /// A row went into the grid.
    virtual void row_added(const dao::Recordset&) {}

    // --- Actions that screens bind under their own names ---

    void new_record();
    void close_record();
    void save_with_notice(const char* notice);
    void delete_record(const char* question);
    /// The EXIT button unloads; the menu's exit only hides.
    void exit_unloading();
    void exit_hiding();
    /// The scheduling entries: the compose dialog, prepared for this customer.
    void schedule_message(std::uint8_t kind, const std::string& text);
    void schedule_letter(std::uint8_t kind);
    /// The appointment entry: saves the record and asks for the day; `digit` says in the link whose customer
    /// it is. Stays without an action where the program has no planner.
    void bind_appointment(platform::MenuEntry& entry, char digit, const OwnerFields& owners,
                          const platform::TextControl& homephone);
    /// The letter entry: for the record on the form, saved first, or for the list on the grid, unless it is
    /// empty, which `nobody` says.
    void bind_letters(platform::MenuEntry& entry, module::LetterMode for_list, module::LetterMode for_form,
                      const char* nobody);
    /// The label entry, for the current set.
    void bind_labels(platform::MenuEntry& entry, module::LabelMode mode, const char* nobody);
    void bind_list(platform::MenuEntry& entry, const printing::ListLayout& layout);
    void show_query(const std::string& query);
    /// A ready-made view: its caption, and the rows of its query.
    void show_view(const char* view_caption, const std::string& query);
    /// The caption stays whatever follows. A view that stops for want of rows leaves the set empty under the
    /// grid's old rows; one that marks nobody says so and shows the view in force again.
    void show_follow_up(const FollowUpView& view);

    /// The owners in one line: "A & B Smith", "A Smith & B Jones" or "A Smith". Two empty last names count as
    /// equal, so a record with neither ends in blanks.
    static std::string owners(const dao::Recordset& row);
    static std::string trimmed(const dao::Recordset& row, const char* column);
    /// A price with its sign, when it is above 0.
    static std::string price(const dao::Recordset& row, const char* column);
    /// The quick search over either owner's last name and a city column.
    std::string owners_search_query(const char* city_column) const;

    dao::Recordset& set() const { return *store_.set; }
    void open(const std::string& query) { store_.set = store_.db->OpenRecordset(query); }

    module::Module& module_;
    Store store_;

  private:
    void grid1_Click();
    void quick_search();
    void complete_city(const CityFields& fields);
    void mark(int value);
    void keep_row();
    void return_to_row();

    std::vector<platform::Button*> navigation_;
    /// The stored row that the form shows, and its id there.
    std::optional<jet::RowId> row_;
    std::string row_id_;
};

} // namespace tolva::records
