#include "desktop/user_settings.h"

#include <QSettings>
#include <QStandardPaths>

namespace tolva::desktop {

namespace {

QString path_of(const QString& section, const QString& key) {
    return section + QLatin1Char('/') + key;
}

QSettings::Format format_of(const QString& place) {
    return place.startsWith(QLatin1String("HKEY_")) ? QSettings::NativeFormat : QSettings::IniFormat;
}

} // namespace

QString UserSettings::usual_place() {
#ifdef Q_OS_WIN
    return QStringLiteral("HKEY_CURRENT_USER\\Software\\TOLVA");
#else
    return QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) +
           QStringLiteral("/settings.ini");
#endif
}

QString UserSettings::value(const QString& section, const QString& key, const QString& otherwise) const {
    const QSettings settings(place_, format_of(place_));
    return settings.value(path_of(section, key), otherwise).toString();
}

void UserSettings::save(const QString& section, const QString& key, const QString& value) {
    QSettings settings(place_, format_of(place_));
    settings.setValue(path_of(section, key), value);
}

} // namespace tolva::desktop
