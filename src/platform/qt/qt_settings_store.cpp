#include "platform/qt/qt_settings_store.h"

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
QString TextOf(const QVariant& value) {
    return value.typeId() == QMetaType::QStringList ? value.toStringList().join(QLatin1Char(','))
                                                    : value.toString();
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
    return FromQt(TextOf(settings_.value(path)));
}

void QtSettingsStore::Write(const std::string& section, const std::string& key,
                            const std::string& value) {
    settings_.setValue(PathOf(section, key), ToQt(value));
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
