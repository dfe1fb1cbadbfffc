#include "module/planner_day.h"

#include <algorithm>

#include "basic/code_page.h"
#include "basic/text.h"

namespace tolva::module {

namespace {

constexpr char blank = ' ';

std::string file_name(basic::Date date) {
    return "P" + std::to_string(basic::parts_of(date).year) + ".FIL";
}

std::uint64_t offset_of(basic::Date date) {
    return static_cast<std::uint64_t>(dayofyear(date) - 1) * PlannerDay::record_size;
}

/// Puts a record together, field behind field.
class RecordWriter {
  public:
    void put(const std::string& text, std::size_t width) {
        std::string field = basic::to_windows_1252(text);
        field.resize(width, blank);
        bytes_.insert(bytes_.end(), field.begin(), field.end());
    }
    template <std::size_t count>
    void put_all(const std::array<std::string, count>& texts, std::size_t width) {
        for (const std::string& text : texts)
            put(text, width);
    }
    void put(char mark) { bytes_.push_back(static_cast<std::uint8_t>(mark)); }
    const files::Bytes& bytes() const { return bytes_; }

  private:
    files::Bytes bytes_;
};

/// Takes one apart. Bytes that were never written count as blanks.
class RecordReader {
  public:
    explicit RecordReader(files::Bytes bytes) : bytes_(std::move(bytes)) {
        bytes_.resize(PlannerDay::record_size, blank);
        std::replace(bytes_.begin(), bytes_.end(), std::uint8_t{0}, static_cast<std::uint8_t>(blank));
    }

    std::string take(std::size_t width) {
        const std::string field(bytes_.begin() + at_,
                                bytes_.begin() + at_ + static_cast<std::ptrdiff_t>(width));
        at_ += static_cast<std::ptrdiff_t>(width);
        return basic::trim(basic::from_windows_1252(field));
    }
    template <std::size_t count>
    void take_all(std::array<std::string, count>& texts, std::size_t width) {
        for (std::string& text : texts)
            text = take(width);
    }
    char take_mark() { return static_cast<char>(bytes_[static_cast<std::size_t>(at_++)]); }

  private:
    files::Bytes bytes_;
    std::ptrdiff_t at_ = 0;
};

files::Bytes encode(const PlannerDay& day) {
    RecordWriter record;
    record.put_all(day.appointments, PlannerDay::text_width);
    record.put_all(day.appointmentlinks, PlannerDay::link_width);
    record.put(day.daynotes, PlannerDay::text_width);
    record.put_all(day.todoitems, PlannerDay::text_width);
    for (const char mark : day.tododone)
        record.put(mark);
    record.put_all(day.todolinks, PlannerDay::link_width);
    return record.bytes();
}

PlannerDay decode(files::Bytes bytes) {
    RecordReader record(std::move(bytes));
    PlannerDay day;
    record.take_all(day.appointments, PlannerDay::text_width);
    record.take_all(day.appointmentlinks, PlannerDay::link_width);
    day.daynotes = record.take(PlannerDay::text_width);
    record.take_all(day.todoitems, PlannerDay::text_width);
    for (char& mark : day.tododone)
        mark = record.take_mark();
    record.take_all(day.todolinks, PlannerDay::link_width);
    return day;
}

} // namespace

int dayofyear(basic::Date date) {
    const basic::Date first = basic::make_date(basic::parts_of(date).year, 1, 1);
    return static_cast<int>(basic::day_of(date).days - first.days) + 1;
}

std::string PlannerFiles::path(basic::Date date) const {
    return appfolder_ + "\\data\\" + file_name(date);
}

bool PlannerFiles::exists(basic::Date date) const {
    const std::vector<std::string> names = disk_.list(appfolder_ + "\\data");
    return std::find(names.begin(), names.end(), file_name(date)) != names.end();
}

void PlannerFiles::create(basic::Date date) {
    const files::Bytes record = encode({});
    files::Bytes year;
    year.reserve(record.size() * PlannerDay::records);
    for (int number = 0; number < PlannerDay::records; ++number)
        year.insert(year.end(), record.begin(), record.end());
    files::put_whole(disk_, path(date), year);
}

PlannerDay PlannerFiles::read(basic::Date date) const {
    const auto file = disk_.open(path(date), files::OpenMode::read);
    files::Bytes bytes(PlannerDay::record_size);
    bytes.resize(file->read(offset_of(date), bytes));
    return decode(std::move(bytes));
}

void PlannerFiles::write(basic::Date date, const PlannerDay& day) {
    const auto file = disk_.open(path(date), files::OpenMode::create);
    file->write(offset_of(date), encode(day));
    file->sync();
}

} // namespace tolva::module
