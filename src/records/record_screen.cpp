#include "records/record_screen.h"

#include <limits>

#include "basic/number.h"
#include "basic/run_time_error.h"
#include "basic/text.h"
#include "messages/generalmessagecreate.h"
#include "module/option_lists.h"
#include "module/shared_routines.h"

namespace tolva::records {

namespace {

constexpr int enter_key = 13;
/// Left, centred vertically.
constexpr int left_alignment = 1;
constexpr std::int64_t new_record_flag = 100;
constexpr int overflow_error = 6;

} // namespace

RecordScreen::RecordScreen(module::Module& module, const char* name, const char* caption_,
                           const char* list_caption, int grid_columns, Store store)
    : RecordEntry(module.runtime, name, caption_), f_customerlist(*this, "f_customerlist", list_caption),
      grid1(*this, "grid1", grid_columns), module_(module), store_(store) {
    id.visible = false;
    grid1.on_click = [this] { grid1_Click(); };
}

// --- Loading and leaving ---

void RecordScreen::on_load() {
    showgridbuttons();
    createlists();
    take_first_view();
    open(store_.query);
    creategrid("normal");
}

void RecordScreen::take_first_view() {
    if (!store_.firstload)
        return;
    first_view();
    store_.firstload = false;
}

void RecordScreen::on_unload() {
    module_.Form1().show();
}

void RecordScreen::exit_unloading() {
    unload();
    module_.Form1().show();
}

void RecordScreen::exit_hiding() {
    hide();
    module_.Form1().show();
}

void RecordScreen::createlists() {
    for (const OptionList& list : lists_)
        for (std::string& item : module::read_option_list(module_.disk, module_.appfolder, list.name))
            list.box.add_item(std::move(item));
}

// --- The two modes ---

void RecordScreen::showgridbuttons() {
    row_.reset();
    for (const Mode& mode : modes_)
        mode.control.visible = mode.in_grid;
}

void RecordScreen::showformbuttons() {
    for (const Mode& mode : modes_)
        mode.control.visible = mode.in_form;
}

void RecordScreen::gobacktogrid() {
    f_customerlist.visible = true;
    open(store_.query);
    cleargrid();
    creategrid("normal");
}

// --- The grid ---

void RecordScreen::cleargrid() {
    const int rows = grid1.Rows();
    grid1.AddItem("");
    for (int row = 1; row < rows; ++row)
        grid1.RemoveItem(1);
}

void RecordScreen::creategrid(const std::string&) {
    if (!grid_failures_are_silent_) {
        fill_grid();
        return;
    }
    try {
        fill_grid();
    } catch (const basic::RunTimeError&) {
        // What stands in the grid so far stays.
    }
}

void RecordScreen::fill_grid() {
    for (int column = 0; column < grid1.Cols(); ++column)
        grid1.ColAlignment(column, left_alignment);
    for (int column = 0; column < grid1.Cols(); ++column)
        grid1.ColWidth(column, grid_columns_.at(static_cast<std::size_t>(column)).width);
    grid1.Row = 0;
    for (int column = 1; column < grid1.Cols(); ++column) {
        grid1.Col = column;
        grid1.set_Text(grid_columns_.at(static_cast<std::size_t>(column)).heading);
    }
    if (set().RecordCount() < 1)
        return;
    std::string row;
    for (set().MoveFirst(); !set().Eof(); set().MoveNext()) {
        row.clear();
        for (const GridColumn& column : grid_columns_) {
            if (&column != &grid_columns_.front())
                row += '\t';
            row += column.cell(set());
        }
        grid1.AddItem(row);
        row_added(set());
    }
    grid1.RemoveItem(1);
}

void RecordScreen::grid1_Click() {
    grid1.Row = grid1.RowSel();
    grid1.Col = 0;
    const double wanted = basic::leading_number(grid1.Text());
    if (wanted == 0)
        return;
    // A set that another screen replaced under this grid ends the walk behind its last row, with an error.
    set().MoveFirst();
    while (basic::leading_number(set().field("id").text()) != wanted)
        set().MoveNext();
    rectoform();
    showformbuttons();
}

std::string RecordScreen::trimmed(const dao::Recordset& row, const char* column) {
    return module::shown_text(row.field(column));
}

std::string RecordScreen::price(const dao::Recordset& row, const char* column) {
    const std::string amount = trimmed(row, column);
    return basic::leading_number(amount) > 0 ? "$" + amount : std::string();
}

std::string RecordScreen::owners(const dao::Recordset& row) {
    const std::string first = trimmed(row, "first");
    const std::string last = trimmed(row, "last");
    const std::string co_first = trimmed(row, "co_first");
    const std::string co_last = trimmed(row, "co_last");
    if (last == co_last)
        return first + " & " + co_first + " " + last;
    if (!co_last.empty())
        return first + " " + last + " & " + co_first + " " + co_last;
    return first + " " + last;
}

// --- The form ---

void RecordScreen::clearform() {
    for (const FieldRule& field : fields_)
        if (field.clear)
            field.clear();
}

void RecordScreen::formtorec() {
    for (const FieldRule& field : fields_)
        if (field.save)
            set().write(field.column, field.save());
}

void RecordScreen::rectoform() {
    clearform();
    for (const FieldRule& field : fields_) {
        if (!field.load)
            continue;
        const dao::FieldValue value = set().field(field.column);
        if (!value.is_null())
            field.load(value);
    }
    keep_row();
}

void RecordScreen::keep_row() {
    row_ = set().Bookmark();
    if (row_)
        row_id_ = basic::number_to_text(basic::leading_number(trimmed(set(), "id")));
}

/// The set isn't the form's alone: labels that were printed have walked to its end, and a run of letters has
/// put one of its own in its place. What is on show must not be stored over another customer.
void RecordScreen::return_to_row() {
    if (!row_ || set().Bookmark() == row_ || set().go_to(*row_))
        return;
    open("Select * from [table] where id = " + row_id_);
    set().go_to(*row_);
}

bool RecordScreen::validate() {
    for (const Test& test : tests_) {
        const bool passes =
            module_.is_date(test.control.text) || (!test.required && basic::trim(test.control.text).empty());
        if (passes)
            continue;
        runtime().message(test.fault, "Error");
        return false;
    }
    return true;
}

void RecordScreen::savelisting() {
    if (!validate())
        return;
    return_to_row();
    set().Edit();
    formtorec();
    set().Update();
}

void RecordScreen::save_with_notice(const char* notice) {
    savelisting();
    // Said even when a fault was just reported and nothing was stored.
    runtime().message(notice, "Message");
}

void RecordScreen::delete_record(const char* question) {
    if (module_.confirm(question) != 1)
        return;
    return_to_row();
    set().Delete();
    showgridbuttons();
    gobacktogrid();
}

// --- A new record and its closing ---

void RecordScreen::new_record() {
    showformbuttons();
    for (platform::Button* button : navigation_)
        button->visible = false;
    if (store_.newrecord)
        *store_.newrecord = true;
    set().AddNew();
    module_.loadpreferences();
    clearform();
    std::int32_t& counter = module_.settings.*store_.counter;
    if (counter == std::numeric_limits<std::int32_t>::max())
        throw basic::RunTimeError(overflow_error);
    ++counter;
    set().write("id", std::int64_t{counter});
    if (store_.flagged)
        set().write("Flag", new_record_flag);
    // The counter is stored ahead of the row: an id is never given twice.
    module_.savepreferences();
    id.text = new_id_text();
    fill_new_record();
    validate();
    formtorec();
    new_record_copied();
    set().Update();
    // From here the set holds the new record alone, so that further saves reach it; the view stays in force.
    open("Select * from [table] where id = " + basic::number_to_text(basic::leading_number(id.text)));
    keep_row();
}

std::string RecordScreen::new_id_text() const {
    return std::to_string(module_.settings.*store_.counter);
}

void RecordScreen::close_record() {
    for (int save = 0; save < saves_on_close_; ++save)
        savelisting();
    if (store_.newrecord && *store_.newrecord)
        close_new_record();
    // Prospects and homes sold do this twice in a row. The second time would find everything as the first one
    // left it and rebuild a long grid for nothing, so once stands for both.
    showgridbuttons();
    gobacktogrid();
}

// --- Scheduling by hand ---

void RecordScreen::schedule_message(std::uint8_t kind, const std::string& text) {
    schedule_letter(kind);
    module_.generalmessagecreate().message1.text = text;
}

void RecordScreen::schedule_letter(std::uint8_t kind) {
    module_.messagekind = kind;
    auto& compose = module_.generalmessagecreate();
    compose.show();
    compose.customerid.text = id.text;
}

void RecordScreen::bind_appointment(platform::MenuEntry& entry, char digit, const OwnerFields& owners,
                                    const platform::TextControl& homephone) {
    if (!module_.appointment.exists())
        return;
    entry.on_click = [this, digit, owners, &homephone] {
        savelisting();
        module_.appointmentlink = digit + basic::trim(id.text);
        module_.appointmentname = basic::trim(owners.first.text);
        if (basic::trim(owners.co_last.text) == basic::trim(owners.last.text))
            module_.appointmentname += " & " + basic::trim(owners.co_first.text);
        module_.appointmentlast = basic::trim(owners.last.text);
        module_.appointmentphone = basic::trim(homephone.text);
        module_.appointment().show();
    };
}

// --- Paper ---

void RecordScreen::bind_letters(platform::MenuEntry& entry, module::LetterMode for_list,
                                module::LetterMode for_form, const char* nobody) {
    if (!module_.letter.exists())
        return;
    entry.on_click = [this, for_list, for_form, nobody] {
        if (!f_customerlist.visible) {
            savelisting();
            module_.lettermode = for_form;
        } else if (set().RecordCount() < 1) {
            runtime().message(nobody, "Message");
            return;
        } else {
            module_.lettermode = for_list;
        }
        module_.letter().show();
    };
}

void RecordScreen::bind_labels(platform::MenuEntry& entry, module::LabelMode mode, const char* nobody) {
    if (!module_.label.exists())
        return;
    entry.on_click = [this, mode, nobody] {
        if (set().RecordCount() < 1) {
            runtime().message(nobody, "Message");
            return;
        }
        module_.labelmode = mode;
        module_.label().show();
    };
}

void RecordScreen::bind_list(platform::MenuEntry& entry, const printing::ListLayout& layout) {
    entry.on_click = [this, &layout] { printing::print_list(module_, grid1, layout, caption); };
}

// --- Walking the records ---

void RecordScreen::bind_navigation(const Navigation& buttons) {
    navigation_ = {&buttons.first, &buttons.previous, &buttons.next, &buttons.last};
    // A form that fails its tests is left all the same: its edits are lost with the move.
    buttons.first.on_click = [this] {
        savelisting();
        set().MoveFirst();
        rectoform();
    };
    buttons.previous.on_click = [this] {
        savelisting();
        set().MovePrevious();
        if (set().Bof())
            set().MoveNext();
        rectoform();
    };
    buttons.next.on_click = [this] {
        savelisting();
        set().MoveNext();
        if (set().Eof())
            set().MovePrevious();
        rectoform();
    };
    buttons.last.on_click = [this] {
        savelisting();
        set().MoveLast();
        rectoform();
    };
}

// --- Searching ---

void RecordScreen::bind_quick_search(platform::Button& button, int key) {
    button.on_click = [this] { quick_search(); };
    for (platform::TextBox* box : {&sname, &scity})
        box->on_key_press = [this, key](int character) {
            if (character == key)
                quick_search();
        };
}

void RecordScreen::bind_search(platform::MenuEntry& entry, platform::Slot<platform::Screen>& search) {
    if (!search.exists())
        return;
    entry.on_click = [this, &search] {
        unload();
        search().show();
    };
}

void RecordScreen::quick_search() {
    cleargrid();
    show_query(quick_search_query());
}

void RecordScreen::show_query(const std::string& query) {
    store_.query = query;
    open(query);
    creategrid("normal");
}

void RecordScreen::show_view(const char* view_caption, const std::string& query) {
    caption = view_caption;
    cleargrid();
    show_query(query);
}

void RecordScreen::show_follow_up(const FollowUpView& view) {
    caption = view.caption;
    open(view.clearing_query);
    if (set().RecordCount() < 1)
        return;
    for (set().MoveFirst(); !set().Eof(); set().MoveNext())
        mark(0);

    open(view.candidate_query);
    if (set().RecordCount() < 1) {
        runtime().message(view.nobody, "Message");
        return;
    }
    bool found = false;
    for (set().MoveFirst(); !set().Eof(); set().MoveNext()) {
        if (const std::optional<int> value = view.mark(set())) {
            mark(*value);
            found = true;
        }
    }
    if (found) {
        cleargrid();
        store_.query = view.result_query;
        open(store_.query);
        creategrid(view.mode);
    } else {
        runtime().message(view.nobody, "Message");
        cleargrid();
        open(store_.query);
        creategrid("normal");
    }
}

void RecordScreen::mark(int value) {
    set().Edit();
    set().write("Flag", std::int64_t{value});
    set().Update();
}

std::string RecordScreen::owners_search_query(const char* city_column) const {
    const std::string name = basic::trim(sname.text);
    return "select * from [table] where (last like '*" + name + "*' or co_last like '*" + name + "*') and " +
           city_column + " like '*" + basic::trim(scity.text) + "*' order by last, first";
}

// --- Fields that do more ---

void RecordScreen::select_on_focus(std::initializer_list<platform::TextControl*> controls) {
    for (platform::TextControl* control : controls)
        control->on_got_focus = [this] { module::Module::selectfieldtext(*this); };
}

void RecordScreen::bind_contact_button(platform::Button& button, platform::TextControl& field,
                                       platform::TextControl& history) {
    button.on_click = [this, &field, &history] {
        module_.choosedate().show_modal();
        field.text = module_.chosendate;
        if (basic::trim(field.text).empty()) {
            field.text = module_.today_text();
            return;
        }
        history.text = basic::trim(history.text) + "\r\n" + basic::trim(module_.chosendate) + ": ";
        history.caret_to_end();
        history.set_focus();
    };
}

void RecordScreen::bind_city(const CityFields& fields) {
    fields.city.on_key_press = [this, fields](int character) {
        if (character == enter_key)
            complete_city(fields);
    };
}

void RecordScreen::complete_city(const CityFields& fields) {
    module_.zipset = module_.zipdb->OpenRecordset("Select * from [table] where z_city like '" +
                                                  basic::trim(fields.city.text) + "*'");
    const dao::Recordset& found = *module_.zipset;
    if (found.RecordCount() < 1) {
        // The zip code screen adds to the empty set that stays open here.
        if (module_.confirm("Enter New Zip Code?") == 1 && module_.zipcode.exists())
            module_.zipcode().show();
        return;
    }
    fields.city.text = trimmed(found, "z_city");
    fields.state.text = trimmed(found, "z_state");
    fields.zip.text = trimmed(found, "z_zip");
    fields.homephone.set_focus();
}

} // namespace tolva::records
