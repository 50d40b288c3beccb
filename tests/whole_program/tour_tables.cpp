#include <QAbstractItemModel>
#include <QTabBar>
#include <QTableView>
#include <QTest>
#include <cmath>

#include "platform/qt/text_qt.h"
#include "whole_program/tour.h"

namespace whole_program {

namespace {

constexpr int Client = 6;
constexpr double Level = 0.6;  ///< feet, at which the curve and the logger are compared

const QString Site = QStringLiteral("Orchard Weir");

/// The flow that the window's table shows at the level.
QString FlowOfTable(QWidget& form) {
    const QAbstractItemModel& rows =
        *form.findChild<QTableView*>(QStringLiteral("lvwTable"))->model();
    for (int row = 0; row < rows.rowCount(); ++row) {
        if (std::fabs(rows.index(row, 0).data().toString().toDouble() - Level) < 1e-9) {
            return rows.index(row, 1).data().toString();
        }
    }
    return {};
}

/// Makes the table of a notch, saves it, and gives the flow that its curve has at the level.
QString MakeTable(Tour& tour, const QString& file) {
    ConsoleRun& console = tour.Console;
    console.Choose(QStringLiteral("mnuNewFlowTable"));
    QWidget& form = *console.Window().findChild<QWidget*>(QStringLiteral("frmRating"));
    ConsoleRun::Select(form, QStringLiteral("cmbKind"), QStringLiteral("V-notch weir"));
    ConsoleRun::Type(form, QStringLiteral("txtName"), Site);
    ConsoleRun::Select(form, QStringLiteral("cmbFlowUnit"), QStringLiteral("MGD"));
    const QString before = FlowOfTable(form);
    ConsoleRun::Type(form, QStringLiteral("txtDimension(0)"), QStringLiteral("75"));
    tour.Check(FlowOfTable(form) != before, QStringLiteral("the curve does not follow typing"));
    console.Pick(file);
    console.Click(QStringLiteral("cmdSave"), &form);
    tour.Keep(QStringLiteral("flow-table"), &form);
    tour.KeepFile(file);
    const QString flow = FlowOfTable(form);
    Tour::Say(QStringLiteral("\nFlow table made: a notch of 75 degrees, %1 MGD at %2 feet")
                  .arg(flow)
                  .arg(Level));
    tour.Check(form.close(), QStringLiteral("the window of the flow table did not close"));
    tour.CheckBoxes({});
    return flow;
}

void ProgramTable(Tour& tour, const QString& file) {
    ConsoleRun& console = tour.Console;
    console.OnForm(QStringLiteral("frmSetup"), [&](QWidget& form) {
        auto& tabs = *form.findChild<QTabBar*>(QStringLiteral("TabStrip"));
        QTest::mouseClick(&tabs, Qt::LeftButton, {}, tabs.tabRect(3).center());
        console.Click(QStringLiteral("optTable"), &form);
        console.Pick(file);
        console.Click(QStringLiteral("cmdBrowse"), &form);
        tour.CheckBoxes({QStringLiteral("Flow Table File: The selected table file has")});
        console.Answer(QMessageBox::Yes);
        console.Click(QStringLiteral("cmdOK"), &form);
        tour.CheckBoxes({QStringLiteral("Program Settings: Are you sure")});
        // It is in the logger; the form offers to keep it in a file too.
        console.Answer(QMessageBox::No);
        console.Click(QStringLiteral("cmdCancel"), &form);
        tour.CheckBoxes({QStringLiteral("Data Has Changed: The settings information has changed")});
    });
    tour.Open(Client);
    console.Click(QStringLiteral("cmdSetup"));
}

}  // namespace

void MakeFlowTable(Tour& tour) {
    const QString file = tour.House.PathOf(QStringLiteral("orchard.tbl"));
    const QString flow = MakeTable(tour, file);
    ProgramTable(tour, file);
    tour.Sim.Ask(QStringLiteral("set %1 1 %2").arg(Site).arg(Level));
    const auto window = tour.OpenAndSample(Client);
    tour.Console.Click(QStringLiteral("cmdFlow"), window.get());
    const ClientPanel& panel = window->Model().Panel();
    const QString shown = ToQt(panel.lblValue[3].Text);
    Tour::Say(QStringLiteral("The logger by that table: level %1, flow %2 %3")
                  .arg(ToQt(panel.lblValue[0].Text), shown, ToQt(panel.lblUnits[3].Text)));
    tour.Check(ToQt(panel.lblUnits[3].Text).contains(QLatin1String("MGD")),
               QStringLiteral("the unit of flow"));
    tour.CheckFigure(shown, flow.toDouble(), 5e-4, QStringLiteral("the flow by the table made"));
    tour.CheckBoxes({});
}

}  // namespace whole_program
