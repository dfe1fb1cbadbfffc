#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "jet/index_key.h"
#include "jet/pager.h"
#include "jet/table.h"

namespace tolva::jet {

/// The pages that one index may read, change and own.
class IndexPages {
  public:
    virtual ~IndexPages() = default;
    virtual const Format& format() const = 0;
    /// The file's name, for errors.
    virtual std::string path() const { return {}; }
    virtual PageNumber page_count() const = 0;
    virtual PageRef read(PageNumber page) const = 0;
    virtual std::span<std::uint8_t> modify(PageNumber page) = 0;
    /// A zeroed page, now owned by the index.
    virtual PageNumber allocate() = 0;
    virtual void release(PageNumber page) = 0;
};

class EntryList;
class IndexPage;
struct IndexPageHeader;

/// One real index of a table on its pages: entries of key and row, in key order, then by row. The root page
/// never moves. Whatever the pages hold, nothing is read outside them and no walk goes on for ever: pages
/// that make no sense give error 3049, which names the page and the reason.
class IndexTree {
  public:
    /// `table_page` is the table definition that each page names as its owner.
    IndexTree(IndexPages& pages, PageNumber root, PageNumber table_page);

    /// Writes an empty root leaf.
    static void create(IndexPages& pages, PageNumber root, PageNumber table_page);

    /// An entry that is there already stays one entry.
    void insert(std::span<const std::uint8_t> key, RowId row);
    /// False when there is no such entry.
    bool erase(std::span<const std::uint8_t> key, RowId row);

    /// Whether an entry with exactly this key exists.
    bool contains(std::span<const std::uint8_t> key) const;

    /// The rows of all entries whose key starts with `prefix`, in index order.
    std::vector<RowId> find_prefix(std::span<const std::uint8_t> prefix) const;

    /// Every entry in order, until `visit` says false.
    void walk(const std::function<bool(std::span<const std::uint8_t> key, RowId row)>& visit) const;

    /// What is wrong with the tree itself (order, links, prefixes, parents' copies, cycles), a line each;
    /// `owned` receives every page that was met.
    std::vector<std::string> check(std::vector<PageNumber>& owned) const;

  private:
    /// A node on the way down and which of its children was taken.
    struct Step {
        PageNumber page;
        std::size_t child;
        bool tail; ///< no entry of the node tells where that child ends
    };
    using Path = std::vector<Step>;

    IndexPage load(PageNumber page) const;
    IndexPage descend(std::span<const std::uint8_t> bytes, Path* path = nullptr) const;
    IndexPage next_leaf(const IndexPage& leaf, PageNumber& pages_left) const;
    template <typename Visit>
    void visit_from(std::span<const std::uint8_t> bytes, Visit visit) const;

    void store(Path path, PageNumber page, const IndexPageHeader& header, const EntryList& entries,
               bool grew_at_end);
    void split(Path path, PageNumber page, const IndexPageHeader& header, const EntryList& entries,
               bool grew_at_end);
    void rewrite(PageNumber page, const IndexPageHeader& header, const EntryList& entries);
    void renew_copies(const Path& path, std::span<const std::uint8_t> last);
    void unlink(const IndexPage& page);
    void drop_page(Path path, const IndexPage& page);
    void settle_lone_child(Path path, PageNumber node);
    void lower_root();

    IndexPages& pages_;
    PageNumber root_;
    PageNumber table_page_;
};

} // namespace tolva::jet
