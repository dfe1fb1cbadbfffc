#pragma once

#include <QIcon>
#include <QString>

namespace tolva::desktop {

/// The picture for a button of the word processor's tool bar, painted here for any size. An unknown key has
/// an empty sheet.
QIcon tool_icon(const QString& key);

} // namespace tolva::desktop
