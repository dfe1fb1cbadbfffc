#include "search/zipcode.h"

#include "basic/text.h"

namespace tolva::search {

namespace {

constexpr int enter_key = 13;

} // namespace

zipcode::zipcode(module::Module& module)
    : Screen(module.runtime, "zipcode", "Add City, State, Zip Code"), module_(module) {
    Command1.on_click = [this] { Command1_Click(); };
    Command2.on_click = [this] {
        for (platform::TextBox* box : {&zcity, &zstate, &zzip})
            box->text.clear();
    };
    Command3.on_click = [this] { unload(); };
    // The whole entry can be done from the keyboard: Enter in the last box adds and leaves.
    zzip.on_key_press = [this](int character) {
        if (character != enter_key)
            return;
        Command1_Click();
        unload();
    };
}

void zipcode::Command1_Click() {
    dao::Recordset& set = *module_.zipset;
    set.AddNew();
    set.write("z_city", basic::trim(zcity.text));
    set.write("z_state", basic::trim(zstate.text));
    set.write("z_zip", basic::trim(zzip.text));
    set.Update();
    runtime().message("Zip Code Added", "Message");
    unload();
}

} // namespace tolva::search
