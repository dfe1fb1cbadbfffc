#include "desktop/rich_text_formats.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QImage>

#include "desktop/rich_text_document.h"

namespace tolva::desktop {
namespace {

/// A picture of two by two pixels as a file of that format.
std::string picture_bytes(const char* format) {
    QImage image(2, 2, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    EXPECT_TRUE(image.save(&buffer, format));
    return bytes.toStdString();
}

bool is_seen(rtf::PictureKind kind, const std::string& bytes) {
    rtf::Picture picture;
    picture.kind = kind;
    picture.bytes = bytes;
    const rtf::Document document;
    return !RichTextFormats(document, 1)
                .picture(picture, {})
                .property(picture_image)
                .value<QImage>()
                .isNull();
}

TEST(Pictures, AreSeenWhicheverOfTheTwoKindsTheSourceCallsThem) {
    for (const char* format : {"PNG", "JPEG"}) {
        EXPECT_TRUE(is_seen(rtf::PictureKind::png, picture_bytes(format))) << format;
        EXPECT_TRUE(is_seen(rtf::PictureKind::jpeg, picture_bytes(format))) << format;
        EXPECT_FALSE(is_seen(rtf::PictureKind::dib, picture_bytes(format))) << format;
    }
}

TEST(Pictures, OfOtherFormatsAreNotReadUnderAFalseName) {
    EXPECT_FALSE(is_seen(rtf::PictureKind::png, picture_bytes("BMP")));
    EXPECT_FALSE(is_seen(rtf::PictureKind::jpeg, picture_bytes("XPM")));
    EXPECT_FALSE(is_seen(rtf::PictureKind::png, ""));
    EXPECT_FALSE(is_seen(rtf::PictureKind::png, "\x89PNG and no more"));
}

} // namespace
} // namespace tolva::desktop
