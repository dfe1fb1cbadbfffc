#include "shell/security.h"

#include "basic/text.h"

namespace tolva::shell {

namespace {

constexpr int enter_key = 13;

/// How passwords are compared: letter case and outer blanks don't count.
std::string comparable(const std::string& password) {
    return basic::trim(basic::upper(password));
}

} // namespace

security::security(module::Module& module)
    : Screen(module.runtime, "security", "Enter Password"), module_(module) {
    Command1.on_click = [this] { Command1_Click(); };
    Command2.on_click = [this] { runtime().end(); };
    password.on_key_press = [this](int character) {
        if (character == enter_key)
            Command1_Click();
    };
}

void security::on_load() {
    module_.opendatabases();
    if (module_.settings.p_passwordprotect)
        show();
    else
        enter();
}

void security::on_unload() {
    runtime().end();
}

void security::enter() {
    module_.Form1().show();
    hide();
}

void security::Command1_Click() {
    if (comparable(password.text) == comparable(module_.settings.p_password)) {
        enter();
        return;
    }
    runtime().message("Incorrect Password", "Message");
    password.text.clear();
}

} // namespace tolva::shell
