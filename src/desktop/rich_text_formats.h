#pragma once

#include <QTextCharFormat>

#include "rtf/document.h"

namespace tolva::desktop {

/// The formats of a rich text in the toolkit's terms.
class RichTextFormats {
  public:
    RichTextFormats(const rtf::Document& source, double unit) : source_(source), unit_(unit) {}

    QTextCharFormat characters(const rtf::CharacterFormat& format) const;
    QTextCharFormat picture(const rtf::Picture& picture, const rtf::CharacterFormat& format) const;

  private:
    void set_font(QTextCharFormat& into, const rtf::CharacterFormat& format) const;

    const rtf::Document& source_;
    double unit_;
};

/// The colour of that index, or none where it is the automatic one.
QColor colour_of(const rtf::Document& source, int index);

} // namespace tolva::desktop
