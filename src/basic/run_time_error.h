#pragma once

#include <stdexcept>
#include <string>

namespace tolva::basic {

/// A failure that the logic can meet at run time: the one exception type of the whole program. It carries
/// the number and the text that the platform's error box shows; both are the engine's or the language's own.
/// Nothing but the program's entry for events (and the few routines that are told to trap) catches it.
class RunTimeError : public std::runtime_error {
  public:
    /// With the standard text of `number`; `detail` fills the place that the text leaves open, if it has one.
    explicit RunTimeError(int number, const std::string& detail = {});

    /// With a text of its own, for failures that name a file, a page and a reason.
    static RunTimeError with_text(int number, const std::string& text);

    int number() const { return number_; }
    std::string text() const { return what(); }

  private:
    RunTimeError(int number, const std::string& text, bool);

    int number_;
};

/// The standard text of an error number, its open place (a path, a name, a count, a piece of text) filled
/// with `detail`. A number without a text of its own gets the language's general one.
std::string error_text(int number, const std::string& detail = {});

} // namespace tolva::basic
