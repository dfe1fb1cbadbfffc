#include "module/module.h"

#include "basic/text.h"

namespace tolva::module {

namespace {

/// The second set of the prospects' home columns, which the search asks for. Nothing fills them, and older
/// files lack some.
std::vector<std::string> twin_columns() {
    std::vector<std::string> names = {"c_city",   "c_price",        "c_acres",      "c_squarefeet",
                                      "c_rooms",  "c_bedrooms",     "c_bathrooms",  "c_basement",
                                      "c_garage", "c_construction", "c_subdivision"};
    for (int feature = 0; feature < feature_count; ++feature)
        names.push_back("c_feature" + std::to_string(feature));
    return names;
}

} // namespace

Module::Module(platform::Runtime& runtime_, files::FileSystem& disk_, std::string appfolder_)
    : runtime(runtime_), disk(disk_), appfolder(std::move(appfolder_)),
      engine(
          disk, [this] { return this_year(); }, [this] { return runtime.clock().moment(); }),
      security(runtime), Form1(runtime), preferences(runtime), choosedate(runtime), zipcode(runtime),
      listingsearch(runtime), prospectsearch(runtime), addresssearch(runtime), listings(runtime),
      prospect(runtime), sold(runtime), addressbook(runtime), generalmessagecreate(runtime), planner(runtime),
      appointment(runtime), graph(runtime), paymentcalculator(runtime), letter(runtime), label(runtime),
      printaddress(runtime), frmMain(runtime), followupletters(runtime), instructions(runtime) {
    runtime.make_durable = [this] { engine.commit(); };
    printer().job_ended = [this] { engine.commit(); };
}

Module::~Module() {
    runtime.make_durable = nullptr;
    // The printer belongs to the host and may print on without this program's stores.
    printer().job_ended = nullptr;
}

void Module::opendatabases() {
    listingfirstload = prospectfirstload = soldfirstload = addressfirstload = true;
    listingnewrecord = prospectnewrecord = soldnewrecord = false;

    const struct {
        const char* path;
        std::unique_ptr<dao::Database>& database;
    } stores[] = {
        {"\\data\\database.mdb", preferencedb}, {"\\data\\listings.mdb", listingdb},
        {"\\data\\address.mdb", addressdb},     {"\\data\\prospect.mdb", prospectdb},
        {"\\data\\sold.mdb", solddb},           {"\\data\\zipcodes.mdb", zipdb},
        {"\\data\\messagedata.mdb", messagedb},
    };
    for (const auto& store : stores)
        store.database = engine.Workspaces(0).OpenDatabase(appfolder + store.path);
    prospectdb->set_optional_columns(twin_columns());

    loadpreferences();

    constexpr int labels_across = 3;
    for (int place = 0; place < label_count; ++place) {
        labelcolumn.at(static_cast<std::size_t>(place)) =
            static_cast<std::uint8_t>(place % labels_across + 1);
        labelrow.at(static_cast<std::size_t>(place)) = static_cast<std::uint8_t>(place / labels_across + 1);
    }
    printerready = runtime.host().printer_takes_font("Arial") ? 1 : 0;
}

void Module::loadplannerday(basic::Date date) {
    PlannerFiles planner_files(disk, appfolder);
    if (!planner_files.exists(date)) {
        runtime.message("Creating Planner Database", "Please Wait");
        planner_files.create(date);
    }
    plannerday = planner_files.read(date);
}

void Module::saveplannerday(basic::Date date) {
    PlannerFiles(disk, appfolder).write(date, plannerday);
}

std::string Module::read_document(const std::string& path) const {
    const files::Bytes bytes = files::read_whole(disk, path);
    return {bytes.begin(), bytes.end()};
}

int Module::confirm(const std::string& text) {
    return runtime.box(text, "Are You Sure?", platform::BoxButtons::ok_cancel);
}

void Module::selectfieldtext(platform::Screen& screen) {
    if (auto* control = dynamic_cast<platform::TextControl*>(screen.active_control))
        control->select_all();
}

void Module::bind_date_button(platform::Button& button, platform::TextControl& field) {
    button.on_click = [this, &field] {
        choosedate().show_modal();
        field.text = chosendate;
    };
}

std::string Module::today_text() const {
    return basic::trim(basic::date_to_text(today()));
}

std::string Module::now_text() const {
    return basic::trim(basic::date_to_text(runtime.clock().now()));
}

} // namespace tolva::module
