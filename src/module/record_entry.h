#pragma once

#include <string>

#include "platform/screen.h"

namespace tolva::module {

/// A record screen as the other screens see it: its grid is emptied, filled from the current set of its
/// store, and its selected row opened.
class RecordEntry : public platform::Screen {
  public:
    using Screen::Screen;

    /// Reduces the grid to its heading and one blank row.
    virtual void cleargrid() = 0;
    /// Fills the grid from the current set. The mode is accepted and has no effect.
    virtual void creategrid(const std::string& mode) = 0;
    /// Opens the row that the grid reports as selected. The messages call the one, the planner the other.
    virtual void clickgrid() = 0;
    virtual void gridclick() = 0;
};

} // namespace tolva::module
