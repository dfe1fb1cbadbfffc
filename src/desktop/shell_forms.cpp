#include "desktop/application_icon.h"
#include "desktop/field_block.h"
#include "desktop/fitting_scroll_area.h"
#include "desktop/forms.h"
#include "desktop/month_calendar.h"
#include <QLocale>

namespace tolva::desktop {

namespace {

QFont scaled(QFont font, double factor, bool bold) {
    font.setPointSizeF(font.pointSizeF() * factor);
    font.setBold(bold);
    return font;
}

/// The buttons of the main menu: large enough to be hit without aiming, and all of one size.
class MenuButtons {
  public:
    explicit MenuButtons(FormBuilder& builder) : builder_(builder) {}

    QGroupBox* group(const char* title, std::initializer_list<const char*> buttons) const {
        QGroupBox* const frame = builder_.frame_titled(QString::fromUtf8(title));
        auto* const column = new QVBoxLayout(frame);
        column->setSpacing(frame->fontMetrics().height() / 2);
        for (const char* name : buttons)
            column->addWidget(large(builder_(name)));
        column->addStretch(1);
        return frame;
    }

    QWidget* large(QWidget* button, int characters = 27) const {
        const QFontMetrics metrics = builder_.form().fontMetrics();
        button->setMinimumSize(characters * metrics.horizontalAdvance(QLatin1Char('0')),
                               metrics.height() * 5 / 2);
        return button;
    }

  private:
    FormBuilder& builder_;
};

/// The program's name, and the day that it works on.
QLayout* heading(FormBuilder& builder) {
    auto* const row = new QHBoxLayout;
    const int icon_size = builder.form().fontMetrics().height() * 3;
    QLabel* const picture = builder.label(QString());
    picture->setPixmap(
        application_icon().pixmap(QSize(icon_size, icon_size), builder.form().devicePixelRatio()));
    row->addWidget(picture);
    row->addSpacing(icon_size / 4);

    auto* const names = new QVBoxLayout;
    names->setSpacing(0);
    QLabel* const name = builder.label(QStringLiteral("TOLVA"));
    name->setFont(scaled(name->font(), 2.0, true));
    names->addWidget(name);
    names->addWidget(builder.label(QStringLiteral("Tolva Agent Desk")));
    row->addLayout(names);
    row->addStretch(1);

    QLabel* const day = builder.label(QString());
    day->setFont(scaled(day->font(), 1.2, false));
    platform::Clock& clock = builder.screen().runtime().clock();
    builder.form().on_refresh([day, &clock] {
        const QLocale english(QLocale::English, QLocale::UnitedStates);
        const QString text = english.toString(to_qt(clock.today()), QStringLiteral("dddd, MMMM d, yyyy"));
        if (day->text() != text)
            day->setText(text);
    });
    row->addWidget(day, 0, Qt::AlignBottom);
    return row;
}

} // namespace

void build_security(FormBuilder& builder) {
    auto* const whole = new QVBoxLayout(&builder.form());
    auto* const row = new QHBoxLayout;
    row->addWidget(builder.label(QStringLiteral("Password"), "password"));
    row->addWidget(builder.box("password", 24, true), 1);
    whole->addLayout(row);
    whole->addSpacing(builder.form().fontMetrics().height() / 2);
    auto* const buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(builder("Command1"));
    buttons->addWidget(builder("Command2"));
    whole->addLayout(buttons);
    whole->addStretch(1);
    builder.form().set_first(builder.control("password"));
}

void build_form1(FormBuilder& builder) {
    auto* const whole = new QVBoxLayout(&builder.form());
    whole->setMenuBar(builder.menu_bar());
    const int space = builder.form().fontMetrics().height();
    whole->setContentsMargins(space, space, space, space);
    whole->setSpacing(space);
    whole->addLayout(heading(builder));

    const MenuButtons buttons(builder);
    auto* const columns = new QHBoxLayout;
    columns->setSpacing(space);
    columns->addWidget(buttons.group("Customers", {"Command9", "Command3", "Command7", "Command1"}), 1);
    columns->addWidget(
        buttons.group("The Day", {"Command2", "Command11", "Command12", "Command13", "Command14"}), 1);
    columns->addWidget(buttons.group("Tools", {"Command5", "Command4", "Command6", "Command10"}), 1);
    whole->addLayout(columns, 1);

    auto* const bottom = new QHBoxLayout;
    bottom->addStretch(1);
    bottom->addWidget(buttons.large(builder("Command8"), 14));
    whole->addLayout(bottom);
    builder.form().set_first(builder.control("Command9"));
}

void build_choosedate(FormBuilder& builder) {
    auto* const whole = new QVBoxLayout(&builder.form());
    builder.say("MonthView1", QStringLiteral("Choose Date"));
    whole->addWidget(builder("MonthView1"), 1);
    auto* const bottom = new QHBoxLayout;
    bottom->addStretch(1);
    bottom->addWidget(builder("Command1"));
    whole->addLayout(bottom);
    builder.form().set_first(builder.control("MonthView1"));
}

} // namespace tolva::desktop
