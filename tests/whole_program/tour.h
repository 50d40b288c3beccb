#ifndef ORVIA_TESTS_WHOLE_PROGRAM_TOUR_H
#define ORVIA_TESTS_WHOLE_PROGRAM_TOUR_H

#include <QString>
#include <QStringList>
#include <QTextStream>
#include <memory>

#include "whole_program/console_run.h"
#include "whole_program/sim_process.h"

namespace whole_program {

/// What the stations of the tour share: the console, the simulator behind its port, and the count
/// of what was not as the simulator said.
class Tour {
 public:
    /// `data` is the folder of the site; screenshots go to `screenshots`, unless that is empty.
    Tour(const QString& simulator, const QString& data, QString screenshots);

    static void Say(const QString& line) { QTextStream(stdout) << line << Qt::endl; }
    /// Counts, with `what` for a reason, whatever does not hold.
    void Check(bool holds, const QString& what);
    /// Holds a figure on the screen against the truth, within half a unit of its last decimal and
    /// `share` of it, what one raw count or one second makes up.
    void CheckFigure(const QString& shown, double truth, double share, const QString& what);
    /// The boxes since the last call begin so, each in turn.
    void CheckBoxes(const QStringList& beginnings);
    /// Keeps a picture of a window, the main window if none is given.
    void Keep(const QString& name, QWidget* window = nullptr);
    /// Keeps a copy of a file beside the pictures.
    void KeepFile(const QString& path);

    [[nodiscard]] QString NameOf(int client);
    /// Opens the window of an entry; throws if none opens.
    std::shared_ptr<frmClient> Open(int client);
    /// Likewise, and gets a sample.
    std::shared_ptr<frmClient> OpenAndSample(int client);
    /// Puts steady values before the sensors, so that the truth holds still while it is sampled.
    Truth HoldStill(const QString& site);
    void CloseClients();

    [[nodiscard]] int Failures() const { return failures_; }

    const QString Simulator;  ///< its program
    const QString Data;       ///< the folder of the site

    Home House;
    SimProcess Sim;
    ConsoleRun Console;

 private:
    QString screenshots_;
    int failures_ = 0;
};

// ----- the stations, in the order of the tour

/// Opens the console and tries ports that cannot be opened, each for another reason; their number.
[[nodiscard]] int TryPorts(Tour& tour);
/// Connects, gets samples of three sites, samples one of them continuously.
void TakeReadings(Tour& tour);
/// Adds, edits, drags and deletes a radio; works on all open windows; aims an antenna.
void OperateNetwork(Tour& tour);
/// Asks a logger that does not answer, and looks at the trace, in which so many ports were refused,
/// and the report for support.
void LookBack(Tour& tour, int refusals);
/// Uploads histories over a bad link, packs one, saves it.
void FetchHistories(Tour& tour);
/// Uploads histories that overlap, kills a console in the middle of one, and makes of what stayed a
/// plot, a report, files and a copy.
void KeepWhatCame(Tour& tour);
/// Shows a pipe, a flume, a weir and a table with their flows.
void ShowFlows(Tour& tour);
/// Changes a logger's settings, carries them to another by file, calibrates a channel.
void SetUpLoggers(Tour& tour);
/// Makes a flow table from a device's dimensions and has a logger's flow shown by it.
void MakeFlowTable(Tour& tour);
/// Collects the history of the whole network twice: at a click, then by a round that comes by
/// itself.
void CollectNetwork(Tour& tour);
/// Shares the archive with a server that is not there, and ceases.
void ShareArchive(Tour& tour);

// ----- another console

/// A console in a process of its own, there to be killed: uploads from the entry with that number
/// and prints again and again how many records it has by then. Exit status 0 once all came.
int RunSecondConsole(int client);
/// A console in a process of its own that has the port until its standard input ends. Exit status 0
/// if it had it.
int HoldPort();

}  // namespace whole_program

#endif  // ORVIA_TESTS_WHOLE_PROGRAM_TOUR_H
