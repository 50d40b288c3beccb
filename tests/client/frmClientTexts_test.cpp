// How the texts of a client window take the room that their places have.
#include <gtest/gtest.h>

#include <QAccessible>
#include <QLabel>
#include <QTextDocument>

#include "client/frmClientText.h"
#include "frmClient_fixture.h"

namespace client_test {
namespace {

constexpr int LegiblePixels = 9;

const char* const InformationBoxes[] = {"lblLoggerName", "lblLoggerTime",   "lblSampleInterval",
                                        "lblWarmup",     "lblLoggingState", "lblRecords",
                                        "lblAlarm(0)",   "lblAlarm(1)"};

class Texts : public ClientFormTest {
 protected:
    static int PixelsOf(const frmClient& window, const std::string& name) {
        return Find<QLabel>(window, name)->font().pixelSize();
    }
    static std::string TipOf(const frmClient& window, const std::string& name) {
        QTextDocument tip;
        tip.setHtml(Find(window, name)->toolTip());
        return FromQt(tip.toPlainText());
    }
    static std::string NameForAReader(const frmClient& window, const std::string& name) {
        return FromQt(
            QAccessible::queryAccessibleInterface(Find(window, name))->text(QAccessible::Name));
    }
};

TEST_F(Texts, ALongReadingMakesNoOtherSmall) {
    LoggerRecord& site = console.Logger.Settings;
    site.EngUnits[1] = "Cubic Ft";
    site.UpperLimit[1] = 100000;
    site.DecPlaces[1] = 6;
    const auto window = Open();
    ASSERT_TRUE(window->GetSettings());
    Sample(*window, {32768, 0, 0});
    const int before = PixelsOf(*window, "lblData2(0)");
    Sample(*window, {32768, 65000, 0});
    EXPECT_EQ(PixelsOf(*window, "lblData2(0)"), before);
    EXPECT_LT(PixelsOf(*window, "lblData2(1)"), before);
    EXPECT_GE(PixelsOf(*window, "lblData2(1)"), LegiblePixels);
}

TEST_F(Texts, NoneIsSmallerThanCanBeReadInAnyMode) {
    LoggerRecord& site = console.Logger.Settings;
    site.LoggerName = std::string(32, 'W');
    for (std::size_t i = 0; i < 10; ++i) {
        site.EngUnits[i] = "WWWWWWWWW";
        site.DecPlaces[i] = 6;
    }
    const auto window = Open();
    ASSERT_TRUE(window->GetSettings());
    Sample(*window, {65535, 65535, 65535, 0, 0, 0, 0, 0, 65535, 65535});
    for (const char* mode : {"cmdSmall", "cmdMedium", "cmdWide", "cmdMeter", "cmdFlow"}) {
        Click(*window, mode);
        for (const QLabel* label : window->findChildren<QLabel*>()) {
            EXPECT_GE(label->font().pixelSize(), LegiblePixels)
                << FromQt(label->objectName()) << " in " << mode;
        }
    }
}

TEST_F(Texts, WhatIsCutIsToldWholeByTipAndReader) {
    console.Logger.Settings.LoggerName = "Outfall of the upper works, pipe";
    console.Logger.Settings.EngUnits[0] = "Megagals.";
    console.Logger.Settings.UpperLimit[0] = 999999;
    console.Logger.Settings.DecPlaces[0] = 6;
    const auto window = Open();
    ASSERT_TRUE(window->GetSettings());
    Sample(*window, {65535, 0, 0});
    const std::string reading = TextOf(Find(*window, "lblData2(0)"));
    ASSERT_GE(reading.size(), 20U) << reading;
    for (const std::string name : {"lblLoggerName", "lblData2(0)"}) {
        const std::string whole = TextOf(Find(*window, name));
        EXPECT_EQ(TipOf(*window, name), whole);
        EXPECT_EQ(NameForAReader(*window, name), whole);
        EXPECT_TRUE(static_cast<const frmClientText*>(Find<QLabel>(*window, name))->IsCut());
    }
    EXPECT_EQ(TipOf(*window, "lblLoggerTime"), "");
}

TEST_F(Texts, WhatIsCutEndsInsideItsPlace) {
    console.Logger.Settings.LoggerName = std::string(32, 'W');
    const auto window = Open();
    ASSERT_TRUE(window->GetSettings());
    const QImage picture = Find(*window, "lblLoggerName")->grab().toImage();
    const QRgb ground = picture.pixel(picture.width() - 1, 0);
    const auto highest = [&](int x) {
        int y = 0;
        while (y < picture.height() && picture.pixel(x, y) == ground) {
            ++y;
        }
        return y;
    };
    int last = picture.width() - 1;
    while (last > 0 && highest(last) == picture.height()) {
        --last;
    }
    ASSERT_LT(last, picture.width() - 1);
    EXPECT_GT(highest(last), picture.height() / 2) << "dots, and not half a letter";
}

TEST_F(Texts, TheBoxesOfInformationKeepOneSizeWhateverOneOfThemSays) {
    for (const std::string& name :
         {std::string("N"), std::string("North outfall, pipe 12"), std::string(32, 'W')}) {
        console.Logger.Settings.LoggerName = name;
        const auto window = Open();
        ASSERT_TRUE(window->GetSettings());
        const int size = PixelsOf(*window, "lblRecords");
        EXPECT_GE(size, LegiblePixels);
        for (const char* box : InformationBoxes) {
            EXPECT_EQ(PixelsOf(*window, box), size) << box << " beside " << name;
        }
    }
}

TEST_F(Texts, ANameThatHasToBeCutAnywayMakesTheOtherBoxesNotSmaller) {
    console.Logger.Settings.LoggerName = "N";
    const auto window = Open();
    ASSERT_TRUE(window->GetSettings());
    const int size = PixelsOf(*window, "lblRecords");
    console.Logger.Settings.LoggerName = std::string(32, 'W');
    ASSERT_TRUE(window->GetSettings());
    EXPECT_EQ(PixelsOf(*window, "lblRecords"), size);
}

}  // namespace
}  // namespace client_test
