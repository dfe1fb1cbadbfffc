#pragma once

#include <string>

#include "platform/screen.h"

namespace tolva::platform {

enum class BoxButtons { ok, ok_cancel };

/// What the runtime asks of the world outside: the desktop, or a test's script. Calls come on the one thread.
class Host {
  public:
    virtual ~Host() = default;

    /// A screen came to be (its controls stand), was shown, was hidden, is going away.
    virtual void screen_loaded(Screen& screen) = 0;
    virtual void screen_shown(Screen& screen, ShowMode mode) = 0;
    virtual void screen_hidden(Screen& screen) = 0;
    virtual void screen_unloaded(Screen& screen) = 0;

    /// Waits, with events running, until the screen is no longer visible or the program ends.
    virtual void wait_modal(Screen& screen) = 0;

    /// An application-modal box; 1 for OK, 2 for Cancel (and for closing it). An empty title stands for the
    /// program's name.
    virtual int box(const std::string& text, const std::string& title, BoxButtons buttons) = 0;

    /// The platform's box for a failure that no routine handles; nothing else runs while it stands.
    virtual void error_box(int number, const std::string& text) = 0;

    /// Asks for a file to open; the full path, or empty when cancelled.
    virtual std::string open_file(const std::string& folder, const std::string& title,
                                  const std::string& filter) = 0;

    /// Whether there is a printer whose font can be set to `font`.
    virtual bool printer_takes_font(const std::string& font) = 0;

    /// Shows what the last handler changed.
    virtual void refresh() = 0;

    /// Ends the event loops without close events.
    virtual void quit() = 0;
};

} // namespace tolva::platform
