#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/control.h"

namespace tolva::platform {

/// A bar chart: a bar for each row, named by its label. A row without a value has no bar.
class Chart : public Control {
  public:
    struct Bar {
        std::string label;
        std::optional<double> value;

        friend bool operator==(const Bar&, const Bar&) = default;
    };

    /// What the values are, for whoever writes them.
    enum class Values { counts, money };

    Chart(Screen& screen, std::string name, std::string title_, Values values_)
        : Control(screen, std::move(name)), title(std::move(title_)), values(values_) {}

    std::string title;
    const Values values;
    std::vector<Bar> bars;
};

} // namespace tolva::platform
