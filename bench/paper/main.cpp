// How fast long lists and label runs become pages, through the windows and the printer, a line per figure.

#include <QApplication>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "desktop/desk_by_hand.h"
#include "support/customers.h"
#include "support/desk.h"

namespace tolva::desktop {
namespace {

/// The most memory so far in megabytes, as the system counts; 0 where it doesn't tell.
double peak_memory() {
    std::ifstream status("/proc/self/status");
    std::string word;
    while (status >> word)
        if (word == "VmHWM:") {
            double kilobytes = 0;
            status >> kilobytes;
            return kilobytes / 1024;
        }
    return 0;
}

template <typename Action>
void measure(const char* what, int rows, Action action) {
    const double before = peak_memory();
    const auto start = std::chrono::steady_clock::now();
    action();
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    std::printf("%6d rows %-8s%8.2f s, %8.0f rows a second, %6.1f MB more at the peak\n", rows, what, seconds,
                rows / seconds, peak_memory() - before);
}

void print_rows(int rows) {
    DeskByHand desk;
    desk.lay_out(support::Desk::delivered());
    shell::start(*desk.module);
    settle();
    for (int row = 1; row <= rows; ++row)
        support::Desk::add(*desk.module->listingdb,
                           support::customer({{"id", std::int64_t{row}},
                                              {"first", "Ann"},
                                              {"last", "Customer " + std::to_string(row)},
                                              {"address", "12 Elm Way"},
                                              {"city", "Salem"},
                                              {"state", "OR"},
                                              {"zip", "97301"},
                                              {"datelisted", basic::make_date(2026, 11, 2)}}));
    platform::Screen& screen = desk.open("Command9", &module::Module::listings);
    measure("listed", rows, [&] {
        desk.answer_with(Qt::Key_Return);
        desk.choose(screen, "m_printlistings");
    });
    desk.choose(screen, "m_printlabels");
    measure("labelled", rows, [&] {
        desk.answer_with(Qt::Key_Return);
        click(desk.widget(desk.module->label(), "Command1_0"));
        settle();
    });
}

} // namespace
} // namespace tolva::desktop

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    tolva::desktop::print_rows(argc > 1 ? std::atoi(argv[1]) : 1000);
}
