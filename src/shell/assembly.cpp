#include "shell/assembly.h"

#include "messages/generalmessagecreate.h"
#include "records/addressbook.h"
#include "records/listings.h"
#include "records/prospect.h"
#include "records/sold.h"
#include "search/addresssearch.h"
#include "search/listingsearch.h"
#include "search/prospectsearch.h"
#include "search/zipcode.h"
#include "shell/choosedate.h"
#include "shell/form1.h"
#include "shell/preferences.h"
#include "shell/security.h"

namespace tolva::shell {

namespace {

template <class T, class Place>
void place(module::Module& module, platform::Slot<Place>& slot) {
    slot.make = [&module] { return std::make_unique<T>(module); };
}

} // namespace

void assemble(module::Module& module) {
    place<security>(module, module.security);
    place<Form1>(module, module.Form1);
    place<preferences>(module, module.preferences);
    place<choosedate>(module, module.choosedate);
    place<records::listings>(module, module.listings);
    place<records::prospect>(module, module.prospect);
    place<records::sold>(module, module.sold);
    place<records::addressbook>(module, module.addressbook);
    place<search::listingsearch>(module, module.listingsearch);
    place<search::prospectsearch>(module, module.prospectsearch);
    place<search::addresssearch>(module, module.addresssearch);
    place<search::zipcode>(module, module.zipcode);
    place<messages::generalmessagecreate>(module, module.generalmessagecreate);
}

void start(module::Module& module) {
    module.runtime.run([&module] { module.security(); });
}

} // namespace tolva::shell
