#include <fcntl.h>
#include <grp.h>
#include <linux/capability.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSocketNotifier>
#include <array>
#include <cstdlib>
#include <stdexcept>

#include "whole_program/tour.h"

namespace whole_program {

namespace {

constexpr int Patience = 10000;
const QString SilentName = QStringLiteral("Ridge Rain Gauge");

// ----- the line below

/// The main window's last line comes to end so: what was done, without the time before it.
void CheckStatus(Tour& tour, const QString& end) {
    const auto status = [&] {
        return ConsoleRun::TextOf(tour.Console.Window(), QStringLiteral("lblStatus"));
    };
    const bool came = ConsoleRun::RunUntil([&] { return status().endsWith(end); }, Patience);
    Tour::Say(QStringLiteral("  ") + status());
    tour.Check(came, QStringLiteral("the status line, expected: ") + end);
}

// ----- ports that do not open

/// Connects by `port`, chosen among the settings, and reads what the box says beside the told.
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

void TryMissing(Tour& tour) {
    const QString device = tour.House.PathOf(QStringLiteral("unplugged"));
    QFile::link(device, tour.House.PathOf(QStringLiteral("Orvia/ports/COM5")));
    ExpectRefusal(tour, QStringLiteral("COM5"), QStringLiteral("port-missing"),
                  {QStringLiteral("There is no device COM5 (%1)").arg(device),
                   QStringLiteral("These ports are there:\n    COM1")});
}

void TryAFile(Tour& tour) {
    QFile::link(tour.House.Book(), tour.House.PathOf(QStringLiteral("Orvia/ports/COM6")));
    ExpectRefusal(tour, QStringLiteral("COM6"), QStringLiteral("port-file"),
                  {QStringLiteral("is no serial port.")});
}

/// While it lives, permissions bind this thread, an administrator's too.
class BoundByPermissions {
 public:
    BoundByPermissions() {
        Call(SYS_capget, before_);
        Capabilities bound = before_;
        bound[0].effective &= ~(1U << CAP_DAC_OVERRIDE | 1U << CAP_DAC_READ_SEARCH);
        Call(SYS_capset, bound);
    }
    ~BoundByPermissions() { static_cast<void>(Give(SYS_capset, before_)); }
    BoundByPermissions(const BoundByPermissions&) = delete;
    BoundByPermissions& operator=(const BoundByPermissions&) = delete;

 private:
    using Capabilities = std::array<__user_cap_data_struct, 2>;

    static long Give(long call, Capabilities& capabilities) {
        __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
        return ::syscall(call, &header, capabilities.data());
    }
    static void Call(long call, Capabilities& capabilities) {
        if (Give(call, capabilities) != 0) {
            throw std::runtime_error("the system does not bind the tour by permissions");
        }
    }

