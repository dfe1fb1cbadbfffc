#pragma once

#include "basic/run_time_error.h"
#include "support/passing_disk.h"

namespace tolva::support {

/// Another disk's files as one sees them who may only read.
class ReadOnlyDisk final : public PassingDisk {
  public:
    using PassingDisk::PassingDisk;

    std::unique_ptr<files::File> open(const std::string& path, files::OpenMode mode) override {
        if (mode != files::OpenMode::read)
            throw basic::RunTimeError(75);
        return PassingDisk::open(path, mode);
    }
    void remove(const std::string&) override { throw basic::RunTimeError(75); }
    void rename(const std::string&, const std::string&) override { throw basic::RunTimeError(75); }
    void make_folder(const std::string&) override { throw basic::RunTimeError(75); }
    void sync_folder(const std::string&) override { throw basic::RunTimeError(75); }
};

} // namespace tolva::support
