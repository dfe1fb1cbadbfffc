#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "basic/run_time_error.h"
#include "files/file_system.h"

namespace tolva::support {

/// What a test's disk throws when its power goes: nothing in the program but a destructor may catch it.
struct PowerCut {};

/// A disk in memory that loses power, kills its user or fails at a chosen operation. It keeps what has
/// reached the device apart from what has only been written: of the writes since a file's last sync, and of
/// the creations and removals since the folder's, a power cut keeps any of them, loses any, and tears any at
/// sector borders.
class FaultyDisk final : public files::FileSystem {
  public:
    enum class Fault {
        none,
        power_cut,    ///< the operation is under way; see above
        kill,         ///< the operation is not begun; what was written before stays
        fail_once,    ///< error 75, as `Failure` tells
        fail_for_good ///< the same for all later ones of its kind
    };
    /// Which operations may fail, and how; the others go on.
    enum class Failure {
        short_write,  ///< all that change the disk or sync; of a write the first half is done
        input_output, ///< the same; of a write nothing is done
        disk_full,    ///< what makes a file, or makes one longer
        sync,         ///< what makes durable: what was written since the last time is let go of
        read,         ///< what reads
    };
    struct Plan {
        Fault fault = Fault::none;
        int operation = 0; ///< counted from 1: of a failure, those that it can hit; else each that changes
                           ///< the disk or syncs
        std::uint32_t seed = 0;
        std::size_t sector = 512;
        Failure failure = Failure::short_write;
        int cut_at = 0;       ///< beside a failure: the power goes at this operation, counted like a cut's
        bool forgets = false; ///< what a failed sync did not bring to the device is forgotten at once
    };

    FaultyDisk() = default;
    explicit FaultyDisk(std::map<std::string, files::Bytes> content) {
        for (auto& [path, bytes] : content) {
            auto node = std::make_shared<Node>();
            node->now = node->durable = std::move(bytes);
            now_[path] = durable_[path] = node;
        }
    }

    /// From here on nobody may write into the file; its name may still go to another one.
    void protect(const std::string& path) { protected_.insert(path); }

    void plan(const Plan& plan) {
        plan_ = plan;
        operations_ = changes_ = 0;
    }
    int operations() const { return operations_; }
    /// Whether the power has gone: a destructor doesn't tell.
    bool is_cut() const {
        const bool cuts = plan_.fault == Fault::power_cut || plan_.fault == Fault::kill;
        return (cuts && operations_ >= plan_.operation) || (plan_.cut_at > 0 && changes_ >= plan_.cut_at);
    }
    /// The system needs the memory in which it keeps what it read and wrote: what a failed sync let go of is
    /// seen no more.
    void forget() {
        for (const auto& [path, node] : now_)
            node->forget();
    }

    /// Every file as a program sees it now.
    std::map<std::string, files::Bytes> content() const {
        std::map<std::string, files::Bytes> files;
        for (const auto& [path, node] : now_)
            files[path] = node->now;
        return files;
    }

    /// Every file as the next start finds it, after `PowerCut` was thrown.
    std::map<std::string, files::Bytes> survivors() const { return survivors(plan_.seed, plan_.sector); }
    /// One cut has many outcomes: a seed picks one.
    std::map<std::string, files::Bytes> survivors(std::uint32_t seed, std::size_t sector) const {
        if (plan_.fault == Fault::kill)
            return content();
        std::mt19937 random(seed);
        const auto chance = [&] { return random() % 2 == 0; };
        auto names = durable_;
        for (const FolderChange& change : folder_queue_) {
            if (!chance())
                continue;
            if (change.node)
                names[change.path] = change.node;
            else
                names.erase(change.path);
        }
        std::map<std::string, files::Bytes> files;
        for (const auto& [path, node] : names) {
            files::Bytes bytes = node->durable;
            keep_some(bytes, node->queue, random, sector);
            files[path] = std::move(bytes);
        }
        return files;
    }

