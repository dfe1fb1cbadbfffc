#pragma once

#include <array>
#include <string>

#include "module/module.h"

namespace tolva::printing {

/// How a grid is printed: where its six columns begin, in millimetres, and the texts over them; empty texts
/// are taken from the grid's heading.
struct ListLayout {
    static constexpr int columns = 6;

    std::array<double, columns> x;
    std::array<std::string, columns> captions;
};

/// The customer screens' layout.
inline const ListLayout customer_list{{20, 70, 120, 165, 195, 220}, {}};
inline const ListLayout address_list{
    {20, 60, 100, 140, 180, 210},
    {"Name", "Business Name", "Address", "City State Zip", "Home Phone", "Work Phone"}};

/// Prints what the grid shows as a landscape table, the heading repeated on each page. It asks "Print List?",
/// and prints whatever the answer is: meant. `job_name` names the job in the queue.
void print_list(module::Module& module, platform::Grid& grid, const ListLayout& layout,
                const std::string& job_name);

} // namespace tolva::printing
