// What was collected stays: uploads that overlap, one that is killed, and what the archive's window
// makes of them.
#include <QAbstractItemView>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTest>

#include "platform/qt/sql_archive.h"
#include "platform/qt/text_qt.h"
#include "whole_program/tour.h"
#include "whole_program/tour_archive_files.h"

namespace whole_program {

namespace {

constexpr int Flume = 5;   ///< the entry whose upload was stopped before
constexpr int Bridge = 7;  ///< the one whose upload is killed
constexpr int Patience = 60000;

const QString FlumeName = QStringLiteral("Creek Flume");
const QString BridgeName = QStringLiteral("Bridge Gauge");

enum LoggerCell { NameCell, RadioCell, FirstCell, LastCell, RecordsCell, GapsCell, UploadsCell };
enum UploadCell { BeginCell, EndCell, OutcomeCell, ReceivedCell };

// ----- the window

QAbstractItemView& ListOf(QWidget& form, const char* name) {
    return *form.findChild<QAbstractItemView*>(QLatin1String(name));
}

QString Cell(QWidget& form, const char* list, int row, int column) {
    const QAbstractItemModel& model = *ListOf(form, list).model();
    return model.index(row, column).data().toString();
}

int Rows(QWidget& form, const char* list) {
    return ListOf(form, list).model()->rowCount();
}

/// The row of a logger; throws if it does not come up.
int RowOf(QWidget& archive, const QString& logger) {
    int found = -1;
    const auto comes = [&] {
        for (int row = 0; row < Rows(archive, "lvwLoggers") && found < 0; ++row) {
            found = Cell(archive, "lvwLoggers", row, NameCell) == logger ? row : -1;
        }
        return found >= 0;
    };
    if (!ConsoleRun::RunUntil(comes, Patience)) {
        throw std::runtime_error("the archive has no " + logger.toStdString());
    }
    return found;
}

QString OfLogger(QWidget& archive, const QString& logger, LoggerCell cell) {
    return Cell(archive, "lvwLoggers", RowOf(archive, logger), cell);
}

void ClickLogger(QWidget& archive, const QString& logger, Qt::KeyboardModifiers keys = {}) {
    QAbstractItemView& list = ListOf(archive, "lvwLoggers");
    const QModelIndex row = list.model()->index(RowOf(archive, logger), NameCell);
    list.scrollTo(row);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, keys, list.visualRect(row).center());
}

QWidget& OpenArchive(Tour& tour) {
    tour.Console.Choose(QStringLiteral("mnuArchive"));
    return *tour.Console.Window().findChild<QWidget*>(QStringLiteral("frmArchive"));
}

/// The window of that name that is open.
QWidget& Shown(QWidget& parent, const QString& name) {
    for (auto* form : parent.findChildren<QWidget*>(name)) {
        if (form->isVisible()) {
            return *form;
        }
    }
    throw std::runtime_error("no " + name.toStdString() + " is open");
}

void WaitForState(Tour& tour, QWidget& form, const QString& beginning) {
    const auto told = [&] {
        return ConsoleRun::TextOf(form, QStringLiteral("lblState")).startsWith(beginning);
    };
    const bool came = ConsoleRun::RunUntil(told, Patience);
    Tour::Say(ConsoleRun::TextOf(form, QStringLiteral("lblState"))
                  .replace(tour.House.PathOf({}), QString()));
    tour.Check(came, QStringLiteral("it does not say \"%1\"").arg(beginning));
}

/// Has a window save a file by its button.
QString SaveBy(Tour& tour, QWidget& form, const char* button, const char* file) {
    const QString path = tour.House.PathOf(QLatin1String(file));
    tour.Console.Pick(path);
    tour.Console.Click(QLatin1String(button), &form);
    WaitForState(tour, form, QStringLiteral("Saved: "));
    tour.CheckBoxes({});
    tour.KeepFile(path);
    return path;
}

// ----- uploads that overlap

void EndUpload(Tour& tour) {
    const auto complete = [] {
        QWidget* upload = ConsoleRun::Modal(QStringLiteral("frmGetHistoryData"));
        return upload != nullptr &&
               upload->findChild<QWidget*>(QStringLiteral("cmdOkay"))->isEnabled();
    };
    tour.Console.When(complete, [&tour] {
        tour.Console.Click(QStringLiteral("cmdOkay"),
                           ConsoleRun::Modal(QStringLiteral("frmGetHistoryData")));
    });
}

/// Uploads all of the flume's history and gives how many records that are.
int UploadAll(Tour& tour, const ConsoleRun::FormAction& atViewer) {
    const auto window = tour.OpenAndSample(Flume);
    EndUpload(tour);
    tour.Console.OnForm(QStringLiteral("frmHistory"), [&](QWidget& viewer) {
        atViewer(viewer);
        tour.Console.Click(QStringLiteral("cmdOK"), &viewer);
    });
    tour.Console.Click(QStringLiteral("cmdGetHistory"));
    tour.CheckBoxes({});
    return tour.Console.State().History.HistoryCount();
}

/// The button that plots the upload in the viewer.
void PlotInViewer(Tour& tour, QWidget& viewer) {
    tour.Console.Click(QStringLiteral("cmdPlot"), &viewer);
    QWidget& plot = Shown(viewer, QStringLiteral("frmPlot"));
    tour.Keep(QStringLiteral("plot-upload"), &plot);
    CheckPicture(tour, SaveBy(tour, plot, "cmdSave", "upload.png"));
    tour.Console.Click(QStringLiteral("cmdClose"), &plot);
    tour.Check(!plot.isVisible(), QStringLiteral("the viewer's plot did not close"));
}

void SaveInViewer(Tour& tour, QWidget& viewer) {
    tour.Console.Pick(tour.House.PathOf(QStringLiteral("viewer.csv")));
    tour.Console.Click(QStringLiteral("cmdSave"), &viewer);
}

/// Has the logger take a record every other second from now on.
void SpeedUp(Tour& tour) {
    ConsoleRun& console = tour.Console;
    console.OnForm(QStringLiteral("frmSetup"), [&](QWidget& form) {
        ConsoleRun::Type(form, QStringLiteral("txtSampleInterval"), QStringLiteral("2"));
        ConsoleRun::Select(form, QStringLiteral("cmbSampleInterval"), QStringLiteral("seconds"));
        console.Answer(QMessageBox::Yes);
        console.Click(QStringLiteral("cmdOK"), &form);
        tour.CheckBoxes({QStringLiteral("Program Settings: Are you sure")});
        console.Answer(QMessageBox::No);
        console.Click(QStringLiteral("cmdCancel"), &form);
        tour.CheckBoxes({QStringLiteral("Data Has Changed: The settings information has changed")});
    });
    tour.Open(Flume);
    console.Click(QStringLiteral("cmdSetup"));
}

void CheckUpload(Tour& tour, QWidget& archive, int row, const char* outcome, int records) {
    // The list looks anew every now and then.
    const auto told = [&] {
        return Cell(archive, "lvwUploads", row, OutcomeCell) == QLatin1String(outcome);
    };
    tour.Check(
        ConsoleRun::RunUntil(told, Patience),
        QStringLiteral("upload %1 of the archive is not ").arg(row) + QLatin1String(outcome));
    tour.Check(Cell(archive, "lvwUploads", row, ReceivedCell).toInt() == records,
               QStringLiteral("records of upload %1").arg(row));
}

/// The flume's series has as many records as the newest upload, though three told most of them.
void CheckSeries(Tour& tour, QWidget& archive, const std::vector<int>& uploads) {
    const auto counted = [&] {
        return OfLogger(archive, FlumeName, RecordsCell).toInt() == uploads.front();
    };
    tour.Check(ConsoleRun::RunUntil(counted, Patience),
               QStringLiteral("the archive has %1 records of %2")
                   .arg(OfLogger(archive, FlumeName, RecordsCell))
                   .arg(uploads.front()));
    ClickLogger(archive, FlumeName);
    tour.Check(Rows(archive, "lvwUploads") == static_cast<int>(uploads.size()),
               QStringLiteral("uploads in the archive"));
    for (int row = 0; row < static_cast<int>(uploads.size()); ++row) {
        const bool oldest = row + 1 == static_cast<int>(uploads.size());
        CheckUpload(tour, archive, row, oldest ? "stopped" : "complete",
                    uploads[static_cast<std::size_t>(row)]);
    }
    QStringList told;
    for (const int records : uploads) {
        told.prepend(QString::number(records));
    }
    Tour::Say(QStringLiteral("%1 in the archive: uploads of %2 records, %3 in all")
                  .arg(FlumeName, told.join(QStringLiteral(", ")),
                       OfLogger(archive, FlumeName, RecordsCell)));
}

void UploadOverlapping(Tour& tour) {
    constexpr int SomeRecords = 7000;  // milliseconds
    QWidget& archive = OpenArchive(tour);
    const int stopped = OfLogger(archive, FlumeName, RecordsCell).toInt();
    tour.Check(stopped > 0, QStringLiteral("nothing of the stopped upload stayed"));
    Tour::Say(QString());
    CheckSeries(tour, archive, {stopped});
    const int whole = UploadAll(tour, [&](QWidget& viewer) { PlotInViewer(tour, viewer); });
    CheckSeries(tour, archive, {whole, stopped});
    SpeedUp(tour);
    ConsoleRun::RunFor(SomeRecords);
    const int again = UploadAll(tour, [&](QWidget& viewer) { SaveInViewer(tour, viewer); });
    tour.Check(again > whole && whole > stopped, QStringLiteral("the uploads do not overlap"));
    CheckSeries(tour, archive, {again, whole, stopped});
    tour.CloseClients();
}

// ----- one that is killed

#ifdef _WIN32
const QString SecondPort = QStringLiteral("COM2");
#else
const QString SecondPort = QStringLiteral("COM1");
#endif

/// A home for a console beside the first, with the first one's archive.
QString MakeSecondHome(const Tour& tour) {
    const QString folder = tour.House.PathOf(QStringLiteral("second"));
    QDir().mkpath(folder);
    const QString book = folder + QStringLiteral("/site.obk");
    QFile::copy(tour.Data + QStringLiteral("/site.obk"), book);
    FirstSettings{.Port = SecondPort, .Baud = QStringLiteral("9600"), .Book = book}.Write(folder);
    return folder;
}

/// Where the second console's port leads.
QString SecondLink(const QString& home) {
#ifdef _WIN32
    static_cast<void>(home);
    return SecondPort;
#else
    return home + QStringLiteral("/Orvia/ports/") + SecondPort;
#endif
}

/// What a console told again and again of the records that it had.
struct Told {
    int Latest = 0;
    int SecondBefore = 0;  ///< a second and more before the latest
};

Told ReadCounts(const QByteArray& output) {
    constexpr int PerSecond = 10;
    const QList<QByteArray> lines = output.trimmed().split('\n');
    return {lines.last().toInt(), lines.value(lines.size() - 2 - PerSecond).toInt()};
}

/// Kills a second console in the middle of its upload.
Told KillUpload(Tour& tour) {
    constexpr int Enough = 400;  // of 1440 records
    const QString home = MakeSecondHome(tour);
    const SimProcess sim(tour.Simulator, tour.Data + QStringLiteral("/site.net"), SecondLink(home),
                         {QStringLiteral("--baud"), QStringLiteral("9600")});
    QProcess console;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home);
    console.setProcessEnvironment(environment);
    console.start(QCoreApplication::applicationFilePath(),
                  {QStringLiteral("--second-console"), QString::number(Bridge)});
    QByteArray output;
    const auto enough = [&] {
        output += console.readAllStandardOutput();
        return ReadCounts(output).Latest >= Enough || console.state() == QProcess::NotRunning;
    };
    tour.Check(ConsoleRun::RunUntil(enough, Patience),
               QStringLiteral("the second console's upload does not go on"));
    console.kill();
    console.waitForFinished(Patience);
    output += console.readAllStandardOutput();
    tour.Check(console.exitStatus() == QProcess::CrashExit,
               QStringLiteral("the second console was not killed: ") +
                   QString::fromLocal8Bit(console.readAllStandardError()));
    return ReadCounts(output);
}

