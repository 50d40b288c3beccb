#include "client/flow_display.h"

#include <gtest/gtest.h>

#include "client_fixture.h"

namespace client_test {
namespace {

class FlowParameters : public ClientTest {
 protected:
    FlowParameters() { window.Record.DisplayMode = DisplayFlow; }

    void KnowMode(std::uint8_t mode) {
        LoggerState state = PipeLogger();
        state.FlowMode = mode;
        state.FlowDeviceName = "2 in. Parshall";
        Know(state);
    }
    [[nodiscard]] bool PipeShown() const {
        return Shown().lblPipeDiameter.Visible && Shown().lblPipeDiameter2.Visible &&
               Shown().lblSlope.Visible && Shown().lblSlope2.Visible &&
               Shown().lblRoughness.Visible && Shown().lblRoughness2.Visible;
    }
    [[nodiscard]] bool AnyPipeShown() const {
        return Shown().lblPipeDiameter.Visible || Shown().lblPipeDiameter2.Visible ||
               Shown().lblSlope.Visible || Shown().lblSlope2.Visible ||
               Shown().lblRoughness.Visible || Shown().lblRoughness2.Visible;
    }
};

TEST_F(FlowParameters, HeadingsAreThoseOfTheDesign) {
    EXPECT_EQ(Shown().lblFlowMode2.Text, "Flow Mode:");
    EXPECT_EQ(Shown().lblPipeDiameter.Text, "Pipe Diameter:");
    EXPECT_EQ(Shown().lblSlope.Text, "Slope:");
    EXPECT_EQ(Shown().lblRoughness.Text, "Roughness:");
    EXPECT_EQ(Shown().lblOffset.Text, "Level Offset:");
}

TEST_F(FlowParameters, NoFlowShowsItsNameAlone) {
    KnowMode(0);
    EXPECT_EQ(Shown().lblFlowMode.Text, " No Flow Calculation");
    EXPECT_TRUE(Shown().lblFlowMode.Visible);
    EXPECT_TRUE(Shown().lblFlowMode2.Visible);
    EXPECT_FALSE(Shown().lblFWT.Visible || Shown().lblFWT2.Visible);
    EXPECT_FALSE(Shown().lblOffset.Visible || Shown().lblOffset2.Visible);
    EXPECT_FALSE(AnyPipeShown());
}

TEST_F(FlowParameters, ManningShowsThePipe) {
    KnowMode(1);
    EXPECT_EQ(Shown().lblFlowMode.Text, " Manning's Equation");
    EXPECT_FALSE(Shown().lblFWT.Visible || Shown().lblFWT2.Visible);
    EXPECT_TRUE(Shown().lblOffset.Visible && Shown().lblOffset2.Visible);
    EXPECT_TRUE(PipeShown());
    EXPECT_EQ(Shown().lblRoughness2.Text, " 0.014");
    EXPECT_EQ(Shown().lblSlope2.Text, " 1 %");
}

struct Device {
    std::uint8_t Mode;
    const char* Name;
    const char* Heading;
};

class FlowDevice : public FlowParameters, public ::testing::WithParamInterface<Device> {};

TEST_P(FlowDevice, ShowsModeDeviceAndOffset) {
    KnowMode(GetParam().Mode);
    EXPECT_EQ(Shown().lblFlowMode.Text, GetParam().Name);
    EXPECT_EQ(Shown().lblFWT.Text, GetParam().Heading);
    EXPECT_EQ(Shown().lblFWT2.Text, " 2 in. Parshall");
    EXPECT_TRUE(Shown().lblFWT.Visible && Shown().lblFWT2.Visible);
    EXPECT_TRUE(Shown().lblOffset.Visible && Shown().lblOffset2.Visible);
    EXPECT_FALSE(AnyPipeShown());
}

INSTANTIATE_TEST_SUITE_P(Devices, FlowDevice,
                         ::testing::Values(Device{2, " Flume", "Flume Name:"},
                                           Device{3, " Weir", "Weir Name:"},
                                           Device{4, " Table Method", "Table Name:"}),
                         [](const auto& device) {
                             return "FlowMode" + std::to_string(device.param.Mode);
                         });

TEST_F(FlowParameters, ADiameterOfJustOneIsSingular) {
    LoggerState state = PipeLogger();
    state.ManningsD = 1;
    state.ManningsDType = 1;
    Know(state);
    EXPECT_EQ(Shown().lblPipeDiameter2.Text, " 1 Inch");
}

TEST_F(FlowParameters, AnOffsetOfZeroCentimetresReadsZeroCm) {
    LoggerState state = PipeLogger();
    state.LevelOffset = 0;
    state.LevelOffsetType = 3;
    Know(state);
    EXPECT_EQ(Shown().lblOffset2.Text, " 0 cm");
}

TEST_F(FlowParameters, ZeroFeetIsPlural) {
    LoggerState state = PipeLogger();
    state.LevelOffset = 0;
    state.LevelOffsetType = 0;
    Know(state);
    EXPECT_EQ(Shown().lblOffset2.Text, " 0 Feet");
}

TEST_F(FlowParameters, ASlopeThatIsNoPercentageIsTheBareNumber) {
    LoggerState state = PipeLogger();
    state.ManningsS = 0.0125;
    state.ManningsSType = 0;
    Know(state);
    EXPECT_EQ(Shown().lblSlope2.Text, " 0.0125");
}

TEST_F(FlowParameters, ASlopeCodeAboveOneShowsNoPercentSign) {
    LoggerState state = PipeLogger();
    state.ManningsSType = 2;
    Know(state);
    EXPECT_EQ(Shown().lblSlope2.Text, " 1");
}

TEST_F(FlowParameters, AreHiddenOutsideTheFlowMode) {
    KnowMode(1);
    window.ChooseDisplay(DisplayMeter);
    EXPECT_FALSE(Shown().lblFlowMode.Visible || Shown().lblFlowMode2.Visible);
    EXPECT_FALSE(AnyPipeShown());
}

TEST_F(FlowParameters, AreHiddenWithoutSettings) {
    KnowMode(1);
    window.Record.SettingsValid = False;
    window.UpdateFlowModeDisplay();
    EXPECT_FALSE(Shown().lblFlowMode.Visible || Shown().lblFlowMode2.Visible);
    EXPECT_FALSE(AnyPipeShown());
}

class FlowCheck : public ClientTest {
 protected:
    void Choose(const LoggerState& state) {
        Know(state);
        window.ChooseDisplay(DisplayFlow);
    }
    void ExpectRefused(const std::string& text) {
        ASSERT_EQ(console.Boxes().size(), 1U);
        const BoxContent& box = console.Boxes()[0];
        EXPECT_EQ(box.Text, text);
        EXPECT_EQ(box.Title, "Flow Mode Error");
        EXPECT_EQ(box.Icon, BoxIcon::Exclamation);
        EXPECT_EQ(box.Buttons, BoxButtons::Ok);
        EXPECT_EQ(window.Record.DisplayMode, DisplayMeter);
        EXPECT_EQ(Shown().DisplayMode, DisplayMeter);
        EXPECT_TRUE(Shown().fraMeter[7].Visible);
        EXPECT_EQ(surface.Repaints, 1);
    }
    static LoggerState WithUnits(const std::string& units) {
        LoggerState state = PipeLogger();
        state.EngUnits[0] = units;
        return state;
    }
};

TEST_F(FlowCheck, EightChannelsShowTheFirstBoxAndLandInTheMeterMode) {
    Choose(FreshLogger(8, 0));
    ExpectRefused(
        "This logger device is not suitable for Flow Display Mode.\n"
        "The logger must have 3 analog channels for Flow Display Mode\n"
        "and it has 8 channels.\n\n"
        "The display mode will be changed to the basic Bar Graph Display Mode.");
}

TEST_F(FlowCheck, OtherUnitsShowTheSecondBox) {
    Choose(WithUnits("%"));
    ExpectRefused(
        "For the flow calculations to be displayed, the units for the first analog\n"
        "channel must be Feet, Inches, Meters, or Cm.\n\n"
        "The display mode will be changed to the basic Bar Graph Display Mode.");
}

TEST_F(FlowCheck, TheShortFormOfFeetFailsThoughTheCalculationTakesIt) {
    Choose(WithUnits("ft"));
    EXPECT_EQ(console.Boxes().size(), 1U);
    double velocity = 0;
    EXPECT_NEAR(window.CalculateFlow(1, velocity), 3.30679, 5e-6);
}

struct AcceptedUnits {
    const char* Text;
    const char* Case;
};

class FlowUnits : public FlowCheck, public ::testing::WithParamInterface<AcceptedUnits> {};

TEST_P(FlowUnits, Pass) {
    Choose(WithUnits(GetParam().Text));
    EXPECT_TRUE(console.Boxes().empty());
    EXPECT_EQ(window.Record.DisplayMode, DisplayFlow);
}

INSTANTIATE_TEST_SUITE_P(Accepted, FlowUnits,
                         ::testing::Values(AcceptedUnits{"Feet ", "FeetWithATrailingBlank"},
                                           AcceptedUnits{" INCHES", "InchesInCapitalsBehindABlank"},
                                           AcceptedUnits{"meters", "Meters"},
                                           AcceptedUnits{"Cm", "Centimetres"},
                                           AcceptedUnits{"feet", "Feet"}),
                         [](const auto& units) { return units.param.Case; });

TEST_F(FlowCheck, ActsInTheFlowModeAlone) {
    Know(FreshLogger(8, 0));
    window.ChooseDisplay(DisplayMeter);
    EXPECT_TRUE(console.Boxes().empty());
}

TEST_F(FlowCheck, IsNotMadeBeforeAnySettingsWereRead) {
    window.ChooseDisplay(DisplayFlow);
    EXPECT_TRUE(console.Boxes().empty());
    EXPECT_EQ(window.Record.DisplayMode, DisplayFlow);
}

TEST_F(FlowCheck, RunsAgainAtEachReadingOfTheSettings) {
    window.ChooseDisplay(DisplayFlow);
    console.Logger.Settings = FreshLogger(8, 0);
    ASSERT_TRUE(window.GetSettings());
    ASSERT_EQ(console.Boxes().size(), 1U);
    EXPECT_EQ(window.Record.DisplayMode, DisplayMeter);
}

TEST_F(FlowCheck, TellsNobodyOnceTheWindowIsClosed) {
    window.Unload();
    Choose(FreshLogger(8, 0));
    EXPECT_TRUE(console.Boxes().empty());
}

TEST_F(FlowCheck, AWindowClosedBehindTheBoxIsNotRepainted) {
    console.Outside.Boxes.WhileShown = [this] { window.Unload(); };
    Choose(FreshLogger(8, 0));
    EXPECT_EQ(surface.Repaints, 0);
}

}  // namespace
}  // namespace client_test
