#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "basic/date.h"
#include "dao/database.h"
#include "sample/people.h"

namespace tolva::sample {

/// A customer that other rows speak of.
struct Customer {
    int id = 0;
    Name name;
    std::string homephone;
    std::optional<basic::Date> birthday;
    /// Where the listing runs out; nothing for others.
    std::optional<basic::Date> expires;
};

/// What the fillers share: the empty files of one data folder, the day around which everything happens, and
/// one source of chance.
struct Desk {
    Desk(files::FileSystem& disk, std::string folder, basic::Date today);

    std::unique_ptr<dao::Database> open(const std::string& name);

    std::string folder;
    basic::Date today;
    dao::DBEngine engine;
    Dice dice{20};
    People people{dice, today};
};

// Each fills one file and returns its customers in the order of their ids. Ids start at 1 and have gaps, as
// if some customers had been deleted since.

std::vector<Customer> fill_listings(Desk& desk);
std::vector<Customer> fill_prospects(Desk& desk);
std::vector<Customer> fill_sold(Desk& desk);
std::vector<Customer> fill_addresses(Desk& desk);

struct Customers {
    std::vector<Customer> listings, prospects, sold, addresses;
};

void fill_messages(Desk& desk, const Customers& customers);

/// Brings the one settings row in line with the ids that were given.
void fill_settings(Desk& desk, const Customers& customers);

} // namespace tolva::sample
