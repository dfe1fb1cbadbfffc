#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "jet/index_tree.h"

namespace tolva::jet {

/// Where the parts of an index page stand: the header, then a bit for each place where an entry ends, then
/// the entries one after another.
struct IndexPageLayout {
    std::size_t free_space, owner, previous, next, tail, prefix, level, ends, entries;
    std::size_t prefix_size;
    std::size_t capacity; ///< bytes for entries

    explicit IndexPageLayout(const Format& format);
};

/// The bytes of an entry behind its key: in a leaf the row (page and slot), in a node the same of the child's
/// last entry and then the child's page. All of them count, high byte first, for the order.
inline constexpr std::size_t row_size = 4, child_size = 4;

void append_row(Key& key, RowId row);
RowId row_of(std::span<const std::uint8_t> leaf_entry);
PageNumber child_of(std::span<const std::uint8_t> node_entry);

/// Whole entries in order, for rewriting a page.
class EntryList {
  public:
    std::size_t size() const { return ends_.size(); }
    bool empty() const { return ends_.empty(); }
    std::span<const std::uint8_t> operator[](std::size_t i) const;
    std::span<const std::uint8_t> back() const { return (*this)[size() - 1]; }
    /// Of `count` entries from `first` on.
    std::size_t bytes(std::size_t first, std::size_t count) const;

    void push_back(std::span<const std::uint8_t> entry) { insert(size(), entry); }
    void insert(std::size_t i, std::span<const std::uint8_t> entry);
    void erase(std::size_t i);
    void replace(std::size_t i, std::span<const std::uint8_t> entry);
    void set_child(std::size_t i, PageNumber child);
    EntryList slice(std::size_t first, std::size_t count) const;

  private:
    std::size_t start(std::size_t i) const { return i == 0 ? 0 : ends_[i - 1]; }

    std::vector<std::uint8_t> bytes_;
    std::vector<std::uint32_t> ends_;
};

/// What a page holds besides its entries.
struct IndexPageHeader {
    bool leaf = true;
    PageNumber previous = 0, next = 0;
    PageNumber tail = 0;    ///< a node's last child, which no entry names; 0 for none
    std::uint8_t level = 0; ///< of a node: how far above the leaves
};

/// One index page as it stands, found to be sound: every read inside it is safe. It shows the page as it was
/// when it was read, whatever is written since.
class IndexPage {
  public:
    /// Error 3049, which names the page, when its bytes make no sense.
    IndexPage(const IndexPages& pages, PageNumber number, PageNumber table_page);

    PageNumber number() const { return number_; }
    const IndexPageHeader& header() const { return header_; }
    bool is_leaf() const { return header_.leaf; }
    std::size_t size() const { return ends_.size(); }
    std::size_t prefix() const { return prefix_; }
    std::size_t used() const { return ends_.empty() ? 0 : ends_.back(); }
    std::size_t stated_free_space() const { return free_space_; }

    /// An entry's bytes are the two put together; the first entry is in one piece.
    struct Pieces {
        std::span<const std::uint8_t> head, rest;
        std::size_t size() const { return head.size() + rest.size(); }
    };
    Pieces operator[](std::size_t i) const;
    Key whole(std::size_t i) const;
    /// The same into a key that a walk uses again and again.
    void copy_whole(std::size_t i, Key& into) const;
    EntryList entries() const;

    /// The first entry that is not less than `bytes`; `size()` when all are.
    std::size_t lower_bound(std::span<const std::uint8_t> bytes) const;
    bool starts_with(std::size_t i, std::span<const std::uint8_t> bytes) const;
    bool equals(std::size_t i, std::span<const std::uint8_t> bytes) const {
        return (*this)[i].size() == bytes.size() && starts_with(i, bytes);
    }

    /// Of a node: as many as entries, and the tail if there is one.
    std::size_t children() const { return size() + (header_.tail != 0); }
    PageNumber child(std::size_t i) const;
    RowId row(std::size_t i) const;

    /// Puts an entry in without touching the others, when it fits and shares what they share.
    bool insert_in_place(IndexPages& pages, std::size_t i, std::span<const std::uint8_t> entry) const;
    void erase_in_place(IndexPages& pages, std::size_t i) const;

  private:
    void find_ends();
    std::size_t start(std::size_t i) const { return i == 0 ? 0 : ends_[i - 1]; }
    std::span<const std::uint8_t> stored(std::size_t i) const;
    void splice(IndexPages& pages, std::size_t from, std::size_t to, std::span<const std::uint8_t> stored,
                std::span<const std::uint16_t> lengths) const;

    IndexPageLayout layout_;
    PageRef page_;
    PageNumber number_;
    IndexPageHeader header_;
    std::size_t free_space_ = 0;
    std::size_t prefix_ = 0;
    std::vector<std::uint16_t> ends_;
};

/// The longest start that all these entries share and that may be stored once: 0 for fewer than two.
std::size_t shared_prefix(const EntryList& entries);

/// With which prefix these entries fit on a page: none where they can do without one; nothing when they do
/// not fit. `may_share` allows a prefix at all.
std::optional<std::size_t> fitting_prefix(const IndexPageLayout& layout, const EntryList& entries,
                                          bool may_share);

/// Writes a page anew. The entries must fit with that prefix.
void write_index_page(IndexPages& pages, PageNumber number, PageNumber table_page,
                      const IndexPageHeader& header, const EntryList& entries, std::size_t prefix);

/// Changes one link of a page and nothing else.
void set_previous(IndexPages& pages, PageNumber number, PageNumber previous);
void set_next(IndexPages& pages, PageNumber number, PageNumber next);

/// Error 3049 with the file's name, the page and the reason.
[[noreturn]] void damaged_index(const IndexPages& pages, PageNumber page, const std::string& reason);

} // namespace tolva::jet
