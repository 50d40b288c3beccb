#include "setup/setup_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <locale>
#include <sstream>

#include "logger/settings_image.h"

namespace {

// 141 lines, written by hand.
constexpr const char* WholeFile =
    "Program=Orvia\r\nVersion=1.0.0\r\nDate=11/15/2026\r\nTime=08:30:00\r\n"
    "LoggerName=Mill Creek\r\nSampleInterval=5 minutes\r\nNumAnalogChannels=3\r\n"
    "NumDigitalChannels=1\r\nDataWrapAroundFlag=1\r\nSensorWarmupTime=3\r\nLoggingStyle=130\r\n"
    "Deadband=250\r\nEnableSOD=0\r\nFixedBaudRate=4\r\n"
    "[Analog Channel]\r\nChannel=0\r\nEnable=1\r\nEngUnits=Feet\r\nDecPlaces=3\r\n"
    "RawScaleLower=100\r\nRawScaleUpper=65000\r\nLowerLimit=-0.5\r\nUpperLimit=12.25\r\n"
    "DisplayTop=15\r\nDisplayBottom=0\r\n"
    "[Analog Channel]\r\nChannel=1\r\nEnable=0\r\nEngUnits=%\r\nDecPlaces=2\r\n"
    "RawScaleLower=0\r\nRawScaleUpper=65535\r\nLowerLimit=0\r\nUpperLimit=100\r\n"
    "DisplayTop=100\r\nDisplayBottom=0\r\n"
    "[Analog Channel]\r\nChannel=2\r\nEnable=1\r\nEngUnits=Volts\r\nDecPlaces=2\r\n"
    "RawScaleLower=0\r\nRawScaleUpper=62384\r\nLowerLimit=0\r\nUpperLimit=24\r\n"
    "DisplayTop=24\r\nDisplayBottom=0\r\n"
    "[Analog Channel]\r\nChannel=3\r\nEnable=1\r\nEngUnits=%\r\nDecPlaces=2\r\n"
    "RawScaleLower=0\r\nRawScaleUpper=65535\r\nLowerLimit=0\r\nUpperLimit=100\r\n"
    "DisplayTop=100\r\nDisplayBottom=0\r\n"
    "[Analog Channel]\r\nChannel=4\r\nEnable=1\r\nEngUnits=%\r\nDecPlaces=2\r\n"
    "RawScaleLower=0\r\nRawScaleUpper=65535\r\nLowerLimit=0\r\nUpperLimit=100\r\n"
    "DisplayTop=100\r\nDisplayBottom=0\r\n"
    "[Analog Channel]\r\nChannel=5\r\nEnable=1\r\nEngUnits=%\r\nDecPlaces=2\r\n"
    "RawScaleLower=0\r\nRawScaleUpper=65535\r\nLowerLimit=0\r\nUpperLimit=100\r\n"
    "DisplayTop=100\r\nDisplayBottom=0\r\n"
    "[Analog Channel]\r\nChannel=6\r\nEnable=1\r\nEngUnits=%\r\nDecPlaces=2\r\n"
    "RawScaleLower=0\r\nRawScaleUpper=65535\r\nLowerLimit=0\r\nUpperLimit=100\r\n"
    "DisplayTop=100\r\nDisplayBottom=0\r\n"
    "[Analog Channel]\r\nChannel=7\r\nEnable=1\r\nEngUnits=%\r\nDecPlaces=2\r\n"
    "RawScaleLower=0\r\nRawScaleUpper=65535\r\nLowerLimit=0\r\nUpperLimit=100\r\n"
    "DisplayTop=1E+15\r\nDisplayBottom=1E-05\r\n"
    "[Digital Channel]\r\nChannel=0\r\nEnable=1\r\nEngUnits=Gallons\r\nDecPlaces=0\r\n"
    "PulseUnit=0.1\r\n"
    "[Digital Channel]\r\nChannel=1\r\nEnable=1\r\nEngUnits=Pulses\r\nDecPlaces=0\r\n"
    "PulseUnit=1\r\n"
    "[Alarm]\r\nChannel=0\r\nEnable=1\r\nAlarmSec=9\r\nAlarmMin=5\r\nAlarmHour=13\r\n"
    "[Alarm]\r\nChannel=1\r\nEnable=0\r\nAlarmSec=0\r\nAlarmMin=0\r\nAlarmHour=0\r\n"
    "FlowMode=1\r\nFlowUnits=2\r\nFlowTop=50\r\nVelUnits=1\r\nVelTop=10\r\nManningsN=0.014\r\n"
    "ManningsS=1.5\r\nManningsSType=1\r\nManningsD=18\r\nManningsDType=1\r\nFlumeTag=P6\r\n"
    "WeirTag=\r\nLevelOffset=-0.25\r\nLevelOffsetType=1\r\nTablePath=tables/demo.tbl\r\n";

LoggerState WholeState() {
    LoggerState state;
    state.NumAnalogChannels = 3;
    state.NumDigitalChannels = 1;
    SetDefaultSettings(state);
    state.LoggerName = "Mill Creek";
    state.SampleInterval = "5 minutes";
    state.LoggingStyle = 130;
    state.Deadband = 250;
    state.FixedBaudRate = 4;
    state.EngUnits[0] = "Feet";
    state.DecPlaces[0] = 3;
    state.RawScaleLower[0] = 100;
    state.RawScaleUpper[0] = 65000;
    state.LowerLimit[0] = -0.5;
    state.UpperLimit[0] = 12.25;
    state.DisplayTop[0] = 15;
    state.AnalogEnable[1] = 0;
    state.DisplayTop[7] = 1E15;
    state.DisplayBottom[7] = 0.00001;
    state.EngUnits[8] = "Gallons";
    state.PulseUnit[0] = 0.1;
    state.AlarmEnable[0] = 1;
    state.AlarmSec[0] = 9;
    state.AlarmMin[0] = 5;
    state.AlarmHour[0] = 13;
    state.FlowMode = 1;
    state.FlowUnits = 2;
    state.FlowTop = 50;
    state.VelUnits = 1;
    state.VelTop = 10;
    state.ManningsS = 1.5;
    state.ManningsD = 18;
    state.ManningsDType = 1;
    state.FlumeTag = "P6";
    state.LevelOffset = -0.25;
    state.TablePath = "tables/demo.tbl";
    return state;
}

std::string Written(const LoggerRecord& state) {
    std::ostringstream file;
    WriteSetupFile(file, state, {"1.0.0", "11/15/2026", "08:30:00"});
    return file.str();
}

int CountOf(const std::string& file, const std::string& line) {
    int count = 0;
    for (std::size_t at = file.find(line); at != std::string::npos; at = file.find(line, at + 1)) {
        ++count;
    }
    return count;
}

class SetupFileReader : public ::testing::Test {
 protected:
    SetupFileReader() {
        state_.NumAnalogChannels = 3;
        state_.NumDigitalChannels = 2;
        SetDefaultSettings(state_);
    }

