#pragma once

#include <gtest/gtest.h>

#include "records/sold.h"
#include "support/desk.h"

namespace tolva::support {

/// A desk with the homes sold on show.
class SoldDesk : public testing::Test {
  protected:
    SoldDesk() {
        desk.start();
        desk.module().sold().show();
    }

    records::sold& screen() { return static_cast<records::sold&>(desk.module().sold()); }
    void add(int id, std::map<std::string, jet::Value> more) {
        std::map<std::string, jet::Value> values{
            {"id", std::int64_t{id}},
            {"first", std::string("F")},
            {"last", "L" + std::to_string(id)},
            {"soldcity", std::string("Utica")},
            {"datesold", basic::make_date(2026, 11, id)},
            {"datelastcontact", basic::make_date(2026, 1, 1)},
            {"sellingprice", 0.0},
            {"commission", 0.0},
            {"expenses", 0.0},
            {"netcommission", 0.0},
            {"Flag", std::int64_t{0}},
        };
        for (auto& [column, value] : more)
            values[column] = value;
        Desk::add(*desk.module().solddb, values);
    }
    std::vector<std::string> ids() { return Desk::ids(screen()); }
    Desk::Records stored() { return Desk::rows(*desk.module().solddb, "select * from [table]"); }
    void open(int row) { desk.runtime().click_row(screen().grid1, row); }

    Desk desk;
};

} // namespace tolva::support
