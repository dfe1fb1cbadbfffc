#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "dao/recordset.h"
#include "platform/controls.h"

namespace tolva::module {
class Module;
} // namespace tolva::module

namespace tolva::records {

/// One column of a record: how its control goes into the row, comes from it, and is emptied. A screen's list
/// stands in the order of writing. What is not told is not done: a column without `save` is never written,
/// one without `clear` keeps what it shows.
struct FieldRule {
    const char* column;
    std::function<jet::Value()> save;
    /// Called for values that are not null, after the form was emptied.
    std::function<void(const dao::FieldValue&)> load;
    std::function<void()> clear;
};

/// How a text is stored. Cuts count characters.
using SaveRule = std::function<jet::Value(const std::string& text)>;
/// What a value looks like in its control.
using LoadRule = std::function<std::string(const dao::FieldValue& value)>;

namespace save {

/// Cut first and then trimmed, so a cut in the middle of blanks ends shorter than the limit.
SaveRule cut_then_trim(std::size_t limit);
SaveRule trim_then_cut(std::size_t limit);
SaveRule trimmed();
/// The leading number, as a double.
SaveRule number();
/// The leading number taken down to a whole one.
SaveRule whole_number();
/// The trimmed text when it is a date, which the store then converts; otherwise null.
SaveRule date_or_null(const module::Module& module);

} // namespace save

namespace load {

LoadRule trimmed();
/// Only what is above 0; otherwise empty.
LoadRule positive();

} // namespace load

/// A null `save` is a column that is shown but never written.
FieldRule text_field(const char* column, platform::TextControl& control, SaveRule save, LoadRule load);
/// As above, but emptying the form leaves the control alone.
FieldRule kept_field(const char* column, platform::TextControl& control, SaveRule save, LoadRule load);
FieldRule check_field(const char* column, platform::CheckBox& control);

} // namespace tolva::records
