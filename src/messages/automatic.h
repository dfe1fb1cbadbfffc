#pragma once

#include <string>

#include "messages/message_kind.h"
#include "module/module.h"

namespace tolva::messages {

/// A message that a record screen schedules by itself.
struct AutomaticMessage {
    basic::Date date;
    std::string time;
    std::string text;
    MessageKind kind;
    std::string customerid;
};

/// Stores it by way of the compose dialog, unseen. Touching the dialog loads it under the old kind and
/// empties its text, so it is filled after that; one that stands half written is overwritten, and unloaded
/// with the save.
void schedule(module::Module& module, const AutomaticMessage& message);

} // namespace tolva::messages
