#include <ctime>
#include <iostream>
#include <string>
#include <vector>

#include "basic/run_time_error.h"
#include "files/command_line.h"
#include "sample/desk.h"

namespace {

using tolva::basic::Date;

constexpr const char* usage =
    "usage: tolva-sample FOLDER [M/D/YYYY]\n"
    "Fills the empty files of a data folder with made-up customers. What happens to them lies around the\n"
    "given day, which is today when it is left out; the same day gives the same customers.\n";

Date today_of_machine() {
    const std::time_t now = std::time(nullptr);
    const std::tm* local = std::localtime(&now);
    return tolva::basic::make_date(local->tm_year + 1900, local->tm_mon + 1, local->tm_mday);
}

void fill(const std::string& folder, Date today) {
    const auto disk = tolva::files::make_disk();
    tolva::sample::Desk desk(*disk, folder, today);
    tolva::sample::Customers customers;
    customers.listings = fill_listings(desk);
    customers.prospects = fill_prospects(desk);
    customers.sold = fill_sold(desk);
    customers.addresses = fill_addresses(desk);
    fill_messages(desk, customers);
    fill_settings(desk, customers);
}

} // namespace

int main(int argc, char** argv) {
    const tolva::files::CommandLine called(argc, argv);
    const std::vector<std::string>& arguments = called.words();
    if (!arguments.empty() && (arguments[0] == "--help" || arguments[0] == "-h")) {
        std::cout << usage;
        return 0;
    }
    if (arguments.empty() || arguments.size() > 2) {
        std::cerr << usage;
        return 2;
    }
    try {
        const Date now = today_of_machine();
        const int year = tolva::basic::parts_of(now).year;
        fill(arguments[0], arguments.size() < 2 ? now : tolva::basic::to_date(arguments[1], year));
        return 0;
    } catch (const tolva::basic::RunTimeError& error) {
        std::cerr << "tolva-sample: " << error.text() << '\n';
        return 1;
    }
}
