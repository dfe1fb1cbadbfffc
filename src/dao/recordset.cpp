#include "dao/recordset.h"

#include <algorithm>
#include <utility>

#include "basic/run_time_error.h"
#include "dao/conversion.h"
#include "dao/database.h"
#include "dao/default_value.h"

namespace tolva::dao {

namespace {

using basic::RunTimeError;

constexpr int no_edit_begun = 3020;
constexpr int no_current_record = 3021;
constexpr int row_deleted = 3167;
constexpr int read_only = 3027;
constexpr int unknown_name = 3265;

} // namespace

Recordset::Recordset(Database& database, jet::Table& table, std::vector<jet::RowId> rows, Kind kind)
    : database_(database), table_(table), rows_(std::move(rows)), deleted_(rows_.size(), false),
      live_rows_(rows_.size()), first_added_(rows_.size()) {
    visited_ = kind == Kind::table ? rows_.size() : std::min<std::size_t>(rows_.size(), 1);
}

Recordset::~Recordset() = default;

bool Recordset::on_deleted_row() const {
    return position_ >= 0 && position_ < size() && deleted_[static_cast<std::size_t>(position_)];
}

bool Recordset::Eof() const {
    return is_empty() || position_ >= size();
}

bool Recordset::Bof() const {
    return is_empty() || position_ < 0;
}

long Recordset::RecordCount() const {
    long count = 0;
    for (std::size_t i = 0; i < rows_.size(); ++i)
        if (!deleted_[i] && (i < visited_ || i >= first_added_))
            ++count;
    return count;
}

bool Recordset::is_pending(std::size_t column) const {
    return pending_ == Pending::add || (pending_ == Pending::edit && written_[column]);
}

FieldValue Recordset::field(const std::string& name) const {
    const std::size_t wanted = column(name);
    jet::Value value = is_pending(wanted) ? buffer_[wanted] : current_reader().value(wanted);
    if (std::holds_alternative<std::string>(value))
        return FieldValue(std::move(value), database_.current_year());
    return FieldValue(std::move(value));
}

const jet::Value& Recordset::value(std::size_t column) const {
    if (values_.empty())
        values_.resize(schema().columns.size());
    jet::Value& into = values_[column];
    if (is_pending(column))
        into = buffer_[column];
    else
        current_reader().read_into(column, into);
    return into;
}

void Recordset::write(const std::string& name, const jet::Value& value) {
    const std::size_t wanted = column(name);
    if (pending_ == Pending::none)
        throw RunTimeError(no_edit_begun);
    buffer_[wanted] = convert(value, schema().columns[wanted], database_.current_year());
    written_[wanted] = true;
}

void Recordset::AddNew() {
    require_writable();
    jet::Row row = new_row();
    if (std::any_of(schema().columns.begin(), schema().columns.end(),
                    [](const jet::ColumnSchema& column) { return column.auto_number; })) {
        database_.about_to_change();
        table_.draw_auto_numbers(row);
    }
    begin(Pending::add, std::move(row));
}

/// A new row as it starts: with its defaults, and a yes/no is never null.
jet::Row Recordset::new_row() const {
    jet::Row row;
    row.reserve(schema().columns.size());
    for (const jet::ColumnSchema& column : schema().columns) {
        row.push_back(column.type == jet::ColumnType::boolean ? jet::Value(false) : jet::Value());
        const auto value = default_value(column.default_value, database_.moment());
        if (!value || column.auto_number)
            continue;
        try {
            row.back() = convert(*value, column, database_.current_year());
        } catch (const RunTimeError&) {
            // A default that its column cannot hold is as good as none.
        }
    }
    return row;
}

void Recordset::Edit() {
    drop_pending();
    const jet::RowId row = current_row();
    require_writable();
    if (!table_.exists(row))
        throw RunTimeError(row_deleted);
    begin(Pending::edit, jet::Row(schema().columns.size()));
}

void Recordset::Update() {
    if (pending_ == Pending::none)
        throw RunTimeError(no_edit_begun);
    database_.about_to_change();
    if (pending_ == Pending::edit) {
        table_.change(current_row(), buffer_, written_);
    } else {
        const jet::RowId id = table_.insert(buffer_);
        const bool was_behind_the_end = Eof(); // which a set without rows always is
        rows_.push_back(id);
        deleted_.push_back(false);
        ++live_rows_;
        if (was_behind_the_end)
            position_ = size();
    }
    drop_pending();
}

void Recordset::Delete() {
    drop_pending();
    const jet::RowId row = current_row();
    require_writable();
    database_.about_to_change();
    table_.erase(row);
    deleted_[static_cast<std::size_t>(position_)] = true;
    --live_rows_;
}

void Recordset::MoveFirst() {
    drop_pending();
    if (live_rows_ == 0)
        throw RunTimeError(no_current_record);
    settle(0, 1);
}

void Recordset::MoveLast() {
    drop_pending();
    if (live_rows_ == 0)
        throw RunTimeError(no_current_record);
    settle(size() - 1, -1);
    visited_ = rows_.size();
}

void Recordset::MoveNext() {
    drop_pending();
    if (Eof())
        throw RunTimeError(no_current_record);
    settle(position_ + 1, 1);
}

void Recordset::MovePrevious() {
    drop_pending();
    if (Bof())
        throw RunTimeError(no_current_record);
    settle(position_ - 1, -1);
}

void Recordset::settle(std::ptrdiff_t from, std::ptrdiff_t step) {
    while (from >= 0 && from < size() && deleted_[static_cast<std::size_t>(from)])
        from += step;
    position_ = from;
    reader_is_here_ = false;
    if (position_ < 0 || position_ >= size())
        return;
    const std::size_t behind = static_cast<std::size_t>(position_) + 1;
    visited_ = std::max(visited_, behind);
    if (step > 0)
        table_.expect(std::span(rows_).subspan(behind));
}

std::optional<jet::RowId> Recordset::Bookmark() const {
    if (position_ < 0 || position_ >= size() || on_deleted_row())
        return std::nullopt;
    return rows_[static_cast<std::size_t>(position_)];
}

bool Recordset::go_to(const jet::RowId& bookmark) {
    for (std::ptrdiff_t place = 0; place < size(); ++place)
        if (rows_[static_cast<std::size_t>(place)] == bookmark &&
            !deleted_[static_cast<std::size_t>(place)]) {
            drop_pending();
            settle(place, 1);
            return true;
        }
    return false;
}

jet::RowId Recordset::current_row() const {
    if (const auto row = Bookmark())
        return *row;
    throw RunTimeError(no_current_record);
}

const jet::RowReader& Recordset::current_reader() const {
    // A move leaves the reader behind, and a row that this set deleted has aged it.
    if (reader_is_here_ && reader_age_ == database_.changes())
        return *reader_;
    reader_is_here_ = false;
    const jet::RowId row = current_row();
    if (reader_)
        reader_->go_to(row);
    else
        reader_ = table_.reader(row);
    reader_is_here_ = true;
    reader_age_ = database_.changes();
    return *reader_;
}

std::size_t Recordset::column(const std::string& name) const {
    if (const auto known = columns_.find(name); known != columns_.end())
        return known->second;
    const auto found = table_.find_column(name);
    if (!found)
        throw RunTimeError(unknown_name);
    columns_.emplace(name, *found);
    return *found;
}

void Recordset::begin(Pending pending, jet::Row buffer) {
    pending_ = pending;
    buffer_ = std::move(buffer);
    written_.assign(buffer_.size(), false);
}

void Recordset::drop_pending() {
    pending_ = Pending::none;
    buffer_.clear();
}

void Recordset::require_writable() const {
    if (database_.file().read_only())
        throw RunTimeError(read_only);
}

} // namespace tolva::dao
