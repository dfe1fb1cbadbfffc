#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace tolva::support {

/// A fresh folder of its own, gone with the object.
class TemporaryFolder {
  public:
    TemporaryFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "tolva-test-").generic_string();
        for (int attempt = 0;; ++attempt) {
            path_ = pattern + std::to_string(std::rand()) + "-" + std::to_string(attempt);
            if (std::filesystem::create_directory(path_))
                break;
        }
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }
    std::string file(const std::string& name) const { return path_.generic_string() + "/" + name; }

  private:
    std::filesystem::path path_;
};

/// Where the samples lie; tests skip when `shared_sample` does not exist.
inline std::filesystem::path shared_sample(const std::string& relative) {
    return std::filesystem::path(TOLVA_SHARED_DIR) / relative;
}

/// A writable copy of a sample in `folder`; samples themselves are never opened for writing.
inline std::string copy_sample(const std::string& relative, const TemporaryFolder& folder) {
    const auto from = shared_sample(relative);
    const auto to = folder.path() / from.filename();
    std::filesystem::copy_file(from, to, std::filesystem::copy_options::overwrite_existing);
    std::filesystem::permissions(to, std::filesystem::perms::owner_write, std::filesystem::perm_options::add);
    return to.string();
}

/// Lays a desk's data and letters out in `folder`, to be written to.
inline void copy_desk(const std::filesystem::path& desk, const TemporaryFolder& folder) {
    namespace fs = std::filesystem;
    fs::copy(desk / "data", folder.path() / "data", fs::copy_options::recursive);
    if (fs::exists(desk / "letters"))
        fs::copy(desk / "letters", folder.path() / "letters", fs::copy_options::recursive);
    else
        fs::create_directory(folder.path() / "letters");
    for (const auto& entry : fs::recursive_directory_iterator(folder.path()))
        fs::permissions(entry, fs::perms::owner_write, fs::perm_options::add);
}

inline std::string file_content(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

} // namespace tolva::support

/// Leaves a test that needs a sample which is not there, and says so in the run.
#define TOLVA_NEEDS_SAMPLE(relative)                                                                         \
    do {                                                                                                     \
        if (!std::filesystem::exists(tolva::support::shared_sample(relative)))                               \
            GTEST_SKIP() << "the sample " << (relative) << " is not at hand";                                \
    } while (false)
