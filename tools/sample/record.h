#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <utility>

#include "dao/recordset.h"
#include "sample/people.h"

namespace tolva::sample {

/// Writes one new row column by column; it is stored by `store`. Text columns that are not written hold an
/// empty text, as on a record that was saved from its screen.
class Record {
  public:
    explicit Record(dao::Recordset& rows);

    Record& text(const std::string& column, const std::string& value);
    Record& number(const std::string& column, double value);
    Record& yes(const std::string& column, bool value = true);
    Record& date(const std::string& column, std::optional<basic::Date> value);

    /// The columns that every customer table has.
    Record& person(const Person& person);

    void store() { rows_.Update(); }

  private:
    dao::Recordset& rows_;
};

/// "M/D/YYYY: text" lines, the latest first, as contacts are noted.
std::string contact_notes(Dice& dice, basic::Date today, int lines);

} // namespace tolva::sample
