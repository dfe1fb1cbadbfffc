#pragma once

#include <optional>

#include "module/module.h"
#include "platform/chart.h"

namespace tolva::analysis {

/// The agent's closed sales by month: how many, the gross commission, the prices.
class graph : public platform::Screen {
  public:
    explicit graph(module::Module& module);

    platform::Frame Frame1{*this, "Frame1", "Choose Beginning and Ending Month and Year"};
    platform::ComboBox mon1{*this, "mon1", platform::ComboBox::Text::from_list};
    platform::TextBox year1{*this, "year1"};
    platform::ComboBox mon2{*this, "mon2", platform::ComboBox::Text::from_list};
    platform::TextBox year2{*this, "year2"};

    /// The last one keeps the title of the one before; the captions over them tell them apart.
    platform::Chart chart1{*this, "chart1", "Units Sold", platform::Chart::Values::counts};
    platform::Chart chart2{*this, "chart2", "Money Made", platform::Chart::Values::money};
    platform::Chart chart3{*this, "chart3", "Money Made", platform::Chart::Values::money};

    platform::Button Command1{*this, "Command1", "Create &Graphs"};
    platform::Button Command2{*this, "Command2", "&Print Graphs"};
    platform::Button Command3{*this, "Command3", "E&XIT"};

    void on_load() override;
    void on_unload() override;

  private:
    void Command1_Click();
    void Command2_Click();

    module::Module& module_;
};

} // namespace tolva::analysis
