#pragma once

#include <string>

#include "dao/recordset.h"
#include "module/module.h"

namespace tolva::letters {

/// The order in which tags are replaced: that of the listings and of the follow-up run, or that of the letter
/// screen for prospects and sold customers.
enum class TagOrder { listings, others };

/// Replaces the tags in a letter's source by a customer's values, one tag after the other, each over the
/// result of the one before: a value that holds a later tag is replaced in its turn. Values go in as they
/// stand, so one with a backslash or a brace changes the markup; a tag that formatting has split is not
/// found. A null in any of the columns, whether the letter has its tag or not, is error 94.
std::string merge(std::string source, const dao::Recordset& customer, const module::Module& module,
                  const std::string& ps, TagOrder order);

/// "March 7, 2026"
std::string spelled_date(basic::Date date);

} // namespace tolva::letters
