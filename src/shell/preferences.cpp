#include "shell/preferences.h"

#include "basic/text.h"

namespace tolva::shell {

using module::Settings;

preferences::preferences(module::Module& module)
    : Screen(module.runtime, "preferences", "Preferences"), module_(module) {
    pref_bdayschedule[Settings::birthdays_always].caption = "Always";
    pref_bdayschedule[Settings::birthdays_prompt].caption = "Prompt Each Time";
    pref_bdayschedule[Settings::birthdays_never].caption = "Never";

    settings_ = std::vector<Pair>{
        {thepassword, &Settings::p_password},   {pref_tmargin, &Settings::tmargin},
        {pref_lmargin, &Settings::lmargin},     {pref_rmargin, &Settings::rmargin},
        {pref_bmargin, &Settings::bmargin},     {pref_labeladjust, &Settings::labeladjust},
        {pref_expire, &Settings::p_expire},     {pref_bday, &Settings::p_bday},
        {pref_customer, &Settings::p_customer}, {pref_prospect, &Settings::p_prospect},
        {pref_inmarket, &Settings::p_inmarket}, {salesperson1, &Settings::salespersonname},
    };
    lists_ = std::vector<List>{
        {construction, module::construction_list},
        {basement, module::basement_list},
        {garage, module::garage_list},
        {listingsource, module::listingsource_list},
    };

    // All number boxes but pref_expire.
    for (platform::TextBox* box :
         {&pref_bday, &pref_bmargin, &pref_customer, &pref_inmarket, &pref_labeladjust, &pref_lmargin,
          &pref_prospect, &pref_rmargin, &pref_tmargin})
        box->on_got_focus = [this] { module::Module::selectfieldtext(*this); };

    Command1.on_click = [this] { Command1_Click(); };
    Command2.on_click = [this] {
        Command1_Click();
        unload();
    };
}

void preferences::on_load() {
    module_.loadpreferences();
    const Settings& settings = module_.settings;
    pref_bdayschedule.choose(settings.p_bdayschedule);
    for (const Pair& pair : settings_)
        pair.box.text = basic::trim(settings.*pair.setting);
    passwordprotect.value = settings.p_passwordprotect ? 1 : 0;
    for (const List& list : lists_)
        for (const std::string& item : module::read_option_list(module_.disk, module_.appfolder, list.name))
            list.box.text += item + "\r\n";
    for (int index = 0; index < module::feature_count; ++index)
        feature[index].text = basic::trim(settings.features.at(static_cast<std::size_t>(index)));
}

void preferences::on_unload() {
    module_.Form1().show();
}

void preferences::Command1_Click() {
    for (const List& list : lists_)
        module::write_option_list(module_.disk, module_.appfolder, list.name, list.box.text);

    Settings& settings = module_.settings;
    settings.p_passwordprotect = passwordprotect.value == 1;
    for (const Pair& pair : settings_)
        settings.*pair.setting = basic::trim(pair.box.text);
    for (const auto& option : pref_bdayschedule)
        if (option->value)
            settings.p_bdayschedule = option->index();
    module_.savepreferences();

    // The names in memory stay as they were until the settings are loaded again.
    module::Features features;
    for (int index = 0; index < module::feature_count; ++index)
        features.at(static_cast<std::size_t>(index)) = basic::trim(feature[index].text);
    module::write_features(module_.disk, module_.appfolder, features);
}

} // namespace tolva::shell
