#include "platform/qt/qt_session_start.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QSettings>

#include "common/desktop_entry.h"
#include "platform/qt/text_qt.h"

#ifdef _WIN32

namespace {

QSettings RunKey() {
    return QSettings(
        QStringLiteral("HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Run"),
        QSettings::NativeFormat);
}

const QString ValueName = QStringLiteral("Orvia");

}  // namespace

bool QtSessionStart::IsOn() const {
    return RunKey().contains(ValueName);
}

bool QtSessionStart::Switch(bool on) {
    QSettings key = RunKey();
    if (on) {
        key.setValue(ValueName, QLatin1Char('"') + QDir::toNativeSeparators(program_) +
                                    QStringLiteral("\" ") + QLatin1String(AtStartArgument));
    } else {
        key.remove(ValueName);
    }
    key.sync();
    return key.status() == QSettings::NoError;
}

#else

QString QtSessionStart::File() const {
    return QDir(folder_).filePath(QStringLiteral("orvia.desktop"));
}

bool QtSessionStart::IsOn() const {
    QFile file(File());
    // Desktops switch an entry off by a line of its own.
    return file.open(QIODevice::ReadOnly) && !file.readAll().contains("\nHidden=true");
}

bool QtSessionStart::Switch(bool on) {
    if (!on) {
        return !QFile::exists(File()) || QFile::remove(File());
    }
    if (!QDir().mkpath(folder_)) {
        return false;
    }
    QSaveFile file(File());
    const std::string text = SessionEntry("Orvia", FromQt(program_), AtStartArgument);
    return file.open(QIODevice::WriteOnly) &&
           file.write(text.data(), static_cast<qint64>(text.size())) ==
               static_cast<qint64>(text.size()) &&
           file.commit();
}

#endif
