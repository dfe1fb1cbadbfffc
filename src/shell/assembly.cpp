#include "shell/assembly.h"

#include "analysis/graph.h"
#include "analysis/paymentcalculator.h"
#include "letters/followupletters.h"
#include "letters/frm_main.h"
#include "letters/letter.h"
#include "messages/appointment.h"
#include "messages/generalmessagecreate.h"
#include "messages/planner.h"
#include "printing/label.h"
#include "printing/printaddress.h"
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
#include "shell/instructions.h"
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
    place<instructions>(module, module.instructions);
    place<records::listings>(module, module.listings);
    place<records::prospect>(module, module.prospect);
    place<records::sold>(module, module.sold);
    place<records::addressbook>(module, module.addressbook);
    place<search::listingsearch>(module, module.listingsearch);
    place<search::prospectsearch>(module, module.prospectsearch);
    place<search::addresssearch>(module, module.addresssearch);
    place<search::zipcode>(module, module.zipcode);
    place<messages::generalmessagecreate>(module, module.generalmessagecreate);
    place<messages::planner>(module, module.planner);
    place<messages::appointment>(module, module.appointment);
    place<printing::label>(module, module.label);
    place<printing::printaddress>(module, module.printaddress);
    place<letters::letter>(module, module.letter);
    place<letters::followupletters>(module, module.followupletters);
    place<letters::frmMain>(module, module.frmMain);
    place<analysis::graph>(module, module.graph);
    place<analysis::paymentcalculator>(module, module.paymentcalculator);
}

void start(module::Module& module) {
    module.runtime.run([&module] { module.security(); });
}

} // namespace tolva::shell
