#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>

#include "dao/database.h"
#include "dao/recordset.h"
#include "files/file_system.h"
#include "module/planner_day.h"
#include "module/record_entry.h"
#include "module/settings.h"
#include "platform/runtime.h"

namespace tolva::messages {
class generalmessagecreate;
class planner;
} // namespace tolva::messages
namespace tolva::letters {
class followupletters;
} // namespace tolva::letters
namespace tolva::shell {
class instructions;
} // namespace tolva::shell

namespace tolva::module {

/// Whose letters are printed: the record on the form, or every row of the list on the grid.
enum class LetterMode : std::uint8_t {
    listing_list = 1,
    listing_form = 2,
    prospect_list = 3,
    prospect_form = 4,
    sold_list = 5,
    sold_form = 6,
};

/// Whose labels are printed.
enum class LabelMode : std::uint8_t { listings = 1, prospects = 2, sold = 3 };

/// The program-wide module: the stores, the shared values, the one instance of each screen and the routines
/// that every screen calls. One per running program; everything outside it comes in through the constructor.
///
/// There are no locks and no positions kept: a set is replaced whole by whoever opens a query for it, and the
/// poll, a dialog or another screen may do so between any two events.
class Module {
  public:
    Module(platform::Runtime& runtime, files::FileSystem& disk, std::string appfolder);
    ~Module();

    platform::Runtime& runtime;
    files::FileSystem& disk;
    /// The program's folder, without a slash at its end.
    const std::string appfolder;

    // --- The stores ---

    dao::DBEngine engine;

    std::unique_ptr<dao::Database> preferencedb, listingdb, addressdb, prospectdb, solddb, zipdb, messagedb;

    std::unique_ptr<dao::Recordset> preferenceset, zipset;
    /// The current set of each record screen.
    std::unique_ptr<dao::Recordset> listingset, prospectset, soldset, addressset;
    /// From the main menu's load on it is always open: `savemessage` adds through whatever set stands here.
    std::unique_ptr<dao::Recordset> messageset;

    // --- What the record screens keep while they are not loaded ---

    /// The query text of the view in force.
    std::string listingquery, prospectquery, soldquery, addressquery;
    bool listingfirstload = true, prospectfirstload = true, soldfirstload = true, addressfirstload = true;
    /// From the new-record action to the close flow; neither a deletion nor the title bar clears it.
    bool listingnewrecord = false, prospectnewrecord = false, soldnewrecord = false;

    // --- Shared values ---

    Settings settings;
    /// The `messagetype` of the next message to be written.
    std::uint8_t messagekind = 0;
    /// The day picked last in `choosedate` as text; empty when it was left without picking.
    std::string chosendate;
    /// The planner's day in memory.
    PlannerDay plannerday;
    /// The appointment that waits for a double click on a slot or line, however long.
    std::string appointmentlink, appointmentname, appointmentlast, appointmentphone, appointmenttext;
    bool appointmentpending = false;
    /// Whose letters the letter screen prints, and which document it loaded last (it outlives the screen).
    LetterMode lettermode = LetterMode::listing_list;
    std::string letterfile;
    LabelMode labelmode = LabelMode::listings;
    /// How many documents the word processor has begun; never lowered.
    long documentcount = 0;
    /// 1 when there is a printer to print on.
    int printerready = 0;
    /// Column (1 to 3) and row (1 to 10) of each label on a sheet; entry 0 is label 1.
    static constexpr int label_count = 30;
    std::array<std::uint8_t, label_count> labelcolumn{}, labelrow{};

    // --- The screens ---

    platform::Slot<platform::Screen> security, Form1, preferences, choosedate, zipcode;
    platform::Slot<platform::Screen> listingsearch, prospectsearch, addresssearch;
    platform::Slot<RecordEntry> listings, prospect, sold, addressbook;
    platform::Slot<messages::generalmessagecreate> generalmessagecreate;
    platform::Slot<messages::planner> planner;
    platform::Slot<platform::Screen> appointment, graph, paymentcalculator;
    platform::Slot<platform::Screen> letter, label, printaddress, frmMain;
    platform::Slot<letters::followupletters> followupletters;
    platform::Slot<shell::instructions> instructions;

    // --- Routines ---

    /// Opens the seven stores in their fixed order, loads the settings, fills the label tables and probes the
    /// printer. What fails here ends the program with the engine's text; a second copy of the program on the
    /// same folder is error 3045.
    void opendatabases();
    void loadpreferences();
    /// Stamps `lastdate` with today, whatever the reason for saving.
    void savepreferences();

    /// The day's record to and from `plannerday`. Loading makes the year's file when there is none of its
    /// name.
    void loadplannerday(basic::Date date);
    void saveplannerday(basic::Date date);

    platform::Printer& printer() { return runtime.host().printer(); }
    /// The bytes of a rich text document. Error 53 when there is none.
    std::string read_document(const std::string& path) const;
    /// The word processor, whose one frame comes up again each time.
    void openwordprocessor() { frmMain().show(); }

    /// Asks with OK and Cancel under "Are You Sure?"; 1 for OK, 2 for Cancel.
    int confirm(const std::string& text);
    /// Selects the whole text of the focused control of `screen`.
    static void selectfieldtext(platform::Screen& screen);

    /// A "D" button: shows the date picker and puts what it chose into the field, whatever that is.
    void bind_date_button(platform::Button& button, platform::TextControl& field);

    /// Today, and now as a time alone, as the query texts write them.
    std::string today_text() const;
    std::string now_text() const;
    basic::Date today() const { return runtime.clock().today(); }
    int this_year() const { return basic::parts_of(today()).year; }

    /// The date test and the conversion, with this year for dates without one.
    bool is_date(const std::string& text) const { return basic::is_date(text, this_year()); }
    basic::Date to_date(const std::string& text) const { return basic::to_date(text, this_year()); }
};

} // namespace tolva::module
