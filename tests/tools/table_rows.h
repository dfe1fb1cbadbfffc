#pragma once

#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace tolva::tools {

/// The text of a table, taken apart: a map from column to field for each row, fields still escaped.
struct TableRows {
    std::vector<std::string> columns;
    std::vector<std::vector<std::string>> rows;

    explicit TableRows(const std::string& text) {
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);) {
            std::vector<std::string> fields(1);
            for (const char c : line) {
                if (c == '\t')
                    fields.emplace_back();
                else
                    fields.back() += c;
            }
            if (columns.empty())
                columns = fields;
            else
                rows.push_back(fields);
        }
    }

    /// One column of every row; nothing when there is no such column.
    std::vector<std::string> column(const std::string& name) const {
        std::vector<std::string> fields;
        for (std::size_t i = 0; i < columns.size(); ++i) {
            if (columns[i] != name)
                continue;
            for (const auto& row : rows)
                fields.push_back(row.at(i));
        }
        return fields;
    }

    /// A row as a map from column to field.
    std::map<std::string, std::string> row(std::size_t number) const {
        std::map<std::string, std::string> fields;
        for (std::size_t i = 0; i < columns.size(); ++i)
            fields[columns[i]] = rows.at(number).at(i);
        return fields;
    }
};

} // namespace tolva::tools
