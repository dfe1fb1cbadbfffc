#pragma once

#include <cstdint>
#include <string>

namespace tolva::rtf {

enum class PictureKind : std::uint8_t {
    png,
    jpeg,
    enhanced_metafile,
    metafile,
    os2_metafile,
    mac,
    dib,
    bitmap
};

/// Whether the word that names the kind bears a number: the mapping mode of a metafile, the type of a bitmap.
bool has_kind_number(PictureKind kind);

/// A picture's file and how large it is to appear. PNG and JPEG are whole files; the other kinds are kept as
/// they came and appear as an empty frame of the right size.
struct Picture {
    PictureKind kind = PictureKind::png;
    /// The word's own number; 0 for a kind that has none.
    int kind_number = 0;
    std::string bytes;
    /// As the kind measures: pixels, or hundredths of a millimetre for a metafile. 0 when not told.
    int width = 0;
    int height = 0;
    /// Twips, ahead of scaling. 0 when not told.
    int goal_width = 0;
    int goal_height = 0;
    /// Per cent.
    int scale_x = 100;
    int scale_y = 100;
    /// Twips cut off each edge.
    int crop_left = 0;
    int crop_right = 0;
    int crop_top = 0;
    int crop_bottom = 0;
    /// Of a bitmap without a header of its own.
    int bits_per_pixel = 0;
    int planes = 0;
    int bytes_per_line = 0;

    /// Twips on paper, never below 1.
    int shown_width() const;
    int shown_height() const;

    friend bool operator==(const Picture&, const Picture&) = default;
};

} // namespace tolva::rtf
