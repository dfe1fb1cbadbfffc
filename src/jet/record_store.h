#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "jet/data_page.h"
#include "jet/page_space.h"
#include "jet/usage_map.h"

namespace tolva::jet {

/// The records of one owner, a table's rows or a column's long values, on the pages that its two maps tell:
/// all its pages, and those that may have room.
class RecordStore {
  public:
    struct Maps {
        RecordPlace owned;
        RecordPlace free; ///< page 0 where there is none
    };

    /// `owner` is written into each page; `named_by` is the page that told of the maps, for messages.
    RecordStore(Pager& pager, PageSpace& space, Maps maps, std::uint32_t owner, PageNumber named_by);

    struct Placed {
        RecordPlace place;
        bool in_old_slot = false; ///< where a tombstone was
    };
    /// Puts a record on the last page that has room for it, or on a new one.
    Placed insert(std::span<const std::uint8_t> record, std::uint16_t flags = 0);
    /// From now on `insert` leaves earlier pages alone, so that records stand in the order of their coming.
    void keep_order() { keeps_order_ = true; }
    /// Puts it on a new page.
    Placed insert_on_new_page(std::span<const std::uint8_t> record, std::uint16_t flags = 0);

    /// Replaces a record where it stands; false, with nothing changed, when its page has no room.
    bool replace(RecordPlace place, std::span<const std::uint8_t> record, std::uint16_t flags);

    /// Leaves a tombstone. Pages of long values that hold nothing more are given back; a table's stay its
    /// own, because old row ids may still name them.
    void erase(RecordPlace place);

  private:
    bool is_for_long_values() const { return owner_ == DataPageEditor::long_value_owner; }
    DataPageEditor edit(PageNumber page);
    std::optional<Placed> insert_into(PageNumber page, std::span<const std::uint8_t> record,
                                      std::uint16_t flags);
    void tell_room(PageNumber page, bool has_room);
    PageNumber add_page();
    void give_back(PageNumber page);

    Pager& pager_;
    PageSpace& space_;
    Maps maps_;
    std::uint32_t owner_;
    PageNumber named_by_;
    bool keeps_order_ = false;
};

} // namespace tolva::jet
