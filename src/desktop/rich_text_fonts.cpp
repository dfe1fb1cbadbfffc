#include "desktop/rich_text_fonts.h"

#include <QFontInfo>
#include <QGlyphRun>
#include <QRawFont>
#include <QTextLayout>
#include <QtEndian>
#include <algorithm>

#include "desktop/text.h"
#include "rtf/symbol_font.h"

namespace tolva::desktop {

namespace {

struct Twin {
    const char* name;
    const char* twin;
};

/// Free fonts whose letters are as wide as those of the font.
constexpr Twin twins[] = {
    {"Arial", "Liberation Sans"},
    {"Helvetica", "Liberation Sans"},
    {"Times New Roman", "Liberation Serif"},
    {"Times", "Liberation Serif"},
    {"Courier New", "Liberation Mono"},
    {"Courier", "Liberation Mono"},
    {"Arial Narrow", "Liberation Sans Narrow"},
    {"Calibri", "Carlito"},
    {"Cambria", "Caladea"},
    {"Georgia", "Gelasio"},
    {"Verdana", "DejaVu Sans"},
};

/// The one of the three that every machine has, if under another name, by what the source says of the font
/// or, where it says nothing, by the font's name.
const char* stand_in(const rtf::Font& font, const QString& name) {
    const auto says = [&name](const char* word) {
        return name.contains(QLatin1String(word), Qt::CaseInsensitive);
    };
    switch (font.family) {
    case rtf::Font::Family::roman:
        return "Times New Roman";
    case rtf::Font::Family::modern:
        return "Courier New";
    case rtf::Font::Family::unknown:
        if (says("courier") || says("mono"))
            return "Courier New";
        if (says("times") || says("roman") || (says("serif") && !says("sans")))
            return "Times New Roman";
        return "Arial";
    default:
        return "Arial";
    }
}

/// Asked of the toolkit's fonts in use, as its list of all fonts takes long to search.
bool is_installed(const QString& family) {
    return QFontInfo(QFont(QStringList(family))).family().compare(family, Qt::CaseInsensitive) == 0;
}

/// A number of two bytes in a font's table, or 0 behind its end.
int number_at(const QByteArray& table, qsizetype at) {
    return at + 2 <= table.size() ? qFromBigEndian<qint16>(table.constData() + at) : 0;
}

} // namespace

QStringList families_for(const rtf::Font& font) {
    const bool is_mapped = font.charset == 2 && !rtf::symbol_glyphs(font.name).empty();
    const QString name = to_qt(font.name);
    QStringList families;
    const auto add = [&families](const QString& family) {
        if (!families.contains(family) && is_installed(family))
            families += family;
    };
    // What was read from a symbol font's bytes are characters that the font itself may not know.
    if (is_mapped)
        add(QStringLiteral("OpenSymbol"));
    else
        add(name);
    if (!font.alternative.empty())
        add(to_qt(font.alternative));
    for (const Twin& each : twins)
        if (name.compare(QLatin1String(each.name), Qt::CaseInsensitive) == 0)
            add(QString::fromLatin1(each.twin));
    families += QString::fromLatin1(stand_in(font, name));
    if (is_mapped)
        add(name);
    return families;
}

bool joins_namelessly(const QStringList& families) {
    const QString letters = QStringLiteral("ti tt ft tti fti");
    QTextLayout layout(letters, QFont(families));
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    for (const QGlyphRun& run : layout.glyphRuns()) {
        const QList<quint32> named = run.rawFont().glyphIndexesForString(letters);
        for (const quint32 glyph : run.glyphIndexes())
            if (!named.contains(glyph))
                return true;
    }
    return false;
}

double line_gap_share(const QFont& font) {
    // The toolkit takes the line gap of one table and, unless the font asks for other ones, ascent and
    // descent of another, where they're larger.
    constexpr qsizetype ascent = 4, descent = 6, gap = 8;
    constexpr qsizetype selection = 62, window_ascent = 74, window_descent = 76;
    constexpr int use_other_ones = 0x80;
    const QRawFont raw = QRawFont::fromFont(font);
    const QByteArray lines = raw.fontTable("hhea"), window = raw.fontTable("OS/2");
    const int line_gap = number_at(lines, gap);
    if (line_gap <= 0 || (number_at(window, selection) & use_other_ones))
        return 1;
    const int within = number_at(window, window_ascent) + number_at(window, window_descent) -
                       (number_at(lines, ascent) - number_at(lines, descent));
    return 1 - std::clamp(static_cast<double>(within) / line_gap, 0.0, 1.0);
}

} // namespace tolva::desktop
