// How long the customer screens take on large files, a line per figure.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <string>

#include "big_files.h"
#include "support/desk.h"

namespace {

using namespace tolva;

/// What a screen may take to open, to search, or to come back from a record; and a view that rewrites all.
constexpr double screen_limit = 500, rewrite_limit = 3000;

/// In megabytes, as the system counts; 0 where it doesn't tell.
double memory(const std::string& what) {
    std::ifstream status("/proc/self/status");
    std::string word;
    while (status >> word)
        if (word == what + ":") {
            double kilobytes = 0;
            status >> kilobytes;
            return kilobytes / 1024;
        }
    return 0;
}

template <typename Action>
double milliseconds(Action action) {
    const auto start = std::chrono::steady_clock::now();
    action();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

class Bench {
  public:
    explicit Bench(int rows) : desk(support::Desk::delivered(), bench::day) {
        const double filled =
            milliseconds([&] { bench::fill_customer_files(*desk.disk, desk.folder.file("data"), rows); });
        std::printf("%d rows in each file, made in %.1f s; %.0f MB of memory at the start\n", rows,
                    filled / 1000, memory("VmRSS"));
        desk.start();
    }

    template <typename Action>
    void measure(const char* what, double limit, Action action) {
        desk.host.boxes.clear();
        const std::clock_t before = std::clock();
        const double taken = milliseconds(action);
        const double worked = 1000.0 * static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC;
        std::printf("%-12s%-46s%8.0f ms, %6.0f ms of the processor%s\n", screen_, what, taken, worked,
                    taken > limit ? "  over its limit" : "");
        if (desk.host.error) {
            std::printf("stopped by error %d: %s\n", desk.host.error->number, desk.host.error->text.c_str());
            std::exit(1);
        }
    }

    /// What every record screen does, from its first opening on.
    template <typename Screen>
    void screen(const char* name, platform::Slot<module::RecordEntry>& slot, platform::Button Screen::*search,
                platform::Button Screen::*close, platform::Button Screen::*next,
                platform::Button Screen::*exit, platform::MenuEntry Screen::*all) {
        screen_ = name;
        const auto shown = [&]() -> Screen& { return static_cast<Screen&>(slot()); };
        const auto show = [&] { desk.runtime().run([&] { slot().show(); }); };
        measure("opens for the first time", screen_limit, show);
        desk.choose(shown().*all);
        desk.click(shown().*exit);
        measure("opens over all rows", screen_limit, show);
        std::printf("%-12s%d rows on show, %.0f MB of memory\n", name, shown().grid1.Rows() - 1,
                    memory("VmRSS"));
        measure("shows the view of all rows", screen_limit, [&] { desk.choose(shown().*all); });
        measure("opens the record of the last row", screen_limit,
                [&] { desk.runtime().click_row(shown().grid1, shown().grid1.Rows() - 1); });
        measure("goes back one record, saving", screen_limit, [&] { desk.click(shown().*next); });
        measure("comes back from a record to all rows", screen_limit, [&] { desk.click(shown().*close); });
        shown().sname.text = "field";
        shown().scity.text = "Utica";
        measure("searches by part of a name and a city", screen_limit, [&] { desk.click(shown().*search); });
        shown().sname.text = shown().scity.text = "";
        measure("searches for everybody", screen_limit, [&] { desk.click(shown().*search); });
    }

    void follow_up(const char* what, platform::MenuEntry& entry) {
        measure(what, rewrite_limit, [&] { desk.choose(entry); });
    }

    support::Desk desk;

  private:
    const char* screen_ = "";
};

void listings(Bench& bench) {
    using records::listings;
    auto& module = bench.desk.module();
    bench.screen("listings", module.listings, &listings::Command11, &listings::Command5, &listings::Command7,
                 &listings::Command10, &listings::m_alllistings);
    bench.follow_up("marks birthdays", bench.desk.listings().m_birthdays);
    bench.follow_up("marks customers to contact", bench.desk.listings().m_customerstocontact);
    bench.follow_up("marks expiring listings", bench.desk.listings().m_expiringlistings);
    bench.desk.choose(bench.desk.listings().m_searchlisting);
    auto& search = static_cast<search::listingsearch&>(module.listingsearch());
    search.last.text = "field";
    search.datelisted1.text = "1/1/2025";
    search.datelisted2.text = "12/31/2026";
    bench.measure("is searched by name and date", screen_limit, [&] { bench.desk.click(search.Command9); });
    bench.desk.click(search.Command10);
    bench.measure("is searched without criteria", screen_limit, [&] { bench.desk.click(search.Command9); });
    bench.desk.click(search.Command11);
    bench.desk.click(bench.desk.listings().Command10);
}

void prospects(Bench& bench) {
    using records::prospect;
    auto& module = bench.desk.module();
    bench.screen("prospect", module.prospect, &prospect::Command10, &prospect::Command5, &prospect::Command7,
                 &prospect::Command11, &prospect::m_allprospects);
    auto& screen = static_cast<prospect&>(module.prospect());
    bench.follow_up("marks birthdays", screen.m_birthdays);
    bench.follow_up("marks prospects to contact", screen.m_prospectstocontact);
    bench.desk.choose(screen.m_searchprospect);
    auto& search = static_cast<search::prospectsearch&>(module.prospectsearch());
    search.cities.text = "Utica";
    search.price1.text = "100000";
    search.price2.text = "300000";
    search.bedrooms1.text = "2";
    search.bedrooms2.text = "4";
    search.feature[3].value = 1;
    bench.measure("is searched by home", screen_limit, [&] { bench.desk.click(search.Command1); });
    search.cities.text = "";
    bench.desk.click(search.Command2);
    bench.measure("is searched without criteria", screen_limit, [&] { bench.desk.click(search.Command1); });
    bench.desk.click(search.Command3);
    bench.desk.click(static_cast<prospect&>(module.prospect()).Command11);
}

void sales(Bench& bench) {
    using records::sold;
    auto& module = bench.desk.module();
    bench.screen("sold", module.sold, &sold::Command4, &sold::Command5, &sold::Command7, &sold::Command10,
                 &sold::m_allcustomers);
    auto& screen = static_cast<sold&>(module.sold());
    bench.follow_up("marks birthdays", screen.m_birthdays);
    bench.follow_up("marks customers to contact", screen.m_customerstocontact);
    bench.desk.click(screen.Command10);
}

void addresses(Bench& bench) {
    using records::addressbook;
    auto& module = bench.desk.module();
    bench.screen("addressbook", module.addressbook, &addressbook::Command2, &addressbook::Command18,
                 &addressbook::Command4, &addressbook::Command1, &addressbook::m_alladdresses);
    bench.desk.choose(static_cast<addressbook&>(module.addressbook()).m_search);
    auto& search = static_cast<search::addresssearch&>(module.addresssearch());
    search.notes.text = "spring";
    bench.measure("is searched by notes", screen_limit, [&] { bench.desk.click(search.Command1); });
    bench.desk.click(search.Command3);
    bench.desk.click(static_cast<addressbook&>(module.addressbook()).Command1);
}

} // namespace

int main(int argc, char** argv) {
    Bench bench(argc > 1 ? std::atoi(argv[1]) : 100000);
    listings(bench);
    prospects(bench);
    sales(bench);
    addresses(bench);
    std::printf("%.0f MB of memory at most\n", memory("VmHWM"));
    return 0;
}
