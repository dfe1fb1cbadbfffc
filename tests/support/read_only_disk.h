#pragma once

#include "basic/run_time_error.h"
#include "files/file_system.h"

namespace tolva::support {

/// Another disk's files as one sees them who may only read.
class ReadOnlyDisk final : public files::FileSystem {
  public:
    explicit ReadOnlyDisk(files::FileSystem& disk) : disk_(disk) {}

    std::unique_ptr<files::File> open(const std::string& path, files::OpenMode mode) override {
        if (mode != files::OpenMode::read)
            throw basic::RunTimeError(75);
        return disk_.open(path, mode);
    }
    bool exists(const std::string& path) const override { return disk_.exists(path); }
    bool exists_exactly(const std::string& path) const override { return disk_.exists_exactly(path); }
    void remove(const std::string&) override { throw basic::RunTimeError(75); }
    void rename(const std::string&, const std::string&) override { throw basic::RunTimeError(75); }
    void make_folder(const std::string&) override { throw basic::RunTimeError(75); }
    std::vector<std::string> list(const std::string& folder) const override { return disk_.list(folder); }
    void sync_folder(const std::string&) override { throw basic::RunTimeError(75); }
    std::string resolve(const std::string& path) const override { return disk_.resolve(path); }

  private:
    files::FileSystem& disk_;
};

} // namespace tolva::support
