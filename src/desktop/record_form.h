#pragma once

#include <functional>
#include <vector>

#include "desktop/field_block.h"

namespace tolva::desktop {

/// What the four record screens have in common as windows: a page with the list and the quick search, and a
/// page with the form and the buttons that walk the records. A screen says which of its controls play the
/// parts.
struct RecordForm {
    const char* search_button;
    const char* exit_button;
    std::vector<const char*> navigation;
    const char* close_button;
    /// Where the focus goes when the form comes up.
    const char* first;
    /// Lays the form's frames out.
    std::function<void(FormBuilder& builder, QWidget& page)> fill_form;
    /// Lays out what stands below the list, if anything.
    std::function<void(FormBuilder& builder, QBoxLayout& place)> fill_below_list = {};
};

void build_record_form(FormBuilder& builder, const RecordForm& record);

} // namespace tolva::desktop
