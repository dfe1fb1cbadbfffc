#pragma once

#include <memory>

#include "desktop/form_builder.h"

namespace tolva::desktop {

/// Each screen's layout.
void build_security(FormBuilder& builder);
void build_form1(FormBuilder& builder);
void build_preferences(FormBuilder& builder);
void build_choosedate(FormBuilder& builder);
void build_listings(FormBuilder& builder);
void build_prospect(FormBuilder& builder);
void build_sold(FormBuilder& builder);
void build_addressbook(FormBuilder& builder);
void build_listingsearch(FormBuilder& builder);
void build_prospectsearch(FormBuilder& builder);
void build_addresssearch(FormBuilder& builder);
void build_zipcode(FormBuilder& builder);
void build_generalmessage(FormBuilder& builder);
void build_generalmessagecreate(FormBuilder& builder);
void build_planner(FormBuilder& builder);
void build_appointment(FormBuilder& builder);
void build_graph(FormBuilder& builder);
void build_paymentcalculator(FormBuilder& builder);
void build_letter(FormBuilder& builder);
void build_instructions(FormBuilder& builder);
void build_followupletters(FormBuilder& builder);
void build_frmmain(FormBuilder& builder);
void build_frmdocument(FormBuilder& builder);
void build_label(FormBuilder& builder);
void build_printaddress(FormBuilder& builder);

/// The window of a screen, laid out by the screen's name and not shown yet.
std::unique_ptr<Form> make_form(platform::Screen& screen, EventState& state);

} // namespace tolva::desktop
