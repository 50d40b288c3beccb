// Ports that cannot be opened, each for another reason, as this system has them.

#include <fcntl.h>
#include <grp.h>
#include <linux/capability.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSocketNotifier>
#include <array>
#include <cstdlib>
#include <stdexcept>

#include "whole_program/tour_ports.h"

namespace whole_program {

namespace {

constexpr int Patience = 10000;

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

}  // namespace

int TryPorts(Tour& tour) {
    const QString device = QFileInfo(tour.House.PortLink()).symLinkTarget();
    OpenUnconnected(tour);
    TryTaken(tour);
    TryForbidden(tour, device);
    TryMissing(tour);
    TryAFile(tour);
    TryLocked(tour);
    return 5;
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
