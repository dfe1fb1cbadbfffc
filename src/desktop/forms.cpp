#include "desktop/forms.h"

#include <cassert>
#include <string_view>

namespace tolva::desktop {

namespace {

struct Layout {
    std::string_view screen;
    void (*build)(FormBuilder&);
};

constexpr Layout layouts[] = {
    {"security", build_security},
    {"Form1", build_form1},
    {"preferences", build_preferences},
    {"choosedate", build_choosedate},
    {"listings", build_listings},
    {"prospect", build_prospect},
    {"sold", build_sold},
    {"addressbook", build_addressbook},
    {"listingsearch", build_listingsearch},
    {"prospectsearch", build_prospectsearch},
    {"addresssearch", build_addresssearch},
    {"zipcode", build_zipcode},
    {"generalmessage", build_generalmessage},
    {"generalmessagecreate", build_generalmessagecreate},
    {"planner", build_planner},
    {"appointment", build_appointment},
    {"graph", build_graph},
    {"paymentcalculator", build_paymentcalculator},
    {"letter", build_letter},
    {"instructions", build_instructions},
    {"followupletters", build_followupletters},
    {"label", build_label},
    {"printaddress", build_printaddress},
    {"frmMain", build_frmmain},
    {"frmDocument", build_frmdocument},
};

} // namespace

std::unique_ptr<Form> make_form(platform::Screen& screen, EventState& state) {
    auto form = std::make_unique<Form>(screen, state);
    for (const Layout& layout : layouts) {
        if (layout.screen != screen.name())
            continue;
        FormBuilder builder(*form, screen);
        layout.build(builder);
        form->order_tabs();
        return form;
    }
    assert(!"a screen without a form");
    return form;
}

} // namespace tolva::desktop
