#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "jet/schema.h"

namespace tolva::data {

/// Tables written down as plain text, one thing a line:
///
///   # anything behind a hash mark is a comment
///   table [table]
///   first   text 50
///   price   currency required
///   notes   memo
///   index names (last, first desc) unique
///
/// A column is its name, its type and its options. Types: boolean, byte, integer, long, currency, single,
/// double, date, binary N (bytes), text N (characters), memo, ole, guid, numeric P S (digits, of these behind
/// the point). Column options: required, nozerolength, counter, fixed, default [EXPRESSION]. Index options:
/// primary, unique, ignorenulls, required. A name goes between brackets when it is more than one plain word,
/// or is "table" or "index" at the start of a line. Key words ignore letter case.
///
/// Errors: 5, with a text that names `source` and the line.
std::vector<jet::TableSchema> parse_schema(std::string_view text, const std::string& source);

/// The text that `parse_schema` reads back into the same tables.
std::string schema_to_text(const std::vector<jet::TableSchema>& tables);

} // namespace tolva::data
