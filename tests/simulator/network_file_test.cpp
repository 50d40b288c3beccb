#include "simulator/network_file.h"

#include <cmath>
#include <fstream>
#include <sstream>

#include "simulator/random.h"
#include "simulator/text.h"
#include "simulator/wire.h"

namespace simulator {
namespace {

const std::string Small =
    "[logger]\n"
    "name = Tank\n"
    "[analog]\n"
    "units = Feet\n";

std::string FileText(const std::string& name) {
    std::ifstream file(std::string(ORVIA_DEMO_FOLDER) + "/" + name, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

/// The one error of a text, as "line: what".
std::string ErrorOf(const std::string& text) {
    const NetworkFile file = ParseNetwork(text);
    return file.Errors.size() == 1
               ? std::to_string(file.Errors[0].Line) + ": " + file.Errors[0].What
               : std::to_string(file.Errors.size()) + " errors";
}

/// The error of a line put behind `Small`.
std::string ErrorBehind(const std::string& lines) {
    return ErrorOf(Small + lines);
}

// ----- good files

TEST(NetworkFileText, SmallestNetworkIsOneLoggerWithOneChannel) {
    const NetworkFile file = ParseNetwork(Small);
    ASSERT_TRUE(file.Errors.empty());
    ASSERT_EQ(file.Network.Loggers.size(), 1U);
    const LoggerSetup& logger = file.Network.Loggers[0];
    EXPECT_EQ(logger.Settings.Name, "Tank");
    EXPECT_EQ(logger.Settings.Analog.size(), 1U);
    EXPECT_TRUE(logger.Settings.Pulse.empty());
    EXPECT_EQ(logger.Settings.Analog[0].Units, "Feet");
    EXPECT_EQ(logger.Channel, 0x10);
}

TEST(NetworkFileText, ADelayThatIsRefusedLeavesTheOneBefore) {
    std::string text = "[logger]\nname = Well\nsample-delay = 250\n";
    for (int i = 0; i < 8; ++i) {
        text += "sample-delay = 100000000000000000\n";
    }
    const NetworkFile file = ParseNetwork(text + "[analog]\n");
    EXPECT_EQ(file.Errors.size(), 8U);
    EXPECT_EQ(file.Network.Loggers.back().SampleDelay, 250 * Millisecond);
}

TEST(NetworkFileText, EveryKeyHasItsEffect) {
    const NetworkFile file = ParseNetwork(
        "[network]\nstart = 2024-02-29 23:59:58\nbaud = 9600\nsystem-id = 7\nseed = 5\n"
        "[logger]\nname = A = B # no comment\nchannel = 2f\nmac = 00A0961F2E3D\n"
        "interval = 1 day\nrecords = 100\nreported-records = 70000\nfirmware = 33\nsod = yes\n"
        "clock = 12\nclock-ahead = -30\nlogging = no\nwarm-up = 500\nsample-delay = 250\n"
        "signal = 9\nsignal-swing = 3\nwrap-around = no\nfixed-baud = 4\nstyle = 1\n"
        "deadband = 12\nalarm-1 = 06:30:15\nalarm-2 = 23:00:00\n"
        "[analog]\nunits = Deg F\nenabled = no\ndecimals = 1\nraw = 10 60000\nlimits = -40 140\n"
        "display = 30 90\nsignal = sine mean=50 swing=5 hours=2\n"
        "[pulse]\nunits = mm\nenabled = no\ndecimals = 3\nper-pulse = 0.2\nsignal = constant "
        "value=9\n"
        "[flow]\nmethod = weir\nroughness = 0.02\nslope = 0.01\ndiameter = 2 meters\ntag = V90\n"
        "table = x.tbl\noffset = -3 cm\nunit = LPS\ntop = 10\nvelocity-unit = MPS\n"
        "velocity-top = 4\nrating = 0 2.48 2.49\npoints = 0:0 1:2.5\n");
    for (const NetworkFileError& error : file.Errors) {
        ADD_FAILURE() << error.Line << ": " << error.What;
    }
    const NetworkDescription& network = file.Network;
    EXPECT_EQ(network.Start, ToSeconds({2024, 2, 29, 23, 59, 58}));
    EXPECT_EQ(network.Baud, 9600);
    EXPECT_EQ(network.SystemId, 7);
    EXPECT_EQ(network.Seed, 5U);
    ASSERT_EQ(network.Loggers.size(), 1U);
    const LoggerSetup& logger = network.Loggers[0];
    EXPECT_EQ(logger.Channel, 0x2F);
    EXPECT_EQ(logger.Mac, (std::array<std::uint8_t, 6>{0x00, 0xA0, 0x96, 0x1F, 0x2E, 0x3D}));
    EXPECT_EQ(logger.HistoryRecords, 100U);
    EXPECT_EQ(logger.ReportedSamples, 70000U);
    EXPECT_EQ(logger.FirmwareVersion, 33);
    EXPECT_TRUE(logger.SodAvailable);
    EXPECT_EQ(logger.Clock, ClockForm::Hours12);
    EXPECT_EQ(logger.ClockOffset, -30);
    EXPECT_FALSE(logger.Logging);
    EXPECT_EQ(logger.SampleDelay, 250 * Millisecond);
    EXPECT_EQ(logger.Signal, 9);
    EXPECT_EQ(logger.SignalSwing, 3);
    const LoggerSettings& settings = logger.Settings;
    EXPECT_EQ(settings.Name, "A = B # no comment");
    EXPECT_EQ(settings.IntervalCount, 1);
    EXPECT_EQ(settings.Interval, IntervalUnit::Days);
    EXPECT_EQ(settings.WarmupMilliseconds, 500);
    EXPECT_FALSE(settings.WrapAround);
    EXPECT_EQ(settings.FixedBaudRate, 4);
    EXPECT_EQ(settings.LoggingStyle, 1);
    EXPECT_EQ(settings.Deadband, 12);
    EXPECT_TRUE(settings.Alarms[0].Enabled);
    EXPECT_EQ(settings.Alarms[0].Minute, 30);
    EXPECT_EQ(settings.Alarms[0].Second, 15);
    EXPECT_EQ(settings.Alarms[1].Hour, 23);
    const AnalogSettings& analog = settings.Analog[0];
    EXPECT_EQ(analog.Units, "Deg F");
    EXPECT_FALSE(analog.Enabled);
    EXPECT_EQ(analog.Decimals, 1);
    EXPECT_EQ(analog.RawLower, 10);
    EXPECT_EQ(analog.RawUpper, 60000);
    EXPECT_EQ(analog.LowerLimit, -40);
    EXPECT_EQ(analog.UpperLimit, 140);
    EXPECT_EQ(analog.DisplayBottom, 30);
    EXPECT_EQ(analog.DisplayTop, 90);
    EXPECT_NEAR(logger.AnalogSignals[0]->ValueAt(1800), 55, 1e-9);
    EXPECT_EQ(settings.Pulse[0].Units, "mm");
    EXPECT_FALSE(settings.Pulse[0].Enabled);
    EXPECT_EQ(settings.Pulse[0].Decimals, 3);
    EXPECT_EQ(settings.Pulse[0].UnitsPerPulse, 0.2);
    EXPECT_EQ(logger.PulseSignals[0]->ValueAt(0), 9);
    const FlowSettings& flow = settings.Flow;
    EXPECT_EQ(flow.Mode, FlowMode::Weir);
    EXPECT_EQ(flow.ManningsN, 0.02);
    EXPECT_EQ(flow.ManningsS, 0.01);
    EXPECT_FALSE(flow.ManningsSPercent);
    EXPECT_EQ(flow.ManningsD, 2);
    EXPECT_EQ(flow.ManningsDType, LengthUnit::Meter);
    EXPECT_EQ(flow.WeirTag, "V90");
    EXPECT_EQ(flow.FlumeTag, "");
    EXPECT_EQ(flow.TablePath, "x.tbl");
    EXPECT_EQ(flow.LevelOffset, -3);
    EXPECT_EQ(flow.LevelOffsetType, LengthUnit::Centimeter);
    EXPECT_EQ(flow.FlowUnits, FlowUnit::Lps);
    EXPECT_EQ(flow.FlowTop, 10);
    EXPECT_EQ(flow.VelUnits, VelocityUnit::Mps);
    EXPECT_EQ(flow.VelTop, 4);
    EXPECT_EQ(logger.Rating.Exponent, 2.48);
    EXPECT_EQ(logger.Rating.Points.size(), 2U);
}

TEST(NetworkFileText, TakesAnyLineEnds) {
    EXPECT_EQ(ErrorOf("[logger]\r\nname = A\r\r\n[analog]\rfoo = 1"),
              "5: no key \"foo\" in this section");
}

TEST(NetworkFileText, StartMayBeNow) {
    const NetworkFile file = ParseNetwork("[network]\nstart = now\n" + Small);
    EXPECT_EQ(file.Network.Start, std::nullopt);
    EXPECT_EQ(BuildNetwork(file.Network, 1234)->Start(), 1234);
}

TEST(NetworkFileText, SeedGivenStandsAboveThatOfTheFile) {
    const std::string text = "[network]\nseed = 5\n" + Small + "signal = level storm=5\n";
    const auto value = [&](std::optional<std::uint64_t> seed) {
        const NetworkFile file = ParseNetwork(text, seed);
        double sum = 0;
        for (int hour = 0; hour < 2000; ++hour) {
            sum += file.Network.Loggers[0].AnalogSignals[0]->ValueAt(3600.0 * hour);
        }
        return sum;
    };
    EXPECT_EQ(value(5), value(std::nullopt));
    EXPECT_NE(value(6), value(std::nullopt));
}

TEST(NetworkFileText, NoiseOfTwoChannelsDiffers) {
    const NetworkFile file = ParseNetwork(Small +
                                          "signal = constant noise=1\n[analog]\nsignal = "
                                          "constant noise=1\n");
    const auto& signals = file.Network.Loggers[0].AnalogSignals;
    EXPECT_NE(signals[0]->ValueAt(1), signals[1]->ValueAt(1));
}

// ----- bad files

TEST(NetworkFileText, TellsLineAndFault) {
    EXPECT_EQ(ErrorOf(""), "0: the network has no logger");
    EXPECT_EQ(ErrorOf(Small + "\n# a remark\nunits = Centimetres\n"),
              "7: units must be 1 to 9 characters");
    EXPECT_EQ(ErrorBehind("colour = red\n"), "5: no key \"colour\" in this section");
    EXPECT_EQ(ErrorBehind("just words\n"), "5: neither a section nor key = value");
    EXPECT_EQ(ErrorBehind("[analog\n"), "5: a section ends with ]");
    EXPECT_EQ(ErrorBehind("[sensor]\n"), "5: no section \"sensor\"");
    EXPECT_EQ(ErrorBehind("[network]\n"), "5: the network's section comes before the loggers");
    EXPECT_EQ(ErrorOf("[pulse]\n" + Small), "1: a logger's section before any logger");
    EXPECT_EQ(ErrorOf("name = A\n" + Small), "1: a key before any section");
}

TEST(NetworkFileText, EveryLoggerNeedsNameAndAnalogChannel) {
    EXPECT_EQ(ErrorOf("[logger]\n[analog]\n"), "1: the logger has no name");
    EXPECT_EQ(ErrorOf("\n[logger]\nname = A\nchannel = 11\n" + Small),
              "2: the logger has no analog channel");
}

TEST(NetworkFileText, NamesAndAddressesDiffer) {
    const std::string again =
        "4: another logger has the same name, or the same channel and address";
    const std::string first = "[logger]\nname = Other\n[analog]\n";
    EXPECT_EQ(ErrorOf(first + Small), again);
    EXPECT_EQ(ErrorOf(first + "[logger]\nname = Other\nchannel = 11\n[analog]\n"), again);
    EXPECT_EQ(ErrorOf(first + "[logger]\nname = A\nmac = FFFFFF000001\n[analog]\n"), again);
    EXPECT_EQ(ErrorOf(first + "[logger]\nname = A\nmac = 00A096000002\n[analog]\n"), "0 errors");
}

TEST(NetworkFileText, ChannelsAreLimited) {
    std::string text = Small;
    for (int i = 1; i < 8; ++i) {
        text += "[analog]\n";
    }
    EXPECT_EQ(ErrorOf(text + "[pulse]\n[pulse]\n"), "0 errors");
    EXPECT_EQ(ErrorOf(text + "[analog]\nunits = X\n"),
              "12: a logger has no more than 8 of these channels");
    EXPECT_EQ(ErrorOf(text + "[pulse]\n[pulse]\n[pulse]\n"),
              "14: a logger has no more than 2 of these channels");
}

/// A section, and a line for it that is wrong.
struct WrongLine {
    const char* Section;
    const char* Text;
};

class WrongLines : public testing::TestWithParam<WrongLine> {};

TEST_P(WrongLines, AreRefusedWithTheFormOfTheirValue) {
    const std::string section = GetParam().Section;
    const std::string line = GetParam().Text;
    const std::string text = section == "network"
                                 ? "[network]\n" + line + "\n" + Small
                                 : Small + "[" + section + "]\n" + line + "\n" +
                                       (section == "logger" ? "mac = 000000000009\n"
                                                              "[analog]\n"
                                                            : "");
    const NetworkFile file = ParseNetwork(text);
    ASSERT_FALSE(file.Errors.empty());
    EXPECT_EQ(file.Errors[0].Line, section == "network" ? 2 : 6);
    EXPECT_NE(file.Errors[0].What.find(" must be "), std::string::npos) << file.Errors[0].What;
}

INSTANTIATE_TEST_SUITE_P(
    Values, WrongLines,
    testing::Values(
        WrongLine{"network", "start = yesterday"}, WrongLine{"network", "start = 2023-02-29 0:0:0"},
        WrongLine{"network", "start = 2024-02-29"},
        WrongLine{"network", "start = 1999-01-01 0:0:0"},
        WrongLine{"network", "start = 2024-02-29 24:00:00"}, WrongLine{"network", "baud = fast"},
        WrongLine{"network", "baud = -1"}, WrongLine{"network", "system-id = 256"},
        WrongLine{"network", "seed = -1"}, WrongLine{"network", "seed = 99999999999999999999"},
        WrongLine{"logger", "name ="}, WrongLine{"logger", "name = \xC3\xA4"},
        WrongLine{"logger", "name = 123456789012345678901234567890123"},
        WrongLine{"logger", "channel = 1"}, WrongLine{"logger", "channel = G0"},
        WrongLine{"logger", "channel = 1000"}, WrongLine{"logger", "mac = 00A0961F2E"},
        WrongLine{"logger", "interval = 15"}, WrongLine{"logger", "interval = 0 minutes"},
        WrongLine{"logger", "interval = 15 weeks"}, WrongLine{"logger", "interval = 70000 days"},
        WrongLine{"logger", "records = 1000001"}, WrongLine{"logger", "records = 1.5"},
        WrongLine{"logger", "reported-records = 16777216"}, WrongLine{"logger", "sod = maybe"},
        WrongLine{"logger", "clock = 13"}, WrongLine{"logger", "alarm-1 = 6:30"},
        WrongLine{"logger", "alarm-1 = 24:00:00"}, WrongLine{"logger", "signal = 300"},
        WrongLine{"analog", "raw = 0"}, WrongLine{"analog", "raw = 0 65536"},
        WrongLine{"analog", "limits = 0 x"}, WrongLine{"analog", "limits = 0 1 2"},
        WrongLine{"analog", "limits = 0 nan"}, WrongLine{"analog", "limits = 0 1e300"},
        WrongLine{"analog", "decimals = 7"}, WrongLine{"analog", "units ="},
        WrongLine{"analog", "signal = square"}, WrongLine{"analog", "signal ="},
        WrongLine{"analog", "signal = sine mean"}, WrongLine{"analog", "signal = sine hours=0"},
        WrongLine{"analog", "signal = sine =5"}, WrongLine{"analog", "signal = sine depth=5"},
        WrongLine{"analog", "signal = sine noise=-1"}, WrongLine{"pulse", "per-pulse = x"},
        WrongLine{"flow", "method = guess"}, WrongLine{"flow", "slope = 1 per mille"},
        WrongLine{"flow", "slope ="}, WrongLine{"flow", "diameter = 12"},
        WrongLine{"flow", "diameter = 12 miles"}, WrongLine{"flow", "tag = 123456789"},
        WrongLine{"flow", "unit = cfs"}, WrongLine{"flow", "rating = 1 2"},
        WrongLine{"flow", "points = 1:2"}, WrongLine{"flow", "points = 1:2 1:3"},
        WrongLine{"flow", "points = 1 2 3"}));

TEST(NetworkFileText, AnyBytesAreReadWithoutHarm) {
    const std::string good = FileText("site.net");
    for (std::uint64_t round = 0; round < 300; ++round) {
        std::string text = good.substr(0, Mixed(round, 0) % good.size());
        for (std::uint64_t change = 1; change < 40 && !text.empty(); ++change) {
            const std::uint64_t random = Mixed(round, change);
            text[random % text.size()] = static_cast<char>(random >> 40);
        }
        const NetworkFile file = ParseNetwork(text);
        EXPECT_LE(file.Errors.size(), 20U);
    }
}

// ----- the sample

TEST(SampleSite, IsGood) {
    const NetworkFile file = ParseNetwork(FileText("site.net"));
    for (const NetworkFileError& error : file.Errors) {
        ADD_FAILURE() << error.Line << ": " << error.What;
    }
    EXPECT_EQ(file.Network.Loggers.size(), 7U);
}

TEST(SampleSite, BookNamesEveryRadio) {
    const NetworkFile file = ParseNetwork(FileText("site.net"));
    std::string book;
    for (const LoggerSetup& logger : file.Network.Loggers) {
        std::string mac = HexText(logger.Mac);
        std::erase(mac, ' ');
        book += "\"" + logger.Settings.Name + "\", " + HexText({&logger.Channel, 1}) + ", " + mac +
                "\r\n";
    }
    EXPECT_EQ(FileText("site.obk"), book + "\r\n");
}

TEST(SampleSite, SensorsStayInsideTheirRanges) {
    const NetworkFile file = ParseNetwork(FileText("site.net"));
    const auto network = BuildNetwork(file.Network);
    for (const auto& logger : network->Loggers()) {
        for (Microseconds now = 0; now < 60 * (86400 * Second); now += 3571 * Second) {
            for (std::size_t channel = 0; channel < logger->AnalogChannels(); ++channel) {
                const AnalogSettings& settings = logger->Setup().Settings.Analog[channel];
                const double value = logger->TrueValue(channel, now);
                ASSERT_GE(value, settings.LowerLimit) << logger->Name() << channel;
                ASSERT_LE(value, settings.UpperLimit) << logger->Name() << channel;
            }
        }
    }
}

TEST(SampleSite, FlowSitesFlow) {
    const NetworkFile file = ParseNetwork(FileText("site.net"));
    const auto network = BuildNetwork(file.Network);
    for (const char* name : {"Mill Street Pipe", "Creek Flume", "Orchard Weir", "Bridge Gauge"}) {
        const Logger* logger = network->FindLogger(name);
        ASSERT_NE(logger, nullptr) << name;
        EXPECT_EQ(logger->AnalogChannels(), 3U);
        EXPECT_EQ(logger->Setup().Settings.Analog[0].Units, "Feet");
        const FlowSettings& flow = logger->Setup().Settings.Flow;
        EXPECT_GT(logger->TrueFlowNow(0).Rate, 0) << name;
        EXPECT_EQ(logger->TrueFlowNow(0).Velocity > 0, flow.Mode == FlowMode::Manning);
    }
}

}  // namespace
}  // namespace simulator
