#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "jet/table.h"
#include "sql/condition.h"

namespace tolva::sql {

/// What the keys of an index tell of a condition ahead of its rows. A "like" over a column of the index asks
/// for letters whose weights must stand in the key, so most keys show at once that their row can't meet it.
/// The letters' case and width leave no trace in a key: a row whose key passes is still to be looked at.
class KeyFilter {
  public:
    /// Nothing when the index tells nothing: then every row may meet the condition.
    static std::optional<KeyFilter> make(const Condition& condition, const jet::Table& table,
                                         std::size_t index);

    /// False when the row of this key can't meet the condition.
    bool operator()(std::span<const std::uint8_t> key) const;

  private:
    enum class Kind { share, all, any };

    static std::optional<KeyFilter> make_share(const Condition& like, const jet::Table& table,
                                               const jet::IndexSchema& index);

    Kind kind_ = Kind::share;
    std::vector<std::uint8_t> share_; ///< stands in the key
    std::vector<KeyFilter> parts_;    ///< of all and any
};

} // namespace tolva::sql
