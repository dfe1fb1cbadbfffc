#include "desktop/document_bindings.h"

#include <QLocale>
#include <QTimer>

#include "desktop/form.h"
#include "desktop/month_calendar.h"
#include "desktop/text.h"
#include "desktop/tool_icons.h"

namespace tolva::desktop {

// --- Rich text ---

RichTextBinding::RichTextBinding(Form& form, platform::RichTextBox& control)
    : Binding(form, control), box_(control),
      edit_(new RichTextEdit(control.kind() == platform::RichTextBox::Kind::editable, &form)) {
    edit_->on_select = [this](std::size_t start, std::size_t length) {
        if (!this->form().updating())
            this->form().act([&](platform::Runtime& runtime) { runtime.select(box_, start, length); });
    };
    edit_->on_edit = [this](const RichTextEdit::Change& change) {
        this->form().act([&](platform::Runtime& runtime) { runtime.edit(box_, change); });
    };
    this->form().on_detach([this] { edit_->forget(); });
}

void RichTextBinding::show_changes() {
    if (revision_ == box_.revision())
        return;
    revision_ = box_.revision();
    edit_->show_text(box_.content());
}

// --- The tool bar ---

ToolBarBinding::ToolBarBinding(Form& form, platform::ToolBar& control)
    : Binding(form, control), bar_(control), view_(new QToolBar(&form)) {
    view_->setMovable(false);
    // All of them find room in the frame as it first comes up.
    const int side = form.fontMetrics().height() * 4 / 3;
    view_->setIconSize(QSize(side, side));
    for (const platform::ToolBar::Button& button : control.buttons()) {
        const QString name = to_qt(button.key);
        QAction* const action = view_->addAction(tool_icon(name), name);
        action->setCheckable(button.holds);
        actions_.emplace(button.key, action);
        QObject::connect(action, &QAction::triggered, action, [this, key = button.key] {
            this->form().act([&](platform::Runtime& runtime) { runtime.click(bar_, key); });
            // What a click has pressed by itself, only the screen may leave pressed.
            this->form().change_widgets([this] { show_changes(); });
        });
        if (button.separator_behind)
            view_->addSeparator();
    }
}

void ToolBarBinding::show_changes() {
    for (const platform::ToolBar::Button& button : bar_.buttons())
        if (QAction* const action = actions_.at(button.key); action->isChecked() != button.pressed)
            action->setChecked(button.pressed);
}

// --- The status bar ---

StatusBinding::StatusBinding(Form& form, platform::StatusBar& control)
    : Binding(form, control), bar_(control), view_(new QStatusBar(&form)), text_(new QLabel(view_)),
      date_(new QLabel(view_)), time_(new QLabel(view_)) {
    text_->setTextFormat(Qt::PlainText);
    view_->addWidget(text_, 1);
    view_->addPermanentWidget(date_);
    view_->addPermanentWidget(time_);
    view_->setSizeGripEnabled(false);
    auto* const clock = new QTimer(view_);
    QObject::connect(clock, &QTimer::timeout, view_, [this] {
        if (this->form().platform_screen())
            show_moment();
    });
    constexpr int often = 1000;
    clock->start(often);
}

void StatusBinding::show_changes() {
    text_->setText(to_qt(bar_.text));
    show_moment();
}

void StatusBinding::show_moment() {
    const basic::Date moment = bar_.screen().runtime().clock().moment();
    const basic::DateParts parts = basic::parts_of(moment);
    date_->setText(QStringLiteral("%1/%2/%3").arg(parts.month).arg(parts.day).arg(parts.year));
    const QLocale english(QLocale::English, QLocale::UnitedStates);
    time_->setText(english.toString(QTime(parts.hour, parts.minute), QStringLiteral("h:mm AP")));
}

} // namespace tolva::desktop
