#pragma once

#include "module/module.h"

namespace tolva::printing {

/// Mailing labels for the customers of a list, on sheets of thirty, from the label that is clicked on. Whose
/// list it is stands in `labelmode`.
class label : public platform::Screen {
  public:
    explicit label(module::Module& module);

    platform::ControlArray<platform::Button> Command1{*this, "Command1", module::Module::label_count};
    platform::Button Command2{*this, "Command2", "E&XIT without Printing Labels"};

  private:
    void print_from(int index);
    void print_labels(dao::Recordset& customers, bool test_inclusion, int index);

    module::Module& module_;
};

} // namespace tolva::printing
