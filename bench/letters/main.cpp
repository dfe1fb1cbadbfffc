#include <QGuiApplication>
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <string>

#include "desktop/paged_text.h"
#include "rtf/read.h"
#include "rtf/rich_text.h"
#include "support/program.h"

// How many letters of one page are merged and laid out in a second, and how fast rich text is read, beside
// unrtf where it is installed:
//   cmake --build build --target bench_letters && build/bench/bench_letters

namespace tolva {
namespace {

class Stopwatch {
  public:
    double seconds() const {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
    }

  private:
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

/// The seconds that an action takes, the middle one of five runs.
template <typename Action>
double median_seconds(Action action) {
    std::array<double, 5> runs{};
    for (double& seconds : runs) {
        const Stopwatch watch;
        const auto kept = action(); // whose end is not part of it
        seconds = watch.seconds();
        static_cast<void>(kept);
    }
    std::sort(runs.begin(), runs.end());
    return runs[runs.size() / 2];
}

/// A letter that fills most of a page, with formats as letters have them.
std::string letter() {
    std::string source =
        "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\froman Times New Roman;}{\\f1\\fswiss "
        "Arial;}}{\\colortbl;\\red0\\green0\\blue128;}\r\n"
        "\\pard\\qr\\f0\\fs24 <date>\\par\\par\r\n"
        "\\pard <firstname> <lastname>\\par <address>\\par <city>, <state> <zip>\\par\\par\r\n"
        "Dear <bothnames>,\\par\r\n";
    for (int paragraph = 0; paragraph < 6; ++paragraph)
        source +=
            "\\pard\\qj\\fi720\\sa120 Homes like yours in {\\b <city>} were listed for an average of 31 "
            "days this quarter, {\\i and most sold} within three percent of the price that was asked; "
            "caf\\'e9 tables are full again, and {\\cf1\\ul families} ask me for addresses every week. "
            "I would be glad to tell you what that means for <address>.\\par\r\n";
    return source + "\\pard Yours,\\par\\par {\\f1\\fs20 <salesperson>}\\par}";
}

void replace_all(std::string& text, const std::string& tag, const std::string& value) {
    for (std::size_t at = 0; (at = text.find(tag, at)) != std::string::npos; at += value.size())
        text.replace(at, tag.size(), value);
}

std::string merged(std::string source, int number) {
    const std::pair<const char*, std::string> values[] = {
        {"<date>", "November 20, 2026"},
        {"<firstname>", "Ann"},
        {"<lastname>", "Customer " + std::to_string(number)},
        {"<address>", std::to_string(100 + number) + " Oak Street"},
        {"<city>", "Springfield"},
        {"<state>", "IL"},
        {"<zip>", "62704"},
        {"<bothnames>", "Ann & Ben"},
        {"<salesperson>", "Carol Agent"},
    };
    for (const auto& [tag, value] : values)
        replace_all(source, tag, value);
    return source;
}

void measure_letters() {
    constexpr int letters = 1000;
    constexpr double column = 6.5 * 1440, page = 9 * 1440;
    const std::string source = letter();
    int pages = 0;
    const Stopwatch watch;
    for (int number = 0; number < letters; ++number) {
        rtf::RichText text;
        text.set_text_rtf(merged(source, number));
        pages += desktop::PagedText(text.document(), column, page).page_count();
    }
    const double seconds = watch.seconds();
    std::printf("%d letters, %d pages: %.2f s, %.0f letters a second\n", letters, pages, seconds,
                letters / seconds);
}

void measure_reading() {
    constexpr std::size_t wanted = 8 << 20;
    std::string source = letter();
    source.pop_back();
    const std::string body = source.substr(source.find("\\pard"));
    while (source.size() < wanted)
        source += body;
    source += "}";
    const double megabytes = static_cast<double>(source.size()) / (1 << 20);
    const double ours = median_seconds([&] { return rtf::read(source); });
    std::printf("read %.1f MB: %.3f s, %.0f MB a second\n", megabytes, ours, megabytes / ours);
    if (!support::has_command("unrtf")) {
        std::printf("unrtf is not installed\n");
        return;
    }
    const support::TemporaryFolder folder;
    const std::string file = folder.file("letters.rtf");
    std::ofstream(file, std::ios::binary) << source;
    const double theirs = median_seconds([&] { return support::run_program({"unrtf", "--text", file}); });
    std::printf("unrtf: %.3f s, %.1f MB a second; %.1f times as long\n", theirs, megabytes / theirs,
                theirs / ours);
}

} // namespace
} // namespace tolva

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    tolva::measure_letters();
    tolva::measure_reading();
}
