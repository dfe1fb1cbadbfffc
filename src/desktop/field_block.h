#pragma once

#include <vector>

#include "desktop/form_builder.h"

namespace tolva::desktop {

/// A form as a table to read: frames of rows, rows of entries, entries of a told label and the controls that
/// it stands for. What is the same for all forms (alignment, gaps, growth) stands in `field_block.cpp`.

struct Field {
    enum class Kind {
        fixed,  ///< a box as wide as its characters: dates, numbers, telephones
        grows,  ///< a box of at least so many characters that takes what room there is
        button, ///< the small button beside a field
        lines,  ///< many lines of so many characters; the row grows with the window
        tick,   ///< a check box
    };

    const char* control;
    Kind kind;
    int characters = 0;
    /// What a screen reader says where the entry's label names another control.
    const char* spoken = nullptr;
};

struct Entry {
    /// Empty for controls that need none.
    const char* label;
    std::vector<Field> fields;
    /// The label stands above the fields and not beside them.
    bool label_above = false;
};

/// Entries side by side. A row with fewer entries than its frame has columns gives the rest to the last one.
using Row = std::vector<Entry>;

Field fixed(const char* control, int characters, const char* spoken = nullptr);
Field grows(const char* control, int characters, const char* spoken = nullptr);
Field lines(const char* control, int characters, const char* spoken = nullptr);
Field tick(const char* control);
/// A date and the button that picks it.
Entry date_entry(const char* label, const char* field, const char* button, const char* spoken);

/// Fills a frame (or any widget without a layout) with rows.
void fill_block(FormBuilder& builder, QWidget& frame, const std::vector<Row>& rows);
/// A decorative frame with rows.
QGroupBox* titled_block(FormBuilder& builder, const char* title, const std::vector<Row>& rows);

} // namespace tolva::desktop
