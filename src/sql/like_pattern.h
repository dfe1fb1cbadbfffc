#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tolva::sql {

/// The pattern behind "like", made ready once for many texts. "*" stands for any run of characters, "?" for
/// one character, "#" for one digit, "[a-z]" for one character of a list, "[!a-z]" for one that is not in it;
/// "[]" stands for nothing. All else, "%" and "_" too, stands for itself. Letter case does not matter.
class LikePattern {
  public:
    /// Error 93 for a list without its closing bracket or with a range that runs backwards.
    explicit LikePattern(std::string_view pattern);

    bool matches(std::string_view text) const;

    /// Letters and digits of ASCII, in lower case, that stand one after the other in every text it matches:
    /// as many as it tells of; none where it tells of no such.
    std::string certain_letters() const;

  private:
    struct Range {
        char32_t first, last;
    };
    struct Element {
        enum class Kind { letter, any_run, any_one, digit, one_of, none_of };
        Kind kind;
        char32_t letter = 0; ///< in lower case
        std::vector<Range> ranges;
    };

    std::size_t read_list(const std::u32string& pattern, std::size_t at);
    bool matches_one(const Element& element, char32_t letter) const;
    bool matches_elements(std::u32string_view text) const;
    void find_plain_form();

    std::vector<Element> elements_;

    /// The pattern as plain ASCII letters with or without a "*" at either end, which most patterns are: such
    /// a one is searched for byte by byte.
    bool is_plain_ = false;
    bool open_start_ = false, open_end_ = false;
    std::string plain_;

    /// The text at hand in lower case; kept so that no row allocates.
    mutable std::u32string folded_;
};

} // namespace tolva::sql
