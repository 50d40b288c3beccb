// A tour of the console on a simulated site, through all that a technician does there. Prints what
// each step shows and holds it against what the simulator says its sensors read and its loggers
// hold. Exit status 1 if anything differs.

#include "whole_program/tour.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPixmap>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <stdexcept>

#include "platform/qt/text_qt.h"

namespace whole_program {

Tour::Tour(const QString& simulator, const QString& data, QString screenshots)
    : Simulator(simulator),
      Data(data),
      House(QDir(data).filePath(QStringLiteral("site.obk"))),
      Sim(simulator, QDir(data).filePath(QStringLiteral("site.net")), House.PortLink()),
      screenshots_(std::move(screenshots)) {}

void Tour::Check(bool holds, const QString& what) {
    if (!holds) {
        ++failures_;
        Say(QStringLiteral("  DIFFERS: ") + what);
    }
}

void Tour::CheckFigure(const QString& shown, double truth, double share, const QString& what) {
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

void Tour::CheckBoxes(const QStringList& beginnings) {
    const QStringList boxes = Console.TakeBoxes();
    const bool alike = std::equal(
        boxes.begin(), boxes.end(), beginnings.begin(), beginnings.end(),
        [](const QString& box, const QString& beginning) { return box.startsWith(beginning); });
    Check(alike, QStringLiteral("boxes came up: ") + boxes.join(QStringLiteral(" | ")) +
                     QStringLiteral("; expected: ") + beginnings.join(QStringLiteral(" | ")));
}

void Tour::Keep(const QString& name, QWidget* window) {
    if (!screenshots_.isEmpty()) {
        QDir().mkpath(screenshots_);
        ConsoleRun::RunFor(300);  // the bars' timer has drawn by then
        QWidget& shown = window != nullptr ? *window : Console.Window();
        shown.grab().save(QDir(screenshots_).filePath(name + QStringLiteral(".png")));
    }
}

void Tour::KeepFile(const QString& path) {
    if (!screenshots_.isEmpty()) {
        const QString copy = QDir(screenshots_).filePath(QFileInfo(path).fileName());
        QFile::remove(copy);
        QFile::copy(path, copy);
    }
}

QString Tour::NameOf(int client) {
    return ToQt(Console.State().Book.Entries[client].Name);
}

std::shared_ptr<frmClient> Tour::Open(int client) {
    auto window = Console.OpenClient(client);
    if (window == nullptr) {
        throw std::runtime_error("no client window opened");
    }
    return window;
}

std::shared_ptr<frmClient> Tour::OpenAndSample(int client) {
    auto window = Open(client);
    Console.Click(QStringLiteral("cmdGetSettings"));
    return window;
}

Truth Tour::HoldStill(const QString& site) {
    const Truth before = Sim.TruthOf(site);
    for (std::size_t i = 0; i < before.Analog.size(); ++i) {
        Sim.Ask(
            QStringLiteral("set %1 %2 %3").arg(site).arg(i + 1).arg(before.Analog[i], 0, 'f', 6));
    }
    return Sim.TruthOf(site);
}

void Tour::CloseClients() {
    const ClientWindows open = Console.State().Windows;
    for (const auto& window : open.Slots) {
        if (window != nullptr) {
            dynamic_cast<frmClient&>(*window).close();
        }
    }
    Check(Console.State().Windows.NumClientWindows == 0, QStringLiteral("windows left open"));
}

namespace {

void CloseInOrder(Tour& tour) {
    tour.CloseClients();
    tour.Check(tour.Console.AllCameUp(), QStringLiteral("not everything expected came up"));
    tour.Check(tour.Console.Close(), QStringLiteral("the console did not close"));
    tour.Check(tour.Console.State().LinkRecord.LinkState == LinkDisconnected,
               QStringLiteral("the link was left open"));
    tour.CheckBoxes({});
    Tour::Say(QStringLiteral("\nClosed in order."));
}

int Take(Tour& tour) {
    const int refusals = TryPorts(tour);
    TakeReadings(tour);
    OperateNetwork(tour);
    LookBack(tour, refusals);
    FetchHistories(tour);
    KeepWhatCame(tour);
    ShowFlows(tour);
    SetUpLoggers(tour);
    MakeFlowTable(tour);
    CollectNetwork(tour);
    ShareArchive(tour);
    CloseInOrder(tour);
    Tour::Say(tour.Failures() == 0
                  ? QStringLiteral("\nEverything is as the simulator was told to answer.")
                  : QStringLiteral("\n%1 things differ.").arg(tour.Failures()));
    return tour.Failures() == 0 ? 0 : 1;
}

int RunTour(const QStringList& arguments) {
    QCommandLineParser parser;
    const QCommandLineOption simulator(QStringLiteral("simulator"), {}, QStringLiteral("program"));
    const QCommandLineOption data(QStringLiteral("data"), {}, QStringLiteral("folder"));
    const QCommandLineOption screenshots(QStringLiteral("screenshots"), {},
                                         QStringLiteral("folder"));
    const QCommandLineOption second(QStringLiteral("second-console"), {}, QStringLiteral("entry"));
    const QCommandLineOption hold(QStringLiteral("hold-port"));
    parser.addOptions({simulator, data, screenshots, second, hold});
    parser.addHelpOption();
    parser.process(arguments);
    try {
        if (parser.isSet(second)) {
            return RunSecondConsole(parser.value(second).toInt());
        }
        if (parser.isSet(hold)) {
            return HoldPort();
        }
        Tour tour(parser.value(simulator), parser.value(data), parser.value(screenshots));
        return Take(tour);
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
    // Names are typed into the toolkit's own dialogs; in one of the system there is nobody to type.
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    return whole_program::RunTour(QCoreApplication::arguments());
}
