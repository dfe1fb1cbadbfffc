#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QIcon>
#include <QPixmap>
#include <array>
#include <cstdint>
#include <cstdio>
#include <vector>

#include "desktop/application_icon.h"

namespace {

QByteArray png(const QIcon& icon, int pixels) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    icon.pixmap(pixels, pixels).save(&buffer, "PNG");
    return bytes;
}

void put(QByteArray& bytes, std::uint32_t value, int size) {
    for (int i = 0; i < size; ++i)
        bytes.append(static_cast<char>(value >> (8 * i)));
}

/// A Windows icon file: a directory of the pictures, then each as PNG, the way icons are kept since Vista.
QByteArray windows_icon(const QIcon& icon) {
    constexpr std::array sizes = {16, 24, 32, 48, 64, 256};
    constexpr std::uint32_t head = 6;
    constexpr std::uint32_t entry = 16;
    QByteArray directory;
    put(directory, 0, 2);
    put(directory, 1, 2); // an icon, not a cursor
    put(directory, sizes.size(), 2);
    QByteArray pictures;
    for (const int pixels : sizes) {
        const QByteArray picture = png(icon, pixels);
        const std::uint32_t side = pixels < 256 ? static_cast<std::uint32_t>(pixels) : 0; // 0 stands for 256
        put(directory, side, 1);
        put(directory, side, 1);
        put(directory, 0, 2); // no palette
        put(directory, 1, 2);
        put(directory, 32, 2);
        put(directory, static_cast<std::uint32_t>(picture.size()), 4);
        put(directory, head + entry * sizes.size() + static_cast<std::uint32_t>(pictures.size()), 4);
        pictures += picture;
    }
    return directory + pictures;
}

bool write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
}

} // namespace

/// tolva-icon FOLDER: writes the program's icon as tolva.ico (Windows) and below hicolor/ in the sizes that
/// Linux desktops look for, in their own folders.
int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 2) {
        std::fputs("usage: tolva-icon FOLDER\n", stderr);
        return 2;
    }
    const QIcon icon = tolva::desktop::application_icon();
    const QString folder = arguments.at(1);
    bool written = write(folder + QStringLiteral("/tolva.ico"), windows_icon(icon));
    for (const int pixels : {16, 24, 32, 48, 64, 128, 256}) {
        const QString size = folder + QStringLiteral("/hicolor/%1x%1/apps").arg(pixels);
        written =
            written && QDir().mkpath(size) && write(size + QStringLiteral("/tolva.png"), png(icon, pixels));
    }
    if (!written) {
        std::fprintf(stderr, "tolva-icon: %s cannot be written to\n", qPrintable(folder));
        return 1;
    }
    return 0;
}
