#include "client/bars.h"

#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <set>

#include "client/layout.h"
#include "client_fixture.h"
#include "common/number_text.h"

namespace client_test {
namespace {

MeterEntry Column(double min, double max, double value) {
    MeterEntry meter;
    meter.Active = True;
    meter.Min = min;
    meter.Max = max;
    meter.Value = value;
    return meter;
}

TEST(BarFraction, IsTheShareOfTheScale) {
    EXPECT_EQ(BarFraction(Column(0, 100, 25)), 0.25);
}

TEST(BarFraction, EqualLimitsGiveAnEmptyBarWhateverTheValue) {
    EXPECT_EQ(BarFraction(Column(50, 50, 1e6)), 0);
    EXPECT_EQ(BarFraction(Column(50, 50.000009, 1e6)), 0);
}

TEST(BarFraction, AValueAboveTheHeadGivesAFullBar) {
    EXPECT_EQ(BarFraction(Column(0, 100, 101)), 1);
}

TEST(BarFraction, AValueBelowTheFootGivesAnEmptyBar) {
    EXPECT_EQ(BarFraction(Column(0, 100, -1)), 0);
}

TEST(BarFraction, AScaleThatRunsDownwardsTurnsTheBarRound) {
    EXPECT_EQ(BarFraction(Column(100, 0, 25)), 0.75);
    EXPECT_EQ(BarFraction(Column(100, 0, 150)), 0);
    EXPECT_EQ(BarFraction(Column(100, 0, -50)), 1);
}

TEST(BarFraction, AnInactiveColumnIsEmpty) {
    MeterEntry meter = Column(0, 100, 50);
    meter.Active = False;
    EXPECT_EQ(BarFraction(meter), 0);
}

class Bars : public ClientTest {
 protected:
    Bars() {
        window.Record.DisplayMode = DisplayMeter;
        LoggerState state = FreshLogger(2, 0);
        Know(state);
    }

