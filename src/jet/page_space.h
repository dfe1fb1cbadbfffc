#pragma once

#include <functional>
#include <vector>

#include "jet/pager.h"
#include "jet/usage_map.h"

namespace tolva::jet {

/// Hands out pages and takes them back, by the map of free pages that every file has in the first record of
/// page 1. A page that nothing uses is taken before the file grows.
class PageSpace {
  public:
    /// `used_pages` tells, when the first page is asked for, which pages are in use by their owners' own
    /// account; those are never handed out, whatever the map of free pages says.
    explicit PageSpace(Pager& pager, std::function<std::vector<bool>()> used_pages = {});

    /// A zeroed page that is free no more.
    PageNumber allocate();
    void release(PageNumber page);

    /// Changes a map of used or roomy pages, and keeps the free pages in step with the pages that the map
    /// itself may need.
    void set(UsageMap& map, PageNumber page, bool member);

  private:
    void claim(PageNumber page);

    Pager& pager_;
    std::function<std::vector<bool>()> used_pages_;
    std::vector<bool> used_;
};

} // namespace tolva::jet
