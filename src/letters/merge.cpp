#include "letters/merge.h"

#include <string_view>

#include "basic/text.h"

namespace tolva::letters {

using basic::trim;

namespace {

/// Works on one letter's source for one customer.
class Merger {
  public:
    Merger(std::string source, const dao::Recordset& customer)
        : source_(std::move(source)), customer_(customer) {}

    /// The column is read whether the letter has the tag or not.
    void column(std::string_view tag, const char* name) { text(tag, value(name)); }
    void text(std::string_view tag, const std::string& value) {
        for (std::size_t at = source_.find(tag); at != std::string::npos;
             at = source_.find(tag, at + value.size()))
            source_.replace(at, tag.size(), value);
    }

    /// Two tests one after the other; when the last names are equal and a first name is missing neither
    /// holds, and the tag stays in the letter.
    void both_names(std::string_view tag) {
        const std::string first = value("first");
        const std::string co_first = value("co_first");
        const bool same_last = value("last") == value("co_last");
        if (same_last && !first.empty() && !co_first.empty())
            text(tag, first + " & " + co_first);
        if (!same_last)
            text(tag, first);
    }

    std::string take() { return std::move(source_); }

  private:
    std::string value(const char* name) const { return trim(customer_.field(name).text()); }

    std::string source_;
    const dao::Recordset& customer_;
};

} // namespace

std::string spelled_date(basic::Date date) {
    const basic::DateParts parts = basic::parts_of(date);
    return std::string(basic::month_names[static_cast<std::size_t>(parts.month - 1)]) + " " +
           std::to_string(parts.day) + ", " + std::to_string(parts.year);
}

std::string merge(std::string source, const dao::Recordset& customer, const module::Module& module,
                  const std::string& ps, TagOrder order) {
    Merger letter(std::move(source), customer);
    letter.column("<firstname>", "first");
    letter.column("<lastname>", "last");
    letter.column("<cofirstname>", "co_first");
    letter.column("<colastname>", "co_last");
    letter.column("<phone>", "homephone");
    letter.column("<address>", "address");
    letter.column("<city>", "city");
    letter.column("<state>", "state");
    letter.column("<zip>", "zip");
    if (order == TagOrder::others)
        letter.text("<ps>", trim(ps));
    letter.column("<businessname>", "businessname");
    letter.text("<salesperson>", trim(module.settings.salespersonname));
    if (order == TagOrder::listings)
        letter.text("<ps>", trim(ps));
    letter.both_names("<bothnames>");
    letter.text("<date>", spelled_date(module.today()));
    return letter.take();
}

} // namespace tolva::letters
