#include "rtf/picture_reader.h"

#include <algorithm>
#include <utility>

namespace tolva::rtf {

namespace {

int Picture::*member_of(PictureWord word) {
    switch (word) {
    case PictureWord::width:
        return &Picture::width;
    case PictureWord::height:
        return &Picture::height;
    case PictureWord::goal_width:
        return &Picture::goal_width;
    case PictureWord::goal_height:
        return &Picture::goal_height;
    case PictureWord::scale_x:
        return &Picture::scale_x;
    case PictureWord::scale_y:
        return &Picture::scale_y;
    case PictureWord::crop_left:
        return &Picture::crop_left;
    case PictureWord::crop_right:
        return &Picture::crop_right;
    case PictureWord::crop_top:
        return &Picture::crop_top;
    case PictureWord::crop_bottom:
        return &Picture::crop_bottom;
    case PictureWord::bits_per_pixel:
        return &Picture::bits_per_pixel;
    case PictureWord::planes:
        return &Picture::planes;
    case PictureWord::bytes_per_line:
        return &Picture::bytes_per_line;
    default:
        return nullptr;
    }
}

} // namespace

void PictureReader::begin() {
    picture_ = {};
    half_byte_ = -1;
}

void PictureReader::word(PictureWord word, Parameter parameter) {
    constexpr int largest = 1000000;
    const int value = std::clamp(parameter.value, -largest, largest);
    if (int Picture::*const member = member_of(word)) {
        picture_.*member = value;
    } else {
        picture_.kind = static_cast<PictureKind>(word);
        picture_.kind_number = has_kind_number(picture_.kind) ? value : 0;
    }
}

void PictureReader::digits(std::string_view text) {
    for (const char character : text) {
        const int digit = hex_digit(static_cast<unsigned char>(character));
        if (digit < 0)
            continue;
        if (half_byte_ < 0) {
            half_byte_ = digit;
        } else {
            picture_.bytes += static_cast<char>(half_byte_ * 16 + digit);
            half_byte_ = -1;
        }
    }
}

void PictureReader::bytes(std::string_view bytes) {
    picture_.bytes += bytes;
}

std::shared_ptr<Inset> PictureReader::finish() {
    Picture picture = std::exchange(picture_, {});
    half_byte_ = -1;
    if (picture.bytes.empty())
        return nullptr;
    auto inset = std::make_shared<Inset>();
    inset->kind = Inset::Kind::picture;
    inset->picture = std::move(picture);
    return inset;
}

} // namespace tolva::rtf
