#include "desktop/text.h"

#include "basic/text.h"

namespace tolva::desktop {

QString to_qt(const std::string& text) {
    return QString::fromStdString(text);
}

std::string from_qt(const QString& text) {
    return text.toStdString();
}

QString to_widget_lines(const std::string& text) {
    QString lines = to_qt(text);
    lines.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    lines.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return lines;
}

std::string from_widget_lines(const QString& text) {
    QString lines = text;
    lines.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
    lines.replace(QChar::LineSeparator, QLatin1Char('\n'));
    lines.replace(QLatin1String("\n"), QLatin1String("\r\n"));
    return from_qt(lines);
}

QString without_access_key(const std::string& caption) {
    QString plain;
    const QString marked = to_qt(caption);
    for (qsizetype at = 0; at < marked.size(); ++at) {
        if (marked[at] == QLatin1Char('&') && ++at == marked.size())
            break;
        plain += marked[at];
    }
    return plain;
}

int widget_position(const std::string& text, std::size_t position, bool lines) {
    const std::string before = basic::left(text, position);
    return static_cast<int>((lines ? to_widget_lines(before) : to_qt(before)).size());
}

} // namespace tolva::desktop
