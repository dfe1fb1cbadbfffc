#pragma once

#include <cstdlib>
#include <memory>
#include <set>
#include <stdexcept>
#include <vector>

#include "jet/index_tree.h"

namespace tolva::support {

/// Index pages without a file. Pages given back come first when one is wanted; using one that is not in use
/// is a failure of the test.
class MemoryIndexPages final : public jet::IndexPages {
  public:
    explicit MemoryIndexPages(const jet::Format& format = jet::jet4_format) : format_(format), pages_(1) {}

    const jet::Format& format() const override { return format_; }
    std::string path() const override { return "memory.mdb"; }
    jet::PageNumber page_count() const override { return static_cast<jet::PageNumber>(pages_.size()); }

    jet::PageRef read(jet::PageNumber page) const override { return pages_.at(page); }

    std::span<std::uint8_t> modify(jet::PageNumber page) override {
        if (!in_use_.count(page) && strict_)
            throw std::logic_error("a page is changed that is not in use");
        pages_[page] = std::make_shared<jet::Page>(*pages_[page]); // what is held stays as it was
        return *pages_[page];
    }

    jet::PageNumber allocate() override {
        jet::PageNumber page = page_count();
        if (!free_.empty()) {
            page = *free_.begin();
            free_.erase(free_.begin());
        } else {
            pages_.emplace_back();
        }
        pages_[page] = std::make_shared<jet::Page>(format_.page_size);
        in_use_.insert(page);
        return page;
    }

    void release(jet::PageNumber page) override {
        if (in_use_.erase(page) > 0)
            free_.insert(page);
        else if (strict_)
            throw std::logic_error("a page is given back that is not in use");
    }

    const std::set<jet::PageNumber>& in_use() const { return in_use_; }

    /// For spoiling pages: no copy, no rules.
    jet::Page& raw(jet::PageNumber page) { return *pages_[page]; }
    /// From now on what is done to pages that are not in use counts for nothing: spoilt pages lead there.
    void forgive() { strict_ = false; }

  private:
    const jet::Format& format_;
    std::vector<std::shared_ptr<jet::Page>> pages_;
    std::set<jet::PageNumber> in_use_, free_;
    bool strict_ = true;
};

} // namespace tolva::support
