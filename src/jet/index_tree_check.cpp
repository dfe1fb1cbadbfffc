#include <algorithm>
#include <set>

#include "basic/run_time_error.h"
#include "jet/index_page.h"

namespace tolva::jet {
namespace {

/// Goes through all pages from the root down and notes what does not agree.
class IndexCheck {
  public:
    IndexCheck(const IndexPages& pages, PageNumber table_page, std::vector<PageNumber>& owned)
        : pages_(pages), table_page_(table_page), owned_(owned), layout_(pages.format()) {}

    std::vector<std::string> run(PageNumber root) {
        visit(root, 0);
        if (previous_leaf_next_ != 0)
            note(previous_leaf_,
                 "the last leaf of the index is followed by page " + std::to_string(previous_leaf_next_));
        return std::move(findings_);
    }

  private:
    void note(PageNumber page, const std::string& finding) {
        findings_.push_back("page " + std::to_string(page) + ": " + finding);
    }

    /// Gives the last entry below `number`; nothing when there is none.
    Key visit(PageNumber number, std::size_t depth) {
        if (!met_.insert(number).second) {
            note(number, "the index comes to this page twice");
            return {};
        }
        if (depth > deepest) {
            note(number, "the index goes down without end");
            return {};
        }
        try {
            const IndexPage page(pages_, number, table_page_);
            owned_.push_back(number);
            check_page(page);
            return page.is_leaf() ? visit_leaf(page, depth) : visit_node(page, depth);
        } catch (const basic::RunTimeError& error) {
            findings_.push_back(error.text());
            return {};
        }
    }

    void check_page(const IndexPage& page) {
        if (page.stated_free_space() != layout_.capacity - page.used())
            note(page.number(), "the index page has " + std::to_string(layout_.capacity - page.used()) +
                                    " free bytes but states " + std::to_string(page.stated_free_space()));
        if (page.size() == 1 && page.prefix() != 0)
            note(page.number(), "the only entry of an index page shares its start with others");
        for (std::size_t i = 1; i < page.size(); ++i)
            if (!(page.whole(i - 1) < page.whole(i)))
                note(page.number(), "index entry " + std::to_string(i) + " is out of order");
    }

    Key visit_leaf(const IndexPage& page, std::size_t depth) {
        if (leaf_depth_ == unknown_depth)
            leaf_depth_ = depth;
        if (depth != leaf_depth_)
            note(page.number(), "a leaf of the index lies deeper or less deep than the others");
        if (page.header().previous != previous_leaf_)
            note(page.number(), "the leaf names page " + std::to_string(page.header().previous) +
                                    " before it, which is " + std::to_string(previous_leaf_));
        if (previous_leaf_ != 0 && previous_leaf_next_ != page.number())
            note(previous_leaf_, "the leaf names page " + std::to_string(previous_leaf_next_) +
                                     " behind it, which is " + std::to_string(page.number()));
        previous_leaf_ = page.number();
        previous_leaf_next_ = page.header().next;
        if (page.size() == 0)
            return {};
        if (!last_entry_.empty() && !(last_entry_ < page.whole(0)))
            note(page.number(), "the leaf does not go on where the one before it ends");
        last_entry_ = page.whole(page.size() - 1);
        return last_entry_;
    }

    Key visit_node(const IndexPage& page, std::size_t depth) {
        if (page.children() == 0)
            note(page.number(), "a node of the index has no children");
        Key last;
        for (std::size_t i = 0; i < page.children(); ++i) {
            last = visit(page.child(i), depth + 1);
            if (i == page.size())
                break;
            Key copy = page.whole(i);
            copy.resize(copy.size() - child_size);
            if (copy != last)
                note(page.number(), "node entry " + std::to_string(i) +
                                        " is not the last entry of its page " +
                                        std::to_string(page.child(i)));
        }
        return last;
    }

    static constexpr std::size_t unknown_depth = static_cast<std::size_t>(-1), deepest = 32;

    const IndexPages& pages_;
    PageNumber table_page_;
    std::vector<PageNumber>& owned_;
    IndexPageLayout layout_;
    std::vector<std::string> findings_;
    std::set<PageNumber> met_;
    std::size_t leaf_depth_ = unknown_depth;
    PageNumber previous_leaf_ = 0, previous_leaf_next_ = 0;
    Key last_entry_;
};

} // namespace

std::vector<std::string> IndexTree::check(std::vector<PageNumber>& owned) const {
    return IndexCheck(pages_, table_page_, owned).run(root_);
}

} // namespace tolva::jet
