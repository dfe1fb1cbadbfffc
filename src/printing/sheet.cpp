#include "printing/sheet.h"

#include "basic/text.h"
#include "printing/page.h"

namespace tolva::printing {

namespace {

constexpr float sheet_font_size = 11;

} // namespace

Sheet::Sheet(platform::Printer& printer, const std::string& job_name) : printer_(printer) {
    printer_.job_name = job_name;
    printer_.FontSize = sheet_font_size;
    printer_.FontName = "Arial";
}

void Sheet::begin_at(double x, double y) {
    x_ = x;
    printxy(printer_, x, y);
}

void Sheet::heading(const std::string& text) {
    printer_.FontBold = true;
    printer_.FontUnderline = true;
    line(text);
    printer_.FontBold = false;
    printer_.FontUnderline = false;
}

void Sheet::line(const std::string& text) {
    printx(printer_, x_);
    printer_.Print(text);
}

void Sheet::lines(std::initializer_list<std::string> texts) {
    for (const std::string& text : texts)
        line(text);
}

void Sheet::empty_line() {
    printer_.Print("");
}

void Sheet::end() {
    printer_.EndDoc();
}

std::string shown(const platform::TextControl& field) {
    return basic::trim(field.text);
}

} // namespace tolva::printing
