#include "platform/qt/qt_host.h"

#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>

#include "common/path_text.h"
#include "platform/qt/text_qt.h"

QtHost::QtHost()
    : port_(QDir(store_.Folder()).filePath(QStringLiteral("ports"))),
#ifndef _WIN32
      localMachine_([this] { return PortsOfSystem(port_.PortsFolder()); }),
#endif
      archive_({.File = ArchiveFile()}),
      host_{
          port_,    pump_,         boxes_,
          dialogs_, store_,        clock_,
          help_,    localMachine_, FolderWithoutSeparator(QCoreApplication::applicationDirPath())} {
    host_.Archive = &archive_;
}

QString ArchiveFile() {
#ifdef _WIN32
    // Where it goes along with a user who works at several computers.
    const QString folder = QDir::fromNativeSeparators(qEnvironmentVariable("APPDATA"));
#else
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
#endif
    return folder + QStringLiteral("/Orvia/archive.sqlite");
}

std::string FolderWithoutSeparator(const QString& folder) {
    std::string text = FromQt(QDir::toNativeSeparators(folder));
    if (LastSeparator(text) == text.size() && !text.empty()) {
        text.pop_back();
    }
    return text;
}
