#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "jet/data_page.h"
#include "jet/pager.h"
#include "jet/record_store.h"
#include "jet/row_codec.h"
#include "jet/table_definition.h"

namespace tolva::jet {

/// What a row holds of a memo or a binary object: its length and how it is stored. Inline: the bytes follow.
/// Single: one record of a long-value page. Chain: records that each begin with the place of the next. The
/// last four bytes repeat the stamp of the first long-value page, where the format has one; where they
/// differ, an engine takes the value for changed by somebody else.
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

/// Any column of a row, long values included; null where the row has none.
Value decode_column(const Pager& pager, PageNumber where, const Column& column, const RowView& row);
/// The same into a value, whose text gives its room to the new one.
void decode_column(const Pager& pager, PageNumber where, const Column& column, const RowView& row,
                   Value& into);

/// Calls `visit` with each record outside the row that the value uses, in order, and what it holds of the
/// value. Same errors.
void visit_long_value(const Pager& pager, PageNumber where, const LongValueHead& head,
                      const std::function<void(RecordPlace, std::span<const std::uint8_t>)>& visit);

/// The long values of one column: writes new ones and takes old ones off their pages.
class LongValueStore {
  public:
    LongValueStore(Pager& pager, PageSpace& space, const Column& column, PageNumber definition_page);

    /// Stores a value and returns the field for its row. Up to `inside` bytes stay in the row; then it takes
    /// one record, then a chain of them. 3047 beyond what a length can tell.
    std::vector<std::uint8_t> write(std::span<const std::uint8_t> value, std::size_t inside);

    /// How many bytes the field of a value takes in its row.
    static std::size_t field_size(std::size_t value_size, std::size_t inside);

    /// Removes what the field of a row has outside it.
    void erase(PageNumber where, std::span<const std::uint8_t> field);

  private:
    std::vector<std::uint8_t> field_for(std::size_t length, std::uint32_t form, RecordPlace first) const;

    Pager& pager_;
    RecordStore records_;
};

} // namespace tolva::jet
