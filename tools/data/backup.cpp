#include "data/backup.h"

#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <vector>

#include "basic/run_time_error.h"
#include "basic/text.h"
#include "files/path.h"
#include "jet/stored_content.h"

namespace tolva::data {

using basic::RunTimeError;

namespace {

constexpr std::array<const char*, 7> stores = {"database.mdb",   "listings.mdb", "address.mdb",
                                               "prospect.mdb",   "sold.mdb",     "zipcodes.mdb",
                                               "messagedata.mdb"};

/// What a change or a run leaves beside the files themselves.
constexpr std::array<std::string_view, 4> passing = {"-journal", ".ldb", ".new", ".unfinished"};

/// How often the files that have no lock are read to find them at rest.
constexpr int most_readings = 20;

bool ends_with(const std::string& name, std::string_view end) {
    return basic::lower(name).ends_with(end);
}

bool is_passing(const std::string& name) {
    return std::any_of(passing.begin(), passing.end(),
                       [&](std::string_view end) { return ends_with(name, end); });
}

/// Contents by their path below the target.
using Contents = std::map<std::string, files::Bytes>;

class Backup {
  public:
    Backup(files::FileSystem& disk, const std::string& folder) : disk_(disk), folder_(folder) {
        const std::string data = files::join(folder_, "data");
        if (is_folder(data)) {
            parts_ = {"data"};
            if (is_folder(files::join(folder_, "letters")))
                parts_.push_back("letters");
        }
        for (const char* store : stores) {
            const std::string path = files::join(part_folder(parts_.front()), store);
            if (!disk_.exists(path))
                throw RunTimeError(3024, disk_.resolve(path));
        }
    }

    /// Where copies go below the target; "" for the target itself.
    const std::vector<std::string>& parts() const { return parts_; }

    Contents read() const {
        // While these live no commit begins in any of the stores.
        std::map<std::string, std::unique_ptr<jet::StoredContent>> held;
        for (const auto& [name, path] : names())
            if (ends_with(name, ".mdb"))
                held[name] = std::make_unique<jet::StoredContent>(disk_, path);
        Contents contents = read_others();
        for (const auto& [name, content] : held)
            contents[name] = content->read();
        return contents;
    }

  private:
    bool is_folder(const std::string& path) const {
        try {
            disk_.list(path);
            return true;
        } catch (const RunTimeError&) {
            return false;
        }
    }

    std::string part_folder(const std::string& part) const {
        return part.empty() ? folder_ : files::join(folder_, part);
    }

    /// Every file that is to be copied, by its name below the target, with where it lies.
    std::map<std::string, std::string> names() const {
        std::map<std::string, std::string> found;
        for (const std::string& part : parts_)
            for (const std::string& name : disk_.list(part_folder(part))) {
                const std::string path = files::join(part_folder(part), name);
                if (!is_passing(name) && !is_folder(path))
                    found[files::join(part, name)] = path;
            }
        return found;
    }

    /// Planner years, lists and letters change a piece or a whole file at a time, without a lock: read twice
    /// alike, they stood so together at the moment between.
    Contents read_others() const {
        Contents last = read_others_once();
        for (int reading = 1; reading < most_readings; ++reading) {
            Contents next = read_others_once();
            if (next == last)
                return next;
            last = std::move(next);
        }
        throw RunTimeError::with_text(75, "the files of '" + folder_ + "' do not stop changing");
    }

    Contents read_others_once() const {
        Contents contents;
        for (const auto& [name, path] : names())
            if (!ends_with(name, ".mdb"))
                contents[name] = files::read_whole(disk_, path);
        return contents;
    }

    files::FileSystem& disk_;
    std::string folder_;
    std::vector<std::string> parts_ = {""};
};

void make_empty_folder(files::FileSystem& disk, const std::string& target) {
    if (!disk.exists(target)) {
        disk.make_folder(target);
        return;
    }
    if (!disk.list(target).empty())
        throw RunTimeError::with_text(75, basic::error_text(75) + ": '" + target + "' (is not empty)");
}

void write(files::FileSystem& disk, const std::string& path, const files::Bytes& content) {
    const auto file = disk.open(path, files::OpenMode::create_new);
    file->write(0, content);
    file->sync();
}

} // namespace

std::size_t back_up(files::FileSystem& disk, const std::string& folder, const std::string& target) {
    const Backup backup(disk, disk.resolve(folder));
    make_empty_folder(disk, target);
    const Contents contents = backup.read();
    for (const std::string& part : backup.parts())
        if (!part.empty())
            disk.make_folder(files::join(target, part));
    for (const auto& [name, content] : contents)
        write(disk, files::join(target, name), content);
    for (const std::string& part : backup.parts())
        disk.sync_folder(part.empty() ? target : files::join(target, part));
    return contents.size();
}

} // namespace tolva::data
