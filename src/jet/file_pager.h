#pragma once

#include <memory>
#include <optional>
#include <string>
#include <unordered_map>

#include "files/file_system.h"
#include "jet/journal.h"
#include "jet/page_cache.h"
#include "jet/pager.h"

namespace tolva::jet {

/// The pager over a real file, for its one writer or for a reader. A writer has the claim on the file for as
/// long as it lives, so nobody else changes the file; it takes the content alone for the moment of a commit.
/// A reader takes the content into memory when it opens the file, and sees that one commit's state ever
/// after.
///
/// A page is clean (as stored, kept within a budget) or pending (changed since the last commit, kept in
/// memory until then). A clean page is copied before its first change, and a pending one when somebody still
/// holds it or a statement may have to put it back; so a PageRef never changes.
class FilePager final : public Pager {
  public:
    enum class Access {
        write, ///< reads alone where the system allows no more
        read,
    };
    /// How many bytes of clean pages are kept in memory.
    static constexpr std::size_t usual_memory = std::size_t{128} << 20;

    /// A writer first undoes in the file what a cut commit left. Errors as Database::open.
    FilePager(files::FileSystem& disk, const std::string& path, Access access = Access::write,
              std::size_t memory = usual_memory);
    ~FilePager() override;

    bool read_only() const { return read_only_; }
    /// Whether another program's commit was cut short, by the commit bytes of page 0.
    bool was_cut_short() const { return was_cut_short_; }
    /// Counts undoings: what was remembered of pages under another number must be read anew.
    std::uint64_t undo_count() const { return undo_count_; }

    const Format& format() const override { return *format_; }
    const std::string& path() const override { return path_; }
    PageNumber page_count() const override { return page_count_; }
    PageRef read(PageNumber page) const override;
    /// The page as it is stored, where it happens to be in memory; else null. For hints only.
    const Page* glance(PageNumber page) const { return clean_.glance(page); }
    std::span<std::uint8_t> modify(PageNumber page) override;
    PageNumber append() override;
    void begin_statement() override;
    void end_statement() override;
    void undo_statement() override;
    bool dirty() const override { return !pending_.empty() || unsettled_; }
    void commit() override;
    void rollback() override;

  private:
    using Pages = std::unordered_map<PageNumber, std::shared_ptr<Page>>;

    void open_file(Access access);
    void claim();
    bool users_are_noted_beside() const;
    void recover();
    std::size_t read_stored(std::uint64_t at, std::span<std::uint8_t> out) const;
    PageRef fetch(PageNumber page) const;
    /// The page as it stands in what was read ahead; null when it is not there.
    PageRef take_from_ahead(PageNumber page) const;
    Journal::Change pending_change() const;
    std::vector<std::uint32_t> blocks_to_save() const;
    void write_pages();
    void put_into_file();
    void take_back(const std::string& failure);
    void settle();
    void check_usable() const;

    files::FileSystem& disk_;
    std::string path_;
    std::unique_ptr<files::File> file_; ///< a writer's
    files::Bytes content_;              ///< a reader's
    Journal journal_;
    std::optional<Format> format_;
    bool read_only_ = false;
    bool was_cut_short_ = false;
    std::uint64_t undo_count_ = 0;

    PageNumber page_count_ = 0;
    PageNumber stored_count_ = 0;
    mutable PageCache clean_;
    /// A stretch of the stored file, for walks: pages that are wanted one after the other lie near each
    /// other.
    mutable files::Bytes ahead_;
    mutable PageNumber ahead_from_ = 0;
    mutable PageNumber last_fetched_ = 0;
    Pages pending_;
    /// What the statement that is under way has changed: the page as it was pending before, or null where it
    /// was clean.
    bool in_statement_ = false;
    Pages before_;
    PageNumber count_before_ = 0;

    /// Whether a power cut may still take back the last commit: the device failed when its journal ended.
    bool unsettled_ = false;
    /// Set when a failed commit could not be undone in the file: its text. The journal stands, and the next
    /// opening puts the file right; until then nothing here can be trusted.
    std::string failure_;
};

} // namespace tolva::jet
