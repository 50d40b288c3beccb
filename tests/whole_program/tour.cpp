// A tour of the console on a simulated site: connects, opens clients, gets a sample of each,
// samples one continuously, shows the flow sites, closes in order. Prints what each window shows
// and holds it against what the simulator says its sensors read. Exit status 1 if anything differs.

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QPixmap>
#include <QRegularExpression>
#include <QTextStream>
#include <cmath>
#include <cstdio>
#include <stdexcept>

#include "platform/qt/text_qt.h"
#include "whole_program/console_run.h"
#include "whole_program/sim_process.h"

namespace whole_program {
namespace {

class Tour {
 public:
    Tour(const QString& simulator, const QString& data, QString screenshots)
        : home_(QDir(data).filePath(QStringLiteral("site.obk"))),
          sim_(simulator, QDir(data).filePath(QStringLiteral("site.net")), home_.PortLink()),
          screenshots_(std::move(screenshots)) {}

    int Run() {
        Connect();
        for (int client = 1; client <= 3; ++client) {
            SampleOf(client);
        }
        SampleContinuously();
        for (int client = 4; client <= 7; ++client) {
            FlowOf(client);
        }
        CloseInOrder();
        Say(failures_ == 0 ? QStringLiteral("\nEverything is as the simulator was told to answer.")
                           : QStringLiteral("\n%1 things differ.").arg(failures_));
        return failures_ == 0 ? 0 : 1;
    }

 private:
    static void Say(const QString& line) { QTextStream(stdout) << line << Qt::endl; }

    void Check(bool holds, const QString& what) {
        if (!holds) {
            ++failures_;
            Say(QStringLiteral("  DIFFERS: ") + what);
        }
    }

    /// Holds a figure on the screen against the truth, within half a unit of its last decimal and
    /// the share that one raw count makes up.
    void CheckFigure(const QString& shown, double truth, double share, const QString& what) {
        const QString figure = shown.section(QLatin1Char(' '), 0, 0);
        bool isNumber = false;
        const double value = figure.toDouble(&isNumber);
        const auto point = figure.indexOf(QLatin1Char('.'));
        const auto decimals = point < 0 ? 0 : figure.size() - point - 1;
        const double tolerance = 0.5 * std::pow(10, -static_cast<double>(decimals)) +
                                 share * std::max(1.0, std::fabs(truth)) + 1e-9;
        Check(isNumber && std::fabs(value - truth) <= tolerance,
              QStringLiteral("%1 shows \"%2\", truly %3").arg(what, shown).arg(truth, 0, 'g', 8));
    }

    void Keep(const QString& name) {
        if (!screenshots_.isEmpty()) {
            QDir().mkpath(screenshots_);
            ConsoleRun::RunFor(300);  // the bars' timer has drawn by then
            console_.Window().grab().save(
                QDir(screenshots_).filePath(name + QStringLiteral(".png")));
        }
    }

    void Connect() {
        console_.Start();
        Say(QStringLiteral("Connected: %1, system id %2")
                .arg(console_.State().LinkRecord.Connected != False)
                .arg(console_.State().LinkRecord.ServerSystemID));
        Check(console_.State().LinkRecord.Connected != False, QStringLiteral("connection"));
        Check(console_.State().LinkRecord.ServerSystemID == 42, QStringLiteral("system id"));
        Check(console_.Boxes().isEmpty(), console_.Boxes().join(QLatin1Char('\n')));
        Keep(QStringLiteral("connected"));
    }

    QString NameOf(int client) { return ToQt(console_.State().Book.Entries[client].Name); }

    /// Puts steady values before the sensors, so that the truth holds still while it is sampled.
    Truth HoldStill(const QString& site) {
        const Truth before = sim_.TruthOf(site);
        for (std::size_t i = 0; i < before.Analog.size(); ++i) {
            sim_.Ask(QStringLiteral("set %1 %2 %3")
                         .arg(site)
                         .arg(i + 1)
                         .arg(before.Analog[i], 0, 'f', 6));
        }
        return sim_.TruthOf(site);
    }

    std::shared_ptr<frmClient> OpenAndSample(int client) {
        const auto window = console_.OpenClient(client);
        if (window == nullptr) {
            throw std::runtime_error("no client window opened");
        }
        console_.Click(QStringLiteral("cmdGetSettings"));
        return window;
    }

