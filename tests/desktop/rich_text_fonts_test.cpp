#include "desktop/rich_text_fonts.h"

#include <gtest/gtest.h>

#include <QFontDatabase>

namespace tolva::desktop {
namespace {

rtf::Font font_of(const char* name, rtf::Font::Family family = rtf::Font::Family::unknown) {
    rtf::Font font;
    font.name = name;
    font.family = family;
    return font;
}

bool has(const char* family) {
    return QFontDatabase::hasFamily(QString::fromLatin1(family));
}

TEST(ShownFonts, AreTheSourcesOwnWhereTheMachineHasThem) {
    ASSERT_TRUE(has("Liberation Mono"));
    EXPECT_EQ(families_for(font_of("Liberation Mono", rtf::Font::Family::roman)).front(),
              QStringLiteral("Liberation Mono"));
    rtf::Font font = font_of("No Such Font");
    font.alternative = "Liberation Mono";
    EXPECT_EQ(families_for(font).front(), QStringLiteral("Liberation Mono"));
}

TEST(ShownFonts, StandInByTheKindThatTheSourceTells) {
    using Family = rtf::Font::Family;
    EXPECT_EQ(families_for(font_of("No Such Font", Family::roman)), QStringList("Times New Roman"));
    EXPECT_EQ(families_for(font_of("No Such Font", Family::modern)), QStringList("Courier New"));
    EXPECT_EQ(families_for(font_of("No Such Font", Family::swiss)), QStringList("Arial"));
    EXPECT_EQ(families_for(font_of("No Such Font")), QStringList("Arial"));
    EXPECT_EQ(families_for(font_of("No Such Serif")), QStringList("Times New Roman"));
    EXPECT_EQ(families_for(font_of("No Such Sans Serif")), QStringList("Arial"));
    EXPECT_EQ(families_for(font_of("No Such Mono")), QStringList("Courier New"));
}

TEST(ShownFonts, StandInWithLettersOfTheSameWidth) {
    EXPECT_TRUE(families_for(font_of("Courier")).contains(QStringLiteral("Liberation Mono")));
    EXPECT_TRUE(families_for(font_of("times")).contains(QStringLiteral("Liberation Serif")));
    if (!has("Carlito"))
        GTEST_SKIP() << "Carlito, which stands in for Calibri, is not installed";
    EXPECT_EQ(families_for(font_of("Calibri")).at(has("Calibri") ? 1 : 0), QStringLiteral("Carlito"));
}

TEST(ShownFonts, OfSymbolsAreThoseThatKnowThemAsCharacters) {
    rtf::Font font = font_of("Symbol", rtf::Font::Family::roman);
    font.charset = 2;
    const QStringList families = families_for(font);
    EXPECT_NE(families.front(), QStringLiteral("Symbol"));
    EXPECT_TRUE(families.contains(QStringLiteral("Times New Roman")));
}

TEST(ShownFonts, TellWhetherTheyJoinLettersToSignsWithoutAName) {
    EXPECT_FALSE(joins_namelessly({QStringLiteral("Liberation Serif")}));
    if (!has("Carlito"))
        GTEST_SKIP() << "Carlito, which joins t and i, is not installed";
    EXPECT_TRUE(joins_namelessly({QStringLiteral("Carlito")}));
}

TEST(ShownFonts, AreAsFarApartAsTheyAsk) {
    EXPECT_EQ(line_gap_share(QFont(QStringLiteral("Liberation Serif"))), 1);
    if (!has("Carlito"))
        GTEST_SKIP() << "Carlito, whose letters' boxes hold the gap, is not installed";
    EXPECT_EQ(line_gap_share(QFont(QStringLiteral("Carlito"))), 0);
}

} // namespace
} // namespace tolva::desktop
