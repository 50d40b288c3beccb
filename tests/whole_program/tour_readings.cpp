#include <cstdlib>

#include "platform/qt/text_qt.h"
#include "whole_program/tour.h"

namespace whole_program {

namespace {

void Connect(Tour& tour) {
    tour.Console.OnForm(QStringLiteral("frmConnect"), [&](QWidget& form) {
        tour.Console.OnForm(QStringLiteral("frmConnectSetup"), [&](QWidget& setup) {
            ConsoleRun::Select(setup, QStringLiteral("cmbPort"), QStringLiteral("COM1"));
            tour.Keep(QStringLiteral("connection-settings"), &setup);
            tour.Console.Click(QStringLiteral("cmdOK"), &setup);
        });
        tour.Console.Click(QStringLiteral("cmdSetup"), &form);
        tour.Keep(QStringLiteral("connect"), &form);
        tour.Console.Click(QStringLiteral("cmdConnect"), &form);
    });
    tour.Console.Click(QStringLiteral("cmdConnect"));
    const Link& link = tour.Console.State().LinkRecord;
    Tour::Say(QStringLiteral("Connected: %1, system id %2")
                  .arg(link.Connected != False)
                  .arg(link.ServerSystemID));
    tour.Check(link.Connected != False, QStringLiteral("connection"));
    tour.Check(link.ServerSystemID == 42, QStringLiteral("system id"));
    tour.CheckBoxes({});
    tour.Keep(QStringLiteral("connected"));
}

void CheckChannels(Tour& tour, const frmClient& window, const QString& site, const Truth& truth) {
    const ClientPanel& panel = window.Model().Panel();
    for (std::size_t i = 0; i < truth.Analog.size(); ++i) {
        const QString shown = ToQt(panel.lblData2[i].Text);
        if (window.Model().Record.LoggerState.AnalogEnable[i] == 0) {
            tour.Check(shown.isEmpty(), QStringLiteral("a disabled channel shows ") + shown);
            continue;
        }
        Tour::Say(QStringLiteral("  channel %1: %2").arg(i + 1).arg(shown));
        tour.CheckFigure(shown, truth.Analog[i], 5e-3,
                         QStringLiteral("%1 channel %2").arg(site).arg(i + 1));
        tour.Check(shown.endsWith(truth.Units[i]), QStringLiteral("units of ") + shown);
    }
}

void SampleOf(Tour& tour, int client) {
    const QString site = tour.NameOf(client);
    const Truth truth = tour.HoldStill(site);
    const auto window = tour.OpenAndSample(client);
    const ClientPanel& panel = window->Model().Panel();
    Tour::Say(QStringLiteral("\n%1: logger %2, %3, every %4, %5, clock %6")
                  .arg(site, ToQt(panel.lblLoggerName.Text), ToQt(panel.lblRecords2.Text),
                       ToQt(panel.lblSampleInterval.Text), ToQt(panel.lblLoggingState.Text),
                       ToQt(panel.lblLoggerTime.Text)));
    tour.Check(ToQt(panel.lblLoggerName.Text) == site, QStringLiteral("logger name"));
    const int records = ToQt(panel.lblRecords.Text).toInt();
    tour.Check(std::abs(records - truth.Records) <= 1, QStringLiteral("records"));
    CheckChannels(tour, *window, site, truth);
    tour.Keep(QStringLiteral("sample-%1").arg(client));
}

void SampleContinuously(Tour& tour) {
    constexpr int Milliseconds = 5500;
    ConsoleRun& console = tour.Console;
    const auto window = tour.Open(1);
    console.Click(QStringLiteral("cmdMeter"), window.get());
    console.Click(QStringLiteral("cmdSampleContinuously"));
    ConsoleRun::RunFor(Milliseconds);
    tour.Keep(QStringLiteral("continuous"));
    tour.Keep(QStringLiteral("view-bars"), window.get());
    const ClientPanel& panel = window->Model().Panel();
    const QString history = ToQt(panel.lblHistory[0].Text);
    Tour::Say(QStringLiteral("\nSampling continuously: %1, before that %2")
                  .arg(ToQt(panel.lblValue[0].Text),
                       QString(history).replace(QLatin1Char('\n'), QStringLiteral(", "))));
    tour.Check(history.count(QLatin1Char('.')) == 3,
               QStringLiteral("three older readings beside the newest"));
    console.Click(QStringLiteral("cmdSampleContinuously"));
    tour.Check(
        ConsoleRun::RunUntil(
            [&] { return console.State().SamplingRecord.ContinuousMode == SamplingIdle; }, 5000),
        QStringLiteral("sampling did not stop"));
}

void FlowOf(Tour& tour, int client) {
    const QString site = tour.NameOf(client);
    const Truth truth = tour.HoldStill(site);
    const auto window = tour.OpenAndSample(client);
    tour.Console.Click(QStringLiteral("cmdFlow"), window.get());
    const ClientPanel& panel = window->Model().Panel();
    const QString flow = ToQt(panel.lblValue[3].Text);
    const QString velocity = ToQt(panel.lblValue[4].Text);
    Tour::Say(QStringLiteral("\n%1:%2, level %3 %4, flow %5 %6%7")
                  .arg(site, ToQt(panel.lblFlowMode.Text), ToQt(panel.lblValue[0].Text),
                       ToQt(panel.lblUnits[0].Text), flow, ToQt(panel.lblUnits[3].Text),
                       velocity.isEmpty() ? QString()
                                          : QStringLiteral(", velocity %1 %2")
                                                .arg(velocity, ToQt(panel.lblUnits[4].Text))));
    tour.CheckFigure(flow, truth.Flow, 2e-3, site + QStringLiteral(" flow"));
    if (!velocity.isEmpty()) {
        tour.CheckFigure(velocity, truth.Velocity, 2e-3, site + QStringLiteral(" velocity"));
    }
    tour.Keep(QStringLiteral("flow-%1").arg(client));
}

}  // namespace

void TakeReadings(Tour& tour) {
    Connect(tour);
    for (int client = 1; client <= 3; ++client) {
        SampleOf(tour, client);
    }
    SampleContinuously(tour);
    tour.CheckBoxes({});
}

void ShowFlows(Tour& tour) {
    for (int client = 4; client <= 7; ++client) {
        FlowOf(tour, client);
    }
    tour.CheckBoxes({});
}

}  // namespace whole_program
