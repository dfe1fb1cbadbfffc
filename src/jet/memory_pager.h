#pragma once

#include <memory>
#include <string>
#include <vector>

#include "jet/pager.h"

namespace tolva::jet {

/// The pages of a file that is being made: all in memory, nothing to undo or commit. Its maker drops it whole
/// when something fails.
class MemoryPager final : public Pager {
  public:
    MemoryPager(const Format& format, std::string path) : format_(format), path_(std::move(path)) {}

    const Format& format() const override { return format_; }
    const std::string& path() const override { return path_; }
    PageNumber page_count() const override { return static_cast<PageNumber>(pages_.size()); }
    PageRef read(PageNumber page) const override;
    std::span<std::uint8_t> modify(PageNumber page) override;
    PageNumber append() override;
    void begin_statement() override {}
    void end_statement() override {}
    void undo_statement() override {}
    bool dirty() const override { return true; }
    void commit() override {}
    void rollback() override { pages_.clear(); }

    /// The file.
    std::vector<std::uint8_t> content() const;

  private:
    const Format& format_;
    std::string path_;
    std::vector<std::shared_ptr<Page>> pages_;
};

} // namespace tolva::jet
