// The walk that a console takes where it was installed: as far as an operator goes on the first
// day. It begins with an empty home. What the environment tells:
//
//     ORVIA_GUIDE_FOLDER     the folder in which dialogs for files have to start
//     ORVIA_GUIDE_DEVICE     name of an own flume that the list has to offer
//     ORVIA_GUIDE_FORBIDDEN  a port whose device the user may not use
//     ORVIA_GUIDE_PICTURES   folder for pictures of the windows
#include <QAction>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QSemaphore>
#include <QSettings>
#include <QStandardPaths>
#include <QTextStream>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "installed/guide.h"
#include "whole_program/sim_process.h"

namespace installed {

namespace {

using whole_program::SimProcess;
using whole_program::Truth;

const QString Main = QStringLiteral("frmMain");
const QString Client = QStringLiteral("frmClient");

QString Told(const char* name) {
    return qEnvironmentVariable(name);
}

void Say(const QString& line) {
    QTextStream(stdout) << line << Qt::endl;
}

void Hold(bool holds, const QString& otherwise) {
    if (!holds) {
        throw Wrong(otherwise);
    }
}

// ----- what the console finds

QString Beside(const QString& name) {
    return QDir(QCoreApplication::applicationDirPath()).filePath(name);
}

QString Below(QStandardPaths::StandardLocation place, const QString& name) {
    return QStandardPaths::writableLocation(place) + QStringLiteral("/Orvia/") + name;
}

/// Settings and book of the site for practice, as nobody has them before the first start.
void MakeSettings() {
    const QString file = Below(QStandardPaths::GenericConfigLocation, QStringLiteral("Orvia.conf"));
    Hold(!QFile::exists(file), file + QStringLiteral(" is there: this is no empty home"));
    const QString ports = Below(QStandardPaths::GenericConfigLocation, QStringLiteral("ports"));
    Hold(QDir().mkpath(ports), ports + QStringLiteral(" cannot be made"));
    const QString book = QDir::home().filePath(QStringLiteral("site.obk"));
    Hold(QFile::copy(Beside(QStringLiteral("practice/site.obk")), book),
         book + QStringLiteral(" cannot be written"));
    QFile::setPermissions(book, QFile::ReadOwner | QFile::WriteOwner);
    const QString forbidden = Told("ORVIA_GUIDE_FORBIDDEN");
    QSettings settings(file, QSettings::IniFormat);
    settings.setValue(QStringLiteral("Configuration/Port"),
                      forbidden.isEmpty() ? QStringLiteral("COM1") : forbidden);
    settings.setValue(QStringLiteral("Configuration/Baud"), QStringLiteral("38400"));
    settings.setValue(QStringLiteral("Configuration/AddressBook"), book);
}

/// The text of a control, where windows are.
QString TextIn(const QString& form, const QString& control) {
    const QWidget* window = Guide::Form(form);
    const auto* found = window == nullptr ? nullptr : window->findChild<QWidget*>(control);
    return found == nullptr ? QString() : found->property("text").toString();
}

class Walk {
 public:
    Walk()
        : sim_(Beside(QStringLiteral("orvia-sim")), Beside(QStringLiteral("practice/site.net")),
               Below(QStandardPaths::GenericConfigLocation, QStringLiteral("ports/COM1"))) {}

    void Take();

 private:
    void MeetForbiddenPort();
    void Connect();
    void Sample(const QString& site);
    void LookAtButtons();
    void ShowFlow(const QString& site);
    void LookWhereFilesGo();
    void FindOwnDevice();
    void Upload();
    void Close();

    /// Presses a button of the main window that begins an operation.
    void Operate(const QString& button);
    static QString Shown(const QString& form, const QString& control) {
        return Guide::There([&] { return TextIn(form, control); });
    }
    Truth HoldStill(const QString& site);
    void Compare(const QString& shown, double truth, const QString& what);
    void Keep(const QString& form, const QString& name) {
        guide_.Keep(Told("ORVIA_GUIDE_PICTURES"), form, name);
    }

