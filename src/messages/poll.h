#pragma once

#include "module/module.h"

namespace tolva::messages {

/// Raises every reminder that is due and not yet raised, the oldest first, each in a dialog of its own that
/// doesn't take the focus. A row is flagged ahead of its dialog, so it can never rise twice. Safe between any
/// two user actions. `timer` is the main menu's, which each poll re-arms.
void pollmessages(module::Module& module, platform::Timer& timer);

/// "Show Today's Messages": a preview of what has not yet risen today, times to come included. It flags
/// nothing, so the poll raises the same messages again at their time.
void show_todays_messages(module::Module& module, platform::Timer& timer);

/// "Print Today's Messages": the same rows, on paper. The printer breaks the pages by itself.
void print_todays_messages(module::Module& module);

} // namespace tolva::messages
