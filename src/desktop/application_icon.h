#pragma once

#include <QIcon>

namespace tolva::desktop {

/// The program's sign, a house with a bell, drawn sharp in every size that a desktop asks for.
QIcon application_icon();

} // namespace tolva::desktop