void LoseAConsole(Tour& tour) {
    constexpr int TenthOfASecond = 20;  // records, at the most
    QWidget& archive = OpenArchive(tour);
    const Told told = KillUpload(tour);
    ClickLogger(archive, BridgeName);
    // The list looks anew every now and then.
    const int kept = Cell(archive, "lvwUploads", 0, ReceivedCell).toInt();
    const auto listed = [&] { return OfLogger(archive, BridgeName, RecordsCell).toInt() == kept; };
    tour.Check(ConsoleRun::RunUntil(listed, Patience),
               QStringLiteral("records of the killed upload"));
    Tour::Say(QStringLiteral("Killed another console's upload at %1 records; %2 a second before; "
                             "kept: %3, %4")
                  .arg(told.Latest)
                  .arg(told.SecondBefore)
                  .arg(kept)
                  .arg(Cell(archive, "lvwUploads", 0, OutcomeCell)));
    tour.Check(told.SecondBefore > 0, QStringLiteral("the upload was killed too early"));
    tour.Check(kept >= told.SecondBefore && kept <= told.Latest + TenthOfASecond,
               QStringLiteral("what stayed of a killed upload"));
    tour.Check(Rows(archive, "lvwUploads") == 1, QStringLiteral("uploads of the killed console"));
    CheckUpload(tour, archive, 0, "killed", kept);
    tour.Check(Cell(archive, "lvwUploads", 0, EndCell).isEmpty(),
               QStringLiteral("a killed upload has an end"));
    tour.Keep(QStringLiteral("archive"), &archive);
}

