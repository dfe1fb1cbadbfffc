#pragma once

#include <QString>
#include <cstddef>
#include <string>

namespace tolva::desktop {

/// Texts on their way between the controls (UTF-8, lines ended by carriage return and line feed) and the
/// widgets (UTF-16, lines ended by line feed).
QString to_qt(const std::string& text);
std::string from_qt(const QString& text);

QString to_widget_lines(const std::string& text);
/// Takes a document's raw text, whose paragraphs a separator of its own parts, or text with line feeds.
std::string from_widget_lines(const QString& text);

/// A caption as a widget takes it that knows no access keys: "&&" becomes "&", a lone "&" goes.
QString without_access_key(const std::string& caption);

/// Where the character `position` of `text` (counted as the controls count: both parts of a line end) stands
/// in its widget text, counted as Qt counts.
int widget_position(const std::string& text, std::size_t position, bool lines);

} // namespace tolva::desktop
