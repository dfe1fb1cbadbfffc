#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "basic/date.h"

namespace tolva::module {

constexpr int feature_count = 22;

/// The one row of `preference_table` in memory, under its columns' names, and the feature names. Text is
/// trimmed; numbers that the user types stay text and are read by their leading number.
struct Settings {
    /// The last id given in each customer table.
    std::int32_t address_counter = 0;
    std::int32_t listing_counter = 0;
    std::int32_t prospect_counter = 0;
    std::int32_t sold_counter = 0;

    /// The day of the latest save of the row, whatever its reason.
    basic::Date lastdate;

    /// Print margins in inches.
    std::string tmargin, bmargin, lmargin, rmargin;

    std::string p_expire;   ///< days ahead of an expiry
    std::string p_bday;     ///< years of birthday reminders ahead
    std::string p_customer; ///< days around today in which a customer wants contact
    std::string p_prospect; ///< the same for prospects
    std::string p_inmarket; ///< kept and edited, read by nothing
    std::string p_sold;     ///< written empty, never read

    static constexpr int birthdays_never = 0, birthdays_prompt = 1, birthdays_always = 2;
    int p_bdayschedule = birthdays_never;

    std::string p_password; ///< in clear
    bool p_passwordprotect = false;
    std::string labeladjust;
    std::string salespersonname;

    /// What prospects can be looking for; captions of check boxes.
    std::array<std::string, feature_count> features;
};

} // namespace tolva::module
