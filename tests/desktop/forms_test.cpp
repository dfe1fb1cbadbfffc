#include <gtest/gtest.h>

#include <QAccessible>
#include <QCheckBox>
#include <QGroupBox>
#include <QRadioButton>
#include <QScrollArea>
#include <QTabBar>

#include "analysis/graph.h"
#include "analysis/paymentcalculator.h"
#include "desktop/chart_view.h"
#include "desktop/combo_box.h"
#include "desktop/control_bindings.h"
#include "desktop/document_bindings.h"
#include "desktop/fitting_scroll_area.h"
#include "desktop/forms.h"
#include "desktop/input_watch.h"
#include "desktop/text.h"
#include "desktop/text_edit.h"
#include "hands.h"
#include "letters/followupletters.h"
#include "letters/frm_main.h"
#include "letters/letter.h"
#include "messages/appointment.h"
#include "messages/generalmessage.h"
#include "messages/generalmessagecreate.h"
#include "messages/planner.h"
#include "printing/label.h"
#include "printing/printaddress.h"
#include "records/addressbook.h"
#include "records/listings.h"
#include "records/prospect.h"
#include "records/sold.h"
#include "search/addresssearch.h"
#include "search/listingsearch.h"
#include "search/prospectsearch.h"
#include "search/zipcode.h"
#include "shell/choosedate.h"
#include "shell/form1.h"
#include "shell/instructions.h"
#include "shell/preferences.h"
#include "shell/security.h"
#include "support/fixed_clock.h"
#include "support/scripted_host.h"

namespace tolva::desktop {
namespace {

using Maker = std::unique_ptr<platform::Screen> (*)(module::Module&);

template <class T>
std::unique_ptr<platform::Screen> make(module::Module& module) {
    return std::make_unique<T>(module);
}

/// A document with a frame of its own around it.
struct FrameAround {
    explicit FrameAround(module::Module& module) : frame(module) {}
    letters::frmMain frame;
};
class LoneDocument final : private FrameAround, public letters::frmDocument {
  public:
    explicit LoneDocument(module::Module& module)
        : FrameAround(module), frmDocument(FrameAround::frame, "Document 1") {}
};

struct Case {
    const char* name;
    Maker make;
};

constexpr Case cases[] = {
    {"security", make<shell::security>},
    {"Form1", make<shell::Form1>},
    {"preferences", make<shell::preferences>},
    {"choosedate", make<shell::choosedate>},
    {"listings", make<records::listings>},
    {"prospect", make<records::prospect>},
    {"sold", make<records::sold>},
    {"addressbook", make<records::addressbook>},
    {"listingsearch", make<search::listingsearch>},
    {"prospectsearch", make<search::prospectsearch>},
    {"addresssearch", make<search::addresssearch>},
    {"zipcode", make<search::zipcode>},
    {"generalmessage", make<messages::generalmessage>},
    {"generalmessagecreate", make<messages::generalmessagecreate>},
    {"planner", make<messages::planner>},
    {"appointment", make<messages::appointment>},
    {"graph", make<analysis::graph>},
    {"paymentcalculator", make<analysis::paymentcalculator>},
    {"letter", make<letters::letter>},
    {"instructions", make<shell::instructions>},
    {"followupletters", make<letters::followupletters>},
    {"label", make<printing::label>},
    {"printaddress", make<printing::printaddress>},
    {"frmMain", make<letters::frmMain>},
    {"frmDocument", make<LoneDocument>},
};

void PrintTo(const Case& screen, std::ostream* out) {
    *out << screen.name;
}

/// Each screen as it is made, without stores behind it, and its window.
class Forms : public testing::TestWithParam<Case> {
  protected:
    void SetUp() override { build(); }

    void build() {
        form.reset();
        screen = GetParam().make(module);
        if (auto* prospects = dynamic_cast<records::prospect*>(screen.get()))
            for (auto& feature : prospects->feature)
                feature->caption = "Disability Features";
        if (auto* search = dynamic_cast<search::prospectsearch*>(screen.get()))
            for (auto& feature : search->feature)
                feature->caption = "Disability Features";
        form = make_form(*screen, state);
        form->refresh();
    }

