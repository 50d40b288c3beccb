#include "simulator/settings.h"

#include <cmath>

#include "simulator/float24.h"
#include "simulator/wire.h"

namespace simulator {
namespace {

TEST(SimulatorFloat24, KeepsSixSignificantDigits) {
    EXPECT_EQ(EncodeFloat24(0.014), 140000U | 7U << 20);
    EXPECT_EQ(EncodeFloat24(-0.014), 140000U | 7U << 20 | 0x800000U);
    EXPECT_EQ(EncodeFloat24(1), 100000U | 5U << 20);
    EXPECT_EQ(EncodeFloat24(100), 100000U | 3U << 20);
}

TEST(SimulatorFloat24, ZeroIsAllZeros) {
    EXPECT_EQ(EncodeFloat24(0), 0U);
    EXPECT_EQ(EncodeFloat24(-0.0), 0U);
    EXPECT_EQ(DecodeFloat24(0), 0.0);
}

TEST(SimulatorFloat24, SaturatesAndStaysAtScaleZeroFrom100000) {
    EXPECT_EQ(EncodeFloat24(1234567), 999999U);
    EXPECT_EQ(EncodeFloat24(999999.4), 999999U);
    EXPECT_EQ(EncodeFloat24(100000), 100000U);
    EXPECT_EQ(EncodeFloat24(99999.95), 100000U);
    EXPECT_EQ(EncodeFloat24(99999.94), 999999U | 1U << 20);
}

TEST(SimulatorFloat24, ComesBackWithinItsDigits) {
    for (int step = -200; step <= 200; ++step) {
        const double value = step * 4567.891;
        EXPECT_NEAR(DecodeFloat24(EncodeFloat24(value)), value, std::fabs(value) * 6e-6 + 1e-7);
    }
}

class SettingsTest : public testing::Test {
 protected:
    Bytes Written() {
        Bytes memory(0x10000, 0xFF);
        WriteSettings(settings, memory);
        return memory;
    }
    static Bytes Part(const Bytes& memory, std::size_t from, std::size_t count) {
        const auto begin = memory.begin() + static_cast<std::ptrdiff_t>(from);
        return {begin, begin + static_cast<std::ptrdiff_t>(count)};
    }

