// The archive is shared with a server that is not there: nothing of the console waits for it.
#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QSqlDatabase>
#include <stdexcept>

#include "whole_program/tour.h"

namespace whole_program {

namespace {

constexpr int Patience = 60000;

QWidget& FormAt(Tour& tour, const QString& row, const QString& name) {
    tour.Console.Choose(row);
    auto* form = tour.Console.Window().findChild<QWidget*>(name);
    if (form == nullptr || !form->isVisible()) {
        throw std::runtime_error(name.toStdString() + " does not come up");
    }
    return *form;
}

void CheckTold(Tour& tour, QWidget& form, const QString& label, const QString& text) {
    auto* shown = form.findChild<QLabel*>(label);
    const bool came = ConsoleRun::RunUntil([&] { return shown->text().contains(text); }, Patience);
    tour.Check(came, label + QStringLiteral(" does not tell: ") + text);
}

void SwitchSharing(Tour& tour, QWidget& settings) {
    tour.Console.Click(QStringLiteral("chkShare"), &settings);
}

/// Where nothing can talk to a server, the window says that and offers nothing.
void TellWhyNot(Tour& tour, QWidget& settings) {
    const auto* why = settings.findChild<QLabel*>(QStringLiteral("lblWhyNot"));
    Tour::Say(QStringLiteral("\nThe archive is not shared: ") + why->text());
    tour.Check(why->isVisible() && !why->text().isEmpty(),
               QStringLiteral("nothing says why the archive cannot be shared"));
    tour.Check(!settings.findChild<QWidget*>(QStringLiteral("chkShare"))->isEnabled(),
               QStringLiteral("sharing is offered without a driver"));
    tour.Console.Click(QStringLiteral("cmdCancel"), &settings);
    tour.CheckBoxes({});
}

}  // namespace

void ShareArchive(Tour& tour) {
    ConsoleRun& console = tour.Console;
    QWidget& settings =
        FormAt(tour, QStringLiteral("mnuArchiveSettings"), QStringLiteral("frmArchiveSettings"));
    if (!QSqlDatabase::isDriverAvailable(QStringLiteral("QPSQL"))) {
        TellWhyNot(tour, settings);
        return;
    }
    SwitchSharing(tour, settings);
    ConsoleRun::Type(settings, QStringLiteral("txtServer"), QStringLiteral("/no/server/here"));
    ConsoleRun::Type(settings, QStringLiteral("txtDatabase"), QStringLiteral("orvia"));
    ConsoleRun::Type(settings, QStringLiteral("txtUser"), QStringLiteral("crew"));
    settings.findChild<QComboBox*>(QStringLiteral("cmbPassword"))->setCurrentIndex(1);
    console.Click(QStringLiteral("cmdTest"), &settings);
    CheckTold(tour, settings, QStringLiteral("lblTest"), QStringLiteral("does not work"));
    tour.Keep(QStringLiteral("archive-settings"), &settings);
    console.Click(QStringLiteral("cmdOK"), &settings);
    CheckTold(tour, console.Window(), QStringLiteral("lblStatus"),
              QStringLiteral("The shared archive cannot be reached"));
    QWidget& archive = FormAt(tour, QStringLiteral("mnuArchive"), QStringLiteral("frmArchive"));
    CheckTold(tour, archive, QStringLiteral("lblNotice"), QStringLiteral("cannot be reached"));
    console.Click(QStringLiteral("optLocal"), &archive);
    auto* loggers = archive.findChild<QAbstractItemView*>(QStringLiteral("lvwLoggers"));
    tour.Check(loggers->isVisible() && loggers->model()->rowCount() > 0,
               QStringLiteral("this computer's loggers are not shown"));
    FormAt(tour, QStringLiteral("mnuArchiveSettings"), QStringLiteral("frmArchiveSettings"));
    SwitchSharing(tour, settings);
    console.Click(QStringLiteral("cmdOK"), &settings);
    auto* choice = archive.findChild<QWidget*>(QStringLiteral("optLocal"));
    tour.Check(ConsoleRun::RunUntil([choice] { return !choice->isVisible(); }, Patience),
               QStringLiteral("the choice of an archive stays"));
    archive.close();
    tour.CheckBoxes({});
}

}  // namespace whole_program
