#include "desktop/rich_text_formats.h"

#include <QImage>

#include "desktop/rich_text_document.h"
#include "desktop/rich_text_fonts.h"

namespace tolva::desktop {

namespace {

QTextCharFormat::UnderlineStyle underline_of(rtf::Underline underline) {
    switch (underline) {
    case rtf::Underline::none:
        return QTextCharFormat::NoUnderline;
    case rtf::Underline::dotted:
    case rtf::Underline::thick_dotted:
        return QTextCharFormat::DotLine;
    case rtf::Underline::dashed:
    case rtf::Underline::long_dash:
    case rtf::Underline::thick_dashed:
    case rtf::Underline::thick_long_dash:
        return QTextCharFormat::DashUnderline;
    case rtf::Underline::dash_dot:
    case rtf::Underline::thick_dash_dot:
        return QTextCharFormat::DashDotLine;
    case rtf::Underline::dash_dot_dot:
    case rtf::Underline::thick_dash_dot_dot:
        return QTextCharFormat::DashDotDotLine;
    case rtf::Underline::wave:
    case rtf::Underline::heavy_wave:
    case rtf::Underline::double_wave:
        return QTextCharFormat::WaveUnderline;
    default:
        return QTextCharFormat::SingleUnderline;
    }
}

QImage image_of(const rtf::Picture& picture) {
    if (picture.kind != rtf::PictureKind::png && picture.kind != rtf::PictureKind::jpeg)
        return {};
    // By what the bytes are, as sources mix the two up; but nothing else that the toolkit would know how to
    // read.
    const char* const format = picture.bytes.starts_with("\x89PNG")    ? "PNG"
                               : picture.bytes.starts_with("\xFF\xD8") ? "JPEG"
                                                                       : nullptr;
    if (!format)
        return {};
    QImage image;
    image.loadFromData(QByteArrayView(picture.bytes.data(), static_cast<qsizetype>(picture.bytes.size())),
                       format);
    const bool cropped = picture.crop_left || picture.crop_right || picture.crop_top || picture.crop_bottom;
    if (image.isNull() || !cropped || picture.goal_width <= 0 || picture.goal_height <= 0)
        return image;
    const double across = static_cast<double>(image.width()) / picture.goal_width;
    const double down = static_cast<double>(image.height()) / picture.goal_height;
    const QRectF rest =
        QRectF(0, 0, picture.goal_width, picture.goal_height)
            .adjusted(picture.crop_left, picture.crop_top, -picture.crop_right, -picture.crop_bottom);
    return image.copy(QRectF(rest.x() * across, rest.y() * down, rest.width() * across, rest.height() * down)
                          .toRect()
                          .intersected(image.rect()));
}

} // namespace

QColor colour_of(const rtf::Document& source, int index) {
    if (index < 0 || static_cast<std::size_t>(index) >= source.colours.size())
        return {};
    const rtf::Colour& colour = source.colours[static_cast<std::size_t>(index)];
    return colour.automatic ? QColor() : QColor(colour.red, colour.green, colour.blue);
}

/// Found once for each font: a paragraph may have many formats.
const RichTextFormats::ShownFont& RichTextFormats::shown_font(std::size_t font) const {
    shown_fonts_.resize(source_.fonts.size());
    ShownFont& shown = shown_fonts_[font];
    if (shown.families.isEmpty()) {
        shown.families = families_for(source_.fonts[font]);
        shown.joins_namelessly = joins_namelessly(shown.families);
    }
    return shown;
}

void RichTextFormats::set_font(QTextCharFormat& into, const rtf::CharacterFormat& format) const {
    const std::size_t index = static_cast<std::size_t>(format.font);
    const ShownFont& shown = shown_font(index < source_.fonts.size() ? index : 0);
    into.setFontFamilies(shown.families);
    into.setFontPointSize(std::max(format.half_points / 2.0, 0.5));
    into.setFontHintingPreference(QFont::PreferNoHinting);
    into.setFontKerning(format.kerning == rtf::CharacterFormat::untold ||
                        (format.kerning > 0 && format.half_points >= format.kerning));
    if (format.bold)
        into.setFontWeight(QFont::Bold);
    if (format.italic)
        into.setFontItalic(true);
    if (format.strike || format.double_strike)
        into.setFontStrikeOut(true);
    if (format.caps)
        into.setFontCapitalization(QFont::AllUppercase);
    // The least spacing that there is keeps the toolkit from joining letters.
    constexpr double apart = 1.0 / 64;
    if (format.letter_spacing != 0 || shown.joins_namelessly) {
        into.setFontLetterSpacingType(QFont::AbsoluteSpacing);
        into.setFontLetterSpacing(format.letter_spacing != 0 ? format.letter_spacing * unit_ : apart);
    }
}

QTextCharFormat RichTextFormats::characters(const rtf::CharacterFormat& format) const {
    QTextCharFormat into;
    set_font(into, format);
    if (format.underline != rtf::Underline::none)
        into.setUnderlineStyle(underline_of(format.underline));
    if (format.script != rtf::Script::baseline)
        into.setVerticalAlignment(format.script == rtf::Script::superscript
                                      ? QTextCharFormat::AlignSuperScript
                                      : QTextCharFormat::AlignSubScript);
    if (format.raise != 0 && format.half_points > 0) {
        // The toolkit wants hundredths of the font's height, which is a little more than its size.
        constexpr double height_by_size = 1.15;
        into.setBaselineOffset(100.0 * format.raise / (format.half_points * height_by_size));
    }
    if (const QColor ink = colour_of(source_, format.colour); ink.isValid())
        into.setForeground(ink);
    const int ground = format.highlight != 0 ? format.highlight : format.background;
    if (const QColor colour = colour_of(source_, ground); ground != 0 && colour.isValid())
        into.setBackground(colour);
    return into;
}

QTextCharFormat RichTextFormats::small_capitals(const rtf::CharacterFormat& format) const {
    constexpr double by_capital = 0.8;
    QTextCharFormat into = characters(format);
    into.setFontCapitalization(QFont::AllUppercase);
    into.setFontPointSize(by_capital * into.fontPointSize());
    return into;
}

QTextCharFormat RichTextFormats::picture(const rtf::Picture& picture,
                                         const rtf::CharacterFormat& format) const {
    QTextCharFormat into = characters(format);
    into.setObjectType(QTextFormat::ImageObject);
    into.setProperty(picture_width, picture.shown_width());
    into.setProperty(picture_height, picture.shown_height());
    into.setProperty(picture_image, QVariant::fromValue(image_of(picture)));
    return into;
}

} // namespace tolva::desktop
