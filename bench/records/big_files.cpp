#include "big_files.h"

#include <random>

#include "dao/database.h"

namespace tolva::bench {

namespace {

constexpr const char* firsts[] = {"Ann",  "Bob",    "Carla", "Dirk", "Edna", "Frank", "Gilda", "Hank",
                                  "Inga", "Jürgen", "Kasia", "Lars", "Mona", "Ned",   "Olga",  "Pete"};
constexpr const char* lasts[] = {"Abel",   "Baker", "Conrad", "Delgado", "Evers",    "Fournier",
                                 "Grant",  "Hobbs", "Ingram", "Jonas",   "Kowalski", "Lindt",
                                 "Müller", "Novak", "Ortiz",  "Pratt"};
constexpr const char* ends[] = {"", "son", "s", "-Lee", "man", "ova", "berg", "field"};
constexpr const char* cities[] = {"Utica", "Rome", "Troy", "Oswego", "Elmira", "Fulton", "Ithaca", "Albany"};
constexpr const char* streets[] = {"Main Street", "Elm Avenue", "Church Road", "Lake View Drive"};
constexpr const char* levels[] = {"Hot (In Market Now)", "Warm (In Market Soon)",
                                  "Cold (In Market in Future)"};

/// Chance that falls the same way everywhere.
class Dice {
  public:
    int below(int end) { return static_cast<int>(engine_() % static_cast<unsigned>(end)); }
    template <typename T, std::size_t N>
    const T& pick(const T (&from)[N]) {
        return from[below(static_cast<int>(N))];
    }

  private:
    std::mt19937 engine_{7};
};

class Filler {
  public:
    Filler(files::FileSystem& disk, std::string folder, int rows)
        : folder_(std::move(folder)), rows_(rows), engine_(disk, [] { return day.year; }) {}

    template <typename Fill>
    void fill(const std::string& name, Fill fill_row) {
        const auto file = engine_.Workspaces(0).OpenDatabase(folder_ + "/" + name);
        const auto set = file->OpenRecordset("table");
        for (int id = 1; id <= rows_; ++id) {
            set->AddNew();
            for (const jet::ColumnSchema& column : set->schema().columns) {
                if (column.type == jet::ColumnType::text || column.type == jet::ColumnType::memo)
                    set->write(column.name, std::string());
                if (column.type == jet::ColumnType::double_real)
                    set->write(column.name, 0.0);
            }
            fill_person(*set);
            set->write("id", std::int64_t{id});
            fill_row(*set, id);
            set->Update();
        }
        engine_.commit();
    }

    Dice& dice() { return dice_; }
    std::string address() { return std::to_string(1 + dice_.below(3000)) + " " + dice_.pick(streets); }
    basic::Date around(int before, int behind) {
        return basic::add_days(basic::make_date(day.year, day.month, day.day),
                               dice_.below(before + behind + 1) - before);
    }
    basic::Date born() {
        return basic::make_date(1940 + dice_.below(60), 1 + dice_.below(12), 1 + dice_.below(28));
    }

  private:
    void fill_person(dao::Recordset& set) {
        set.write("first", std::string(dice_.pick(firsts)));
        set.write("last", std::string(dice_.pick(lasts)) + dice_.pick(ends));
        set.write("address", address());
        set.write("city", std::string(dice_.pick(cities)));
        set.write("state", std::string("NY"));
        set.write("zip", std::to_string(10000 + dice_.below(5000)));
        set.write("homephone", "(315) 555-0" + std::to_string(100 + dice_.below(100)));
        set.write("email", "someone" + std::to_string(dice_.below(100000)) + "@example.org");
        std::string notes;
        for (int line = dice_.below(5); line > 0; --line)
            notes += "Called, left word. Will think it over till spring, then look again.\r\n";
        set.write("notes", notes);
    }

    std::string folder_;
    int rows_;
    dao::DBEngine engine_;
    Dice dice_;
};

void write_follow_up(Filler& filler, dao::Recordset& set) {
    if (filler.dice().below(2) == 0) {
        set.write("co_first", std::string(filler.dice().pick(firsts)));
        set.write("co_last", std::string(filler.dice().pick(lasts)));
    }
    set.write("birthday", filler.born());
    set.write("datelastcontact", filler.around(200, 0));
    set.write("datenextcontact", filler.around(30, 200));
    set.write("contacthistory",
              "11/3/2026: " + std::string(static_cast<std::size_t>(filler.dice().below(200)), 'x'));
    set.write("includeinprinting", true);
    set.write("Flag", std::int64_t{100});
}

} // namespace

void fill_customer_files(files::FileSystem& disk, const std::string& data_folder, int rows) {
    Filler filler(disk, data_folder, rows);
    filler.fill("listings.mdb", [&](dao::Recordset& set, int) {
        write_follow_up(filler, set);
        set.write("listingaddress", filler.address());
        set.write("listingcity", std::string(filler.dice().pick(cities)));
        set.write("listingprice", 1000.0 * (80 + filler.dice().below(500)));
        set.write("datelisted", filler.around(2000, 0));
        set.write("dateexpires", filler.around(1800, 180));
    });
    filler.fill("prospect.mdb", [&](dao::Recordset& set, int) {
        write_follow_up(filler, set);
        set.write("cities", std::string(filler.dice().pick(cities)) + ", " + filler.dice().pick(cities));
        set.write("price", 1000.0 * (80 + filler.dice().below(500)));
        set.write("bedrooms", 1.0 + filler.dice().below(5));
        for (int feature = 0; feature < 22; ++feature)
            set.write("feature" + std::to_string(feature), filler.dice().below(4) == 0);
        set.write("interestlevel", std::string(filler.dice().pick(levels)));
        set.write("dateacquired", filler.around(2000, 0));
    });
    filler.fill("sold.mdb", [&](dao::Recordset& set, int) {
        write_follow_up(filler, set);
        set.write("soldaddress", filler.address());
        set.write("soldcity", std::string(filler.dice().pick(cities)));
        set.write("sellingprice", 1000.0 * (80 + filler.dice().below(500)));
        set.write("commission", 100.0 + filler.dice().below(2000000) / 100.0);
        set.write("expenses", filler.dice().below(100000) / 100.0);
        set.write("netcommission", 100.0 + filler.dice().below(2000000) / 100.0);
        set.write("agency" + std::to_string(filler.dice().below(3)), true);
        set.write("datesold", filler.around(3000, 0));
    });
    filler.fill("address.mdb", [&](dao::Recordset& set, int id) {
        set.write("businessname",
                  filler.dice().pick(lasts) + std::string(" & Co ") + std::to_string(id % 977));
    });
}

} // namespace tolva::bench
