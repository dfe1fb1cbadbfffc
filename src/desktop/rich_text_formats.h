#pragma once

#include <QStringList>
#include <QTextCharFormat>
#include <vector>

#include "rtf/document.h"

namespace tolva::desktop {

/// The formats of a rich text in the toolkit's terms.
class RichTextFormats {
  public:
    RichTextFormats(const rtf::Document& source, double unit) : source_(source), unit_(unit) {}

    QTextCharFormat characters(const rtf::CharacterFormat& format) const;
    /// Of the letters that small capitals stand for; other characters keep the format's own.
    QTextCharFormat small_capitals(const rtf::CharacterFormat& format) const;
    QTextCharFormat picture(const rtf::Picture& picture, const rtf::CharacterFormat& format) const;

  private:
    /// What a font of the source's becomes on this machine.
    struct ShownFont {
        QStringList families;
        bool joins_namelessly = false;
    };

    void set_font(QTextCharFormat& into, const rtf::CharacterFormat& format) const;
    const ShownFont& shown_font(std::size_t font) const;

    const rtf::Document& source_;
    double unit_;
    mutable std::vector<ShownFont> shown_fonts_;
};

/// The colour of that index, or none where it is the automatic one.
QColor colour_of(const rtf::Document& source, int index);

} // namespace tolva::desktop