    Capabilities before_{};
};

/// The group that may use serial ports, if there is one and this account may give a file to it.
bool GiveToGroup(const QByteArray& path) {
    const group* dialout = ::getgrnam("dialout");
    return dialout != nullptr && ::chown(path.constData(), ::getuid(), dialout->gr_gid) == 0;
}

void TryForbidden(Tour& tour, const QString& device) {
    const QByteArray path = QFile::encodeName(device);
    struct stat before {};
    ::stat(path.constData(), &before);
    const bool grouped = GiveToGroup(path);
    ::chmod(path.constData(), S_IRGRP | S_IWGRP);
    const BoundByPermissions bound;
    ExpectRefusal(tour, QStringLiteral("COM1"), QStringLiteral("port-forbidden"),
                  {QStringLiteral("may not use COM1 (%1)").arg(device),
                   grouped ? QStringLiteral("sudo usermod -aG dialout") : QString()});
    ::chmod(path.constData(), before.st_mode);
}

/// Another console has the port.
void TryTaken(Tour& tour) {
    QProcess other;
    other.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--hold-port")});
    const bool holds = ConsoleRun::RunUntil(
        [&] { return other.bytesAvailable() > 0 || other.state() == QProcess::NotRunning; },
        Patience);
    tour.Check(holds && other.state() == QProcess::Running,
               QStringLiteral("the other console has no port"));
    ExpectRefusal(
        tour, QStringLiteral("COM1"), QStringLiteral("port-taken"),
        {QStringLiteral("is in use by "), QStringLiteral("(process %1)").arg(other.processId())});
    other.closeWriteChannel();
    tour.Check(other.waitForFinished(Patience) && other.exitCode() == 0,
               QStringLiteral("the other console did not end"));
}

/// Number of a process that has ended.
qint32 EndedProcess() {
    QProcess process;
    process.start(QStringLiteral("true"), {});
    process.waitForStarted();
    const auto number = static_cast<qint32>(process.processId());
    process.waitForFinished();
    return number;
}

/// A pseudo-terminal that no other program has.
class FreeTerminal {
 public:
    FreeTerminal() : master_(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)) {
        if (master_ < 0 || ::grantpt(master_) != 0 || ::unlockpt(master_) != 0) {
            throw std::runtime_error("no pseudo-terminal");
        }
    }
    ~FreeTerminal() { ::close(master_); }
    FreeTerminal(const FreeTerminal&) = delete;
    FreeTerminal& operator=(const FreeTerminal&) = delete;

    [[nodiscard]] QString Device() const { return QString::fromLocal8Bit(::ptsname(master_)); }

 private:
    int master_;
};

/// A program has ended without taking its lock along.
void TryLocked(Tour& tour) {
    const FreeTerminal terminal;
    QString name = terminal.Device().mid(QStringLiteral("/dev/").size());
    QFile::link(terminal.Device(), tour.House.PathOf(QStringLiteral("Orvia/ports/COM7")));
    QFile lock(QStringLiteral("/var/lock/LCK..") +
               name.replace(QLatin1Char('/'), QLatin1Char('_')));
    const qint32 owner = EndedProcess();
    if (!lock.open(QFile::WriteOnly) ||
        lock.write(reinterpret_cast<const char*>(&owner), sizeof owner) != sizeof owner) {
        throw std::runtime_error("no lock can be written");
    }
    lock.close();
    ExpectRefusal(
        tour, QStringLiteral("COM7"), QStringLiteral("port-locked"),
        {QStringLiteral("a lock was left behind by process %1, which has ended").arg(owner),
         QStringLiteral("sudo rm ") + lock.fileName()});
    lock.remove();
}

// ----- the trace

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

void ReadTrace(Tour& tour) {
    constexpr int Refusals = 5;
    QWidget& trace = Shown(tour, "mnuTrace", "frmTrace");
    tour.Check(CountRows(trace, QStringLiteral("cannot be opened")) == Refusals,
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

void TryPorts(Tour& tour) {
    const QString device = QFileInfo(tour.House.PortLink()).symLinkTarget();
    tour.Console.OnForm(QStringLiteral("frmConnect"), [&](QWidget& form) {
        tour.Console.Click(QStringLiteral("cmdCancel"), &form);
    });
    tour.Console.Start(QString());
    tour.CheckBoxes({QStringLiteral("Connection Required: ")});
    TryTaken(tour);
    TryForbidden(tour, device);
    TryMissing(tour);
    TryAFile(tour);
    TryLocked(tour);
}

void LookBack(Tour& tour) {
    ReadSilentLogger(tour);
    ReadTrace(tour);
    SaveReport(tour);
}

int HoldPort() {
    ConsoleRun console;
    console.Start();
    if (console.State().LinkRecord.Connected == False) {
        return 1;
    }
    Tour::Say(QStringLiteral("holds"));
    bool ended = false;
    QSocketNotifier end(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&end, &QSocketNotifier::activated, &end, [&] {
        end.setEnabled(false);
        ended = true;
    });
    return ConsoleRun::RunUntil([&] { return ended; }, Patience) && console.Close() ? 0 : 1;
}

}  // namespace whole_program