    void SampleOf(int client) {
        const QString site = NameOf(client);
        const Truth truth = HoldStill(site);
        const auto window = OpenAndSample(client);
        const ClientPanel& panel = window->Model().Panel();
        Say(QStringLiteral("\n%1: logger %2, %3, every %4, %5, clock %6")
                .arg(site, ToQt(panel.lblLoggerName.Text), ToQt(panel.lblRecords2.Text),
                     ToQt(panel.lblSampleInterval.Text), ToQt(panel.lblLoggingState.Text),
                     ToQt(panel.lblLoggerTime.Text)));
        Check(ToQt(panel.lblLoggerName.Text) == site, QStringLiteral("logger name"));
        Check(std::abs(panel.lblRecords.Text.empty()
                           ? truth.Records
                           : std::stoi(panel.lblRecords.Text) - truth.Records) <= 1,
              QStringLiteral("records: ") + ToQt(panel.lblRecords.Text));
        for (std::size_t i = 0; i < truth.Analog.size(); ++i) {
            const QString shown = ToQt(panel.lblData2[i].Text);
            if (window->Model().Record.LoggerState.AnalogEnable[i] == 0) {
                Check(shown.isEmpty(), QStringLiteral("a disabled channel shows ") + shown);
                continue;
            }
            Say(QStringLiteral("  channel %1: %2").arg(i + 1).arg(shown));
            CheckFigure(shown, truth.Analog[i], 5e-3,
                        QStringLiteral("%1 channel %2").arg(site).arg(i + 1));
            Check(shown.endsWith(truth.Units[i]), QStringLiteral("units of ") + shown);
        }
        Keep(QStringLiteral("sample-%1").arg(client));
    }

    void SampleContinuously() {
        constexpr int Milliseconds = 5500;
        const auto window = console_.OpenClient(1);
        console_.Click(QStringLiteral("cmdMeter"), window.get());
        console_.Click(QStringLiteral("cmdSampleContinuously"));
        ConsoleRun::RunFor(Milliseconds);
        Keep(QStringLiteral("continuous"));
        const ClientPanel& panel = window->Model().Panel();
        const QString history = ToQt(panel.lblHistory[0].Text);
        Say(QStringLiteral("\nSampling continuously: %1, before that %2")
                .arg(ToQt(panel.lblValue[0].Text),
                     QString(history).replace(QLatin1Char('\n'), QStringLiteral(", "))));
        Check(history.count(QLatin1Char('.')) == 3,
              QStringLiteral("three older readings beside the newest"));
        console_.Click(QStringLiteral("cmdSampleContinuously"));
        Check(ConsoleRun::RunUntil(
                  [this] { return console_.State().SamplingRecord.ContinuousMode == SamplingIdle; },
                  5000),
              QStringLiteral("sampling did not stop"));
    }

    void FlowOf(int client) {
        const QString site = NameOf(client);
        const Truth truth = HoldStill(site);
        const auto window = OpenAndSample(client);
        console_.Click(QStringLiteral("cmdFlow"), window.get());
        const ClientPanel& panel = window->Model().Panel();
        const QString flow = ToQt(panel.lblValue[3].Text);
        const QString velocity = ToQt(panel.lblValue[4].Text);
        Say(QStringLiteral("\n%1:%2, level %3 %4, flow %5 %6%7")
                .arg(site, ToQt(panel.lblFlowMode.Text), ToQt(panel.lblValue[0].Text),
                     ToQt(panel.lblUnits[0].Text), flow, ToQt(panel.lblUnits[3].Text),
                     velocity.isEmpty() ? QString()
                                        : QStringLiteral(", velocity %1 %2")
                                              .arg(velocity, ToQt(panel.lblUnits[4].Text))));
        CheckFigure(flow, truth.Flow, 2e-3, site + QStringLiteral(" flow"));
        if (!velocity.isEmpty()) {
            CheckFigure(velocity, truth.Velocity, 2e-3, site + QStringLiteral(" velocity"));
        }
        Keep(QStringLiteral("flow-%1").arg(client));
    }

    void CloseInOrder() {
        const ClientWindows open = console_.State().Windows;
        for (const auto& window : open.Slots) {
            dynamic_cast<frmClient&>(*window).close();
        }
        Check(console_.State().Windows.NumClientWindows == 0, QStringLiteral("windows left open"));
        Check(console_.Close(), QStringLiteral("the console did not close"));
        Check(console_.State().LinkRecord.LinkState == LinkDisconnected,
              QStringLiteral("the link was left open"));
        for (const QString& box : console_.Boxes()) {
            Check(false, QStringLiteral("a box came up: ") + box);
        }
        Say(QStringLiteral("\nClosed in order."));
    }

    Home home_;
    SimProcess sim_;
    ConsoleRun console_;
    QString screenshots_;
    int failures_ = 0;
};

int RunTour(const QStringList& arguments) {
    QCommandLineParser parser;
    const QCommandLineOption simulator(QStringLiteral("simulator"), {}, QStringLiteral("program"));
    const QCommandLineOption data(QStringLiteral("data"), {}, QStringLiteral("folder"));
    const QCommandLineOption screenshots(QStringLiteral("screenshots"), {},
                                         QStringLiteral("folder"));
    parser.addOptions({simulator, data, screenshots});
    parser.addHelpOption();
    parser.process(arguments);
    try {
        return Tour(parser.value(simulator), parser.value(data), parser.value(screenshots)).Run();
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "orvia-tour: %s\n", failure.what());
        return 2;
    }
}

}  // namespace
}  // namespace whole_program

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    application.setQuitOnLastWindowClosed(false);
    return whole_program::RunTour(QCoreApplication::arguments());
}
