#include <gtest/gtest.h>

#include <QClipboard>
#include <QComboBox>

#include "analysis/graph.h"
#include "analysis/paymentcalculator.h"
#include "desk_by_hand.h"
#include "desktop/chart_view.h"
#include "support/customers.h"
#include "support/desk.h"

namespace tolva::desktop {
namespace {

/// Sales in charts, and what a mortgage costs, by hand, on the desk as it is delivered.
class AnalysisStory : public testing::Test, protected DeskByHand {
  protected:
    void SetUp() override {
        lay_out(support::Desk::delivered());
        shell::start(*module);
        settle();
    }
    void open_screen(const char* button) {
        click(widget(module->Form1(), button));
        settle();
    }

    platform::Screen& graph() { return module->graph(); }
    ChartView* chart(const char* name) { return static_cast<ChartView*>(widget(graph(), name)); }
    QString told(const char* name) { return chart(name)->accessibleDescription(); }
    void add_sale(basic::Date date, double commission, double price) {
        support::Desk::add(*module->solddb,
                           {{"datesold", date}, {"commission", commission}, {"sellingprice", price}});
    }

    platform::Screen& calculator() { return module->paymentcalculator(); }
    /// Does something, and gives the text of the box that it brings up.
    template <class Act>
    QString box_of(Act act) {
        QString said;
        answer_with(Qt::Key_Return, &said);
        act();
        return said;
    }
};

TEST_F(AnalysisStory, OfThreeChartsOverAYear) {
    add_sale(basic::make_date(2026, 1, 5), 1000, 100000);
    add_sale(basic::make_date(2026, 1, 31), 500.4, 50000);
    add_sale(basic::make_date(2026, 11, 30), 7000, 1250000);
    add_sale(basic::make_date(2025, 12, 31), 1, 1);
    open_screen("Command6");
    EXPECT_FALSE(chart("chart1")->isVisible());
    EXPECT_EQ(QApplication::focusWidget(), widget(graph(), "mon1"));
    for (int month = 11; month > 1; --month)
        press(Qt::Key_Up);
    press(Qt::Key_G, Qt::AltModifier);
    settle();
    EXPECT_TRUE(chart("chart1")->isVisible());
    EXPECT_TRUE(chart("chart2")->isVisible());
    EXPECT_EQ(told("chart1"), QStringLiteral("1/2026: 2, 11/2026: 1"));
    EXPECT_EQ(told("chart2"), QStringLiteral("1/2026: $1,500, 11/2026: $7,000"));
    EXPECT_EQ(told("chart3"), QStringLiteral("1/2026: $150,000, 11/2026: $1,250,000"));

    // At any size, each with its share of the window.
    for (const QSize size : {form(graph()).minimumSizeHint(), QSize(1600, 1000)}) {
        form(graph()).resize(size);
        settle();
        int below = 0;
        for (const char* name : {"chart1", "chart2", "chart3"}) {
            const int top = chart(name)->mapTo(&form(graph()), QPoint()).y();
            EXPECT_GT(top, below);
            below = top + chart(name)->height();
            EXPECT_GE(chart(name)->height(), chart(name)->minimumSizeHint().height());
        }
        EXPECT_LE(below, form(graph()).height());
    }

    EXPECT_EQ(box_of([&] {
                  click(widget(graph(), "year2"));
                  press(Qt::Key_A, Qt::ControlModifier);
                  type(QStringLiteral("2025"));
                  click(widget(graph(), "Command1"));
              }),
              QStringLiteral("Invalid Dates!"));
    EXPECT_EQ(told("chart1"), QStringLiteral("1/2026: 2, 11/2026: 1"));
}

TEST_F(AnalysisStory, OfMonthsThatAreChosenAndNeverMistyped) {
    open_screen("Command6");
    const auto month = [this] { return static_cast<QComboBox*>(widget(graph(), "mon1"))->currentText(); };
    EXPECT_EQ(month(), QStringLiteral("November"));
    type(QStringLiteral("m"));
    EXPECT_EQ(month(), QStringLiteral("March"));
    type(QStringLiteral("mx7"));
    EXPECT_EQ(month(), QStringLiteral("May"));
    press(Qt::Key_Backspace);
    press(Qt::Key_Delete);
    QGuiApplication::clipboard()->setText(QStringLiteral("Brumaire"));
    press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(month(), QStringLiteral("May"));
    press(Qt::Key_Down);
    EXPECT_EQ(static_cast<platform::ComboBox*>(graph().find("mon1"))->text, "June");
    click(widget(graph(), "mon2"));
    settle();
    EXPECT_TRUE(static_cast<QComboBox*>(widget(graph(), "mon2"))->view()->isVisible());
    press(Qt::Key_Up);
    press(Qt::Key_Return);
    settle();
    EXPECT_EQ(static_cast<platform::ComboBox*>(graph().find("mon2"))->text, "October");
    EXPECT_EQ(QApplication::focusWidget(), widget(graph(), "mon2"));
}

TEST_F(AnalysisStory, OfChartsOnPaperAfterAQuestion) {
    add_sale(basic::make_date(2026, 11, 5), 1000, 100000);
    open_screen("Command6");
    click(widget(graph(), "Command1"));
    const auto jobs = [&] {
        return QDir(to_qt(folder.file("printed"))).entryList({QStringLiteral("*.pdf")}, QDir::Files).size();
    };
    QString asked;
    answer_with(Qt::Key_Escape, &asked);
    press(Qt::Key_P, Qt::AltModifier);
    EXPECT_EQ(asked, QStringLiteral("Print Graphs?"));
    EXPECT_EQ(jobs(), 0);
    answer_with(Qt::Key_Return);
    press(Qt::Key_P, Qt::AltModifier);
    EXPECT_EQ(jobs(), 1);
    press(Qt::Key_X, Qt::AltModifier);
    settle();
    EXPECT_FALSE(module->graph.loaded());
    EXPECT_TRUE(form(module->Form1()).isActiveWindow());
}

TEST_F(AnalysisStory, OfAPaymentWorkedOutByKeysAlone) {
    open_screen("Command4");
    EXPECT_EQ(QApplication::focusWidget(), widget(calculator(), "amountfinanced"));
    const auto fill_in = [this](const QString& amount, const QString& rate, const QString& years) {
        for (const QString& value : {amount, rate, years}) {
            type(value);
            press(Qt::Key_Return); // leads nowhere, and works nothing out
            press(Qt::Key_Tab);
        }
        EXPECT_EQ(QApplication::focusWidget(), widget(calculator(), "Command2"));
    };
    const auto back_to_the_amount = [this] {
        for (const char* button : {"Command1", "Command3", "amountfinanced"}) {
            press(Qt::Key_Tab);
            EXPECT_EQ(QApplication::focusWidget(), widget(calculator(), button));
        }
    };
    const auto payment = [this] { return box_of([] { press(Qt::Key_Return); }); };
    fill_in(QStringLiteral("100000"), QStringLiteral("6"), QStringLiteral("30"));
    EXPECT_EQ(payment(), QStringLiteral("$599.55"));

    // Each field is selected whole when it is entered, so a new figure replaces the old.
    back_to_the_amount();
    fill_in(QStringLiteral("1200"), QStringLiteral("0"), QStringLiteral("1"));
    EXPECT_EQ(payment(), QStringLiteral("$100.00"));
    back_to_the_amount();
    fill_in(QStringLiteral("100000"), QStringLiteral("6"), QStringLiteral("0"));
    EXPECT_EQ(payment(), QStringLiteral("Invalid Numbers"));
    EXPECT_EQ(text(calculator(), "amountfinanced"), QStringLiteral("100000"));

    // Clearing takes along the days to the first payment, which nobody sees.
    press(Qt::Key_C, Qt::AltModifier);
    EXPECT_EQ(text(calculator(), "amountfinanced") + text(calculator(), "interestrate") +
                  text(calculator(), "terminmonths"),
              QString());
    EXPECT_EQ(QApplication::focusWidget(), widget(calculator(), "Command1"));
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    fill_in(QStringLiteral("100000"), QStringLiteral("6"), QStringLiteral("30"));
    EXPECT_EQ(payment(), QStringLiteral("$596.57"));

    form(calculator()).close();
    settle();
    EXPECT_TRUE(form(module->Form1()).isActiveWindow());
    open_screen("Command4");
    fill_in(QStringLiteral("100000"), QStringLiteral("6"), QStringLiteral("30"));
    EXPECT_EQ(payment(), QStringLiteral("$599.55")) << "opened anew the days are back";
    click(widget(calculator(), "Command3"));
    settle();
    EXPECT_FALSE(module->paymentcalculator.loaded());
    EXPECT_TRUE(form(module->Form1()).isActiveWindow());
}

} // namespace
} // namespace tolva::desktop
