#include "desktop/field_block.h"
#include "desktop/forms.h"

namespace tolva::desktop {

namespace {

const std::vector<Row> mortgage_rows = {
    {{"Mortgage Amount: $", {fixed("amountfinanced", 14)}}},
    {{"Interest Rate:", {fixed("interestrate", 14)}}},
    {{"Term in Years:", {fixed("terminmonths", 14)}}},
};

const std::vector<Row> span_rows = {
    {{"Beginning Month:",
      {word("Month"), fixed("mon1", 12, "Beginning Month"), word("Year"),
       fixed("year1", 6, "Beginning Year")}}},
    {{"Ending Month:",
      {word("Month"), fixed("mon2", 12, "Ending Month"), word("Year"), fixed("year2", 6, "Ending Year")}}},
};

} // namespace

void build_paymentcalculator(FormBuilder& builder) {
    auto* const whole = new QVBoxLayout(&builder.form());
    auto* const fields = new QWidget(&builder.form());
    fill_block(builder, *fields, mortgage_rows);
    whole->addWidget(fields);
    auto* const buttons = new QHBoxLayout;
    for (const char* button : {"Command2", "Command1", "Command3"})
        buttons->addWidget(builder(button));
    buttons->addStretch(1);
    whole->addLayout(buttons);
    whole->addStretch(1);
    builder.leave_out({"daysuntilfirstpayment"});
    builder.form().set_first(builder.control("amountfinanced"));
}

void build_graph(FormBuilder& builder) {
    auto* const whole = new QVBoxLayout(&builder.form());
    QGroupBox* const span = builder.frame("Frame1");
    fill_block(builder, *span, span_rows);
    auto* const top = new QHBoxLayout;
    top->addWidget(span, 1);
    auto* const buttons = new QVBoxLayout;
    buttons->addStretch(1);
    for (const char* button : {"Command1", "Command2", "Command3"})
        buttons->addWidget(builder(button));
    top->addLayout(buttons);
    whole->addLayout(top);

    for (const auto& [caption, chart] : {std::pair("UNITS SOLD", "chart1"), std::pair("COMMISSION", "chart2"),
                                         std::pair("TOTAL IN SALES", "chart3")}) {
        whole->addWidget(builder.label(QString::fromUtf8(caption), chart), 0, Qt::AlignHCenter);
        whole->addWidget(builder(chart), 1);
    }
    builder.form().set_first(builder.control("mon1"));
}

} // namespace tolva::desktop
