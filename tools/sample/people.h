#pragma once

#include <optional>
#include <string>
#include <vector>

#include "basic/date.h"
#include "sample/dice.h"

namespace tolva::sample {

struct Name {
    std::string first, middle, last;

    std::string full() const { return first + " " + last; }
};

/// Where somebody lives or a home stands. City, state and zip belong together.
struct Place {
    std::string address, city, state, zip;
};

struct Person {
    Name name;
    /// Nobody when the first name is empty.
    Name co_owner;
    Place home;
    std::string homephone, workphone, cellphone, fax, employer, email, businessname;
    std::optional<basic::Date> birthday, co_birthday;
};

/// Makes people up, each with a name of their own. Telephone numbers are of the range that is kept free for
/// fiction, mail addresses of the domain that is.
class People {
  public:
    People(Dice& dice, basic::Date today) : dice_(dice), today_(today) {}

    Person next();
    Place place();
    std::string telephone();
    /// Some name, for those who appear without a record of their own.
    Name name();

    /// A birth date of somebody grown up whose next birthday is `days` away (0 is today).
    basic::Date born(int days_to_birthday);

  private:
    Dice& dice_;
    basic::Date today_;
    std::vector<std::string> taken_;
};

} // namespace tolva::sample
