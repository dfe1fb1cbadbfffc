#include "shell/assembly.h"

#include "messages/generalmessagecreate.h"
#include "records/listings.h"
#include "shell/choosedate.h"
#include "shell/form1.h"
#include "shell/preferences.h"
#include "shell/security.h"

namespace tolva::shell {

void assemble(module::Module& module) {
    module.security.make = [&module] { return std::make_unique<security>(module); };
    module.Form1.make = [&module] { return std::make_unique<Form1>(module); };
    module.preferences.make = [&module] { return std::make_unique<preferences>(module); };
    module.choosedate.make = [&module] { return std::make_unique<choosedate>(module); };
    module.listings.make = [&module] { return std::make_unique<records::listings>(module); };
    module.generalmessagecreate.make = [&module] {
        return std::make_unique<messages::generalmessagecreate>(module);
    };
}

void start(module::Module& module) {
    module.runtime.run([&module] { module.security(); });
}

} // namespace tolva::shell
