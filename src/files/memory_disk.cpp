#include <algorithm>
#include <map>
#include <set>

#include "basic/text.h"
#include "files/file_system.h"
#include "files/path.h"

namespace tolva::files {
namespace {

struct Content {
    Bytes bytes;
    bool claimed = false;
    int readers = 0;
    bool changing = false;
};

class MemoryFile final : public File {
  public:
    MemoryFile(std::string path, std::shared_ptr<Content> content, bool writable)
        : path_(std::move(path)), content_(std::move(content)), writable_(writable) {}
    ~MemoryFile() override {
        if (has_claim_)
            content_->claimed = false;
        MemoryFile::unlock_content();
    }

    const std::string& path() const override { return path_; }
    std::uint64_t size() const override { return content_->bytes.size(); }

    std::size_t read(std::uint64_t offset, std::span<std::uint8_t> out) const override {
        const Bytes& bytes = content_->bytes;
        if (offset >= bytes.size())
            return 0;
        const std::size_t count = std::min<std::size_t>(out.size(), bytes.size() - offset);
        std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(offset), count, out.begin());
        return count;
    }

    void write(std::uint64_t offset, std::span<const std::uint8_t> bytes) override {
        check_writable();
        if (content_->bytes.size() < offset + bytes.size())
            content_->bytes.resize(offset + bytes.size());
        std::copy(bytes.begin(), bytes.end(), content_->bytes.begin() + static_cast<std::ptrdiff_t>(offset));
    }

    void truncate(std::uint64_t size) override {
        check_writable();
        content_->bytes.resize(size);
    }

    void sync() override {}

    bool lock() override {
        check_writable();
        if (content_->claimed)
            return has_claim_;
        return content_->claimed = has_claim_ = true;
    }
    void unlock() override {
        if (has_claim_)
            content_->claimed = has_claim_ = false;
    }

    // Nobody here would finish while another waits, so nobody waits.
    bool lock_content(Sharing sharing) override {
        unlock_content();
        if (content_->changing || (sharing == Sharing::exclusive && content_->readers > 0))
            return false;
        if (sharing == Sharing::exclusive)
            content_->changing = changes_ = true;
        else {
            ++content_->readers;
            reads_ = true;
        }
        return true;
    }
    void unlock_content() noexcept override {
        if (reads_)
            --content_->readers;
        if (changes_)
            content_->changing = false;
        reads_ = changes_ = false;
    }

    bool locked_by_strangers() const override { return false; }

  private:
    void check_writable() const {
        if (!writable_)
            fail(75, path_, "opened for reading");
    }

    std::string path_;
    std::shared_ptr<Content> content_;
    bool writable_;
    bool has_claim_ = false;
    bool reads_ = false, changes_ = false;
};

class MemoryDisk final : public FileSystem, private CaseBlindLookup {
  public:
    std::unique_ptr<File> open(const std::string& path, OpenMode mode) override {
        const std::string found = resolve(path);
        if (is_folder(found))
            fail(75, found, "not a file");
        auto at = files_.find(found);
        if (at != files_.end() && mode == OpenMode::create_new)
            fail(58, found, "exists");
        if (at == files_.end()) {
            if (!is_folder(folder_of(found)))
                fail(76, found, "no such folder");
            if (mode == OpenMode::read || mode == OpenMode::read_write || mode == OpenMode::sole_write)
                fail(53, found, "no such file");
            at = files_.emplace(found, std::make_shared<Content>()).first;
        }
        return std::make_unique<MemoryFile>(found, at->second, mode != OpenMode::read);
    }

    bool exists(const std::string& path) const override { return exact(resolve(path)); }
    bool exists_exactly(const std::string& path) const override { return exact(with_slashes(path)); }

    void remove(const std::string& path) override {
        const std::string found = resolve(path);
        if (files_.erase(found) == 0)
            fail(53, found, "no such file");
    }

    void rename(const std::string& from, const std::string& to) override {
        const auto source = files_.find(resolve(from));
        if (source == files_.end())
            fail(53, from, "no such file");
        const std::string target = find_folder(with_slashes(to));
        if (!is_folder(folder_of(target)))
            fail(76, target, "no such folder");
        if (is_folder(target))
            fail(75, target, "is a folder");
        auto content = source->second;
        files_.erase(source);
        files_[target] = std::move(content);
    }

    void make_folder(const std::string& path) override {
        const std::string found = resolve(path);
        if (exact(found))
            fail(75, found, "exists");
        if (!is_folder(folder_of(found)))
            fail(76, found, "no such folder");
        folders_.insert(found);
    }

    std::vector<std::string> list(const std::string& folder) const override {
        const std::string found = resolve(folder);
        if (!is_folder(found))
            fail(76, found, "no such folder");
        std::vector<std::string> names = entries(found);
        std::sort(names.begin(), names.end());
        return names;
    }

    void sync_folder(const std::string& folder) override {
        const std::string found = resolve(folder);
        if (!is_folder(found))
            fail(76, found, "no such folder");
    }

    std::string resolve(const std::string& path) const override { return find(with_slashes(path)); }

  private:
    static bool is_root(const std::string& path) {
        return path.empty() || path == "/" || path == "." || (path.size() <= 3 && path.find(':') == 1);
    }
    bool is_folder(const std::string& path) const { return is_root(path) || folders_.count(path) != 0; }
    bool exact(const std::string& path) const override { return is_folder(path) || files_.count(path) != 0; }

    std::vector<std::string> entries(const std::string& folder) const override {
        std::vector<std::string> names;
        const auto add = [&](const std::string& path) {
            if (folder_of(path) == folder)
                names.push_back(name_of(path));
        };
        for (const auto& [path, content] : files_)
            add(path);
        for (const std::string& path : folders_)
            add(path);
        return names;
    }

    std::map<std::string, std::shared_ptr<Content>> files_;
    std::set<std::string> folders_;
};

} // namespace

std::unique_ptr<FileSystem> make_memory_disk() {
    return std::make_unique<MemoryDisk>();
}

} // namespace tolva::files
