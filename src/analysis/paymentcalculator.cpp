#include "analysis/paymentcalculator.h"

#include "analysis/mortgage.h"
#include "basic/number.h"
#include "basic/run_time_error.h"

namespace tolva::analysis {

using basic::leading_number;
using basic::to_currency;

paymentcalculator::paymentcalculator(module::Module& module)
    : Screen(module.runtime, "paymentcalculator", "Payment Calculator"), module_(module) {
    daysuntilfirstpayment.text = "30";
    daysuntilfirstpayment.visible = false;
    for (platform::TextBox* box : {&amountfinanced, &interestrate, &terminmonths})
        box->on_got_focus = [this] { module::Module::selectfieldtext(*this); };
    Command2.on_click = [this] { Command2_Click(); };
    Command1.on_click = [this] {
        for (platform::TextBox* box : {&amountfinanced, &interestrate, &daysuntilfirstpayment, &terminmonths})
            box->text.clear();
    };
    Command3.on_click = [this] {
        unload();
        module_.Form1().show();
    };
}

void paymentcalculator::on_unload() {
    module_.Form1().show();
}

void paymentcalculator::Command2_Click() {
    constexpr double months_a_year = 12;
    std::string payment;
    try {
        basic::Currency perpayment;
        payment = mortgagepayment(to_currency(leading_number(amountfinanced.text)),
                                  to_currency(leading_number(terminmonths.text) * months_a_year),
                                  to_currency(leading_number(interestrate.text)), {},
                                  to_currency(leading_number(daysuntilfirstpayment.text)), perpayment);
        payment = "$" + basic::money_text(leading_number(payment));
    } catch (const basic::RunTimeError&) {
        runtime().message("Invalid Numbers", "Error");
        return;
    }
    runtime().message(payment, "Payment");
}

} // namespace tolva::analysis
