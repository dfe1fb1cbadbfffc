#include "peer.h"

#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <variant>

namespace tolva::bench {

namespace {

std::string quoted(const std::string& name) {
    return "\"" + name + "\"";
}

const char* type_of(jet::ColumnType type) {
    switch (type) {
    case jet::ColumnType::text:
    case jet::ColumnType::memo:
        return "text";
    case jet::ColumnType::date:
    case jet::ColumnType::double_real:
        return "real";
    default:
        return "integer";
    }
}

void bind(sqlite3_stmt* statement, int place, const jet::Value& value) {
    if (const auto* text = std::get_if<std::string>(&value))
        sqlite3_bind_text(statement, place, text->data(), static_cast<int>(text->size()), SQLITE_TRANSIENT);
    else if (const auto* whole = std::get_if<std::int64_t>(&value))
        sqlite3_bind_int64(statement, place, *whole);
    else if (const auto* yes = std::get_if<bool>(&value))
        sqlite3_bind_int(statement, place, *yes ? 1 : 0);
    else if (const auto* real = std::get_if<double>(&value))
        sqlite3_bind_double(statement, place, *real);
    else if (const auto* date = std::get_if<basic::Date>(&value))
        sqlite3_bind_double(statement, place, date->days);
    else
        sqlite3_bind_null(statement, place);
}

} // namespace

Peer::Peer(const std::string& path) {
    if (sqlite3_open(path.c_str(), &file_) != SQLITE_OK)
        fail(path);
}

Peer::~Peer() {
    sqlite3_close(file_);
}

void Peer::fail(const std::string& what) const {
    std::fprintf(stderr, "%s: %s\n", what.c_str(), sqlite3_errmsg(file_));
    std::exit(1);
}

void Peer::make(const jet::TableSchema& schema) {
    std::string columns, marks;
    for (const jet::ColumnSchema& column : schema.columns) {
        columns += (columns.empty() ? "" : ", ") + quoted(column.name) + " " + type_of(column.type);
        marks += marks.empty() ? "?" : ", ?";
    }
    run("create table t (" + columns + ")");
    for (const jet::IndexSchema& index : schema.indexes) {
        std::string parts;
        for (const jet::IndexSchema::Part& part : index.parts)
            parts += (parts.empty() ? "" : ", ") + quoted(part.column);
        run("create index " + quoted("by_" + index.name) + " on t (" + parts + ")");
    }
    insert_ = "insert into t values (" + marks + ")";
}

void Peer::add(const jet::Row& row) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(file_, insert_.c_str(), -1, &statement, nullptr) != SQLITE_OK)
        fail(insert_);
    for (std::size_t i = 0; i < row.size(); ++i)
        bind(statement, static_cast<int>(i) + 1, row[i]);
    if (sqlite3_step(statement) != SQLITE_DONE)
        fail(insert_);
    sqlite3_finalize(statement);
}

void Peer::run(const std::string& statement) {
    if (sqlite3_exec(file_, statement.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
        fail(statement);
}

std::int64_t Peer::count(const std::string& query) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(file_, query.c_str(), -1, &statement, nullptr) != SQLITE_OK)
        fail(query);
    const int columns = sqlite3_column_count(statement);
    std::int64_t rows = 0;
    int outcome;
    while ((outcome = sqlite3_step(statement)) == SQLITE_ROW) {
        ++rows;
        for (int i = 0; i < columns; ++i)
            static_cast<void>(sqlite3_column_text(statement, i));
    }
    if (outcome != SQLITE_DONE)
        fail(query);
    sqlite3_finalize(statement);
    return rows;
}

} // namespace tolva::bench
