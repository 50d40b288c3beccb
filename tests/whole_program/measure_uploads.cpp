#include "whole_program/measure_uploads.h"

#include <QElapsedTimer>
#include <algorithm>
#include <cstdio>
#include <memory>
#include <string>

#include "whole_program/measure_load.h"
#include "whole_program/sim_process.h"

namespace whole_program {

namespace {

constexpr int BitsPerByte = 10;
/// At this rate the bytes come one by one, and the upload lasts long.
constexpr int SlowestBaud = 9600;
/// What an exchange takes beside its bytes on the line: twice through the air, and the logger.
constexpr double SecondsPerExchange = 0.013;

struct Traffic {
    double Bytes = 0;
    double Exchanges = 0;
};

Traffic TrafficOf(SimProcess& sim) {
    Traffic traffic;
    for (const QString& line : sim.Ask(QStringLiteral("counters"))) {
        const QString name = line.section(QLatin1Char(' '), 0, 0);
        const double count = line.section(QLatin1Char(' '), 1, 1).toDouble();
        if (name == QLatin1String("written") || name == QLatin1String("to-console")) {
            traffic.Bytes += count;
        } else if (name == QLatin1String("requests")) {
            traffic.Exchanges += count;
        }
    }
    return traffic;
}

/// How late an event comes that is due every few milliseconds, at the worst: as late would a click.
class Lateness {
 public:
    Lateness() {
        QObject::connect(&timer_, &QTimer::timeout, &timer_,
                         [this] { worst_ = std::max(worst_, since_.restart() - Interval); });
        timer_.setTimerType(Qt::PreciseTimer);
        timer_.start(Interval);
        since_.start();
    }
    [[nodiscard]] qint64 Worst() const { return worst_; }

 private:
    static constexpr int Interval = 5;

    QTimer timer_;
    QElapsedTimer since_;
    qint64 worst_ = 0;
};

QWidget* UploadForm() {
    return ConsoleRun::Modal(QStringLiteral("frmGetHistoryData"));
}

void MeasureUpload(int baud, SimProcess& sim, ConsoleRun& console) {
    QElapsedTimer elapsed;
    Traffic before;
    console.When([] { return UploadForm() != nullptr; },
                 [&] {
                     before = TrafficOf(sim);
                     elapsed.start();
                 });
    const Lateness lateness;
    console.When(
        [] { return UploadForm()->findChild<QWidget*>(QStringLiteral("cmdOkay"))->isEnabled(); },
        [&] {
            const double seconds = static_cast<double>(elapsed.elapsed()) / 1000;
            const Traffic after = TrafficOf(sim);
            const double allowed = (after.Bytes - before.Bytes) * BitsPerByte / baud +
                                   (after.Exchanges - before.Exchanges) * SecondsPerExchange;
            std::printf(
                "upload of %d records at %6d baud %24.2f s, %.1f %% of the line, "
                "click after %lld ms at most\n",
                console.State().History.HistoryCount(), baud, seconds, 100 * allowed / seconds,
                static_cast<long long>(lateness.Worst()));
            console.Click(QStringLiteral("cmdOkay"), UploadForm());
        });
    console.OnForm(QStringLiteral("frmHistory"),
                   [&console](QWidget& form) { console.Click(QStringLiteral("cmdOK"), &form); });
    console.Click(QStringLiteral("cmdGetHistory"));
}

/// What some seconds in the midst of an upload cost, with nothing beside it that wakes.
void MeasureLoad(int baud, ConsoleRun& console) {
    constexpr int Milliseconds = 5000;
    console.When([] { return UploadForm() != nullptr; },
                 [&console, baud] {
                     console.LookAway(Milliseconds);
                     const auto load = std::make_shared<Load>();
                     QTimer::singleShot(Milliseconds, UploadForm(), [load, baud] {
                         const std::string what = "upload at " + std::to_string(baud) + " baud";
                         load->Print(what.c_str());
                     });
                 });
    console.When(
        [] { return UploadForm()->findChild<QWidget*>(QStringLiteral("cmdOkay"))->isEnabled(); },
        [&] { console.Click(QStringLiteral("cmdOkay"), UploadForm()); });
    console.OnForm(QStringLiteral("frmHistory"),
                   [&console](QWidget& form) { console.Click(QStringLiteral("cmdOK"), &form); });
    console.Click(QStringLiteral("cmdGetHistory"));
}

}  // namespace

void MeasureUploads(const QString& simulator, const QString& network, const Home& home) {
    for (const int baud : {SlowestBaud, 38400, 115200}) {
        SimProcess sim(simulator, network, home.PortLink(),
                       {QStringLiteral("--baud"), QString::number(baud)});
        ConsoleRun console;
        console.Start();
        console.OpenClient(1);
        console.Click(QStringLiteral("cmdGetSettings"));
        MeasureUpload(baud, sim, console);
        if (baud == SlowestBaud) {
            MeasureLoad(baud, console);
        }
        console.Close();
    }
}

}  // namespace whole_program
