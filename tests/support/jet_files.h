#pragma once

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "basic/run_time_error.h"
#include "jet/check.h"
#include "jet/database.h"
#include "jet/header_page.h"
#include "jet/page.h"

namespace tolva::support {

inline jet::ColumnSchema column(const std::string& name, jet::ColumnType type, int size = 0) {
    jet::ColumnSchema out;
    out.name = name;
    out.type = type;
    out.size = size;
    return out;
}

inline jet::IndexSchema index(const std::string& name, const std::vector<std::string>& columns) {
    jet::IndexSchema out;
    out.name = name;
    for (const std::string& part : columns)
        out.parts.push_back({part, false});
    return out;
}

/// The number of the run-time error that an action raises; 0 for none.
inline int error_of(const std::function<void()>& action) {
    try {
        action();
    } catch (const basic::RunTimeError& error) {
        return error.number();
    }
    return 0;
}

inline const jet::Format& format_of(jet::Format::Version version) {
    return version == jet::Format::Version::jet3 ? jet::jet3_format : jet::jet4_format;
}

/// A file with nothing in it but its header and pages that each hold their number.
inline files::Bytes file_of_pages(const jet::Format& format, jet::PageNumber pages) {
    files::Bytes file(pages * format.page_size);
    jet::write_header(format, std::span(file).first(format.page_size), 45000.5);
    for (jet::PageNumber page = 1; page < pages; ++page)
        std::fill_n(file.begin() + static_cast<std::ptrdiff_t>(page * format.page_size), format.page_size,
                    static_cast<std::uint8_t>(page));
    return file;
}

/// Claims that hold for files of each version: the parameter of every test.
class EachVersion : public testing::TestWithParam<jet::Format::Version> {
  protected:
    static const jet::Format& format() { return format_of(GetParam()); }
};
inline const auto each_version = testing::Values(jet::Format::Version::jet3, jet::Format::Version::jet4);
inline std::string version_name(const testing::TestParamInfo<jet::Format::Version>& info) {
    return info.param == jet::Format::Version::jet3 ? "Jet3" : "Jet4";
}

/// A file on a disk of its own, in memory, and the database open on it.
class JetFile {
  public:
    explicit JetFile(const std::vector<jet::TableSchema>& tables,
                     jet::Format::Version version = jet::Format::Version::jet4)
        : page_size_(format_of(version).page_size) {
        jet::Database::create(*disk_, path, tables, version);
        open();
    }
    explicit JetFile(const files::Bytes& content) {
        put(content);
        open();
    }

    static inline const std::string path = "a.mdb";

    jet::Database& database() { return *database_; }
    jet::Table& table(const std::string& name) { return database_->table(name); }
    files::FileSystem& disk() { return *disk_; }

    void open() { database_ = jet::Database::open(*disk_, path); }
    void close() { database_.reset(); }
    /// Commits, closes and opens anew.
    void reopen() {
        database_->commit();
        close();
        open();
    }

    files::Bytes content() { return files::read_whole(*disk_, path); }
    void put(const files::Bytes& content) {
        const auto file = disk_->open(path, files::OpenMode::create);
        file->truncate(0);
        file->write(0, content);
    }

    /// Of a file that was created here.
    std::size_t page_count() { return content().size() / page_size_; }

  private:
    std::size_t page_size_ = 0;
    std::unique_ptr<files::FileSystem> disk_ = files::make_memory_disk();
    std::unique_ptr<jet::Database> database_;
};

inline std::vector<jet::Row> all_rows(jet::Table& table) {
    std::vector<jet::Row> rows;
    for (const auto cursor = table.scan(); cursor->next();) {
        jet::Row row;
        for (std::size_t i = 0; i < table.schema().columns.size(); ++i)
            row.push_back(cursor->value(i));
        rows.push_back(std::move(row));
    }
    return rows;
}

/// The findings of the structure check in one text, empty for a good file.
inline std::string findings(jet::Database& database) {
    std::string text;
    for (const std::string& line : jet::check(database))
        text += line + "\n";
    return text;
}

} // namespace tolva::support
