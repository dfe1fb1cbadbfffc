#include "sample/desk.h"

#include <utility>

namespace tolva::sample {

Desk::Desk(files::FileSystem& disk, std::string data_folder, basic::Date day)
    : folder(std::move(data_folder)), today(basic::day_of(day)),
      engine(disk, [year = basic::parts_of(day).year] { return year; }) {}

std::unique_ptr<dao::Database> Desk::open(const std::string& name) {
    return engine.Workspaces(0).OpenDatabase(folder + "/" + name);
}

void fill_settings(Desk& desk, const Customers& customers) {
    const auto file = desk.open("database.mdb");
    const auto rows = file->OpenRecordset("preference_table");
    const auto last_id = [](const std::vector<Customer>& of) { return static_cast<double>(of.back().id); };
    rows->Edit();
    rows->write("listing_counter", last_id(customers.listings));
    rows->write("prospect_counter", last_id(customers.prospects));
    rows->write("sold_counter", last_id(customers.sold));
    rows->write("address_counter", last_id(customers.addresses));
    rows->write("salespersonname", std::string("Pat Winter"));
    rows->Update();
    desk.engine.commit();
}

} // namespace tolva::sample
