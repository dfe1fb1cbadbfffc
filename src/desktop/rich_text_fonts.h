#pragma once

#include <QFont>
#include <QStringList>

#include "rtf/document.h"

namespace tolva::desktop {

/// The families that show a source's font on this machine, the best first. One that the machine lacks is
/// never named ahead of its stand-in: the toolkit would put any font in its place.
QStringList families_for(const rtf::Font& font);

/// Whether the first of the families joins letters to signs that are no characters, as "ti" to one. Such text
/// can't be sought or copied from a printed file.
bool joins_namelessly(const QStringList& families);

/// How much of the font's line gap, as the toolkit tells it, stands between lines: fonts of the usual kind
/// have a part of it in their ascent and descent already.
double line_gap_share(const QFont& font);

} // namespace tolva::desktop
