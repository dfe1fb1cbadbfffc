#include "jet/index_tree.h"

#include <algorithm>
#include <cassert>

#include "jet/index_page.h"

namespace tolva::jet {
namespace {

/// Deeper than any tree whose nodes have two children; only a circle of nodes goes on beyond.
constexpr std::size_t deepest = 32;

Key node_entry(std::span<const std::uint8_t> last, PageNumber child) {
    Key entry(last.begin(), last.end());
    for (int shift = 24; shift >= 0; shift -= 8)
        entry.push_back(static_cast<std::uint8_t>(child >> shift));
    return entry;
}

/// A node entry without its child: the last entry of that child.
std::span<const std::uint8_t> last_of_child(std::span<const std::uint8_t> entry) {
    return entry.first(entry.size() - child_size);
}

} // namespace

IndexTree::IndexTree(IndexPages& pages, PageNumber root, PageNumber table_page)
    : pages_(pages), root_(root), table_page_(table_page) {}

void IndexTree::create(IndexPages& pages, PageNumber root, PageNumber table_page) {
    write_index_page(pages, root, table_page, {}, {}, 0);
}

// Reading ------------------------------------------------------------------------------------------------

IndexPage IndexTree::load(PageNumber page) const {
    return {pages_, page, table_page_};
}

/// The leaf where `bytes` stands or belongs. Beyond the last entry of a node the way goes on to its tail, or
/// to its last child where it has none.
IndexPage IndexTree::descend(std::span<const std::uint8_t> bytes, Path* path) const {
    IndexPage page = load(root_);
    for (std::size_t depth = 0; !page.is_leaf(); ++depth) {
        if (page.children() == 0)
            damaged_index(pages_, page.number(), "a node of the index has no children");
        if (depth == deepest)
            damaged_index(pages_, page.number(), "the nodes of the index run in a circle");
        const std::size_t child = std::min(page.lower_bound(bytes), page.children() - 1);
        if (path)
            path->push_back({page.number(), child, child == page.size()});
        page = load(page.child(child));
    }
    return page;
}

IndexPage IndexTree::next_leaf(const IndexPage& leaf, PageNumber& pages_left) const {
    if (pages_left-- == 0)
        damaged_index(pages_, leaf.number(), "the leaves of the index run in a circle");
    IndexPage next = load(leaf.header().next);
    if (!next.is_leaf())
        damaged_index(pages_, next.number(), "a leaf of the index is followed by a node");
    return next;
}

/// Visits entries in order from the first that is not less than `bytes`, until `visit` says false.
template <typename Visit>
void IndexTree::visit_from(std::span<const std::uint8_t> bytes, Visit visit) const {
    IndexPage leaf = descend(bytes);
    PageNumber pages_left = pages_.page_count();
    for (std::size_t i = leaf.lower_bound(bytes);; i = 0) {
        for (; i < leaf.size(); ++i)
            if (!visit(leaf, i))
                return;
        if (leaf.header().next == 0)
            return;
        leaf = next_leaf(leaf, pages_left);
    }
}

bool IndexTree::contains(std::span<const std::uint8_t> key) const {
    bool found = false;
    visit_from(key, [&](const IndexPage& leaf, std::size_t i) {
        if (!leaf.starts_with(i, key))
            return false;
        found = leaf[i].size() == key.size() + row_size;
        return !found;
    });
    return found;
}

std::vector<RowId> IndexTree::find_prefix(std::span<const std::uint8_t> prefix) const {
    std::vector<RowId> rows;
    visit_from(prefix, [&](const IndexPage& leaf, std::size_t i) {
        if (!leaf.starts_with(i, prefix))
            return false;
        if (leaf[i].size() >= prefix.size() + row_size)
            rows.push_back(leaf.row(i));
        return true;
    });
    return rows;
}

void IndexTree::walk(const std::function<bool(std::span<const std::uint8_t> key, RowId row)>& visit) const {
    Key entry;
    visit_from({}, [&](const IndexPage& leaf, std::size_t i) {
        leaf.copy_whole(i, entry);
        return visit(std::span(entry).first(entry.size() - row_size), row_of(entry));
    });
}

// Adding -------------------------------------------------------------------------------------------------

void IndexTree::insert(std::span<const std::uint8_t> key, RowId row) {
    assert(key.size() <= pages_.format().longest_key);
    Key entry(key.begin(), key.end());
    append_row(entry, row);
    Path path;
    const IndexPage leaf = descend(entry, &path);
    const std::size_t at = leaf.lower_bound(entry);
    if (at < leaf.size() && leaf.equals(at, entry))
        return;
    const bool at_end = at == leaf.size();
    if (!leaf.insert_in_place(pages_, at, entry)) {
        EntryList entries = leaf.entries();
        entries.insert(at, entry);
        store(path, leaf.number(), leaf.header(), entries, at_end);
    }
    if (at_end)
        renew_copies(path, entry);
}

void IndexTree::rewrite(PageNumber page, const IndexPageHeader& header, const EntryList& entries) {
    const auto prefix = fitting_prefix(IndexPageLayout(pages_.format()), entries, true);
    if (!prefix)
        damaged_index(pages_, page, "the entries of the index are too long for their page");
    write_index_page(pages_, page, table_page_, header, entries, *prefix);
}

/// Writes a page with the entries that it is to have, on two pages where one does not hold them. `path` leads
/// to it. A leaf has its entries share their start only when they do not fit otherwise; a node splits first.
void IndexTree::store(Path path, PageNumber page, const IndexPageHeader& header, const EntryList& entries,
                      bool grew_at_end) {
    if (fitting_prefix(IndexPageLayout(pages_.format()), entries, header.leaf))
        rewrite(page, header, entries);
    else
        split(std::move(path), page, header, entries, grew_at_end);
}

namespace {

/// How many of a full page's entries stay on the left of two. Of a node the next one goes up, and the right
/// page gets those behind it. A page that grew at its end stays full, since nothing more will come in between
/// (loads in ascending order); others are halved by bytes, or as near to it as both halves fit.
std::size_t count_for_left(const IndexPageLayout& layout, const EntryList& entries, bool leaf,
                           bool grew_at_end) {
    const std::size_t size = entries.size(), goes_up = leaf ? 0 : 1;
    const auto fits = [&](std::size_t left) {
        return left >= 1 && left + goes_up < size && fitting_prefix(layout, entries.slice(0, left), true) &&
               fitting_prefix(layout, entries.slice(left + goes_up, size - left - goes_up), true);
    };
    if (grew_at_end && fits(size - 1 - goes_up))
        return size - 1 - goes_up;
    const std::size_t half = entries.bytes(0, size) / 2;
    std::size_t middle = 1;
    while (middle < size && entries.bytes(0, middle) < half)
        ++middle;
    for (std::size_t away = 0; away < size; ++away) {
        if (middle > away && fits(middle - away))
            return middle - away;
        if (fits(middle + away))
            return middle + away;
    }
    return 0;
}

} // namespace

void IndexTree::split(Path path, PageNumber page, const IndexPageHeader& header, const EntryList& entries,
                      bool grew_at_end) {
    const std::size_t on_left =
        count_for_left(IndexPageLayout(pages_.format()), entries, header.leaf, grew_at_end);
    if (on_left == 0)
        damaged_index(pages_, page, "the entries of the index are too long for two pages");
    const std::size_t right_from = on_left + (header.leaf ? 0 : 1);
    const EntryList left_entries = entries.slice(0, on_left);
    const EntryList right_entries = entries.slice(right_from, entries.size() - right_from);
    // What the left page's entries end with, tail included.
    const auto end_of_left = header.leaf ? left_entries.back() : last_of_child(entries[on_left]);

    // The root stays where it is and becomes the node above the two.
    const bool is_root = path.empty();
    const PageNumber left = is_root ? pages_.allocate() : page;
    const PageNumber right = pages_.allocate();
    IndexPageHeader left_header = header, right_header = header;
    left_header.next = right;
    right_header.previous = left;
    if (!header.leaf)
        left_header.tail = child_of(entries[on_left]);
    rewrite(left, left_header, left_entries);
    rewrite(right, right_header, right_entries);
    if (header.next != 0)
        set_previous(pages_, load(header.next).number(), right);

    EntryList refs;
    IndexPageHeader above;
    if (is_root) {
        above.leaf = false;
        above.level = static_cast<std::uint8_t>(header.leaf ? 1 : header.level + 1);
        above.tail = right;
        refs.push_back(node_entry(end_of_left, left));
        rewrite(root_, above, refs);
        return;
    }
    const Step step = path.back();
    path.pop_back();
    const IndexPage node = load(step.page);
    refs = node.entries();
    above = node.header();
    refs.insert(step.child, node_entry(end_of_left, left));
    if (step.tail)
        above.tail = right;
    else
        refs.set_child(step.child + 1, right);
    store(std::move(path), step.page, above, refs, step.tail && grew_at_end);
}

/// `last` is the last entry of the leaf that holds it, or where a leaf has just lost its last one, what comes
/// last now: brings the copies above up to date. Each may overflow its node, so the way is found anew.
/// `path` is the way as it was; where it took tails alone, there are no copies.
void IndexTree::renew_copies(const Path& path, std::span<const std::uint8_t> last) {
    if (std::all_of(path.begin(), path.end(), [](const Step& step) { return step.tail; }))
        return;
    std::size_t rounds = 0;
    for (bool renewed = true; renewed;) {
        if (++rounds > 2 * deepest)
            damaged_index(pages_, root_, "the copies of entries in the nodes lead astray");
        renewed = false;
        Path way;
        descend(last, &way);
        while (!way.empty()) {
            const Step step = way.back();
            way.pop_back();
            if (step.tail)
                continue;
            const IndexPage node = load(step.page);
            const Key copy = node_entry(last, node.child(step.child));
            if (!node.equals(step.child, copy)) {
                EntryList refs = node.entries();
                refs.replace(step.child, copy);
                store(std::move(way), step.page, node.header(), refs, false);
                renewed = true;
                break;
            }
            if (step.child + 1 < node.children())
                break; // what is above ends with a later child
        }
    }
}

// Taking away --------------------------------------------------------------------------------------------

bool IndexTree::erase(std::span<const std::uint8_t> key, RowId row) {
    Key entry(key.begin(), key.end());
    append_row(entry, row);
    Path path;
    const IndexPage leaf = descend(entry, &path);
    const std::size_t at = leaf.lower_bound(entry);
    if (at == leaf.size() || !leaf.equals(at, entry))
        return false;
    leaf.erase_in_place(pages_, at);
    if (leaf.size() == 1 && !path.empty())
        drop_page(std::move(path), leaf);
    else if (at + 1 == leaf.size() && at > 0)
        renew_copies(path, leaf.whole(at - 1));
    return true;
}

/// Takes a page out of its row of neighbours.
void IndexTree::unlink(const IndexPage& page) {
    const IndexPageHeader header = load(page.number()).header();
    if (header.previous != 0)
        set_next(pages_, load(header.previous).number(), header.next);
    if (header.next != 0)
        set_previous(pages_, load(header.next).number(), header.previous);
}

/// Gives back a page that has nothing left, and the nodes above that had nothing else.
void IndexTree::drop_page(Path path, const IndexPage& page) {
    unlink(page);
    pages_.release(page.number());
    const Step step = path.back();
    path.pop_back();
    const IndexPage node = load(step.page);
    if (node.children() == 1) {
        if (path.empty())
            create(pages_, root_, table_page_);
        else
            drop_page(std::move(path), node);
        return;
    }

    EntryList refs = node.entries();
    IndexPageHeader header = node.header();
    Key last;
    if (step.child + 1 < node.children()) {
        refs.erase(step.child);
    } else {
        // The child before it is the last now, and becomes the tail.
        const auto copy = last_of_child(refs[step.child - 1]);
        last.assign(copy.begin(), copy.end());
        header.tail = child_of(refs[step.child - 1]);
        if (!step.tail)
            refs.erase(step.child);
        refs.erase(step.child - 1);
    }
    rewrite(step.page, header, refs);
    if (!last.empty()) {
        renew_copies(path, last);
        path.clear();
        descend(last, &path);
        while (!path.empty() && path.back().page != step.page)
            path.pop_back();
        if (path.empty())
            damaged_index(pages_, step.page, "the copies of entries in the nodes above do not lead here");
        path.pop_back();
    }
    if (refs.empty())
        settle_lone_child(std::move(path), step.page);
}

/// A node has come down to its tail. The root takes that child's place; any other node gives it to a
/// neighbour that has room, or else stays as it is.
void IndexTree::settle_lone_child(Path path, PageNumber number) {
    if (path.empty()) {
        lower_root();
        return;
    }
    const IndexPageLayout layout(pages_.format());
    const IndexPage node = load(number);
    const PageNumber child = node.header().tail;
    const Step step = path.back();
    path.pop_back();
    const IndexPage above = load(step.page);
    EntryList refs = above.entries();
    IndexPageHeader above_header = above.header();

    if (step.child > 0) {
        const IndexPage left = load(above.child(step.child - 1));
        EntryList entries = left.entries();
        IndexPageHeader header = left.header();
        if (header.tail != 0)
            entries.push_back(node_entry(last_of_child(refs[step.child - 1]), header.tail));
        header.tail = child;
        if (!left.is_leaf() && fitting_prefix(layout, entries, left.prefix() > 0)) {
            rewrite(left.number(), header, entries);
            unlink(node);
            pages_.release(number);
            if (step.tail)
                above_header.tail = left.number();
            else
                refs.set_child(step.child, left.number());
            refs.erase(step.child - 1);
            rewrite(step.page, above_header, refs);
            if (refs.empty())
                settle_lone_child(std::move(path), step.page);
            return;
        }
    }
    if (step.child + 1 < above.children()) {
        const IndexPage right = load(above.child(step.child + 1));
        EntryList entries = right.entries();
        entries.insert(0, node_entry(last_of_child(refs[step.child]), child));
        if (!right.is_leaf() && fitting_prefix(layout, entries, right.prefix() > 0)) {
            rewrite(right.number(), right.header(), entries);
            unlink(node);
            pages_.release(number);
            refs.erase(step.child);
            rewrite(step.page, above_header, refs);
            if (refs.empty())
                settle_lone_child(std::move(path), step.page);
        }
    }
}

void IndexTree::lower_root() {
    for (std::size_t steps = 0; steps < deepest; ++steps) {
        const IndexPage root = load(root_);
        if (root.is_leaf() || root.size() > 0)
            return;
        const IndexPage child = load(root.header().tail);
        IndexPageHeader header = child.header();
        header.previous = header.next = 0;
        rewrite(root_, header, child.entries());
        pages_.release(child.number());
    }
}

} // namespace tolva::jet