    SimProcess sim_;
    Guide guide_;
};

void Walk::Take() {
    if (!Told("ORVIA_GUIDE_FORBIDDEN").isEmpty()) {
        MeetForbiddenPort();
    }
    Connect();
    Sample(QStringLiteral("Hill Tanks"));
    LookAtButtons();
    ShowFlow(QStringLiteral("Creek Flume"));
    ShowFlow(QStringLiteral("Orchard Weir"));
    LookWhereFilesGo();
    FindOwnDevice();
    Upload();
    Close();
}

void Walk::Operate(const QString& button) {
    constexpr unsigned SomeTicks = 500;  // milliseconds
    guide_.Await(QStringLiteral("the main window"),
                 [] { return QApplication::activeModalWidget() == nullptr; });
    // The buttons follow by the tick, and what was begun before may still be on its way out.
    QThread::msleep(SomeTicks);
    guide_.Press(Main, button);
}

// ----- the stations

void Walk::MeetForbiddenPort() {
    const QString connect = QStringLiteral("frmConnect");
    const QString settings = QStringLiteral("frmConnectSetup");
    guide_.Press(connect, QStringLiteral("cmdConnect"));
    const QString box = guide_.AwaitBox();
    Say(box);
    Hold(box.contains(QStringLiteral("Error opening port.")) &&
             box.contains(QStringLiteral("The group dialout may.")) &&
             box.contains(QStringLiteral("usermod -aG dialout")),
         QStringLiteral("the box does not tell of the group"));
    guide_.Press(Main, QStringLiteral("cmdConnect"));
    guide_.Press(connect, QStringLiteral("cmdSetup"));
    guide_.Select(settings, QStringLiteral("cmbPort"), QStringLiteral("COM1"));
    guide_.Press(settings, QStringLiteral("cmdOK"));
}

void Walk::Connect() {
    guide_.Press(QStringLiteral("frmConnect"), QStringLiteral("cmdConnect"));
    guide_.Await(QStringLiteral("the connection"), [] {
        return TextIn(Main, QStringLiteral("txtServerState")) ==
               QStringLiteral("Connected - Command");
    });
    const QString system = Shown(Main, QStringLiteral("txtSystemID"));
    Hold(system == QStringLiteral("42"), QStringLiteral("system id ") + system);
    Say(QStringLiteral("Connected, system id ") + system);
}

// Steady values, so that the truth holds still while it is sampled.
Truth Walk::HoldStill(const QString& site) {
    const Truth before = sim_.TruthOf(site);
    for (std::size_t i = 0; i < before.Analog.size(); ++i) {
        sim_.Ask(
            QStringLiteral("set %1 %2 %3").arg(site).arg(i + 1).arg(before.Analog[i], 0, 'f', 6));
    }
    return sim_.TruthOf(site);
}

void Walk::Compare(const QString& shown, double truth, const QString& what) {
    constexpr double Share = 5e-3;
    bool isNumber = false;
    const double value = shown.section(QLatin1Char(' '), 0, 0).toDouble(&isNumber);
    Say(QStringLiteral("  %1: %2, truly %3").arg(what, shown).arg(truth));
    Hold(isNumber && std::fabs(value - truth) <= Share * std::max(1.0, std::fabs(truth)) + 5e-3,
         what + QStringLiteral(" differs"));
}

void Walk::Sample(const QString& site) {
    const Truth truth = HoldStill(site);
    guide_.OpenClient(site);
    Operate(QStringLiteral("cmdGetSettings"));
    guide_.Await(QStringLiteral("a sample of ") + site, [&] {
        const QString reading = QStringLiteral("lblData2(0)");
        return !TextIn(Client, reading).isEmpty() &&
               TextIn(Client, QStringLiteral("lblLoggerName")) == site;
    });
    Say(site);
    Compare(Shown(Client, QStringLiteral("lblData2(0)")), truth.Analog.front(),
            QStringLiteral("channel 1"));
}

void Walk::LookAtButtons() {
    constexpr int LeastInk = 30;  // pixels
    for (const char* name : {"cmdSmall", "cmdMedium", "cmdWide", "cmdMeter", "cmdFlow"}) {
        const QString button = QLatin1String(name);
        const int ink = guide_.InkOf(Client, button);
        Say(QStringLiteral("  %1 has a picture of %2 pixels").arg(button).arg(ink));
        Hold(ink >= LeastInk, button + QStringLiteral(" is blank"));
    }
    Keep(Main, QStringLiteral("sample"));
}

void Walk::ShowFlow(const QString& site) {
    Sample(site);
    const Truth truth = HoldStill(site);
    guide_.Press(Client, QStringLiteral("cmdFlow"));
    guide_.Await(QStringLiteral("the flow view"),
                 [] { return !TextIn(Client, QStringLiteral("lblValue(3)")).isEmpty(); });
    Compare(Shown(Client, QStringLiteral("lblValue(3)")), truth.Flow, QStringLiteral("flow"));
    Keep(Main, site.toLower().replace(QLatin1Char(' '), QLatin1Char('-')));
}

void Walk::LookWhereFilesGo() {
    const QString folder = Told("ORVIA_GUIDE_FOLDER");
    guide_.Choose(QStringLiteral("mnuLoadAddressbook"));
    const auto dialog = [] {
        return qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    };
    guide_.Await(QStringLiteral("a dialog for files"), [&] { return dialog() != nullptr; });
    const QString shown = Guide::There([&] { return dialog()->directory().absolutePath(); });
    Guide::There([&] {
        QMetaObject::invokeMethod(dialog(), "reject", Qt::QueuedConnection);
        return 0;
    });
    guide_.Await(QStringLiteral("the end of the dialog"), [&] { return dialog() == nullptr; });
    Say(QStringLiteral("Files go to ") + shown);
    Hold(folder.isEmpty() || shown == folder, QStringLiteral("and should go to ") + folder);
}

void Walk::FindOwnDevice() {
    const QString device = Told("ORVIA_GUIDE_DEVICE");
    if (device.isEmpty()) {
        return;
    }
    const QString setup = QStringLiteral("frmSetup");
    guide_.OpenClient(QStringLiteral("Creek Flume"));
    Operate(QStringLiteral("cmdSetup"));
    guide_.Await(setup, [&] { return Guide::Form(setup) != nullptr; });
    const QStringList flumes = guide_.ItemsOf(setup, QStringLiteral("cmbFlume"));
    guide_.Press(setup, QStringLiteral("cmdCancel"));
    Say(QStringLiteral("%1 flumes in the list, the last is %2")
            .arg(flumes.size())
            .arg(flumes.value(flumes.size() - 1)));
    Hold(flumes.contains(device), device + QStringLiteral(" is not among the flumes"));
    Hold(flumes.size() > 2, QStringLiteral("the shipped flumes are missing"));
}

// The archive's file needs a driver that is loaded by name, when it is wanted.
void Walk::Upload() {
    const QString upload = QStringLiteral("frmGetHistoryData");
    guide_.OpenClient(QStringLiteral("Hill Tanks"));
    Operate(QStringLiteral("cmdGetHistory"));
    guide_.Press(upload, QStringLiteral("cmdOkay"));
    guide_.Press(QStringLiteral("frmHistory"), QStringLiteral("cmdOK"));
    const QFileInfo archive(
        Below(QStandardPaths::GenericDataLocation, QStringLiteral("archive.sqlite")));
    guide_.Await(QStringLiteral("the main window"),
                 [] { return QApplication::activeModalWidget() == nullptr; });
    Hold(archive.size() > 0, archive.filePath() + QStringLiteral(" was not made"));
    Say(QStringLiteral("Uploaded, and kept in ") + archive.filePath());
}

// A console that speaks to a radio is not closed, and says nothing: an operator tries again.
void Walk::Close() {
    constexpr int Tries = 20;
    constexpr unsigned Between = 500;  // milliseconds
    auto closed = std::make_shared<QSemaphore>();
    QObject::connect(
        qApp, &QCoreApplication::aboutToQuit, qApp, [closed] { closed->release(); },
        Qt::DirectConnection);
    for (int i = 0; i < Tries; ++i) {
        QMetaObject::invokeMethod(
            qApp,
            [] {
                if (QWidget* window = Guide::Form(Main); window != nullptr) {
                    window->close();
                }
            },
            Qt::QueuedConnection);
        if (closed->tryAcquire(1, Between)) {
            return Say(QStringLiteral("Closed."));
        }
    }
    throw Wrong(QStringLiteral("the console does not close"));
}

void Guard(const std::function<void()>& walk) {
    try {
        walk();
    } catch (const std::exception& wrong) {
        std::fprintf(stderr, "WRONG: %s\n", wrong.what());
        std::fflush(nullptr);
        // The console may stand in any loop: it is not asked to end.
        std::_Exit(1);
    }
}

}  // namespace

void StartWalk() {
    Guard(MakeSettings);
    auto ready = std::make_shared<QSemaphore>();
    QThread* thread = QThread::create([ready] {
        Guard([&] {
            Walk walk;
            ready->release();
            try {
                walk.Take();
            } catch (const Wrong&) {
                // Whatever loop the console is in, it answers.
                Guide::KeepAll(Told("ORVIA_GUIDE_PICTURES"));
                throw;
            }
            Say(QStringLiteral("The console did all of it."));
        });
    });
    QObject::connect(thread, &QThread::finished, thread, &QObject::deleteLater);
    thread->start();
    ready->acquire();
}

}  // namespace installed