    [[nodiscard]] std::int32_t Top() const {
        return Shown().fraMeter[0].Place.Top + window.Record.BarTop;
    }
    std::set<int> TickedColumns() {
        std::set<int> columns;
        for (const BarFill& fill : window.Tick()) {
            columns.insert(fill.Column);
        }
        return columns;
    }
};

TEST_F(Bars, GeometryFollowsTheFirstColumn) {
    const TwipsBox meter = Shown().fraMeter[0].Place;
    const TwipsBox column = Shown().fraColumn[0].Place;
    EXPECT_EQ(window.Record.BarTop, column.Top + 120);
    EXPECT_EQ(window.Record.BarHeight, column.Height - 160);
    EXPECT_EQ(window.Record.BarLeft, meter.Left + column.Left + 40);
    EXPECT_EQ(window.Record.BarWidth, column.Width - 85);
}

TEST_F(Bars, TheFirstTickDrawsEveryColumn) {
    EXPECT_EQ(TickedColumns().size(), 8U);
}

TEST_F(Bars, ATickWithNothingChangedDrawsNothing) {
    static_cast<void>(window.Tick());
    EXPECT_TRUE(window.Tick().empty());
}

TEST_F(Bars, AHalfFullBarIsGroundAboveAndColourBelow) {
    static_cast<void>(window.Tick());
    const ClientRecord& record = window.Record;
    Meter(1).Value = 12;  // of 24 Volts
    const std::int32_t x = record.BarLeft + ColumnPitch;
    const auto half = static_cast<std::int32_t>(RoundTiesToEven(record.BarHeight / 2.0));
    const std::int32_t y = Top() + record.BarHeight - half;
    const auto fills = window.Tick();
    ASSERT_EQ(fills.size(), 2U);
    EXPECT_EQ(fills[0],
              (BarFill{1, BarColour::Ground, {x, Top(), record.BarWidth, y - 1 - Top()}}));
    EXPECT_EQ(
        fills[1],
        (BarFill{1, BarColour::Channel, {x, y, record.BarWidth, Top() + record.BarHeight - y}}));
}

TEST_F(Bars, AFullBarLeavesNothingToBlank) {
    static_cast<void>(window.Tick());
    Meter(0).Value = 100;
    const auto fills = window.Tick();
    ASSERT_EQ(fills.size(), 1U);
    EXPECT_EQ(fills[0].Colour, BarColour::Channel);
    EXPECT_EQ(fills[0].Box.Top, Top());
    EXPECT_EQ(fills[0].Box.Height, window.Record.BarHeight);
}

TEST_F(Bars, AColumnThatFallsSilentBlanksAllOfItsBar) {
    Meter(0).Value = 60;
    static_cast<void>(window.Tick());
    Meter(0).Active = False;
    const auto fills = window.Tick();
    ASSERT_EQ(fills.size(), 1U);
    EXPECT_EQ(fills[0].Colour, BarColour::Ground);
    EXPECT_EQ(fills[0].Box.Height, window.Record.BarHeight - 1);
}

TEST_F(Bars, AnEmptyBarThatBecomesActiveIsDrawn) {
    Meter(0).Value = 0;
    Meter(0).Active = False;
    static_cast<void>(window.Tick());
    Meter(0).Active = True;
    EXPECT_EQ(window.Tick().size(), 2U);
}

TEST_F(Bars, PaintingMakesTheNextTickDrawEveryBar) {
    static_cast<void>(window.Tick());
    window.Paint();
    for (const MeterEntry& meter : window.Record.Meters) {
        EXPECT_EQ(meter.LastBarTop, 0);
    }
    EXPECT_EQ(TickedColumns().size(), 8U);
}

TEST_F(Bars, NothingIsDrawnWithoutSettings) {
    window.Record.SettingsValid = False;
    EXPECT_TRUE(window.Tick().empty());
}

TEST_F(Bars, NothingIsDrawnInTheListModes) {
    for (const std::int16_t mode : {DisplaySmall, DisplayMedium, DisplayWide}) {
        window.ChooseDisplay(mode);
        window.Paint();
        EXPECT_TRUE(window.Tick().empty()) << mode;
    }
}

TEST_F(Bars, ABarThatIsNoFigureEndsTheTickQuietly) {
    Meter(1).Min = -std::numeric_limits<double>::max();
    Meter(1).Max = 0;
    Meter(1).Value = std::numeric_limits<double>::max();
    const auto fills = window.Tick();
    ASSERT_FALSE(fills.empty());
    EXPECT_EQ(fills.back().Column, 0);
}

TEST_F(Bars, ResetDisplayLeavesTheBarsAsTheyWere) {
    Meter(0).Value = 60;
    static_cast<void>(window.Tick());
    window.ResetDisplay();
    EXPECT_EQ(Meter(0).Value, 60);
    EXPECT_NE(Meter(0).Active, False);
    EXPECT_TRUE(window.Tick().empty());
}

class FlowBars : public ClientTest {
 protected:
    FlowBars() {
        window.Record.DisplayMode = DisplayFlow;
        Know(PipeLogger());
    }
};

TEST_F(FlowBars, FlowAndVelocityHaveTheirOwnColour) {
    Sample({32768, 30000, 30000});
    std::map<int, BarColour> coloured;
    for (const BarFill& fill : window.Tick()) {
        if (fill.Colour != BarColour::Ground) {
            coloured[fill.Column] = fill.Colour;
        }
    }
    EXPECT_EQ(coloured, (std::map<int, BarColour>{{0, BarColour::Channel},
                                                  {1, BarColour::Channel},
                                                  {2, BarColour::Channel},
                                                  {3, BarColour::Flow},
                                                  {4, BarColour::Flow}}));
}

TEST_F(FlowBars, ColumnsBeyondTheFifthAreNotDrawn) {
    for (const BarFill& fill : window.Tick()) {
        EXPECT_LT(fill.Column, FlowModeColumns);
    }
    EXPECT_NE(Meter(7).LastBarTop, 0);
}

}  // namespace
}  // namespace client_test
