#include "desktop/form.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QCloseEvent>
#include <QFocusEvent>
#include <QLayout>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <algorithm>

#include "desktop/input_watch.h"
#include "desktop/text.h"
#include "platform/document_frame.h"

namespace tolva::desktop {

Form::Form(platform::Screen& screen, EventState& state) : screen_(&screen), state_(state) {
    setObjectName(to_qt(screen.name()));
}

Form::~Form() = default;

// --- Building ---

Binding* Form::bind_control(platform::Control& control) {
    if (Binding* binding = binding_of(control))
        return binding;
    auto made = bind(*this, control);
    Binding* const binding = made.get();
    if (!binding)
        return nullptr;
    watch(binding->widget(), binding);
    // A calendar's parts take the focus in its place.
    if (qobject_cast<QCalendarWidget*>(binding->widget()))
        for (QWidget* part : binding->widget()->findChildren<QWidget*>())
            watch(part, binding);
    add_binding(std::move(made));
    return binding;
}

void Form::add_binding(std::unique_ptr<Binding> binding) {
    by_control_.emplace(&binding->control(), binding.get());
    bindings_.push_back(std::move(binding));
}

void Form::order_tabs() {
    QWidget* before = nullptr;
    for (const auto& binding : bindings_) {
        QWidget* const widget = binding->widget();
        if (!widget || widget->focusPolicy() == Qt::NoFocus)
            continue;
        if (before)
            setTabOrder(before, widget);
        before = widget;
    }
}

void Form::watch(QWidget* widget, Binding* binding) {
    watched_.emplace(widget, binding);
    widget->installEventFilter(this);
}

Binding* Form::binding_of(const platform::Control& control) const {
    const auto found = by_control_.find(&control);
    return found == by_control_.end() ? nullptr : found->second;
}

bool Form::leaves_out(const platform::Control& control) const {
    return std::find(left_out_.begin(), left_out_.end(), &control) != left_out_.end();
}

platform::Control* Form::first_control() const {
    if (!pages_.stack)
        return first_;
    return pages_.list->visible ? pages_.list_first : pages_.form_first;
}

// --- Events ---

void Form::act(const std::function<void(platform::Runtime&)>& action) {
    if (!screen_)
        return;
    const Meanwhile by_user(state_.by_clock, false);
    action(screen_->runtime());
}

void Form::change_widgets(const std::function<void()>& change) {
    const Meanwhile updating(state_.updating, true);
    change();
}

void Form::refresh() {
    if (!screen_)
        return;
    change_widgets([this] {
        if (const QString title = to_qt(screen_->caption); windowTitle() != title)
            setWindowTitle(title);
        for (const auto& binding : bindings_)
            binding->refresh();
        turn_page();
        for (const auto& action : refreshing_)
            action();
    });
}

QSize Form::wanted_size() {
    // While they are hidden, parts don't tell what lies around them that they have changed; from the
    // innermost outwards each is asked.
    const auto parts = findChildren<QWidget*>();
    for (auto part = parts.rbegin(); part != parts.rend(); ++part) {
        (*part)->ensurePolished();
        if (QLayout* const inside = (*part)->layout())
            inside->activate();
    }
    layout()->activate();
    return sizeHint();
}

void Form::turn_page() {
    if (!pages_.stack)
        return;
    const int page = pages_.list->visible ? 0 : 1;
    if (pages_.stack->currentIndex() == page)
        return;
    pages_.stack->setCurrentIndex(page);
    state_.watch.expect_second_click();
}

void Form::detach() {
    for (const auto& action : detaching_)
        action();
    screen_ = nullptr;
}

bool Form::event(QEvent* event) {
    if (event->type() == QEvent::WindowStateChange)
        follow_place();
    if (event->type() == QEvent::WindowActivate) {
        draws_attention = false;
        if (on_activated)
            on_activated();
    }
    return QWidget::event(event);
}

void Form::closeEvent(QCloseEvent* event) {
    // The window goes when the screen says so.
    event->ignore();
    act([this](platform::Runtime& runtime) { runtime.close(*screen_); });
}

// --- The window's place ---

double Form::pixels_a_twip() const {
    constexpr double twips_an_inch = 1440;
    return logicalDpiX() / twips_an_inch;
}

/// Screens that care are told where their windows are.
void Form::follow_place() {
    if (!screen_ || !isVisible())
        return;
    screen_->minimised = isMinimized();
    if (!screen_->place || isMinimized() || isMaximized() || isFullScreen())
        return;
    const auto twips = [this](int pixels) { return qRound(pixels / pixels_a_twip()); };
    screen_->place = {twips(x()), twips(y()), twips(width()), twips(height())};
}

void Form::moveEvent(QMoveEvent* event) {
    QWidget::moveEvent(event);
    follow_place();
}

void Form::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    follow_place();
}

