#include <gtest/gtest.h>

#include "client/frmClient.h"
#include "frmClient_fixture.h"
#include "support/qt/desk_look.h"

namespace client_test {
namespace {

// The window in every mode with a site's readings; kept as pictures where ORVIA_SCREENSHOTS names
// a folder.
class Screens : public ClientFormTest, public ::testing::WithParamInterface<bool> {
 protected:
    void ReadSite(frmClient& window) {
        LoggerRecord& site = console.Logger.Settings;
        site.NumSamples = 48213;
        site.StatusWord = 0x0080;
        site.AlarmHour = {6, 18};
        site.AlarmMin = {30, 5};
        site.AlarmEnable = {1, 0};
        site.EngUnits[1] = "PSI & more";
        site.EngUnits[8] = "Gal";
        site.PulseUnit[0] = 0.01;
        site.DecPlaces[8] = 2;
        ASSERT_TRUE(window.GetSettings());
        Sample(window, {26000, 42000, 34000});
        Sample(window, {29500, 42100, 34010});
        Sample(window, {31000, 41000, 33950});
        console.State.Newest.Raw = {32768, 41600, 33990, 0, 0, 0, 0, 0, 65535, 1204};
        window.SetDP();
    }

    void Keep(frmClient& window, const std::string& name) {
        QCoreApplication::processEvents();
        ExpectNothingCutOff(window);
        EXPECT_FALSE(window.grab().isNull());
        testing_support::KeepPicture(window,
                                     QStringLiteral("frmClient-%1-%2")
                                         .arg(ToQt(name), testing_support::DeskName(GetParam())));
    }

 private:
    const testing_support::DeskColours colours_{GetParam()};
};

TEST_P(Screens, OfEveryMode) {
    const auto window = Open("North outfall, pipe 2");
    ReadSite(*window);
    for (const char* mode : {"Small", "Medium", "Wide", "Meter", "Flow"}) {
        Click(*window, std::string("cmd") + mode);
        RunTicks(*window, 3);
        Keep(*window, mode);
    }
    Click(*window, "cmdMeter");
    RunTicks(*window, 3);
    Keep(*window, "MeterAfterFlow");
}

TEST_P(Screens, OfALoggerWithEightChannels) {
    console.Logger.Settings = FreshLogger(8, 2);
    console.Logger.Settings.LoggerName = "Tessel";
    console.Logger.Settings.SampleInterval = "15 minutes";
    const auto window = Open("Tank farm");
    ASSERT_TRUE(window->GetSettings());
    Click(*window, "cmdMeter");
    Sample(*window, {6500, 12000, 21000, 33000, 42000, 51000, 65535, 33000, 12, 65535});
    Sample(*window, {6510, 12010, 21010, 33010, 42010, 51010, 65535, 33010, 13, 65535});
    console.State.Newest.MarkNoSample();
    window->SetDP();
    Sample(*window, {6520, 12020, 21020, 33020, 42020, 51020, 65535, 33020, 14, 65535});
    RunTicks(*window, 3);
    Keep(*window, "MeterEight");
    console.State.Newest.MarkNoSample();
    window->SetDP();
    RunTicks(*window, 3);
    Keep(*window, "MeterNoSample");
    Click(*window, "cmdWide");
    Keep(*window, "WideNoSample");
}

INSTANTIATE_TEST_SUITE_P(Desktops, Screens, ::testing::Bool(), [](const auto& dark) {
    return std::string(dark.param ? "Dark" : "Light");
});

}  // namespace
}  // namespace client_test
