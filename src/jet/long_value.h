#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "jet/data_page.h"
#include "jet/pager.h"

namespace tolva::jet {

/// What a row holds of a memo or a binary object: its length and how it is stored. Inline: the bytes follow.
/// Single: one record of a long-value page. Chain: records that each begin with the place of the next. The
/// last four bytes repeat the stamp of the first long-value page; where they differ, an engine takes the
/// value for changed by somebody else.
struct LongValueHead {
    static constexpr std::size_t size = 12;
    static constexpr std::uint32_t length_mask = 0x3fff'ffff;
    enum class Form { inside, single, chain };

    Form form = Form::inside;
    std::uint32_t length = 0;
    RecordPlace place;
    std::uint32_t stamp = 0;
};

/// Error 3049 when the field is no such head. `where` is the row's page.
LongValueHead read_long_value_head(const Pager& pager, PageNumber where, std::span<const std::uint8_t> field);

/// The bytes of a long value whose field in the row is this. Error 3049 for a chain that is broken, runs in a
/// circle or is not as long as its head says.
std::vector<std::uint8_t> read_long_value(const Pager& pager, PageNumber where,
                                          std::span<const std::uint8_t> field);

/// Calls `visit` with each record outside the row that the value uses, in order, and what it holds of the
/// value. Same errors.
void visit_long_value(const Pager& pager, PageNumber where, const LongValueHead& head,
                      const std::function<void(RecordPlace, std::span<const std::uint8_t>)>& visit);

} // namespace tolva::jet
