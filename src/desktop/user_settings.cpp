#include "desktop/user_settings.h"

#include <QSettings>
#include <QStandardPaths>

namespace tolva::desktop {

namespace {

QString path_of(const QString& section, const QString& key) {
    return section + QLatin1Char('/') + key;
}

} // namespace

QString UserSettings::usual_file() {
    return QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) +
           QStringLiteral("/settings.ini");
}

QString UserSettings::value(const QString& section, const QString& key, const QString& otherwise) const {
    const QSettings settings(file_, QSettings::IniFormat);
    return settings.value(path_of(section, key), otherwise).toString();
}

void UserSettings::save(const QString& section, const QString& key, const QString& value) {
    QSettings settings(file_, QSettings::IniFormat);
    settings.setValue(path_of(section, key), value);
}

} // namespace tolva::desktop
