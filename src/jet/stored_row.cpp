#include "jet/stored_row.h"

#include <algorithm>

#include "basic/run_time_error.h"
#include "jet/damage.h"
#include "jet/long_value.h"
#include "jet/prefetch.h"

namespace tolva::jet {

void StoredRow::go_to(RowId id) {
    Record record = table_.find_row(id);
    if (!record.page)
        throw basic::RunTimeError(3167);
    stand_on(std::move(record), id.page);
}

void StoredRow::stand_on(Record record, PageNumber page) {
    record_ = std::move(record);
    page_ = page;
    view_.reset();
    view_.emplace(table_.pager_, page, record_.bytes);
}

Value StoredRow::value(std::size_t column) const {
    return decode_column(table_.pager_, page_, table_.definition_.columns[column], *view_);
}

void StoredRow::read_into(std::size_t column, Value& into) const {
    decode_column(table_.pager_, page_, table_.definition_.columns[column], *view_, into);
}

TableScan::TableScan(const StoredTable& table)
    : table_(table), pages_(table.data_pages()), version_(table.version()), row_(table) {}

void TableScan::reload() {
    // What the table looks like now, from behind the row that was read last.
    version_ = table_.version();
    pages_ = table_.data_pages();
    place_ =
        static_cast<std::size_t>(std::upper_bound(pages_.begin(), pages_.end(), number_) - pages_.begin());
    const bool still_there = place_ > 0 && pages_[place_ - 1] == number_;
    page_.reset();
    view_.reset();
    if (!still_there)
        return;
    page_ = table_.pager_.read(number_);
    view_.emplace(table_.pager_.format(), table_.pager_.path(), number_, *page_);
}

bool TableScan::next_page() {
    if (place_ == pages_.size())
        return false;
    number_ = pages_[place_++];
    if (place_ < pages_.size())
        if (const Page* coming = table_.pager_.glance(pages_[place_]))
            prefetch(*coming);
    // Whoever goes on after an error here goes on with the page behind this one.
    view_.reset();
    page_ = table_.pager_.read(number_);
    const DataPageView view(table_.pager_.format(), table_.pager_.path(), number_, *page_);
    if (view.owner() != table_.definition_.page)
        damaged(table_.pager_.path(), number_,
                "belongs to another table than page " + std::to_string(table_.definition_.page) + " says");
    view_.emplace(view);
    slot_ = 0;
    return true;
}

bool TableScan::next() {
    if (version_ != table_.version())
        reload();
    for (;;) {
        if (!view_ || slot_ >= view_->slots()) {
            if (!next_page())
                return false;
            continue;
        }
        const std::size_t slot = slot_++;
        const std::uint16_t flags = view_->flags(slot);
        if (flags & DataPageView::hidden_flag)
            continue;
        id_ = table_.id_at(number_, static_cast<std::uint8_t>(slot));
        Record record{page_, view_->record(slot), flags};
        row_.stand_on(flags ? follow_moved_row(table_.pager_, std::move(record), number_) : std::move(record),
                      number_);
        return true;
    }
}

} // namespace tolva::jet
