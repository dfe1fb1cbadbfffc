#include "desktop/field_block.h"
#include "desktop/forms.h"

namespace tolva::desktop {

namespace {

const std::vector<Row> return_rows = {
    {{"X:", {fixed("r_x", 6, "Return Address X")}}, {"Y:", {fixed("r_y", 6, "Return Address Y")}}},
};

const std::vector<Row> address_rows = {
    {{"X:", {fixed("a_x", 6, "Address X")}}, {"Y:", {fixed("a_y", 6, "Address Y")}}},
};

} // namespace

void build_label(FormBuilder& builder) {
    auto* const whole = new QVBoxLayout(&builder.form());
    // As the labels lie on the sheet, row by row.
    auto* const sheet = new QGridLayout;
    constexpr int columns = 3, labels = 30;
    for (int label = 0; label < labels; ++label) {
        QWidget* const button = builder("Command1_" + std::to_string(label));
        button->setMinimumWidth(builder.form().fontMetrics().horizontalAdvance(QLatin1Char('0')) * 16);
        button->setAccessibleName(QStringLiteral("Start at label %1").arg(label + 1));
        sheet->addWidget(button, label / columns, label % columns);
    }
    whole->addLayout(sheet, 1);
    auto* const bottom = new QHBoxLayout;
    bottom->addStretch(1);
    bottom->addWidget(builder("Command2"));
    whole->addLayout(bottom);
    builder.form().set_first(builder.control("Command1_0"));
}

void build_printaddress(FormBuilder& builder) {
    auto* const whole = new QVBoxLayout(&builder.form());
    whole->addWidget(titled_block(builder,
                                  "X and Y Coordinates from the Upper Left Hand Corner of the Page in "
                                  "Millimeters for the Return Address",
                                  return_rows));
    whole->addWidget(titled_block(builder,
                                  "X and Y Coordinates from the Upper Left Hand Corner of the Page in "
                                  "Millimeters for the Address",
                                  address_rows));
    QGroupBox* const lines = builder.frame_titled(QStringLiteral("Return Address"));
    auto* const column = new QVBoxLayout(lines);
    constexpr int return_lines = 8;
    for (int line = 0; line < return_lines; ++line) {
        const std::string name = "returnaddress_" + std::to_string(line);
        builder.say(name, QStringLiteral("Return address, line %1").arg(line + 1));
        column->addWidget(builder.box(name, 40, true));
    }
    auto* const addresses = new QHBoxLayout;
    addresses->addWidget(lines, 1);
    // What stands at the address, for whom it is printed.
    QGroupBox* const customer = builder.frame_titled(QStringLiteral("Address"));
    auto* const told = new QVBoxLayout(customer);
    for (const char* line : {"Customer Name", "Address", "City, State Zip"})
        told->addWidget(builder.label(QString::fromUtf8(line)));
    told->addStretch(1);
    addresses->addWidget(customer, 1);
    whole->addLayout(addresses);
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(builder("Command1"));
    buttons->addStretch(1);
    buttons->addWidget(builder("Command2"));
    whole->addLayout(buttons);
    whole->addStretch(1);
    builder.form().set_first(builder.control("returnaddress_0"));
}

} // namespace tolva::desktop