    bool Load(const std::string& text) {
        std::istringstream file(text);
        fault_ = ReadSetupFile(file, state_);
        return !fault_.has_value();
    }

    LoggerState state_;
    std::optional<SetupFileFault> fault_;
};

TEST(SetupFileWriter, WritesTheFileThatWasMadeByHand) {
    EXPECT_EQ(Written(WholeState()), WholeFile);
}

TEST(SetupFileWriter, AlwaysWrites141Lines) {
    for (std::uint8_t analog = 1; analog <= 8; ++analog) {
        LoggerState state;
        state.NumAnalogChannels = analog;
        state.NumDigitalChannels = analog % 3;
        SetDefaultSettings(state);
        const std::string file = Written(state);
        EXPECT_EQ(CountOf(file, "\r\n"), 141);
        EXPECT_EQ(std::count(file.begin(), file.end(), '\n'), 141);
        EXPECT_EQ(CountOf(file, "[Analog Channel]\r\n"), 8);
        EXPECT_EQ(CountOf(file, "[Digital Channel]\r\n"), 2);
        EXPECT_EQ(CountOf(file, "[Alarm]\r\n"), 2);
    }
}

/// A system whose decimal mark is a comma, as far as this one can stand for it.
class CommaSystem {
 public:
    CommaSystem()
        : stream_(std::locale::global(std::locale(std::locale::classic(), new Comma))),
          numeric_(std::setlocale(LC_NUMERIC, nullptr)) {
        for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "German_Germany.1252"}) {
            if (std::setlocale(LC_NUMERIC, name) != nullptr) {
                break;
            }
        }
    }
    ~CommaSystem() {
        std::locale::global(stream_);
        std::setlocale(LC_NUMERIC, numeric_.c_str());
    }
    CommaSystem(const CommaSystem&) = delete;
    CommaSystem& operator=(const CommaSystem&) = delete;

 private:
    struct Comma : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };

    std::locale stream_;
    std::string numeric_;
};

