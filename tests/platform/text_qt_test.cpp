#include "platform/qt/text_qt.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <QList>
#include <array>
#include <random>

#include "common/characters.h"
#include "platform/qt/twips.h"

namespace {

TEST(TextQt, Utf8GoesThereAndBack) {
    const std::string text = "Caf\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x93\xA1 & C:\\x";
    EXPECT_EQ(FromQt(ToQt(text)), text);
    EXPECT_EQ(ToQt(text).size(), 16);
}

// The limits of the logger's fields are counted in the logic, and in the fields of the dialogs.
TEST(TextQt, CountsAndCutsTheCharactersThatTheLogicDoes) {
    std::mt19937 random(12);
    for (int round = 0; round < 20000; ++round) {
        std::string text("x");  // a mark of byte order would be none behind it
        for (int i = 0; i < 6; ++i) {
            constexpr std::array<unsigned char, 12> bytes{'a',  0x80, 0x8F, 0xA0, 0xB0, 0xBF,
                                                          0xC2, 0xC3, 0xE0, 0xED, 0xF0, 0xF4};
            text += static_cast<char>(bytes[random() % bytes.size()]);
        }
        const QString shown = ToQt(text);
        ASSERT_EQ(static_cast<std::size_t>(shown.toUcs4().size()), CountCharacters(text));
        QByteArray latin;
        for (const uint code : shown.toUcs4()) {
            latin += code <= 0xFF ? static_cast<char>(code) : ' ';
        }
        ASSERT_EQ(latin.toStdString(), ToLatin1(text));
    }
}

TEST(TextQt, EmptyAndZeroBytesGoThereAndBack) {
    EXPECT_EQ(FromQt(ToQt("")), "");
    const std::string zero("a\0b", 3);
    EXPECT_EQ(FromQt(ToQt(zero)), zero);
}

TEST(TextQt, CaptionsShowAmpersandsAsTheyAre) {
    EXPECT_EQ(EscapedAmpersands("A & B && C"), QStringLiteral("A && B &&&& C"));
    EXPECT_EQ(EscapedAmpersands("plain"), QStringLiteral("plain"));
}

TEST(TextQt, TitlesShowThePlaceOfTheMarkAsItIs) {
    EXPECT_EQ(EscapedTitle("a[*]b [*]"), QStringLiteral("a[*][*]b [*][*]"));
    EXPECT_EQ(EscapedTitle("plain [x]"), QStringLiteral("plain [x]"));
}

TEST(Twips, FifteenToAPixelRoundedToTheNearest) {
    EXPECT_EQ(PixelsOfTwips(0), 0);
    EXPECT_EQ(PixelsOfTwips(7), 0);
    EXPECT_EQ(PixelsOfTwips(8), 1);
    EXPECT_EQ(PixelsOfTwips(22), 1);
    EXPECT_EQ(PixelsOfTwips(23), 2);
    EXPECT_EQ(PixelsOfTwips(-7), 0);
    EXPECT_EQ(PixelsOfTwips(-8), -1);
    EXPECT_EQ(PixelsOfTwips(13400), 893);
    EXPECT_EQ(TwipsOfPixels(893), 13395);
}

}  // namespace