    LoggerSettings settings;
};

TEST_F(SettingsTest, NameAndIntervalStandInFront) {
    settings.Name = "Tank";
    settings.IntervalCount = 300;
    settings.Interval = IntervalUnit::Seconds;
    const Bytes memory = Written();
    EXPECT_EQ(Part(memory, 8, 6), BytesOf("Tank  "));
    EXPECT_EQ(memory[8 + 31], ' ');
    EXPECT_EQ(Part(memory, 8 + 32, 3), (Bytes{0x2C, 0x01, 0x00}));
}

TEST_F(SettingsTest, LongTextsAreCut) {
    settings.Name = std::string(40, 'n');
    settings.Analog[0].Units = "millimetres";
    const Bytes memory = Written();
    EXPECT_EQ(memory[8 + 31], 'n');
    EXPECT_NE(memory[8 + 32], 'n');
    EXPECT_EQ(Part(memory, 8 + 48, 9), BytesOf("millimetr"));
}

TEST_F(SettingsTest, FlagsAndCountsAreBytes) {
    settings.Analog.assign(3, AnalogSettings{});
    settings.Analog[1].Enabled = false;
    settings.Pulse.assign(2, PulseSettings{});
    settings.Pulse[0].Enabled = false;
    settings.FixedBaudRate = 5;
    settings.WarmupMilliseconds = 1500;
    settings.Deadband = 0x0102;
    settings.EnableSod = 1;
    settings.LoggingStyle = 2;
    const Bytes memory = Written();
    EXPECT_EQ(Part(memory, 8 + 35, 13),
              (Bytes{3, 2, 0x05, 0x02, 11, 0xDC, 0x05, 0, 0, 1, 2, 0x02, 0x01}));
}

TEST_F(SettingsTest, AlarmsAreBcdWithTheirMark) {
    settings.Alarms[0] = {true, 23, 59, 58};
    settings.Alarms[1] = {false, 6, 5, 4};
    const Bytes memory = Written();
    EXPECT_EQ(Part(memory, 8 + 42, 2), (Bytes{1, 0}));
    EXPECT_EQ(Part(memory, 8 + 138, 8), (Bytes{0x58, 0x59, 0x23, 0x80, 0x04, 0x05, 0x06, 0x80}));
}

TEST_F(SettingsTest, ChannelsStandInTheirSlots) {
    settings.Analog.assign(2, AnalogSettings{});
    settings.Analog[1] = {"Feet", true, 3, 100, 60000, -1, 20, 0, 15};
    settings.Pulse = {{"Inches", true, 2, 0.01}};
    const Bytes memory = Written();
    EXPECT_EQ(Part(memory, 8 + 48 + 9, 9), BytesOf("Feet     "));
    EXPECT_EQ(Part(memory, 8 + 48 + 72, 9), BytesOf("Inches   "));
    EXPECT_EQ(Part(memory, 8 + 146, 10), (Bytes{2, 3, 2, 2, 2, 2, 2, 2, 2, 0}));
    EXPECT_EQ(Part(memory, 8 + 158, 2), (Bytes{100, 0}));
    EXPECT_EQ(Part(memory, 8 + 174, 2), (Bytes{0x60, 0xEA}));
    // -1 and 20 have five and four decimals; 0.01 has seven.
    EXPECT_EQ(Part(memory, 8 + 197, 3), (Bytes{0xA0, 0x86, 0xD1}));
    EXPECT_EQ(Part(memory, 8 + 221, 3), (Bytes{0x40, 0x0D, 0x43}));
    EXPECT_EQ(Part(memory, 8 + 188, 3), (Bytes{0xA0, 0x86, 0x71}));
    EXPECT_EQ(Part(memory, 256 + 3, 3), (Bytes{0, 0, 0}));
    EXPECT_EQ(Part(memory, 256 + 24 + 3, 3), (Bytes{0xF0, 0x49, 0x42}));
}

TEST_F(SettingsTest, FlowStandsInTheUpperBlock) {
    FlowSettings& flow = settings.Flow;
    flow.Mode = FlowMode::Table;
    flow.ManningsN = 0.013;
    flow.ManningsS = 2;
    flow.ManningsSPercent = false;
    flow.ManningsD = 24;
    flow.ManningsDType = LengthUnit::Inch;
    flow.FlumeTag = "P6";
    flow.WeirTag = "V90";
    flow.LevelOffset = 3;
    flow.LevelOffsetType = LengthUnit::Centimeter;
    flow.FlowUnits = FlowUnit::Mgd;
    flow.FlowTop = 50;
    flow.VelUnits = VelocityUnit::Mps;
    flow.VelTop = 5;
    flow.TablePath = "demo.tbl";
    const Bytes memory = Written();
    // 0.013 is 130000 / 10^7, 2 is 200000 / 10^5, 24 is 240000 / 10^4.
    EXPECT_EQ(Part(memory, 512, 12),
              (Bytes{4, 0xD0, 0xFB, 0x71, 0x40, 0x0D, 0x53, 0, 0x80, 0xA9, 0x43, 1}));
    EXPECT_EQ(Part(memory, 512 + 12, 16), BytesOf("P6      V90     "));
    EXPECT_EQ(Part(memory, 512 + 28, 5), (Bytes{0xE0, 0x93, 0x54, 3, 2}));
    EXPECT_EQ(Part(memory, 512 + 33, 7), (Bytes{0x20, 0xA1, 0x47, 1, 0x20, 0xA1, 0x57}));
    EXPECT_EQ(Part(memory, 512 + 40, 9), BytesOf("demo.tbl "));
    EXPECT_EQ(memory[512 + 167], ' ');
    EXPECT_EQ(memory[512 + 168], 0xFF);
}

TEST_F(SettingsTest, WritesExactlyItsThreeBlocks) {
    Bytes memory(0x10000, 0xAA);
    settings.Name.clear();
    WriteSettings(settings, memory);
    Bytes other(0x10000, 0x55);
    WriteSettings(settings, other);
    for (std::size_t i = 0; i < memory.size(); ++i) {
        const bool inside = (i >= 8 && i < 250) || (i >= 256 && i < 304) || (i >= 512 && i < 680);
        ASSERT_EQ(memory[i] == other[i], inside) << i;
    }
}

TEST_F(SettingsTest, FlowBlockMayNeverHaveBeenWritten) {
    settings.FlowNeverWritten = true;
    EXPECT_EQ(Part(Written(), 512, 168), Bytes(168, 0xFF));
}

}  // namespace
}  // namespace simulator
