#include "desktop/control_bindings.h"

#include <QApplication>

#include "desktop/form.h"
#include "desktop/text.h"

namespace tolva::desktop {

namespace {

/// Whether what is on show differs from `now`; remembers it.
template <class T>
bool changed(std::optional<T>& shown, const T& now) {
    if (shown == now)
        return false;
    shown = now;
    return true;
}

} // namespace

// --- Labels and frames ---

LabelBinding::LabelBinding(Form& form, platform::Label& control)
    : Binding(form, control), label_(control), view_(new QLabel(&form)) {
    view_->setTextFormat(Qt::PlainText);
}

void LabelBinding::show_changes() {
    if (changed(caption_, label_.caption))
        view_->setText(to_qt(label_.caption));
}

FrameBinding::FrameBinding(Form& form, platform::Frame& control)
    : Binding(form, control), frame_(control), box_(new QGroupBox(&form)) {}

void FrameBinding::show_changes() {
    if (changed(caption_, frame_.caption))
        box_->setTitle(to_qt(frame_.caption));
}

// --- Buttons and boxes to tick ---

ButtonBinding::ButtonBinding(Form& form, platform::Button& control)
    : Binding(form, control), button_(control), view_(new PushButton(&form)) {
    QObject::connect(view_, &QPushButton::clicked, view_, [this] {
        this->form().act([this](platform::Runtime& runtime) { runtime.click(button_); });
    });
}

void ButtonBinding::show_changes() {
    if (changed(caption_, button_.caption))
        view_->setText(to_qt(button_.caption));
}

CheckBinding::CheckBinding(Form& form, platform::CheckBox& control)
    : Binding(form, control), box_(control), view_(new QCheckBox(&form)) {
    view_->setFocusPolicy(Qt::StrongFocus);
    QObject::connect(view_, &QCheckBox::clicked, view_, [this](bool ticked) {
        this->form().act([&](platform::Runtime& runtime) { runtime.tick(box_, ticked ? 1 : 0); });
    });
}

void CheckBinding::show_changes() {
    if (changed(caption_, box_.caption))
        view_->setText(to_qt(box_.caption));
    if (view_->isChecked() != (box_.value != 0))
        view_->setChecked(box_.value != 0);
}

OptionBinding::OptionBinding(Form& form, platform::OptionButton& control)
    : Binding(form, control), option_(control), view_(new QRadioButton(&form)) {
    view_->setFocusPolicy(Qt::StrongFocus);
    QObject::connect(view_, &QRadioButton::clicked, view_, [this] {
        this->form().act([this](platform::Runtime& runtime) { runtime.choose(option_); });
    });
}

void OptionBinding::show_changes() {
    if (changed(caption_, option_.caption))
        view_->setText(to_qt(option_.caption));
    if (view_->isChecked() == option_.value)
        return;
    // As long as the buttons exclude each other, the last one that is on can't be taken off.
    view_->setAutoExclusive(false);
    view_->setChecked(option_.value);
    view_->setAutoExclusive(true);
}

// --- Grid and calendar ---

GridBinding::GridBinding(Form& form, platform::Grid& control)
    : Binding(form, control), grid_(control), view_(new GridView(&form)) {
    view_->on_open = [this](int row) {
        this->form().act([&](platform::Runtime& runtime) { runtime.click_row(grid_, row); });
    };
    view_->on_move = [this](int row) {
        if (this->form().updating())
            return;
        row_ = row;
        this->form().act([&](platform::Runtime& runtime) { runtime.move_to_row(grid_, row); });
    };
    // A screen that goes takes its cells along while the view may still be painted.
    this->form().on_detach([this] { view_->cells().show(nullptr); });
}

void GridBinding::show_changes() {
    if (changed(revision_, grid_.revision())) {
        view_->cells().show(&grid_);
        std::vector<int> widths;
        for (int column = 0; column < grid_.Cols(); ++column)
            widths.push_back(grid_.width(column));
        view_->set_widths(widths);
        row_ = 0;
    }
    if (row_ != grid_.RowSel()) {
        row_ = grid_.RowSel();
        view_->go_to_row(row_);
    }
}

MonthBinding::MonthBinding(Form& form, platform::MonthView& control)
    : Binding(form, control), view_(control), calendar_(new MonthCalendar(&form)) {
    calendar_->on_pick = [this](basic::Date date) {
        value_ = date;
        this->form().act([&](platform::Runtime& runtime) { runtime.pick_date(view_, date); });
    };
    calendar_->on_move = [this](basic::Date date) {
        if (this->form().updating() || view_.on_date_click)
            return;
        value_ = date;
        this->form().act([&](platform::Runtime& runtime) { runtime.move_to_date(view_, date); });
    };
}

/// A day that was looked for and not picked isn't left on show.
void MonthBinding::focus_went() {
    const QWidget* const now = QApplication::focusWidget();
    if (now && form().isAncestorOf(now) && !has_focus())
        form().change_widgets([this] { calendar_->show_day(view_.value); });
}

bool MonthBinding::has_focus() const {
    const QWidget* const now = QApplication::focusWidget();
    return now && (now == calendar_ || calendar_->isAncestorOf(now));
}

void MonthBinding::show_changes() {
    calendar_->mark_today(view_.screen().runtime().clock().moment());
    // Nor when something happens from another window.
    if (changed(value_, view_.value) || !has_focus())
        calendar_->show_day(view_.value);
}

// --- Tabs and charts ---

TabBinding::TabBinding(Form& form, platform::TabStrip& control)
    : Binding(form, control), tabs_(control), bar_(new QTabBar(&form)) {
    bar_->setFocusPolicy(Qt::StrongFocus);
    bar_->setExpanding(false);
    bar_->setUsesScrollButtons(false);
    for (const std::string& tab : control.tabs())
        bar_->addTab(to_qt(tab));
    QObject::connect(bar_, &QTabBar::currentChanged, bar_, [this](int tab) {
        if (this->form().updating())
            return;
        this->form().act([&](platform::Runtime& runtime) { runtime.select_tab(tabs_, tab + 1); });
    });
}

void TabBinding::show_changes() {
    bar_->setCurrentIndex(tabs_.selected - 1);
}

ChartBinding::ChartBinding(Form& form, platform::Chart& control)
    : Binding(form, control), chart_(control), view_(new ChartView(&form)) {
    view_->set_title(to_qt(control.title));
}

void ChartBinding::show_changes() {
    if (changed(bars_, chart_.bars))
        view_->show(chart_.bars, chart_.values);
}

// --- Menus ---

MenuBinding::MenuBinding(Form& form, platform::MenuEntry& control, QWidget& above)
    : Binding(form, control), entry_(control) {
    if (!control.entries().empty()) {
        menu_ = new QMenu(&above);
        action_ = menu_->menuAction();
        above.addAction(action_);
    } else {
        action_ = new QAction(&above);
        above.addAction(action_);
        QObject::connect(action_, &QAction::triggered, action_, [this] {
            this->form().act([this](platform::Runtime& runtime) { runtime.click(entry_); });
        });
    }
    action_->setObjectName(to_qt(control.object_name()));
    action_->setSeparator(control.caption == "-");
    // Whatever an entry is called, no platform may take it for its own "Quit" or "Preferences".
    action_->setMenuRole(QAction::NoRole);
}

void MenuBinding::show_changes() {
    // A text on a separator would be painted beside it.
    if (changed(caption_, entry_.caption) && !action_->isSeparator())
        action_->setText(to_qt(entry_.caption));
}

} // namespace tolva::desktop
