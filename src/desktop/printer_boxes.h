#pragma once

#include <memory>
#include <string>

#include "desktop/print_target.h"
#include "platform/host.h"

class QWidget;

namespace tolva::desktop {

/// Asks what all printing goes to. False when it stays as it is.
bool ask_print_target(QWidget* behind, PrintTarget& target);

/// Asks where one job goes and what is printed, beginning with `target`. `device` is the printer set up for
/// it, or stays null when cancelled.
platform::PrintScope ask_print_job(QWidget* behind, const std::string& title, bool has_selection,
                                   const PrintTarget& target, std::unique_ptr<QPrinter>& device);

} // namespace tolva::desktop
