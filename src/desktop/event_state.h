#pragma once

namespace tolva::desktop {

class InputWatch;

/// What every form needs to know about the event under way; the host owns it.
struct EventState {
    InputWatch& watch;
    /// Widgets are being changed by the program: what they report meanwhile is no act of the user.
    bool updating = false;
    /// The event under way was started by the clock, not by the user's hands.
    bool by_clock = false;
};

/// Sets a flag for as long as it lives.
class Meanwhile {
  public:
    Meanwhile(bool& flag, bool value) : flag_(flag), before_(flag) { flag_ = value; }
    ~Meanwhile() { flag_ = before_; }
    Meanwhile(const Meanwhile&) = delete;
    Meanwhile& operator=(const Meanwhile&) = delete;

  private:
    bool& flag_;
    bool before_;
};

} // namespace tolva::desktop
