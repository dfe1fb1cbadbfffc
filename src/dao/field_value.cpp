#include "dao/field_value.h"

#include "basic/date.h"
#include "basic/run_time_error.h"
#include "dao/conversion.h"

namespace tolva::dao {

namespace {

constexpr int type_mismatch = 13;
constexpr int invalid_use_of_null = 94;

/// The content as a conversion gave it; the language's errors where there was nothing to give.
template <typename Content>
Content require(const std::optional<Content>& content, const jet::Value& value) {
    if (jet::is_null(value))
        throw basic::RunTimeError(invalid_use_of_null);
    if (!content)
        throw basic::RunTimeError(type_mismatch);
    return *content;
}

} // namespace

std::string FieldValue::text() const {
    if (const auto* text = std::get_if<std::string>(&value_))
        return *text;
    return require(text_of(value_), value_);
}

double FieldValue::number() const {
    return require(number_of(value_), value_);
}

bool FieldValue::yes_no() const {
    return require(yes_no_of(value_), value_);
}

basic::Date FieldValue::date() const {
    return require(date_of(value_, current_year_), value_);
}

bool FieldValue::is_null_or_empty() const {
    const auto* text = std::get_if<std::string>(&value_);
    return is_null() || (text != nullptr && text->empty());
}

} // namespace tolva::dao
