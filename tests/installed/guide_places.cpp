#include "installed/guide_places.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>

namespace installed {

#ifndef _WIN32

namespace {

QString Beside(const QString& name) {
    return QDir(QCoreApplication::applicationDirPath()).filePath(name);
}

QString Below(QStandardPaths::StandardLocation place, const QString& name) {
    return QStandardPaths::writableLocation(place) + QStringLiteral("/Orvia/") + name;
}

}  // namespace

Places FindPlaces() {
    return {
        .Simulator = Beside(QStringLiteral("orvia-sim")),
        .Network = Beside(QStringLiteral("practice/site.net")),
        .Link = Below(QStandardPaths::GenericConfigLocation, QStringLiteral("ports/COM1")),
        .Shipped = Beside(QStringLiteral("practice/site.obk")),
        .Book = QDir::home().filePath(QStringLiteral("site.obk")),
        .Archive = Below(QStandardPaths::GenericDataLocation, QStringLiteral("archive.sqlite"))};
}

std::unique_ptr<QSettings> FirstSettings() {
    const QString file = Below(QStandardPaths::GenericConfigLocation, QStringLiteral("Orvia.conf"));
    const QString ports = Below(QStandardPaths::GenericConfigLocation, QStringLiteral("ports"));
    if (QFile::exists(file) || !QDir().mkpath(ports)) {
        return nullptr;
    }
    return std::make_unique<QSettings>(file, QSettings::IniFormat);
}

#else

// The site is that of another system, which also runs the simulator. The operator's folder has
// letters beyond ASCII in its name, as people's folders have.
Places FindPlaces() {
    const QDir practice(qEnvironmentVariable("ORVIA_GUIDE_PRACTICE"));
    const QString own = QDir::home().filePath(QStringLiteral("Gr\u00FCn \u6771"));
    QDir().mkpath(own);
    return {
        .Simulator = qEnvironmentVariable("ORVIA_GUIDE_POST"),
        .Network = practice.filePath(QStringLiteral("site.net")),
        .Link = QStringLiteral("COM1"),
        .Shipped = practice.filePath(QStringLiteral("site.obk")),
        .Book = own + QStringLiteral("/site.obk"),
        .Archive =
            QDir(qEnvironmentVariable("APPDATA")).filePath(QStringLiteral("Orvia/archive.sqlite"))};
}

std::unique_ptr<QSettings> FirstSettings() {
    auto settings = std::make_unique<QSettings>(QSettings::NativeFormat, QSettings::UserScope,
                                                QStringLiteral("Orvia"), QStringLiteral("Orvia"));
    return settings->contains(QStringLiteral("Configuration/AddressBook")) ? nullptr
                                                                           : std::move(settings);
}

#endif

}  // namespace installed