// ----- what is made of it

void PlotSeries(Tour& tour, QWidget& archive) {
    ConsoleRun& console = tour.Console;
    ClickLogger(archive, FlumeName);
    console.Click(QStringLiteral("cmdPlot"), &archive);
    QWidget& plot = Shown(console.Window(), QStringLiteral("frmPlot"));
    tour.Keep(QStringLiteral("plot"), &plot);
    CheckPicture(tour, SaveBy(tour, plot, "cmdSave", "flume.png"));
    CheckDrawing(tour, SaveBy(tour, plot, "cmdSave", "flume.svg"), FlumeName);
    console.Click(QStringLiteral("cmdClose"), &plot);

    ClickLogger(archive, BridgeName, Qt::ControlModifier);
    console.Click(QStringLiteral("cmdPlot"), &archive);
    QWidget& both = Shown(console.Window(), QStringLiteral("frmPlot"));
    tour.Keep(QStringLiteral("plot-two-loggers"), &both);
    console.Click(QStringLiteral("cmdClose"), &both);
}

void ReportSeries(Tour& tour, QWidget& archive, const QString& records) {
    ConsoleRun& console = tour.Console;
    ClickLogger(archive, FlumeName);
    const auto counted = [&] {
        return OfLogger(archive, FlumeName, GapsCell) != QLatin1String("...");
    };
    tour.Check(ConsoleRun::RunUntil(counted, Patience), QStringLiteral("gaps are not counted"));
    console.Click(QStringLiteral("cmdReport"), &archive);
    QWidget& report = Shown(console.Window(), QStringLiteral("frmReport"));
    ConsoleRun::Type(report, QStringLiteral("txtSite"), QStringLiteral("Upper creek, at the ford"));
    ConsoleRun::Type(report, QStringLiteral("txtMadeBy"), QStringLiteral("The tour"));
    const QString csv = SaveBy(tour, report, "cmdCsv", "report.csv");
    const QString pdf = SaveBy(tour, report, "cmdPdf", "report.pdf");
    tour.Keep(QStringLiteral("report"), &report);
    CheckReport(tour, csv,
                {.Records = OfLogger(archive, FlumeName, RecordsCell),
                 .Gaps = OfLogger(archive, FlumeName, GapsCell),
                 .Csv = records});
    CheckPage(tour, pdf, csv);
    console.Click(QStringLiteral("cmdClose"), &report);
}

