#include "platform/printer.h"

namespace tolva::platform {

void Printer::Print(const std::string& text) {
    Print_on(text);
    next_line();
}

void Printer::Print_on(const std::string& text) {
    constexpr const char* line_end = "\r\n";
    std::size_t begin = 0;
    for (;;) {
        if (flowing_ && static_cast<double>(y_ + line_height()) > ScaleHeight()) {
            const float x = x_;
            NewPage();
            x_ = x;
        }
        const std::size_t end = text.find(line_end, begin);
        x_ += write(text.substr(begin, end - begin));
        if (end == std::string::npos)
            return;
        next_line();
        begin = end + 2;
    }
}

void Printer::NewPage() {
    go_to_top();
    begin_page();
}

void Printer::EndDoc() {
    go_to_top();
    end_job();
    if (job_ended)
        job_ended();
}

void Printer::KillDoc() {
    go_to_top();
    drop_job();
}

void Printer::go_to_top() {
    x_ = y_ = 0;
    flowing_ = true;
}

void Printer::next_line() {
    x_ = 0;
    y_ += line_height();
    flowing_ = true;
}

} // namespace tolva::platform
