// What went over the link, looked at afterwards: the trace, and the report that takes it along.
#include <QAbstractItemView>
#include <QTabBar>

#include "whole_program/tour.h"

namespace whole_program {

namespace {

const QString Flume = QStringLiteral("Creek Flume");

enum TraceCell { WhoCell = 2, FaultCell = 7 };

struct Listed {
    int Rows = 0;
    int Faults = 0;
    int OfFlume = 0;
};

Listed ReadList(QWidget& form) {
    const QAbstractItemModel& rows =
        *form.findChild<QAbstractItemView*>(QStringLiteral("lvwTrace"))->model();
    Listed listed;
    for (; listed.Rows < rows.rowCount(); ++listed.Rows) {
        const auto cell = [&](int column) {
            return rows.index(listed.Rows, column).data().toString();
        };
        listed.Faults += cell(FaultCell).isEmpty() ? 0 : 1;
        listed.OfFlume += cell(WhoCell).startsWith(Flume) ? 1 : 0;
    }
    return listed;
}

void LookAtTrace(Tour& tour) {
    ConsoleRun& console = tour.Console;
    console.Choose(QStringLiteral("mnuTrace"));
    QWidget& form = *console.Window().findChild<QWidget*>(QStringLiteral("frmTrace"));
    const Listed all = ReadList(form);
    console.Click(QStringLiteral("chkHex"), &form);
    tour.Keep(QStringLiteral("trace"), &form);
    console.Click(QStringLiteral("chkFaults"), &form);
    const Listed faults = ReadList(form);
    Tour::Say(QStringLiteral("\nTrace: %1 exchanges, %2 of them with %3, %4 faults")
                  .arg(all.Rows)
                  .arg(all.OfFlume)
                  .arg(Flume)
                  .arg(all.Faults));
    tour.Check(all.OfFlume > 0, QStringLiteral("the trace does not know whom it was with"));
    tour.Check(all.Faults > 0, QStringLiteral("the bad link left no fault in the trace"));
    tour.Check(faults.Rows == all.Faults && faults.Faults == all.Faults,
               QStringLiteral("the list of faults alone"));
    console.Click(QStringLiteral("chkFaults"), &form);
    console.Click(QStringLiteral("chkHex"), &form);
    console.Click(QStringLiteral("cmdClose"), &form);
}

void LookAtReport(Tour& tour) {
    ConsoleRun& console = tour.Console;
    console.Choose(QStringLiteral("mnuSupport"));
    QWidget& form = *console.Window().findChild<QWidget*>(QStringLiteral("frmSupport"));
    form.findChild<QTabBar*>(QStringLiteral("tabParts"))->setCurrentIndex(3);
    tour.Check(ConsoleRun::TextOf(form, QStringLiteral("txtPart")).contains(Flume),
               QStringLiteral("the report has no trace"));
    tour.Keep(QStringLiteral("support"), &form);
    console.Click(QStringLiteral("cmdClose"), &form);
}

}  // namespace

void ShowTrace(Tour& tour) {
    LookAtTrace(tour);
    LookAtReport(tour);
    tour.CheckBoxes({});
}

}  // namespace whole_program
