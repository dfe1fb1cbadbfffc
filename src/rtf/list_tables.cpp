#include "rtf/list_tables.h"

#include <algorithm>
#include <string>

#include "rtf/lexer.h"
#include "rtf/numbering_words.h"
#include "rtf/text_decoder.h"

namespace tolva::rtf {

namespace {

/// The kinds by the format's own numbers; what we can't count is shown as a plain number.
NumberKind kind_of(int number) {
    switch (number) {
    case 1:
        return NumberKind::upper_roman;
    case 2:
        return NumberKind::lower_roman;
    case 3:
        return NumberKind::upper_letter;
    case 4:
        return NumberKind::lower_letter;
    case 5:
        return NumberKind::ordinal;
    case 23:
        return NumberKind::bullet;
    default:
        return NumberKind::decimal;
    }
}

} // namespace

/// Reads a list table: groups within groups, each told by its first word.
class ListTables::Reader {
  public:
    Reader(ListTables& tables, std::string_view group, const PageOfFont& page_of_font)
        : tables_(tables), lexer_(group), page_of_font_(page_of_font) {}

    void read() {
        for (Token token = lexer_.next(); token.kind != Token::Kind::end; token = lexer_.next()) {
            if (skip_ && token.kind != Token::Kind::open && token.kind != Token::Kind::close) {
                --skip_;
                if (token.kind != Token::Kind::text || token.text.size() < 2)
                    continue;
                token.text.remove_prefix(1);
            }
            take(token);
        }
    }

  private:
    void take(const Token& token) {
        switch (token.kind) {
        case Token::Kind::open:
            skip_ = 0;
            begins_ = true;
            break;
        case Token::Kind::close:
            skip_ = 0;
            in_pattern_ = false;
            begins_ = false;
            break;
        case Token::Kind::word:
            if (begins_)
                begin_group(token);
            else
                word(token);
            break;
        case Token::Kind::symbol:
            if (token.byte == '*')
                return;
            begins_ = false;
            break;
        case Token::Kind::hex: {
            const char byte = static_cast<char>(token.byte);
            begins_ = false;
            pattern_bytes(std::string_view(&byte, 1), true);
            break;
        }
        case Token::Kind::text:
            begins_ = false;
            pattern_bytes(token.text, false);
            break;
        case Token::Kind::end:
            break;
        }
    }

    void begin_group(const Token& token) {
        begins_ = false;
        if (token.text == "list" && tables_.lists_.size() < limits::lists) {
            tables_.lists_.emplace_back();
            list_ = &tables_.lists_.back();
            level_ = nullptr;
            levels_ = 0;
            in_pattern_ = false;
        } else if (token.text == "listlevel" && list_) {
            level_ = levels_ < limits::list_levels ? &list_->levels[levels_] : nullptr;
            ++levels_;
            in_pattern_ = false;
            page_ = CodePage();
        } else if (token.text == "leveltext" && level_) {
            in_pattern_ = true;
            length_told_ = false;
            level_->pattern.clear();
        } else {
            word(token);
        }
    }

    void word(const Token& token) {
        const Parameter parameter = token.parameter;
        if (token.text == "uc") {
            unicode_skip_ = std::clamp(parameter.value, 0, 255);
        } else if (token.text == "u") {
            if (in_pattern_)
                pattern_unit(parameter.value);
            skip_ = unicode_skip_;
        } else if (token.text == "listid" && list_) {
            tables_.by_id_.emplace(parameter.value, tables_.lists_.size() - 1);
        } else if (level_) {
            level_word(token.text, parameter);
        }
    }

    void level_word(std::string_view name, Parameter parameter) {
        if (name == "levelnfc" || name == "levelnfcn") {
            level_->kind = kind_of(parameter.value);
            level_->zero_padded = parameter.value == 22;
            level_->shows = parameter.value != 255;
        } else if (name == "levelstartat") {
            level_->start = std::clamp(parameter.value, 0, limits::measure);
        } else if (name == "levelfollow") {
            level_->follow = parameter.value;
        } else if (name == "f") {
            // The font stands behind the text that it applies to.
            const CodePage page = page_of_font_(parameter.value);
            if (page.is_symbol())
                for (char32_t& character : level_->pattern)
                    if (character >= 0xF020 && character <= 0xF0FF) {
                        const auto byte = static_cast<char>(character - 0xF000);
                        character = page.decode(std::string_view(&byte, 1));
                    }
        }
    }

