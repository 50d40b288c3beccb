#include "platform/qt/qt_settings_store.h"

#include <QByteArray>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStringList>
#include <QVariant>

#include "platform/qt/text_qt.h"

namespace {

const QString& Application() {
    static const QString name = QStringLiteral("Orvia");
    return name;
}

QString PathOf(const std::string& section, const std::string& key) {
    return ToQt(section) + QLatin1Char('/') + ToQt(key);
}

// A comma typed into the file by hand makes a list of its value.
std::string TextOf(const QVariant& value) {
    if (value.typeId() == QMetaType::QByteArray) {
        return value.toByteArray().toStdString();
    }
    return FromQt(value.typeId() == QMetaType::QStringList
                      ? value.toStringList().join(QLatin1Char(','))
                      : value.toString());
}

// A path may be in bytes that are no UTF-8: it is then kept byte by byte.
QVariant ValueOf(const std::string& text) {
    const QString shown = ToQt(text);
    return FromQt(shown) == text ? QVariant(shown) : QVariant(QByteArray::fromStdString(text));
}

}  // namespace

QtSettingsStore::QtSettingsStore()
    : settings_(QSettings::NativeFormat, QSettings::UserScope, Application(), Application()) {
    settings_.setFallbacksEnabled(false);
}

QtSettingsStore::QtSettingsStore(const QString& file) : settings_(file, QSettings::IniFormat) {}

std::optional<std::string> QtSettingsStore::Read(const std::string& section,
                                                 const std::string& key) const {
    const QString path = PathOf(section, key);
    if (!settings_.contains(path)) {
        return std::nullopt;
    }
    return TextOf(settings_.value(path));
}

void QtSettingsStore::Write(const std::string& section, const std::string& key,
                            const std::string& value) {
    settings_.setValue(PathOf(section, key), ValueOf(value));
}

QString QtSettingsStore::Folder() const {
#ifdef Q_OS_WIN
    if (settings_.format() == QSettings::NativeFormat) {
        return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
               QLatin1Char('/') + Application();
    }
#endif
    return QFileInfo(settings_.fileName()).absolutePath();
}
