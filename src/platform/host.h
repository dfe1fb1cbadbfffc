#pragma once

#include <string>

#include "platform/printer.h"
#include "platform/screen.h"

namespace tolva::platform {

enum class BoxButtons { ok, ok_cancel };

/// What the user wants printed.
enum class PrintScope { cancelled, all, selection };

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

    /// Asks for a file to save to; the full path, or empty when cancelled.
    virtual std::string save_file(const std::string& folder, const std::string& title,
                                  const std::string& filter) = 0;

    /// Asks where and what to print, with the selection on offer where there is one. The printer chosen holds
    /// for the next job; page numbers are not asked for.
    virtual PrintScope ask_print(const std::string& title, bool has_selection) = 0;

    /// Asks which printer is the default one: all printing uses it, in this run and in those to come.
    virtual void choose_printer() = 0;

    /// What the clipboard holds as text. Putting a rich text source there puts it as text and as rich text.
    virtual std::string clipboard_text() = 0;
    virtual void put_on_clipboard(const std::string& source) = 0;

    /// The user's own settings, kept from run to run apart from the stores.
    virtual std::string user_setting(const std::string& section, const std::string& key,
                                     const std::string& otherwise) = 0;
    virtual void save_user_setting(const std::string& section, const std::string& key,
                                   const std::string& value) = 0;

    /// Whether there is a printer whose font can be set to `font`.
    virtual bool printer_takes_font(const std::string& font) = 0;

    /// The one printer object.
    virtual Printer& printer() = 0;

    /// Long work in one event: a sign of it with what it does and how far it is, repainted as it goes, while
    /// no user event and no tick comes through.
    virtual void begin_work(const std::string& what) = 0;
    virtual void show_work(int steps) = 0;
    virtual void end_work() = 0;

    /// Shows what the last handler changed.
    virtual void refresh() = 0;

    /// Ends the event loops without close events.
    virtual void quit() = 0;
};

} // namespace tolva::platform
