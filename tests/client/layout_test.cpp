#include "client/layout.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

#include "client_fixture.h"

namespace client_test {
namespace {

struct ToldSize {
    std::int16_t Mode;
    std::int32_t Height;
    std::int32_t Width;
};

class LayoutOfMode : public ClientTest, public ::testing::WithParamInterface<ToldSize> {};

TEST_P(LayoutOfMode, SetsTheSizeOfTheWindow) {
    window.ChooseDisplay(GetParam().Mode);
    EXPECT_EQ(SizeOfMode(Shown().DisplayMode).Height, GetParam().Height);
    EXPECT_EQ(SizeOfMode(Shown().DisplayMode).Width, GetParam().Width);
    EXPECT_EQ(Shown().DisplayMode, GetParam().Mode);
}

// Place in the window of every visible control, by name, without those that stand on purpose
// beyond the edge.
std::map<std::string, TwipsBox> VisibleBoxes(ClientPanel panel) {
    std::map<std::string, TwipsBox> boxes;
    for (const ControlRow& row : ClientControls()) {
        int index = 0;
        for (const PanelControl& control : row.Of(panel)) {
            TwipsBox box = control.Place;
            for (const ControlRow& outer : ClientControls()) {
                if (outer.Name == row.Container) {
                    const auto around = outer.Of(panel);
                    const TwipsBox& frame =
                        around[around.size() == 1 ? 0 : static_cast<std::size_t>(index)].Place;
                    box.Left += frame.Left;
                    box.Top += frame.Top;
                }
            }
            if (control.Visible) {
                boxes[ControlName(row, index)] = box;
            }
            ++index;
        }
    }
    return boxes;
}

TEST_P(LayoutOfMode, LeavesNoControlBeyondTheContent) {
    Know(PipeLogger());
    window.ChooseDisplay(GetParam().Mode);
    const ModeSize& size = SizeOfMode(GetParam().Mode);
    for (const auto& [name, box] : VisibleBoxes(Shown())) {
        if (GetParam().Mode == DisplaySmall && box.Left >= 3240) {
            continue;
        }
        EXPECT_LE(box.Left + box.Width, size.ContentWidth) << name;
        EXPECT_LE(box.Top + box.Height, size.ContentHeight) << name;
    }
}

TEST_P(LayoutOfMode, LaysNoTextOverAnother) {
    Know(PipeLogger());
    window.ChooseDisplay(GetParam().Mode);
    const auto boxes = VisibleBoxes(Shown());
    const auto isText = [](const std::string& name) { return name.rfind("fra", 0) != 0; };
    for (const auto& [name, box] : boxes) {
        for (const auto& [other, place] : boxes) {
            const bool apart =
                box.Left + box.Width <= place.Left || place.Left + place.Width <= box.Left ||
                box.Top + box.Height <= place.Top || place.Top + place.Height <= box.Top;
            EXPECT_TRUE(apart || name == other || !isText(name) || !isText(other))
                << name << " over " << other;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Five, LayoutOfMode,
                         ::testing::Values(ToldSize{DisplaySmall, 6240, 3345},
                                           ToldSize{DisplayMedium, 6240, 5830},
                                           ToldSize{DisplayWide, 1600, 12650},
                                           ToldSize{DisplayMeter, 6600, 9615},
                                           ToldSize{DisplayFlow, 6600, 9615}),
                         [](const auto& told) { return "Mode" + std::to_string(told.param.Mode); });

class Layout : public ClientTest {
 protected:
    // Names of the visible controls, array members counted as one.
    std::set<std::string> Visible(std::int16_t mode) {
        window.ChooseDisplay(mode);
        std::set<std::string> names;
        ClientPanel panel = Shown();
        for (const ControlRow& row : ClientControls()) {
            for (const PanelControl& control : row.Of(panel)) {
                if (control.Visible) {
                    names.insert(std::string(row.Name));
                }
            }
        }
        return names;
    }
    static std::set<std::string> WithButtons(std::set<std::string> names) {
        names.insert({"cmdSmall", "cmdMedium", "cmdWide", "cmdMeter", "cmdFlow"});
        return names;
    }
    static std::set<std::string> Tall() {
        return WithButtons({"fraLoggerName", "lblLoggerName", "fraLoggerTime", "lblLoggerTime",
                            "fraSampleInterval", "lblSampleInterval", "fraWarmupTime", "lblWarmup",
                            "fraLoggingState", "lblLoggingState", "fraRecords", "lblRecords",
                            "fraAlarm", "lblAlarm", "lblData", "lblData2"});
    }
    static std::set<std::string> Meters() {
        return WithButtons({"lblLoggerName2",
                            "lblRecords2",
                            "lblLoggerTime3",
                            "lblLoggerTime2",
                            "lblSampleInterval3",
                            "lblSampleInterval2",
                            "lblWarmup3",
                            "lblWarmup2",
                            "lblLoggingState3",
                            "lblLoggingState2",
                            "lblPulse3",
                            "lblPulse2",
                            "lblAlarm3",
                            "lblAlarm2",
                            "fraMeter",
                            "fraColumn",
                            "lblMax",
                            "lblMin",
                            "lblUnits",
                            "lblValue",
                            "lblHistory"});
    }
};

TEST_F(Layout, StartsInTheMediumMode) {
    EXPECT_EQ(window.Record.DisplayMode, DisplayMedium);
    EXPECT_EQ(Shown().DisplayMode, DisplayMedium);
}

TEST_F(Layout, SmallAndMediumShowTheSameControls) {
    EXPECT_EQ(Visible(DisplaySmall), Tall());
    EXPECT_EQ(Visible(DisplayMedium), Tall());
}

TEST_F(Layout, TheInformationFramesStandBeyondTheEdgeOfTheSmallWindow) {
    window.ChooseDisplay(DisplaySmall);
    for (const PanelControl* frame :
         {&Shown().fraLoggerName, &Shown().fraLoggerTime, &Shown().fraSampleInterval,
          &Shown().fraWarmupTime, &Shown().fraLoggingState, &Shown().fraRecords,
          &Shown().fraAlarm[0], &Shown().fraAlarm[1]}) {
        EXPECT_EQ(frame->Place.Left, 3240);
    }
}

TEST_F(Layout, WideShowsReadingsAndThreeLabels) {
    EXPECT_EQ(Visible(DisplayWide), WithButtons({"lblData", "lblData2", "lblRecords2",
                                                 "lblLoggerTime2", "lblLoggerName2"}));
}

TEST_F(Layout, MeterShowsEightColumns) {
    EXPECT_EQ(Visible(DisplayMeter), Meters());
    EXPECT_TRUE(Shown().fraMeter[7].Visible);
    EXPECT_TRUE(Shown().lblHistory[7].Visible);
}

TEST_F(Layout, FlowShowsFiveColumnsAndTheFlowFrame) {
    auto names = Meters();
    names.insert("fraFlowMode");
    EXPECT_EQ(Visible(DisplayFlow), names);
    EXPECT_TRUE(Shown().fraMeter[4].Visible);
    EXPECT_FALSE(Shown().fraMeter[5].Visible);
    EXPECT_FALSE(Shown().lblValue[5].Visible);
}

TEST_F(Layout, TheFlowFrameStaysOnceItWasShown) {
    EXPECT_FALSE(Shown().fraFlowMode.Visible);
    window.ChooseDisplay(DisplayFlow);
    window.ChooseDisplay(DisplayMeter);
    EXPECT_TRUE(Shown().fraFlowMode.Visible);
    EXPECT_FALSE(Shown().lblFlowMode.Visible);
}

TEST_F(Layout, RowsStand360ApartWithThePulseRowsBelow) {
    window.ChooseDisplay(DisplaySmall);
    for (std::size_t i = 1; i < AllChannels; ++i) {
        const auto step = Shown().lblData[i].Place.Top - Shown().lblData[i - 1].Place.Top;
        if (i == AnalogChannels) {
            EXPECT_GE(step, 360);
        } else {
            EXPECT_EQ(step, 360) << i;
        }
        EXPECT_EQ(Shown().lblData[i].Place.Top, Shown().lblData2[i].Place.Top);
    }
}

TEST_F(Layout, WideColumnsStand1200Apart) {
    window.ChooseDisplay(DisplayWide);
    for (std::size_t i = 1; i < AllChannels; ++i) {
        EXPECT_EQ(Shown().lblData2[i].Place.Left - Shown().lblData2[i - 1].Place.Left, 1200);
        EXPECT_EQ(Shown().lblData[i].Place.Left - Shown().lblData[i - 1].Place.Left, 1200);
    }
}

TEST_F(Layout, BarColumnsStand1180Apart) {
    for (std::size_t i = 1; i < BarColumns; ++i) {
        EXPECT_EQ(Shown().fraMeter[i].Place.Left - Shown().fraMeter[i - 1].Place.Left, 1180);
    }
}

TEST_F(Layout, AFullBarLiesInsideItsColumn) {
    for (int i = 0; i < BarColumns; ++i) {
        const TwipsBox frame = Shown().fraMeter[static_cast<std::size_t>(i)].Place;
        const auto [column, bar] = PlacesOfColumn(Shown(), window.Record, i);
        EXPECT_EQ(column, (TwipsBox{frame.Left + 245, frame.Top + 1140, 700, 2110})) << i;
        EXPECT_EQ(bar, (TwipsBox{window.Record.BarLeft + i * 1180, frame.Top + window.Record.BarTop,
                                 window.Record.BarWidth, window.Record.BarHeight}))
            << i;
        EXPECT_GT(bar.Left, column.Left) << i;
        EXPECT_LT(bar.Left + bar.Width, column.Left + column.Width) << i;
        EXPECT_LT(bar.Top + bar.Height, column.Top + column.Height) << i;
    }
}

TEST_F(Layout, TheFlowFrameStandsRightOfColumnFourAtTheHeightOfTheColumns) {
    window.ChooseDisplay(DisplayFlow);
    const TwipsBox last = Shown().fraMeter[4].Place;
    EXPECT_GE(Shown().fraFlowMode.Place.Left, last.Left + last.Width);
    EXPECT_EQ(Shown().fraFlowMode.Place.Top, last.Top);
    EXPECT_EQ(Shown().fraFlowMode.Place.Height, last.Height);
}

TEST_F(Layout, AModeThatIsNoneChangesNothing) {
    const ClientPanel before = Shown();
    window.Record.DisplayMode = 5;
    window.Resize();
    EXPECT_EQ(Shown(), before);
}

TEST_F(Layout, ResizingLaysTheSameModeOutAgain) {
    window.ChooseDisplay(DisplayMeter);
    window.Resize();
    EXPECT_EQ(Shown().DisplayMode, DisplayMeter);
    EXPECT_EQ(window.Record.DisplayMode, DisplayMeter);
}

}  // namespace
}  // namespace client_test
