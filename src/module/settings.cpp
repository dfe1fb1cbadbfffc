#include "module/settings.h"

#include "basic/delimited_file.h"
#include "basic/text.h"
#include "module/module.h"
#include "module/option_lists.h"
#include "module/shared_routines.h"

namespace tolva::module {

namespace {

/// One column of the row and the member that holds it, by kind.
struct Column {
    const char* name;
    std::int32_t Settings::*counter = nullptr;
    std::string Settings::*text = nullptr;
    void (*load)(Settings&, const dao::FieldValue&) = nullptr;
    jet::Value (*save)(const Settings&) = nullptr;
};

constexpr Column counter(const char* name, std::int32_t Settings::*member) {
    return {name, member, {}, {}, {}};
}
constexpr Column text(const char* name, std::string Settings::*member) {
    return {name, {}, member, {}, {}};
}

const Column address_counter = counter("address_counter", &Settings::address_counter);
const Column listing_counter = counter("listing_counter", &Settings::listing_counter);
const Column prospect_counter = counter("prospect_counter", &Settings::prospect_counter);
const Column sold_counter = counter("sold_counter", &Settings::sold_counter);
const Column tmargin = text("tmargin", &Settings::tmargin);
const Column bmargin = text("bmargin", &Settings::bmargin);
const Column lmargin = text("lmargin", &Settings::lmargin);
const Column rmargin = text("rmargin", &Settings::rmargin);
const Column p_expire = text("p_expire", &Settings::p_expire);
const Column p_bday = text("p_bday", &Settings::p_bday);
const Column p_customer = text("p_customer", &Settings::p_customer);
const Column p_prospect = text("p_prospect", &Settings::p_prospect);
const Column p_inmarket = text("p_inmarket", &Settings::p_inmarket);
const Column p_sold = text("p_sold", &Settings::p_sold);
const Column p_password = text("p_password", &Settings::p_password);
const Column labeladjust = text("labeladjust", &Settings::labeladjust);
const Column salespersonname = text("salespersonname", &Settings::salespersonname);
const Column lastdate{
    "lastdate",
    {},
    {},
    [](Settings& settings, const dao::FieldValue& value) { settings.lastdate = value.date(); },
    [](const Settings& settings) -> jet::Value { return settings.lastdate; }};
const Column p_bdayschedule{
    "p_bdayschedule",
    {},
    {},
    [](Settings& settings, const dao::FieldValue& value) {
        settings.p_bdayschedule = static_cast<int>(value.number());
    },
    [](const Settings& settings) -> jet::Value { return std::int64_t{settings.p_bdayschedule}; }};
const Column p_passwordprotect{
    "p_passwordprotect",
    {},
    {},
    [](Settings& settings, const dao::FieldValue& value) { settings.p_passwordprotect = value.yes_no(); },
    [](const Settings& settings) -> jet::Value { return settings.p_passwordprotect; }};

/// `p_sold` is not read: nothing fills its memory value, so each save stores an empty text.
const Column* const load_order[] = {
    &address_counter, &listing_counter,   &prospect_counter, &sold_counter,    &lastdate,
    &tmargin,         &bmargin,           &lmargin,          &rmargin,         &p_expire,
    &p_bday,          &p_customer,        &p_prospect,       &p_bdayschedule,  &p_inmarket,
    &p_password,      &p_passwordprotect, &labeladjust,      &salespersonname,
};

const Column* const save_order[] = {
    &address_counter, &listing_counter, &prospect_counter,  &sold_counter,    &tmargin,
    &bmargin,         &lmargin,         &rmargin,           &p_bdayschedule,  &labeladjust,
    &p_expire,        &p_bday,          &p_customer,        &p_prospect,      &p_inmarket,
    &p_sold,          &p_password,      &p_passwordprotect, &salespersonname, &lastdate,
};

} // namespace

void Module::loadpreferences() {
    preferenceset = preferencedb->OpenRecordset("preference_table");
    preferenceset->MoveFirst();
    for (const Column* column : load_order) {
        const dao::FieldValue value = preferenceset->field(column->name);
        if (column->counter)
            settings.*column->counter = static_cast<std::int32_t>(value.number());
        else if (column->text)
            // A null from another program's hand is as good as an empty text here.
            settings.*column->text = shown_text(value);
        else
            column->load(settings, value);
    }
    settings.features = read_features(disk, appfolder);
}

void Module::savepreferences() {
    preferenceset = preferencedb->OpenRecordset("preference_table");
    settings.lastdate = today();
    preferenceset->MoveFirst();
    preferenceset->Edit();
    for (const Column* column : save_order) {
        if (column->counter)
            preferenceset->write(column->name, std::int64_t{settings.*column->counter});
        else if (column->text)
            preferenceset->write(column->name, basic::trim(settings.*column->text));
        else
            preferenceset->write(column->name, column->save(settings));
    }
    preferenceset->Update();
}

} // namespace tolva::module
