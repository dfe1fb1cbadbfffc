#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "basic/date.h"
#include "files/file_system.h"

namespace tolva::module {

/// One day of the planner, as its year's file keeps it. Text is cut to its field's width on writing and
/// padded with blanks.
///
/// A year lies in "P<year>.FIL": 366 records of 15300 bytes, no header, record n the n-th day of the year,
/// text in Windows-1252 and left-aligned:
///
///     offset  size      field
///          0  60 x 100  appointments
///       6000  60 x 8    appointmentlinks
///       6480  100       daynotes
///       6580  80 x 100  todoitems
///      14580  80 x 1    tododone, "0" or "1"
///      14660  80 x 8    todolinks
struct PlannerDay {
    static constexpr int slots = 60;
    static constexpr int todos = 80;
    static constexpr std::size_t text_width = 100;
    static constexpr std::size_t link_width = 8;
    static constexpr std::size_t record_size = 15300;
    static constexpr int records = 366;

    std::array<std::string, slots> appointments, appointmentlinks;
    std::string daynotes;
    std::array<std::string, todos> todoitems, todolinks;
    std::array<char, todos> tododone = blank_marks();

    friend bool operator==(const PlannerDay&, const PlannerDay&) = default;

  private:
    static constexpr std::array<char, todos> blank_marks() {
        std::array<char, todos> marks{};
        marks.fill('0');
        return marks;
    }
};

/// The number of the day in its year, from 1.
int dayofyear(basic::Date date);

/// A year's files beside the program.
class PlannerFiles {
  public:
    PlannerFiles(files::FileSystem& disk, std::string appfolder)
        : disk_(disk), appfolder_(std::move(appfolder)) {}

    /// Whether the date's year has a file of exactly this name, letter case included.
    bool exists(basic::Date date) const;
    /// Makes the year's file, every day blank, whole or not at all.
    void create(basic::Date date);
    /// What lies past a cut file's end is blank.
    PlannerDay read(basic::Date date) const;
    /// Makes the file when it is absent; then only this record exists.
    void write(basic::Date date, const PlannerDay& day);

  private:
    std::string path(basic::Date date) const;

    files::FileSystem& disk_;
    std::string appfolder_;
};

} // namespace tolva::module
