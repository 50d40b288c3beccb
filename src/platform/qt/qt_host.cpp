#include "platform/qt/qt_host.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QSysInfo>
#ifdef _WIN32
#include <QTemporaryFile>
#endif

#include "common/path_text.h"
#include "platform/qt/text_qt.h"

QtHost::QtHost()
    :
#ifndef _WIN32
      port_(QDir(store_.Folder()).filePath(QStringLiteral("ports"))),
      localMachine_([this] { return PortsOfSystem(port_.PortsFolder()); }),
      inquiry_(port_.PortsFolder()),
#endif
      archive_({.File = ArchiveFile()}),
#ifdef _WIN32
      atStart_(QCoreApplication::applicationFilePath()),
#else
      atStart_(QCoreApplication::applicationFilePath(),
               QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                   QStringLiteral("/autostart")),
#endif
      host_{.MSComm1 = port_,
            .Events = pump_,
            .Boxes = boxes_,
            .Dialogs = dialogs_,
            .Store = store_,
            .Clock = clock_,
            .Help = help_,
            .LocalMachine = localMachine_,
            .Inquiry = inquiry_,
            .Sound = sound_,
            .AppPath = FolderWithoutSeparator(QCoreApplication::applicationDirPath()),
            .Archive = &archive_,
            .SystemText = FromQt(QSysInfo::prettyProductName() + QStringLiteral(", ") +
                                 QSysInfo::currentCpuArchitecture() + QStringLiteral(", Qt ") +
                                 QLatin1String(qVersion())),
            .SaveFolder = SaveFolderFor(QCoreApplication::applicationDirPath()),
            .UserFolder = FolderWithoutSeparator(UserFolder()),
            .Commands = &commands_,
            .AtStart = &atStart_,
            .Passwords = &passwords_} {
}

QString UserFolder() {
#ifdef _WIN32
    // Where it goes along with a user who works at several computers.
    const QString folder = QDir::fromNativeSeparators(qEnvironmentVariable("APPDATA"));
#else
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
#endif
    return folder + QStringLiteral("/Orvia");
}

QString ArchiveFile() {
    return UserFolder() + QStringLiteral("/archive.sqlite");
}

bool FolderTakesFiles(const QString& folder) {
#ifdef _WIN32
    // Attributes tell nothing about who may write there: a file does, and is gone at once.
    return QTemporaryFile(folder + QStringLiteral("/orvia-XXXXXX.tmp")).open();
#else
    return QFileInfo(folder).isDir() && QFileInfo(folder).isWritable();
#endif
}

std::string SaveFolderFor(const QString& programFolder) {
    if (FolderTakesFiles(programFolder)) {
        return {};
    }
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return FolderWithoutSeparator(QFileInfo(documents).isDir() ? documents : QDir::homePath());
}

std::string FolderWithoutSeparator(const QString& folder) {
    std::string text = FromQt(QDir::toNativeSeparators(folder));
    if (LastSeparator(text) == text.size() && !text.empty()) {
        text.pop_back();
    }
    return text;
}
