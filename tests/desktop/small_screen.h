#pragma once

#include "desktop/field_block.h"
#include "desktop/form_builder.h"
#include "desktop/forms.h"
#include "desktop/qt_host.h"
#include "hands.h"
#include "support/fixed_clock.h"

namespace tolva::desktop {

/// A screen with one control of each kind, and a diary of what its handlers were told.
class SmallScreen : public platform::Screen {
  public:
    explicit SmallScreen(platform::Runtime& runtime, std::string name = "small")
        : Screen(runtime, std::move(name), "Small Screen") {
        for (platform::Control* control : controls()) {
            control->on_got_focus = [this, control] { diary.push_back("to " + control->object_name()); };
            control->on_lost_focus = [this, control] { diary.push_back("from " + control->object_name()); };
        }
        selecting.on_got_focus = [this] {
            diary.push_back("to selecting");
            selecting.select_all();
        };
        combo.add_item("Brick");
        combo.add_item("Frame");
        for (auto& option : options)
            option->caption = "Option " + std::to_string(option->index());
        close.on_click = [this] { diary.push_back("close"); };
        other.on_click = [this] { diary.push_back("other"); };
        check.on_click = [this] { diary.push_back("ticked " + std::to_string(check.value)); };
        leave.on_click = [this] { diary.push_back("leave"); };
        for (int column = 0; column < grid.Cols(); ++column) {
            grid.Col = column;
            grid.ColWidth(column, column == 0 ? 1 : 2000);
            grid.set_Text("Heading " + std::to_string(column));
        }
        for (const char* name_cell : {"Adams", "Baker", "Clark"})
            grid.AddItem("1\t" + std::string(name_cell) + "\tSpringfield");
        grid.RemoveItem(1);
        grid.on_click = [this] { diary.push_back("row " + std::to_string(grid.RowSel())); };
        month.value = basic::make_date(2026, 11, 20);
        month.on_date_click = [this](basic::Date date) {
            diary.push_back("day " + basic::date_to_text(date));
        };
    }

    platform::TextBox plain{*this, "plain"};
    platform::TextBox selecting{*this, "selecting"};
    platform::TextBox lines{*this, "lines", platform::TextBox::Kind::multi_line};
    platform::TextBox secret{*this, "secret", platform::TextBox::Kind::password};
    platform::ComboBox combo{*this, "combo"};
    platform::CheckBox check{*this, "check", "Tick"};
    platform::OptionGroup options{*this, "options", 3};
    platform::Button close{*this, "close", "&Close"};
    platform::Button other{*this, "other", "Other"};
    platform::Label note{*this, "note", "Note"};
    platform::Frame frame{*this, "frame", "Frame"};
    platform::Grid grid{*this, "grid", 3};
    platform::MonthView month{*this, "month"};
    platform::MenuEntry file{*this, "file", "&File"};
    platform::MenuEntry leave{file, "leave", "&Leave"};
    platform::MenuEntry idle{file, "idle", "Idle"};

    std::vector<std::string> diary;
    std::vector<std::string> take_diary() { return std::exchange(diary, {}); }
};

inline std::unique_ptr<Form> make_small_form(platform::Screen& screen, EventState& state) {
    auto form = std::make_unique<Form>(screen, state);
    FormBuilder builder(*form, screen);
    auto* const whole = new QVBoxLayout(form.get());
    whole->setMenuBar(builder.menu_bar());
    for (const char* name : {"plain", "selecting", "lines", "secret", "combo", "check", "options_0",
                             "options_1", "options_2", "close", "other", "note", "frame", "grid", "month"})
        whole->addWidget(builder(name));
    form->set_first(builder.control("plain"));
    form->resize(500, 900);
    return form;
}

/// The small screen on a desktop.
class Bench {
  public:
    Bench() {
        forget_an_earlier_end();
        host.form_maker = make_small_form;
        slot.make = [this] { return std::make_unique<SmallScreen>(runtime); };
    }

    SmallScreen& show() {
        runtime.run([this] { slot().show(); });
        settle_window();
        slot().take_diary();
        return slot();
    }

    Form& form() { return *host.form_of(slot()); }
    template <class W>
    W* widget(const char* name) {
        return form().findChild<W*>(QString::fromUtf8(name));
    }
    QWidget* widget(const char* name) { return widget<QWidget>(name); }

    static void settle_window() { QCoreApplication::processEvents(); }

    std::unique_ptr<files::FileSystem> disk = files::make_memory_disk();
    support::FixedClock clock{{2026, 11, 20, 10, 0, 0}};
    QtHost host{*disk};
    platform::Runtime runtime{host, clock};
    platform::Slot<SmallScreen> slot{runtime};
};

} // namespace tolva::desktop