    /// Of option buttons that exclude each other, Tab stops only at the one that is on.
    static bool excluded(const QWidget* widget) {
        const auto* const option = qobject_cast<const QRadioButton*>(widget);
        return option && !option->isChecked();
    }

    /// Brings a page to the front, or the other one.
    void show_page(bool list) {
        if (platform::Control* const frame = screen->find("f_customerlist"))
            frame->visible = list;
        form->refresh();
        form->resize(form->wanted_size());
        form->show();
        QCoreApplication::processEvents();
    }

    bool has_pages() const { return screen->find("f_customerlist") != nullptr; }

    template <class Look>
    void on_each_page(Look look) {
        for (const bool list : {true, false}) {
            if (!list && !has_pages())
                continue;
            SCOPED_TRACE(list ? "first page" : "second page");
            show_page(list);
            look();
        }
    }

    /// The controls on the page in front that take part in the walk of Tab, in its order.
    std::vector<QWidget*> tab_walk() {
        std::vector<QWidget*> walk;
        QWidget* widget = form.get();
        do {
            widget = widget->nextInFocusChain();
            const bool stop = (widget->focusPolicy() & Qt::TabFocus) && widget->isVisible() &&
                              screen_control(widget) != nullptr;
            if (stop)
                walk.push_back(widget);
        } while (widget != form.get());
        return walk;
    }

    /// Where a widget is on the form. What lies in a scrolled area of its own is where that area is.
    QRect place_beside(const QWidget* widget, const QWidget* other) const {
        const QWidget* place = widget;
        for (const QWidget* around = widget; around != form.get(); around = around->parentWidget())
            if (qobject_cast<const QScrollArea*>(around) && !around->isAncestorOf(other))
                place = around;
        return {place->mapTo(form.get(), QPoint()), place->size()};
    }

    platform::Control* screen_control(const QWidget* widget) const {
        for (platform::Control* control : screen->controls())
            if (const Binding* const binding = form->binding_of(*control);
                binding && binding->widget() == widget)
                return control;
        return nullptr;
    }