    std::unique_ptr<files::File> open(const std::string& path, files::OpenMode mode) override {
        auto found = now_.find(path);
        if (found != now_.end() && mode == files::OpenMode::create_new)
            fail(58);
        if (mode != files::OpenMode::read && protected_.count(path) > 0)
            fail(75);
        if (found == now_.end()) {
            if (mode != files::OpenMode::create && mode != files::OpenMode::create_new)
                fail(53);
            auto node = std::make_shared<Node>();
            step(Kind::growth, [&] { folder_queue_.push_back({path, node}); });
            found = now_.emplace(path, node).first;
            folder_queue_.push_back({path, node});
        }
        return std::make_unique<FaultyFile>(*this, path, found->second);
    }
    bool exists(const std::string& path) const override { return now_.count(path) != 0; }
    bool exists_exactly(const std::string& path) const override { return exists(path); }
    void remove(const std::string& path) override {
        if (!exists(path))
            fail(53);
        step(Kind::change, [&] { folder_queue_.push_back({path, nullptr}); });
        now_.erase(path);
        folder_queue_.push_back({path, nullptr});
    }
    void rename(const std::string& from, const std::string& to) override {
        if (!exists(from))
            fail(53);
        auto node = now_.at(from);
        // A cut keeps or loses the arrival; the old name may stay beside it, as a reader cannot tell.
        step(Kind::change, [&] { folder_queue_.push_back({to, node}); });
        now_.erase(from);
        now_[to] = node;
        folder_queue_.push_back({to, node});
        folder_queue_.push_back({from, nullptr});
    }
    void make_folder(const std::string&) override {}
    std::vector<std::string> list(const std::string&) const override {
        std::vector<std::string> names;
        for (const auto& [path, node] : now_)
            names.push_back(path);
        return names;
    }
    void sync_folder(const std::string&) override {
        step(Kind::sync, [] {});
        durable_ = now_;
        folder_queue_.clear();
    }
    std::string resolve(const std::string& path) const override { return path; }

  private:
    struct Write {
        std::uint64_t offset;
        files::Bytes bytes;
        bool is_truncate = false;
    };
    struct Node {
        files::Bytes now, durable;
        std::vector<Write> queue;
        bool claimed = false, changing = false;
        int readers = 0;

        void forget() {
            now = durable;
            for (const Write& write : queue) {
                if (write.is_truncate)
                    now.resize(write.offset);
                else
                    put(now, write.offset, write.bytes);
            }
        }
    };
    struct FolderChange {
        std::string path;
        std::shared_ptr<Node> node; ///< null: the name goes
    };

    class FaultyFile final : public files::File {
      public:
        FaultyFile(FaultyDisk& disk, std::string path, std::shared_ptr<Node> node)
            : disk_(disk), path_(std::move(path)), node_(std::move(node)) {}
        ~FaultyFile() override {
            unlock();
            unlock_content();
        }
        const std::string& path() const override { return path_; }
        std::uint64_t size() const override { return node_->now.size(); }
        std::size_t read(std::uint64_t offset, std::span<std::uint8_t> out) const override {
            disk_.step(Kind::read, [] {});
            if (offset >= node_->now.size())
                return 0;
            const std::size_t count = std::min<std::size_t>(out.size(), node_->now.size() - offset);
            std::copy_n(node_->now.begin() + static_cast<std::ptrdiff_t>(offset), count, out.begin());
            return count;
        }
        void write(std::uint64_t offset, std::span<const std::uint8_t> bytes) override {
            const auto queue = [&](std::size_t count) {
                node_->queue.push_back(
                    {offset, {bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count)}});
            };
            const bool grows = offset + bytes.size() > node_->now.size();
            disk_.step(
                grows ? Kind::growth : Kind::change, [&] { queue(bytes.size()); },
                [&](Failure failure) {
                    if (failure == Failure::input_output)
                        return;
                    queue(bytes.size() / 2);
                    put(node_->now, offset, bytes.first(bytes.size() / 2));
                });
            queue(bytes.size());
            put(node_->now, offset, bytes);
        }
        void truncate(std::uint64_t size) override {
            disk_.step(Kind::change, [&] { node_->queue.push_back({size, {}, true}); });
            node_->queue.push_back({size, {}, true});
            node_->now.resize(size);
        }
        void sync() override {
            // Of what was written before a sync that failed any part may be on the device, and the rest never
            // comes there: the system may have let go of it. Only what is written again later counts.
            disk_.step(
                Kind::sync, [] {},
                [&](Failure) {
                    std::mt19937 random(disk_.plan_.seed);
                    keep_some(node_->durable, node_->queue, random, disk_.plan_.sector);
                    node_->queue.clear();
                    if (disk_.plan_.forgets)
                        node_->forget();
                });
            node_->durable.resize(node_->now.size());
            for (const Write& write : node_->queue) {
                if (write.is_truncate)
                    node_->durable.resize(write.offset);
                else
                    put(node_->durable, write.offset, write.bytes);
            }
            node_->durable.resize(node_->now.size());
            node_->queue.clear();
        }
        bool lock() override {
            if (node_->claimed)
                return claims_;
            return node_->claimed = claims_ = true;
        }
        void unlock() override {
            if (claims_)
                node_->claimed = claims_ = false;
        }
        bool lock_content(files::Sharing sharing) override {
            const bool alone = sharing == files::Sharing::exclusive;
            if (node_->changing || (alone && node_->readers > 0))
                return false;
            changes_ = node_->changing = alone;
            reads_ = !alone;
            node_->readers += reads_;
            return true;
        }
        void unlock_content() noexcept override {
            node_->readers -= reads_;
            node_->changing = node_->changing && !changes_;
            reads_ = changes_ = false;
        }
        bool locked_by_strangers() const override { return false; }
        bool is_in_place() const override {
            const auto found = disk_.now_.find(path_);
            return found != disk_.now_.end() && found->second == node_;
        }

