#include "platform/qt/text_qt.h"

#include <gtest/gtest.h>

#include "platform/qt/twips.h"

namespace {

TEST(TextQt, Utf8GoesThereAndBack) {
    const std::string text = "Caf\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x93\xA1 & C:\\x";
    EXPECT_EQ(FromQt(ToQt(text)), text);
    EXPECT_EQ(ToQt(text).size(), 16);
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
