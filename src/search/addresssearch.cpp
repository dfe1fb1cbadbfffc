#include "search/addresssearch.h"

#include "basic/run_time_error.h"

namespace tolva::search {

namespace {

constexpr int object_required = 424;

} // namespace

addresssearch::addresssearch(module::Module& module)
    : Screen(module.runtime, "addresssearch", "Address Search"), module_(module) {
    for (platform::TextBox* box : {&businessname, &city, &first, &last, &notes, &phone, &state})
        box->on_got_focus = [this] { module::Module::selectfieldtext(*this); };
    Command1.on_click = [this] { Command1_Click(); };
    Command2.on_click = [this] {
        for (platform::TextBox* box : {&last, &first, &businessname, &city, &state, &phone, &notes})
            box->text.clear();
    };
    Command3.on_click = [this] { leave(); };
}

std::string addresssearch::compose() const {
    Criteria criteria(module_, "select * from [table] where id > 0");
    criteria.contains("last", last);
    criteria.contains("first", first);
    criteria.contains("businessname", businessname);
    criteria.contains("city", city);
    criteria.contains("state", state);
    // The telephone is looked for through a reference that was never set: any entry here ends the search.
    // Meant.
    if (!phone.text.empty())
        throw basic::RunTimeError(object_required);
    criteria.contains("notes", notes);
    return criteria.query();
}

void addresssearch::Command1_Click() {
    const Target target{module_.addressbook, *module_.addressdb, module_.addressset, "No Addresses Found"};
    module_.addressquery = compose();
    if (run_search(module_, target, module_.addressquery))
        show_found(target);
}

void addresssearch::leave() {
    hide();
    module_.addressbook().show();
}

bool addresssearch::on_close() {
    leave();
    return false;
}

} // namespace tolva::search
