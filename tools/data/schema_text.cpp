#include "data/schema_text.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "basic/run_time_error.h"
#include "basic/text.h"

namespace tolva::data {

using basic::equal_names;
using jet::ColumnType;

namespace {

struct TypeName {
    std::string_view name;
    ColumnType type;
    /// How many numbers follow the name.
    int numbers = 0;
};

constexpr TypeName type_names[] = {
    {"boolean", ColumnType::boolean},
    {"byte", ColumnType::byte},
    {"integer", ColumnType::integer},
    {"long", ColumnType::long_integer},
    {"currency", ColumnType::currency},
    {"single", ColumnType::single_real},
    {"double", ColumnType::double_real},
    {"date", ColumnType::date},
    {"binary", ColumnType::binary, 1},
    {"text", ColumnType::text, 1},
    {"ole", ColumnType::ole},
    {"memo", ColumnType::memo},
    {"guid", ColumnType::guid},
    {"numeric", ColumnType::numeric, 2},
};

constexpr int widest_text = 255;
constexpr int widest_binary = 510;
constexpr int most_digits = 28;
constexpr std::size_t most_columns = 255;

/// A word of a line: a bare word, a name that stood between brackets, or one of "(", ")" and ",".
struct Word {
    std::string text;
    bool bracketed = false;

    bool is(std::string_view key_word) const { return !bracketed && equal_names(text, key_word); }
};

/// Reads one line word by word.
class Line {
  public:
    Line(std::string_view text, const std::string& source, int number) : source_(source), number_(number) {
        split(text);
    }

    [[noreturn]] void fail(const std::string& reason) const {
        throw basic::RunTimeError::with_text(5,
                                             source_ + ", line " + std::to_string(number_) + ": " + reason);
    }

    bool at_end() const { return next_ == words_.size(); }

    const Word* peek() const { return at_end() ? nullptr : &words_[next_]; }

    bool accept(std::string_view key_word) {
        if (at_end() || !words_[next_].is(key_word))
            return false;
        ++next_;
        return true;
    }

    void expect(std::string_view key_word) {
        if (!accept(key_word))
            fail("\"" + std::string(key_word) + "\" expected" + instead());
    }

    std::string name(std::string_view what) {
        if (at_end() || is_mark(words_[next_]))
            fail("the name of " + std::string(what) + " expected" + instead());
        return words_[next_++].text;
    }

    int number(std::string_view what, int least, int most) {
        int value = 0;
        const std::string text = at_end() ? "" : words_[next_].text;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
        if (text.empty() || error != std::errc() || end != text.data() + text.size() || value < least ||
            value > most) {
            fail(std::string(what) + " expected, " + std::to_string(least) + " to " + std::to_string(most) +
                 instead());
        }
        ++next_;
        return value;
    }

  private:
    static bool is_mark(const Word& word) {
        return !word.bracketed && (word.text == "(" || word.text == ")" || word.text == ",");
    }

    std::string instead() const {
        return at_end() ? ", but the line ends" : ", but found \"" + words_[next_].text + "\"";
    }

    void split(std::string_view text) {
        std::size_t at = 0;
        while (at < text.size() && text[at] != '#') {
            const char c = text[at];
            if (c == ' ' || c == '\t' || c == '\r') {
                ++at;
            } else if (c == '(' || c == ')' || c == ',') {
                words_.push_back({std::string(1, c)});
                ++at;
            } else if (c == '[') {
                const std::size_t end = text.find(']', at);
                if (end == std::string_view::npos)
                    fail("a name's closing bracket is missing");
                if (end == at + 1)
                    fail("a name is empty");
                words_.push_back({std::string(text.substr(at + 1, end - at - 1)), true});
                at = end + 1;
            } else {
                const std::size_t end = std::min(text.find_first_of(" \t\r(),[#", at), text.size());
                words_.push_back({std::string(text.substr(at, end - at))});
                at = end;
            }
        }
    }

