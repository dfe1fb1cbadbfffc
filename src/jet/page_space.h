#pragma once

#include "jet/file_pager.h"
#include "jet/usage_map.h"

namespace tolva::jet {

/// Hands out pages and takes them back, by the map of free pages that every file has in the first record of
/// page 1. A page that nothing uses is taken before the file grows.
class PageSpace {
  public:
    explicit PageSpace(Pager& pager);

    /// A zeroed page that is free no more.
    PageNumber allocate();
    void release(PageNumber page);

    /// Changes a map of used or roomy pages, and keeps the free pages in step with the pages that the map
    /// itself may need.
    void set(UsageMap& map, PageNumber page, bool member);

  private:
    void claim(PageNumber page);

    Pager& pager_;
};

} // namespace tolva::jet
