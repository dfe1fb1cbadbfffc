#pragma once

#include <optional>
#include <string>
#include <vector>

#include "jet/data_page.h"
#include "jet/pager.h"

namespace tolva::jet {

/// A set of page numbers, stored as bits. Two forms share one record: inline, a window of a few hundred pages
/// from a start page; and by reference, pointers to map pages of bits that together cover the whole file.
class UsageMap {
  public:
    /// What a page outside an inline window counts as, and what happens when one must be told.
    enum class Kind {
        owned, ///< not in the set; the map goes over to references when the window cannot hold all
        free,  ///< not in the set; the window slides, and forgets pages that no longer fit
        global ///< behind the window: in the set; the map goes over to references
    };

    /// `named_by` is the page that told of the map, for messages.
    UsageMap(Pager& pager, RecordPlace place, PageNumber named_by, Kind kind);

    /// Every page of the set that the file has, ascending.
    std::vector<PageNumber> pages() const;
    bool contains(PageNumber page) const;
    std::optional<PageNumber> first() const;

    /// The first page of which the map says anything: pages before an inline window that has moved on are
    /// left out.
    PageNumber first_told() const;

    /// The map pages that hold this map's bits.
    std::vector<PageNumber> map_pages() const;

    /// Appends map pages where it must; `on_new_page` is told of each, so that the global map learns of it.
    template <typename OnNewPage>
    void set(PageNumber page, bool member, OnNewPage&& on_new_page) {
        for (const PageNumber added : change(page, member))
            on_new_page(added);
    }

  private:
    std::span<const std::uint8_t> record() const;
    std::span<std::uint8_t> record_for_change();
    bool is_inline() const;
    std::size_t bits_of_page() const;
    std::vector<PageNumber> change(PageNumber page, bool member);
    bool slide(PageNumber page);
    std::vector<PageNumber> go_over_to_references();
    PageNumber add_map_page(std::size_t place, bool filled);
    PageRef map_page(PageNumber number) const;
    template <typename Visit>
    void visit_members(Visit&& visit) const;

    Pager& pager_;
    RecordPlace place_;
    PageNumber named_by_;
    Kind kind_;
    mutable PageRef held_;
};

} // namespace tolva::jet
