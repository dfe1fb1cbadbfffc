#include "rtf/picture.h"

#include <algorithm>

#include "rtf/limits.h"

namespace tolva::rtf {

namespace {

/// Twips of a picture that only tells its own measure. Pixels count as those of a 96 dpi screen.
std::int64_t natural(PictureKind kind, int size) {
    const bool metafile = kind == PictureKind::enhanced_metafile || kind == PictureKind::metafile;
    return metafile ? std::int64_t{size} * 1440 / 2540 : std::int64_t{size} * 15;
}

int shown(PictureKind kind, int goal, int size, int scale, int cropped) {
    const std::int64_t whole = goal > 0 ? goal : natural(kind, size);
    const std::int64_t scaled = (whole - cropped) * (scale > 0 ? scale : 100) / 100;
    return static_cast<int>(std::clamp<std::int64_t>(scaled, 1, limits::measure));
}

} // namespace

bool has_kind_number(PictureKind kind) {
    return kind == PictureKind::metafile || kind == PictureKind::os2_metafile || kind == PictureKind::dib ||
           kind == PictureKind::bitmap;
}

int Picture::shown_width() const {
    return shown(kind, goal_width, width, scale_x, crop_left + crop_right);
}

int Picture::shown_height() const {
    return shown(kind, goal_height, height, scale_y, crop_top + crop_bottom);
}

} // namespace tolva::rtf
