#include "setup/setup_validators.h"

#include <gtest/gtest.h>

#include <functional>

#include "common/fault.h"

namespace {

using Validator = std::function<FieldCheck(std::string_view)>;

struct Taken {
    const char* Name;
    Validator Check;
    std::string Typed;
    std::string Becomes;
};

class AcceptedText : public ::testing::TestWithParam<Taken> {};

TEST_P(AcceptedText, BecomesWhatTheFieldShows) {
    const FieldCheck check = GetParam().Check(GetParam().Typed);
    EXPECT_TRUE(check.Accepted);
    EXPECT_EQ(check.Text, GetParam().Becomes);
    EXPECT_FALSE(check.Box.has_value());
}

FieldCheck CheckWarmup(std::string_view text) {
    return CheckListNumber(text, 60);
}

INSTANTIATE_TEST_SUITE_P(
    Fields, AcceptedText,
    ::testing::Values(
        Taken{"FloatAsTheLoggerHoldsIt", CheckFloat, "0.0140000001", "0.014"},
        Taken{"FloatAboveALineOfNines", CheckFloat, "12345678", "999999"},
        Taken{"FloatAtAMillion", CheckFloat, "1000000", "999999"},
        Taken{"FloatBelowMinusAMillion", CheckFloat, "-1E6", "-999999"},
        Taken{"FloatJustBelowAMillion", CheckFloat, "999999.5", "999999"},
        Taken{"FloatWithExponent", CheckFloat, " 1.5e1 ", "15"},
        Taken{"FloatTooSmallForTheLogger", CheckFloat, "0.00000001", "0"},
        Taken{"SmallFloat", CheckFloat, "0.00001", "1E-05"},
        Taken{"NegativeFloat", CheckFloat, "-1.5", "-1.5"},
        Taken{"SevenDigits", CheckFloat, "123456.7", "123457"},
        Taken{"NameTrimmed", CheckName, "  Weir 7 ", "Weir 7"},
        Taken{"NameCutAt32", CheckName, "12345678901234567890123456789012345",
              "12345678901234567890123456789012"},
        Taken{"NameOf32CharactersOfMoreBytes", CheckName,
              "1234567890123456789012345678901\xC3\xA9x",
              "1234567890123456789012345678901\xC3\xA9"},
        Taken{"UnitCutAt9", CheckUnit, "kilometers", "kilometer"},
        Taken{"UnitOf9CharactersOfMoreBytes", CheckUnit, "\xE2\x82\xACm\xC2\xB3/m\xC2\xB2/h!+",
              "\xE2\x82\xACm\xC2\xB3/m\xC2\xB2/h!"},
        Taken{"UnitTrimmedBeforeTheCut", CheckUnit, "  Cubic Ft  ", "Cubic Ft"},
        Taken{"EmptyUnit", CheckUnit, "", ""}, Taken{"WarmupOf0", CheckWarmup, "0", "0"},
        Taken{"WarmupOf60", CheckWarmup, " 60 ", "60"},
        Taken{"WarmupRounded", CheckWarmup, "2.5", "2"}, Taken{"Raw", CheckRaw, "65535", "65535"},
        Taken{"RawOf0", CheckRaw, "-0", "0"},
        Taken{"IntervalRoundedToEven", CheckSampleInterval, "1.5", "2"},
        Taken{"IntervalOf65535", CheckSampleInterval, "65535", "65535"},
        Taken{"ExceptionOf0", CheckException, "0", "0"},
        Taken{"AlarmHourAlone", CheckAlarm, "7", "7:00:00"},
        Taken{"AlarmHourAndMinute", CheckAlarm, "12:5", "12:05:00"},
        Taken{"AlarmWhole", CheckAlarm, " 1:2:3", "1:02:03"},
        Taken{"AlarmRounded", CheckAlarm, "6.5:0.5:59.4", "6:00:59"},
        Taken{"AlarmWithWordsBehind", CheckAlarm, "11:30 pm", "11:30:00"},
        Taken{"AlarmWithoutMinute", CheckAlarm, "11:", "11:00:00"},
        Taken{"RoughnessOfAListItem", CheckRoughness, "0.013 - anything", "0.013"},
        Taken{"RoughnessWithBlanks", CheckRoughness, "  0.02  x", "0.02"},
        Taken{"LargeRoughness", CheckRoughness, "2000000", "999999"}),
    [](const auto& shown) { return shown.param.Name; });

struct NotTaken {
    const char* Name;
    Validator Check;
    std::string Typed;
};

class SilentRefusal : public ::testing::TestWithParam<NotTaken> {};

TEST_P(SilentRefusal, SaysNothingAndChangesNothing) {
    const FieldCheck check = GetParam().Check(GetParam().Typed);
    EXPECT_FALSE(check.Accepted);
    EXPECT_FALSE(check.Text.has_value());
    EXPECT_FALSE(check.Box.has_value());
}

INSTANTIATE_TEST_SUITE_P(Fields, SilentRefusal,
                         ::testing::Values(NotTaken{"FloatOfLetters", CheckFloat, "abc"},
                                           NotTaken{"EmptyFloat", CheckFloat, ""},
                                           NotTaken{"FloatWithComma", CheckFloat, "1,5"},
                                           NotTaken{"FloatBeyondADouble", CheckFloat, "1E400"},
                                           NotTaken{"FloatAndUnit", CheckFloat, "5 ft"},
                                           NotTaken{"RawOfLetters", CheckRaw, "abc"},
                                           NotTaken{"RawAbove65535", CheckRaw, "65536"},
                                           NotTaken{"NegativeRaw", CheckRaw, "-1"},
                                           NotTaken{"RawBeyond32Bits", CheckRaw, "4294967297"},
                                           NotTaken{"WarmupOf61", CheckWarmup, "61"},
                                           NotTaken{"WarmupOfLetters", CheckWarmup, "ten"},
                                           NotTaken{"RoughnessOfLetters", CheckRoughness, "abc"},
                                           NotTaken{"RoughnessOfBlanks", CheckRoughness, "  "}),
                         [](const auto& refused) { return refused.param.Name; });

struct ToldRefusal {
    const char* Name;
    Validator Check;
    std::string Typed;
    std::string Text;
    std::string Title = "Format Error";
};

class RefusalWithMessage : public ::testing::TestWithParam<ToldRefusal> {};

TEST_P(RefusalWithMessage, IsAStopBox) {
    const FieldCheck check = GetParam().Check(GetParam().Typed);
    EXPECT_FALSE(check.Accepted);
    ASSERT_TRUE(check.Box.has_value());
    EXPECT_EQ(check.Box->Text, GetParam().Text);
    EXPECT_EQ(check.Box->Title, GetParam().Title);
    EXPECT_EQ(check.Box->Icon, BoxIcon::Stop);
    EXPECT_EQ(check.Box->Buttons, BoxButtons::Ok);
}

const std::string IntervalText = "Error: sample interval must be between 1 and 65535.";
const std::string ExceptionText = "Error: exception level must be between 0 and 65535.";
const std::string HourText = "Alarm hour must be between 1 and 12";
const std::string MinuteText = "Alarm minute must be between 0 and 59";
const std::string SecondText = "Alarm second must be between 0 and 59";
const std::string RoughnessText = "The roughness value must be greater than zero!";

INSTANTIATE_TEST_SUITE_P(
    Fields, RefusalWithMessage,
    ::testing::Values(
        ToldRefusal{"IntervalOf0", CheckSampleInterval, "0", IntervalText},
        ToldRefusal{"IntervalOfLetters", CheckSampleInterval, "x", IntervalText},
        ToldRefusal{"IntervalAbove65535", CheckSampleInterval, "65536", IntervalText},
        ToldRefusal{"ExceptionAbove65535", CheckException, "65536", ExceptionText},
        ToldRefusal{"EmptyException", CheckException, "", ExceptionText},
        ToldRefusal{"AlarmHour13", CheckAlarm, "13:00", HourText},
        ToldRefusal{"AlarmHour0", CheckAlarm, "0:30", HourText},
        ToldRefusal{"AlarmHourBeyondAllNumbers", CheckAlarm, "1E999", HourText},
        ToldRefusal{"EmptyAlarm", CheckAlarm, "", HourText},
        ToldRefusal{"AlarmMinute60", CheckAlarm, "1:60", MinuteText},
        ToldRefusal{"AlarmMinuteNegative", CheckAlarm, "1:-1:70", MinuteText},
        ToldRefusal{"AlarmSecond60", CheckAlarm, "1:59:60", SecondText},
        ToldRefusal{"AlarmSecondRoundedTo60", CheckAlarm, "1:59:59.6", SecondText},
        ToldRefusal{"RoughnessOf0", CheckRoughness, "0", RoughnessText, "Illegal Value"},
        ToldRefusal{"RoughnessOfMinus1", CheckRoughness, "-1", RoughnessText, "Illegal Value"}),
    [](const auto& refused) { return refused.param.Name; });

TEST(SetupValidators, ARefusedTextStaysUnlessItIsARoughness) {
    EXPECT_FALSE(CheckAlarm("13:00").Text.has_value());
    EXPECT_FALSE(CheckSampleInterval("0").Text.has_value());
    EXPECT_EQ(CheckRoughness("0").Text, "0");
    EXPECT_EQ(CheckRoughness("-1").Text, "-1");
}

TEST(SetupValidators, RoundingBeyond32BitsIsAFault) {
    EXPECT_EQ(RoundToLong(2147483647.4), 2147483647);
    EXPECT_THROW(static_cast<void>(RoundToLong(2147483648.0)), Fault);
    EXPECT_THROW(static_cast<void>(RoundToLong(-2147483649.0)), Fault);
}

TEST(SetupValidators, ATimeIsReadWithoutRangesButWithin16Bits) {
    EXPECT_EQ(ReadTime("99:70:80")->Minute, 70);
    EXPECT_FALSE(ReadTime("40000:00").has_value());
    EXPECT_FALSE(ReadTime("1:1E99").has_value());
}

}  // namespace
