#include "jet/file_pager.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "basic/run_time_error.h"
#include "files/path.h"
#include "jet/damage.h"
#include "jet/header_page.h"
#include "jet/stored_content.h"

namespace tolva::jet {
namespace {

/// Whoever wants a page this little behind the one before is walking, and gets so much read ahead.
constexpr PageNumber longest_step = 8;
constexpr std::size_t ahead_bytes = std::size_t{128} << 10;

} // namespace

FilePager::FilePager(files::FileSystem& disk, const std::string& path, Access access, std::size_t memory)
    : disk_(disk), path_(disk.behind_links(path)), journal_(disk, path_), clean_(memory / Page::largest) {
    open_file(access);
    const std::uint64_t size = read_only_ ? content_.size() : file_->size();
    check_length(path_, size);
    std::vector<std::uint8_t> start(recognition_size);
    start.resize(read_stored(0, start));
    format_ = recognise(path_, start);
    page_count_ = stored_count_ = static_cast<PageNumber>(size / format_->page_size);
    if (size % format_->page_size != 0)
        damaged(path_, page_count_, "the file ends inside this page");
    if (page_count_ < 3)
        damaged(path_, page_count_, "the file ends before its catalog");
    was_cut_short_ = commit_was_cut(*format_, *read(0));
}

FilePager::~FilePager() {
    if (!journal_.is_kept())
        return;
    try {
        // Not while a reader looks at it, nor beside a file that took the place of this one.
        const ContentLock lock(*file_, files::Sharing::exclusive);
        if (file_->is_in_place())
            journal_.remove();
    } catch (...) {
        // It is blank: the next opening sweeps it away.
    }
}

void FilePager::open_file(Access access) {
    if (access == Access::write) {
        try {
            file_ = open_stored(disk_, path_, files::OpenMode::sole_write);
            claim();
            recover();
            return;
        } catch (const basic::RunTimeError& error) {
            if (error.number() != 75 || file_)
                throw;
        }
    }
    read_only_ = true;
    content_ = StoredContent(disk_, path_).read();
}

void FilePager::claim() {
    if (!file_->lock() || file_->locked_by_strangers() || users_are_noted_beside())
        throw basic::RunTimeError(3045, path_);
}

/// Other engines note their users in a file beside this one, and lock their notes. One that was left behind
/// is locked by nobody.
bool FilePager::users_are_noted_beside() const {
    const std::string name = files::name_of(path_);
    const std::string beside =
        path_.substr(0, path_.size() - name.size()) + name.substr(0, name.rfind('.')) + ".ldb";
    if (!disk_.exists(beside))
        return false;
    try {
        return disk_.open(beside, files::OpenMode::read)->locked_by_strangers();
    } catch (const basic::RunTimeError& error) {
        constexpr int others_are_kept_out = 70;
        return error.number() == others_are_kept_out;
    }
}

void FilePager::recover() {
    if (!journal_.exists())
        return;
    const ContentLock lock(*file_, files::Sharing::exclusive);
    if (journal_.inspect(*file_) == Journal::State::whole)
        journal_.roll_back(*file_);
    journal_.remove_for_good();
}

std::size_t FilePager::read_stored(std::uint64_t at, std::span<std::uint8_t> out) const {
    if (file_)
        return file_->read(at, out);
    if (at >= content_.size())
        return 0;
    const std::size_t count = std::min<std::uint64_t>(out.size(), content_.size() - at);
    std::copy_n(content_.begin() + static_cast<std::ptrdiff_t>(at), count, out.begin());
    return count;
}

void FilePager::check_usable() const {
    if (!failure_.empty())
        throw basic::RunTimeError::with_text(75, failure_);
}

PageRef FilePager::take_from_ahead(PageNumber page) const {
    const std::size_t size = format_->page_size;
    if (page < ahead_from_ || page - ahead_from_ >= ahead_.size() / size)
        return nullptr;
    return std::make_shared<Page>(std::span(ahead_).subspan((page - ahead_from_) * size, size));
}

PageRef FilePager::fetch(PageNumber page) const {
    const bool walking = file_ && page > last_fetched_ && page - last_fetched_ <= longest_step;
    last_fetched_ = page;
    if (PageRef content = take_from_ahead(page))
        return content;
    if (walking) {
        files::Bytes stretch = std::exchange(ahead_, {}); // gone when the reading fails
        stretch.resize(ahead_bytes);
        stretch.resize(read_stored(std::uint64_t{page} * format_->page_size, stretch));
        ahead_from_ = page;
        ahead_ = std::move(stretch);
        if (PageRef content = take_from_ahead(page))
            return content;
    }
    auto content = std::make_shared<Page>(format_->page_size);
    if (read_stored(std::uint64_t{page} * format_->page_size, *content) != format_->page_size)
        damaged(path_, page, "the file ends inside this page");
    return content;
}

PageRef FilePager::read(PageNumber page) const {
    check_usable();
    if (!pending_.empty())
        if (const auto found = pending_.find(page); found != pending_.end())
            return found->second;
    if (const PageRef& kept = clean_.find(page))
        return kept;
    if (page >= stored_count_)
        damaged(path_, page, "the file has no such page, it ends after " + std::to_string(page_count_));
    PageRef content = fetch(page);
    clean_.put(page, content);
    return content;
}

std::span<std::uint8_t> FilePager::modify(PageNumber page) {
    if (read_only_)
        throw basic::RunTimeError(3027);
    auto found = pending_.find(page);
    if (found == pending_.end()) {
        auto copy = std::make_shared<Page>(*read(page));
        if (in_statement_)
            before_.try_emplace(page, nullptr);
        clean_.drop(page);
        found = pending_.emplace(page, std::move(copy)).first;
        return *found->second;
    }
    if (in_statement_ && page < count_before_)
        before_.try_emplace(page, found->second);
    if (found->second.use_count() > 1)
        found->second = std::make_shared<Page>(*found->second);
    return *found->second;
}

PageNumber FilePager::append() {
    check_usable();
    if (read_only_)
        throw basic::RunTimeError(3027);
    if ((std::uint64_t{page_count_} + 1) * format_->page_size > format_->longest_file)
        files::fail(75, path_,
                    "a file of this kind ends at " + std::to_string(format_->longest_file >> 30) + " GB");
    const PageNumber page = page_count_++;
    pending_.emplace(page, std::make_shared<Page>(format_->page_size));
    return page;
}

void FilePager::begin_statement() {
    before_.clear();
    count_before_ = page_count_;
    in_statement_ = true;
}

void FilePager::end_statement() {
    before_.clear();
    in_statement_ = false;
}

void FilePager::undo_statement() {
    for (auto& [page, content] : before_) {
        if (content)
            pending_[page] = std::move(content);
        else
            pending_.erase(page);
    }
    for (PageNumber page = count_before_; page < page_count_; ++page)
        pending_.erase(page);
    page_count_ = count_before_;
    end_statement();
    ++undo_count_;
}

Journal::Change FilePager::pending_change() const {
    Journal::Change change;
    change.blocks = blocks_to_save();
    change.new_length = std::uint64_t{page_count_} * format_->page_size;
    change.apply = [this](std::uint32_t block, std::span<std::uint8_t> content) {
        const std::size_t pages = std::max<std::size_t>(1, Journal::block_size / format_->page_size);
        for (std::size_t i = 0; i < pages; ++i) {
            const auto found = pending_.find(static_cast<PageNumber>(block * pages + i));
            if (found != pending_.end())
                std::copy(found->second->begin(), found->second->end(),
                          content.begin() + static_cast<std::ptrdiff_t>(i * format_->page_size));
        }
    };
    return change;
}

std::vector<std::uint32_t> FilePager::blocks_to_save() const {
    std::vector<std::uint32_t> blocks;
    const auto save = [&](PageNumber page) {
        if (page >= stored_count_)
            return;
        blocks.push_back(
            static_cast<std::uint32_t>(std::uint64_t{page} * format_->page_size / Journal::block_size));
    };
    save(0);
    for (const auto& [page, content] : pending_)
        save(page);
    // A block whose second half is new is written as a whole by the device, so its first half is at stake.
    if (page_count_ > stored_count_ && stored_count_ > 0 &&
        std::uint64_t{stored_count_} * format_->page_size % Journal::block_size != 0)
        save(stored_count_ - 1);
    std::sort(blocks.begin(), blocks.end());
    blocks.erase(std::unique(blocks.begin(), blocks.end()), blocks.end());
    return blocks;
}

void FilePager::write_pages() {
    const auto place = [&](PageNumber page) { return std::uint64_t{page} * format_->page_size; };
    Page first = *read(0);
    settle_commits(*format_, first);
    Page marked = first;
    mark_commit(*format_, marked);
    file_->write(0, marked);

    std::vector<PageNumber> order;
    for (const auto& [page, content] : pending_)
        if (page != 0)
            order.push_back(page);
    std::sort(order.begin(), order.end());
    // Neighbours go out in one write.
    std::vector<std::uint8_t> run;
    constexpr std::size_t longest_run = std::size_t{1} << 20;
    for (std::size_t i = 0; i < order.size();) {
        const std::uint64_t at = place(order[i]);
        run.clear();
        do {
            const Page& content = *pending_.at(order[i]);
            run.insert(run.end(), content.begin(), content.end());
            ++i;
        } while (i < order.size() && order[i] == order[i - 1] + 1 && run.size() < longest_run);
        file_->write(at, run);
    }

    file_->write(0, first);
    file_->sync();
}

void FilePager::commit() {
    check_usable();
    if (pending_.empty()) {
        if (unsettled_)
            settle();
        return;
    }
    if (in_statement_)
        end_statement();
    {
        const ContentLock lock(*file_, files::Sharing::exclusive);
        put_into_file();
    }

    for (auto& [page, content] : pending_)
        clean_.put(page, std::move(content));
    pending_.clear();
    clean_.drop(0); // its commit bytes
    stored_count_ = page_count_;
    was_cut_short_ = false;
    unsettled_ = true;
    journal_.sync_end();
    unsettled_ = false;
}

/// Makes the last commit durable, whose end did not reach the device.
void FilePager::settle() {
    const ContentLock lock(*file_, files::Sharing::exclusive);
    journal_.remove_for_good();
    unsettled_ = false;
}

void FilePager::put_into_file() {
    if (!file_->is_in_place())
        files::fail(75, path_, "another file has taken its place since it was opened, or none");
    ahead_.clear(); // it tells what was stored
    // A failure here leaves the file as it was and the changes pending; a journal that stands whole says the
    // same as the file does.
    try {
        journal_.write(*file_, pending_change());
    } catch (...) {
        try {
            journal_.remove();
        } catch (const basic::RunTimeError&) {
        }
        throw;
    }
    try {
        write_pages();
        journal_.end();
    } catch (const std::exception& error) {
        take_back(error.what());
        throw;
    }
}

/// Puts the file back after a failure in the midst of writing to it.
void FilePager::take_back(const std::string& failure) {
    try {
        journal_.roll_back(*file_);
        journal_.remove_for_good();
    } catch (const std::exception& second) {
        failure_ = failure + "  The change could not be taken back either (" + second.what() +
                   "); when the file is opened next, it is as before the change or after it.";
        check_usable();
    }
}

void FilePager::rollback() {
    if (in_statement_)
        end_statement();
    pending_.clear();
    page_count_ = stored_count_;
    ++undo_count_;
}

} // namespace tolva::jet
