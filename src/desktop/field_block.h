#pragma once

#include <string>
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
        plain,  ///< a check box, or a label of the screen's own
        word,   ///< a decorative word between fields
    };

    /// Its object name; of a word, the word.
    const char* control;
    Kind kind;
    int characters = 0;
    /// What a screen reader says where the entry's label names another control.
    std::string spoken = {};
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

Field fixed(const char* control, int characters, std::string spoken = {});
Field grows(const char* control, int characters, std::string spoken = {});
Field lines(const char* control, int characters, std::string spoken = {});
Field button(const char* control, std::string spoken);
Field plain(const char* control);
Field word(const char* text);
/// A date and the button that picks it.
Entry date_entry(const char* label, const char* field, const char* button, std::string spoken);

/// How many characters a date takes.
constexpr int date_characters = 10;

/// Fills a frame (or any widget without a layout) with rows.
void fill_block(FormBuilder& builder, QWidget& frame, const std::vector<Row>& rows);
/// A decorative frame with rows.
QGroupBox* titled_block(FormBuilder& builder, const char* title, const std::vector<Row>& rows);

/// The check boxes of an array, down one column after the other.
QLayout* tick_columns(FormBuilder& builder, const char* array, int count, int columns);

} // namespace tolva::desktop
