// How the texts of a client window stand to each other and to the lines around them.
#include <gtest/gtest.h>

#include <QGroupBox>
#include <QImage>
#include <QLabel>

#include "frmClient_fixture.h"

namespace client_test {
namespace {

const char* const Modes[] = {"cmdSmall", "cmdMedium", "cmdWide", "cmdMeter", "cmdFlow"};

// Whether all pixels of these columns of a picture are alike.
bool IsBare(const QImage& picture, int from, int count) {
    const QRgb ground = picture.pixel(from, 0);
    for (int x = from; x < from + count; ++x) {
        for (int y = 0; y < picture.height(); ++y) {
            if (picture.pixel(x, y) != ground) {
                return false;
            }
        }
    }
    return true;
}

class Grid : public ClientFormTest {
 protected:
    void GiveLongReadings() {
        LoggerRecord& site = console.Logger.Settings;
        for (std::size_t i = 0; i < 10; ++i) {
            site.EngUnits[i] = "Cubic Ft";
            site.DecPlaces[i] = 6;
        }
        site.UpperLimit.fill(100);
        site.DisplayTop.fill(100);
        site.PulseUnit = {0.1, 0.1};
        site.EngUnits[0] = "Meters";
    }
};

TEST_F(Grid, ChannelsThatTheLoggerDoesNotHaveAreGrey) {
    console.Logger.Settings = FreshLogger(5, 1);
    const auto window = Open();
    EXPECT_TRUE(Find(*window, "lblData(7)")->isEnabled()) << "nothing is known yet";
    ASSERT_TRUE(window->GetSettings());
    for (int channel = 0; channel < 8; ++channel) {
        const std::string number = "(" + std::to_string(channel) + ")";
        for (const char* name : {"lblData", "lblData2", "fraMeter", "lblValue", "lblUnits"}) {
            EXPECT_EQ(Find(*window, name + number)->isEnabled(), channel < 5) << name << number;
        }
    }
    for (const char* name : {"lblData(8)", "lblData2(8)", "lblPulse3(0)", "lblPulse2(0)"}) {
        EXPECT_TRUE(Find(*window, name)->isEnabled()) << name;
    }
    for (const char* name : {"lblData(9)", "lblData2(9)", "lblPulse3(1)", "lblPulse2(1)"}) {
        EXPECT_FALSE(Find(*window, name)->isEnabled()) << name;
    }
}

TEST_F(Grid, FlowAndVelocityAreNotGreyInThePlacesOfChannelsThatAreMissing) {
    const auto window = Open();
    ASSERT_TRUE(window->GetSettings());
    ASSERT_FALSE(Find(*window, "fraMeter(3)")->isEnabled());
    Click(*window, "cmdFlow");
    EXPECT_TRUE(Find(*window, "fraMeter(3)")->isEnabled());
    EXPECT_TRUE(Find(*window, "fraMeter(4)")->isEnabled());
    Click(*window, "cmdMeter");
    EXPECT_FALSE(Find(*window, "fraMeter(3)")->isEnabled());
}

TEST_F(Grid, NoLineOfAFrameRunsThroughTheFigures) {
    const auto window = Open();
    Click(*window, "cmdMeter");
    const QImage frame = Find(*window, "fraMeter(0)")->grab().toImage();
    for (const char* name : {"lblValue(0)", "lblUnits(0)", "lblMax(0)", "lblHistory(0)"}) {
        const auto* label = Find<QLabel>(*window, name);
        ASSERT_EQ(FromQt(label->text()).find_first_of("123456789"), std::string::npos);
        // Below the foot of the title, which the first of them may touch.
        const QRect place = label->geometry().adjusted(0, 2, 0, 0);
        const QImage behind = frame.copy(place);
        if (label->text().isEmpty()) {
            EXPECT_TRUE(IsBare(behind, 0, behind.width())) << name;
        }
    }
}

TEST_F(Grid, NoTextTouchesItsNeighbour) {
    GiveLongReadings();
    const auto window = Open();
    ASSERT_TRUE(window->GetSettings());
    for (const char* mode : Modes) {
        Click(*window, mode);
        Sample(*window, {65535, 65535, 65535, 0, 0, 0, 0, 0, 65535, 65535});
        for (QLabel* label : window->findChildren<QLabel*>()) {
            if (!label->isVisible() || label->text().isEmpty()) {
                continue;
            }
            const QImage picture = label->grab().toImage();
            const std::string where = FromQt(label->objectName()) + " in " + mode;
            if ((label->alignment() & Qt::AlignRight) == 0) {
                EXPECT_TRUE(IsBare(picture, picture.width() - 2, 2)) << where;
            }
            if ((label->alignment() & Qt::AlignLeft) == 0) {
                EXPECT_TRUE(IsBare(picture, 0, 2)) << where;
            }
        }
    }
}

TEST_F(Grid, ReadingsOfTheWideViewStandOnOneLine) {
    GiveLongReadings();
    console.Logger.Settings.DecPlaces[1] = 0;
    const auto window = Open();
    ASSERT_TRUE(window->GetSettings());
    Sample(*window, {65535, 65535, 65535, 0, 0, 0, 0, 0, 65535, 65535});
    Click(*window, "cmdWide");
    std::vector<int> sizes;
    for (const int channel : {0, 1, 2, 8, 9}) {
        const auto* label = Find<QLabel>(*window, "lblData2(" + std::to_string(channel) + ")");
        sizes.push_back(label->font().pixelSize());
        ASSERT_TRUE((label->alignment() & Qt::AlignTop) != 0);
        EXPECT_EQ(label->contentsMargins().top() + label->fontMetrics().ascent(),
                  Find<QLabel>(*window, "lblData2(1)")->contentsMargins().top() +
                      Find<QLabel>(*window, "lblData2(1)")->fontMetrics().ascent())
            << channel;
    }
    EXPECT_NE(sizes[0], sizes[1]) << "of one size they could not but stand so";
}

TEST_F(Grid, ReadingsAndAlarmsBelowTheBarsLookAlike) {
    const auto window = Open();
    ASSERT_TRUE(window->GetSettings());
    Click(*window, "cmdMeter");
    Sample(*window, {0, 0, 0, 0, 0, 0, 0, 0, 5, 6});
    const QFont alarm = Find(*window, "lblAlarm2(0)")->font();
    EXPECT_EQ(Find(*window, "lblPulse2(0)")->font().pixelSize(), alarm.pixelSize());
    EXPECT_EQ(Find(*window, "lblPulse2(1)")->font().bold(), alarm.bold());
}

TEST_F(Grid, EveryHeadingOfTheFlowParametersLooksAlike) {
    console.Logger.Settings.FlowMode = 2;
    const auto window = Open();
    ASSERT_TRUE(window->GetSettings());
    Click(*window, "cmdFlow");
    const QFont heading = Find(*window, "lblOffset")->font();
    for (const char* name : {"lblFWT", "lblFlowMode2"}) {
        EXPECT_EQ(Find(*window, name)->font().bold(), heading.bold()) << name;
        EXPECT_EQ(Find(*window, name)->font().pixelSize(), heading.pixelSize()) << name;
    }
    EXPECT_NE(Find(*window, "lblFWT2")->font().bold(), heading.bold());
}

}  // namespace
}  // namespace client_test
