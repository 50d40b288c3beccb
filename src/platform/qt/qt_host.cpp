#include "platform/qt/qt_host.h"

#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>
#include <QSysInfo>

#include "common/path_text.h"
#include "platform/qt/text_qt.h"

QtHost::QtHost()
    : port_(QDir(store_.Folder()).filePath(QStringLiteral("ports"))),
#ifndef _WIN32
      localMachine_([this] { return PortsOfSystem(port_.PortsFolder()); }),
#endif
      inquiry_(port_.PortsFolder()),
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
            .Commands = &commands_,
            .AtStart = &atStart_,
            .DataFolder = FromQt(QDir::toNativeSeparators(DataFolder()))} {
}

QString DataFolder() {
#ifdef _WIN32
    // Where it goes along with a user who works at several computers.
    const QString folder = QDir::fromNativeSeparators(qEnvironmentVariable("APPDATA"));
#else
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
#endif
    return folder + QStringLiteral("/Orvia");
}

QString ArchiveFile() {
    return DataFolder() + QStringLiteral("/archive.sqlite");
}

std::string FolderWithoutSeparator(const QString& folder) {
    std::string text = FromQt(QDir::toNativeSeparators(folder));
    if (LastSeparator(text) == text.size() && !text.empty()) {
        text.pop_back();
    }
    return text;
}
