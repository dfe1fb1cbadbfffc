#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/host.h"
#include "support/recorded_printer.h"

namespace tolva::support {

/// Stands in for the desktop: boxes are answered from a script, modal screens are driven by one, and what was
/// shown is kept for the test to look at. A question that no script answers fails the test.
class ScriptedHost final : public platform::Host {
  public:
    struct Box {
        std::string text;
        std::string title;
        platform::BoxButtons buttons;
    };
    struct ErrorBox {
        int number;
        std::string text;
    };

    // --- The script ---

    /// Answers to questions (OK and Cancel), in order.
    std::deque<int> answers;
    /// What the user does while the next modal screen stands.
    std::deque<std::function<void(platform::Screen&)>> modal_visits;
    /// What happens while the next box of any kind stands.
    std::deque<std::function<void()>> during_box;
    /// What is looked at while a screen comes up.
    std::function<void(platform::Screen&)> on_shown;
    std::string file_to_open;
    std::string file_to_save;
    platform::PrintScope print_scope = platform::PrintScope::all;
    std::string clipboard;
    std::map<std::string, std::string> user_settings;
    bool has_printer = true;
    RecordedPrinter recorded_printer;

    // --- What came of it ---

    std::vector<Box> boxes;
    std::optional<ErrorBox> error;
    bool ended = false;
    struct Shown {
        std::string screen;
        platform::ShowMode mode;
    };
    std::vector<Shown> shown;
    struct FileAsked {
        std::string folder, title, filter;
    };
    std::vector<FileAsked> files_asked;
    struct PrintAsked {
        std::string title;
        bool has_selection;
    };
    std::vector<PrintAsked> prints_asked;
    int printer_choices = 0;
    /// What long work was announced, and how many steps of it were shown.
    struct Work {
        std::string what;
        int steps;
        bool over;
    };
    std::vector<Work> works;

    /// The texts of the boxes so far.
    std::vector<std::string> box_texts() const {
        std::vector<std::string> texts;
        for (const Box& box : boxes)
            texts.push_back(box.text);
        return texts;
    }

    // --- Host ---

    void screen_loaded(platform::Screen&) override {}
    void screen_shown(platform::Screen& screen, platform::ShowMode mode) override {
        shown.push_back({screen.name(), mode});
        if (on_shown)
            on_shown(screen);
    }
    void screen_hidden(platform::Screen&) override {}
    void screen_unloaded(platform::Screen&) override {}

    void wait_modal(platform::Screen& screen) override {
        if (modal_visits.empty()) {
            ADD_FAILURE() << "nobody visits the modal screen " << screen.name();
            screen.unload();
            return;
        }
        auto visit = std::move(modal_visits.front());
        modal_visits.pop_front();
        visit(screen);
        if (!ended) {
            EXPECT_FALSE(screen.visible()) << "the visit to " << screen.name() << " did not end it";
        }
    }

    int box(const std::string& text, const std::string& title, platform::BoxButtons buttons) override {
        boxes.push_back({text, title, buttons});
        if (!during_box.empty()) {
            auto happening = std::move(during_box.front());
            during_box.pop_front();
            happening();
        }
        if (buttons == platform::BoxButtons::ok)
            return 1;
        if (answers.empty()) {
            ADD_FAILURE() << "no answer to the question: " << text;
            return 2;
        }
        const int answer = answers.front();
        answers.pop_front();
        return answer;
    }

    void error_box(int number, const std::string& text) override { error = ErrorBox{number, text}; }

    std::string open_file(const std::string& folder, const std::string& title,
                          const std::string& filter) override {
        files_asked.push_back({folder, title, filter});
        return file_to_open;
    }

    std::string save_file(const std::string& folder, const std::string& title,
                          const std::string& filter) override {
        files_asked.push_back({folder, title, filter});
        return file_to_save;
    }

    platform::PrintScope ask_print(const std::string& title, bool has_selection) override {
        prints_asked.push_back({title, has_selection});
        return print_scope;
    }

    void choose_printer() override { ++printer_choices; }

    std::string clipboard_text() override { return clipboard; }
    void put_on_clipboard(const std::string& source) override { clipboard = source; }

    std::string user_setting(const std::string& section, const std::string& key,
                             const std::string& otherwise) override {
        const auto found = user_settings.find(section + "/" + key);
        return found == user_settings.end() ? otherwise : found->second;
    }
    void save_user_setting(const std::string& section, const std::string& key,
                           const std::string& value) override {
        user_settings[section + "/" + key] = value;
    }

    bool printer_takes_font(const std::string&) override { return has_printer; }
    platform::Printer& printer() override { return recorded_printer; }
    void begin_work(const std::string& what) override { works.push_back({what, 0, false}); }
    void show_work(int steps) override { works.back().steps = steps; }
    void end_work() override { works.back().over = true; }
    void refresh() override {}
    void quit() override { ended = true; }
};

} // namespace tolva::support