TEST_F(SetupFileReader, Reads0014AsWrittenThoughTheDecimalMarkOfTheSystemIsAComma) {
    LoggerState state = WholeState();
    state.LowerLimit[0] = 0.014;
    state.RawScaleUpper[0] = 65535;
    const CommaSystem here;
    std::ostringstream proof;
    proof << 0.5;
    ASSERT_EQ(proof.str(), "0,5") << "streams have the comma";
    const std::string file = Written(state);
    EXPECT_NE(file.find("LowerLimit=0.014\r\n"), std::string::npos);
    EXPECT_NE(file.find("RawScaleUpper=65535\r\n"), std::string::npos) << "no groups of digits";
    EXPECT_EQ(file.find(','), std::string::npos);
    ASSERT_TRUE(Load(file));
    EXPECT_EQ(state_.LowerLimit[0], 0.014);
    ASSERT_TRUE(Load("LowerLimit=1,5\n"));
    EXPECT_EQ(state_.LowerLimit[0], 1.5);
}

TEST(SetupFileWriter, WritesTextsAsTheyStand) {
    LoggerState state = WholeState();
    state.LoggerName = "  =[x]= ";
    EXPECT_EQ(CountOf(Written(state), "LoggerName=  =[x]= \r\n"), 1);
}

TEST_F(SetupFileReader, ReadsWhatTheWriterWrote) {
    state_.NumDigitalChannels = 1;
    state_.FixedBaudRate = 0;
    ASSERT_TRUE(Load(WholeFile));
    EXPECT_EQ(Written(state_), WholeFile);
    Bytes read;
    Bytes written;
    ASSERT_TRUE(config::EncodeSettingsImage(state_, read));
    ASSERT_TRUE(config::EncodeSettingsImage(WholeState(), written));
    EXPECT_EQ(read, written);
}

TEST_F(SetupFileReader, AnEmptyFileLoadsAsWhatIsThere) {
    EXPECT_TRUE(Load(""));
    EXPECT_EQ(state_.LoggerName, "Tessel");
}

TEST_F(SetupFileReader, DoesNotKnowTheSixKeysOfOrigin) {
    EXPECT_TRUE(
        Load("Program=x\nVersion=y\nDate=z\nTime=t\nNumAnalogChannels=8\n"
             "NumDigitalChannels=abc\n"));
    EXPECT_EQ(state_.NumAnalogChannels, 3);
    EXPECT_EQ(state_.NumDigitalChannels, 2);
}

TEST_F(SetupFileReader, TrimsValuesOfBlanksAlone) {
    EXPECT_TRUE(Load("LoggerName=  Mill Creek  \nDeadband= 5 \n[Analog]\nEngUnits= \tcm\n"));
    EXPECT_EQ(state_.LoggerName, "Mill Creek");
    EXPECT_EQ(state_.Deadband, 5);
    EXPECT_EQ(state_.EngUnits[0], "\tcm");
}

TEST_F(SetupFileReader, ACommaInARealIsADecimalMark) {
    EXPECT_TRUE(Load("LowerLimit=1,5\nManningsN=0,02\n"));
    EXPECT_EQ(state_.LowerLimit[0], 1.5);
    EXPECT_EQ(state_.ManningsN, 0.02);
}

TEST_F(SetupFileReader, GarbageInARealIs0ButInAnIntegerFails) {
    EXPECT_TRUE(Load("DisplayTop=abc\n"));
    EXPECT_EQ(state_.DisplayTop[0], 0);
    EXPECT_FALSE(Load("LoggingStyle=1\nDeadband=abc\n"));
    EXPECT_EQ(fault_->Line, 2);
    EXPECT_EQ(fault_->Key, "Deadband");
}

TEST_F(SetupFileReader, Channel8FailsOnlyWithTheKeyThatItGoverns) {
    EXPECT_TRUE(Load("[Analog Channel]\nChannel=8\n"));
    EXPECT_FALSE(Load("[Analog Channel]\nChannel=8\nEnable=1\n"));
    EXPECT_EQ(fault_->Line, 3);
}

TEST_F(SetupFileReader, EnableBeforeAnySectionIsSkipped) {
    EXPECT_TRUE(Load("Enable=0\nEnable=abc\nChannel=99\nEnable=1\nEngUnits=x\nDecPlaces=y\n"));
    EXPECT_EQ(state_.AnalogEnable[0], 1);
}

TEST_F(SetupFileReader, DisplayTopBeforeAnySectionSetsChannel0) {
    EXPECT_TRUE(Load("DisplayTop=5\n"));
    EXPECT_EQ(state_.DisplayTop[0], 5);
}

TEST_F(SetupFileReader, ABlankBeforeTheEqualsSignMakesAnUnknownKey) {
    EXPECT_TRUE(Load("LoggerName = x\n LoggerName=y\nloggername=z\n"));
    EXPECT_EQ(state_.LoggerName, "Tessel");
}

