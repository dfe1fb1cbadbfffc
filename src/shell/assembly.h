#pragma once

#include "module/module.h"

namespace tolva::shell {

/// Tells the module how each screen of the program is made.
void assemble(module::Module& module);

/// Starts the program as one event: loads the password gate, which opens the stores and shows itself or the
/// main menu.
void start(module::Module& module);

} // namespace tolva::shell
