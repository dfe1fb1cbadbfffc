#include "messages/automatic.h"

#include "messages/generalmessagecreate.h"

namespace tolva::messages {

void schedule(module::Module& module, const AutomaticMessage& message) {
    auto& dialog = module.generalmessagecreate();
    dialog.Month1.value = message.date;
    dialog.time1.text = message.time;
    dialog.message1.text = message.text;
    module.messagekind = message.kind;
    dialog.customerid.text = message.customerid;
    dialog.savemessage();
}

} // namespace tolva::messages
