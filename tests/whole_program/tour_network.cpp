#include <QFile>
#include <QListWidget>
#include <QTest>
#include <QTime>
#include <cstdlib>

#include "platform/qt/text_qt.h"
#include "whole_program/tour.h"

namespace whole_program {

namespace {

/// The box behind each change of the book; its title is empty, which a window shows as a blank.
const QString Updated = QStringLiteral(": The current address book has been updated.");

QString BookText(const Tour& tour) {
    QFile book(tour.House.Book());
    if (!book.open(QFile::ReadOnly)) {
        return {};
    }
    return QString::fromUtf8(book.readAll());
}

/// Deals with the picker of clients: chooses a row by its number.
void PickRow(Tour& tour, int row) {
    tour.Console.OnForm(QStringLiteral("frmSelectClient"), [&tour, row](QWidget& form) {
        tour.Keep(QStringLiteral("select-client"), &form);
        auto& list = *form.findChild<QListWidget*>(QStringLiteral("lstClients"));
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {},
                          list.visualItemRect(list.item(row - 1)).center());
    });
}

void AddRadio(Tour& tour) {
    ConsoleRun& console = tour.Console;
    console.OnForm(QStringLiteral("frmAddClient1"), [&](QWidget& form) {
        ConsoleRun::Type(form, QStringLiteral("txtClientRadioName"),
                         QStringLiteral("Spring House"));
        console.Click(QStringLiteral("cmdNext"), &form);
    });
    console.OnForm(QStringLiteral("frmAddClient2"), [&](QWidget& form) {
        ConsoleRun::Type(form, QStringLiteral("txtChannel"), QStringLiteral("1b"));
        ConsoleRun::Type(form, QStringLiteral("txtMAC(5)"), QStringLiteral("08"));
        tour.Keep(QStringLiteral("add-radio"), &form);
        console.Click(QStringLiteral("cmdNext"), &form);
    });
    console.Choose(QStringLiteral("mnuAddClient2"));
    tour.CheckBoxes({Updated});
    tour.Check(BookText(tour).contains(QStringLiteral("\"Spring House\", 1B, 00A096000008\r\n")),
               QStringLiteral("the book after adding: ") + BookText(tour));
}

void EditRadio(Tour& tour, int number) {
    ConsoleRun& console = tour.Console;
    PickRow(tour, number);
    console.OnForm(QStringLiteral("frmEditClient"), [&](QWidget& form) {
        ConsoleRun::Type(form, QStringLiteral("txtClientRadioName"), QStringLiteral("Spring Box"));
        tour.Keep(QStringLiteral("edit-radio"), &form);
        console.Click(QStringLiteral("cmdNext"), &form);
    });
    console.Choose(QStringLiteral("mnuEditClient2"));
    tour.CheckBoxes({Updated});
    tour.Check(BookText(tour).contains(QStringLiteral("\"Spring Box\", 1B, 00A096000008\r\n")),
               QStringLiteral("the book after editing"));
}

void DragRadio(Tour& tour, int number) {
    tour.Console.Drag(number, 1);
    tour.Check(BookText(tour).startsWith(QStringLiteral("\"Spring Box\"")),
               QStringLiteral("the book after a drag"));
    tour.Console.Drag(1, number);
}

void DeleteRadio(Tour& tour, int number) {
    PickRow(tour, number);
    tour.Console.Answer(QMessageBox::Yes);
    tour.Console.Choose(QStringLiteral("mnuDeleteClient2"));
    tour.CheckBoxes({QStringLiteral("Confirm Delete: "), Updated});
}

void KeepBook(Tour& tour) {
    const QString before = BookText(tour);
    AddRadio(tour);
    const int added = tour.Console.State().Book.Entries.UpperBound();
    EditRadio(tour, added);
    DragRadio(tour, added);
    DeleteRadio(tour, added);
    tour.Check(BookText(tour) == before, QStringLiteral("the book at the end"));
    Tour::Say(QStringLiteral("\nA radio was added, edited, dragged and deleted."));
}

QString LogText(Tour& tour) {
    return ConsoleRun::TextOf(tour.Console.Window(), QStringLiteral("txtLog"));
}

void ExpectLog(Tour& tour, const QString& expected) {
    const QString log = LogText(tour);
    Tour::Say(QStringLiteral("\n") + log.trimmed());
    tour.Check(log == expected, QStringLiteral("the log, expected: ") + expected);
    tour.Keep(QStringLiteral("log"));
}

/// Holds a logger's clock on the screen against the system's, within some seconds.
void CheckClock(Tour& tour, int client) {
    const auto window = tour.OpenAndSample(client);
    const QString shown = ToQt(window->Model().Panel().lblLoggerTime.Text);
    const QTime time =
        QTime::fromString(shown.section(QLatin1Char(' '), -1), QStringLiteral("HH:mm:ss"));
    const int apart = std::abs(time.secsTo(QTime::currentTime()));
    tour.Check(time.isValid() && (apart <= 30 || apart >= 24 * 3600 - 30),
               QStringLiteral("clock after setting it: ") + shown);
}

void SyncAll(Tour& tour) {
    tour.Console.Answer(QMessageBox::Yes);
    tour.Console.Choose(QStringLiteral("mnuSyncFACW"));
    tour.CheckBoxes({QStringLiteral("Synchronize Time: ")});
    ExpectLog(tour, QStringLiteral("Syncing time for client window Hill Tanks...OK\n"
                                   "Syncing time for client window Ridge Rain Gauge...OK\n"
                                   "Syncing time for client window Lower Tank...OK\nDone\n"));
    CheckClock(tour, 1);
    CheckClock(tour, 3);
}

void ClearAllWithOneSilent(Tour& tour) {
    const int before = tour.Sim.TruthOf(tour.NameOf(2)).Records;
    tour.Sim.Ask(QStringLiteral("silence Ridge Rain Gauge"));
    tour.Console.Answer(QMessageBox::Yes);
    tour.Console.Choose(QStringLiteral("mnuClearHistoryFACW"));
    tour.Sim.Ask(QStringLiteral("wake Ridge Rain Gauge"));
    tour.CheckBoxes({QStringLiteral("Synchronize Time: WARNING: ")});
    ExpectLog(tour, QStringLiteral("Clearing history for client window Hill Tanks...OK\n"
                                   "Clearing history for client window Ridge Rain Gauge...FAIL\n"
                                   "Clearing history for client window Lower Tank...OK\nDone\n"));
    tour.Check(tour.Sim.TruthOf(tour.NameOf(1)).Records <= 1, QStringLiteral("not cleared"));
    tour.Check(tour.Sim.TruthOf(tour.NameOf(2)).Records >= before,
               QStringLiteral("cleared, though it was silent"));
}

void CancelAWalk(Tour& tour) {
    QTimer press;
    press.setSingleShot(true);
    QObject::connect(&press, &QTimer::timeout, &press,
                     [&tour] { tour.Console.Click(QStringLiteral("cmdClose")); });
    press.start(700);
    tour.Console.Choose(QStringLiteral("mnuGetSettingsFACW"));
    ExpectLog(tour, QStringLiteral("Getting sample for client window Hill Tanks...\n"
                                   "Cancel Request...\nOK\n\nOperation Cancelled\n"));
    tour.Console.Click(QStringLiteral("cmdClose"));
}

void AutoUpdate(Tour& tour) {
    constexpr int Minute = 61;
    constexpr int Patience = 30000;
    ConsoleRun& console = tour.Console;
    const Sampling& sampling = console.State().SamplingRecord;
    const Operations& operations = console.State().OperationsRecord;
    console.Choose(QStringLiteral("mnuAutoUpdateFACW"));
    tour.Check(ConsoleRun::RunUntil(
                   [&] {
                       return sampling.ContinuousMode == AutoUpdateRunning &&
                              operations.OperationBusy == False;
                   },
                   Patience),
               QStringLiteral("the first pass"));
    const auto window = tour.Open(3);
    const auto newest = [&window] {
        return window->Model().Record.LoggerState.DataPoints.front().Time;
    };
    const std::string before = newest();
    console.Clock().GoAhead(Minute);
    tour.Check(ConsoleRun::RunUntil([&] { return newest() != before; }, Patience),
               QStringLiteral("the second pass brought no reading"));
    console.Choose(QStringLiteral("mnuAutoUpdateFACW"));
    tour.Check(
        ConsoleRun::RunUntil([&] { return sampling.ContinuousMode == SamplingIdle; }, Patience),
        QStringLiteral("Auto Update did not stop"));
    Tour::Say(QStringLiteral("\nAuto Update, second pass: %1 at %2")
                  .arg(ToQt(window->Model().Panel().lblData2[0].Text),
                       ToQt(window->Model().Panel().lblLoggerTime.Text)));
    tour.CheckBoxes({});
}

/// Once the screen shows that radio at that level: says so, and does what comes next.
void Aimed(Tour& tour, const QString& radio, const QString& level,
           std::function<void(QWidget&)> then) {
    const auto form = [] { return ConsoleRun::Modal(QStringLiteral("frmSignalLevel")); };
    tour.Console.When(
        [=] {
            return form() != nullptr &&
                   ConsoleRun::TextOf(*form(), QStringLiteral("lblClientName")) == radio &&
                   ConsoleRun::TextOf(*form(), QStringLiteral("lblDBm")) == level;
        },
        [=] {
            Tour::Say(QStringLiteral("  %1: %2").arg(radio, level));
            then(*form());
        });
}

void AimAntenna(Tour& tour) {
    ConsoleRun& console = tour.Console;
    const auto turn = [&tour](int strength) {
        return [&tour, strength](QWidget&) {
            tour.Sim.Ask(QStringLiteral("strength %1").arg(strength));
        };
    };
    const QString first = tour.NameOf(1);
    const QString second = tour.NameOf(2);
    Tour::Say(QStringLiteral("\nAiming an antenna:"));
    tour.Sim.Ask(QStringLiteral("strength 189"));
    Aimed(tour, first, QStringLiteral("-92 DBm"), turn(43));
    Aimed(tour, first, QStringLiteral("-62 DBm"), turn(10));
    Aimed(tour, first, QStringLiteral("-40 DBm"), [&](QWidget& form) {
        tour.Keep(QStringLiteral("signal"), &form);
        tour.Sim.Ask(QStringLiteral("strength 64"));
        console.Click(QStringLiteral("cmdNext"), &form);
    });
    Aimed(tour, second, QStringLiteral("-66 DBm"),
          [&](QWidget& form) { console.Click(QStringLiteral("cmdExit"), &form); });
    tour.Open(1);
    console.Click(QStringLiteral("cmdSignalLevel"));
    tour.Sim.Ask(QStringLiteral("strength auto"));
    tour.CheckBoxes({});
}

}  // namespace

void OperateNetwork(Tour& tour) {
    KeepBook(tour);
    SyncAll(tour);
    ClearAllWithOneSilent(tour);
    CancelAWalk(tour);
    AutoUpdate(tour);
    AimAntenna(tour);
    tour.CloseClients();
}

}  // namespace whole_program