      private:
        FaultyDisk& disk_;
        std::string path_;
        std::shared_ptr<Node> node_;
        bool claims_ = false, reads_ = false, changes_ = false;
    };

    static void put(files::Bytes& bytes, std::uint64_t at, std::span<const std::uint8_t> piece) {
        if (bytes.size() < at + piece.size())
            bytes.resize(at + piece.size());
        std::copy(piece.begin(), piece.end(), bytes.begin() + static_cast<std::ptrdiff_t>(at));
    }
    /// What a device has of writes when the power goes: any of them, none, and any of their sectors.
    static void keep_some(files::Bytes& bytes, const std::vector<Write>& writes, std::mt19937& random,
                          std::size_t sector) {
        const auto chance = [&] { return random() % 2 == 0; };
        for (const Write& write : writes) {
            if (write.is_truncate) {
                if (chance())
                    bytes.resize(write.offset);
                continue;
            }
            const std::uint32_t fate = random() % 3;
            for (std::size_t done = 0; done < write.bytes.size();) {
                const std::uint64_t at = write.offset + done;
                const std::size_t size =
                    std::min<std::size_t>(sector - at % sector, write.bytes.size() - done);
                const bool kept = fate == 0 || (fate == 1 && chance());
                if (kept)
                    put(bytes, at, {write.bytes.data() + done, size});
                done += size;
            }
        }
    }
    [[noreturn]] static void fail(int number) {
        throw basic::RunTimeError::with_text(number, "the disk fails");
    }

    enum class Kind { change, growth, sync, read };

    /// Whether the plan counts operations of a kind.
    bool counts(Kind kind) const {
        if (plan_.fault != Fault::fail_once && plan_.fault != Fault::fail_for_good)
            return kind != Kind::read;
        switch (plan_.failure) {
        case Failure::short_write:
        case Failure::input_output:
            return kind != Kind::read;
        case Failure::disk_full:
            return kind == Kind::growth;
        case Failure::sync:
            return kind == Kind::sync;
        case Failure::read:
            return kind == Kind::read;
        }
        return false;
    }

    /// Counts an operation. `begun` records it as under way for a power cut, `half` does what a failing one
    /// does.
    template <typename Begun, typename Half>
    void step(Kind kind, Begun&& begun, Half&& half) {
        if (plan_.cut_at > 0 && kind != Kind::read) {
            ++changes_;
            if (changes_ == plan_.cut_at)
                begun();
            if (changes_ >= plan_.cut_at)
                throw PowerCut{};
        }
        if (!counts(kind))
            return;
        ++operations_;
        if (plan_.fault == Fault::none)
            return;
        const bool now = operations_ == plan_.operation;
        const bool later = operations_ > plan_.operation;
        switch (plan_.fault) {
        case Fault::power_cut:
            if (now)
                begun();
            if (now || later)
                throw PowerCut{};
            break;
        case Fault::kill:
            if (now || later)
                throw PowerCut{};
            break;
        case Fault::fail_once:
        case Fault::fail_for_good:
            if (now || (later && plan_.fault == Fault::fail_for_good)) {
                half(plan_.failure);
                fail(75);
            }
            break;
        case Fault::none:
            break;
        }
    }
    template <typename Begun>
    void step(Kind kind, Begun&& begun) {
        step(kind, begun, [](Failure) {});
    }

    std::map<std::string, std::shared_ptr<Node>> now_, durable_;
    std::vector<FolderChange> folder_queue_;
    std::set<std::string> protected_;
    Plan plan_;
    int operations_ = 0;
    int changes_ = 0; ///< operations that change the disk or sync, whatever the plan counts
};

} // namespace tolva::support