TEST_F(SetupFileReader, AKeyOfOneCharacterIsSkipped) {
    EXPECT_TRUE(Load("A=5\n=5\n\nno equals sign\n"));
}

TEST_F(SetupFileReader, AHeadWithoutItsBracketOpensItsSection) {
    EXPECT_TRUE(Load("[Analog\nEnable=0\n"));
    EXPECT_EQ(state_.AnalogEnable[0], 0);
    EXPECT_TRUE(Load("[Digitalis]\nEnable=0\n[Alarm clock\nEnable=1\n"));
    EXPECT_EQ(state_.DigitalEnable[0], 0);
    EXPECT_EQ(state_.AlarmEnable[0], 1);
}

TEST_F(SetupFileReader, AHeadInSmallLettersOpensNoSection) {
    EXPECT_TRUE(Load("[Analog]\n[analog channel]\nEnable=0\n"));
    EXPECT_EQ(state_.AnalogEnable[0], 1);
}

TEST_F(SetupFileReader, ASectionWithoutAChannelUsesTheLast) {
    EXPECT_TRUE(Load("[Analog]\nChannel=1\n[Digital]\nPulseUnit=7\n[Alarm]\nAlarmHour=6\n"));
    EXPECT_EQ(state_.PulseUnit[1], 7);
    EXPECT_EQ(state_.AlarmHour[1], 6);
}

TEST_F(SetupFileReader, KeysLookAtNoSectionButForThree) {
    EXPECT_TRUE(Load("[Alarm]\nChannel=2\nRawScaleUpper=7\nEngUnits=x\nDecPlaces=y\n"));
    EXPECT_EQ(state_.RawScaleUpper[2], 7);
}

TEST_F(SetupFileReader, UnitsOfASectionReachAsFarAsTheirFinalIndex) {
    EXPECT_TRUE(Load("[Analog]\nChannel=9\nEngUnits=last\nDecPlaces=4\n"));
    EXPECT_EQ(state_.EngUnits[9], "last");
    EXPECT_EQ(state_.DecPlaces[9], 4);
    EXPECT_FALSE(Load("[Digital]\nChannel=2\nEngUnits=x\n"));
    EXPECT_FALSE(Load("[Analog]\nChannel=10\nDecPlaces=1\n"));
}

TEST_F(SetupFileReader, ANegativeChannelFailsEveryKeyThatApplies) {
    for (const char* key :
         {"Enable=1", "EngUnits=x", "DecPlaces=1", "RawScaleUpper=1", "RawScaleLower=1",
          "LowerLimit=1", "UpperLimit=1", "DisplayTop=1", "DisplayBottom=1", "PulseUnit=1",
          "AlarmSec=1", "AlarmMin=1", "AlarmHour=1"}) {
        EXPECT_FALSE(Load(std::string("[Digital]\nChannel=-1\n") + key + "\n")) << key;
    }
}

TEST_F(SetupFileReader, IntegersKeepToTheirWidth) {
    EXPECT_TRUE(Load("LoggingStyle=255\nDeadband=-2147483648\nAlarmSec=-32768\nChannel=32767\n"));
    for (const char* line :
         {"LoggingStyle=256", "LoggingStyle=-1", "LoggingStyle=", "Deadband=2147483648",
          "AlarmSec=32768", "Channel=32768", "Channel=x", "FlowMode=0x1", "FlowUnits=1 2"}) {
        EXPECT_FALSE(Load(line)) << line;
    }
}

TEST_F(SetupFileReader, IntegersAreRounded) {
    EXPECT_TRUE(Load("Deadband=2.5\nSensorWarmupTime=1e1\n"));
    EXPECT_EQ(state_.Deadband, 2);
    EXPECT_EQ(state_.SensorWarmupTime, 10);
}

TEST_F(SetupFileReader, TheLoadStopsWhereItFails) {
    EXPECT_FALSE(Load("LoggerName=first\nDeadband=x\nLoggerName=second\n"));
    EXPECT_EQ(state_.LoggerName, "first");
}

TEST_F(SetupFileReader, AnyLineEndEndsALine) {
    EXPECT_TRUE(Load("LoggerName=a\rDeadband=1\nLoggingStyle=2\r\nFlumeTag=T"));
    EXPECT_EQ(state_.LoggerName, "a");
    EXPECT_EQ(state_.Deadband, 1);
    EXPECT_EQ(state_.LoggingStyle, 2);
    EXPECT_EQ(state_.FlumeTag, "T");
}

TEST_F(SetupFileReader, TheValueGoesToTheEndOfTheLine) {
    EXPECT_TRUE(Load("TablePath=a=b;c\n"));
    EXPECT_EQ(state_.TablePath, "a=b;c");
}

}  // namespace
