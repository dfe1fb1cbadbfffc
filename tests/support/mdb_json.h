#pragma once

#include <cstdlib>
#include <map>
#include <string>
#include <vector>

#include "support/samples.h"

namespace tolva::support {

/// One row as the tool mdb-json prints it: each column that is not null by its name, numbers and yes/no as
/// they are written, texts and dates ("2026-03-07 08:30:00") without their quotes.
using JsonRow = std::map<std::string, std::string>;

class JsonLine {
  public:
    explicit JsonLine(const std::string& line) : line_(line) {}

    JsonRow row() {
        JsonRow row;
        at_ = line_.find('{') + 1;
        while (at_ < line_.size() && line_[at_] != '}') {
            const std::string name = value();
            ++at_; // the colon
            row[name] = value();
            if (line_[at_] == ',')
                ++at_;
        }
        return row;
    }

  private:
    std::string value() {
        if (line_[at_] == '"')
            return quoted();
        const std::size_t end = line_.find_first_of(",}", at_);
        const std::string plain = line_.substr(at_, end - at_);
        at_ = end;
        return plain;
    }

    std::string quoted() {
        std::string text;
        for (++at_; line_[at_] != '"'; ++at_) {
            if (line_[at_] != '\\') {
                text.push_back(line_[at_]);
                continue;
            }
            ++at_;
            if (line_[at_] == 'u') {
                text.push_back(static_cast<char>(std::stoi(line_.substr(at_ + 1, 4), nullptr, 16)));
                at_ += 4;
            } else if (line_[at_] == 'n') {
                text.push_back('\n');
            } else if (line_[at_] == 'r') {
                text.push_back('\r');
            } else if (line_[at_] == 't') {
                text.push_back('\t');
            } else {
                text.push_back(line_[at_]);
            }
        }
        ++at_;
        return text;
    }

    std::string line_;
    std::size_t at_ = 0;
};

inline bool has_mdb_json() {
    return std::system("mdb-json --version > /dev/null 2>&1") == 0;
}

/// All rows of a table, by a reader of the format that is none of ours.
inline std::vector<JsonRow> mdb_json(const std::string& file, const std::string& table,
                                     const TemporaryFolder& folder) {
    const std::string output = folder.file("rows.json");
    const std::string command = "mdb-json -D '%Y-%m-%d %H:%M:%S' -T '%Y-%m-%d %H:%M:%S' '" + file + "' '" +
                                table + "' > '" + output + "'";
    std::vector<JsonRow> rows;
    if (std::system(command.c_str()) != 0)
        return rows;
    std::ifstream lines(output, std::ios::binary);
    for (std::string line; std::getline(lines, line);)
        rows.push_back(JsonLine(line).row());
    return rows;
}

} // namespace tolva::support

/// Leaves a test that compares with mdb-json where that tool is not installed.
#define TOLVA_NEEDS_MDB_JSON()                                                                               \
    do {                                                                                                     \
        if (!tolva::support::has_mdb_json())                                                                 \
            GTEST_SKIP() << "the tool mdb-json is not installed";                                            \
    } while (false)
