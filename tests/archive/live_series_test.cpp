#include "archive/live_series.h"

#include "client/client_fixture.h"

namespace client_test {
namespace {

/// A window whose samples are heard of.
class LiveSeriesTest : public ::testing::Test {
 protected:
    LiveSeriesTest() {
        console_.Context.Samples = &live_;
        window_->Load();
        Know(*window_);
    }

    static void Know(ClientModel& window, int analog = 2, int pulse = 1) {
        LoggerState& state = window.Record.LoggerState;
        state.NumAnalogChannels = static_cast<std::uint8_t>(analog);
        state.NumDigitalChannels = static_cast<std::uint8_t>(pulse);
        SetDefaultSettings(state);
        state.AnalogEnable.fill(1);
        state.DigitalEnable.fill(1);
        state.RawScaleUpper.fill(100);
        state.UpperLimit.fill(100);
        state.LowerLimit.fill(0);
        state.AlarmEnable = {1, 1};
        window.Record.SettingsValid = True;
    }
    void Sample(ClientModel& window, std::initializer_list<std::int32_t> raw) {
        console_.State.Newest = {};
        std::copy(raw.begin(), raw.end(), console_.State.Newest.Raw.begin());
        window.SetDP();
    }
    /// Moves the host's clock.
    void Wait(int seconds) {
        LocalTime& start = console_.Outside.Clock.Start;
        start = TimeOfMoment(MomentOf(start) + seconds);
    }
    [[nodiscard]] Moment Now() { return MomentOf(console_.Outside.Clock.Now()); }
    std::shared_ptr<const NamedSeries> Live() { return live_.Of(*window_, "Hill Tanks"); }
    std::size_t Count() { return Live()->Values().RecordCount(); }

    Console<> console_;
    LiveSeries live_{console_.State.Outside.Clock};
    RecordedSurface surface_;
    std::unique_ptr<ClientModel> window_ =
        std::make_unique<ClientModel>(console_.Context, surface_);
};

TEST_F(LiveSeriesTest, AnOpenWindowBeginsWithoutReadings) {
    ASSERT_NE(Live(), nullptr);
    EXPECT_EQ(Count(), 0U);
    EXPECT_EQ(Live()->Name(), "Hill Tanks");
}

TEST_F(LiveSeriesTest, KeepsEachReadingWithTheHostsTimeInTheWindowsUnits) {
    Sample(*window_, {40, 60, 7});
    Wait(1);
    Sample(*window_, {41, 61, 8});
    const auto live = Live();
    ASSERT_EQ(live->Values().RecordCount(), 2U);
    EXPECT_EQ(live->Values().Times().At(1), Now());
    EXPECT_EQ(live->Values().Times().At(0), Now() - 1);
    ASSERT_EQ(live->Values().Columns().size(), 3U);
    EXPECT_DOUBLE_EQ(live->Values().At(0, 1), 41);
    EXPECT_DOUBLE_EQ(live->Values().At(1, 0), 60);
    EXPECT_EQ(live->Values().CountAt(2, 1), 8);
}

TEST_F(LiveSeriesTest, IsTheSameSeriesUntilAReadingComes) {
    Sample(*window_, {40, 60, 7});
    const auto first = Live();
    EXPECT_EQ(Live(), first);
    Sample(*window_, {40, 60, 7});
    EXPECT_NE(Live(), first);
    EXPECT_EQ(first->Values().RecordCount(), 1U) << "what was handed out stays as it is";
}

TEST_F(LiveSeriesTest, ALoggerThatHadNoSampleLeavesNoReading) {
    console_.State.Newest.MarkNoSample();
    window_->SetDP();
    EXPECT_EQ(Count(), 0U);
}

TEST_F(LiveSeriesTest, SamplesOfUnknownSettingsLeaveNoReading) {
    window_->Record.SettingsValid = False;
    Sample(*window_, {40, 60, 7});
    EXPECT_EQ(Count(), 0U);
}

TEST_F(LiveSeriesTest, ReadingsGoAfterAnHour) {
    Sample(*window_, {1, 1, 1});
    Wait(1800);
    Sample(*window_, {2, 2, 2});
    Wait(1800);
    Sample(*window_, {3, 3, 3});
    EXPECT_EQ(Count(), 3U);
    Wait(1);
    Sample(*window_, {4, 4, 4});
    EXPECT_EQ(Count(), 3U);
    EXPECT_DOUBLE_EQ(Live()->Values().At(0, 0), 2);
}

TEST_F(LiveSeriesTest, AClockThatIsSetBackLeavesNoReadingAhead) {
    Sample(*window_, {1, 1, 1});
    Wait(-7200);
    Sample(*window_, {2, 2, 2});
    ASSERT_EQ(Count(), 1U);
    EXPECT_DOUBLE_EQ(Live()->Values().At(0, 0), 2);
}

TEST_F(LiveSeriesTest, NoMoreReadingsAreKeptThanThereIsRoomFor) {
    for (std::size_t i = 0; i < LiveSeries::MostReadings + 10; ++i) {
        live_.Sampled(*window_);
        if (i == 0) {
            Sample(*window_, {5, 5, 5});
        }
    }
    EXPECT_EQ(Count(), LiveSeries::MostReadings);
}

TEST_F(LiveSeriesTest, AMinuteAndAHalfWithoutReadingIsAGapAndAlarmsAreNone) {
    for (const int wait : {60, 91, 90}) {
        Sample(*window_, {1, 1, 1});
        Wait(wait);
    }
    Sample(*window_, {1, 1, 1});
    const SeriesTimes& times = Live()->Values().Times();
    EXPECT_EQ(times.Pair(1), PairKind::Joined);
    EXPECT_EQ(times.Pair(2), PairKind::Gap);
    EXPECT_EQ(times.Pair(3), PairKind::Joined);
    EXPECT_EQ(Live()->Records().Settings[0].Logger.AlarmEnable[0], 0);
}

TEST_F(LiveSeriesTest, NewSettingsCountFromThenOn) {
    Sample(*window_, {40, 60, 7});
    Sample(*window_, {40, 60, 7});
    window_->Record.LoggerState.UpperLimit[0] = 200;
    window_->Record.LoggerState.SettingsImage.clear();
    Sample(*window_, {40, 60, 7});
    const auto live = Live();
    EXPECT_EQ(live->Records().Settings.size(), 2U);
    EXPECT_DOUBLE_EQ(live->Values().At(0, 1), 40);
    EXPECT_DOUBLE_EQ(live->Values().At(0, 2), 80);
}

TEST_F(LiveSeriesTest, WindowsAreKeptApartAndForgottenWhenTheyClose) {
    ClientModel other(console_.Context, surface_);
    other.Load();
    Know(other, 1, 0);
    Sample(other, {9});
    Sample(*window_, {1, 1, 1});
    EXPECT_EQ(Count(), 1U);
    EXPECT_EQ(live_.Of(other, "Mill")->Values().Columns().size(), 1U);
    other.Unload();
    EXPECT_EQ(live_.Of(other, "Mill"), nullptr);
    Sample(other, {9});
    EXPECT_EQ(live_.Of(other, "Mill"), nullptr);
    EXPECT_EQ(Count(), 1U);
    window_->Unload();
    EXPECT_EQ(Live(), nullptr);
}

}  // namespace
}  // namespace client_test
