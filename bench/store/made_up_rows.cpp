#include "made_up_rows.h"

#include <array>
#include <random>

#include "basic/date.h"

namespace tolva::bench {

namespace {

constexpr std::array firsts = {"Ann",  "Bob",    "Carla", "Dirk", "Edna", "Frank", "Gilda", "Hank",
                               "Inga", "Jürgen", "Kasia", "Lars", "Mona", "Ned",   "Olga",  "Pete"};
constexpr std::array lasts = {"Abel",   "Baker", "Conrad", "Delgado",   "Evers",    "Fournier",
                              "Grant",  "Smith", "Ingram", "Goldsmith", "Kowalski", "Lindt",
                              "Müller", "Novak", "Ortiz",  "Pratt"};
constexpr std::array words = {"garden", "north", "corner", "brick", "lake", "view", "old", "maple",
                              "spring", "later", "called", "again", "two",  "cars", "yes", "school"};

std::string sentence(std::mt19937& chance, std::size_t length) {
    std::string text;
    while (text.size() < length) {
        text += words[chance() % words.size()];
        text += ' ';
    }
    text.resize(length);
    return text;
}

} // namespace

void write_made_up_row(dao::Recordset& set, int id) {
    std::mt19937 chance(static_cast<unsigned>(id));
    for (const jet::ColumnSchema& column : set.schema().columns) {
        switch (column.type) {
        case jet::ColumnType::text:
            if (column.name == "first" || column.name == "co_first")
                set.write(column.name, std::string(firsts[chance() % firsts.size()]));
            else if (column.name == "last" || column.name == "co_last")
                set.write(column.name, lasts[chance() % lasts.size()] + std::to_string(chance() % 1000));
            else
                set.write(column.name,
                          sentence(chance, std::min<std::size_t>(static_cast<std::size_t>(column.size),
                                                                 4 + chance() % 16)));
            break;
        case jet::ColumnType::memo:
            set.write(column.name, sentence(chance, 20 + chance() % 120));
            break;
        case jet::ColumnType::date:
            set.write(column.name,
                      basic::add_days(basic::make_date(2020, 1, 1), static_cast<int>(chance() % 2500)));
            break;
        case jet::ColumnType::boolean:
            set.write(column.name, chance() % 2 == 0);
            break;
        case jet::ColumnType::double_real:
            set.write(column.name, static_cast<double>(chance() % 1000000) / 4);
            break;
        default:
            set.write(column.name, std::int64_t{column.name == "id" ? id : static_cast<int>(chance() % 100)});
        }
    }
}

} // namespace tolva::bench
