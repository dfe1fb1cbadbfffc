#pragma once

#include "module/module.h"
#include "module/option_lists.h"

namespace tolva::shell {

/// The settings row and the five text lists, edited whole. Its EXIT saves; only the window's close box leaves
/// everything as it was. Nothing is tested.
class preferences : public platform::Screen {
  public:
    explicit preferences(module::Module& module);

    platform::OptionGroup pref_bdayschedule{*this, "pref_bdayschedule", 3};
    platform::TextBox pref_bday{*this, "pref_bday"};

    platform::TextBox pref_expire{*this, "pref_expire"};
    platform::TextBox pref_customer{*this, "pref_customer"};
    platform::TextBox pref_prospect{*this, "pref_prospect"};
    platform::TextBox pref_inmarket{*this, "pref_inmarket"};

    platform::TextBox pref_tmargin{*this, "pref_tmargin"};
    platform::TextBox pref_bmargin{*this, "pref_bmargin"};
    platform::TextBox pref_lmargin{*this, "pref_lmargin"};
    platform::TextBox pref_rmargin{*this, "pref_rmargin"};
    platform::TextBox pref_labeladjust{*this, "pref_labeladjust"};

    platform::TextBox thepassword{*this, "thepassword"};
    platform::CheckBox passwordprotect{*this, "passwordprotect", "Password Protect?"};
    platform::TextBox salesperson1{*this, "salesperson1"};

    platform::TextBox construction{*this, "construction", platform::TextBox::Kind::multi_line};
    platform::TextBox basement{*this, "basement", platform::TextBox::Kind::multi_line};
    platform::TextBox garage{*this, "garage", platform::TextBox::Kind::multi_line};
    platform::TextBox listingsource{*this, "listingsource", platform::TextBox::Kind::multi_line};

    platform::ControlArray<platform::TextBox> feature{*this, "feature", module::feature_count};

    platform::Button Command1{*this, "Command1", "&Save Preferences"};
    platform::Button Command2{*this, "Command2", "E&XIT"};

    void on_load() override;
    void on_unload() override;

  private:
    /// A box and the setting that it shows.
    struct Pair {
        platform::TextBox& box;
        std::string module::Settings::*setting;
    };
    struct List {
        platform::TextBox& box;
        const char* name;
    };

    void Command1_Click();

    module::Module& module_;
    std::vector<Pair> settings_;
    std::vector<List> lists_;
};

} // namespace tolva::shell
