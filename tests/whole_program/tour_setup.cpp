#include <QTabBar>
#include <QTest>
#include <cstdlib>

#include "platform/qt/text_qt.h"
#include "whole_program/tour.h"

namespace whole_program {

namespace {

constexpr int Counting = 1;  ///< the entry of a logger that counts pulses
constexpr int Edited = 6;    ///< the entry whose settings are edited
constexpr int Copied = 7;    ///< the one that is given the same
constexpr int Channel = 1;   ///< that is calibrated, from 0
constexpr int Patience = 15000;

const QString Site = QStringLiteral("Orchard Weir");
const QString NewName = QStringLiteral("Orchard Culvert");
const QString Confirmed = QStringLiteral("Program Settings: Are you sure");

QString Indexed(const char* name, int index) {
    return QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(index);
}

void TurnTo(QWidget& form, int page) {
    auto& tabs = *form.findChild<QTabBar*>(QStringLiteral("TabStrip"));
    QTest::mouseClick(&tabs, Qt::LeftButton, {}, tabs.tabRect(page).center());
}

void EditGeneral(Tour& tour, QWidget& form) {
    ConsoleRun::Type(form, QStringLiteral("txtName"), NewName);
    ConsoleRun::Type(form, QStringLiteral("txtSampleInterval"), QStringLiteral("5"));
    ConsoleRun::Select(form, QStringLiteral("cmbSampleInterval"), QStringLiteral("minutes"));
    tour.Console.Click(Indexed("chkAlarm", 0), &form);
    auto& time = *form.findChild<QWidget*>(Indexed("txtAlarm", 0));
    tour.Check(ConsoleRun::RunUntil([&time] { return time.isEnabled(); }, 2000),
               QStringLiteral("the alarm's time stays disabled"));
    ConsoleRun::Type(form, Indexed("txtAlarm", 0), QStringLiteral("7:30"));
    ConsoleRun::Select(form, Indexed("cmbAlarm", 0), QStringLiteral("P.M."));
    tour.Keep(QStringLiteral("setup-general"), &form);
}

/// One step of the wizard in which a live reading settles at what `value` of the sensor makes.
void Settle(Tour& tour, QWidget& form, double value) {
    constexpr double Span = 500;
    constexpr double Counts = 65535;
    tour.Sim.Ask(QStringLiteral("set %1 %2 %3").arg(Site).arg(Channel + 1).arg(value));
    const int raw = static_cast<int>(value / Span * Counts);
    const auto settled = [&] {
        const int shown = ConsoleRun::TextOf(form, QStringLiteral("txtCalibrate")).toInt();
        return std::abs(shown - raw) <= 1;
    };
    tour.Check(ConsoleRun::RunUntil(settled, Patience),
               QStringLiteral("the reading does not settle at %1").arg(raw));
    tour.Keep(QStringLiteral("calibrate"), &form);
    tour.Console.Click(QStringLiteral("cmdNext"), &form);
}

void Calibrate(Tour& tour, QWidget& setup) {
    ConsoleRun& console = tour.Console;
    const QString wizard = QStringLiteral("frmCalibrate");
    const auto enter = [&console](const char* value) {
        return [&console, value](QWidget& form) {
            ConsoleRun::Type(form, QStringLiteral("txtCalibrate"), QLatin1String(value));
            console.Click(QStringLiteral("cmdNext"), &form);
        };
    };
    console.OnForm(wizard, enter("500"));
    console.OnForm(wizard, [&tour](QWidget& form) { Settle(tour, form, 450); });
    console.OnForm(wizard, enter("0"));
    console.OnForm(wizard, [&tour](QWidget& form) { Settle(tour, form, 50); });
    console.Click(Indexed("cmdCalibrate", Channel), &setup);
    Tour::Say(QStringLiteral("\nCalibrated: %1 stands for %2, %3 for %4")
                  .arg(ConsoleRun::TextOf(setup, Indexed("txtHighRaw", Channel)),
                       ConsoleRun::TextOf(setup, Indexed("txtHighEU", Channel)),
                       ConsoleRun::TextOf(setup, Indexed("txtLowRaw", Channel)),
                       ConsoleRun::TextOf(setup, Indexed("txtLowEU", Channel))));
}

void EditScales(Tour& tour, QWidget& form) {
    TurnTo(form, 0);
    ConsoleRun::Type(form, Indexed("txtTop", 0), QStringLiteral("2.5"));
    Calibrate(tour, form);
    tour.Keep(QStringLiteral("setup-analog"), &form);
}

void EditFlow(Tour& tour, QWidget& form) {
    TurnTo(form, 3);
    tour.Console.Click(QStringLiteral("optMannings"), &form);
    ConsoleRun::Type(form, QStringLiteral("txtDiameter"), QStringLiteral("24"));
    ConsoleRun::Select(form, QStringLiteral("cmbDiameterUnits"), QStringLiteral("inches"));
    ConsoleRun::Type(form, QStringLiteral("txtSlope"), QStringLiteral("0.5"));
    ConsoleRun::Select(form, QStringLiteral("cmbSlopeUnits"), QStringLiteral("percent"));
    ConsoleRun::Type(form, QStringLiteral("cmbRoughness"), QStringLiteral("0.013 - concrete"));
    tour.Check(ConsoleRun::TextOf(form, QStringLiteral("cmbRoughness")) == QLatin1String("0.013"),
               QStringLiteral("roughness"));
    tour.Keep(QStringLiteral("setup-flow"), &form);
}

void Program(Tour& tour, QWidget& form) {
    tour.Console.Answer(QMessageBox::Yes);
    tour.Console.Click(QStringLiteral("cmdOK"), &form);
    tour.CheckBoxes({Confirmed});
}

void CheckWindow(Tour& tour, int client) {
    const auto window = tour.Open(client);
    const ClientPanel& panel = window->Model().Panel();
    Tour::Say(QStringLiteral("\n%1 now: %2, every %3, from %4,%5 of%6, slope%7, roughness%8")
                  .arg(tour.NameOf(client), ToQt(panel.lblLoggerName.Text),
                       ToQt(panel.lblSampleInterval.Text), ToQt(panel.lblAlarm[0].Text),
                       ToQt(panel.lblFlowMode.Text), ToQt(panel.lblPipeDiameter2.Text),
                       ToQt(panel.lblSlope2.Text), ToQt(panel.lblRoughness2.Text)));
    tour.Check(ToQt(panel.lblLoggerName.Text) == NewName, QStringLiteral("the name programmed"));
    tour.Check(panel.lblSampleInterval.Text == "5 minutes", QStringLiteral("the interval"));
    tour.Check(panel.lblAlarm[0].Text == "7:30:00 PM", QStringLiteral("the alarm"));
    tour.Check(panel.lblPipeDiameter2.Text == " 24 Inches", QStringLiteral("the diameter"));
    tour.Check(panel.lblSlope2.Text == " 0.5 %", QStringLiteral("the slope"));
}

/// With the scale that was calibrated a sensor half way reads half of the span.
void CheckCalibration(Tour& tour) {
    tour.Sim.Ask(QStringLiteral("set %1 %2 250").arg(Site).arg(Channel + 1));
    const auto window = tour.OpenAndSample(Edited);
    const QString shown = ToQt(window->Model().Panel().lblData2[Channel].Text);
    tour.CheckFigure(shown, 250, 1e-3, QStringLiteral("the calibrated channel"));
}

/// Looks at the settings of pulse channels, and leaves them as they are.
void LookAtPulses(Tour& tour) {
    ConsoleRun& console = tour.Console;
    console.OnForm(QStringLiteral("frmSetup"), [&](QWidget& form) {
        TurnTo(form, 1);
        tour.Keep(QStringLiteral("setup-digital"), &form);
        console.Click(QStringLiteral("cmdCancel"), &form);
    });
    tour.Open(Counting);
    console.Click(QStringLiteral("cmdSetup"));
    tour.CheckBoxes({});
}

}  // namespace

void SetUpLoggers(Tour& tour) {
    LookAtPulses(tour);
    ConsoleRun& console = tour.Console;
    const QString file = tour.House.PathOf(QStringLiteral("orchard.set"));
    console.OnForm(QStringLiteral("frmSetup"), [&](QWidget& form) {
        EditGeneral(tour, form);
        EditScales(tour, form);
        EditFlow(tour, form);
        Program(tour, form);
        console.Pick(file);
        console.Choose(QStringLiteral("mnuSave"), &form);
        console.Click(QStringLiteral("cmdCancel"), &form);
    });
    tour.Open(Edited);
    console.Click(QStringLiteral("cmdSetup"));
    CheckWindow(tour, Edited);
    CheckCalibration(tour);

    console.OnForm(QStringLiteral("frmSetup"), [&](QWidget& form) {
        console.Pick(file);
        console.Choose(QStringLiteral("mnuLoad"), &form);
        Program(tour, form);
        console.Click(QStringLiteral("cmdCancel"), &form);
    });
    tour.Open(Copied);
    console.Click(QStringLiteral("cmdSetup"));
    CheckWindow(tour, Copied);
    tour.CheckBoxes({});
}

}  // namespace whole_program