    support::ScriptedHost host;
    support::FixedClock clock{{2026, 11, 20, 10, 0, 0}};
    platform::Runtime runtime{host, clock};
    std::unique_ptr<files::FileSystem> disk = files::make_memory_disk();
    module::Module module{runtime, *disk, "/desk"};
    InputWatch watch;
    EventState state{watch};
    std::unique_ptr<platform::Screen> screen;
    std::unique_ptr<Form> form;
};

INSTANTIATE_TEST_SUITE_P(Each, Forms, testing::ValuesIn(cases),
                         [](const auto& each) { return std::string(each.param.name); });

template <class W>
bool is(const QWidget* widget) {
    return dynamic_cast<const W*>(widget) != nullptr;
}

/// Whether a widget is of the kind that stands for a control.
bool fits(const platform::Control& control, const QWidget* widget) {
    if (const auto* text = dynamic_cast<const platform::TextBox*>(&control))
        return text->kind() == platform::TextBox::Kind::multi_line ? is<TextEdit>(widget)
                                                                   : is<LineEdit>(widget);
    if (dynamic_cast<const platform::ComboBox*>(&control))
        return is<ComboBox>(widget);
    if (dynamic_cast<const platform::Label*>(&control))
        return is<QLabel>(widget);
    if (dynamic_cast<const platform::Frame*>(&control))
        return is<QGroupBox>(widget);
    if (dynamic_cast<const platform::CheckBox*>(&control))
        return is<QCheckBox>(widget);
    if (dynamic_cast<const platform::OptionButton*>(&control))
        return is<QRadioButton>(widget);
    if (dynamic_cast<const platform::Button*>(&control))
        return is<PushButton>(widget);
    if (dynamic_cast<const platform::Grid*>(&control))
        return is<GridView>(widget);
    if (dynamic_cast<const platform::MonthView*>(&control))
        return is<MonthCalendar>(widget);
    if (dynamic_cast<const platform::TabStrip*>(&control))
        return is<QTabBar>(widget);
    if (dynamic_cast<const platform::RichTextBox*>(&control))
        return is<RichTextEdit>(widget);
    if (dynamic_cast<const platform::ToolBar*>(&control))
        return is<QToolBar>(widget);
    if (dynamic_cast<const platform::StatusBar*>(&control))
        return is<QStatusBar>(widget);
    if (dynamic_cast<const platform::Chart*>(&control))
        return is<ChartView>(widget);
    return false;
}

TEST_P(Forms, GiveEveryControlItsWidget) {
    for (const platform::Control* control : screen->controls()) {
        SCOPED_TRACE(control->object_name());
        if (dynamic_cast<const platform::Timer*>(control) ||
            dynamic_cast<const platform::CommonDialog*>(control))
            continue;
        if (form->leaves_out(*control)) {
            // The planner hides some of its links only; none is for the eye.
            EXPECT_TRUE(!control->visible || control->name() == "tp")
                << "shown by the screen, left out by the form";
            continue;
        }
        const Binding* const binding = form->binding_of(*control);
        ASSERT_NE(binding, nullptr) << "no widget";
        if (const auto* entry = dynamic_cast<const platform::MenuEntry*>(control)) {
            const auto* const menu = dynamic_cast<const MenuBinding*>(binding);
            ASSERT_NE(menu, nullptr);
            EXPECT_EQ(from_qt(menu->action()->objectName()), entry->object_name());
            EXPECT_EQ(menu->menu() != nullptr, !entry->entries().empty());
            continue;
        }
        EXPECT_EQ(from_qt(binding->widget()->objectName()), control->object_name());
        EXPECT_TRUE(fits(*control, binding->widget()));
        EXPECT_EQ(binding->widget()->window(), form.get());
        EXPECT_NE(binding->widget()->parentWidget(), form->findChild<QStackedWidget*>());
    }
}

TEST_P(Forms, AgreeWithTheCaptions) {
    EXPECT_EQ(from_qt(form->windowTitle()), screen->caption);
    for (const platform::Control* control : screen->controls()) {
        SCOPED_TRACE(control->object_name());
        const Binding* const binding = form->binding_of(*control);
        if (!binding)
            continue;
        if (const auto* entry = dynamic_cast<const platform::MenuEntry*>(control)) {
            const QAction& action = *dynamic_cast<const MenuBinding&>(*binding).action();
            EXPECT_EQ(action.isSeparator(), entry->caption == "-");
            EXPECT_EQ(from_qt(action.text()), action.isSeparator() ? "" : entry->caption);
        } else if (const auto* label = dynamic_cast<const platform::Label*>(control)) {
            EXPECT_EQ(from_qt(static_cast<QLabel*>(binding->widget())->text()), label->caption);
        } else if (const auto* frame = dynamic_cast<const platform::Frame*>(control)) {
            EXPECT_EQ(from_qt(static_cast<QGroupBox*>(binding->widget())->title()), frame->caption);
        } else if (const auto* button = dynamic_cast<const platform::Button*>(control)) {
            EXPECT_EQ(from_qt(static_cast<QAbstractButton*>(binding->widget())->text()), button->caption);
        } else if (const auto* check = dynamic_cast<const platform::CheckBox*>(control)) {
            EXPECT_EQ(from_qt(static_cast<QAbstractButton*>(binding->widget())->text()), check->caption);
        } else if (const auto* option = dynamic_cast<const platform::OptionButton*>(control)) {
            EXPECT_EQ(from_qt(static_cast<QAbstractButton*>(binding->widget())->text()), option->caption);
        }
    }
}

TEST_P(Forms, AreWalkedByTabInReadingOrder) {
    on_each_page([this] {
        const std::vector<QWidget*> walk = tab_walk();
        // In a frame the keyboard belongs to its documents.
        ASSERT_EQ(walk.empty(), form->documents() != nullptr);
        for (std::size_t at = 1; at < walk.size(); ++at) {
            const QWidget* const before = walk[at - 1];
            const QWidget* const after = walk[at];
            const QRect one = place_beside(before, after);
            const QRect two = place_beside(after, before);
            const bool below = two.top() >= one.center().y();
            const bool beside = two.left() > one.right();
            EXPECT_TRUE(below || beside) << qPrintable(before->objectName()) << " is walked ahead of "
                                         << qPrintable(after->objectName());
            // Within a frame it goes line by line, unless a new column of check boxes or texts begins.
            const bool list =
                is<QCheckBox>(after) || after->objectName().startsWith(QLatin1String("feature"));
            if (before->parentWidget() == after->parentWidget() && is<QGroupBox>(before->parentWidget()) &&
                !list) {
                EXPECT_GE(two.bottom(), one.center().y())
                    << qPrintable(before->objectName()) << ", " << qPrintable(after->objectName());
            }
        }
    });
}

TEST_P(Forms, ReachEveryVisibleControlByTab) {
    on_each_page([this] {
        const std::vector<QWidget*> walk = tab_walk();
        for (const platform::Control* control : screen->controls()) {
            const Binding* const binding = form->binding_of(*control);
            if (!binding || !binding->widget() || !binding->widget()->isVisible())
                continue;
            if (dynamic_cast<const platform::Label*>(control) ||
                dynamic_cast<const platform::Frame*>(control) ||
                dynamic_cast<const platform::Chart*>(control) || excluded(binding->widget()))
                continue;
            // What a tool bar does, menus and keys do too.
            if (dynamic_cast<const platform::ToolBar*>(control) ||
                dynamic_cast<const platform::StatusBar*>(control))
                continue;
            EXPECT_NE(std::find(walk.begin(), walk.end(), binding->widget()), walk.end())
                << control->object_name();
        }
    });
}

TEST_P(Forms, GiveAnAccessKeyToOneAlone) {
    on_each_page([this] {
        std::map<QKeySequence, QString> taken;
        const auto take = [&](const QString& text) {
            const QKeySequence key = QKeySequence::mnemonic(text);
            if (key.isEmpty())
                return;
            EXPECT_EQ(taken.count(key), 0u)
                << qPrintable(key.toString()) << ": " << qPrintable(taken[key]) << ", " << qPrintable(text);
            taken[key] = text;
        };
        for (const QWidget* widget : form->findChildren<QWidget*>()) {
            if (!widget->isVisible())
                continue;
            if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
                take(button->text());
            else if (const auto* bar = qobject_cast<const QMenuBar*>(widget))
                for (const QAction* entry : bar->actions())
                    take(entry->text());
        }
    });
}

TEST_P(Forms, NameEveryInputForAScreenReader) {
    for (const platform::Control* control : screen->controls()) {
        const Binding* const binding = form->binding_of(*control);
        if (!binding || !binding->widget() || dynamic_cast<const platform::Label*>(control) ||
            dynamic_cast<const platform::Frame*>(control))
            continue;
        if (control->name() == "Command3" && screen->name() == "generalmessage")
            continue; // captioned by whoever fills it
        QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(binding->widget());
        ASSERT_NE(accessible, nullptr) << control->object_name();
        const QString name = accessible->text(QAccessible::Name);
        EXPECT_FALSE(name.trimmed().isEmpty()) << control->object_name();
        if (dynamic_cast<const platform::Button*>(control)) {
            EXPECT_NE(name, QStringLiteral("D")) << control->object_name();
        }
    }
}

/// Samples of what stands in the narrow boxes.
QString sample_for(const QString& name) {
    if (name.startsWith(QLatin1String("date")) || name.endsWith(QLatin1String("birthday")))
        return QStringLiteral("12/28/2026");
    if (name.endsWith(QLatin1String("phone")) || name == QLatin1String("fax"))
        return QStringLiteral("(520) 555-2292");
    if (name.endsWith(QLatin1String("zip")))
        return QStringLiteral("80503-1234");
    if (name.endsWith(QLatin1String("state")))
        return QStringLiteral("MN");
    if (name.contains(QLatin1String("price")) || name == QLatin1String("squarefeet"))
        return QStringLiteral("1250000");
    if (name == QLatin1String("listingsource"))
        return QStringLiteral("Word of Mouth");
    if (name == QLatin1String("time1"))
        return QStringLiteral("12:30 PM");
    if (name.startsWith(QLatin1String("first")) || name.startsWith(QLatin1String("co_first")))
        return QStringLiteral("Jennifer");
    if (name.startsWith(QLatin1String("last")) || name.startsWith(QLatin1String("co_last")))
        return QStringLiteral("Richardson");
    if (name == QLatin1String("email"))
        return QStringLiteral("anthony.mcdonald@example.com");
    if (name.endsWith(QLatin1String("city")))
        return QStringLiteral("Springfield");
    return QStringLiteral("123");
}

TEST_P(Forms, ClipNothing) {
    on_each_page([this] {
        for (QWidget* widget : form->findChildren<QWidget*>()) {
            if (!widget->isVisible())
                continue;
            SCOPED_TRACE(qPrintable(widget->objectName()));
            if (const auto* label = qobject_cast<QLabel*>(widget)) {
                EXPECT_GE(label->width(), label->sizeHint().width()) << qPrintable(label->text());
                EXPECT_GE(label->height(), label->sizeHint().height()) << qPrintable(label->text());
            } else if (is<PushButton>(widget) || is<QCheckBox>(widget) || is<QRadioButton>(widget)) {
                EXPECT_GE(widget->width(), widget->sizeHint().width());
                EXPECT_GE(widget->height(), widget->sizeHint().height());
            } else if (const auto* frame = qobject_cast<QGroupBox*>(widget)) {
                EXPECT_GE(frame->width(), frame->minimumSizeHint().width());
                EXPECT_GE(frame->height(), frame->minimumSizeHint().height());
            } else if (const auto* line = dynamic_cast<LineEdit*>(widget)) {
                const QString name =
                    line->objectName().isEmpty() || line->objectName().startsWith(QLatin1String("qt_"))
                        ? line->parentWidget()->objectName()
                        : line->objectName();
                constexpr int air = 8;
                EXPECT_GE(line->width(), line->fontMetrics().horizontalAdvance(sample_for(name)) + air)
                    << qPrintable(name);
            }
            // Nothing sticks out of what holds it.
            const QWidget* const parent = widget->parentWidget();
            if (screen_control(widget) && parent) {
                EXPECT_TRUE(parent->rect().contains(widget->geometry()));
            }
        }
    });
}

TEST_P(Forms, ClipNothingInLargeLetters) {
    const QFont usual = QApplication::font();
    QFont large = usual;
    large.setPointSizeF(usual.pointSizeF() * 1.5);
    QApplication::setFont(large);
    build();
    on_each_page([this] {
        for (QWidget* widget : form->findChildren<QWidget*>()) {
            const bool looks = is<QLabel>(widget) || is<PushButton>(widget) || is<QCheckBox>(widget) ||
                               is<QRadioButton>(widget);
            if (!widget->isVisible() || !looks)
                continue;
            EXPECT_GE(widget->width(), widget->sizeHint().width()) << qPrintable(widget->objectName());
            EXPECT_GE(widget->height(), widget->sizeHint().height()) << qPrintable(widget->objectName());
        }
    });
    form.reset();
    QApplication::setFont(usual);
}

TEST_P(Forms, FitASmallScreen) {
    constexpr int title_and_task_bar = 70;
    QSize room(1366, 768 - title_and_task_bar);
    // What holds documents wants a share of its screen, which may be a large one here.
    if (form->documents())
        room = room.expandedTo(form->QWidget::screen()->size());
    const QSize size = form->wanted_size();
    EXPECT_LE(size.width(), room.width());
    EXPECT_LE(size.height(), room.height());
}

} // namespace
} // namespace tolva::desktop