void CopyAndCheck(Tour& tour, QWidget& archive) {
    ConsoleRun& console = tour.Console;
    const QString path = tour.House.PathOf(QStringLiteral("copy.sqlite"));
    console.Pick(path);
    console.Click(QStringLiteral("cmdBackUp"), &archive);
    WaitForState(tour, archive, QStringLiteral("Backed up to "));
    SqlArchive copy({.File = path});
    tour.Check(copy.Exists(), QStringLiteral("there is no copy"));
    copy.Open();
    int loggers = 0;
    for (const ArchiveLogger& logger : copy.Loggers()) {
        ++loggers;
        tour.Check(OfLogger(archive, ToQt(logger.Name), RecordsCell).toLongLong() == logger.Records,
                   QStringLiteral("records in the copy of ") + ToQt(logger.Name));
    }
    tour.Check(loggers == Rows(archive, "lvwLoggers"), QStringLiteral("loggers in the copy"));
    console.Click(QStringLiteral("cmdCheck"), &archive);
    WaitForState(tour, archive, QStringLiteral("Checked: the archive holds together."));
    tour.CheckBoxes({});
}

}  // namespace

void KeepWhatCame(Tour& tour) {
    UploadOverlapping(tour);
    LoseAConsole(tour);
    QWidget& archive = OpenArchive(tour);
    PlotSeries(tour, archive);
    ClickLogger(archive, FlumeName);
    const QString saved = SaveBy(tour, archive, "cmdSaveCsv", "archive.csv");
    const QString viewed = tour.House.PathOf(QStringLiteral("viewer.csv"));
    tour.Check(SameRecords(saved, viewed),
               QStringLiteral("the archive's file is not the viewer's"));
    ReportSeries(tour, archive, viewed);
    CopyAndCheck(tour, archive);
    tour.Check(archive.close(), QStringLiteral("the archive's window did not close"));
}

}  // namespace whole_program
