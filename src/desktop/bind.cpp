#include "desktop/control_bindings.h"
#include "desktop/document_bindings.h"
#include "desktop/form.h"
#include "desktop/text.h"
#include "desktop/text_bindings.h"

namespace tolva::desktop {

std::unique_ptr<Binding> bind(Form& form, platform::Control& control) {
    std::unique_ptr<Binding> binding;
    if (auto* text = dynamic_cast<platform::TextBox*>(&control)) {
        if (text->kind() == platform::TextBox::Kind::multi_line)
            binding = std::make_unique<LinesBinding>(form, *text);
        else
            binding = std::make_unique<LineBinding>(form, *text);
    } else if (auto* combo = dynamic_cast<platform::ComboBox*>(&control)) {
        binding = std::make_unique<ComboBinding>(form, *combo);
    } else if (auto* label = dynamic_cast<platform::Label*>(&control)) {
        binding = std::make_unique<LabelBinding>(form, *label);
    } else if (auto* frame = dynamic_cast<platform::Frame*>(&control)) {
        binding = std::make_unique<FrameBinding>(form, *frame);
    } else if (auto* button = dynamic_cast<platform::Button*>(&control)) {
        binding = std::make_unique<ButtonBinding>(form, *button);
    } else if (auto* check = dynamic_cast<platform::CheckBox*>(&control)) {
        binding = std::make_unique<CheckBinding>(form, *check);
    } else if (auto* option = dynamic_cast<platform::OptionButton*>(&control)) {
        binding = std::make_unique<OptionBinding>(form, *option);
    } else if (auto* grid = dynamic_cast<platform::Grid*>(&control)) {
        binding = std::make_unique<GridBinding>(form, *grid);
    } else if (auto* month = dynamic_cast<platform::MonthView*>(&control)) {
        binding = std::make_unique<MonthBinding>(form, *month);
    } else if (auto* tabs = dynamic_cast<platform::TabStrip*>(&control)) {
        binding = std::make_unique<TabBinding>(form, *tabs);
    } else if (auto* chart = dynamic_cast<platform::Chart*>(&control)) {
        binding = std::make_unique<ChartBinding>(form, *chart);
    } else if (auto* rich = dynamic_cast<platform::RichTextBox*>(&control)) {
        binding = std::make_unique<RichTextBinding>(form, *rich);
    } else if (auto* tools = dynamic_cast<platform::ToolBar*>(&control)) {
        binding = std::make_unique<ToolBarBinding>(form, *tools);
    } else if (auto* status = dynamic_cast<platform::StatusBar*>(&control)) {
        binding = std::make_unique<StatusBinding>(form, *status);
    }
    if (binding)
        binding->widget()->setObjectName(to_qt(control.object_name()));
    return binding;
}

} // namespace tolva::desktop
