#pragma once

#include <array>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "rtf/code_page.h"
#include "rtf/format.h"
#include "rtf/limits.h"

namespace tolva::rtf {

/// What a document's list tables say of the numbers ahead of its paragraphs, and the count of those numbers
/// as the paragraphs go by. Wanted where a source tells the list of a paragraph but not the text to show.
class ListTables {
  public:
    /// Code pages by font number, for the bullets.
    using PageOfFont = std::function<CodePage(int number)>;

    /// The source of the whole group, braces and all.
    void read_lists(std::string_view group, const PageOfFont& page_of_font);
    void read_overrides(std::string_view group);

    /// Counts one more paragraph of that list and level and gives its text, with the tab or blank behind it;
    /// empty for an unknown list or one that shows nothing.
    std::string next_text(int list, int level);

  private:
    struct Level {
        NumberKind kind = NumberKind::decimal;
        bool zero_padded = false;
        bool shows = true;
        int start = 1;
        /// 0 tab, 1 blank, 2 nothing.
        int follow = 0;
        /// The text with the levels' numbers as characters below 9.
        std::u32string pattern;
    };
    struct List {
        std::array<Level, limits::list_levels> levels;
        /// The last number given on each level; empty before the first.
        std::array<int, limits::list_levels> counts{};
        std::array<bool, limits::list_levels> counted{};
    };

    class Reader;

    void count(List& list, std::size_t level);
    std::string text(const List& list, std::size_t level) const;

    std::vector<List> lists_;
    std::map<int, std::size_t> by_id_;
    /// The list of each \ls number.
    std::map<int, std::size_t> by_override_;
};

} // namespace tolva::rtf
