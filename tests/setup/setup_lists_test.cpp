#include "setup/setup_lists.h"

#include <gtest/gtest.h>

#include <span>
#include <string>

// What the lists offer is what technicians know; a list's position is also the code that goes to
// the logger, so nothing in it moves.

namespace {

/// The items one behind another, a bar between them.
std::string Items(std::span<const std::string_view> list) {
    std::string items;
    for (const std::string_view item : list) {
        items.append(items.empty() ? "" : "|").append(item);
    }
    return items;
}

TEST(SetupLists, UnitsOfChannels) {
    EXPECT_EQ(Items(setup_lists::AnalogUnits),
              "mA|Volts|mV|Temp F|Temp C|degrees|%|Inches|Feet|cm|Meters|NTU|ppm|uS|MPH|KPH");
    EXPECT_EQ(Items(setup_lists::PulseUnits), "Pulses|Inches|cm|Cubic Ft|Liters|Gallons|Kgal");
}

TEST(SetupLists, UnitsOfTimeAndLine) {
    EXPECT_EQ(Items(setup_lists::IntervalUnits), "seconds|minutes|hours|days");
    EXPECT_EQ(Items(setup_lists::HalfDays), "A.M.|P.M.");
    EXPECT_EQ(Items(setup_lists::BaudRates),
              "Auto Baud Rate|Fixed 9600|Fixed 19200|Fixed 28800|Fixed 38400|Fixed 57600|"
              "Fixed 115200");
}

TEST(SetupLists, UnitsOfFlow) {
    EXPECT_EQ(Items(setup_lists::FlowUnits),
              "cfs - cubic feet per second|gpm - gallons per minute|"
              "mgd - million's of gallons per day|cms - cubic meters per second|"
              "lps - liters per second");
    EXPECT_EQ(Items(setup_lists::LengthUnits), "feet|inches|meters|cm");
    EXPECT_EQ(Items(setup_lists::SlopeUnits), "decimal (rise/run)|percent");
    EXPECT_EQ(Items(setup_lists::VelocityUnits), "fps - feet-per-sec|mps - meters-per-sec");
    EXPECT_EQ(setup_lists::NoDevice, "- None -");
}

TEST(SetupLists, RoughnessOfPipes) {
    EXPECT_EQ(Items(setup_lists::Roughness),
              "0.010 - Plastic, other smooth surfaces|0.012 - Smooth, unpainted steel|"
              "0.013 - Painted steel, coated cast iron|0.013 - Clay drainage tile, smooth asphalt|"
              "0.013 - Finished concrete|0.014 - Vitrified clay sewer tile - most common|"
              "0.014 - Uncoated cast iron|0.017 - Unfinished concrete|"
              "0.024 - Corrugated metal storm drain");
}

}  // namespace
