#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "desktop/text.h"
#include "desktop/user_settings.h"
#include "support/program.h"

namespace tolva::desktop {
namespace {

TEST(TheUsersSettings, LieInATextFileOfSectionsAndKeys) {
    QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("settings.ini"));
    UserSettings(file).save(QStringLiteral("Settings"), QStringLiteral("MainLeft"), QStringLiteral("2345"));
    std::string content = support::file_content(from_qt(file));
    std::erase(content, '\r');
    EXPECT_EQ(content, "[Settings]\nMainLeft=2345\n");
    EXPECT_EQ(UserSettings(file).value(QStringLiteral("Settings"), QStringLiteral("MainLeft")),
              QStringLiteral("2345"));
}

TEST(TheUsersSettings, LieInTheRegistryWhereThereIsOne) {
#ifndef Q_OS_WIN
    GTEST_SKIP() << "only Windows has a registry";
#else
    EXPECT_EQ(UserSettings::usual_place(), QStringLiteral("HKEY_CURRENT_USER\\Software\\TOLVA"));
    // Beside what whoever runs this has there.
    const QString place = UserSettings::usual_place() + QStringLiteral(" tests");
    UserSettings(place).save(QStringLiteral("Settings"), QStringLiteral("MainLeft"), QStringLiteral("2345"));
    EXPECT_EQ(UserSettings(place).value(QStringLiteral("Settings"), QStringLiteral("MainLeft")),
              QStringLiteral("2345"));
    const auto query =
        support::run_program({"reg", "query", from_qt(place) + "\\Settings", "/v", "MainLeft"});
    EXPECT_EQ(query.code, 0) << query.err;
    EXPECT_NE(query.out.find("2345"), std::string::npos) << query.out;
    const auto removed = support::run_program({"reg", "delete", from_qt(place), "/f"});
    EXPECT_EQ(removed.code, 0) << removed.err;
    EXPECT_EQ(UserSettings(place).value(QStringLiteral("Settings"), QStringLiteral("MainLeft"),
                                        QStringLiteral("none")),
              QStringLiteral("none"));
#endif
}

} // namespace
} // namespace tolva::desktop
