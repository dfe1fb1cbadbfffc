#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "jet/pager.h"

namespace tolva::jet {

/// Where a record stands: a slot on a page of rows, long values or usage maps. Stored as one byte of slot and
/// three of page.
struct RecordPlace {
    PageNumber page = 0;
    std::uint8_t slot = 0;

    static RecordPlace from(std::uint32_t stored) {
        return {stored >> 8, static_cast<std::uint8_t>(stored & 0xff)};
    }
    std::uint32_t stored() const { return page << 8 | slot; }
    friend auto operator<=>(const RecordPlace&, const RecordPlace&) = default;
};

/// A page of records, read only. Slot k's offset stands in the page's head; records fill the page from its
/// end downward. A record ends at the next greater offset of any slot, tombstones included.
class DataPageView {
  public:
    /// Two bits beside the offset. A tombstone has both, and so has a place that a moved row passed.
    static constexpr std::uint16_t away_flag = 0x4000;   ///< holds the place where the row now stands
    static constexpr std::uint16_t hidden_flag = 0x8000; ///< is reached from elsewhere only
    static constexpr std::uint16_t both_flags = away_flag | hidden_flag;

    /// Error 3049 when the page is no page of records or its slots make no sense. The view refers to `bytes`.
    DataPageView(const Format& format, const std::string& path, PageNumber number,
                 std::span<const std::uint8_t> bytes);

    std::size_t slots() const { return slots_; }
    std::uint16_t flags(std::size_t slot) const { return raw(slot) & both_flags; }
    bool is_tombstone(std::size_t slot) const { return flags(slot) == both_flags; }
    /// A tombstone without bytes, which nothing can lead through.
    bool is_vacant(std::size_t slot) const { return is_tombstone(slot) && record(slot).empty(); }
    std::span<const std::uint8_t> record(std::size_t slot) const;

    std::uint32_t owner() const;
    bool holds_long_values() const;
    std::size_t free_space() const;
    /// What the header should say: the bytes between the slots and the lowest record.
    std::size_t actual_free_space() const;
    /// Whether each slot lies below the one before it, without gaps between records.
    bool in_order() const { return in_order_; }
    /// Where a new record of `size` bytes would go: a tombstone behind the last live record, else a new slot,
    /// else any tombstone; nothing when the page has no room for it.
    std::optional<std::uint8_t> slot_for(std::size_t size) const;

    std::size_t offset(std::size_t slot) const { return raw(slot) & format_->data.offset_mask; }

    /// Where a record seems to stand on a page that nobody has looked at yet: for hints only.
    static std::span<const std::uint8_t> likely_record(const Format& format, const Page& page,
                                                       std::size_t slot);

  private:
    std::uint16_t raw(std::size_t slot) const;

    const Format* format_;
    std::span<const std::uint8_t> bytes_;
    std::size_t slots_ = 0;
    bool in_order_ = true;
};

/// A page of records, for changing. What it writes is always in order: each record below the one before it,
/// tombstones without bytes, and the header's free space equal to what is there.
class DataPageEditor {
  public:
    DataPageEditor(const Format& format, const std::string& path, PageNumber number,
                   std::span<std::uint8_t> bytes);

    /// Makes an empty page of records out of zeroed bytes. `owner` is the table definition's page, or
    /// `long_value_owner`.
    static void start(const Format& format, std::span<std::uint8_t> bytes, std::uint32_t owner);
    static constexpr std::uint32_t long_value_owner = 0x4c41'564c; // "LVAL"

    DataPageView view() const { return {format_, path_, number_, bytes_}; }

    /// Gives a slot these bytes; `slot` may be the one behind the last. False, with nothing changed, when
    /// there is no room.
    bool put(std::uint8_t slot, std::span<const std::uint8_t> record, std::uint16_t flags);
    void bury(std::uint8_t slot);

  private:
    void bring_into_order();
    void set_slot(std::size_t slot, std::size_t value);

    const Format& format_;
    const std::string& path_;
    PageNumber number_;
    std::span<std::uint8_t> bytes_;
};

/// Whether the page's bytes claim to be a page of records.
inline bool is_data_page(std::span<const std::uint8_t> bytes) {
    return bytes[0] == 1;
}

/// One record, its page held. Error 3049 when there is no such slot.
struct Record {
    PageRef page;
    std::span<const std::uint8_t> bytes;
    std::uint16_t flags = 0;
};
Record read_record(const Pager& pager, RecordPlace place, PageNumber named_by);

/// The record where a row stands that moved away from `record` on `page`, or `record` itself. A row that has
/// moved may have moved on; the records on the way have both flags, like tombstones, but hold a place. Each
/// place passed goes to `hops`. Error 3049 for a way that ends nowhere or runs in a circle.
Record follow_moved_row(const Pager& pager, Record record, PageNumber page,
                        std::vector<RecordPlace>* hops = nullptr);

} // namespace tolva::jet