    /// The first byte tells the text's length and is not part of it.
    void pattern_bytes(std::string_view bytes, bool hex) {
        if (!in_pattern_)
            return;
        for (const char byte : bytes) {
            const auto value = static_cast<unsigned char>(byte);
            if (!length_told_ && hex) {
                length_told_ = true;
                continue;
            }
            if (byte == ';' && !hex)
                return;
            add(value < limits::list_levels ? char32_t{value} : page_.decode(std::string_view(&byte, 1)));
        }
    }

    void pattern_unit(std::int32_t value) {
        length_told_ = true;
        add(static_cast<char32_t>(value < 0 ? value + 0x10000 : value) & 0xFFFF);
    }

    void add(char32_t character) {
        if (level_->pattern.size() < limits::list_text_bytes)
            level_->pattern += character;
    }

    ListTables& tables_;
    Lexer lexer_;
    const PageOfFont& page_of_font_;
    List* list_ = nullptr;
    Level* level_ = nullptr;
    std::size_t levels_ = 0;
    CodePage page_;
    bool begins_ = false;
    bool in_pattern_ = false;
    bool length_told_ = false;
    int unicode_skip_ = 1;
    int skip_ = 0;
};

void ListTables::read_lists(std::string_view group, const PageOfFont& page_of_font) {
    Reader(*this, group, page_of_font).read();
}

void ListTables::read_overrides(std::string_view group) {
    Lexer lexer(group);
    int id = 0;
    for (Token token = lexer.next(); token.kind != Token::Kind::end; token = lexer.next()) {
        if (token.kind != Token::Kind::word)
            continue;
        if (token.text == "listid")
            id = token.parameter.value;
        const auto list = by_id_.find(id);
        if (token.text == "ls" && list != by_id_.end() && by_override_.size() < limits::list_overrides)
            by_override_.emplace(token.parameter.value, list->second);
    }
}

void ListTables::count(List& list, std::size_t level) {
    // A paragraph on a deeper level shows the number of those above; they begin with the first.
    for (std::size_t above = 0; above <= level; ++above) {
        if (!list.counted[above])
            list.counts[above] = list.levels[above].start;
        else if (above == level && list.counts[above] < limits::measure)
            ++list.counts[above];
        list.counted[above] = true;
    }
    std::fill(list.counted.begin() + static_cast<std::ptrdiff_t>(level) + 1, list.counted.end(), false);
}

std::string ListTables::text(const List& list, std::size_t level) const {
    const Level& shown = list.levels[level];
    std::string result;
    // A bullet with a number in it is one that the source's own program draws by itself.
    const auto is_number = [](char32_t character) { return character < limits::list_levels; };
    if (shown.kind == NumberKind::bullet &&
        std::any_of(shown.pattern.begin(), shown.pattern.end(), is_number))
        return "\u2022\t";
    for (const char32_t character : shown.pattern) {
        if (!is_number(character)) {
            if (character >= 0x20)
                append_utf8(result, character);
            continue;
        }
        const Level& counted = list.levels[character];
        std::string number = number_text(counted.kind, list.counts[character]);
        if (counted.zero_padded && number.size() == 1)
            number.insert(0, 1, '0');
        result += number;
    }
    cut_utf8(result, limits::list_text_bytes - 1);
    if (!result.empty() && shown.follow != 2)
        result += shown.follow == 1 ? ' ' : '\t';
    return result;
}

std::string ListTables::next_text(int list_number, int level_number) {
    const auto found = by_override_.find(list_number);
    if (found == by_override_.end())
        return {};
    List& list = lists_[found->second];
    const auto level = static_cast<std::size_t>(std::clamp(level_number, 0, 8));
    count(list, level);
    return list.levels[level].shows ? text(list, level) : std::string();
}

} // namespace tolva::rtf
