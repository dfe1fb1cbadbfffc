#pragma once

#include <cstdint>
#include <string>

#include "jet/schema.h"
#include "jet/value.h"

struct sqlite3;

namespace tolva::bench {

/// The same rows in a SQLite file, for a comparison on equal work. Failures end the program with SQLite's
/// text.
class Peer {
  public:
    explicit Peer(const std::string& path);
    ~Peer();
    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;

    /// A table `t` with the schema's columns and an index for each of its indexes.
    void make(const jet::TableSchema& schema);
    void add(const jet::Row& row);

    void run(const std::string& statement);
    /// How many rows the query gives; each column of each is looked at.
    std::int64_t count(const std::string& query);

  private:
    [[noreturn]] void fail(const std::string& what) const;

    sqlite3* file_ = nullptr;
    std::string insert_;
};

} // namespace tolva::bench
