#pragma once

#include "files/file_system.h"

namespace tolva::support {

/// Another disk's files, passed through: for disks that are themselves but for one thing.
class PassingDisk : public files::FileSystem {
  public:
    explicit PassingDisk(files::FileSystem& disk) : disk_(disk) {}

    std::unique_ptr<files::File> open(const std::string& path, files::OpenMode mode) override {
        return disk_.open(path, mode);
    }
    bool exists(const std::string& path) const override { return disk_.exists(path); }
    bool exists_exactly(const std::string& path) const override { return disk_.exists_exactly(path); }
    void remove(const std::string& path) override { disk_.remove(path); }
    void rename(const std::string& from, const std::string& to) override { disk_.rename(from, to); }
    void make_folder(const std::string& path) override { disk_.make_folder(path); }
    std::vector<std::string> list(const std::string& folder) const override { return disk_.list(folder); }
    void sync_folder(const std::string& folder) override { disk_.sync_folder(folder); }
    std::string resolve(const std::string& path) const override { return disk_.resolve(path); }

  private:
    files::FileSystem& disk_;
};

} // namespace tolva::support
