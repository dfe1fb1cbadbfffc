#pragma once

#include <QStackedWidget>
#include <QWidget>
#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

#include "desktop/binding.h"
#include "desktop/event_state.h"
#include "platform/runtime.h"

class QMdiArea;

namespace tolva::desktop {

/// The window of one loaded screen. What it holds is made by a `FormBuilder`; here stands how it lives: user
/// actions go out through `act`, changes come in through `refresh`, and the focus of Qt and of the screen
/// follow each other.
class Form : public QWidget {
  public:
    Form(platform::Screen& screen, EventState& state);
    ~Form() override;

    /// Null once the screen is gone: then the form waits for its deletion and does nothing.
    platform::Screen* platform_screen() const { return screen_; }

    // --- Events ---

    /// A user action, unless the screen is gone.
    void act(const std::function<void(platform::Runtime&)>& action);
    bool updating() const { return state_.updating; }
    /// Changes widgets so that what they report is not taken for the user's doing.
    void change_widgets(const std::function<void()>& change);

    /// Shows what handlers changed.
    void refresh();
    /// The window came up to draw attention, and nobody has turned to it yet.
    bool draws_attention = false;
    /// The window has come to the front.
    std::function<void()> on_activated;

    /// Brings Qt's focus to where the handlers have sent it. Where the control that had it can't have it any
    /// more, the page's first control gets it, as one more event.
    void settle_focus();
    /// The screen goes, and its controls with it.
    void detach();

    double pixels_a_twip() const;
    /// The size that shows everything, with what was changed since the last layout taken into account.
    QSize wanted_size();

    // --- Building ---

    /// The widget of a control; made on the first call.
    Binding* bind_control(platform::Control& control);
    void add_binding(std::unique_ptr<Binding> binding);
    /// Two pages in one place: the list while its frame is visible, otherwise the form. Each has a control
    /// that gets the focus when the page comes up.
    struct Pages {
        QStackedWidget* stack = nullptr;
        const platform::Control* list = nullptr;
        platform::Control* list_first = nullptr;
        platform::Control* form_first = nullptr;
    };
    void set_pages(const Pages& pages) { pages_ = pages; }
    void set_first(platform::Control& control) { first_ = &control; }
    /// Runs with each refresh, for what is decoration and yet changes.
    void on_refresh(std::function<void()> action) { refreshing_.push_back(std::move(action)); }
    void on_detach(std::function<void()> action) { detaching_.push_back(std::move(action)); }
    /// Lets Tab walk the controls in the order in which they were bound.
    void order_tabs();
    /// Controls that have no widget, as the user has no business with them.
    void leave_out(const platform::Control& control) { left_out_.push_back(&control); }

    /// The room for the documents of a frame.
    void set_documents(QMdiArea* area);
    QMdiArea* documents() const { return documents_; }

    // --- For looking at ---

    Binding* binding_of(const platform::Control& control) const;
    bool leaves_out(const platform::Control& control) const;
    platform::Control* first_control() const;

    bool eventFilter(QObject* object, QEvent* event) override;

  protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void watch(QWidget* widget, Binding* binding);
    void focus_came(Binding& binding, Qt::FocusReason reason);
    bool can_have_focus(const platform::Control& control) const;
    bool was_clicked(const Binding& binding) const;
    void turn_page();
    void follow_place();

    platform::Screen* screen_;
    EventState& state_;
    std::vector<std::unique_ptr<Binding>> bindings_;
    std::unordered_map<const platform::Control*, Binding*> by_control_;
    std::unordered_map<const QObject*, Binding*> watched_;
    std::vector<std::function<void()>> refreshing_, detaching_;
    std::vector<const platform::Control*> left_out_;
    Pages pages_;
    platform::Control* first_ = nullptr;
    QMdiArea* documents_ = nullptr;

    /// The screen's active control when Qt's focus was last brought to it.
    const platform::Control* followed_ = nullptr;
    /// Qt has moved its focus by itself.
    bool stray_ = false;
};

} // namespace tolva::desktop
