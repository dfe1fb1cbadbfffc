#include "platform/controls.h"

#include <algorithm>

#include "basic/text.h"
#include "platform/runtime.h"

namespace tolva::platform {

void TextControl::select(std::size_t start, std::size_t length) {
    const std::size_t whole = basic::length(text);
    selection_start_ = std::min(start, whole);
    selection_length_ = std::min(length, whole - selection_start_);
    ++selection_wishes_;
}

void TextControl::select_all() {
    select(0, basic::length(text));
}

void TextControl::caret_to_end() {
    select(basic::length(text), 0);
}

int ComboBox::list_index() const {
    const auto found = std::find(items_.begin(), items_.end(), text);
    return found == items_.end() ? -1 : static_cast<int>(found - items_.begin());
}

void OptionGroup::choose(int index) {
    for (auto& button : *this)
        button->value = button->index() == index;
}

MenuEntry::MenuEntry(Screen& screen, std::string name, std::string caption_)
    : Control(screen, std::move(name)), caption(std::move(caption_)) {
    screen.menus_.push_back(this);
}

MenuEntry::MenuEntry(MenuEntry& parent, std::string name, std::string caption_)
    : Control(parent.screen(), std::move(name)), caption(std::move(caption_)), parent_(&parent) {
    parent.entries_.push_back(this);
}

void CommonDialog::show_open() {
    file_name = screen().runtime().open_file(initial_folder, title, filter);
}

void CommonDialog::show_save() {
    file_name = screen().runtime().save_file(initial_folder, title, filter);
}

PrintScope CommonDialog::show_print(bool has_selection) {
    return screen().runtime().ask_print(title, has_selection);
}

} // namespace tolva::platform
