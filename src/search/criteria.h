#pragma once

#include <string>

#include "module/module.h"

namespace tolva::search {

/// Builds a query text out of criteria, a fragment for each that is filled. Whether a text is filled is asked
/// of the untrimmed text, so one blank passes and gives a pattern of two asterisks. What the user types goes
/// in as it is: a quote breaks the query.
class Criteria {
  public:
    Criteria(const module::Module& module, std::string query) : module_(module), query_(std::move(query)) {}

    /// " and (column like '*text*')"
    void contains(const char* column, const platform::TextControl& box);
    /// The same over either of two columns.
    void either_contains(const char* column, const char* twin, const platform::TextControl& box);
    /// The telephone, with the quote ahead of the closing asterisk: the text is no valid query, so any entry
    /// here makes the store reject the search. Meant.
    void phone(const platform::TextControl& box);

    /// A pair of dates; left out without a word unless both are dates.
    void dates(const char* column, const platform::TextControl& from, const platform::TextControl& to);
    /// A pair of numbers, each by its leading number; left out unless both are filled.
    void numbers(const char* column, const platform::TextControl& from, const platform::TextControl& to);
    void either_numbers(const char* column, const char* twin, const platform::TextControl& from,
                        const platform::TextControl& to);

    bool both_dates(const platform::TextControl& from, const platform::TextControl& to) const;
    void add(const std::string& fragment) { query_ += fragment; }
    const std::string& query() const { return query_; }

  private:
    const module::Module& module_;
    std::string query_;
};

/// Where a search goes: the store's set and view, and the record screen that shows them.
struct Target {
    platform::Slot<module::RecordEntry>& screen;
    dao::Database& database;
    std::unique_ptr<dao::Recordset>& set;
    const char* nothing_found;
};

/// Opens the composed text and tells how many it found; false, with the set left empty, when none.
bool run_search(module::Module& module, const Target& target, const std::string& query);

/// Rebuilds the record screen's grid over what was found. A screen that isn't loaded is loaded by this, runs
/// its view, and stays unseen.
void show_found(const Target& target);

} // namespace tolva::search
