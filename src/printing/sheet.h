#pragma once

#include <initializer_list>
#include <string>

#include "platform/controls.h"
#include "platform/printer.h"

namespace tolva::printing {

/// A one-page sheet of lines in columns, positions in millimetres. Long text runs on past its column: nothing
/// wraps and nothing is cut, and a line is printed even when there is nothing in it.
class Sheet {
  public:
    /// Sets the font that the sheets of the customer screens have. `job_name` names the job in the queue.
    Sheet(platform::Printer& printer, const std::string& job_name);

    /// Where the next line begins; those behind it follow at the same x.
    void begin_at(double x, double y);
    /// A line in bold and underlined.
    void heading(const std::string& text);
    void line(const std::string& text);
    void lines(std::initializer_list<std::string> texts);
    /// An empty line, printed without a position.
    void empty_line();

    /// Ends the job.
    void end();

  private:
    platform::Printer& printer_;
    double x_ = 0;
};

/// What a sheet shows of a field on a form.
std::string shown(const platform::TextControl& field);

} // namespace tolva::printing
