// What the console tells of its link: the line below, boxes of ports that do not open, the trace,
// the report for support.

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <stdexcept>

#include "whole_program/tour_ports.h"

namespace whole_program {

namespace {

constexpr int Patience = 10000;
const QString SilentName = QStringLiteral("Ridge Rain Gauge");

}  // namespace

// ----- what is told at once

void CheckStatus(Tour& tour, const QString& end) {
    const auto status = [&] {
        return ConsoleRun::TextOf(tour.Console.Window(), QStringLiteral("lblStatus"));
    };
    const bool came = ConsoleRun::RunUntil([&] { return status().endsWith(end); }, Patience);
    Tour::Say(QStringLiteral("  ") + status());
    tour.Check(came, QStringLiteral("the status line, expected: ") + end);
}

void OpenUnconnected(Tour& tour) {
    tour.Console.OnForm(QStringLiteral("frmConnect"), [&](QWidget& form) {
        tour.Console.Click(QStringLiteral("cmdCancel"), &form);
    });
    tour.Console.Start(QString());
    tour.CheckBoxes({QStringLiteral("Connection Required: ")});
}

void ExpectRefusal(Tour& tour, const QString& port, const QString& picture,
                   const QStringList& reasons) {
    ConsoleRun& console = tour.Console;
    console.OnForm(QStringLiteral("frmConnect"), [&](QWidget& form) {
        console.OnForm(QStringLiteral("frmConnectSetup"), [&](QWidget& setup) {
            ConsoleRun::Select(setup, QStringLiteral("cmbPort"), port);
            tour.Keep(QStringLiteral("settings-") + picture, &setup);
            console.Click(QStringLiteral("cmdOK"), &setup);
        });
        console.Click(QStringLiteral("cmdSetup"), &form);
        console.Click(QStringLiteral("cmdConnect"), &form);
    });
    console.When(
        [] { return qobject_cast<QMessageBox*>(QApplication::activeModalWidget()) != nullptr; },
        [&] { tour.Keep(picture, QApplication::activeModalWidget()); });
    console.Click(QStringLiteral("cmdConnect"));
    const QString box = console.TakeBoxes().join(QStringLiteral(" | "));
    Tour::Say(QStringLiteral("\n") + box);
    tour.Check(box.startsWith(QStringLiteral("Connect Error: Error opening port.")),
               QStringLiteral("the box of a port that does not open"));
    for (const QString& reason : reasons) {
        tour.Check(box.contains(reason), QStringLiteral("the box does not say ") + reason);
    }
    CheckStatus(tour, port + QStringLiteral(" could not be opened"));
}

// ----- the trace

namespace {

QWidget& Shown(Tour& tour, const char* menuRow, const char* name) {
    tour.Console.Choose(QLatin1String(menuRow));
    auto* form = tour.Console.Window().findChild<QWidget*>(QLatin1String(name));
    if (form == nullptr || !form->isVisible()) {
        throw std::runtime_error(std::string(name) + " does not come up");
    }
    return *form;
}

/// Rows of the trace that have these words in any of their cells.
int CountRows(QWidget& trace, const QString& words) {
    const auto& list = *trace.findChild<QAbstractItemView*>(QStringLiteral("lvwTrace"));
    const QAbstractItemModel& model = *list.model();
    int count = 0;
    for (int row = 0; row < model.rowCount(); ++row) {
        bool found = false;
        for (int column = 0; column < model.columnCount(); ++column) {
            found |= model.index(row, column).data().toString().contains(words);
        }
        count += found ? 1 : 0;
    }
    return count;
}

QByteArray Saved(Tour& tour, QWidget& form, const QString& name) {
    const QString path = tour.House.PathOf(name);
    tour.Console.Pick(path);
    tour.Console.Click(QStringLiteral("cmdSave"), &form);
    QFile file(path);
    tour.Check(file.open(QFile::ReadOnly), name + QStringLiteral(" was not saved"));
    tour.KeepFile(path);
    return file.readAll();
}

void ReadTrace(Tour& tour, int refusals) {
    QWidget& trace = Shown(tour, "mnuTrace", "frmTrace");
    tour.Check(CountRows(trace, QStringLiteral("cannot be opened")) == refusals,
               QStringLiteral("ports that could not be opened, in the trace"));
    ConsoleRun::Select(trace, QStringLiteral("cmbLogger"), SilentName);
    const int unanswered = CountRows(trace, QStringLiteral("no acknowledge within"));
    Tour::Say(QStringLiteral("\nThe trace of %1: %2 requests without an answer")
                  .arg(SilentName)
                  .arg(unanswered));
    tour.Check(unanswered > 0, QStringLiteral("no silence in the trace"));
    tour.Keep(QStringLiteral("trace"), &trace);
    const QByteArray text = Saved(tour, trace, QStringLiteral("trace.txt"));
    tour.Check(text.contains("no acknowledge within") && !text.contains("Hill Tanks"),
               QStringLiteral("the saved trace of one logger"));
    trace.close();
}

void SaveReport(Tour& tour) {
    QWidget& report = Shown(tour, "mnuSupport", "frmSupport");
    tour.Keep(QStringLiteral("support"), &report);
    const QByteArray whole = Saved(tour, report, QStringLiteral("report.zip"));
    tour.Check(whole.startsWith("PK") && whole.contains("trace.txt") &&
                   whole.contains(SilentName.toUtf8()),
               QStringLiteral("the report for support"));
    tour.Console.Click(QStringLiteral("chkNames"), &report);
    const QByteArray nameless = Saved(tour, report, QStringLiteral("nameless.zip"));
    tour.Check(nameless.startsWith("PK") && !nameless.contains(SilentName.toUtf8()),
               QStringLiteral("the report without names"));
    Tour::Say(QStringLiteral("Reports for support: %1 bytes, without names %2")
                  .arg(whole.size())
                  .arg(nameless.size()));
    report.close();
}

void ReadSilentLogger(Tour& tour) {
    tour.Sim.Ask(QStringLiteral("silence ") + SilentName);
    const auto window = tour.Open(2);
    tour.Console.Click(QStringLiteral("cmdGetSettings"));
    tour.Sim.Ask(QStringLiteral("wake ") + SilentName);
    CheckStatus(tour, SilentName + QStringLiteral(" did not answer"));
    tour.Keep(QStringLiteral("silent"));
    static_cast<void>(tour.Console.TakeBoxes());
    tour.CloseClients();
}

}  // namespace

void LookBack(Tour& tour, int refusals) {
    ReadSilentLogger(tour);
    ReadTrace(tour, refusals);
    SaveReport(tour);
}

}  // namespace whole_program
