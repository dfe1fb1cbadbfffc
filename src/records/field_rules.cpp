#include "records/field_rules.h"

#include <cmath>

#include "basic/number.h"
#include "basic/text.h"
#include "module/module.h"

namespace tolva::records {

namespace save {

SaveRule cut_then_trim(std::size_t limit) {
    return [limit](const std::string& text) { return basic::trim(basic::left(text, limit)); };
}

SaveRule trim_then_cut(std::size_t limit) {
    return [limit](const std::string& text) { return basic::left(basic::trim(text), limit); };
}

SaveRule trimmed() {
    return [](const std::string& text) { return basic::trim(text); };
}

SaveRule number() {
    return [](const std::string& text) { return basic::leading_number(text); };
}

SaveRule whole_number() {
    return [](const std::string& text) { return std::floor(basic::leading_number(text)); };
}

SaveRule date_or_null(const module::Module& module) {
    return [&module](const std::string& text) -> jet::Value {
        if (!module.is_date(text))
            return std::monostate{};
        return basic::trim(text);
    };
}

} // namespace save

namespace load {

LoadRule trimmed() {
    return [](const dao::FieldValue& value) { return basic::trim(value.text()); };
}

LoadRule positive() {
    return [](const dao::FieldValue& value) {
        std::string text = basic::trim(value.text());
        return basic::leading_number(text) > 0 ? text : std::string();
    };
}

} // namespace load

FieldRule text_field(const char* column, platform::TextControl& control, SaveRule save, LoadRule load) {
    FieldRule rule = kept_field(column, control, std::move(save), std::move(load));
    rule.clear = [&control] { control.text.clear(); };
    return rule;
}

FieldRule kept_field(const char* column, platform::TextControl& control, SaveRule save, LoadRule load) {
    FieldRule rule{
        column, nullptr,
        [&control, load = std::move(load)](const dao::FieldValue& value) { control.text = load(value); },
        nullptr};
    if (save)
        rule.save = [&control, save = std::move(save)] { return save(control.text); };
    return rule;
}

FieldRule check_field(const char* column, platform::CheckBox& control) {
    return {column, [&control]() -> jet::Value { return control.value != 0; },
            [&control](const dao::FieldValue& value) { control.value = value.yes_no() ? 1 : 0; },
            [&control] { control.value = 0; }};
}

} // namespace tolva::records