// --- Documents ---

void Form::set_documents(QMdiArea* area) {
    documents_ = area;
    connect(area, &QMdiArea::subWindowActivated, this, [this](QMdiSubWindow* window) {
        auto* const form = window ? dynamic_cast<Form*>(window->widget()) : nullptr;
        if (!form || updating() || !form->platform_screen())
            return;
        auto* const document = dynamic_cast<platform::DocumentScreen*>(form->platform_screen());
        if (document && document->frame().active_document() != document)
            act([&](platform::Runtime& runtime) { runtime.turn_to(*document); });
    });
}

// --- The focus ---

bool Form::can_have_focus(const platform::Control& control) const {
    const Binding* binding = binding_of(control);
    if (!binding || !binding->widget())
        return false;
    const QWidget* widget = binding->widget();
    return widget->isEnabledTo(this) && widget->isVisibleTo(this) && widget->focusPolicy() != Qt::NoFocus;
}

void Form::settle_focus() {
    if (!screen_ || !screen_->visible())
        return;
    platform::Control* const active = screen_->active_control;
    if (!active || !can_have_focus(*active)) {
        platform::Control* const first = first_control();
        if (first && first != active && can_have_focus(*first))
            act([&](platform::Runtime& runtime) { runtime.focus(*first); });
        return;
    }
    if (active == followed_ && !stray_)
        return;
    followed_ = active;
    stray_ = false;
    QWidget* const widget = binding_of(*active)->widget();
    if (focusWidget() != widget && !(focusWidget() && widget->isAncestorOf(focusWidget())))
        change_widgets([&] { widget->setFocus(Qt::OtherFocusReason); });
}

bool Form::eventFilter(QObject* object, QEvent* event) {
    if (event->type() != QEvent::FocusIn && event->type() != QEvent::FocusOut)
        return false;
    const auto found = watched_.find(object);
    if (found == watched_.end() || !screen_)
        return false;
    if (event->type() == QEvent::FocusOut) {
        found->second->focus_went();
        return false;
    }
    focus_came(*found->second, static_cast<QFocusEvent*>(event)->reason());
    // Where a handler has sent the focus on, the widget must not believe that it has it.
    return QApplication::focusWidget() != object;
}

/// Whether the last click was on the binding's widget or a part of it.
bool Form::was_clicked(const Binding& binding) const {
    const QObject* const pressed = state_.watch.pressed_on();
    if (!pressed)
        return false;
    const auto parts = binding.widget()->findChildren<QWidget*>();
    return pressed == binding.widget() ||
           std::any_of(parts.begin(), parts.end(), [&](const QWidget* part) { return part == pressed; });
}

void Form::focus_came(Binding& binding, Qt::FocusReason reason) {
    platform::Control& control = binding.control();
    const bool moved = screen_->active_control != &control;
    if (updating()) {
        stray_ = stray_ || moved;
        return;
    }
    bool by_user = true;
    switch (reason) {
    case Qt::PopupFocusReason:
    case Qt::MenuBarFocusReason:
        return;
    case Qt::ActiveWindowFocusReason:
        // The focus comes back with the window. Only a click that arrived ahead of it has moved it.
        by_user = moved && was_clicked(binding);
        break;
    case Qt::TabFocusReason:
    case Qt::BacktabFocusReason:
        // Qt also "tabs" on when the widget that has the focus is hidden.
        by_user = state_.watch.tabbed();
        break;
    default:
        break;
    }
    if (!by_user) {
        if (moved) {
            stray_ = true;
            QMetaObject::invokeMethod(
                this, [this] { settle_focus(); }, Qt::QueuedConnection);
        }
        return;
    }
    binding.focus_came(reason == Qt::MouseFocusReason);
    followed_ = &control;
    act([&](platform::Runtime& runtime) { runtime.focus(control); });
}

} // namespace tolva::desktop