    const std::string& source_;
    int number_;
    std::vector<Word> words_;
    std::size_t next_ = 0;
};

jet::ColumnSchema* find_column(jet::TableSchema& table, const std::string& name) {
    const auto found =
        std::find_if(table.columns.begin(), table.columns.end(),
                     [&](const jet::ColumnSchema& column) { return equal_names(column.name, name); });
    return found == table.columns.end() ? nullptr : &*found;
}

void read_column(Line& line, jet::TableSchema& table) {
    jet::ColumnSchema column;
    column.name = line.name("a column");
    if (find_column(table, column.name))
        line.fail("the column " + column.name + " is there already");
    if (table.columns.size() == most_columns)
        line.fail("a table has at most 255 columns");

    const auto* type = std::find_if(std::begin(type_names), std::end(type_names),
                                    [&](const TypeName& known) { return line.accept(known.name); });
    if (type == std::end(type_names)) {
        line.fail("the column " + column.name + " has " +
                  (line.at_end() ? "no type" : "an unknown type, \"" + line.peek()->text + "\""));
    }
    column.type = type->type;
    if (column.type == ColumnType::text)
        column.size = line.number("the width in characters", 1, widest_text);
    if (column.type == ColumnType::binary)
        column.size = line.number("the width in bytes", 1, widest_binary);
    if (column.type == ColumnType::numeric) {
        column.precision = line.number("the number of digits", 1, most_digits);
        column.scale = line.number("the number of digits behind the point", 0, column.precision);
    }

    while (!line.at_end()) {
        if (line.accept("required")) {
            column.required = true;
        } else if (line.accept("nozerolength")) {
            column.zero_length = false;
        } else if (line.accept("counter")) {
            if (column.type != ColumnType::long_integer)
                line.fail("only a long can be a counter");
            column.auto_number = true;
        } else if (line.accept("fixed")) {
            if (column.type != ColumnType::text)
                line.fail("only a text can be fixed");
            column.fixed_length = true;
        } else if (line.accept("default")) {
            column.default_value = line.name("a default, between brackets,");
        } else {
            line.fail("\"" + line.peek()->text + "\" is no option of a column");
        }
    }
    table.columns.push_back(column);
}

void read_index(Line& line, jet::TableSchema& table) {
    jet::IndexSchema index;
    index.name = line.name("an index");
    line.expect("(");
    do {
        jet::IndexSchema::Part part;
        const std::string name = line.name("a column");
        const jet::ColumnSchema* column = find_column(table, name);
        if (!column)
            line.fail("there is no column " + name);
        part.column = column->name;
        part.descending = line.accept("desc");
        index.parts.push_back(part);
    } while (line.accept(","));
    line.expect(")");

    while (!line.at_end()) {
        if (line.accept("primary")) {
            index.primary = index.unique = index.required = true;
        } else if (line.accept("unique")) {
            index.unique = true;
        } else if (line.accept("ignorenulls")) {
            index.ignore_nulls = true;
        } else if (line.accept("required")) {
            index.required = true;
        } else {
            line.fail("\"" + line.peek()->text + "\" is no option of an index");
        }
    }
    for (const auto& other : table.indexes) {
        if (equal_names(other.name, index.name))
            line.fail("the index " + index.name + " is there already");
        if (other.primary && index.primary)
            line.fail("the table has a primary index already");
    }
    table.indexes.push_back(index);
}

bool is_plain_word(std::string_view name) {
    return !name.empty() && name.find_first_of(" \t(),[]#") == std::string_view::npos;
}

std::string quoted(const std::string& name) {
    const bool bare = is_plain_word(name) && !equal_names(name, "table") && !equal_names(name, "index");
    return bare ? name : "[" + name + "]";
}

std::string type_text(const jet::ColumnSchema& column) {
    const auto* type = std::find_if(std::begin(type_names), std::end(type_names),
                                    [&](const TypeName& known) { return known.type == column.type; });
    if (type == std::end(type_names)) {
        throw basic::RunTimeError::with_text(5, "The column " + column.name +
                                                    " is of a type that a schema cannot name.");
    }
    std::string text(type->name);
    if (type->numbers == 1)
        text += " " + std::to_string(column.size);
    if (type->numbers == 2)
        text += " " + std::to_string(column.precision) + " " + std::to_string(column.scale);
    return text;
}

std::string column_text(const jet::ColumnSchema& column, std::size_t width) {
    std::string text = quoted(column.name);
    text.append(width + 2 - text.size(), ' ');
    text += type_text(column);
    if (column.required)
        text += " required";
    if (!column.zero_length)
        text += " nozerolength";
    if (column.auto_number)
        text += " counter";
    if (column.fixed_length)
        text += " fixed";
    // One that holds a closing bracket has no form here.
    if (!column.default_value.empty() && column.default_value.find(']') == std::string::npos)
        text += " default [" + column.default_value + "]";
    return text + "\n";
}

std::string index_text(const jet::IndexSchema& index) {
    std::string text = "index " + quoted(index.name) + " (";
    for (const auto& part : index.parts) {
        if (&part != &index.parts.front())
            text += ", ";
        text += quoted(part.column);
        if (part.descending)
            text += " desc";
    }
    text += ")";
    if (index.primary)
        text += " primary";
    if (index.unique && !index.primary)
        text += " unique";
    if (index.ignore_nulls)
        text += " ignorenulls";
    if (index.required && !index.primary)
        text += " required";
    return text + "\n";
}

} // namespace

std::vector<jet::TableSchema> parse_schema(std::string_view text, const std::string& source) {
    std::vector<jet::TableSchema> tables;
    int number = 0;
    const auto end_table = [&](const Line& line) {
        if (!tables.empty() && tables.back().columns.empty())
            line.fail("the table " + tables.back().name + " has no column");
    };
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        Line line(text.substr(at, end - at), source, ++number);
        at = end + 1;
        if (line.at_end())
            continue;

        if (line.accept("table")) {
            end_table(line);
            const std::string name = line.name("a table");
            for (const auto& other : tables) {
                if (equal_names(other.name, name))
                    line.fail("the table " + name + " is there already");
            }
            if (!line.at_end())
                line.fail("nothing may follow a table's name");
            tables.push_back({name, {}, {}});
        } else if (tables.empty()) {
            line.fail("a schema starts with a table");
        } else if (line.accept("index")) {
            read_index(line, tables.back());
        } else {
            read_column(line, tables.back());
        }
    }
    const Line past_end("", source, number);
    if (tables.empty())
        past_end.fail("no table");
    end_table(past_end);
    return tables;
}

std::string schema_to_text(const std::vector<jet::TableSchema>& tables) {
    std::string text;
    for (const auto& table : tables) {
        if (!text.empty())
            text += "\n";
        text += "table [" + table.name + "]\n";
        std::size_t width = 0;
        for (const auto& column : table.columns)
            width = std::max(width, quoted(column.name).size());
        for (const auto& column : table.columns)
            text += column_text(column, width);
        if (!table.indexes.empty())
            text += "\n";
        for (const auto& index : table.indexes)
            text += index_text(index);
    }
    return text;
}

} // namespace tolva::data
