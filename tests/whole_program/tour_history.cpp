#include <QAbstractItemView>
#include <QFile>

#include "platform/qt/text_qt.h"
#include "whole_program/tour.h"

namespace whole_program {

namespace {

constexpr int Pipe = 4;   ///< the entry with 10,000 records
constexpr int Flume = 5;  ///< the one whose upload is stopped
constexpr int Patience = 300000;

enum Column { TimeColumn, LevelColumn, DegreeColumn, VoltColumn, FlowColumn, VelocityColumn };

QAbstractItemModel& Rows(QWidget& form) {
    return *form.findChild<QAbstractItemView*>(QStringLiteral("lvwHistory"))->model();
}

QString Cell(const QAbstractItemModel& rows, int row, int column) {
    return rows.data(rows.index(row, column)).toString();
}

QWidget* Upload() {
    return ConsoleRun::Modal(QStringLiteral("frmGetHistoryData"));
}

void EndUpload(Tour& tour) {
    QWidget& form = *Upload();
    tour.Sim.Ask(QStringLiteral("fault clear"));
    ConsoleRun::RunFor(100);  // the label moves at most so often
    tour.Keep(QStringLiteral("upload"), &form);
    const QString shown = ConsoleRun::TextOf(form, QStringLiteral("lblGetHistoryData"));
    tour.Check(shown.startsWith(QStringLiteral("Upload complete: ")), shown);
    Tour::Say(QStringLiteral("\n%1 (%2)")
                  .arg(shown, ConsoleRun::TextOf(form, QStringLiteral("lblRetries"))));
    tour.Console.Click(QStringLiteral("cmdOkay"), &form);
}

/// Holds rows of the viewer against what the sensors said at those moments.
void CheckRows(Tour& tour, const QAbstractItemModel& rows) {
    constexpr int Step = 499;
    for (int row = 0; row < rows.rowCount(); row += Step) {
        const Truth truth = tour.Sim.RecordOf(tour.NameOf(Pipe), row + 1);
        const QString where = QStringLiteral("record %1 ").arg(row + 1);
        tour.CheckFigure(Cell(rows, row, LevelColumn), truth.Analog[0], 1e-3,
                         where + QLatin1String("level"));
        tour.CheckFigure(Cell(rows, row, VoltColumn), truth.Analog[2], 1e-3,
                         where + QLatin1String("battery"));
        tour.CheckFigure(Cell(rows, row, FlowColumn), truth.Flow, 2e-3,
                         where + QLatin1String("flow"));
        tour.CheckFigure(Cell(rows, row, VelocityColumn), truth.Velocity, 2e-3,
                         where + QLatin1String("velocity"));
    }
}

/// Holds the file against the rows on the screen, field by field.
void CheckFile(Tour& tour, const QString& path, const QAbstractItemModel& rows) {
    constexpr int Headings = 2;
    QFile file(path);
    tour.Check(file.open(QFile::ReadOnly), QStringLiteral("no file was saved"));
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QStringLiteral("\r\n"));
    tour.Check(lines.size() == rows.rowCount() + Headings + 1, QStringLiteral("lines of the file"));
    for (int row = 0; row < rows.rowCount() && row + Headings < lines.size(); ++row) {
        QString expected =
            Cell(rows, row, TimeColumn).replace(QStringLiteral(" "), QStringLiteral(", "));
        for (int column = LevelColumn; column < rows.columnCount(); ++column) {
            expected += QStringLiteral(", ") + Cell(rows, row, column);
        }
        if (lines[row + Headings] != expected) {
            tour.Check(false, QStringLiteral("line ") + lines[row + Headings]);
            return;
        }
    }
    Tour::Say(lines.mid(0, 4).join(QLatin1Char('\n')));
}

void LookAtHistory(Tour& tour, QWidget& form) {
    ConsoleRun& console = tour.Console;
    const QAbstractItemModel& rows = Rows(form);
    tour.Check(rows.rowCount() == console.State().History.HistoryCount(),
               QStringLiteral("rows in the viewer"));
    tour.Check(rows.columnCount() == VelocityColumn + 1, QStringLiteral("columns"));
    CheckRows(tour, rows);
    tour.Keep(QStringLiteral("history"), &form);
    console.OnForm(QStringLiteral("frmHistoryOptions"), [&](QWidget& options) {
        tour.Keep(QStringLiteral("history-options"), &options);
        console.Click(QStringLiteral("cmdCancel"), &options);
    });
    console.Click(QStringLiteral("cmdOptions"), &form);

    const int all = rows.rowCount();
    console.Answer(QMessageBox::Yes);
    console.Click(QStringLiteral("cmdPack"), &form);
    Tour::Say(QStringLiteral("Packed: %1 of %2 rows").arg(rows.rowCount()).arg(all));
    tour.Check(rows.rowCount() > 0 && rows.rowCount() <= all, QStringLiteral("rows after packing"));
    tour.CheckBoxes({QStringLiteral("Pack History Data: ")});

    const QString path = tour.House.PathOf(QStringLiteral("history.csv"));
    console.Pick(path);
    console.Click(QStringLiteral("cmdSave"), &form);
    CheckFile(tour, path, rows);
    tour.KeepFile(path);
    console.Click(QStringLiteral("cmdOK"), &form);
}

void UploadOverBadLink(Tour& tour) {
    ConsoleRun& console = tour.Console;
    const auto window = tour.OpenAndSample(Pipe);
    const int expected = window->NumSamples();
    console.When([] { return Upload() != nullptr; },
                 [&tour] { tour.Sim.Ask(QStringLiteral("fault chance 0.05 2026")); });
    const auto complete = [] {
        return Upload() != nullptr &&
               Upload()->findChild<QWidget*>(QStringLiteral("cmdOkay"))->isEnabled();
    };
    console.When(complete, [&tour] { EndUpload(tour); });
    console.OnForm(QStringLiteral("frmHistory"),
                   [&tour](QWidget& form) { LookAtHistory(tour, form); });
    console.Click(QStringLiteral("cmdGetHistory"));
    tour.Check(console.State().History.HistoryCount() >= expected && expected >= 10000,
               QStringLiteral("records uploaded"));
    tour.CheckBoxes({});
}

void StopHalfWay(Tour& tour) {
    ConsoleRun& console = tour.Console;
    const HistoryStore& store = console.State().History;
    const auto window = tour.OpenAndSample(Flume);
    console.When([&store] { return Upload() != nullptr && store.HistoryCount() >= 2000; },
                 [&console] { console.Click(QStringLiteral("cmdCancel"), Upload()); });
    console.OnForm(QStringLiteral("frmHistory"), [&](QWidget& form) {
        tour.Check(Rows(form).rowCount() == store.HistoryCount(),
                   QStringLiteral("rows of a stopped upload"));
        console.Click(QStringLiteral("cmdOK"), &form);
    });
    console.Click(QStringLiteral("cmdGetHistory"));
    const int received = store.HistoryCount();
    // The logger goes on logging: how many it has by now is its own affair.
    const QString told =
        QStringLiteral("Get History Data: Retrieval cancelled by user. Received %1 records of ")
            .arg(received);
    tour.CheckBoxes({told});
    tour.Check(received < window->NumSamples(), QStringLiteral("the upload was not stopped"));
    Tour::Say(QStringLiteral("Stopped another upload at %1 of %2 records")
                  .arg(received)
                  .arg(window->NumSamples()));
}

}  // namespace

void FetchHistories(Tour& tour) {
    UploadOverBadLink(tour);
    StopHalfWay(tour);
    tour.CloseClients();
}

}  // namespace whole_program
