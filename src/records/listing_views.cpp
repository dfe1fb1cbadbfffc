// The ready-made views of the listings screen.

#include "basic/number.h"
#include "records/listings.h"

namespace tolva::records {

namespace {

/// The working mark of each follow-up view.
constexpr int birthday_mark = 1;
constexpr int co_birthday_mark = 2;
constexpr int expiring_mark = 10;
constexpr int contact_mark = 11;

constexpr const char* clear_all_listed =
    "Select * from [table] where datelisted > #1/1/1800# order by last, first, datelisted";

std::string listed_within(const DateSpan& span) {
    return "select * from [table] where datelisted >= #" + span.start + "# and datelisted <= #" + span.end +
           "# order by datelisted, last, first";
}

} // namespace

void listings::bind_views() {
    m_thismonth.on_click = [this] {
        show_view("This Month's Listings", listed_within(month_of(module_.today())));
    };
    m_lastmonth.on_click = [this] {
        show_view("Last Month's Listings", listed_within(month_before(module_.today())));
    };
    // Without an upper bound: a listing dated in the future shows too.
    m_yeartodate.on_click = [this] {
        show_view("Year-to-Date Listings", "select * from [table] where datelisted >= #1/1/" +
                                               std::to_string(module_.this_year()) +
                                               "# order by datelisted, last, first");
    };
    m_alllistings.on_click = [this] {
        show_view("All Listings",
                  "select * from [table] where datelisted>#1/1/1800# order by datelisted, last, first");
    };
    m_birthdays.on_click = [this] { show_follow_up(birthdays_view()); };
    m_customerstocontact.on_click = [this] { show_follow_up(contacts_view()); };
    m_expiringlistings.on_click = [this] { show_follow_up(expiring_view()); };
}

FollowUpView listings::birthdays_view() const {
    return {
        "Customers with Birthdays",
        clear_all_listed,
        "Select * from [table] where birthday > #01/01/1800# or co_birthday > #01/01/1800# order by last, "
        "first",
        "select * from [table] where flag>0 order by last, first",
        "birthday",
        "No Birthdays",
        [today = module_.today()](const dao::Recordset& row) -> std::optional<int> {
            // The second owner's mark overwrites the first one's.
            if (birthday_within_a_week(row.field("co_birthday"), today))
                return co_birthday_mark;
            if (birthday_within_a_week(row.field("birthday"), today))
                return birthday_mark;
            return std::nullopt;
        }};
}

FollowUpView listings::contacts_view() const {
    return {
        "Customers to Contact",
        clear_all_listed,
        "Select * from [table] where datenextcontact > #01/01/1800# order by datenextcontact, last, first",
        "select * from [table] where flag>0 order by datenextcontact, last, first",
        "contact",
        "No Customers to Contact",
        [today = module_.today(), days = basic::leading_number(module_.settings.p_customer)](
            const dao::Recordset& row) -> std::optional<int> {
            if (within_days(row.field("datenextcontact"), days, today))
                return contact_mark;
            return std::nullopt;
        }};
}

/// Clears only rows that have an expiry, so a row without one keeps a stale mark and comes first.
FollowUpView listings::expiring_view() const {
    return {"Expiring Leases",
            "Select * from [table] where dateexpires > #1/1/1800# order by dateexpires, last",
            "Select * from [table] where dateexpires > #01/01/1800# order by dateexpires, last, first",
            "select * from [table] where flag>0 order by dateexpires, last, first",
            "normal",
            "No Expiring Listings",
            [today = module_.today(), days = basic::leading_number(module_.settings.p_expire)](
                const dao::Recordset& row) -> std::optional<int> {
                if (within_days(row.field("dateexpires"), days, today))
                    return expiring_mark;
                return std::nullopt;
            }};
}

} // namespace tolva::records
