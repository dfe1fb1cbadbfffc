#include "search/criteria.h"

#include "basic/number.h"
#include "basic/text.h"

namespace tolva::search {

using basic::trim;

namespace {

std::string like(const char* column, const std::string& text) {
    return std::string(column) + " like '*" + text + "*'";
}

std::string between(const std::string& column, const platform::TextControl& from,
                    const platform::TextControl& to) {
    const auto number = [](const platform::TextControl& box) {
        return trim(basic::number_to_text(basic::leading_number(box.text)));
    };
    return column + " >= " + number(from) + " and " + column + " <= " + number(to);
}

bool both_filled(const platform::TextControl& from, const platform::TextControl& to) {
    return !trim(from.text).empty() && !trim(to.text).empty();
}

} // namespace

void Criteria::contains(const char* column, const platform::TextControl& box) {
    if (!box.text.empty())
        add(" and (" + like(column, trim(box.text)) + ")");
}

void Criteria::either_contains(const char* column, const char* twin, const platform::TextControl& box) {
    if (box.text.empty())
        return;
    const std::string text = trim(box.text);
    add(" and ((" + like(column, text) + ") or (" + like(twin, text) + "))");
}

void Criteria::phone(const platform::TextControl& box) {
    if (box.text.empty())
        return;
    const std::string text = trim(box.text);
    add(" and ((homephone like '*" + text + "'*) or (co_homephone like '*" + text + "'*))");
}

void Criteria::dates(const char* column, const platform::TextControl& from, const platform::TextControl& to) {
    if (!both_dates(from, to))
        return;
    add(" and (" + std::string(column) + " >= #" + trim(from.text) + "# and " + column + " <= #" +
        trim(to.text) + "#)");
}

void Criteria::numbers(const char* column, const platform::TextControl& from,
                       const platform::TextControl& to) {
    if (both_filled(from, to))
        add(" and (" + between(column, from, to) + ")");
}

void Criteria::either_numbers(const char* column, const char* twin, const platform::TextControl& from,
                              const platform::TextControl& to) {
    if (both_filled(from, to))
        add(" and ((" + between(column, from, to) + ") or (" + between(twin, from, to) + "))");
}

bool Criteria::both_dates(const platform::TextControl& from, const platform::TextControl& to) const {
    return module_.is_date(from.text) && module_.is_date(to.text);
}

bool run_search(module::Module& module, const Target& target, const std::string& query) {
    constexpr const char* title = "Search Results";
    target.set = target.database.OpenRecordset(query);
    if (target.set->RecordCount() < 1) {
        module.runtime.message(target.nothing_found, title);
        return false;
    }
    target.set->MoveFirst();
    target.set->MoveLast();
    module.runtime.message(std::to_string(target.set->RecordCount()) + " Records Found", title);
    return true;
}

void show_found(const Target& target) {
    if (!target.screen.loaded()) {
        target.screen(); // its load opens the view and fills the grid
        return;
    }
    target.screen->cleargrid();
    target.screen->creategrid("normal");
}

} // namespace tolva::search
